// Association classes: the builders that tie two object paths together, the walkers that enumerate the
// associations of a class over all links, and the getters that answer a single association.
#ifndef KESTO_FCIP_ASSOCIATIONS_H
#define KESTO_FCIP_ASSOCIATIONS_H

#include <cmpidt.h>
#include <cmpift.h>

#include "common/export.h"

extern "C" {

// Five families. Each makes one association of className from two object paths: an instance, or, but for the
// last, a path whose keys are the two references. NULL when either reference or its handle is missing, or
// when the broker fails. realize: "Antecedent", "Dependent".
FCIP_API CMPIInstance* realize_build_instance(const char* className, const char* nameSpace,
                                              const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                              const CMPIBroker* broker);
FCIP_API CMPIObjectPath* realize_fill_reference(const char* className, const char* nameSpace,
                                                const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                                const CMPIBroker* broker);
// managed setting: "ManagedElement", "SettingData", and "IsDefault" and "IsCurrent", both 1.
FCIP_API CMPIInstance* managed_setting_build_instance(const char* className, const char* nameSpace,
                                                      const CMPIObjectPath* ref1, const CMPIObjectPath* ref2);
FCIP_API CMPIObjectPath* managed_setting_fill_reference(const char* className, const char* nameSpace,
                                                        const CMPIObjectPath* ref1,
                                                        const CMPIObjectPath* ref2, const CMPIBroker* broker);
// managed stats: "ManagedElement", "Stats".
FCIP_API CMPIInstance* managed_stats_build_instance(const char* className, const char* nameSpace,
                                                    const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                                    const CMPIBroker* broker);
FCIP_API CMPIObjectPath* managed_stats_fill_reference(const char* className, const char* nameSpace,
                                                      const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                                      const CMPIBroker* broker);
// group part: "GroupComponent", "PartComponent".
FCIP_API CMPIInstance* group_part_build_instance(const char* className, const char* nameSpace,
                                                 const CMPIObjectPath* ref1, const CMPIObjectPath* ref2);
FCIP_API CMPIObjectPath* group_part_fill_reference(const char* className, const char* nameSpace,
                                                   const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                                   const CMPIBroker* broker);
// installed software: "System", "InstalledSoftware"; offered to other code, no walker uses it.
FCIP_API CMPIInstance* hba_si_build_instance(const char* className, const char* nameSpace,
                                             const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                             const CMPIBroker* broker);

// Every association of className, one a link. 0 when the walk ends normally, -1 when it stops at a link whose
// end path cannot be made. The property list is not used.
FCIP_API int get_all_binds_to_instances(const char* className, const CMPIResult* result,
                                        const char** properties, const char* nameSpace);
FCIP_API int get_all_binds_to_references(const char* className, const CMPIResult* result,
                                         const char* nameSpace);

// One association, made of the references that the request's own path carries as keys. 0 when an instance was
// returned, -1 when a reference is missing. The referenced objects are not looked up.
FCIP_API int get_ant_dep_instance(const CMPIObjectPath* op, const CMPIResult* result);
FCIP_API int get_managed_setting_instance(const CMPIObjectPath* op, const CMPIResult* result);
FCIP_API int get_managed_stats_instance(const CMPIObjectPath* op, const CMPIResult* result);
FCIP_API int get_group_part_instance(const CMPIObjectPath* op, const CMPIResult* result);

} // extern "C"

#endif
