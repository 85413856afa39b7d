// CMPIError.
#include "server/cmpi_values.h"

namespace cimserver {

namespace {

template <auto Member>
auto getPlain(const CMPIError* error, CMPIStatus* rc) {
    ErrorObject* ours = opened<ErrorObject>(error);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? ours->content().*Member : ErrorContent{}.*Member;
}

template <auto Member, typename Plain>
CMPIStatus setPlain(const CMPIError* error, const Plain value) {
    ErrorObject* ours = opened<ErrorObject>(error);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().*Member = value;
    return status(CMPI_RC_OK);
}

template <auto Member>
CMPIString* getText(const CMPIError* error, CMPIStatus* rc) {
    ErrorObject* ours = opened<ErrorObject>(error);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? makeString(ours->content().*Member) : nullptr;
}

template <auto Member>
CMPIStatus setText(const CMPIError* error, const char* text) {
    ErrorObject* ours = opened<ErrorObject>(error);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().*Member = text ? text : "";
    return status(CMPI_RC_OK);
}

template <auto Member>
CMPIArray* getList(const CMPIError* error, CMPIStatus* rc) {
    ErrorObject* ours = opened<ErrorObject>(error);
    setStatus(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? makePooled<ArrayObject>(ours->content().*Member) : nullptr;
}

template <auto Member>
CMPIStatus setList(const CMPIError* error, const CMPIArray* list) {
    ErrorObject* ours = opened<ErrorObject>(error);
    ArrayObject* array = opened<ArrayObject>(list);
    if (!ours || !array) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (array->content().elementType != CMPI_string) return status(CMPI_RC_ERR_TYPE_MISMATCH);
    ours->content().*Member = array->content();
    return status(CMPI_RC_OK);
}

constexpr CMPIErrorFT kTable = {CMPICurrentVersion,
                                releaseObject<ErrorObject, CMPIError>,
                                cloneObject<ErrorObject, CMPIError>,
                                getPlain<&ErrorContent::type>,
                                getText<&ErrorContent::otherType>,
                                getText<&ErrorContent::owner>,
                                getText<&ErrorContent::messageId>,
                                getText<&ErrorContent::message>,
                                getPlain<&ErrorContent::severity>,
                                getPlain<&ErrorContent::cause>,
                                getText<&ErrorContent::causeDescription>,
                                getList<&ErrorContent::recommendedActions>,
                                getText<&ErrorContent::source>,
                                getPlain<&ErrorContent::sourceFormat>,
                                getText<&ErrorContent::otherSourceFormat>,
                                getPlain<&ErrorContent::statusCode>,
                                getText<&ErrorContent::statusDescription>,
                                getList<&ErrorContent::messageArguments>,
                                setPlain<&ErrorContent::type, CMPIErrorType>,
                                setText<&ErrorContent::otherType>,
                                setText<&ErrorContent::causeDescription>,
                                setList<&ErrorContent::recommendedActions>,
                                setText<&ErrorContent::source>,
                                setPlain<&ErrorContent::sourceFormat, CMPIErrorSrcFormat>,
                                setText<&ErrorContent::otherSourceFormat>,
                                setText<&ErrorContent::statusDescription>,
                                setList<&ErrorContent::messageArguments>};

} // namespace

const CMPIErrorFT* TableOf<CMPIError>::table() {
    return &kTable;
}

} // namespace cimserver
