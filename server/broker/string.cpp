#include "server/broker/string.h"

#include <utility>

#include "server/broker/codepage.h"

namespace cimserver {

namespace {

const char* get_char_ptr(const CMPIString* string, CMPIStatus* rc) {
    StringObject* ours = from_handle<StringObject>(string);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? ours->content().text.c_str() : nullptr;
}

char* new_chars_cp(const CMPIString* string, const CMPICodepageID codepage, CMPIStatus* rc) {
    StringObject* ours = from_handle<StringObject>(string);
    if (ours == nullptr) {
        set_status(rc, CMPI_RC_ERR_INVALID_HANDLE);
        return nullptr;
    }
    return encode_for(codepage, ours->content().text, rc);
}

constexpr CMPIStringFT TABLE = {CMPICurrentVersion, release_object<StringObject, CMPIString>,
                                clone_object<StringObject, CMPIString>, get_char_ptr, new_chars_cp};

} // namespace

const CMPIStringFT* FunctionTableOf<CMPIString>::table() {
    return &TABLE;
}

std::string text_of(const CMPIString* string) {
    StringObject* ours = from_handle<StringObject>(string);
    return ours != nullptr ? ours->content().text : std::string();
}

CMPIString* make_string(std::string text) {
    return make_pooled<StringObject>(StringContent{std::move(text)});
}

} // namespace cimserver
