// The data types of the CMPI interface, versions 1.0, 2.0 and 2.1.
//
// CMPI is a binary interface: a server and a provider that were built years apart meet through records of
// function pointers. What is declared here (the numbers, the widths, the order of the members) is that
// interface and can never change; cmpi_layout.h holds it with static assertions. The folder stands in for a
// CIM server's development package where none is installed, and serves C as well as C++ sources.
//
// CMPI_VERSION selects the members that later versions added. Each version only appends, so a table of a
// later version can be read as one of an earlier version.
#ifndef KESTO_CMPIDT_H
#define KESTO_CMPIDT_H

#include "cmpios.h"

#define CMPIVersion100 100
#define CMPIVersion200 200
#define CMPIVersion210 210
#define CMPICurrentVersion CMPIVersion210

#ifndef CMPI_VERSION
#define CMPI_VERSION CMPICurrentVersion
#endif
#if CMPI_VERSION != CMPIVersion100 && CMPI_VERSION != CMPIVersion200 && CMPI_VERSION != CMPIVersion210
#error "CMPI_VERSION must be 100, 200 or 210"
#endif
#define CMPI_VER_100 1
#if CMPI_VERSION >= CMPIVersion200
#define CMPI_VER_200 1
#endif
#if CMPI_VERSION >= CMPIVersion210
#define CMPI_VER_210 1
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef int CMPIVersion;

// The encapsulated objects. Each is a handle and a function table (cmpift.h); who made the object made both.
typedef struct CMPIBroker CMPIBroker;
typedef struct CMPIContext CMPIContext;
typedef struct CMPIResult CMPIResult;
typedef struct CMPIString CMPIString;
typedef struct CMPIArray CMPIArray;
typedef struct CMPIEnumeration CMPIEnumeration;
typedef struct CMPIInstance CMPIInstance;
typedef struct CMPIObjectPath CMPIObjectPath;
typedef struct CMPIArgs CMPIArgs;
typedef struct CMPIDateTime CMPIDateTime;
typedef struct CMPISelectExp CMPISelectExp;
typedef struct CMPISelectCond CMPISelectCond;
typedef struct CMPISubCond CMPISubCond;
typedef struct CMPIPredicate CMPIPredicate;

typedef struct CMPIBrokerFT CMPIBrokerFT;
typedef struct CMPIBrokerEncFT CMPIBrokerEncFT;
typedef struct CMPIBrokerExtFT CMPIBrokerExtFT;
typedef struct CMPIContextFT CMPIContextFT;
typedef struct CMPIResultFT CMPIResultFT;
typedef struct CMPIStringFT CMPIStringFT;
typedef struct CMPIArrayFT CMPIArrayFT;
typedef struct CMPIEnumerationFT CMPIEnumerationFT;
typedef struct CMPIInstanceFT CMPIInstanceFT;
typedef struct CMPIObjectPathFT CMPIObjectPathFT;
typedef struct CMPIArgsFT CMPIArgsFT;
typedef struct CMPIDateTimeFT CMPIDateTimeFT;
typedef struct CMPISelectExpFT CMPISelectExpFT;
typedef struct CMPISelectCondFT CMPISelectCondFT;
typedef struct CMPISubCondFT CMPISubCondFT;
typedef struct CMPIPredicateFT CMPIPredicateFT;

// The management interfaces that a provider's factories return.
typedef struct CMPIInstanceMI CMPIInstanceMI;
typedef struct CMPIAssociationMI CMPIAssociationMI;
typedef struct CMPIMethodMI CMPIMethodMI;
typedef struct CMPIPropertyMI CMPIPropertyMI;
typedef struct CMPIIndicationMI CMPIIndicationMI;
typedef struct CMPIInstanceMIFT CMPIInstanceMIFT;
typedef struct CMPIAssociationMIFT CMPIAssociationMIFT;
typedef struct CMPIMethodMIFT CMPIMethodMIFT;
typedef struct CMPIPropertyMIFT CMPIPropertyMIFT;
typedef struct CMPIIndicationMIFT CMPIIndicationMIFT;

#ifdef CMPI_VER_200
typedef struct CMPIBrokerMemFT CMPIBrokerMemFT;
typedef struct CMPIError CMPIError;
typedef struct CMPIErrorFT CMPIErrorFT;
#endif
#ifdef CMPI_VER_210
typedef struct CMPIPropertyList CMPIPropertyList;
typedef struct CMPIPropertyListFT CMPIPropertyListFT;
typedef struct CMPIEnumerationFilter CMPIEnumerationFilter;
typedef struct CMPIEnumerationFilterFT CMPIEnumerationFilterFT;
#endif

// CIM's scalar types.
typedef unsigned char CMPIBoolean;
typedef unsigned short CMPIChar16;
typedef unsigned char CMPIUint8;
typedef unsigned short CMPIUint16;
typedef unsigned int CMPIUint32;
typedef unsigned long long CMPIUint64;
typedef signed char CMPISint8;
typedef short CMPISint16;
typedef int CMPISint32;
typedef long long CMPISint64;
typedef float CMPIReal32;
typedef double CMPIReal64;

typedef unsigned int CMPICount;

// Type codes. The low byte tells the simple types apart, the second byte the encapsulated ones; CMPI_ARRAY is
// added for an array of a type.
typedef unsigned short CMPIType;

#define CMPI_null 0
#define CMPI_SIMPLE 2
#define CMPI_boolean 2
#define CMPI_char16 3
#define CMPI_REAL 8
#define CMPI_real32 8
#define CMPI_real64 12
#define CMPI_UINT 128
#define CMPI_uint8 128
#define CMPI_uint16 144
#define CMPI_uint32 160
#define CMPI_uint64 176
#define CMPI_SINT 192
#define CMPI_sint8 192
#define CMPI_sint16 208
#define CMPI_sint32 224
#define CMPI_sint64 240
#define CMPI_INTEGER (CMPI_UINT | CMPI_SINT)

#define CMPI_ENC 4096
#define CMPI_instance 4096
#define CMPI_ref 4352
#define CMPI_args 4608
#define CMPI_class 4864
#define CMPI_filter 5120
#define CMPI_enumeration 5376
#define CMPI_string 5632
// A C string. Where a call takes a CMPIValue*, the pointer passed is the char* itself, not the address of
// one.
#define CMPI_chars 5888
#define CMPI_dateTime 6144
#define CMPI_ptr 6400
#define CMPI_charsptr 6656

#define CMPI_ARRAY (1 << 13)
#define CMPI_booleanA (CMPI_ARRAY | CMPI_boolean)
#define CMPI_char16A (CMPI_ARRAY | CMPI_char16)
#define CMPI_real32A (CMPI_ARRAY | CMPI_real32)
#define CMPI_real64A (CMPI_ARRAY | CMPI_real64)
#define CMPI_uint8A (CMPI_ARRAY | CMPI_uint8)
#define CMPI_uint16A (CMPI_ARRAY | CMPI_uint16)
#define CMPI_uint32A (CMPI_ARRAY | CMPI_uint32)
#define CMPI_uint64A (CMPI_ARRAY | CMPI_uint64)
#define CMPI_sint8A (CMPI_ARRAY | CMPI_sint8)
#define CMPI_sint16A (CMPI_ARRAY | CMPI_sint16)
#define CMPI_sint32A (CMPI_ARRAY | CMPI_sint32)
#define CMPI_sint64A (CMPI_ARRAY | CMPI_sint64)
#define CMPI_instanceA (CMPI_ARRAY | CMPI_instance)
#define CMPI_refA (CMPI_ARRAY | CMPI_ref)
#define CMPI_stringA (CMPI_ARRAY | CMPI_string)
#define CMPI_charsA (CMPI_ARRAY | CMPI_chars)
#define CMPI_dateTimeA (CMPI_ARRAY | CMPI_dateTime)
#define CMPI_charsptrA (CMPI_ARRAY | CMPI_charsptr)

// The types that an untyped key of a request may have.
#define CMPI_keyInteger CMPI_sint64
#define CMPI_keyString CMPI_string
#define CMPI_keyBoolean CMPI_boolean
#define CMPI_keyRef CMPI_ref

typedef struct CMPIValuePtr {
    void* ptr;
    CMPICount length;
} CMPIValuePtr;

typedef union CMPIValue {
    CMPIBoolean boolean;
    CMPIChar16 char16;
    CMPIUint8 uint8;
    CMPIUint16 uint16;
    CMPIUint32 uint32;
    CMPIUint64 uint64;
    CMPISint8 sint8;
    CMPISint16 sint16;
    CMPISint32 sint32;
    CMPISint64 sint64;
    CMPIReal32 real32;
    CMPIReal64 real64;
    CMPIInstance* inst;
    CMPIObjectPath* ref;
    CMPIArgs* args;
    CMPISelectExp* filter;
    CMPIEnumeration* Enum;
    CMPIArray* array;
    CMPIString* string;
    char* chars;
    CMPIDateTime* dateTime;
    CMPIValuePtr dataPtr;
} CMPIValue;

// State flags of a CMPIData.
typedef unsigned short CMPIValueState;
#define CMPI_goodValue 0
#define CMPI_nullValue (1 << 8)
#define CMPI_keyValue (2 << 8)
#define CMPI_notFound (4 << 8)
#define CMPI_badValue (0x80 << 8)

typedef struct CMPIData {
    CMPIType type;
    CMPIValueState state;
    CMPIValue value;
} CMPIData;

// Result codes. 1 to 29 are CIM's own status codes.
typedef enum CMPIrc {
    CMPI_RC_OK = 0,
    CMPI_RC_ERR_FAILED = 1,
    CMPI_RC_ERR_ACCESS_DENIED = 2,
    CMPI_RC_ERR_INVALID_NAMESPACE = 3,
    CMPI_RC_ERR_INVALID_PARAMETER = 4,
    CMPI_RC_ERR_INVALID_CLASS = 5,
    CMPI_RC_ERR_NOT_FOUND = 6,
    CMPI_RC_ERR_NOT_SUPPORTED = 7,
    CMPI_RC_ERR_CLASS_HAS_CHILDREN = 8,
    CMPI_RC_ERR_CLASS_HAS_INSTANCES = 9,
    CMPI_RC_ERR_INVALID_SUPERCLASS = 10,
    CMPI_RC_ERR_ALREADY_EXISTS = 11,
    CMPI_RC_ERR_NO_SUCH_PROPERTY = 12,
    CMPI_RC_ERR_TYPE_MISMATCH = 13,
    CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED = 14,
    CMPI_RC_ERR_INVALID_QUERY = 15,
    CMPI_RC_ERR_METHOD_NOT_AVAILABLE = 16,
    CMPI_RC_ERR_METHOD_NOT_FOUND = 17,
    CMPI_RC_NO_MORE_ELEMENTS = 18,
    CMPI_RC_ERR_SERVER_LIMITS_EXCEEDED = 27,
    CMPI_RC_ERR_QUERY_FEATURE_NOT_SUPPORTED = 29,
    CMPI_RC_DO_NOT_UNLOAD = 50, // answers of a cleanup function
    CMPI_RC_NEVER_UNLOAD = 51,
    CMPI_RC_ERR_INVALID_HANDLE = 60, // answers of the interface's own functions
    CMPI_RC_ERR_INVALID_DATA_TYPE = 61,
    CMPI_RC_ERR_NOT_IN_CODEPAGE = 62,
    CMPI_RC_ERROR_SYSTEM = 100,
    CMPI_RC_ERROR = 200
} CMPIrc;

typedef struct CMPIStatus {
    CMPIrc rc;
    CMPIString* msg;
} CMPIStatus;

// Entries of a context.
typedef unsigned int CMPIFlags;
#define CMPI_FLAG_LocalOnly 1
#define CMPI_FLAG_DeepInheritance 2
#define CMPI_FLAG_IncludeQualifiers 4
#define CMPI_FLAG_IncludeClassOrigin 8

#define CMPIInitNameSpace "CMPIInitNameSpace"
#define CMPIInvocationFlags "CMPIInvocationFlags"
#define CMPIPrincipal "CMPIPrincipal"
#define CMPIRole "CMPIRole"
#define CMPIAcceptLanguage "CMPIAcceptLanguage"
#define CMPIContentLanguage "CMPIContentLanguage"

// Capabilities that a broker declares.
#define CMPI_MB_BasicRead 0x00000001
#define CMPI_MB_BasicWrite 0x00000003
#define CMPI_MB_InstanceManipulation 0x00000007
#define CMPI_MB_AssociationTraversal 0x00000009
#define CMPI_MB_QueryExecution 0x00000011
#define CMPI_MB_QueryNormalization 0x00000031
#define CMPI_MB_BasicQualifierSupport 0x00000047
#define CMPI_MB_Indications 0x00000081
#define CMPI_MB_OSEncapsulationSupport 0x00000100
#define CMPI_MB_Supports_MemEnhancements 0x00004000
#define CMPI_MB_Supports_Extended_Error 0x00008000
#define CMPI_MB_Logging 0x00010000
#define CMPI_MB_Tracing 0x00020000
#define CMPI_MB_PropertyFiltering 0x00040001
#define CMPI_MB_CodepageConversion 0x00080000

typedef enum CMPISeverity { CMPI_SEV_ERROR = 1, CMPI_SEV_INFO = 2, CMPI_SEV_WARNING = 3 } CMPISeverity;

typedef enum CMPILevel { CMPI_LEV_INFO = 1, CMPI_LEV_WARNING = 2, CMPI_LEV_VERBOSE = 3 } CMPILevel;

typedef enum CMPIPredOp {
    CMPI_PredOp_Equals = 1,
    CMPI_PredOp_NotEquals = 2,
    CMPI_PredOp_LessThan = 3,
    CMPI_PredOp_GreaterThanOrEquals = 4,
    CMPI_PredOp_GreaterThan = 5,
    CMPI_PredOp_LessThanOrEquals = 6,
    CMPI_PredOp_Isa = 7,
    CMPI_PredOp_NotIsa = 8,
    CMPI_PredOp_Like = 9,
    CMPI_PredOp_NotLike = 10
} CMPIPredOp;

// Threads and services of the broker.
typedef CMPI_THREAD_RETURN(CMPI_THREAD_CDECL* CMPIThreadFunc)(void* parm);
typedef void (*CMPIThreadOnceFunc)(void);
typedef void (*CMPIThreadKeyCleanupFunc)(void* key);
typedef CMPIData CMPIAccessor(const char* propertyName, void* parm);

#ifdef CMPI_VER_200
typedef void* CMPIMsgFileHandle;
typedef void CMPIGcStat;

typedef enum CMPIErrorType {
    UnknownErrorType = 0,
    OtherErrorType = 1,
    CommunicationsError = 2,
    QualityOfServiceError = 3,
    SoftwareError = 4,
    HardwareError = 5,
    EnvironmentalError = 6,
    SecurityError = 7,
    OversubscriptionError = 8,
    UnavailableResourceError = 9,
    UnsupportedOperationError = 10
} CMPIErrorType;

typedef enum CMPIErrorSeverity {
    ErrorSevUnknown = 0,
    ErrorSevLow = 2,
    ErrorSevMedium = 3,
    ErrorSevHigh = 4,
    ErrorSevFatal = 5
} CMPIErrorSeverity;

// The numbers are those of CIM_Error.ProbableCause, 0 to 130; only the ends of the range are named here.
typedef enum CMPIErrorProbableCause {
    ErrorProbCauseUnknown = 0,
    ErrorProbCauseOther = 1,
    Unexpected_Information = 130
} CMPIErrorProbableCause;

typedef enum CMPIErrorSrcFormat {
    CMPIErrSrcUnknown = 0,
    CMPIErrSrcOther = 1,
    CIMObjectHandle = 2
} CMPIErrorSrcFormat;
#endif

#ifdef CMPI_VER_210
typedef enum CMPICodepageID {
    CMPI_CPID_SYSTEM = 1,
    CMPI_CPID_USASCII = 2,
    CMPI_CPID_UTF16 = 3
} CMPICodepageID;
#endif

#ifdef __cplusplus
}
#endif

#endif
