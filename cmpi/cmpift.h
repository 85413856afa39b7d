// The function tables of the CMPI interface, versions 1.0, 2.0 and 2.1.
//
// Every object is a pair of a handle and a pointer to its function table. The handle belongs to whoever made
// the object; everybody else only calls through the table, passing the object itself first. The order of the
// members is the interface: later versions append, never insert. A caller must look at ftVersion before it
// uses a member that a later version added, and many brokers leave those members NULL all the same.
//
// Ownership: an object that the broker made for a provider belongs to the broker, which releases it when the
// operation returns; only what clone returns has to be released by its caller.
#ifndef KESTO_CMPIFT_H
#define KESTO_CMPIFT_H

#include <stddef.h>

#include "cmpidt.h"

#ifdef __cplusplus
extern "C" {
#endif

struct timespec;

// ---- The broker: what the CIM server offers to a provider. ----

struct CMPIBroker {
    const void* hdl;
    const CMPIBrokerFT* bft;    // calls back into the server
    const CMPIBrokerEncFT* eft; // makers of encapsulated objects
    const CMPIBrokerExtFT* xft; // threads and locks
#ifdef CMPI_VER_200
    const CMPIBrokerMemFT* mft; // memory; NULL in most servers
#endif
};

struct CMPIBrokerFT {
    unsigned int brokerCapabilities; // CMPI_MB_ flags
    CMPIVersion brokerVersion;
    const char* brokerName;
    CMPIContext* (*prepareAttachThread)(const CMPIBroker* mb, const CMPIContext* ctx);
    CMPIStatus (*attachThread)(const CMPIBroker* mb, const CMPIContext* ctx);
    CMPIStatus (*detachThread)(const CMPIBroker* mb, const CMPIContext* ctx);
    CMPIStatus (*deliverIndication)(const CMPIBroker* mb, const CMPIContext* ctx, const char* ns,
                                    const CMPIInstance* ind);
    CMPIEnumeration* (*enumerateInstanceNames)(const CMPIBroker* mb, const CMPIContext* ctx,
                                               const CMPIObjectPath* classPath, CMPIStatus* rc);
    CMPIInstance* (*getInstance)(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* instPath,
                                 const char** properties, CMPIStatus* rc);
    CMPIObjectPath* (*createInstance)(const CMPIBroker* mb, const CMPIContext* ctx,
                                      const CMPIObjectPath* classPath, const CMPIInstance* newInst,
                                      CMPIStatus* rc);
    CMPIStatus (*modifyInstance)(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* instPath,
                                 const CMPIInstance* modInst, const char** properties);
    CMPIStatus (*deleteInstance)(const CMPIBroker* mb, const CMPIContext* ctx,
                                 const CMPIObjectPath* instPath);
    CMPIEnumeration* (*execQuery)(const CMPIBroker* mb, const CMPIContext* ctx,
                                  const CMPIObjectPath* classPath, const char* query, const char* lang,
                                  CMPIStatus* rc);
    CMPIEnumeration* (*enumerateInstances)(const CMPIBroker* mb, const CMPIContext* ctx,
                                           const CMPIObjectPath* classPath, const char** properties,
                                           CMPIStatus* rc);
    CMPIEnumeration* (*associators)(const CMPIBroker* mb, const CMPIContext* ctx,
                                    const CMPIObjectPath* instPath, const char* assocClass,
                                    const char* resultClass, const char* role, const char* resultRole,
                                    const char** properties, CMPIStatus* rc);
    CMPIEnumeration* (*associatorNames)(const CMPIBroker* mb, const CMPIContext* ctx,
                                        const CMPIObjectPath* instPath, const char* assocClass,
                                        const char* resultClass, const char* role, const char* resultRole,
                                        CMPIStatus* rc);
    CMPIEnumeration* (*references)(const CMPIBroker* mb, const CMPIContext* ctx,
                                   const CMPIObjectPath* instPath, const char* resultClass, const char* role,
                                   const char** properties, CMPIStatus* rc);
    CMPIEnumeration* (*referenceNames)(const CMPIBroker* mb, const CMPIContext* ctx,
                                       const CMPIObjectPath* instPath, const char* resultClass,
                                       const char* role, CMPIStatus* rc);
    CMPIData (*invokeMethod)(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* objPath,
                             const char* method, const CMPIArgs* in, CMPIArgs* out, CMPIStatus* rc);
    CMPIStatus (*setProperty)(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* instPath,
                              const char* name, const CMPIValue* value, CMPIType type);
    CMPIData (*getProperty)(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* instPath,
                            const char* name, CMPIStatus* rc);
#ifdef CMPI_VER_210
    CMPIEnumeration* (*enumerateInstancesFiltered)(const CMPIBroker* mb, const CMPIContext* ctx,
                                                   const CMPIObjectPath* classPath, const char** properties,
                                                   const char* filterQueryLanguage, const char* filterQuery,
                                                   CMPIStatus* rc);
    CMPIEnumeration* (*associatorsFiltered)(const CMPIBroker* mb, const CMPIContext* ctx,
                                            const CMPIObjectPath* instPath, const char* assocClass,
                                            const char* resultClass, const char* role, const char* resultRole,
                                            const char** properties, const char* filterQueryLanguage,
                                            const char* filterQuery, CMPIStatus* rc);
    CMPIEnumeration* (*referencesFiltered)(const CMPIBroker* mb, const CMPIContext* ctx,
                                           const CMPIObjectPath* instPath, const char* resultClass,
                                           const char* role, const char** properties,
                                           const char* filterQueryLanguage, const char* filterQuery,
                                           CMPIStatus* rc);
#endif
};

struct CMPIBrokerEncFT {
    CMPIVersion ftVersion;
    CMPIInstance* (*newInstance)(const CMPIBroker* mb, const CMPIObjectPath* instPath, CMPIStatus* rc);
    CMPIObjectPath* (*newObjectPath)(const CMPIBroker* mb, const char* ns, const char* cn, CMPIStatus* rc);
    CMPIArgs* (*newArgs)(const CMPIBroker* mb, CMPIStatus* rc);
    CMPIString* (*newString)(const CMPIBroker* mb, const char* data, CMPIStatus* rc);
    CMPIArray* (*newArray)(const CMPIBroker* mb, CMPICount size, CMPIType type, CMPIStatus* rc);
    CMPIDateTime* (*newDateTime)(const CMPIBroker* mb, CMPIStatus* rc);
    CMPIDateTime* (*newDateTimeFromBinary)(const CMPIBroker* mb, CMPIUint64 binTime, CMPIBoolean interval,
                                           CMPIStatus* rc);
    CMPIDateTime* (*newDateTimeFromChars)(const CMPIBroker* mb, const char* datetime, CMPIStatus* rc);
    CMPISelectExp* (*newSelectExp)(const CMPIBroker* mb, const char* query, const char* lang,
                                   CMPIArray** projection, CMPIStatus* rc);
    CMPIBoolean (*classPathIsA)(const CMPIBroker* mb, const CMPIObjectPath* classPath, const char* className,
                                CMPIStatus* rc);
    CMPIString* (*toString)(const CMPIBroker* mb, const void* object, CMPIStatus* rc);
    CMPIBoolean (*isOfType)(const CMPIBroker* mb, const void* object, const char* type, CMPIStatus* rc);
    CMPIString* (*getType)(const CMPIBroker* mb, const void* object, CMPIStatus* rc);
    CMPIString* (*getMessage)(const CMPIBroker* mb, const char* msgId, const char* defMsg, CMPIStatus* rc,
                              CMPICount count, ...);
    CMPIStatus (*logMessage)(const CMPIBroker* mb, CMPISeverity severity, const char* id, const char* text,
                             const CMPIString* string);
    CMPIStatus (*trace)(const CMPIBroker* mb, CMPILevel level, const char* component, const char* text,
                        const CMPIString* string);
#ifdef CMPI_VER_200
    CMPIError* (*newCMPIError)(const CMPIBroker* mb, const char* owner, const char* msgID, const char* msg,
                               const CMPIErrorSeverity sev, const CMPIErrorProbableCause pc,
                               const CMPIrc cimStatusCode, CMPIStatus* rc);
    CMPIStatus (*openMessageFile)(const CMPIBroker* mb, const char* msgFile,
                                  CMPIMsgFileHandle* msgFileHandle);
    CMPIStatus (*closeMessageFile)(const CMPIBroker* mb, const CMPIMsgFileHandle msgFileHandle);
    CMPIString* (*getMessage2)(const CMPIBroker* mb, const char* msgId, const CMPIMsgFileHandle msgFileHandle,
                               const char* defMsg, CMPIStatus* rc, CMPICount count, ...);
#endif
#ifdef CMPI_VER_210
    CMPIPropertyList* (*newPropertyList)(const CMPIBroker* mb, const char** properties, CMPIStatus* rc);
    CMPIString* (*newStringCP)(const CMPIBroker* mb, const char* data, const CMPICodepageID cpid,
                               CMPIStatus* rc);
    CMPIEnumerationFilter* (*newEnumerationFilter)(const CMPIBroker* mb, const char* filterQueryLanguage,
                                                   const char* filterQuery, CMPIStatus* rc);
#endif
};

struct CMPIBrokerExtFT {
    CMPIVersion ftVersion;
    char* (*resolveFileName)(const char* libName);
    CMPI_THREAD_TYPE (*newThread)(CMPIThreadFunc start, void* parm, int detached);
    int (*joinThread)(CMPI_THREAD_TYPE thread, CMPI_THREAD_RETURN* retval);
    int (*exitThread)(CMPI_THREAD_RETURN returnCode);
    int (*cancelThread)(CMPI_THREAD_TYPE thread);
    int (*threadSleep)(CMPIUint32 msec);
    int (*threadOnce)(int* once, CMPIThreadOnceFunc function);
    int (*createThreadKey)(CMPI_THREAD_KEY_TYPE* key, CMPIThreadKeyCleanupFunc cleanup);
    int (*destroyThreadKey)(CMPI_THREAD_KEY_TYPE key);
    void* (*getThreadSpecific)(CMPI_THREAD_KEY_TYPE key);
    int (*setThreadSpecific)(CMPI_THREAD_KEY_TYPE key, void* value);
    CMPI_MUTEX_TYPE (*newMutex)(int opt);
    void (*destroyMutex)(CMPI_MUTEX_TYPE mutex);
    void (*lockMutex)(CMPI_MUTEX_TYPE mutex);
    void (*unlockMutex)(CMPI_MUTEX_TYPE mutex);
    CMPI_COND_TYPE (*newCondition)(int opt);
    void (*destroyCondition)(CMPI_COND_TYPE cond);
    int (*condWait)(CMPI_COND_TYPE cond, CMPI_MUTEX_TYPE mutex);
    int (*timedCondWait)(CMPI_COND_TYPE cond, CMPI_MUTEX_TYPE mutex, struct timespec* wait);
    int (*signalCondition)(CMPI_COND_TYPE cond);
#ifdef CMPI_VER_210
    int (*destroyMutex2)(CMPI_MUTEX_TYPE mutex);
    int (*lockMutex2)(CMPI_MUTEX_TYPE mutex);
    int (*unlockMutex2)(CMPI_MUTEX_TYPE mutex);
    int (*destroyCondition2)(CMPI_COND_TYPE cond);
#endif
};

#ifdef CMPI_VER_200
struct CMPIBrokerMemFT {
    CMPIVersion ftVersion;
    CMPIGcStat* (*mark)(const CMPIBroker* mb, CMPIStatus* rc);
    CMPIStatus (*release)(const CMPIBroker* mb, const CMPIGcStat* gc);
    void* (*cmpiMalloc)(const CMPIBroker* mb, size_t size);
    void* (*cmpiCalloc)(const CMPIBroker* mb, size_t nElems, size_t sizeElem);
    void* (*cmpiRealloc)(const CMPIBroker* mb, void* ptr, size_t size);
    char* (*cmpiStrDup)(const CMPIBroker* mb, const char* str);
    void (*cmpiFree)(const CMPIBroker* mb, void* ptr);
    void (*freeInstance)(const CMPIBroker* mb, CMPIInstance* inst);
    void (*freeObjectPath)(const CMPIBroker* mb, CMPIObjectPath* op);
    void (*freeArgs)(const CMPIBroker* mb, CMPIArgs* args);
    void (*freeString)(const CMPIBroker* mb, CMPIString* str);
    void (*freeArray)(const CMPIBroker* mb, CMPIArray* array);
    void (*freeDateTime)(const CMPIBroker* mb, CMPIDateTime* dt);
    void (*freeSelectExp)(const CMPIBroker* mb, CMPISelectExp* se);
#ifdef CMPI_VER_210
    void (*freeChars)(const CMPIBroker* mb, char* chars);
#endif
};
#endif

// ---- Encapsulated objects. ----

struct CMPIContext {
    const void* hdl;
    const CMPIContextFT* ft;
};

struct CMPIContextFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIContext* ctx);
    CMPIContext* (*clone)(const CMPIContext* ctx, CMPIStatus* rc);
    CMPIData (*getEntry)(const CMPIContext* ctx, const char* name, CMPIStatus* rc);
    CMPIData (*getEntryAt)(const CMPIContext* ctx, CMPICount index, CMPIString** name, CMPIStatus* rc);
    CMPICount (*getEntryCount)(const CMPIContext* ctx, CMPIStatus* rc);
    CMPIStatus (*addEntry)(const CMPIContext* ctx, const char* name, const CMPIValue* value,
                           const CMPIType type);
};

struct CMPIResult {
    const void* hdl;
    const CMPIResultFT* ft;
};

struct CMPIResultFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIResult* rslt);
    CMPIResult* (*clone)(const CMPIResult* rslt, CMPIStatus* rc);
    CMPIStatus (*returnData)(const CMPIResult* rslt, const CMPIValue* value, const CMPIType type);
    CMPIStatus (*returnInstance)(const CMPIResult* rslt, const CMPIInstance* inst);
    CMPIStatus (*returnObjectPath)(const CMPIResult* rslt, const CMPIObjectPath* op);
    CMPIStatus (*returnDone)(const CMPIResult* rslt);
#ifdef CMPI_VER_200
    CMPIStatus (*returnError)(const CMPIResult* rslt, const CMPIError* er);
#endif
};

struct CMPIString {
    const void* hdl;
    const CMPIStringFT* ft;
};

struct CMPIStringFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIString* str);
    CMPIString* (*clone)(const CMPIString* str, CMPIStatus* rc);
    const char* (*getCharPtr)(const CMPIString* str, CMPIStatus* rc);
#ifdef CMPI_VER_210
    char* (*newCharsCP)(const CMPIString* str, const CMPICodepageID cpid, CMPIStatus* rc);
#endif
};

struct CMPIArray {
    const void* hdl;
    const CMPIArrayFT* ft;
};

struct CMPIArrayFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIArray* ar);
    CMPIArray* (*clone)(const CMPIArray* ar, CMPIStatus* rc);
    CMPICount (*getSize)(const CMPIArray* ar, CMPIStatus* rc);
    CMPIType (*getSimpleType)(const CMPIArray* ar, CMPIStatus* rc);
    CMPIData (*getElementAt)(const CMPIArray* ar, CMPICount index, CMPIStatus* rc);
    CMPIStatus (*setElementAt)(const CMPIArray* ar, CMPICount index, const CMPIValue* value, CMPIType type);
};

struct CMPIEnumeration {
    const void* hdl;
    const CMPIEnumerationFT* ft;
};

struct CMPIEnumerationFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIEnumeration* en);
    CMPIEnumeration* (*clone)(const CMPIEnumeration* en, CMPIStatus* rc);
    CMPIData (*getNext)(const CMPIEnumeration* en, CMPIStatus* rc);
    CMPIBoolean (*hasNext)(const CMPIEnumeration* en, CMPIStatus* rc);
    CMPIArray* (*toArray)(const CMPIEnumeration* en, CMPIStatus* rc);
};

struct CMPIInstance {
    const void* hdl;
    const CMPIInstanceFT* ft;
};

struct CMPIInstanceFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIInstance* inst);
    CMPIInstance* (*clone)(const CMPIInstance* inst, CMPIStatus* rc);
    CMPIData (*getProperty)(const CMPIInstance* inst, const char* name, CMPIStatus* rc);
    CMPIData (*getPropertyAt)(const CMPIInstance* inst, CMPICount index, CMPIString** name, CMPIStatus* rc);
    CMPICount (*getPropertyCount)(const CMPIInstance* inst, CMPIStatus* rc);
    CMPIStatus (*setProperty)(const CMPIInstance* inst, const char* name, const CMPIValue* value,
                              CMPIType type);
    CMPIObjectPath* (*getObjectPath)(const CMPIInstance* inst, CMPIStatus* rc);
    CMPIStatus (*setPropertyFilter)(const CMPIInstance* inst, const char** properties, const char** keyList);
    CMPIStatus (*setObjectPath)(const CMPIInstance* inst, const CMPIObjectPath* op);
#ifdef CMPI_VER_200
    CMPIStatus (*setPropertyWithOrigin)(const CMPIInstance* inst, const char* name, const CMPIValue* value,
                                        const CMPIType type, const char* origin);
#endif
};

struct CMPIObjectPath {
    const void* hdl;
    const CMPIObjectPathFT* ft;
};

struct CMPIObjectPathFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIObjectPath* op);
    CMPIObjectPath* (*clone)(const CMPIObjectPath* op, CMPIStatus* rc);
    CMPIStatus (*setNameSpace)(const CMPIObjectPath* op, const char* ns);
    CMPIString* (*getNameSpace)(const CMPIObjectPath* op, CMPIStatus* rc);
    CMPIStatus (*setHostname)(const CMPIObjectPath* op, const char* hn);
    CMPIString* (*getHostname)(const CMPIObjectPath* op, CMPIStatus* rc);
    CMPIStatus (*setClassName)(const CMPIObjectPath* op, const char* cn);
    CMPIString* (*getClassName)(const CMPIObjectPath* op, CMPIStatus* rc);
    CMPIStatus (*addKey)(const CMPIObjectPath* op, const char* key, const CMPIValue* value,
                         const CMPIType type);
    CMPIData (*getKey)(const CMPIObjectPath* op, const char* key, CMPIStatus* rc);
    CMPIData (*getKeyAt)(const CMPIObjectPath* op, CMPICount index, CMPIString** name, CMPIStatus* rc);
    CMPICount (*getKeyCount)(const CMPIObjectPath* op, CMPIStatus* rc);
    CMPIStatus (*setNameSpaceFromObjectPath)(const CMPIObjectPath* op, const CMPIObjectPath* src);
    CMPIStatus (*setHostAndNameSpaceFromObjectPath)(const CMPIObjectPath* op, const CMPIObjectPath* src);
    CMPIData (*getClassQualifier)(const CMPIObjectPath* op, const char* qName, CMPIStatus* rc);
    CMPIData (*getPropertyQualifier)(const CMPIObjectPath* op, const char* pName, const char* qName,
                                     CMPIStatus* rc);
    CMPIData (*getMethodQualifier)(const CMPIObjectPath* op, const char* methodName, const char* qName,
                                   CMPIStatus* rc);
    CMPIData (*getParameterQualifier)(const CMPIObjectPath* op, const char* mName, const char* pName,
                                      const char* qName, CMPIStatus* rc);
    CMPIString* (*toString)(const CMPIObjectPath* op, CMPIStatus* rc);
};

struct CMPIArgs {
    const void* hdl;
    const CMPIArgsFT* ft;
};

struct CMPIArgsFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIArgs* args);
    CMPIArgs* (*clone)(const CMPIArgs* args, CMPIStatus* rc);
    CMPIStatus (*addArg)(const CMPIArgs* args, const char* name, const CMPIValue* value, const CMPIType type);
    CMPIData (*getArg)(const CMPIArgs* args, const char* name, CMPIStatus* rc);
    CMPIData (*getArgAt)(const CMPIArgs* args, CMPICount index, CMPIString** name, CMPIStatus* rc);
    CMPICount (*getArgCount)(const CMPIArgs* args, CMPIStatus* rc);
};

struct CMPIDateTime {
    const void* hdl;
    const CMPIDateTimeFT* ft;
};

struct CMPIDateTimeFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIDateTime* dt);
    CMPIDateTime* (*clone)(const CMPIDateTime* dt, CMPIStatus* rc);
    CMPIUint64 (*getBinaryFormat)(const CMPIDateTime* dt, CMPIStatus* rc);
    CMPIString* (*getStringFormat)(const CMPIDateTime* dt, CMPIStatus* rc);
    CMPIBoolean (*isInterval)(const CMPIDateTime* dt, CMPIStatus* rc);
};

// ---- Queries, for indication providers and execQuery. ----

struct CMPISelectExp {
    const void* hdl;
    const CMPISelectExpFT* ft;
};

struct CMPISelectExpFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPISelectExp* se);
    CMPISelectExp* (*clone)(const CMPISelectExp* se, CMPIStatus* rc);
    CMPIBoolean (*evaluate)(const CMPISelectExp* se, const CMPIInstance* inst, CMPIStatus* rc);
    CMPIString* (*getString)(const CMPISelectExp* se, CMPIStatus* rc);
    CMPISelectCond* (*getDOC)(const CMPISelectExp* se, CMPIStatus* rc);
    CMPISelectCond* (*getCOD)(const CMPISelectExp* se, CMPIStatus* rc);
    CMPIBoolean (*evaluateUsingAccessor)(const CMPISelectExp* se, CMPIAccessor* accessor, void* parm,
                                         CMPIStatus* rc);
};

struct CMPISelectCond {
    const void* hdl;
    const CMPISelectCondFT* ft;
};

struct CMPISelectCondFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPISelectCond* sc);
    CMPISelectCond* (*clone)(const CMPISelectCond* sc, CMPIStatus* rc);
    CMPICount (*getCountAndType)(const CMPISelectCond* sc, int* type, CMPIStatus* rc);
    CMPISubCond* (*getSubCondAt)(const CMPISelectCond* sc, CMPICount index, CMPIStatus* rc);
};

struct CMPISubCond {
    const void* hdl;
    const CMPISubCondFT* ft;
};

struct CMPISubCondFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPISubCond* sc);
    CMPISubCond* (*clone)(const CMPISubCond* sc, CMPIStatus* rc);
    CMPICount (*getCount)(const CMPISubCond* sc, CMPIStatus* rc);
    CMPIPredicate* (*getPredicateAt)(const CMPISubCond* sc, CMPICount index, CMPIStatus* rc);
    CMPIPredicate* (*getPredicate)(const CMPISubCond* sc, const char* name, CMPIStatus* rc);
};

struct CMPIPredicate {
    const void* hdl;
    const CMPIPredicateFT* ft;
};

struct CMPIPredicateFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIPredicate* pr);
    CMPIPredicate* (*clone)(const CMPIPredicate* pr, CMPIStatus* rc);
    CMPIStatus (*getData)(const CMPIPredicate* pr, CMPIType* type, CMPIPredOp* prop, CMPIString** lhs,
                          CMPIString** rhs);
    CMPIBoolean (*evaluateUsingAccessor)(const CMPIPredicate* pr, CMPIAccessor* accessor, void* parm,
                                         CMPIStatus* rc);
};

// ---- Objects of the later versions. ----

#ifdef CMPI_VER_200
struct CMPIError {
    const void* hdl;
    const CMPIErrorFT* ft;
};

struct CMPIErrorFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIError* er);
    CMPIError* (*clone)(const CMPIError* er, CMPIStatus* rc);
    CMPIErrorType (*getErrorType)(const CMPIError* er, CMPIStatus* rc);
    CMPIString* (*getOtherErrorType)(const CMPIError* er, CMPIStatus* rc);
    CMPIString* (*getOwningEntity)(const CMPIError* er, CMPIStatus* rc);
    CMPIString* (*getMessageID)(const CMPIError* er, CMPIStatus* rc);
    CMPIString* (*getMessage)(const CMPIError* er, CMPIStatus* rc);
    CMPIErrorSeverity (*getPerceivedSeverity)(const CMPIError* er, CMPIStatus* rc);
    CMPIErrorProbableCause (*getProbableCause)(const CMPIError* er, CMPIStatus* rc);
    CMPIString* (*getProbableCauseDescription)(const CMPIError* er, CMPIStatus* rc);
    CMPIArray* (*getRecommendedActions)(const CMPIError* er, CMPIStatus* rc);
    CMPIString* (*getErrorSource)(const CMPIError* er, CMPIStatus* rc);
    CMPIErrorSrcFormat (*getErrorSourceFormat)(const CMPIError* er, CMPIStatus* rc);
    CMPIString* (*getOtherErrorSourceFormat)(const CMPIError* er, CMPIStatus* rc);
    CMPIrc (*getCIMStatusCode)(const CMPIError* er, CMPIStatus* rc);
    CMPIString* (*getCIMStatusCodeDescription)(const CMPIError* er, CMPIStatus* rc);
    CMPIArray* (*getMessageArguments)(const CMPIError* er, CMPIStatus* rc);
    CMPIStatus (*setErrorType)(const CMPIError* er, const CMPIErrorType et);
    CMPIStatus (*setOtherErrorType)(const CMPIError* er, const char* ot);
    CMPIStatus (*setProbableCauseDescription)(const CMPIError* er, const char* pcd);
    CMPIStatus (*setRecommendedActions)(const CMPIError* er, const CMPIArray* ra);
    CMPIStatus (*setErrorSource)(const CMPIError* er, const char* es);
    CMPIStatus (*setErrorSourceFormat)(const CMPIError* er, const CMPIErrorSrcFormat esf);
    CMPIStatus (*setOtherErrorSourceFormat)(const CMPIError* er, const char* oef);
    CMPIStatus (*setCIMStatusCodeDescription)(const CMPIError* er, const char* scd);
    CMPIStatus (*setMessageArguments)(const CMPIError* er, const CMPIArray* values);
};
#endif

#ifdef CMPI_VER_210
struct CMPIPropertyList {
    const void* hdl;
    const CMPIPropertyListFT* ft;
};

struct CMPIPropertyListFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIPropertyList* plist);
    CMPIPropertyList* (*clone)(const CMPIPropertyList* plist, CMPIStatus* rc);
    CMPIBoolean (*isPropertyInList)(const CMPIPropertyList* plist, const char* pname, CMPIStatus* rc);
    const char** (*getProperties)(const CMPIPropertyList* plist, CMPIStatus* rc);
};

struct CMPIEnumerationFilter {
    const void* hdl;
    const CMPIEnumerationFilterFT* ft;
};

struct CMPIEnumerationFilterFT {
    CMPIVersion ftVersion;
    CMPIStatus (*release)(CMPIEnumerationFilter* ef);
    CMPIEnumerationFilter* (*clone)(const CMPIEnumerationFilter* ef, CMPIStatus* rc);
    CMPIBoolean (*match)(const CMPIEnumerationFilter* ef, const CMPIInstance* inst, CMPIStatus* rc);
};
#endif

// ---- Management interfaces: what a provider offers to the CIM server. ----

struct CMPIInstanceMI {
    const void* hdl;
    const CMPIInstanceMIFT* ft;
};

struct CMPIInstanceMIFT {
    CMPIVersion ftVersion;
    int miVersion;
    const char* miName;
    CMPIStatus (*cleanup)(CMPIInstanceMI* mi, const CMPIContext* ctx, CMPIBoolean terminating);
    CMPIStatus (*enumerateInstanceNames)(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                         const CMPIObjectPath* classPath);
    CMPIStatus (*enumerateInstances)(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                     const CMPIObjectPath* classPath, const char** properties);
    CMPIStatus (*getInstance)(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                              const CMPIObjectPath* instPath, const char** properties);
    CMPIStatus (*createInstance)(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                 const CMPIObjectPath* classPath, const CMPIInstance* inst);
    CMPIStatus (*modifyInstance)(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                 const CMPIObjectPath* instPath, const CMPIInstance* modInst,
                                 const char** properties);
    CMPIStatus (*deleteInstance)(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                 const CMPIObjectPath* instPath);
    CMPIStatus (*execQuery)(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                            const CMPIObjectPath* classPath, const char* query, const char* lang);
#ifdef CMPI_VER_210
    CMPIStatus (*enumerateInstancesFiltered)(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                             const CMPIResult* rslt, const CMPIObjectPath* classPath,
                                             const char** properties, const char* filterQueryLanguage,
                                             const char* filterQuery, CMPIStatus* rc);
#endif
};

struct CMPIAssociationMI {
    const void* hdl;
    const CMPIAssociationMIFT* ft;
};

struct CMPIAssociationMIFT {
    CMPIVersion ftVersion;
    int miVersion;
    const char* miName;
    CMPIStatus (*cleanup)(CMPIAssociationMI* mi, const CMPIContext* ctx, CMPIBoolean terminating);
    CMPIStatus (*associators)(CMPIAssociationMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                              const CMPIObjectPath* instPath, const char* assocClass, const char* resultClass,
                              const char* role, const char* resultRole, const char** properties);
    CMPIStatus (*associatorNames)(CMPIAssociationMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                  const CMPIObjectPath* instPath, const char* assocClass,
                                  const char* resultClass, const char* role, const char* resultRole);
    CMPIStatus (*references)(CMPIAssociationMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                             const CMPIObjectPath* instPath, const char* resultClass, const char* role,
                             const char** properties);
    CMPIStatus (*referenceNames)(CMPIAssociationMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                 const CMPIObjectPath* instPath, const char* resultClass, const char* role);
#ifdef CMPI_VER_210
    CMPIStatus (*associatorsFiltered)(CMPIAssociationMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                      const CMPIObjectPath* instPath, const char* assocClass,
                                      const char* resultClass, const char* role, const char* resultRole,
                                      const char** properties, const char* filterQueryLanguage,
                                      const char* filterQuery, CMPIBoolean continueOnError);
    CMPIStatus (*referencesFiltered)(CMPIAssociationMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                     const CMPIObjectPath* instPath, const char* resultClass,
                                     const char* role, const char** properties,
                                     const char* filterQueryLanguage, const char* filterQuery,
                                     CMPIBoolean continueOnError);
#endif
};

struct CMPIMethodMI {
    const void* hdl;
    const CMPIMethodMIFT* ft;
};

struct CMPIMethodMIFT {
    CMPIVersion ftVersion;
    int miVersion;
    const char* miName;
    CMPIStatus (*cleanup)(CMPIMethodMI* mi, const CMPIContext* ctx, CMPIBoolean terminating);
    CMPIStatus (*invokeMethod)(CMPIMethodMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                               const CMPIObjectPath* objPath, const char* method, const CMPIArgs* in,
                               CMPIArgs* out);
};

struct CMPIPropertyMI {
    const void* hdl;
    const CMPIPropertyMIFT* ft;
};

struct CMPIPropertyMIFT {
    CMPIVersion ftVersion;
    int miVersion;
    const char* miName;
    CMPIStatus (*cleanup)(CMPIPropertyMI* mi, const CMPIContext* ctx, CMPIBoolean terminating);
    CMPIStatus (*setProperty)(CMPIPropertyMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                              const CMPIObjectPath* instPath, const char* name, const CMPIData data);
    CMPIStatus (*getProperty)(CMPIPropertyMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                              const CMPIObjectPath* instPath, const char* name);
#ifdef CMPI_VER_200
    CMPIStatus (*setPropertyWithOrigin)(CMPIPropertyMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                        CMPIObjectPath* instPath, const char* name, const CMPIData data,
                                        const char* origin);
#endif
};

struct CMPIIndicationMI {
    const void* hdl;
    const CMPIIndicationMIFT* ft;
};

struct CMPIIndicationMIFT {
    CMPIVersion ftVersion;
    int miVersion;
    const char* miName;
    CMPIStatus (*cleanup)(CMPIIndicationMI* mi, const CMPIContext* ctx, CMPIBoolean terminating);
    CMPIStatus (*authorizeFilter)(CMPIIndicationMI* mi, const CMPIContext* ctx, const CMPISelectExp* filter,
                                  const char* className, const CMPIObjectPath* classPath, const char* owner);
    CMPIStatus (*mustPoll)(CMPIIndicationMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                           const CMPISelectExp* filter, const char* className,
                           const CMPIObjectPath* classPath);
    CMPIStatus (*activateFilter)(CMPIIndicationMI* mi, const CMPIContext* ctx, const CMPISelectExp* filter,
                                 const char* className, const CMPIObjectPath* classPath,
                                 CMPIBoolean firstActivation);
    CMPIStatus (*deActivateFilter)(CMPIIndicationMI* mi, const CMPIContext* ctx, const CMPISelectExp* filter,
                                   const char* className, const CMPIObjectPath* classPath,
                                   CMPIBoolean lastDeActivation);
    CMPIStatus (*enableIndications)(CMPIIndicationMI* mi, const CMPIContext* ctx);
    CMPIStatus (*disableIndications)(CMPIIndicationMI* mi, const CMPIContext* ctx);
#ifdef CMPI_VER_210
    CMPIStatus (*authorizeFilterCollection)(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                            const CMPIInstance* collInst);
    CMPIStatus (*activateFilterCollection)(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                           const CMPIInstance* collInst, CMPIBoolean firstActivation);
    CMPIStatus (*deActivateFilterCollection)(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                             const CMPIInstance* collInst, CMPIBoolean lastDeActivation);
#endif
};

#ifdef __cplusplus
}
#endif

#ifdef __cplusplus
#include "cmpi_layout.h"
#endif

#endif
