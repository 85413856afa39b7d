// How the emulated switch starts, how its faults are judged, and how misuse is reported.
#include "emulator/runtime.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "emulator/exported_services.h"
#include "emulator/scenario.h"

std::uint32_t mts_q = 0;

namespace emulator {
namespace {

constexpr std::array SERVICES = {
    LINE_CARD,
    "mutex_lock",
    "mutex_unlock",
    "init_mts",
    "mts_send",
    "mts_rr_token_get",
    "mts_recv",
    "mts_payload_get",
    "mts_payload_size",
    "mts_drop",
    "mts_sap_get",
    "cmi_req_resp",
    "fcip_get_link_entry",
    "fcip_get_entity_entry",
    "fcip_get_tcpconn_entry",
    "fcip_snmp_get_link_errors",
    "fcip_send_recv_with_mts_q",
    "fcip_if_str",
    "pm_cim_get_port_info",
    "pm_cim_find_interface",
    "pm_cim_get_network_address",
    "pm_cmi_get_port_config",
    "pm_get_port_counters",
    "pm_get_clear_eth_stats",
    "if_index_get_type",
    "if_index_get_slot",
    "if_index_get_port",
    "idxmap_node_by_if_index",
    "hton_if_index",
    "sprintf_if_index",
    "vsan_cim_get_vsanEntry",
    "dm_cim_get_dmEntry",
    "vsan_cim_get_vsan_key",
    "vsan_cim_get_vsan_admindomain_key",
    "ip_addr_to_str",
    "ip_addr_compare",
    "ipconf_get_intf_ip_address",
    "ipconf_get_if_inet_addrs",
    "netcfg_print_ifname",
    "getCSName",
    "CSgetName",
    "system_cim_get_switch_wwn",
    "cim_sprintf_wwn",
    "switch_fill_reference",
    "switch_fill_reference_str",
    "switch_build_instance_str",
    "association_class_build_instance_path",
    "fcport_build_instance_pm",
    "fcport_fill_reference_pm",
};

constexpr std::size_t MOST_REPORTED_MISUSES = 100;

void start(Runtime& emulated) {
    const char* file = std::getenv("KESTO_SWITCH");
    try {
        emulated.load(file == nullptr || *file == '\0' ? builtin_switch() : parse_scenario_file(file));
    } catch (const ScenarioError& error) {
        // A CIM server must survive a bad file: every table stays empty, and init_mts fails.
        std::fprintf(stderr, "emulated switch: %s\n", error.what());
        emulated.refused = true;
    }
    emulated.transport.open = false;
    mts_q = 0;
}

} // namespace

void Faults::add(Fault fault) {
    const std::uint32_t seed = fault.seed;
    armed_.push_back({std::move(fault), 0, std::mt19937(seed)});
}

Verdict Faults::judge(std::string_view symbol, const std::string& arguments,
                      std::vector<std::function<void()>>& actions) {
    Verdict verdict;
    for (Armed& armed : armed_) {
        const Fault& fault = armed.fault;
        if (fault.symbol != symbol || arguments.find(fault.where) == std::string::npos) continue;
        ++armed.seen;
        if (armed.seen < fault.first || armed.seen > fault.last) continue;
        // Drawn by hand, since the library's distributions differ from one implementation to the next.
        if (fault.probability < 1 &&
            static_cast<double>(armed.random()) >= fault.probability * 4294967296.0) {
            continue;
        }
        if (fault.action) actions.push_back(fault.action);
        if (verdict.effect == Effect::None) verdict = {fault.effect, fault.status, fault.size};
    }
    return verdict;
}

void Runtime::load(SwitchState loaded) {
    state = std::move(loaded);
    state.clock.start();
    refused = false;
    faults.clear();
    for (const Fault& fault : state.faults) {
        faults.add(fault);
    }
    fixedReplies.clear();
    transport.clear_queue();
    transport.open = true;
    mts_q = QUEUE_HANDLE;
}

void Runtime::count_call(const char* symbol) {
    const auto found = callCounts.find(symbol); // makes no string, unlike operator[]
    if (found != callCounts.end()) {
        ++found->second;
    } else {
        callCounts.emplace(symbol, 1);
    }
}

void Runtime::misuse(const std::string& what) {
    ++misuses;
    if (misuseTexts.size() < MOST_REPORTED_MISUSES) misuseTexts.push_back(what);
    std::fprintf(stderr, "emulated switch: %s\n", what.c_str());
}

const char* Runtime::keep(const std::string& text) {
    return kept_.insert(text).first->c_str();
}

Runtime& runtime() {
    static Runtime& emulated = [&]() -> Runtime& {
        auto* made = new Runtime;
        start(*made);
        return *made;
    }();
    return emulated;
}

bool is_service(std::string_view symbol) {
    return std::find(SERVICES.begin(), SERVICES.end(), symbol) != SERVICES.end();
}

} // namespace emulator
