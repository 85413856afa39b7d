// The interface-index service: type, place, node and name of an interface. Its callers need no queue and no
// lock.
#include <arpa/inet.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "emulator/call.h"
#include "emulator/control.h"
#include "emulator/exported_services.h"
#include "emulator/interface_types.h"
#include "emulator/runtime.h"
#include "emulator/switch_state.h"
#include "emulator/text_format.h"

using namespace emulator;

namespace {

// Answers with one number of a port.
template <typename Value>
int answer_value(const char* symbol, std::uint32_t ifIndex, Value* value, Value Port::*field) {
    const Call call(symbol, CallerLock::NotNeeded, [&] { return format("if=0x%08x", ifIndex); });
    if (!call.require(value != nullptr, "the out-parameter is NULL")) return FAILED;
    if (call.failed()) return call.status();
    const Port* port = runtime().state.find_port(ifIndex);
    if (port == nullptr) return NOT_FOUND;
    *value = port->*field;
    return OK;
}

} // namespace

int if_index_get_type(std::uint32_t ifIndex, std::uint8_t* type) {
    return answer_value("if_index_get_type", ifIndex, type, &Port::type);
}

int if_index_get_slot(std::uint32_t ifIndex, std::uint16_t* slot) {
    return answer_value("if_index_get_slot", ifIndex, slot, &Port::slot);
}

int if_index_get_port(std::uint32_t ifIndex, std::uint16_t* port) {
    return answer_value("if_index_get_port", ifIndex, port, &Port::port);
}

std::uint32_t idxmap_node_by_if_index(std::uint32_t ifIndex) {
    const Call call("idxmap_node_by_if_index", CallerLock::NotNeeded,
                    [&] { return format("if=0x%08x", ifIndex); });
    const Port* port = runtime().state.find_port(ifIndex);
    return port == nullptr || call.failed() ? SUPERVISOR_NODE : port->node.value_or(SUPERVISOR_NODE);
}

std::uint32_t hton_if_index(std::uint32_t ifIndex) {
    const Call call("hton_if_index", CallerLock::NotNeeded, [&] { return format("if=0x%08x", ifIndex); });
    return htonl(ifIndex);
}

int sprintf_if_index(char* buffer, std::uint32_t ifIndex) {
    const Call call("sprintf_if_index", CallerLock::NotNeeded, [&] { return format("if=0x%08x", ifIndex); });
    if (!call.require(buffer != nullptr, "the buffer is NULL")) return FAILED;
    if (call.failed()) return call.status();
    const Port* port = runtime().state.find_port(ifIndex);
    if (port == nullptr) return NOT_FOUND;
    std::memcpy(buffer, port->name.c_str(), port->name.size() + 1);
    return OK;
}
