// Single rows of the platform, by their exact key.
#ifndef KESTO_PLATFORM_ROW_LOOKUP_H
#define KESTO_PLATFORM_ROW_LOOKUP_H

#include <cstdint>

#include "platform/platform_records.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"

inline FcipLinkKey key_of(const FcipLinkEntry& link) {
    return {link.kfmFcipEntityId, link.kfmFcipLinkIndex};
}

// The profile with exactly this id. The service's status; count is a constant of the service's own.
inline int fetch_profile(std::uint32_t entityId, PlatformRow<FcipEntityEntry>& profile, int count = 5) {
    return fetch_row(profile, [&](FcipEntityEntry** out) {
        return fcip_get_entity_entry(mts_q, 1, entityId, out, count);
    });
}

// The two ways in which the classes depend on a link's profile. read_profile: the request has to succeed, and
// may do so without a row, since the class bears its absence. find_profile: the row has to be there.
inline bool read_profile(std::uint32_t entityId, PlatformRow<FcipEntityEntry>& profile) {
    return fetch_profile(entityId, profile) == 0;
}
inline bool find_profile(std::uint32_t entityId, PlatformRow<FcipEntityEntry>& profile) {
    return fetch_profile(entityId, profile) == 0 && profile != nullptr;
}

// The link with exactly this key. False when the request fails or brings no row.
inline bool find_link_again(const FcipLinkKey& key, PlatformRow<FcipLinkEntry>& link) {
    const int status =
        fetch_row(link, [&](FcipLinkEntry** out) { return fcip_get_link_entry(mts_q, 1, &key, out, 30, 1); });
    return status == 0 && link != nullptr;
}

// The error counters of the link with this key. The service's status.
inline int fetch_link_errors(const FcipLinkKey& key, PlatformRow<FcipLinkErrors>& errors) {
    return fetch_row(
        errors, [&](FcipLinkErrors** out) { return fcip_snmp_get_link_errors(mts_q, 1, &key, out, 10); });
}

// The port with exactly this if-index. The service's status.
inline int fetch_port(std::uint32_t ifIndex, PlatformRow<PortInfo>& port) {
    return fetch_row(port, [&](PortInfo** out) { return pm_cim_get_port_info(out, 1, ifIndex, mts_q); });
}

#endif
