// CMPIString.
#include "server/cmpi_objects.h"

#include "server/cmpi_codepage.h"

namespace cimserver {

namespace {

const char* getCharPtr(const CMPIString* string, CMPIStatus* rc) {
    StringObject* ours = opened<StringObject>(string);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? ours->content().text.c_str() : nullptr;
}

char* newCharsCP(const CMPIString* string, const CMPICodepageID codepage, CMPIStatus* rc) {
    StringObject* ours = opened<StringObject>(string);
    if (!ours) {
        setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
        return nullptr;
    }
    return encodeFor(codepage, ours->content().text, rc);
}

constexpr CMPIStringFT kTable = {CMPICurrentVersion, releaseObject<StringObject, CMPIString>,
                                 cloneObject<StringObject, CMPIString>, getCharPtr, newCharsCP};

} // namespace

const CMPIStringFT* TableOf<CMPIString>::table() {
    return &kTable;
}

CMPIString* makeString(std::string text) {
    return makePooled<StringObject>(StringContent{std::move(text)});
}

} // namespace cimserver
