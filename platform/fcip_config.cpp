#include "platform/fcip_config.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <strings.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "include/results.h"
#include "include/trace.h"
#include "platform/diagnostics.h"
#include "platform/key_number.h"
#include "platform/row_lookup.h"
#include "platform/table_walk.h"

namespace {

// Longer keys are cut before they are taken apart.
constexpr std::size_t KEY_COPY_SIZE = 512;

// The tokens of a copy of a key string.
struct KeyTokens {
    char copy[KEY_COPY_SIZE] = {};
    const char* separators;
    char* rest = nullptr;
};

const char* first_token(KeyTokens& tokens, const char* keyValue) {
    std::strncpy(tokens.copy, keyValue, sizeof tokens.copy - 1);
    return strtok_r(tokens.copy, tokens.separators, &tokens.rest);
}

const char* next_token(KeyTokens& tokens) {
    return strtok_r(nullptr, tokens.separators, &tokens.rest);
}

bool remote_address_is(const FcipLinkEntry& link, const char* text) {
    char address[128] = {};
    ip_addr_to_str(&link.kfmFcipLinkRemFcipEntityAddress, address, sizeof address);
    return strcasecmp(address, text) == 0;
}

LinkLookup found_if(bool matches) {
    return matches ? LinkLookup::Found : LinkLookup::Missing;
}

// Whether the key names this link.
LinkLookup match(const FcipLinkEntry& link, const char* keyValue, int mode) {
    switch (mode) {
        case LINK_BY_IF_INDEX:
            return found_if(link.kfmFcipLinkIfIndex == key_number(keyValue));
        case LINK_BY_ENTITY:
            return found_if(link.kfmFcipEntityId == key_number(keyValue));
        case LINK_BY_TUNNEL:
        case LINK_BY_IF_INDEX_TOKEN:
        case LINK_BY_ETHERNET_IF_INDEX:
        case LINK_BY_REMOTE_ADDRESS:
        case LINK_BY_REMOTE_IF_INDEX:
            break;
        default:
            return LinkLookup::Missing;
    }
    KeyTokens tokens{.separators = mode == LINK_BY_ETHERNET_IF_INDEX ? ":_" : "_"};
    const char* token = first_token(tokens, keyValue);
    if (token == nullptr) return LinkLookup::UnusableKey;
    const std::uint32_t number = key_number(token);
    if (mode == LINK_BY_TUNNEL) return found_if(link.kfmFcipLinkIndex + 1 == number);
    if (mode == LINK_BY_IF_INDEX_TOKEN) return found_if(link.kfmFcipLinkIfIndex == number);
    if (mode == LINK_BY_ETHERNET_IF_INDEX) return found_if(link.kfmFcipLinkExtEthIfIndex == number);

    // The keys of remote endpoints begin with an entity id of 0.
    if (number != 0) return LinkLookup::Missing;
    token = next_token(tokens);
    if (token == nullptr) return LinkLookup::UnusableKey;
    if (mode == LINK_BY_REMOTE_ADDRESS) return found_if(remote_address_is(link, token));
    return found_if(link.kfmFcipLinkIfIndex == key_number(token));
}

// The VSAN and domain records that name a logical computer system, and that name.
struct LogicalComputer {
    PlatformRow<void> vsanEntry;
    PlatformRow<void> domainEntry;
    char key[256] = {};
};

// The records are opaque: whether there is one behind a success is the platform's business.
int fetch_vsan(std::uint32_t vsan, PlatformRow<void>& entry) {
    return fetch_row(entry, [&](void** out) { return vsan_cim_get_vsanEntry(mts_q, vsan, out); });
}

int fetch_domain(std::uint32_t vsan, PlatformRow<void>& entry) {
    return fetch_row(entry, [&](void** out) { return dm_cim_get_dmEntry(mts_q, vsan, 1, out); });
}

bool find_logical_computer(std::uint32_t ifIndex, LogicalComputer& system) {
    std::uint32_t vsan = 0;
    get_vsan_id(ifIndex, &vsan);
    std::printf("vsan_index %d \n", as_printed(vsan));
    // Always the record of VSAN 1, whatever the port's own VSAN.
    if (fetch_vsan(1, system.vsanEntry) != 0 || fetch_domain(vsan, system.domainEntry) != 0) return false;
    void* vsanEntry = system.vsanEntry.get();
    void* domainEntry = system.domainEntry.get();
    if (vsan_cim_get_vsan_key(system.key, &vsanEntry, &domainEntry) != 0) {
        std::fputs("error during get vsan id", stdout);
    }
    return true;
}

} // namespace

LinkLookup find_link(const char* keyValue, int mode, FcipLinkEntry* out) {
    auto found = LinkLookup::Missing;
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        found = match(link, keyValue != nullptr ? keyValue : "", mode);
        if (found == LinkLookup::Missing) return Visit::GoOn;
        if (found == LinkLookup::Found) *out = link;
        return Visit::Stop;
    });
    return found;
}

int get_all_link_entries(std::uint32_t queue) {
    walk_links(queue, [](const FcipLinkEntry&) { return Visit::GoOn; });
    return 0;
}

int get_link_from_link_index(std::uint32_t queue, std::uint32_t linkIndex, FcipLinkEntry* out) {
    const WalkEnd end = walk_links(queue, [&](const FcipLinkEntry& link) {
        if (link.kfmFcipLinkIndex != linkIndex) return Visit::GoOn;
        *out = link;
        return Visit::Stop;
    });
    return end == WalkEnd::Stopped ? 0 : -1;
}

int get_fcip_link_entry_from(const char* keyValue, FcipLinkEntry* out, int mode) {
    return find_link(keyValue, mode, out) == LinkLookup::UnusableKey ? -1 : 0;
}

int get_all_fcip_entities(std::uint32_t queue) {
    const WalkEnd end = walk_entities(queue, EmptyAnswer::IsRepeated, [&](const FcipEntityEntry& entity) {
        const PlatformRow<EntityIfList> tunnels(fcip_get_ifs_for_this_profile(entity.kfmFcipEntityId, queue));
        if (!tunnels) return Visit::Stop;
        fcip_print_entity(&entity, tunnels.get());
        return Visit::GoOn;
    });
    return end == WalkEnd::Stopped ? 1 : 0;
}

int get_fcip_entity_from_key_value(std::uint32_t queue, const char* keyValue, FcipEntityEntry* out) {
    int found = 0;
    // The walk goes on behind a match: the last one wins.
    walk_entities(queue, EmptyAnswer::IsRepeated, [&](const FcipEntityEntry& entity) {
        char id[16];
        std::snprintf(id, sizeof id, "%d", as_printed(entity.kfmFcipEntityId));
        if (std::strcmp(id, keyValue) == 0) {
            *out = entity;
            found = 1;
        }
        return Visit::GoOn;
    });
    return found;
}

int get_fcip_entity_from(const char* keyValue, FcipEntityEntry* out) {
    if (keyValue == nullptr) return -1;
    const std::uint32_t id = key_number(keyValue);
    walk_entities(mts_q, EmptyAnswer::Ends, [&](const FcipEntityEntry& entity) {
        if (entity.kfmFcipEntityId != id) return Visit::GoOn;
        std::fputs("Match Found ", stdout);
        *out = entity;
        return Visit::Stop;
    });
    return 0;
}

int get_profile_from_link_entry(const FcipLinkEntry* link, FcipEntityEntry* out) {
    PlatformRow<FcipEntityEntry> profile;
    const int status = fetch_profile(link->kfmFcipEntityId, profile);
    // The line is printed whenever a row came, of a good request too; a failure without a row is silent.
    if (profile) std::fputs("get_profile_from_link_entry : Error", stdout);
    if (status != 0 || !profile) return -1;
    *out = *profile;
    return 0;
}

EntityIfList* fcip_get_ifs_for_this_profile(std::uint32_t entityId, std::uint32_t queue) {
    alignas(std::max_align_t) unsigned char messageBuffer[512] = {};
    void* reply = nullptr;
    std::uint32_t replyLength = 0;
    fcip_send_recv_with_mts_q(8946, 0xFE000000, 60, &entityId, sizeof entityId, queue, &reply, &replyLength,
                              messageBuffer);
    return static_cast<EntityIfList*>(reply);
}

int get_vsan_id(std::uint32_t ifIndex, std::uint32_t* vsanOut) {
    PlatformRow<PortInfo> port;
    if (fetch_port(ifIndex, port) != 0) {
        std::fputs("error : pm_cim_get_port_info ", stdout);
        return -1;
    }
    if (!port) return -1;
    *vsanOut = port->vsan;
    return 0;
}

int get_vsan_from_ifindex(std::uint32_t ifIndex, std::uint32_t* vsanOut) {
    const std::uint32_t key[2] = {ifIndex, ifIndex};
    std::uint32_t length = 0;
    PlatformRow<PortInfo> port;
    const int status = fetch_row(
        port, [&](PortInfo** out) { return pm_cmi_get_port_config(mts_q, 1, 1, key, &length, out, 4); });
    if (status != 0 || !port) return -1;
    std::printf(" fcip interface is in the vsan %d \n", as_printed(port->vsan));
    *vsanOut = port->vsan;
    std::printf(" fcip interface is in the vsan %d \n", as_printed(port->otherVsan));
    return 0;
}

int get_vsan_wwn(std::uint32_t ifIndex, char* out) {
    constexpr std::size_t NAME_LENGTH = 20;
    std::uint32_t vsan = 0;
    if (get_vsan_id(ifIndex, &vsan) != 0) return -1;
    PlatformRow<void> domain;
    if (fetch_domain(vsan, domain) != 0) {
        std::fputs("error : dm_cim_get_dmEntry ", stdout);
        std::memcpy(out, "NULL", sizeof "NULL");
        return -1;
    }
    char key[256] = {};
    void* domainEntry = domain.get();
    vsan_cim_get_vsan_admindomain_key(key, &domainEntry);
    std::copy_n(key, NAME_LENGTH, out);
    return 0;
}

unsigned char* init_wwn(unsigned char wwn[8]) {
    std::memset(wwn, 0, 8);
    return wwn;
}

CMPIObjectPath* get_logical_computer_keys(std::uint32_t ifIndex, const char* nameSpace,
                                          const CMPIBroker* broker) {
    trace_entering(__func__);
    LogicalComputer system;
    if (!find_logical_computer(ifIndex, system)) return error_object<CMPIObjectPath>();
    return switch_fill_reference_str("KESTO_LogicalComputerSystem", nameSpace, system.key, broker);
}

CMPIInstance* get_logical_computer_instance(std::uint32_t ifIndex, const char* nameSpace,
                                            const char** properties, const CMPIBroker* broker) {
    trace_entering(__func__);
    LogicalComputer system;
    if (!find_logical_computer(ifIndex, system)) return error_object<CMPIInstance>();
    return switch_build_instance_str("KESTO_LogicalComputerSystem", nameSpace, system.key, 0, properties,
                                     broker);
}

int get_ip_misc_cfg(IpMiscCfg* out) {
    PlatformRow<void> reply;
    std::uint32_t length = sizeof *out;
    const int status = fetch_row(
        reply, [&](void** block) { return cmi_req_resp(873, 1, 0, block, &length, 0, 0, 35, mts_q, 5); });
    if (status != 0 || !reply) return -1;
    std::memcpy(out, reply.get(), sizeof *out);
    return 0;
}

int get_etherport_from_if_index(std::uint32_t ifIndex, int wantInstance, const char* /*className*/,
                                const CMPIResult* result, const char* nameSpace, const char** properties,
                                const CMPIBroker* broker) {
    constexpr const char* ETHERNET_PORT = "KESTO_EthernetPort";
    walk_ethernet_ports([&](const PortInfo& port) {
        if (port.ifIndex != ifIndex) return;
        if (wantInstance != 0) {
            hand_over_built(result,
                            fcport_build_instance_pm(ETHERNET_PORT, nameSpace, &port, properties, broker));
        } else {
            hand_over_built(result, fcport_fill_reference_pm(nameSpace, ETHERNET_PORT, &port, broker));
        }
    });
    return 0;
}

int get_eth_ifidx_from_keyvalue(std::uint32_t* ifIndexOut, const char* keyValue) {
    KeyTokens tokens{.separators = ":_"};
    const char* token = first_token(tokens, keyValue != nullptr ? keyValue : "");
    trace_entering(__func__);
    if (token == nullptr) return -1;
    *ifIndexOut = key_number(token);
    std::printf("if_index : %d \n", as_printed(*ifIndexOut));
    trace_exiting(__func__);
    return 0;
}

int ip_addr_to_str_type(const IpAddr* addr, char* buf, std::uint32_t len, std::uint32_t* isIpv6) {
    switch (addr->addrType) {
        case KFM_ADDR_IPV4:
            *isIpv6 = 0;
            return inet_ntop(AF_INET, addr->addr, buf, len) != nullptr ? 0 : -1;
        case KFM_ADDR_IPV6:
            *isIpv6 = 1;
            return inet_ntop(AF_INET6, addr->addr, buf, len) != nullptr ? 0 : -1;
        case KFM_ADDR_UNSET:
            if (std::memcmp(addr, &inet_addr_null, sizeof *addr) != 0) return -1;
            std::snprintf(buf, len, "null");
            return 0;
        default:
            return -1;
    }
}

std::uint32_t get_ip_addr_type(const IpAddr* addr) {
    return addr->addrType;
}
