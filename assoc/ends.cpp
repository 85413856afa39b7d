#include "assoc/ends.h"

#include "include/classes.h"
#include "platform/fcip_config.h"
#include "platform/platform_services.h"
#include "provider/provider.h"

namespace {

int fetch_branch_port(Branch& branch, std::uint32_t ifIndex) {
    branch.portIfIndex = ifIndex;
    return fetch_port(ifIndex, branch.port);
}

} // namespace

bool look_link_up(Branch& branch, int mode) {
    return mode == NO_LINK || find_link(branch.keyValue, mode, &branch.link) == LinkLookup::Found;
}

CMPIObjectPath* profile_of_link(const char* className, const char* nameSpace, const FcipLinkEntry* link) {
    FcipEntityEntry profile{};
    if (get_profile_from_link_entry(link, &profile) != 0) return nullptr;
    return fcip_profile_fill_reference(className, nameSpace, &profile);
}

CMPIObjectPath* lan_endpoint_of_link(const char* className, const char* nameSpace,
                                     const FcipLinkEntry* link) {
    return lan_endpoint_fill_reference(className, nameSpace, link->kfmFcipLinkExtEthIfIndex);
}

CMPIInstance* profile_instance(const Branch& branch, const char* className) {
    FcipEntityEntry profile{};
    if (get_profile_from_link_entry(&branch.link, &profile) != 0) return nullptr;
    return fcip_profile_build_instance(className, branch.nameSpace, &profile, branch.properties);
}

CMPIObjectPath* hosting_system_path(const Branch& branch, const char* /*className*/) {
    return get_logical_computer_keys(branch.link.kfmFcipLinkIfIndex, branch.nameSpace, _broker);
}

CMPIInstance* hosting_system_instance(const Branch& branch, const char* /*className*/) {
    return get_logical_computer_instance(branch.link.kfmFcipLinkIfIndex, branch.nameSpace, branch.properties,
                                         _broker);
}

CMPIObjectPath* port_path(const Branch& branch, const char* className) {
    return fcport_fill_reference_pm(className, branch.nameSpace, branch.port.get(), _broker);
}

CMPIInstance* port_instance(const Branch& branch, const char* className) {
    return fcport_build_instance_pm(className, branch.nameSpace, branch.port.get(), branch.properties,
                                    _broker);
}

CMPIObjectPath* port_statistics_path(const Branch& branch, const char* className) {
    return eth_statistics_fill_reference(className, branch.nameSpace, branch.port.get());
}

CMPIInstance* port_statistics_instance(const Branch& branch, const char* className) {
    return eth_statistics_build_instance(className, branch.nameSpace, branch.port.get(), branch.properties);
}

CMPIObjectPath* lan_endpoint_path_of_key(const Branch& branch, const char* className) {
    return lan_endpoint_fill_reference(className, branch.nameSpace, key_number(branch.keyValue));
}

CMPIInstance* lan_endpoint_instance_of_key(const Branch& branch, const char* className) {
    return lan_endpoint_build_instance(className, branch.nameSpace, key_number(branch.keyValue),
                                       branch.properties);
}

bool interface_of_link(Branch& branch) {
    branch.port.reset(pm_cim_find_interface(1, branch.link.kfmFcipLinkIfIndex, mts_q));
    return branch.port != nullptr;
}

bool ethernet_port_of_link(Branch& branch) {
    fetch_branch_port(branch, branch.link.kfmFcipLinkExtEthIfIndex);
    return branch.port != nullptr;
}

bool port_of_key(Branch& branch) {
    fetch_branch_port(branch, key_number(branch.keyValue));
    return branch.port != nullptr;
}

bool port_of_key_if_known(Branch& branch) {
    return fetch_branch_port(branch, key_number(branch.keyValue)) == 0 && branch.port != nullptr;
}

bool port_of_lan_key(Branch& branch) {
    std::uint32_t ifIndex = 0;
    if (get_eth_ifidx_from_keyvalue(&ifIndex, branch.keyValue) != 0) return false;
    fetch_branch_port(branch, ifIndex);
    return branch.port != nullptr;
}
