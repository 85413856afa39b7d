// The clock, the moving counters and the defaults of ports.
#include "emulator/switch_state.h"

#include <cctype>
#include <cmath>

#include "emulator/host_interface.h"
#include "emulator/interface_types.h"

namespace emulator {

double Clock::seconds() const {
    if (stopped_) return *stopped_;
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - loaded_).count();
}

std::uint64_t SwitchState::value(const Counter& counter) const {
    if (counter.rate <= 0) return counter.start;
    // Counters wrap as on a switch; the conversion itself must stay in range.
    const double grown = std::fmod(std::floor(counter.rate * clock.seconds()), 18446744073709551616.0);
    return counter.start + (grown > 0 ? static_cast<std::uint64_t>(grown) : 0);
}

const Port* SwitchState::find_port(std::uint32_t ifIndex) const {
    const auto found = ports.find(ifIndex);
    return found == ports.end() ? nullptr : &found->second;
}

namespace {

std::string default_name(const Port& port) {
    const std::string place = std::to_string(port.slot) + "/" + std::to_string(port.port);
    switch (port.type) {
        case IF_TYPE_FC:
            return "fc" + place;
        case IF_TYPE_PORT_CHANNEL:
            return "port-channel" + std::to_string(port.port);
        case IF_TYPE_MANAGEMENT:
            return "mgmt" + std::to_string(port.port);
        case IF_TYPE_FCIP:
            return "fcip" + std::to_string(port.port);
        case IF_TYPE_ETHERNET:
            return "GigabitEthernet" + place;
        default:
            return "Interface" + place;
    }
}

std::string default_linux_name(const Port& port) {
    if (!port.device.empty()) {
        std::string device = host_interface_name(port.device);
        if (!device.empty()) return device;
    }
    if (port.type == IF_TYPE_ETHERNET) {
        return "gige" + std::to_string(port.slot) + "-" + std::to_string(port.port);
    }
    std::string name = port.name.substr(0, 15); // the kernel's limit
    for (char& c : name) {
        c = c == '/' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return name;
}

} // namespace

Port completed(Port port) {
    if (!port.node) port.node = node_of_slot(port.slot);
    if (port.name.empty()) port.name = default_name(port);
    if (port.linuxName.empty()) port.linuxName = default_linux_name(port);
    return port;
}

} // namespace emulator
