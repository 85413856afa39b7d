// The object types of the CMPI interface as the server makes them.
//
// Each type is the interface's own record around one of the server's plain values; its functions stand in the
// file named after it (cmpi_string.cpp, cmpi_instance.cpp, ...), where TableOf tells the function table.
#ifndef KESTO_SERVER_CMPI_OBJECTS_H
#define KESTO_SERVER_CMPI_OBJECTS_H

#include <string>
#include <vector>

#include "server/cim_datetime.h"
#include "server/cim_model.h"
#include "server/cmpi_memory.h"

namespace cimserver {

class ResultSink;

struct ArrayContent {
    CMPIType elementType = CMPI_null;
    std::vector<Value> elements;
};

struct EnumerationContent {
    ArrayContent items; // all of type CMPI_instance, CMPI_ref, or of one data type
    std::size_t next = 0;
};

struct ContextContent {
    NamedValues entries;
};

struct ArgsContent {
    NamedValues arguments;
};

struct StringContent {
    std::string text;
};

// Where a provider's results go, and what it did that a result tolerates but a log should tell.
struct ResultContent {
    ResultSink* sink = nullptr;
    unsigned delivered = 0;
    unsigned ignored = 0; // NULL, -1 or released objects
    bool done = false;
    std::string errorMessage; // of the last CMPIError handed over
};

struct ErrorContent {
    CMPIErrorType type = UnknownErrorType;
    CMPIErrorSeverity severity = ErrorSevUnknown;
    CMPIErrorProbableCause cause = ErrorProbCauseUnknown;
    CMPIErrorSrcFormat sourceFormat = CMPIErrSrcUnknown;
    CMPIrc statusCode = CMPI_RC_OK;
    std::string otherType, owner, messageId, message, causeDescription, source, otherSourceFormat,
        statusDescription;
    ArrayContent recommendedActions, messageArguments;
};

struct PropertyListContent {
    bool everything = false; // made from no list at all
    std::vector<std::string> names;
    std::vector<const char*> pointers; // to the names, closed by NULL

    explicit PropertyListContent(const char** properties);
    PropertyListContent(const PropertyListContent& other);
    PropertyListContent(PropertyListContent&& other) noexcept = default;
    PropertyListContent& operator=(const PropertyListContent&) = delete;
    ~PropertyListContent() = default;
};

using StringObject = Enclosed<CMPIString, StringContent>;
using ArrayObject = Enclosed<CMPIArray, ArrayContent>;
using DateTimeObject = Enclosed<CMPIDateTime, CimDateTime>;
using PathObject = Enclosed<CMPIObjectPath, ObjectPath>;
using InstanceObject = Enclosed<CMPIInstance, Instance>;
using ArgsObject = Enclosed<CMPIArgs, ArgsContent>;
using EnumerationObject = Enclosed<CMPIEnumeration, EnumerationContent>;
using ContextObject = Enclosed<CMPIContext, ContextContent>;
using ResultObject = Enclosed<CMPIResult, ResultContent>;
using ErrorObject = Enclosed<CMPIError, ErrorContent>;
using PropertyListObject = Enclosed<CMPIPropertyList, PropertyListContent>;

// clang-format off
template <> struct TableOf<CMPIString> { static const CMPIStringFT* table(); };
template <> struct TableOf<CMPIArray> { static const CMPIArrayFT* table(); };
template <> struct TableOf<CMPIDateTime> { static const CMPIDateTimeFT* table(); };
template <> struct TableOf<CMPIObjectPath> { static const CMPIObjectPathFT* table(); };
template <> struct TableOf<CMPIInstance> { static const CMPIInstanceFT* table(); };
template <> struct TableOf<CMPIArgs> { static const CMPIArgsFT* table(); };
template <> struct TableOf<CMPIEnumeration> { static const CMPIEnumerationFT* table(); };
template <> struct TableOf<CMPIContext> { static const CMPIContextFT* table(); };
template <> struct TableOf<CMPIResult> { static const CMPIResultFT* table(); };
template <> struct TableOf<CMPIError> { static const CMPIErrorFT* table(); };
template <> struct TableOf<CMPIPropertyList> { static const CMPIPropertyListFT* table(); };
// clang-format on

CMPIString* make_string(std::string text);
CMPIObjectPath* make_path(ObjectPath path);
CMPIInstance* make_instance(Instance instance);
CMPIEnumeration* make_enumeration(CMPIType type, std::vector<Value> items);

} // namespace cimserver

#endif
