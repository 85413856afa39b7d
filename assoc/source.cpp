#include "assoc/source.h"

#include "platform/key_number.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"

namespace {

// The service's status.
int fetch_source_port(Source& source, std::uint32_t ifIndex) {
    source.portIfIndex = ifIndex;
    return fetch_port(ifIndex, source.port);
}

} // namespace

bool look_link_up(Source& source, int mode) {
    return mode == NO_LINK || find_link(source.keyValue, mode, &source.link) == LinkLookup::Found;
}

bool interface_of_link(Source& source) {
    source.port.reset(pm_cim_find_interface(1, source.link.kfmFcipLinkIfIndex, mts_q));
    return source.port != nullptr;
}

bool ethernet_port_of_link(Source& source) {
    fetch_source_port(source, source.link.kfmFcipLinkExtEthIfIndex);
    return source.port != nullptr;
}

bool port_of_key(Source& source) {
    fetch_source_port(source, key_number(source.keyValue));
    return source.port != nullptr;
}

bool port_of_key_if_known(Source& source) {
    return fetch_source_port(source, key_number(source.keyValue)) == 0 && source.port != nullptr;
}

bool port_of_lan_key(Source& source) {
    std::uint32_t ifIndex = 0;
    if (get_eth_ifidx_from_keyvalue(&ifIndex, source.keyValue) != 0) return false;
    fetch_source_port(source, ifIndex);
    return source.port != nullptr;
}
