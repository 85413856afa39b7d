// A provider for the server's own tests: each of its classes does one thing that the server has to cope with.
//
// It traces to standard output like the providers that the server is made for, and never calls returnDone.
#include <cmpidt.h>
#include <cmpift.h>
#include <strings.h>

#include "tests/server/probe/associations.h"
#include "tests/server/probe/instances.h"
#include "tests/server/probe/objects.h"

namespace {

using namespace probe;

CMPIStatus clean_up_instances(CMPIInstanceMI*, const CMPIContext*, CMPIBoolean) {
    return ok();
}

CMPIStatus enumerate_instance_names(CMPIInstanceMI*, const CMPIContext* context, const CMPIResult* result,
                                    const CMPIObjectPath* path) {
    return instance_names({context, result, path, nullptr});
}

CMPIStatus enumerate_instances(CMPIInstanceMI*, const CMPIContext* context, const CMPIResult* result,
                               const CMPIObjectPath* path, const char** properties) {
    return instances({context, result, path, properties});
}

CMPIStatus get_instance(CMPIInstanceMI*, const CMPIContext* context, const CMPIResult* result,
                        const CMPIObjectPath* path, const char** properties) {
    return instance({context, result, path, properties});
}

CMPIStatus create_instance(CMPIInstanceMI*, const CMPIContext*, const CMPIResult* result,
                           const CMPIObjectPath* path, const CMPIInstance* instance) {
    if (!is_a(path, "Probe_Thing")) return {CMPI_RC_ERR_NOT_SUPPORTED, nullptr};
    result->ft->returnObjectPath(
        result, thing(chars_of(instance->ft->getProperty(instance, "Name", nullptr).value.string)));
    return ok();
}

CMPIStatus modify_instance(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath* path,
                           const CMPIInstance* instance, const char** properties) {
    const bool oneWanted = properties != nullptr && (properties[0] != nullptr) && (properties[1] == nullptr);
    const bool coloured = instance->ft->getProperty(instance, "Colour", nullptr).type == CMPI_string;
    if (key_of(path, "Name") == "one" && oneWanted && coloured) return ok();
    return {CMPI_RC_ERR_NOT_FOUND, new_string("nothing to modify")};
}

CMPIStatus delete_instance(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*,
                           const CMPIObjectPath* path) {
    if (key_of(path, "Name") == "one") return ok();
    return {CMPI_RC_ERR_NOT_FOUND, nullptr};
}

CMPIStatus exec_query(CMPIInstanceMI*, const CMPIContext*, const CMPIResult* result,
                      const CMPIObjectPath* path, const char* query, const char* language) {
    if (strcasecmp(language, "WQL") != 0) return {CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED, nullptr};
    CMPIInstance* instance = new_thing("found");
    set(instance, "Query", query);
    set(instance, "ClassAsked", class_of(path).c_str());
    result->ft->returnInstance(result, instance);
    return ok();
}

CMPIStatus clean_up_associations(CMPIAssociationMI*, const CMPIContext*, CMPIBoolean) {
    return ok();
}

CMPIStatus associators_of(CMPIAssociationMI*, const CMPIContext* context, const CMPIResult* result,
                          const CMPIObjectPath* path, const char* association, const char*, const char*,
                          const char*, const char** properties) {
    return associators({context, result, path, properties}, association);
}

CMPIStatus associator_names_of(CMPIAssociationMI*, const CMPIContext* context, const CMPIResult* result,
                               const CMPIObjectPath* path, const char* association, const char*, const char*,
                               const char*) {
    return associator_names({context, result, path, nullptr}, association);
}

CMPIStatus references_of(CMPIAssociationMI*, const CMPIContext* context, const CMPIResult* result,
                         const CMPIObjectPath* path, const char* association, const char*,
                         const char** properties) {
    return references({context, result, path, properties}, association);
}

CMPIStatus reference_names_of(CMPIAssociationMI*, const CMPIContext* context, const CMPIResult* result,
                              const CMPIObjectPath* path, const char* association, const char*) {
    return reference_names({context, result, path, nullptr}, association);
}

// The two interfaces. Functions of later versions stay empty.
CMPIInstanceMI* instance_interface(const char* name) {
    static CMPIInstanceMIFT table{};
    static CMPIInstanceMI mi{};
    table.ftVersion = CMPIVersion100;
    table.miVersion = CMPIVersion100;
    table.miName = name;
    table.cleanup = clean_up_instances;
    table.enumerateInstanceNames = enumerate_instance_names;
    table.enumerateInstances = enumerate_instances;
    table.getInstance = get_instance;
    table.createInstance = create_instance;
    table.modifyInstance = modify_instance;
    table.deleteInstance = delete_instance;
    table.execQuery = exec_query;
    mi.ft = &table;
    return &mi;
}

CMPIAssociationMI* association_interface(const char* name) {
    static CMPIAssociationMIFT table{};
    static CMPIAssociationMI mi{};
    table.ftVersion = CMPIVersion100;
    table.miVersion = CMPIVersion100;
    table.miName = name;
    table.cleanup = clean_up_associations;
    table.associators = associators_of;
    table.associatorNames = associator_names_of;
    table.references = references_of;
    table.referenceNames = reference_names_of;
    mi.ft = &table;
    return &mi;
}

} // namespace

CMPI_EXTERN_C CMPIInstanceMI* Probe_Create_InstanceMI(const CMPIBroker* mb, const CMPIContext*,
                                                      CMPIStatus* rc) {
    broker = mb;
    *rc = ok();
    return instance_interface("instanceProbe");
}

CMPI_EXTERN_C CMPIAssociationMI* Probe_Create_AssociationMI(const CMPIBroker* mb, const CMPIContext*,
                                                            CMPIStatus* rc) {
    broker = mb;
    *rc = ok();
    return association_interface("associationProbe");
}

// Two providers more: one without associations, one that cannot be made.
CMPI_EXTERN_C CMPIInstanceMI* InstancesOnly_Create_InstanceMI(const CMPIBroker*, const CMPIContext*,
                                                              CMPIStatus* rc) {
    *rc = ok();
    return instance_interface("instanceInstancesOnly");
}

CMPI_EXTERN_C CMPIInstanceMI* Unmakeable_Create_InstanceMI(const CMPIBroker* mb, const CMPIContext*,
                                                           CMPIStatus* rc) {
    *rc = {CMPI_RC_ERR_FAILED, mb->eft->newString(mb, "out of order", nullptr)};
    return nullptr;
}
