// VSAN and domain records, and the texts that name a VSAN's computer system.
//
// A record is opaque to its owner, who passes it back. It carries a mark of its kind, so that a record of
// another kind, or another block, is reported rather than read.
#include <cstdint>
#include <cstring>
#include <string>

#include "emulator/call.h"
#include "emulator/control.h"
#include "emulator/exported_services.h"
#include "emulator/runtime.h"
#include "emulator/switch_state.h"
#include "emulator/text_format.h"

using namespace emulator;

namespace {

struct OpaqueRecord {
    std::uint32_t mark;
    std::uint32_t vsan;
    char systemName[64];
};
constexpr std::uint32_t VSAN_RECORD = 0x5653414E;
constexpr std::uint32_t DOMAIN_RECORD = 0x444F4D41;

const Vsan* find_vsan(std::uint32_t id) {
    const auto& vsans = runtime().state.vsans;
    const auto found = vsans.find(id);
    return found == vsans.end() ? nullptr : &found->second;
}

int answer_record(const Call& call, void** entry, std::uint32_t mark, std::uint32_t id, const Vsan* vsan) {
    OpaqueRecord record{mark, id, {}};
    if (vsan != nullptr) vsan->systemName.copy(record.systemName, sizeof record.systemName - 1);
    return call.answer_bytes(entry, vsan, &record, sizeof record);
}

// The record that an argument of the key services points to; null if there is none. A lookup that succeeded
// without a record leaves its caller with an empty slot: no key can be made of it, and the caller is not to
// blame.
const OpaqueRecord* record_in(const Call& call, void** entry, std::uint32_t mark) {
    if (!call.require(entry != nullptr, "the record's slot is NULL")) return nullptr;
    const auto* record = static_cast<const OpaqueRecord*>(*entry);
    if (record == nullptr) return nullptr;
    return call.require(record->mark == mark, "not the record that this key is made of") ? record : nullptr;
}

int write_key(const Call& call, char* text, const OpaqueRecord* domain) {
    if (!call.require(text != nullptr, "the text is NULL") || domain == nullptr) return FAILED;
    if (call.failed()) return call.status();
    std::memcpy(text, domain->systemName, std::strlen(domain->systemName) + 1);
    return OK;
}

} // namespace

int vsan_cim_get_vsanEntry(std::uint32_t queue, std::uint32_t vsan, void** entry) {
    const Call call("vsan_cim_get_vsanEntry", CallerLock::Needed, [&] { return format("vsan=%u", vsan); });
    if (!call.usable(queue)) return FAILED;
    return answer_record(call, entry, VSAN_RECORD, vsan, find_vsan(vsan));
}

int dm_cim_get_dmEntry(std::uint32_t queue, std::uint32_t vsan, std::uint32_t option, void** entry) {
    const Call call("dm_cim_get_dmEntry", CallerLock::Needed,
                    [&] { return format("vsan=%u %u", vsan, option); });
    if (!call.usable(queue)) return FAILED;
    call.require(option == 1, "the constant argument is not 1");
    const Vsan* found = find_vsan(vsan);
    return answer_record(call, entry, DOMAIN_RECORD, vsan,
                         found != nullptr && found->hasDomain ? found : nullptr);
}

int vsan_cim_get_vsan_key(char* text, void** vsanEntry, void** domainEntry) {
    const Call call("vsan_cim_get_vsan_key", CallerLock::NotNeeded);
    const bool vsan = record_in(call, vsanEntry, VSAN_RECORD) != nullptr;
    const OpaqueRecord* domain = record_in(call, domainEntry, DOMAIN_RECORD);
    return write_key(call, text, vsan ? domain : nullptr);
}

int vsan_cim_get_vsan_admindomain_key(char* text, void** domainEntry) {
    const Call call("vsan_cim_get_vsan_admindomain_key", CallerLock::NotNeeded);
    return write_key(call, text, record_in(call, domainEntry, DOMAIN_RECORD));
}
