// The builders of single associations. The families differ in the names of their two references only, and in
// two flags that go with setting data.
#include <cstdio>

#include "classes/builder.h"
#include "common/broker.h"
#include "common/results.h"
#include "include/associations.h"
#include "platform/platform_services.h"

namespace {

struct Roles {
    const char* role1;
    const char* role2;
    bool isSettingData;          // carries IsDefault and IsCurrent, both 1
    const char* pathFailureText; // said when an instance's own path cannot be made, or null
};

constexpr Roles REALIZE_ROLES{"Antecedent", "Dependent", false, nullptr};
constexpr Roles MANAGED_SETTING_ROLES{"ManagedElement", "SettingData", true, nullptr};
constexpr Roles MANAGED_STATS_ROLES{"ManagedElement", "Stats", false, "path : NULL"};
constexpr Roles GROUP_PART_ROLES{"GroupComponent", "PartComponent", false, nullptr};
constexpr Roles INSTALLED_SOFTWARE_ROLES{"System", "InstalledSoftware", false, nullptr};

// The association's own path, with the switch's host name; NULL when it cannot be made.
CMPIObjectPath* new_association_path(const char* className, const char* nameSpace, const CMPIBroker* broker) {
    CMPIObjectPath* path = broker->eft->newObjectPath(broker, nameSpace, className, nullptr);
    if (!is_usable(path)) return nullptr;
    set_host_name(path);
    return path;
}

bool have_both(const CMPIObjectPath* ref1, const CMPIObjectPath* ref2) {
    if (!is_usable(ref1)) {
        std::puts("swop : NULL");
        return false;
    }
    if (!is_usable(ref2)) {
        std::puts("peop : NULL");
        return false;
    }
    return true;
}

Property reference(const char* name, const CMPIObjectPath* path) {
    Property property{name, CMPI_ref, nullptr, {}};
    property.value.ref = const_cast<CMPIObjectPath*>(path); // a CMPIValue points to non-const objects
    return property;
}

CMPIInstance* build(const Roles& roles, const char* className, const char* nameSpace,
                    const CMPIObjectPath* ref1, const CMPIObjectPath* ref2, const CMPIBroker* broker) {
    CMPIObjectPath* path = new_association_path(className, nameSpace, broker);
    if (path == nullptr) {
        if (roles.pathFailureText != nullptr) std::puts(roles.pathFailureText);
        return nullptr;
    }
    CMPIInstance* instance = broker->eft->newInstance(broker, path, nullptr);
    if (instance == nullptr || instance->hdl == nullptr || !have_both(ref1, ref2)) return nullptr;
    set_properties(instance, {reference(roles.role1, ref1), reference(roles.role2, ref2)});
    if (roles.isSettingData) set_properties(instance, {uint16("IsDefault", 1), uint16("IsCurrent", 1)});
    return instance;
}

CMPIObjectPath* fill(const Roles& roles, const char* className, const char* nameSpace,
                     const CMPIObjectPath* ref1, const CMPIObjectPath* ref2, const CMPIBroker* broker) {
    CMPIObjectPath* path = new_association_path(className, nameSpace, broker);
    if (path == nullptr || !have_both(ref1, ref2)) return nullptr;
    add_keys(path, {reference(roles.role1, ref1), reference(roles.role2, ref2)});
    if (roles.isSettingData) add_keys(path, {uint16("IsDefault", 1), uint16("IsCurrent", 1)});
    return path;
}

} // namespace

CMPIInstance* realize_build_instance(const char* className, const char* nameSpace, const CMPIObjectPath* ref1,
                                     const CMPIObjectPath* ref2, const CMPIBroker* broker) {
    return build(REALIZE_ROLES, className, nameSpace, ref1, ref2, broker);
}

CMPIObjectPath* realize_fill_reference(const char* className, const char* nameSpace,
                                       const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                       const CMPIBroker* broker) {
    return fill(REALIZE_ROLES, className, nameSpace, ref1, ref2, broker);
}

CMPIInstance* managed_setting_build_instance(const char* className, const char* nameSpace,
                                             const CMPIObjectPath* ref1, const CMPIObjectPath* ref2) {
    return build(MANAGED_SETTING_ROLES, className, nameSpace, ref1, ref2, _broker);
}

CMPIObjectPath* managed_setting_fill_reference(const char* className, const char* nameSpace,
                                               const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                               const CMPIBroker* broker) {
    return fill(MANAGED_SETTING_ROLES, className, nameSpace, ref1, ref2, broker);
}

CMPIInstance* managed_stats_build_instance(const char* className, const char* nameSpace,
                                           const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                           const CMPIBroker* broker) {
    return build(MANAGED_STATS_ROLES, className, nameSpace, ref1, ref2, broker);
}

CMPIObjectPath* managed_stats_fill_reference(const char* className, const char* nameSpace,
                                             const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                             const CMPIBroker* broker) {
    return fill(MANAGED_STATS_ROLES, className, nameSpace, ref1, ref2, broker);
}

CMPIInstance* group_part_build_instance(const char* className, const char* nameSpace,
                                        const CMPIObjectPath* ref1, const CMPIObjectPath* ref2) {
    return build(GROUP_PART_ROLES, className, nameSpace, ref1, ref2, _broker);
}

CMPIObjectPath* group_part_fill_reference(const char* className, const char* nameSpace,
                                          const CMPIObjectPath* ref1, const CMPIObjectPath* ref2,
                                          const CMPIBroker* broker) {
    return fill(GROUP_PART_ROLES, className, nameSpace, ref1, ref2, broker);
}

CMPIInstance* hba_si_build_instance(const char* className, const char* nameSpace, const CMPIObjectPath* ref1,
                                    const CMPIObjectPath* ref2, const CMPIBroker* broker) {
    return build(INSTALLED_SOFTWARE_ROLES, className, nameSpace, ref1, ref2, broker);
}
