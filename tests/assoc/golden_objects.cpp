#include "tests/assoc/golden_objects.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <utility>

#include "emulator/control.h"
#include "platform/platform_services.h"
#include "tests/support/recording_broker.h"

using test_support::RecordedInstance;
using test_support::RecordedPath;
using test_support::RecordingBroker;
using test_support::Sets;

namespace golden {

namespace {

std::string name_of(std::uint32_t number, const char* first, const char* second) {
    return std::to_string(number) + "_" + first + "_" + second;
}

std::string printed(std::uint32_t number) {
    return std::to_string(static_cast<std::int32_t>(number));
}

// The value of the key that names the tunnel, in paths and, with the exceptions below, in instances.
std::string key_text(End end, const Tunnel& tunnel) {
    switch (end) {
        case End::FcipEndpoint:
            return name_of(tunnel.index + 1, tunnel.local, tunnel.remote);
        case End::IpEndpoint:
            return name_of(tunnel.ifIndex, tunnel.local, tunnel.remote);
        case End::RemoteFcipPort:
        case End::RemoteIpAccessPoint:
            return name_of(0, tunnel.remote, tunnel.local);
        case End::RemoteTcpPort:
            return "0_" + printed(tunnel.ifIndex);
        case End::Profile:
            return printed(tunnel.entity);
        case End::TcpStatisticalData:
            return printed(tunnel.index + 1);
        default:
            return printed(tunnel.ifIndex);
    }
}

std::string instance_key_text(End end, const Tunnel& tunnel) {
    if (end == End::RemoteFcipPort) return name_of(tunnel.remoteEntity, tunnel.remote, tunnel.local);
    if (end == End::Statistics) return printed(error_marker(tunnel)); // the error row stands for the link row
    return key_text(end, tunnel);
}

// The keys of the link-based endpoint classes, in the order that all but the remote TCP port have.
RecordedPath endpoint(std::optional<std::string> host, const std::string& className,
                      const char* creationClass, const Tunnel& tunnel, End end) {
    return {NAMESPACE, className,
            Sets{{"SystemName", CMPI_chars, cut_vsan_name(tunnel)},
                 {"SystemCreationClassName", CMPI_chars, "KESTO_LogicalComputerSystem"},
                 {"CreationClassName", CMPI_chars, creationClass},
                 {"Name", CMPI_chars, key_text(end, tunnel)}},
            std::move(host)};
}

RecordedPath by_instance_id(std::optional<std::string> host, const std::string& className,
                            const std::string& id) {
    return {NAMESPACE, className, Sets{{"InstanceID", CMPI_chars, id}}, std::move(host)};
}

// The objects that the platform makes are asked from it, on a broker that the tests do not look at.
template <typename Function>
auto asked_from_platform(Function make) {
    RecordingBroker aside;
    const emulator::Locked locked;
    return aside.recorded(make(aside.cmpi()));
}

PortInfo port_info(std::uint32_t ifIndex) {
    PortInfo row{};
    row.ifIndex = ifIndex;
    row.vsan = emulator::find_port(ifIndex).value().vsan;
    return row;
}

RecordedPath platform_port_path(const std::string& className, std::uint32_t ifIndex) {
    const PortInfo row = port_info(ifIndex);
    return asked_from_platform([&](const CMPIBroker* broker) {
        return fcport_fill_reference_pm(className.c_str(), NAMESPACE, &row, broker);
    });
}

std::string platform_port_instance(const std::string& className, std::uint32_t ifIndex) {
    const PortInfo row = port_info(ifIndex);
    return testing::PrintToString(asked_from_platform([&](const CMPIBroker* broker) {
        return fcport_build_instance_pm(className.c_str(), NAMESPACE, &row, nullptr, broker);
    }));
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

std::string identified(End end, const std::string& className, const std::string& value) {
    return RecordedPath(NAMESPACE, className, {}, HOST).text() + " " + identifying_property(end) + " " +
           value;
}

bool made_by_platform(End end) {
    return end == End::HostingSystem || end == End::PhysicalSystem || end == End::FcPort ||
           end == End::EthernetPort;
}

std::pair<const char*, const char*> roles(Kind kind) {
    switch (kind) {
        case Kind::Realize:
            return {"Antecedent", "Dependent"};
        case Kind::GroupPart:
            return {"GroupComponent", "PartComponent"};
        case Kind::ManagedSetting:
            return {"ManagedElement", "SettingData"};
        case Kind::ManagedStats:
            break;
    }
    return {"ManagedElement", "Stats"};
}

} // namespace

std::string text_of(Form form) {
    return form == Form::Names ? "Names" : "Instances";
}

void PrintTo(Form form, std::ostream* out) {
    *out << text_of(form);
}

void PrintTo(End end, std::ostream* out) {
    *out << "end " << static_cast<int>(end);
}

void PrintTo(Kind kind, std::ostream* out) {
    *out << roles(kind).first << "/" << roles(kind).second;
}

RecordedPath path(End end, const std::string& className, const Tunnel& tunnel) {
    switch (end) {
        case End::FcipEndpoint: // this filler and the remote FCIP port's set no host name
            return endpoint(std::nullopt, className, "KESTO_FCIPProtocolEndPoint", tunnel, end);
        case End::RemoteFcipPort:
            return endpoint(std::nullopt, className, "KESTO_RemoteFCIPPort", tunnel, end);
        case End::TcpEndpoint:
            return endpoint(HOST, className, "KESTO_TCPProtocolEndPoint", tunnel, end);
        case End::IpEndpoint:
            return endpoint(HOST, className, "KESTO_IPProtocolEndPoint", tunnel, end);
        case End::RemoteIpAccessPoint:
            return endpoint(HOST, className, "KESTO_RemoteIPServiceAccessPoint", tunnel, end);
        case End::RemoteTcpPort:
            return {NAMESPACE, className,
                    Sets{{"SystemName", CMPI_chars, cut_vsan_name(tunnel)},
                         {"Name", CMPI_chars, key_text(end, tunnel)},
                         {"SystemCreationClassName", CMPI_chars, "KESTO_LogicalComputerSystem"},
                         {"CreationClassName", CMPI_chars, className}},
                    HOST};
        case End::FcipSettings:
        case End::TcpSettings:
        case End::IpSettings:
        case End::Statistics:
            return by_instance_id(HOST, className, key_text(end, tunnel));
        case End::Profile:
            return by_instance_id(std::nullopt, className, key_text(end, tunnel));
        case End::LanEndpoint:
        case End::EthernetStatistics:
        case End::EthernetPort:
            return port_path(end, className, tunnel.ethernet);
        case End::FcPort:
            return platform_port_path(className, tunnel.ifIndex);
        case End::HostingSystem:
            return system_path(className, vsan_name(tunnel));
        case End::VsanSystem:
            return system_path(className, cut_vsan_name(tunnel).c_str());
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
    switch (end) {
        case End::LanEndpoint:
        case End::EthernetStatistics:
        case End::EthernetPort:
            return port_instance(end, className, tunnel.ethernet);
        case End::FcPort:
            return platform_port_instance(className, tunnel.ifIndex);
        case End::HostingSystem:
        case End::VsanSystem:
        case End::PhysicalSystem:
            return testing::PrintToString(asked_from_platform([&](const CMPIBroker* broker) {
                return switch_build_instance_str(className.c_str(), NAMESPACE, vsan_name(tunnel), 0, nullptr,
                                                 broker);
            }));
        default:
            return identified(end, className, instance_key_text(end, tunnel));
    }
}

std::string port_instance(End end, const std::string& className, std::uint32_t ifIndex) {
    if (end == End::EthernetPort) return platform_port_instance(className, ifIndex);
    if (end == End::LanEndpoint) {
        return identified(end, className, printed(ifIndex) + ":" + port_address(ifIndex));
    }
    return identified(end, className, printed(ifIndex));
}

std::string identity(End end, const RecordedInstance& made) {
    if (!made.is_valid() || made_by_platform(end)) return testing::PrintToString(made);
    const char* property = identifying_property(end);
    return made.path().text() + " " + property + " " + made.value(property).text();
}

std::string object(Form form, End end, const std::string& className, const Tunnel& tunnel) {
    return form == Form::Names ? path(end, className, tunnel).text() : instance(end, className, tunnel);
}

std::string port_object(Form form, End end, const std::string& className, std::uint32_t ifIndex) {
    return form == Form::Names ? port_path(end, className, ifIndex).text()
                               : port_instance(end, className, ifIndex);
}

RecordedPath association(Kind kind, const std::string& className, const RecordedPath& first,
                         const RecordedPath& second) {
    Sets keys{{roles(kind).first, CMPI_ref, first}, {roles(kind).second, CMPI_ref, second}};
    if (kind == Kind::ManagedSetting) {
        keys.push_back({"IsDefault", CMPI_uint16, 1});
        keys.push_back({"IsCurrent", CMPI_uint16, 1});
    }
    return {NAMESPACE, className, keys, HOST};
}

std::vector<RecordedPath> associations_of(const test_support::Answer& answer) {
    std::vector<RecordedPath> found;
    for (const test_support::Returned& returned : answer.returned) {
        if (returned.kind == test_support::Returned::Kind::Path) {
            found.push_back(returned.path);
        } else if (returned.instance.is_valid()) {
            const RecordedPath& path = returned.instance.path();
            EXPECT_TRUE(path.keys().empty());
            found.emplace_back(path.name_space(), path.class_name(), returned.instance.sets(), path.host());
        } else {
            found.push_back(RecordedPath::of(returned.instance.kind()));
        }
    }
    return found;
}

} // namespace golden
