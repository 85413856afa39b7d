// Single associations. A get-instance request on an association class carries both ends in its keys; they are
// given back as an instance, and nobody looks whether they exist.
#include <strings.h>

#include <cstdio>

#include "common/broker.h"
#include "common/results.h"
#include "include/associations.h"
#include "platform/platform_services.h"

namespace {

// The reference that a key carries; a key of another type carries none.
CMPIObjectPath* reference_in(const CMPIData& data) {
    return data.type == CMPI_ref ? data.value.ref : nullptr;
}

int get_association(const CMPIObjectPath* op, const CMPIResult* result, const char* role1, const char* role2,
                    bool traceKeys) {
    CMPIObjectPath* ref1 = nullptr;
    CMPIObjectPath* ref2 = nullptr;
    const CMPICount count = op->ft->getKeyCount(op, nullptr);
    for (CMPICount index = 0; index < count; ++index) {
        CMPIString* keyName = nullptr;
        const CMPIData data = op->ft->getKeyAt(op, index, &keyName, nullptr);
        char name[255];
        std::snprintf(name, sizeof name - 1, "%s", text_of(keyName));
        if (traceKeys) std::printf("Key %s \n", name);
        if (strcasecmp(name, role1) == 0) {
            ref1 = reference_in(data);
        } else if (strcasecmp(name, role2) == 0) {
            ref2 = reference_in(data);
        }
    }
    if (ref1 == nullptr || ref2 == nullptr) return -1;
    hand_over(result, association_class_build_instance_path(class_name_of(op), name_space_of(op), ref1, ref2,
                                                            role1, role2, _broker));
    return 0;
}

} // namespace

int get_ant_dep_instance(const CMPIObjectPath* op, const CMPIResult* result) {
    return get_association(op, result, "Antecedent", "Dependent", false);
}

int get_managed_setting_instance(const CMPIObjectPath* op, const CMPIResult* result) {
    return get_association(op, result, "ManagedElement", "SettingData", false);
}

int get_managed_stats_instance(const CMPIObjectPath* op, const CMPIResult* result) {
    return get_association(op, result, "ManagedElement", "Stats", false);
}

int get_group_part_instance(const CMPIObjectPath* op, const CMPIResult* result) {
    return get_association(op, result, "GroupComponent", "PartComponent", true);
}
