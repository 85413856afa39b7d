#include "platform/fcip_config.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "common/results.h"
#include "platform/diagnostics.h"
#include "platform/key_number.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"
#include "platform/table_walk.h"

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
    const char* wanted = keyValue != nullptr ? keyValue : "";
    int found = 0;
    // The walk continues after a match: the last one wins.
    walk_entities(queue, EmptyAnswer::IsRepeated, [&](const FcipEntityEntry& entity) {
        char id[16];
        std::snprintf(id, sizeof id, "%d", as_printed(entity.kfmFcipEntityId));
        if (std::strcmp(id, wanted) == 0) {
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
        std::puts("Match Found ");
        *out = entity;
        return Visit::Stop;
    });
    return 0;
}

int get_profile_from_link_entry(const FcipLinkEntry* link, FcipEntityEntry* out) {
    PlatformRow<FcipEntityEntry> profile;
    const int status = fetch_profile(link->kfmFcipEntityId, profile);
    // The line is printed whenever a row came, of a good request too; a failure without a row is silent.
    if (profile) std::puts("get_profile_from_link_entry : Error");
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
    PlatformRow<EntityIfList> list(static_cast<EntityIfList*>(reply));
    // A platform that leaves the length alone is believed.
    if (!list || replyLength == 0) return list.release();
    if (replyLength < sizeof(EntityIfList)) return nullptr;
    const auto held = (replyLength - sizeof(EntityIfList)) / sizeof(std::uint32_t);
    list->count = static_cast<std::uint32_t>(std::min<std::size_t>(list->count, held));
    return list.release();
}

int get_ip_misc_cfg(IpMiscCfg* out) {
    PlatformRow<void> reply;
    std::uint32_t length = sizeof *out;
    const int status = fetch_row(
        reply, [&](void** block) { return cmi_req_resp(873, 1, 0, block, &length, 0, 0, 35, mts_q, 5); });
    if (status != 0 || !reply || length < sizeof *out) return -1;
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
