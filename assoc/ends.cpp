#include "assoc/ends.h"

#include "common/broker.h"
#include "platform/fcip_config.h"
#include "platform/key_number.h"
#include "platform/platform_records.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"

CMPIObjectPath* no_path(const Source& /*source*/, const char* /*className*/) {
    return nullptr;
}

CMPIInstance* no_instance(const Source& /*source*/, const char* /*className*/) {
    return nullptr;
}

CMPIInstance* tcp_settings_instance(const Source& source, const char* className) {
    PlatformRow<FcipLinkEntry> link;
    if (!find_link_again(key_of(source.link), link)) return nullptr;
    return tcp_settings_build_instance(className, source.nameSpace, link.get(), source.properties);
}

CMPIObjectPath* profile_path(const Source& source, const char* className) {
    FcipEntityEntry profile{};
    if (get_profile_from_link_entry(&source.link, &profile) != 0) return nullptr;
    return fcip_profile_fill_reference(className, source.nameSpace, &profile);
}

CMPIInstance* profile_instance(const Source& source, const char* className) {
    FcipEntityEntry profile{};
    if (get_profile_from_link_entry(&source.link, &profile) != 0) return nullptr;
    return fcip_profile_build_instance(className, source.nameSpace, &profile, source.properties);
}

CMPIObjectPath* hosting_system_path(const Source& source, const char* /*className*/) {
    return get_logical_computer_keys(source.link.kfmFcipLinkIfIndex, source.nameSpace, _broker);
}

CMPIInstance* hosting_system_instance(const Source& source, const char* /*className*/) {
    return get_logical_computer_instance(source.link.kfmFcipLinkIfIndex, source.nameSpace, source.properties,
                                         _broker);
}

CMPIObjectPath* port_path(const Source& source, const char* className) {
    return fcport_fill_reference_pm(className, source.nameSpace, source.port.get(), _broker);
}

CMPIInstance* port_instance(const Source& source, const char* className) {
    return fcport_build_instance_pm(className, source.nameSpace, source.port.get(), source.properties,
                                    _broker);
}

CMPIObjectPath* port_statistics_path(const Source& source, const char* className) {
    return eth_statistics_fill_reference(className, source.nameSpace, source.port.get());
}

CMPIInstance* port_statistics_instance(const Source& source, const char* className) {
    return eth_statistics_build_instance(className, source.nameSpace, source.port.get(), source.properties);
}

CMPIObjectPath* lan_endpoint_path_of_key(const Source& source, const char* className) {
    return lan_endpoint_fill_reference(className, source.nameSpace, key_number(source.keyValue));
}

CMPIInstance* lan_endpoint_instance_of_key(const Source& source, const char* className) {
    return lan_endpoint_build_instance(className, source.nameSpace, key_number(source.keyValue),
                                       source.properties);
}

CMPIObjectPath* lan_endpoint_path_of_link(const Source& source, const char* className) {
    return lan_endpoint_fill_reference(className, source.nameSpace, source.link.kfmFcipLinkExtEthIfIndex);
}
