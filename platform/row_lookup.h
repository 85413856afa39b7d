// Single rows of the platform: by their exact key, and by the key string of an object path.
#ifndef KESTO_PLATFORM_ROW_LOOKUP_H
#define KESTO_PLATFORM_ROW_LOOKUP_H

#include "platform/platform_records.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"

// Unlike get_fcip_link_entry_from, find_link tells a link that is not there from one that is.
enum class LinkLookup { Found, Missing, UnusableKey };

// mode is a LinkKeyMode; any other finds nothing. out is written only when a link is found.
LinkLookup find_link(const char* keyValue, int mode, FcipLinkEntry* out);

inline FcipLinkKey key_of(const FcipLinkEntry& link) {
    return {link.kfmFcipEntityId, link.kfmFcipLinkIndex};
}

// The profile with exactly this id. The service's status; count is a constant of the service's own.
inline int fetch_profile(std::uint32_t entityId, PlatformRow<FcipEntityEntry>& row, int count = 5) {
    return fetch_row(
        row, [&](FcipEntityEntry** out) { return fcip_get_entity_entry(mts_q, 1, entityId, out, count); });
}

// The link with exactly this key.
inline int fetch_link(const FcipLinkKey& key, PlatformRow<FcipLinkEntry>& row) {
    return fetch_row(row,
                     [&](FcipLinkEntry** out) { return fcip_get_link_entry(mts_q, 1, &key, out, 30, 1); });
}

// The error counters of the link with this key.
inline int fetch_link_errors(const FcipLinkKey& key, PlatformRow<FcipLinkErrors>& row) {
    return fetch_row(
        row, [&](FcipLinkErrors** out) { return fcip_snmp_get_link_errors(mts_q, 1, &key, out, 10); });
}

// The port with exactly this if-index.
inline int fetch_port(std::uint32_t ifIndex, PlatformRow<PortInfo>& row) {
    return fetch_row(row, [&](PortInfo** out) { return pm_cim_get_port_info(out, 1, ifIndex, mts_q); });
}

#endif
