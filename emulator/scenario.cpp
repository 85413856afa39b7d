// The switch as a whole: its names, its VSANs, and the order in which a scenario is read.
#include "emulator/scenario.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "emulator/builtin_switch.h"
#include "emulator/control.h"
#include "emulator/scenario_draft.h"
#include "emulator/scenario_faults.h"
#include "emulator/scenario_objects.h"
#include "emulator/scenario_ports.h"
#include "emulator/scenario_reader.h"
#include "emulator/scenario_tunnels.h"
#include "emulator/scenario_values.h"
#include "platform/platform_records.h"

namespace emulator {
namespace {

void read_system(const Reader& object, SwitchState& state) {
    object.expect_object(kind::SYSTEM);
    state.hostName = object.at("hostName").text(1, 255);
    state.systemName = object.at("name").text(1, 255);
    state.wwn = read_wwn(object.at("wwn"));
}

void read_ip(const Reader& object, IpMiscCfg& configuration) {
    object.expect_object(kind::IP);
    if_there(object, "forwarding",
             [&](const Reader& value) { configuration.ipForwarding = value.boolean() ? 1 : 0; });
    if_there(object, "defaultTtl", [&](const Reader& value) { configuration.defaultTtl = value.u32(); });
}

void read_vsan(const Reader& object, SwitchState& state) {
    object.expect_object(kind::VSAN);
    read_description(object);
    Vsan vsan;
    vsan.id = object.at("id").u32(1, 4094);
    if_there(object, "name", [&](const Reader& value) { vsan.name = value.text(0, 63); });
    vsan.hasDomain = object.has("domain");
    if_there(object, "domain", [&](const Reader& value) {
        value.expect_object(kind::DOMAIN_OF_VSAN);
        vsan.systemName = value.at("systemName").text(1, 63);
    });
    if (!state.vsans.emplace(vsan.id, vsan).second) object.at("id").refuse("is the id of an earlier VSAN");
}

SwitchState read_scenario(const Reader& scenario) {
    scenario.expect_object(kind::SCENARIO);
    if_there(scenario, "$schema", [](const Reader& value) { value.text(0, 1000); });
    read_description(scenario);
    Draft draft;
    read_system(scenario.at("system"), draft.state);
    if_there(scenario, "clock", [&](const Reader& value) { draft.state.clock.stop_at(value.real(0, 1e12)); });
    if_there(scenario, "ip", [&](const Reader& value) { read_ip(value, draft.state.ipConfiguration); });
    for (const Reader& vsan : scenario.elements_of("vsans")) {
        read_vsan(vsan, draft.state);
    }
    for (const Reader& port : scenario.elements_of("ports")) {
        read_port(port, draft);
    }
    for (const Reader& profile : scenario.elements_of("profiles")) {
        read_profile(profile, draft);
    }
    for (const Reader& tunnel : scenario.elements_of("tunnels")) {
        read_tunnel(tunnel, draft);
    }
    for (const Reader& fault : scenario.elements_of("faults")) {
        read_fault(fault, draft);
    }
    return std::move(draft.state);
}

} // namespace

SwitchState parse_scenario(std::string_view text, std::string_view source) {
    const nlohmann::json parsed = parse_json(text, source);
    return read_scenario(Reader(parsed, std::string(source)));
}

SwitchState parse_scenario_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    if (!file || !(text << file.rdbuf())) throw ScenarioError(path + ": cannot be read");
    return parse_scenario(text.str(), path);
}

const SwitchState& builtin_switch() {
    static const SwitchState PARSED = parse_scenario(builtin_scenario(), "built-in switch");
    return PARSED;
}

} // namespace emulator
