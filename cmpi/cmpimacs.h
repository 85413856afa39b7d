// Shorthands for calls through the CMPI function tables, under their usual names: CM... for the encapsulated
// objects, CB... for the broker, and the stubs that define a provider's factory functions.
//
// They only reach members of version 1.0, so that they work with every broker. `rc` is where a call stores
// its status, or NULL.
#ifndef KESTO_CMPIMACS_H
#define KESTO_CMPIMACS_H

#include "cmpift.h"

#ifdef __cplusplus
extern "C" {
#endif

// ---- Status. ----

static inline void CMSetStatus(CMPIStatus* st, CMPIrc rcode) {
    if (st) {
        st->rc = rcode;
        st->msg = NULL;
    }
}

static inline void CMSetStatusWithString(CMPIStatus* st, CMPIrc rcode, CMPIString* message) {
    if (st) {
        st->rc = rcode;
        st->msg = message;
    }
}

static inline void CMSetStatusWithChars(const CMPIBroker* mb, CMPIStatus* st, CMPIrc rcode,
                                        const char* message) {
    CMSetStatusWithString(st, rcode, mb->eft->newString(mb, message, NULL));
}

#define CMReturn(rcode)                     \
    do {                                    \
        CMPIStatus cmpiStatus_;             \
        CMSetStatus(&cmpiStatus_, (rcode)); \
        return cmpiStatus_;                 \
    } while (0)
#define CMReturnWithString(rcode, message)                       \
    do {                                                         \
        CMPIStatus cmpiStatus_;                                  \
        CMSetStatusWithString(&cmpiStatus_, (rcode), (message)); \
        return cmpiStatus_;                                      \
    } while (0)
#define CMReturnWithChars(mb, rcode, message)                         \
    do {                                                              \
        CMPIStatus cmpiStatus_;                                       \
        CMSetStatusWithChars((mb), &cmpiStatus_, (rcode), (message)); \
        return cmpiStatus_;                                           \
    } while (0)

// ---- Any object, any data. ----

#define CMIsNullObject(object) ((object) == NULL || (object)->hdl == NULL)
#define CMIsNullValue(data) (((data).state & CMPI_nullValue) != 0)
#define CMIsKeyValue(data) (((data).state & CMPI_keyValue) != 0)
#define CMIsArray(data) (((data).type & CMPI_ARRAY) != 0)
#define CMRelease(object) ((object)->ft->release((object)))
#define CMClone(object, rc) ((object)->ft->clone((object), (rc)))

// ---- Context. ----

static inline CMPIData CMGetContextEntry(const CMPIContext* ctx, const char* name, CMPIStatus* rc) {
    return ctx->ft->getEntry(ctx, name, rc);
}
static inline CMPIData CMGetContextEntryAt(const CMPIContext* ctx, CMPICount index, CMPIString** name,
                                           CMPIStatus* rc) {
    return ctx->ft->getEntryAt(ctx, index, name, rc);
}
static inline CMPICount CMGetContextEntryCount(const CMPIContext* ctx, CMPIStatus* rc) {
    return ctx->ft->getEntryCount(ctx, rc);
}
static inline CMPIStatus CMAddContextEntry(const CMPIContext* ctx, const char* name, const CMPIValue* value,
                                           CMPIType type) {
    return ctx->ft->addEntry(ctx, name, value, type);
}

// ---- Result. ----

static inline CMPIStatus CMReturnData(const CMPIResult* rslt, const CMPIValue* value, CMPIType type) {
    return rslt->ft->returnData(rslt, value, type);
}
static inline CMPIStatus CMReturnInstance(const CMPIResult* rslt, const CMPIInstance* inst) {
    return rslt->ft->returnInstance(rslt, inst);
}
static inline CMPIStatus CMReturnObjectPath(const CMPIResult* rslt, const CMPIObjectPath* op) {
    return rslt->ft->returnObjectPath(rslt, op);
}
static inline CMPIStatus CMReturnDone(const CMPIResult* rslt) {
    return rslt->ft->returnDone(rslt);
}

// ---- String, array, enumeration. ----

static inline const char* CMGetCharsPtr(const CMPIString* str, CMPIStatus* rc) {
    return str->ft->getCharPtr(str, rc);
}
static inline const char* CMGetCharPtr(const CMPIString* str) {
    return str->ft->getCharPtr(str, NULL);
}

static inline CMPICount CMGetArrayCount(const CMPIArray* ar, CMPIStatus* rc) {
    return ar->ft->getSize(ar, rc);
}
static inline CMPIType CMGetArrayType(const CMPIArray* ar, CMPIStatus* rc) {
    return ar->ft->getSimpleType(ar, rc);
}
static inline CMPIData CMGetArrayElementAt(const CMPIArray* ar, CMPICount index, CMPIStatus* rc) {
    return ar->ft->getElementAt(ar, index, rc);
}
static inline CMPIStatus CMSetArrayElementAt(const CMPIArray* ar, CMPICount index, const CMPIValue* value,
                                             CMPIType type) {
    return ar->ft->setElementAt(ar, index, value, type);
}

static inline CMPIData CMGetNext(const CMPIEnumeration* en, CMPIStatus* rc) {
    return en->ft->getNext(en, rc);
}
static inline CMPIBoolean CMHasNext(const CMPIEnumeration* en, CMPIStatus* rc) {
    return en->ft->hasNext(en, rc);
}
static inline CMPIArray* CMToArray(const CMPIEnumeration* en, CMPIStatus* rc) {
    return en->ft->toArray(en, rc);
}

// ---- Instance. ----

static inline CMPIData CMGetProperty(const CMPIInstance* inst, const char* name, CMPIStatus* rc) {
    return inst->ft->getProperty(inst, name, rc);
}
static inline CMPIData CMGetPropertyAt(const CMPIInstance* inst, CMPICount index, CMPIString** name,
                                       CMPIStatus* rc) {
    return inst->ft->getPropertyAt(inst, index, name, rc);
}
static inline CMPICount CMGetPropertyCount(const CMPIInstance* inst, CMPIStatus* rc) {
    return inst->ft->getPropertyCount(inst, rc);
}
static inline CMPIStatus CMSetProperty(const CMPIInstance* inst, const char* name, const CMPIValue* value,
                                       CMPIType type) {
    return inst->ft->setProperty(inst, name, value, type);
}
static inline CMPIObjectPath* CMGetObjectPath(const CMPIInstance* inst, CMPIStatus* rc) {
    return inst->ft->getObjectPath(inst, rc);
}
static inline CMPIStatus CMSetPropertyFilter(const CMPIInstance* inst, const char** properties,
                                             const char** keyList) {
    return inst->ft->setPropertyFilter(inst, properties, keyList);
}
static inline CMPIStatus CMSetObjectPath(const CMPIInstance* inst, const CMPIObjectPath* op) {
    return inst->ft->setObjectPath(inst, op);
}

// ---- Object path. ----

static inline CMPIStatus CMSetNameSpace(const CMPIObjectPath* op, const char* ns) {
    return op->ft->setNameSpace(op, ns);
}
static inline CMPIString* CMGetNameSpace(const CMPIObjectPath* op, CMPIStatus* rc) {
    return op->ft->getNameSpace(op, rc);
}
static inline CMPIStatus CMSetHostname(const CMPIObjectPath* op, const char* hn) {
    return op->ft->setHostname(op, hn);
}
static inline CMPIString* CMGetHostname(const CMPIObjectPath* op, CMPIStatus* rc) {
    return op->ft->getHostname(op, rc);
}
static inline CMPIStatus CMSetClassName(const CMPIObjectPath* op, const char* cn) {
    return op->ft->setClassName(op, cn);
}
static inline CMPIString* CMGetClassName(const CMPIObjectPath* op, CMPIStatus* rc) {
    return op->ft->getClassName(op, rc);
}
static inline CMPIStatus CMAddKey(const CMPIObjectPath* op, const char* key, const CMPIValue* value,
                                  CMPIType type) {
    return op->ft->addKey(op, key, value, type);
}
static inline CMPIData CMGetKey(const CMPIObjectPath* op, const char* key, CMPIStatus* rc) {
    return op->ft->getKey(op, key, rc);
}
static inline CMPIData CMGetKeyAt(const CMPIObjectPath* op, CMPICount index, CMPIString** name,
                                  CMPIStatus* rc) {
    return op->ft->getKeyAt(op, index, name, rc);
}
static inline CMPICount CMGetKeyCount(const CMPIObjectPath* op, CMPIStatus* rc) {
    return op->ft->getKeyCount(op, rc);
}
static inline CMPIStatus CMSetNameSpaceFromObjectPath(const CMPIObjectPath* op, const CMPIObjectPath* src) {
    return op->ft->setNameSpaceFromObjectPath(op, src);
}
static inline CMPIStatus CMSetHostAndNameSpaceFromObjectPath(const CMPIObjectPath* op,
                                                             const CMPIObjectPath* src) {
    return op->ft->setHostAndNameSpaceFromObjectPath(op, src);
}

// ---- Arguments, dates. ----

static inline CMPIStatus CMAddArg(const CMPIArgs* args, const char* name, const CMPIValue* value,
                                  CMPIType type) {
    return args->ft->addArg(args, name, value, type);
}
static inline CMPIData CMGetArg(const CMPIArgs* args, const char* name, CMPIStatus* rc) {
    return args->ft->getArg(args, name, rc);
}
static inline CMPIData CMGetArgAt(const CMPIArgs* args, CMPICount index, CMPIString** name, CMPIStatus* rc) {
    return args->ft->getArgAt(args, index, name, rc);
}
static inline CMPICount CMGetArgCount(const CMPIArgs* args, CMPIStatus* rc) {
    return args->ft->getArgCount(args, rc);
}

static inline CMPIUint64 CMGetBinaryFormat(const CMPIDateTime* dt, CMPIStatus* rc) {
    return dt->ft->getBinaryFormat(dt, rc);
}
static inline CMPIString* CMGetStringFormat(const CMPIDateTime* dt, CMPIStatus* rc) {
    return dt->ft->getStringFormat(dt, rc);
}
static inline CMPIBoolean CMIsInterval(const CMPIDateTime* dt, CMPIStatus* rc) {
    return dt->ft->isInterval(dt, rc);
}

// ---- Makers of objects. ----

static inline CMPIInstance* CMNewInstance(const CMPIBroker* mb, const CMPIObjectPath* op, CMPIStatus* rc) {
    return mb->eft->newInstance(mb, op, rc);
}
static inline CMPIObjectPath* CMNewObjectPath(const CMPIBroker* mb, const char* ns, const char* cn,
                                              CMPIStatus* rc) {
    return mb->eft->newObjectPath(mb, ns, cn, rc);
}
static inline CMPIArgs* CMNewArgs(const CMPIBroker* mb, CMPIStatus* rc) {
    return mb->eft->newArgs(mb, rc);
}
static inline CMPIString* CMNewString(const CMPIBroker* mb, const char* data, CMPIStatus* rc) {
    return mb->eft->newString(mb, data, rc);
}
static inline CMPIArray* CMNewArray(const CMPIBroker* mb, CMPICount size, CMPIType type, CMPIStatus* rc) {
    return mb->eft->newArray(mb, size, type, rc);
}
static inline CMPIDateTime* CMNewDateTime(const CMPIBroker* mb, CMPIStatus* rc) {
    return mb->eft->newDateTime(mb, rc);
}
static inline CMPIDateTime* CMNewDateTimeFromBinary(const CMPIBroker* mb, CMPIUint64 binTime,
                                                    CMPIBoolean interval, CMPIStatus* rc) {
    return mb->eft->newDateTimeFromBinary(mb, binTime, interval, rc);
}
static inline CMPIDateTime* CMNewDateTimeFromChars(const CMPIBroker* mb, const char* datetime,
                                                   CMPIStatus* rc) {
    return mb->eft->newDateTimeFromChars(mb, datetime, rc);
}
static inline CMPIBoolean CMClassPathIsA(const CMPIBroker* mb, const CMPIObjectPath* op, const char* type,
                                         CMPIStatus* rc) {
    return mb->eft->classPathIsA(mb, op, type, rc);
}
static inline CMPIString* CDToString(const CMPIBroker* mb, const void* object, CMPIStatus* rc) {
    return mb->eft->toString(mb, object, rc);
}
static inline CMPIBoolean CDIsOfType(const CMPIBroker* mb, const void* object, const char* type,
                                     CMPIStatus* rc) {
    return mb->eft->isOfType(mb, object, type, rc);
}
static inline CMPIString* CDGetType(const CMPIBroker* mb, const void* object, CMPIStatus* rc) {
    return mb->eft->getType(mb, object, rc);
}

// ---- Calls back into the server. ----

static inline unsigned int CBGetCapabilities(const CMPIBroker* mb) {
    return mb->bft->brokerCapabilities;
}
static inline CMPIVersion CBBrokerVersion(const CMPIBroker* mb) {
    return mb->bft->brokerVersion;
}
static inline const char* CBBrokerName(const CMPIBroker* mb) {
    return mb->bft->brokerName;
}
static inline CMPIContext* CBPrepareAttachThread(const CMPIBroker* mb, const CMPIContext* ctx) {
    return mb->bft->prepareAttachThread(mb, ctx);
}
static inline CMPIStatus CBAttachThread(const CMPIBroker* mb, const CMPIContext* ctx) {
    return mb->bft->attachThread(mb, ctx);
}
static inline CMPIStatus CBDetachThread(const CMPIBroker* mb, const CMPIContext* ctx) {
    return mb->bft->detachThread(mb, ctx);
}
static inline CMPIEnumeration* CBEnumInstanceNames(const CMPIBroker* mb, const CMPIContext* ctx,
                                                   const CMPIObjectPath* op, CMPIStatus* rc) {
    return mb->bft->enumerateInstanceNames(mb, ctx, op, rc);
}
static inline CMPIEnumeration* CBEnumInstances(const CMPIBroker* mb, const CMPIContext* ctx,
                                               const CMPIObjectPath* op, const char** properties,
                                               CMPIStatus* rc) {
    return mb->bft->enumerateInstances(mb, ctx, op, properties, rc);
}
static inline CMPIInstance* CBGetInstance(const CMPIBroker* mb, const CMPIContext* ctx,
                                          const CMPIObjectPath* op, const char** properties, CMPIStatus* rc) {
    return mb->bft->getInstance(mb, ctx, op, properties, rc);
}
static inline CMPIObjectPath* CBCreateInstance(const CMPIBroker* mb, const CMPIContext* ctx,
                                               const CMPIObjectPath* op, const CMPIInstance* inst,
                                               CMPIStatus* rc) {
    return mb->bft->createInstance(mb, ctx, op, inst, rc);
}
static inline CMPIStatus CBModifyInstance(const CMPIBroker* mb, const CMPIContext* ctx,
                                          const CMPIObjectPath* op, const CMPIInstance* inst,
                                          const char** properties) {
    return mb->bft->modifyInstance(mb, ctx, op, inst, properties);
}
static inline CMPIStatus CBDeleteInstance(const CMPIBroker* mb, const CMPIContext* ctx,
                                          const CMPIObjectPath* op) {
    return mb->bft->deleteInstance(mb, ctx, op);
}
static inline CMPIEnumeration* CBExecQuery(const CMPIBroker* mb, const CMPIContext* ctx,
                                           const CMPIObjectPath* op, const char* query, const char* lang,
                                           CMPIStatus* rc) {
    return mb->bft->execQuery(mb, ctx, op, query, lang, rc);
}
static inline CMPIEnumeration* CBAssociators(const CMPIBroker* mb, const CMPIContext* ctx,
                                             const CMPIObjectPath* op, const char* assocClass,
                                             const char* resultClass, const char* role,
                                             const char* resultRole, const char** properties,
                                             CMPIStatus* rc) {
    return mb->bft->associators(mb, ctx, op, assocClass, resultClass, role, resultRole, properties, rc);
}
static inline CMPIEnumeration* CBAssociatorNames(const CMPIBroker* mb, const CMPIContext* ctx,
                                                 const CMPIObjectPath* op, const char* assocClass,
                                                 const char* resultClass, const char* role,
                                                 const char* resultRole, CMPIStatus* rc) {
    return mb->bft->associatorNames(mb, ctx, op, assocClass, resultClass, role, resultRole, rc);
}
static inline CMPIEnumeration* CBReferences(const CMPIBroker* mb, const CMPIContext* ctx,
                                            const CMPIObjectPath* op, const char* resultClass,
                                            const char* role, const char** properties, CMPIStatus* rc) {
    return mb->bft->references(mb, ctx, op, resultClass, role, properties, rc);
}
static inline CMPIEnumeration* CBReferenceNames(const CMPIBroker* mb, const CMPIContext* ctx,
                                                const CMPIObjectPath* op, const char* resultClass,
                                                const char* role, CMPIStatus* rc) {
    return mb->bft->referenceNames(mb, ctx, op, resultClass, role, rc);
}
static inline CMPIData CBInvokeMethod(const CMPIBroker* mb, const CMPIContext* ctx, const CMPIObjectPath* op,
                                      const char* method, const CMPIArgs* in, CMPIArgs* out, CMPIStatus* rc) {
    return mb->bft->invokeMethod(mb, ctx, op, method, in, out, rc);
}

#ifdef __cplusplus
}
#endif

// ---- Factories. ----

// CMInstanceMIStub(prefix, provider, brokerVariable, hook) defines provider_Create_InstanceMI, whose table
// holds prefixCleanup, prefixEnumInstanceNames and so on. `hook` runs at each factory call; CMNoHook is none.
// The members of later versions stay empty.
#define CMNoHook

#define CMInstanceMIStub(prefix, provider, brokerVariable, hook)                                             \
    CMPI_EXTERN_C CMPIInstanceMI* provider##_Create_InstanceMI(const CMPIBroker* mb, const CMPIContext* ctx, \
                                                               CMPIStatus* rc) {                             \
        static CMPIInstanceMIFT table;                                                                       \
        static CMPIInstanceMI mi;                                                                            \
        table.ftVersion = CMPIVersion100;                                                                    \
        table.miVersion = CMPIVersion100;                                                                    \
        table.miName = "instance" #provider;                                                                 \
        table.cleanup = prefix##Cleanup;                                                                     \
        table.enumerateInstanceNames = prefix##EnumInstanceNames;                                            \
        table.enumerateInstances = prefix##EnumInstances;                                                    \
        table.getInstance = prefix##GetInstance;                                                             \
        table.createInstance = prefix##CreateInstance;                                                       \
        table.modifyInstance = prefix##ModifyInstance;                                                       \
        table.deleteInstance = prefix##DeleteInstance;                                                       \
        table.execQuery = prefix##ExecQuery;                                                                 \
        mi.ft = &table;                                                                                      \
        (void)ctx;                                                                                           \
        brokerVariable = mb;                                                                                 \
        CMSetStatus(rc, CMPI_RC_OK);                                                                         \
        hook;                                                                                                \
        return &mi;                                                                                          \
    }

#define CMAssociationMIStub(prefix, provider, brokerVariable, hook)     \
    CMPI_EXTERN_C CMPIAssociationMI* provider##_Create_AssociationMI(   \
        const CMPIBroker* mb, const CMPIContext* ctx, CMPIStatus* rc) { \
        static CMPIAssociationMIFT table;                               \
        static CMPIAssociationMI mi;                                    \
        table.ftVersion = CMPIVersion100;                               \
        table.miVersion = CMPIVersion100;                               \
        table.miName = "association" #provider;                         \
        table.cleanup = prefix##AssociationCleanup;                     \
        table.associators = prefix##Associators;                        \
        table.associatorNames = prefix##AssociatorNames;                \
        table.references = prefix##References;                          \
        table.referenceNames = prefix##ReferenceNames;                  \
        mi.ft = &table;                                                 \
        (void)ctx;                                                      \
        brokerVariable = mb;                                            \
        CMSetStatus(rc, CMPI_RC_OK);                                    \
        hook;                                                           \
        return &mi;                                                     \
    }

#endif
