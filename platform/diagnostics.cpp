#include "platform/diagnostics.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "platform/byte_order.h"
#include "platform/computer_system.h"
#include "platform/key_number.h"
#include "platform/platform_services.h"

namespace {

constexpr std::size_t ADDRESS_TEXT_SIZE = 128;

const char* enabled(std::uint32_t flag) {
    return flag == 1 ? "enabled" : "disabled";
}

bool is_configured(const IpAddr& address) {
    switch (address.addrType) {
        case KFM_ADDR_IPV4:
            return std::any_of(address.addr, address.addr + 4, [](std::uint8_t byte) { return byte != 0; });
        case KFM_ADDR_IPV6: {
            const IpAddr anyAddress{KFM_ADDR_IPV6, {}};
            return ip_addr_compare(&address, &anyAddress) != 0;
        }
        default:
            return false;
    }
}

void print_address(const FcipEntityEntry& entity) {
    if (!is_configured(entity.kfmFcipEntityAddress)) {
        std::puts("    Internet address is not configured");
        return;
    }
    char address[ADDRESS_TEXT_SIZE] = {};
    ip_addr_to_str(&entity.kfmFcipEntityAddress, address, sizeof address);
    std::printf("    Internet Address is %s", address);
    if (entity.kfmFcipEntityIfIndex != 0) {
        char name[256] = {};
        std::printf("  (interface %s)", fcip_if_str(entity.kfmFcipEntityIfIndex, name));
    }
    std::puts("");
}

void print_tunnels(const EntityIfList* tunnels) {
    if (tunnels == nullptr || tunnels->count == 0) return;
    std::fputs("    Tunnels Using this Profile:", stdout);
    for (std::uint32_t i = 0; i < tunnels->count; ++i) {
        // The if-indexes follow the count.
        const auto ifIndex = host_order<std::uint32_t>(tunnels, sizeof(std::uint32_t) * (i + std::size_t{1}));
        char name[256] = {};
        std::printf(" %s", fcip_if_str(ifIndex, name));
    }
    std::puts("");
}

// Ends the line of a feature: its parameter when the feature is enabled and the parameter set.
void print_parameter(std::uint32_t flag, std::uint32_t parameter, const char* text, const char* unit) {
    if (flag == 1 && parameter != 0) std::printf(", %s is %d %s", text, as_printed(parameter), unit);
    std::puts("");
}

} // namespace

int fcip_print_entity(const FcipEntityEntry* entity, const EntityIfList* tunnels) {
    std::printf("FCIP Profile %d\n", as_printed(entity->kfmFcipEntityId));
    print_address(*entity);
    print_tunnels(tunnels);
    std::printf("    Listen Port is %d\n", as_printed(entity->kfmFcipEntityTcpPort));
    std::puts("    TCP parameters");
    std::printf("        SACK is %s\n", enabled(entity->kfmFcipEntitySackOption));
    std::printf("        PMTU discovery is %s", enabled(entity->kfmFcipEntityPmtuEnable));
    print_parameter(entity->kfmFcipEntityPmtuEnable, entity->kfmFcipEntityPmtuResetTimeout, "reset timeout",
                    "sec");
    std::printf("        Keep alive is %d sec\n", as_printed(entity->kfmFcipEntityKeepAliveTimeout));
    std::printf("        Minimum retransmission timeout is %d ms\n",
                as_printed(entity->kfmFcipEntityMinRetransmitTime));
    std::printf("        Maximum number of re-transmissions is %d\n",
                as_printed(entity->kfmFcipEntityMaxRetransmissions));
    std::printf("        Send buffer size is %d KB\n", as_printed(entity->kfmFcipEntitySendBufSize));
    // The line stands twice in the listing.
    for (int line = 0; line < 2; ++line) {
        std::printf("        Maximum allowed bandwidth is %d kbps\n",
                    as_printed(entity->kfmFcipEntityMaxBandwidth));
    }
    std::printf("        Minimum available bandwidth is %d kbps\n",
                as_printed(entity->kfmFcipEntityMinBandwidth));
    std::printf("        Configured round trip time is %d usec\n",
                as_printed(entity->kfmFcipEntityRoundTripTime));
    std::printf("        Congestion window monitoring is %s", enabled(entity->kfmFcipEntityCwmEnable));
    print_parameter(entity->kfmFcipEntityCwmEnable, entity->kfmFcipEntityCwmBurstSize, "burst size", "KB");
    if (entity->kfmFcipEntityMaxJitter == 0) return std::puts("        Auto jitter detection is enabled");
    return std::printf("        Configured maximum jitter is %d us\n",
                       as_printed(entity->kfmFcipEntityMaxJitter));
}

// Offered to other code of the switch, as the line below; nothing here calls them.
int fcip_print_link_entity_brief(const FcipLinkEntry* link) {
    const auto line = [](const char* name, std::uint32_t word) {
        std::printf("%s %d\n", name, as_printed(word));
    };
    char address[ADDRESS_TEXT_SIZE] = {};
    line("kfmFcipEntityId :", link->kfmFcipEntityId);
    line("kfmFcipLinkExtTcpRemPort :", link->kfmFcipLinkExtTcpRemPort);
    ip_addr_to_str(&link->kfmFcipLinkRemFcipEntityAddress, address, sizeof address);
    std::printf("kfmFcipLinkRemFcipEntityAddress, : %s\n", address);
    line("kfmFcipLinkIndex (fcip index)  :", link->kfmFcipLinkIndex);
    line("kfmFcipLinkIfIndex (fcip if-index) :", link->kfmFcipLinkIfIndex);
    line("kfmFcipLinkCost:", link->kfmFcipLinkCost);
    line("kfmFcipLinkStatus :", link->kfmFcipLinkStatus);
    line("kfmFcipLinkExtEthIfIndex (Gigabit ifIndex) :", link->kfmFcipLinkExtEthIfIndex);
    line("kfmFcipLinkExtPhyIfIndex:(Gigabit ifIndex) :", link->kfmFcipLinkExtPhyIfIndex);
    std::uint32_t vsan = 0;
    return get_vsan_from_ifindex(link->kfmFcipLinkIfIndex, &vsan);
}

int pm_cli_eth_intf_prefix_print(const std::uint32_t* interfaceRecord, std::uint16_t* mtuOut) {
    const auto* record = reinterpret_cast<const unsigned char*>(interfaceRecord);
    *mtuOut = static_cast<std::uint16_t>(big_endian_32(record + 28));
    std::printf("    MTU %u  bytes\n", unsigned{*mtuOut});
    return 0;
}
