// The association families as data: the two builders of each, with one signature for all.
#ifndef KESTO_ASSOC_FAMILIES_H
#define KESTO_ASSOC_FAMILIES_H

#include <cmpidt.h>
#include <cmpift.h>

#include "common/broker.h"
#include "include/associations.h"

struct AssociationFamily {
    CMPIInstance* (*build)(const char* className, const char* nameSpace, const CMPIObjectPath* ref1,
                           const CMPIObjectPath* ref2);
    CMPIObjectPath* (*fill)(const char* className, const char* nameSpace, const CMPIObjectPath* ref1,
                            const CMPIObjectPath* ref2, const CMPIBroker* broker);
};

template <auto* build>
CMPIInstance* with_broker(const char* className, const char* nameSpace, const CMPIObjectPath* ref1,
                          const CMPIObjectPath* ref2) {
    return build(className, nameSpace, ref1, ref2, _broker);
}

inline constexpr AssociationFamily REALIZE{with_broker<realize_build_instance>, realize_fill_reference};
inline constexpr AssociationFamily MANAGED_SETTING{managed_setting_build_instance,
                                                   managed_setting_fill_reference};
inline constexpr AssociationFamily MANAGED_STATS{with_broker<managed_stats_build_instance>,
                                                 managed_stats_fill_reference};
inline constexpr AssociationFamily GROUP_PART{group_part_build_instance, group_part_fill_reference};

// One association of a family, as an instance or as a path.
inline CMPIInstance* associate_instance(const AssociationFamily& family, const char* className,
                                        const char* nameSpace, const CMPIObjectPath* ref1,
                                        const CMPIObjectPath* ref2) {
    return family.build(className, nameSpace, ref1, ref2);
}
inline CMPIObjectPath* associate_path(const AssociationFamily& family, const char* className,
                                      const char* nameSpace, const CMPIObjectPath* ref1,
                                      const CMPIObjectPath* ref2) {
    return family.fill(className, nameSpace, ref1, ref2, _broker);
}

#endif
