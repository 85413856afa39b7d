#include "tests/support/rows.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

namespace test_support {

FcipLinkEntry link_row(std::uint32_t entityId, std::uint32_t linkIndex, std::uint32_t ifIndex) {
    FcipLinkEntry row{};
    row.kfmFcipEntityId = entityId;
    row.kfmFcipLinkIndex = linkIndex;
    row.kfmFcipLinkIfIndex = ifIndex;
    return row;
}

FcipEntityEntry entity_row(std::uint32_t entityId) {
    FcipEntityEntry row{};
    row.kfmFcipEntityId = entityId;
    return row;
}

IpAddr address(const std::string& text) {
    IpAddr value{};
    if (inet_pton(AF_INET, text.c_str(), value.addr) == 1) {
        value.addrType = KFM_ADDR_IPV4;
    } else if (inet_pton(AF_INET6, text.c_str(), value.addr) == 1) {
        value.addrType = KFM_ADDR_IPV6;
    } else {
        ADD_FAILURE() << text << " is no IP address";
    }
    return value;
}

emulator::Port port_row(std::uint32_t ifIndex, std::uint8_t type, std::uint32_t vsan) {
    emulator::Port port;
    port.ifIndex = ifIndex;
    port.type = type;
    port.vsan = vsan;
    return port;
}

} // namespace test_support
