// The FCIP management service: the tables of tunnels, profiles, TCP connections and link errors.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "emulator/call.h"
#include "emulator/control.h"
#include "emulator/exported_services.h"
#include "emulator/runtime.h"
#include "emulator/switch_state.h"
#include "emulator/text_format.h"
#include "platform/platform_records.h"

using namespace emulator;

namespace {

enum : int { OP_EXACT = 1, OP_NEXT = 2 };

constexpr std::uint32_t CODE_PROFILE_INTERFACES = 8946;
constexpr std::uint32_t FCIP_NODE = 0xFE000000;
constexpr std::uint32_t FCIP_SERVICE = 60;

// The row that an exact or a get-next request asks for; null if there is none.
template <typename Table, typename Key>
const typename Table::mapped_type* find_row(const Table& table, int op, const Key& key) {
    const auto found = op == OP_EXACT ? table.find(key) : table.upper_bound(key);
    return found == table.end() ? nullptr : &found->second;
}

FcipLinkErrors link_error_row(const LinkKey& key, const LinkErrorCounters& counters) {
    FcipLinkErrors row{};
    row.kfmFcipEntityId = key.first;
    row.kfmFcipLinkIndex = key.second;
    std::uint32_t* word = row.counters;
    for (const Counter& counter : counters) {
        const std::uint64_t value = runtime().state.value(counter);
        *word++ = static_cast<std::uint32_t>(value); // low word first
        *word++ = static_cast<std::uint32_t>(value >> 32);
    }
    return row;
}

} // namespace

int fcip_get_link_entry(std::uint32_t queue, int op, const FcipLinkKey* key, FcipLinkEntry** row, int count,
                        int flag) {
    const Call call("fcip_get_link_entry", CallerLock::Needed, [&] {
        return key == nullptr
                   ? std::string("NULL")
                   : format("op=%d key={%u,%u} %d %d", op, key->entityId, key->linkIndex, count, flag);
    });
    if (!call.require(key != nullptr, "the key is NULL") || !call.usable(queue)) return FAILED;
    call.require(count == 30 && flag == 1, "the constant arguments are not 30 and 1");
    if (!call.require(op == OP_EXACT || op == OP_NEXT, "an operation that is neither 1 nor 2")) return FAILED;
    return call.answer(row, find_row(runtime().state.links, op, table_key(*key)));
}

int fcip_get_entity_entry(std::uint32_t queue, int op, std::uint32_t entityId, FcipEntityEntry** row,
                          int count) {
    const Call call("fcip_get_entity_entry", CallerLock::Needed,
                    [&] { return format("op=%d id=%u %d", op, entityId, count); });
    if (!call.usable(queue)) return FAILED;
    call.require(count == 5 || count == 30, "the constant argument is neither 5 nor 30");
    if (!call.require(op == OP_EXACT || op == OP_NEXT, "an operation that is neither 1 nor 2")) return FAILED;
    return call.answer(row, find_row(runtime().state.entities, op, entityId));
}

int fcip_get_tcpconn_entry(std::uint32_t queue, int op, const FcipTcpConnKey* key, FcipTcpConnEntry** row,
                           int count) {
    const Call call("fcip_get_tcpconn_entry", CallerLock::Needed, [&] {
        return key == nullptr ? std::string("NULL")
                              : format("op=%d key={%u,%u,%u,%u} %d", op, key->entityId, key->linkIndex,
                                       unsigned{key->localPort}, unsigned{key->remotePort}, count);
    });
    if (!call.require(key != nullptr, "the key is NULL") || !call.usable(queue)) return FAILED;
    call.require(count == 15, "the constant argument is not 15");
    if (!call.require(op == OP_EXACT || op == OP_NEXT, "an operation that is neither 1 nor 2")) return FAILED;
    return call.answer(row, find_row(runtime().state.tcpConnections, op, table_key(*key)));
}

int fcip_snmp_get_link_errors(std::uint32_t queue, int op, const FcipLinkKey* key, FcipLinkErrors** row,
                              int count) {
    const Call call("fcip_snmp_get_link_errors", CallerLock::Needed, [&] {
        return key == nullptr ? std::string("NULL")
                              : format("op=%d key={%u,%u} %d", op, key->entityId, key->linkIndex, count);
    });
    if (!call.require(key != nullptr, "the key is NULL") || !call.usable(queue)) return FAILED;
    call.require(count == 10, "the constant argument is not 10");
    if (!call.require(op == OP_EXACT || op == OP_NEXT, "an operation that is neither 1 nor 2")) return FAILED;
    const auto& table = runtime().state.linkErrors;
    const LinkKey wanted = table_key(*key);
    const auto found = op == OP_EXACT ? table.find(wanted) : table.upper_bound(wanted);
    if (found == table.end()) return call.answer<FcipLinkErrors, FcipLinkErrors>(row, nullptr);
    const FcipLinkErrors errors = link_error_row(found->first, found->second);
    return call.answer(row, &errors);
}

int fcip_send_recv_with_mts_q(std::uint32_t code, std::uint32_t node, std::uint32_t service,
                              const void* payload, std::uint32_t length, std::uint32_t queue, void** reply,
                              std::uint32_t* replyLength, void*) {
    std::uint32_t entityId = 0;
    const bool complete = payload != nullptr && length == sizeof entityId;
    if (complete) std::memcpy(&entityId, payload, sizeof entityId);
    const Call call("fcip_send_recv_with_mts_q", CallerLock::Needed, [&] {
        return format("code=%u node=0x%08x service=%u id=%u", code, node, service, entityId);
    });
    if (!call.usable(queue)) return FAILED;
    if (!call.require(complete, "the payload is not one 32-bit entity id") ||
        !call.require(replyLength != nullptr, "no place for the reply's length") ||
        !call.require(code == CODE_PROFILE_INTERFACES && node == FCIP_NODE && service == FCIP_SERVICE,
                      "not code 8946 to node 0xfe000000, service 60")) {
        return FAILED;
    }

    const SwitchState& state = runtime().state;
    std::vector<std::uint32_t> words{0}; // EntityIfList: the count, then the if-indexes
    for (auto link = state.links.lower_bound({entityId, 0});
         link != state.links.end() && link->first.first == entityId; ++link) {
        words.push_back(link->second.kfmFcipLinkIfIndex);
    }
    words[0] = static_cast<std::uint32_t>(words.size() - 1);
    const std::size_t size = words.size() * sizeof words[0];
    const bool known = state.entities.contains(entityId);
    const int status = call.answer_bytes(reply, known ? words.data() : nullptr, words.data(), size);
    if (status == OK) *replyLength = static_cast<std::uint32_t>(*reply == nullptr ? 0 : size);
    return status;
}

char* fcip_if_str(std::uint32_t ifIndex, char* buffer) {
    const Call call("fcip_if_str", CallerLock::NotNeeded, [&] { return format("if=0x%08x", ifIndex); });
    if (!call.require(buffer != nullptr, "the buffer is NULL")) return nullptr;
    const Port* port = runtime().state.find_port(ifIndex);
    const std::string text = port != nullptr ? port->name : format("0x%08x", ifIndex);
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return buffer;
}
