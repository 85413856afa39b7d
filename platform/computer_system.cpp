#include "platform/computer_system.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "common/results.h"
#include "common/trace.h"
#include "platform/key_number.h"
#include "platform/platform_records.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"

namespace {

constexpr std::size_t KEY_TEXT_SIZE = 256;

// The platform is given the address of an entry's pointer, and may put another entry in its place.
struct LentEntry {
    explicit LentEntry(PlatformRow<void>& owner) : row(owner), entry(owner.release()) {}
    ~LentEntry() { row.reset(entry); }
    LentEntry(const LentEntry&) = delete;
    LentEntry& operator=(const LentEntry&) = delete;

    PlatformRow<void>& row;
    void* entry;
};

// VSAN and domain records are opaque: only the status of their lookup counts.
int fetch_vsan(std::uint32_t vsan, PlatformRow<void>& entry) {
    return fetch_row(entry, [&](void** out) { return vsan_cim_get_vsanEntry(mts_q, vsan, out); });
}

int fetch_domain(std::uint32_t vsan, PlatformRow<void>& entry) {
    return fetch_row(entry, [&](void** out) { return dm_cim_get_dmEntry(mts_q, vsan, 1, out); });
}

// The key of the logical computer system that hosts the port. False when its records cannot be had.
bool find_logical_computer(std::uint32_t ifIndex, char (&key)[KEY_TEXT_SIZE]) {
    std::uint32_t vsan = 0;
    get_vsan_id(ifIndex, &vsan);
    std::printf("vsan_index %d \n", as_printed(vsan));
    PlatformRow<void> vsanEntry;
    PlatformRow<void> domainEntry;
    // Always the record of VSAN 1, whatever the port's own VSAN.
    if (fetch_vsan(1, vsanEntry) != 0 || fetch_domain(vsan, domainEntry) != 0) return false;
    LentEntry lentVsan(vsanEntry);
    LentEntry lentDomain(domainEntry);
    if (vsan_cim_get_vsan_key(key, &lentVsan.entry, &lentDomain.entry) != 0) {
        std::puts("error during get vsan id");
    }
    return true;
}

} // namespace

int get_vsan_id(std::uint32_t ifIndex, std::uint32_t* vsanOut) {
    PlatformRow<PortInfo> port;
    if (fetch_port(ifIndex, port) != 0) {
        std::puts("error : pm_cim_get_port_info ");
        return -1;
    }
    if (!port) return -1;
    *vsanOut = port->vsan;
    return 0;
}

int get_vsan_from_ifindex(std::uint32_t ifIndex, std::uint32_t* vsanOut) {
    const std::uint32_t key[2] = {ifIndex, ifIndex};
    std::uint32_t length = 0;
    PlatformRow<PortInfo> port;
    const int status = fetch_row(
        port, [&](PortInfo** out) { return pm_cmi_get_port_config(mts_q, 1, 1, key, &length, out, 4); });
    if (status != 0 || !port) return -1;
    std::printf(" fcip interface is in the vsan %d \n", as_printed(port->vsan));
    *vsanOut = port->vsan;
    std::printf(" fcip interface is in the vsan %d \n", as_printed(port->otherVsan));
    return 0;
}

int get_vsan_wwn(std::uint32_t ifIndex, char* out) {
    constexpr std::size_t NAME_LENGTH = 20;
    std::uint32_t vsan = 0;
    if (get_vsan_id(ifIndex, &vsan) != 0) return -1;
    PlatformRow<void> domain;
    if (fetch_domain(vsan, domain) != 0) {
        std::puts("error : dm_cim_get_dmEntry ");
        std::memcpy(out, "NULL", sizeof "NULL");
        return -1;
    }
    char key[KEY_TEXT_SIZE] = {};
    LentEntry lentDomain(domain);
    vsan_cim_get_vsan_admindomain_key(key, &lentDomain.entry);
    // A shorter name is padded with NULs, a longer one is cut and not terminated.
    const std::size_t length = strnlen(key, NAME_LENGTH);
    std::fill_n(std::copy_n(key, length, out), NAME_LENGTH - length, '\0');
    return 0;
}

unsigned char* init_wwn(unsigned char wwn[8]) {
    std::memset(wwn, 0, 8);
    return wwn;
}

CMPIObjectPath* get_logical_computer_keys(std::uint32_t ifIndex, const char* nameSpace,
                                          const CMPIBroker* broker) {
    trace_entering(__func__);
    char key[KEY_TEXT_SIZE] = {};
    if (!find_logical_computer(ifIndex, key)) return error_object<CMPIObjectPath>();
    return switch_fill_reference_str(LOGICAL_COMPUTER_SYSTEM, nameSpace, key, broker);
}

CMPIInstance* get_logical_computer_instance(std::uint32_t ifIndex, const char* nameSpace,
                                            const char** properties, const CMPIBroker* broker) {
    trace_entering(__func__);
    char key[KEY_TEXT_SIZE] = {};
    if (!find_logical_computer(ifIndex, key)) return error_object<CMPIInstance>();
    return switch_build_instance_str(LOGICAL_COMPUTER_SYSTEM, nameSpace, key, 0, properties, broker);
}
