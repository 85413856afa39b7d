#include "server/broker/error.h"

#include "server/broker/string.h"

namespace cimserver {

namespace {

template <auto Member>
auto get_plain(const CMPIError* error, CMPIStatus* rc) {
    ErrorObject* ours = from_handle<ErrorObject>(error);
    set_status(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? ours->content().*Member : ErrorContent{}.*Member;
}

template <auto Member, typename Plain>
CMPIStatus set_plain(const CMPIError* error, const Plain value) {
    ErrorObject* ours = from_handle<ErrorObject>(error);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().*Member = value;
    return status(CMPI_RC_OK);
}

template <auto Member>
CMPIString* get_text(const CMPIError* error, CMPIStatus* rc) {
    ErrorObject* ours = from_handle<ErrorObject>(error);
    set_status(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? make_string(ours->content().*Member) : nullptr;
}

template <auto Member>
CMPIStatus set_text(const CMPIError* error, const char* text) {
    ErrorObject* ours = from_handle<ErrorObject>(error);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    ours->content().*Member = text ? text : "";
    return status(CMPI_RC_OK);
}

template <auto Member>
CMPIArray* get_list(const CMPIError* error, CMPIStatus* rc) {
    ErrorObject* ours = from_handle<ErrorObject>(error);
    set_status(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? make_pooled<ArrayObject>(ours->content().*Member) : nullptr;
}

template <auto Member>
CMPIStatus set_list(const CMPIError* error, const CMPIArray* list) {
    ErrorObject* ours = from_handle<ErrorObject>(error);
    ArrayObject* array = from_handle<ArrayObject>(list);
    if (!ours || !array) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (array->content().elementType != CMPI_string) return status(CMPI_RC_ERR_TYPE_MISMATCH);
    ours->content().*Member = array->content();
    return status(CMPI_RC_OK);
}

constexpr CMPIErrorFT TABLE = {CMPICurrentVersion,
                               release_object<ErrorObject, CMPIError>,
                               clone_object<ErrorObject, CMPIError>,
                               get_plain<&ErrorContent::type>,
                               get_text<&ErrorContent::otherType>,
                               get_text<&ErrorContent::owner>,
                               get_text<&ErrorContent::messageId>,
                               get_text<&ErrorContent::message>,
                               get_plain<&ErrorContent::severity>,
                               get_plain<&ErrorContent::cause>,
                               get_text<&ErrorContent::causeDescription>,
                               get_list<&ErrorContent::recommendedActions>,
                               get_text<&ErrorContent::source>,
                               get_plain<&ErrorContent::sourceFormat>,
                               get_text<&ErrorContent::otherSourceFormat>,
                               get_plain<&ErrorContent::statusCode>,
                               get_text<&ErrorContent::statusDescription>,
                               get_list<&ErrorContent::messageArguments>,
                               set_plain<&ErrorContent::type, CMPIErrorType>,
                               set_text<&ErrorContent::otherType>,
                               set_text<&ErrorContent::causeDescription>,
                               set_list<&ErrorContent::recommendedActions>,
                               set_text<&ErrorContent::source>,
                               set_plain<&ErrorContent::sourceFormat, CMPIErrorSrcFormat>,
                               set_text<&ErrorContent::otherSourceFormat>,
                               set_text<&ErrorContent::statusDescription>,
                               set_list<&ErrorContent::messageArguments>};

} // namespace

const CMPIErrorFT* FunctionTableOf<CMPIError>::table() {
    return &TABLE;
}

} // namespace cimserver
