#include "tests/assoc/golden_switch.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ostream>
#include <sstream>

#include "emulator/control.h"
#include "platform/platform_services.h"
#include "tests/support/recording_broker.h"

using test_support::RecordedInstance;
using test_support::RecordedPath;
using test_support::RecordingBroker;
using test_support::Sets;

namespace golden {

// Label, profile, link index, if-index, Ethernet port, local and remote address, remote entity, VSAN.
const Tunnel BY_NUMBER{"byNumber",     21,          6,           301, 401, {10, 21, 0, 1},
                       {10, 0, 1, 21}, "10.21.0.1", "10.0.1.21", 61,  10};
const Tunnel BY_IF_INDEX{"byIfIndex",    22,          31,          7,  402, {10, 22, 0, 1},
                         {10, 0, 1, 22}, "10.22.0.1", "10.0.1.22", 62, 20};
const Tunnel BY_ETHERNET{"byEthernet",   23,          32,          302, 7, {10, 23, 0, 1},
                         {10, 0, 1, 23}, "10.23.0.1", "10.0.1.23", 63,  10};
const Tunnel BY_PROFILE{"byProfile",   7,          33,         303, 403, {10, 7, 0, 1},
                        {10, 0, 1, 7}, "10.7.0.1", "10.0.1.7", 64,  20};
const Tunnel BY_ADDRESS{"byAddress",   25,          34,         304, 404, {10, 25, 0, 1},
                        {10, 0, 0, 7}, "10.25.0.1", "10.0.0.7", 65,  10};

namespace {

const std::array<const Tunnel*, 5> TUNNELS{&BY_NUMBER, &BY_IF_INDEX, &BY_ETHERNET, &BY_PROFILE, &BY_ADDRESS};

// The names of the VSANs' systems are longer than the 20 characters that a SystemName takes of them.
struct VsanName {
    std::uint32_t id;
    const char *whole, *cut;
};
constexpr std::array<VsanName, 2> VSAN_NAMES{{
    {10, "20:0a:00:0d:ec:aa:00:0a", "20:0a:00:0d:ec:aa:00"},
    {20, "20:14:00:0d:ec:bb:00:14", "20:14:00:0d:ec:bb:00"},
}};

const VsanName& vsan_name(const Tunnel& tunnel) {
    return tunnel.vsan == VSAN_NAMES[0].id ? VSAN_NAMES[0] : VSAN_NAMES[1];
}

IpAddr ipv4(const std::uint8_t (&bytes)[4]) {
    IpAddr address{};
    address.addrType = KFM_ADDR_IPV4;
    std::copy(std::begin(bytes), std::end(bytes), address.addr);
    return address;
}

std::string port_address(std::uint32_t ifIndex) {
    return "02:00:00:00:00:" + std::to_string(ifIndex % 90 + 10);
}

// The first counter's low word of a tunnel's error row, which is where a link row has its if-index.
std::uint32_t error_marker(const Tunnel& tunnel) {
    return 500000 + tunnel.entity;
}

void install_port(std::uint32_t ifIndex, std::uint8_t type, std::uint32_t vsan) {
    emulator::Port port;
    port.ifIndex = ifIndex;
    port.type = type;
    port.vsan = vsan;
    port.address = port_address(ifIndex);
    port.mtu = 2300;
    port.ipStats = emulator::LineCardReply{};
    port.ethernetStats = emulator::LineCardReply{};
    port.tcpStats = emulator::LineCardReply{};
    emulator::add_port(port);
}

std::string name_of(std::uint32_t number, const char* first, const char* second) {
    return std::to_string(number) + "_" + first + "_" + second;
}

std::string printed(std::uint32_t number) {
    return std::to_string(static_cast<std::int32_t>(number));
}

// The keys of the link-based endpoint classes, in the order that all but the remote TCP port have.
RecordedPath endpoint(std::optional<std::string> host, const std::string& className,
                      const char* creationClass, const Tunnel& tunnel, const std::string& name) {
    return {NAMESPACE, className,
            Sets{{"SystemName", CMPI_chars, vsan_name(tunnel).cut},
                 {"SystemCreationClassName", CMPI_chars, "KESTO_LogicalComputerSystem"},
                 {"CreationClassName", CMPI_chars, creationClass},
                 {"Name", CMPI_chars, name}},
            std::move(host)};
}

RecordedPath by_instance_id(std::optional<std::string> host, const std::string& className,
                            const std::string& id) {
    return {NAMESPACE, className, Sets{{"InstanceID", CMPI_chars, id}}, std::move(host)};
}

template <typename Object>
std::string printed_object(const Object& object) {
    std::ostringstream out;
    out << object;
    return out.str();
}

// The objects that the platform makes are asked from it, on a broker that the tests do not look at.
template <typename Function>
auto asked_from_platform(Function make) {
    RecordingBroker aside;
    const emulator::Locked locked;
    return aside.recorded(make(aside.cmpi()));
}

PortInfo port_row(std::uint32_t ifIndex) {
    PortInfo row{};
    row.ifIndex = ifIndex;
    row.vsan = emulator::find_port(ifIndex).value().vsan;
    return row;
}

RecordedPath platform_port_path(const std::string& className, std::uint32_t ifIndex) {
    const PortInfo row = port_row(ifIndex);
    return asked_from_platform([&](const CMPIBroker* broker) {
        return fcport_fill_reference_pm(className.c_str(), NAMESPACE, &row, broker);
    });
}

std::string platform_port_instance(const std::string& className, std::uint32_t ifIndex) {
    const PortInfo row = port_row(ifIndex);
    return printed_object(asked_from_platform([&](const CMPIBroker* broker) {
        return fcport_build_instance_pm(className.c_str(), NAMESPACE, &row, nullptr, broker);
    }));
}

std::string hosting_system_instance(const std::string& className, const Tunnel& tunnel) {
    return printed_object(asked_from_platform([&](const CMPIBroker* broker) {
        return switch_build_instance_str(className.c_str(), NAMESPACE, vsan_name(tunnel).whole, 0, nullptr,
                                         broker);
    }));
}

std::string identified(std::optional<std::string> host, const std::string& className, const char* property,
                       const std::string& value) {
    return RecordedPath(NAMESPACE, className, {}, std::move(host)).text() + " " + property + " " + value;
}

const char* identifying_property(End end) {
    switch (end) {
        case End::FcipSettings:
        case End::TcpSettings:
        case End::IpSettings:
        case End::Statistics:
        case End::TcpStatisticalData:
        case End::Profile:
        case End::EthernetStatistics:
            return "InstanceID";
        default:
            return "Name";
    }
}

bool made_by_platform(End end) {
    return end == End::HostingSystem || end == End::PhysicalSystem || end == End::FcPort ||
           end == End::EthernetPort;
}

} // namespace

FcipLinkKey link_key(const Tunnel& tunnel) {
    return {tunnel.entity, tunnel.index};
}

FcipLinkEntry link_row(const Tunnel& tunnel) {
    FcipLinkEntry row{};
    row.kfmFcipEntityId = tunnel.entity;
    row.kfmFcipLinkIndex = tunnel.index;
    row.kfmFcipLinkIfIndex = tunnel.ifIndex;
    row.kfmFcipLinkRemFcipEntityId = tunnel.remoteEntity;
    row.kfmFcipLinkRemFcipEntityAddress = ipv4(tunnel.remote);
    row.kfmFcipLinkExtTcpRemPort = 3225;
    row.kfmFcipLinkExtEthIfIndex = tunnel.ethernet;
    return row;
}

void install() {
    emulator::load_empty();
    emulator::set_system(HOST, SYSTEM, {0x20, 0x00, 0x00, 0x0d, 0xec, 0x11, 0x22, 0x33});
    emulator::set_clock(0);
    emulator::add_vsan({1, "default", true, "20:01:00:0d:ec:00:00:01"});
    for (const VsanName& vsan : VSAN_NAMES)
        emulator::add_vsan({vsan.id, "VSAN" + std::to_string(vsan.id), true, vsan.whole});
    for (const Tunnel* tunnel : TUNNELS) {
        emulator::add_link(link_row(*tunnel));
        FcipEntityEntry profile{};
        profile.kfmFcipEntityId = tunnel->entity;
        profile.kfmFcipEntityAddress = ipv4(tunnel->local);
        profile.kfmFcipEntityTcpPort = 3225;
        emulator::add_entity(profile);
        FcipLinkErrors errors{tunnel->entity, tunnel->index, {}};
        errors.counters[0] = error_marker(*tunnel);
        errors.counters[24] = tunnel->ethernet; // word 26, where a link row has its Ethernet port
        emulator::set_link_errors(errors);
        install_port(tunnel->ethernet, 26, 1);
    }
    for (const Tunnel* tunnel : TUNNELS)
        install_port(tunnel->ifIndex, 11, tunnel->vsan); // port 7 ends as the interface of byIfIndex
    install_port(GIGABIT_PORT, 26, 1);
    install_port(GIGABIT_PORT + 0x1000, 26, 1);
}

void PrintTo(End end, std::ostream* out) {
    *out << "end " << static_cast<int>(end);
}

RecordedPath path(End end, const std::string& className, const Tunnel& tunnel) {
    switch (end) {
        case End::FcipEndpoint: // this filler and the remote FCIP port's set no host name
            return endpoint(std::nullopt, className, "KESTO_FCIPProtocolEndPoint", tunnel,
                            name_of(tunnel.index + 1, tunnel.localText, tunnel.remoteText));
        case End::TcpEndpoint:
            return endpoint(HOST, className, "KESTO_TCPProtocolEndPoint", tunnel, printed(tunnel.ifIndex));
        case End::IpEndpoint:
            return endpoint(HOST, className, "KESTO_IPProtocolEndPoint", tunnel,
                            name_of(tunnel.ifIndex, tunnel.localText, tunnel.remoteText));
        case End::FcipSettings:
        case End::TcpSettings:
        case End::IpSettings:
        case End::Statistics:
            return by_instance_id(HOST, className, printed(tunnel.ifIndex));
        case End::RemoteFcipPort: // the remote entity is 0 in paths
            return endpoint(std::nullopt, className, "KESTO_RemoteFCIPPort", tunnel,
                            name_of(0, tunnel.remoteText, tunnel.localText));
        case End::RemoteIpAccessPoint:
            return endpoint(HOST, className, "KESTO_RemoteIPServiceAccessPoint", tunnel,
                            name_of(0, tunnel.remoteText, tunnel.localText));
        case End::RemoteTcpPort:
            return {NAMESPACE, className,
                    Sets{{"SystemName", CMPI_chars, vsan_name(tunnel).cut},
                         {"Name", CMPI_chars, "0_" + printed(tunnel.ifIndex)},
                         {"SystemCreationClassName", CMPI_chars, "KESTO_LogicalComputerSystem"},
                         {"CreationClassName", CMPI_chars, className}},
                    HOST};
        case End::Profile:
            return by_instance_id(std::nullopt, className, printed(tunnel.entity));
        case End::LanEndpoint:
        case End::EthernetStatistics:
        case End::EthernetPort:
            return port_path(end, className, tunnel.ethernet);
        case End::FcPort:
            return platform_port_path(className, tunnel.ifIndex);
        case End::HostingSystem:
            return system_path(className, vsan_name(tunnel).whole);
        case End::VsanSystem:
            return system_path(className, vsan_name(tunnel).cut);
        case End::PhysicalSystem:
            return asked_from_platform([&](const CMPIBroker* broker) {
                return switch_fill_reference(className.c_str(), NAMESPACE, broker);
            });
        case End::TcpStatisticalData:
            break;
    }
    return RecordedPath::of(test_support::Object::Null);
}

RecordedPath system_path(const std::string& className, const char* key) {
    return asked_from_platform([&](const CMPIBroker* broker) {
        return switch_fill_reference_str(className.c_str(), NAMESPACE, key, broker);
    });
}

RecordedPath port_path(End end, const std::string& className, std::uint32_t ifIndex) {
    if (end == End::LanEndpoint) {
        return {NAMESPACE, className,
                Sets{{"SystemName", CMPI_chars, SYSTEM},
                     {"SystemCreationClassName", CMPI_chars, "KESTO_PhysicalComputerSystem"},
                     {"CreationClassName", CMPI_chars, "KESTO_LanEndPoint"},
                     {"Name", CMPI_chars, printed(ifIndex) + ":" + port_address(ifIndex)}},
                HOST};
    }
    if (end == End::EthernetStatistics) return by_instance_id(HOST, className, printed(ifIndex));
    return platform_port_path(className, ifIndex);
}

std::string instance(End end, const std::string& className, const Tunnel& tunnel) {
    std::string key;
    switch (end) {
        case End::FcipEndpoint:
            key = name_of(tunnel.index + 1, tunnel.localText, tunnel.remoteText);
            break;
        case End::TcpEndpoint:
        case End::FcipSettings:
        case End::TcpSettings:
        case End::IpSettings:
            key = printed(tunnel.ifIndex);
            break;
        case End::IpEndpoint:
            key = name_of(tunnel.ifIndex, tunnel.localText, tunnel.remoteText);
            break;
        case End::RemoteFcipPort:
            key = name_of(tunnel.remoteEntity, tunnel.remoteText, tunnel.localText);
            break;
        case End::RemoteIpAccessPoint:
            key = name_of(0, tunnel.remoteText, tunnel.localText);
            break;
        case End::RemoteTcpPort:
            key = "0_" + printed(tunnel.ifIndex);
            break;
        case End::Profile:
            key = printed(tunnel.entity);
            break;
        case End::Statistics: // the error row stands in for the link row
            key = printed(error_marker(tunnel));
            break;
        case End::TcpStatisticalData:
            key = printed(tunnel.index + 1);
            break;
        case End::LanEndpoint:
        case End::EthernetStatistics:
        case End::EthernetPort:
            return port_instance(end, className, tunnel.ethernet);
        case End::FcPort:
            return platform_port_instance(className, tunnel.ifIndex);
        case End::HostingSystem:
        case End::VsanSystem:
        case End::PhysicalSystem:
            return hosting_system_instance(className, tunnel);
    }
    return identified(HOST, className, identifying_property(end), key);
}

std::string port_instance(End end, const std::string& className, std::uint32_t ifIndex) {
    if (end == End::EthernetPort) return platform_port_instance(className, ifIndex);
    const std::string key =
        end == End::LanEndpoint ? printed(ifIndex) + ":" + port_address(ifIndex) : printed(ifIndex);
    return identified(HOST, className, identifying_property(end), key);
}

std::string identity(End end, const RecordedInstance& made) {
    if (!made.is_valid() || made_by_platform(end)) return printed_object(made);
    const char* property = identifying_property(end);
    return made.path().text() + " " + property + " " + made.value(property).text();
}

// clang-format off
const std::vector<Probe> PROBES{
    // key                  mode 1      mode 2       mode 3       mode 4        mode 5       mode 6       mode 7
    {"7_anything", {nullptr, &BY_NUMBER, &BY_IF_INDEX, &BY_IF_INDEX, &BY_ETHERNET, &BY_PROFILE, nullptr,    nullptr}},
    {"7:anything", {nullptr, &BY_NUMBER, &BY_IF_INDEX, &BY_IF_INDEX, &BY_ETHERNET, &BY_PROFILE, nullptr,    nullptr}},
    {"_7",         {nullptr, &BY_NUMBER, &BY_IF_INDEX, nullptr,    &BY_ETHERNET, nullptr,    nullptr,    nullptr}},
    {":7",         {nullptr, nullptr,   nullptr,    nullptr,    &BY_ETHERNET, nullptr,    nullptr,    nullptr}},
    {"0_7",        {nullptr, nullptr,   nullptr,    nullptr,    nullptr,     nullptr,    nullptr,    &BY_IF_INDEX}},
    {"0_10.0.0.7", {nullptr, nullptr,   nullptr,    nullptr,    nullptr,     nullptr,    &BY_ADDRESS, nullptr}},
    {"999_9",      {nullptr, nullptr,   nullptr,    nullptr,    nullptr,     nullptr,    nullptr,    nullptr}},
    // No token to read, or none behind the 0 that modes 6 and 7 begin with.
    {"",           {nullptr, nullptr,   nullptr,    nullptr,    nullptr,     nullptr,    nullptr,    nullptr}},
    {"0",          {nullptr, nullptr,   nullptr,    nullptr,    nullptr,     nullptr,    nullptr,    nullptr}},
};
// clang-format on

void PrintTo(Kind kind, std::ostream* out) {
    *out << first_role(kind) << "/" << second_role(kind);
}

const char* first_role(Kind kind) {
    switch (kind) {
        case Kind::Realize:
            return "Antecedent";
        case Kind::GroupPart:
            return "GroupComponent";
        case Kind::ManagedSetting:
        case Kind::ManagedStats:
            break;
    }
    return "ManagedElement";
}

const char* second_role(Kind kind) {
    switch (kind) {
        case Kind::Realize:
            return "Dependent";
        case Kind::GroupPart:
            return "PartComponent";
        case Kind::ManagedSetting:
            return "SettingData";
        case Kind::ManagedStats:
            break;
    }
    return "Stats";
}

RecordedPath association(Kind kind, const std::string& className, const RecordedPath& first,
                         const RecordedPath& second) {
    Sets keys{{first_role(kind), CMPI_ref, first}, {second_role(kind), CMPI_ref, second}};
    if (kind == Kind::ManagedSetting) {
        keys.push_back({"IsDefault", CMPI_uint16, 1});
        keys.push_back({"IsCurrent", CMPI_uint16, 1});
    }
    return {NAMESPACE, className, keys, HOST};
}

} // namespace golden
