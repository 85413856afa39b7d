// A fault: the calls that it hits, its effect on them, and the change of the tunnel table that it makes.
#include "emulator/scenario_faults.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "emulator/control.h"
#include "emulator/runtime.h"
#include "emulator/scenario_objects.h"
#include "emulator/scenario_tunnels.h"
#include "emulator/scenario_values.h"
#include "emulator/switch_state.h"

namespace emulator {
namespace {

struct EffectName {
    const char* name;
    Effect effect;
    bool ofLineCard = false;
};
constexpr EffectName EFFECTS[] = {
    {"none", Effect::None},
    {"fail", Effect::Fail},
    {"failWithRow", Effect::FailWithRow},
    {"succeedWithoutRow", Effect::SucceedWithoutRow},
    {"noAnswer", Effect::NoAnswer, true},
    {"lateAnswer", Effect::LateAnswer, true},
    {"shortPayload", Effect::ShortPayload, true},
    {"replyStatus", Effect::ReplyStatus, true},
};

Effect read_effect(const Reader& value, const std::string& symbol) {
    const std::string name = value.text(1, 32);
    const auto* const found = std::find_if(std::begin(EFFECTS), std::end(EFFECTS),
                                           [&](const EffectName& effect) { return effect.name == name; });
    if (found == std::end(EFFECTS)) value.refuse("is not an effect of a fault");
    if (found->ofLineCard && symbol != LINE_CARD) value.refuse("is an effect of line_card only");
    return found->effect;
}

// What the fault does to the tunnel table before the call is answered.
std::function<void()> read_change(const Reader& object, const Draft& draft) {
    std::optional<LinkKey> removed;
    std::optional<Tunnel> added;
    if_there(object, "removeTunnel", [&](const Reader& value) {
        value.expect_object(kind::LINK_KEY);
        removed = {value.at("entityId").u32(), value.at("linkIndex").u32()};
        if (!draft.state.links.contains(*removed)) value.refuse("is not a tunnel of this switch");
    });
    if_there(object, "addTunnel", [&](const Reader& value) { added = tunnel_of(value, draft); });
    if (!removed && !added) return nullptr;
    return [removed, added] {
        SwitchState& state = runtime().state;
        if (removed) state.links.erase(*removed);
        if (added) added->enter(state);
    };
}

} // namespace

void read_fault(const Reader& object, Draft& draft) {
    object.expect_object(kind::FAULT);
    read_description(object);
    Fault fault;
    fault.symbol = object.at("symbol").text(1, 64);
    if (!is_service(fault.symbol)) object.at("symbol").refuse("is not a platform service");
    if_there(object, "where", [&](const Reader& value) { fault.where = value.text(0, 255); });
    if_there(object, "first", [&](const Reader& value) { fault.first = value.u32(1); });
    if_there(object, "last", [&](const Reader& value) { fault.last = value.u32(fault.first); });
    if_there(object, "probability", [&](const Reader& value) { fault.probability = value.real(0, 1); });
    if_there(object, "seed", [&](const Reader& value) { fault.seed = value.u32(); });
    if_there(object, "status", [&](const Reader& value) { fault.status = value.i32(); });
    if_there(object, "size", [&](const Reader& value) { fault.size = value.u32(0, 65536); });
    fault.effect = read_effect(object.at("effect"), fault.symbol);
    fault.action = read_change(object, draft);
    draft.state.faults.push_back(std::move(fault));
}

} // namespace emulator
