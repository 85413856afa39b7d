// The functions of control.h.
#include "emulator/control.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <mutex>
#include <utility>

#include "emulator/builtin_switch.h"
#include "emulator/exported_services.h"
#include "emulator/lock.h"
#include "emulator/runtime.h"
#include "emulator/scenario.h"
#include "emulator/scenario_objects.h"
#include "emulator/scenario_reader.h"
#include "emulator/switch_state.h"
#include "emulator/transport.h"

namespace emulator {
namespace {

// The runtime, locked for the lifetime of this object.
class Access {
  public:
    Runtime* operator->() const { return &emulated_; }

  private:
    Runtime& emulated_ = runtime();
    std::unique_lock<std::recursive_mutex> guard_{emulated_.mutex};
};

} // namespace

ScenarioError::~ScenarioError() = default;

void reset() {
    const Access emulated;
    emulated->load(builtin_switch());
    release_messages();
    clear_misuse();
    clear_calls();
    record_calls(true);
}

void load_builtin() {
    Access()->load(builtin_switch());
}
void load_empty() {
    Access()->load(SwitchState{});
}
void load_json(std::string_view text, std::string_view source) {
    Access()->load(parse_scenario(text, source));
}
void load_file(const std::string& path) {
    Access()->load(parse_scenario_file(path));
}
std::string builtin_text() {
    return std::string(builtin_scenario());
}

void set_clock(double seconds) {
    Access()->state.clock.stop_at(seconds);
}
void run_clock() {
    Access()->state.clock.run();
}
void advance_clock(double seconds) {
    const Access emulated;
    emulated->state.clock.stop_at(emulated->state.clock.seconds() + seconds);
}

void add_link(const FcipLinkEntry& row) {
    Access()->state.links[{row.kfmFcipEntityId, row.kfmFcipLinkIndex}] = row;
}
void remove_link(const FcipLinkKey& key) {
    Access()->state.links.erase(table_key(key));
}
void clear_links() {
    Access()->state.links.clear();
}

void add_entity(const FcipEntityEntry& row) {
    Access()->state.entities[row.kfmFcipEntityId] = row;
}
void remove_entity(std::uint32_t entityId) {
    Access()->state.entities.erase(entityId);
}
void clear_entities() {
    Access()->state.entities.clear();
}

void set_link_errors(const FcipLinkErrors& row) {
    LinkErrorCounters counters;
    for (std::size_t i = 0; i < counters.size(); ++i) {
        counters[i] = {row.counters[2 * i] | std::uint64_t{row.counters[2 * i + 1]} << 32, 0};
    }
    Access()->state.linkErrors[{row.kfmFcipEntityId, row.kfmFcipLinkIndex}] = counters;
}
void remove_link_errors(const FcipLinkKey& key) {
    Access()->state.linkErrors.erase(table_key(key));
}
void clear_link_errors() {
    Access()->state.linkErrors.clear();
}

void add_tcp_connection(const FcipTcpConnKey& key, const FcipTcpConnEntry& row) {
    Access()->state.tcpConnections[table_key(key)] = row;
}
void remove_tcp_connection(const FcipTcpConnKey& key) {
    Access()->state.tcpConnections.erase(table_key(key));
}
void clear_tcp_connections() {
    Access()->state.tcpConnections.clear();
}

std::optional<FcipLinkEntry> find_link(const FcipLinkKey& key) {
    const Access emulated;
    const auto found = emulated->state.links.find(table_key(key));
    return found == emulated->state.links.end() ? std::nullopt : std::optional(found->second);
}

std::optional<FcipEntityEntry> find_entity(std::uint32_t entityId) {
    const Access emulated;
    const auto found = emulated->state.entities.find(entityId);
    return found == emulated->state.entities.end() ? std::nullopt : std::optional(found->second);
}

void add_port(const Port& port) {
    Access()->state.ports[port.ifIndex] = completed(port);
}
void remove_port(std::uint32_t ifIndex) {
    Access()->state.ports.erase(ifIndex);
}
void clear_ports() {
    Access()->state.ports.clear();
}

std::optional<Port> find_port(std::uint32_t ifIndex) {
    const Access emulated;
    const Port* port = emulated->state.find_port(ifIndex);
    return port == nullptr ? std::nullopt : std::optional(*port);
}

std::vector<std::uint32_t> port_indexes() {
    const Access emulated;
    std::vector<std::uint32_t> indexes;
    for (const auto& [ifIndex, port] : emulated->state.ports) {
        indexes.push_back(ifIndex);
    }
    return indexes;
}

std::uint32_t node_of_slot(std::uint16_t slot) {
    return 0x0100U + slot;
}

void add_vsan(const Vsan& vsan) {
    Access()->state.vsans[vsan.id] = vsan;
}
void remove_vsan(std::uint32_t id) {
    Access()->state.vsans.erase(id);
}
void clear_vsans() {
    Access()->state.vsans.clear();
}

void set_system(const std::string& hostName, const std::string& name, const std::uint8_t (&wwn)[8]) {
    const Access emulated;
    emulated->state.hostName = hostName;
    emulated->state.systemName = name;
    std::copy(std::begin(wwn), std::end(wwn), emulated->state.wwn.begin());
}
std::string host_name() {
    return Access()->state.hostName;
}
std::string system_name() {
    return Access()->state.systemName;
}
void set_ip_configuration(const IpMiscCfg& configuration) {
    Access()->state.ipConfiguration = configuration;
}

void add_fault(Fault fault) {
    if (!is_service(fault.symbol)) {
        throw std::invalid_argument("no platform service is called " + fault.symbol);
    }
    Access()->faults.add(std::move(fault));
}

void fail_call(const std::string& symbol, std::uint32_t nth, int status) {
    add_fault({.symbol = symbol, .first = nth, .last = nth, .status = status});
}

void fail_always(const std::string& symbol, int status) {
    add_fault({.symbol = symbol, .status = status});
}

void clear_faults() {
    Access()->faults.clear();
}

void set_reply(std::uint32_t code, std::vector<std::uint8_t> payload,
               std::vector<std::vector<std::uint8_t>> continuations) {
    Access()->fixedReplies[code] = {std::move(payload), std::move(continuations)};
}
void clear_replies() {
    Access()->fixedReplies.clear();
}

void queue_message(std::vector<std::uint8_t> payload) {
    Access()->transport.enqueue(std::make_unique<Message>(0, payload));
}

void close_queue() {
    const Access emulated;
    emulated->transport.open = false;
    mts_q = 0;
}

void record_calls(bool on) {
    Access()->recording = on;
}
std::vector<std::string> calls() {
    return Access()->callLog;
}

std::vector<std::string> calls(std::string_view symbol) {
    std::vector<std::string> found = calls();
    std::erase_if(found,
                  [symbol](std::string_view text) { return text.substr(0, text.find(' ')) != symbol; });
    return found;
}

std::size_t count(std::string_view symbol) {
    const Access emulated;
    const auto found = emulated->callCounts.find(symbol);
    return found == emulated->callCounts.end() ? 0 : found->second;
}

void clear_calls() {
    const Access emulated;
    emulated->callLog.clear();
    emulated->callCounts.clear();
    emulated->requests.clear();
}

std::vector<SentRequest> sent_requests() {
    return Access()->requests;
}

std::size_t messages_outstanding() {
    return Access()->transport.held_count();
}
std::size_t messages_queued() {
    return Access()->transport.queued_count();
}
void release_messages() {
    Access()->transport.release_all();
}

std::size_t misuse_count() {
    return Access()->misuses;
}

std::string misuse_report() {
    const Access emulated;
    std::string report;
    for (const std::string& text : emulated->misuseTexts) {
        report += text + "\n";
    }
    return report;
}

void clear_misuse() {
    const Access emulated;
    emulated->misuses = 0;
    emulated->misuseTexts.clear();
}

bool lock_held() {
    return this_thread_holds_lock();
}

Locked::Locked() {
    mutex_lock();
}
Locked::~Locked() {
    mutex_unlock();
}

std::map<std::string, std::vector<std::string>> scenario_members() {
    std::map<std::string, std::vector<std::string>> members;
    for (const ObjectKind* kind : object_kinds()) {
        members[kind->name] = kind->members;
    }
    return members;
}

} // namespace emulator
