#include "provider/request_key.h"

#include <strings.h>

#include <cstdio>

#include "common/class_table.h"
#include "provider/request.h"

namespace {

// Which key names a class accepts. Classes that are not listed accept none.
struct KeyRule {
    const char* className;
    const char* keyName; // null: any
};

constexpr const char* ANY_KEY = nullptr;

constexpr KeyRule KEY_RULES[] = {
    {"KESTO_FCIPProtocolEndPoint", "Name"},
    {"KESTO_EthernetPort", "DeviceID"},
    {"KESTO_EthernetPortStatistics", "InstanceID"},
    {"KESTO_IPProtocolEndPoint", "Name"},
    {"KESTO_TCPProtocolEndPoint", "Name"},
    {"KESTO_LanEndPoint", "Name"},
    {"KESTO_FCIPSettings", "InstanceID"},
    {"KESTO_IPSettings", "InstanceID"},
    {"KESTO_TCPSettings", "InstanceID"},
    // Unlike the other statistics it takes its first key, whatever its name.
    {"KESTO_TCPEndPointStatistics", ANY_KEY},
    {"KESTO_IPEndPointStatistics", "InstanceID"},
    {"KESTO_RemoteFCIPPort", "Name"},
    {"KESTO_RemoteIPServiceAccessPoint", "Name"},
    {"KESTO_RemoteTCPPort", "Name"},
    {"KESTO_FCIPProfile", "InstanceID"},
    {"KESTO_FCIPPEBasedOn", ANY_KEY},
    {"KESTO_SANIPEndpoint", ANY_KEY},
    {"KESTO_SANTCPEndpoint", ANY_KEY},
    {"KESTO_SANFCIPEndpoint", ANY_KEY},
    {"KESTO_FCIPTCPEndpoint", ANY_KEY},
    {"KESTO_TCPIPEndpoint", ANY_KEY},
    {"KESTO_FCIPElementSettingData", ANY_KEY},
    {"KESTO_TCPElementSettingData", ANY_KEY},
    {"KESTO_IPElementSettingData", ANY_KEY},
    {"KESTO_EthernetPortStatisticalData", ANY_KEY},
    {"KESTO_IPEndPointStatisticalData", ANY_KEY},
    {"KESTO_IPEthernetEndpoint", ANY_KEY},
    {"KESTO_SwitchHostedFCIPAccessPoint", ANY_KEY},
    {"KESTO_SwitchHostedIPAccessPoint", ANY_KEY},
    {"KESTO_SwitchHostedTCPAccessPoint", ANY_KEY},
    {"KESTO_TCPEndPointStatisticalData", ANY_KEY},
};

// One character short of the buffer, as all copies of keys and their names.
constexpr std::size_t KEY_BOUND = 254;

} // namespace

int is_valid_key_for_class(const char* className, const char* keyName) {
    const KeyRule* rule = find_class(KEY_RULES, className);
    if (rule == nullptr) return 0;
    return rule->keyName == ANY_KEY || strcasecmp(rule->keyName, keyName) == 0 ? 1 : 0;
}

int find_request_key(const CMPIObjectPath* op, const char* className, const char* lineEnd, RequestKey* key) {
    *key = {};
    const CMPICount count = op->ft->getKeyCount(op, nullptr);
    for (CMPICount index = 0; index < count; ++index) {
        CMPIString* name = nullptr;
        key->data = op->ft->getKeyAt(op, index, &name, nullptr);
        std::snprintf(key->name, KEY_BOUND, "%s", text_of(name));
        if (is_valid_key_for_class(className, key->name) == 0) continue;
        if (key->data.type == CMPI_string) {
            std::snprintf(key->value, KEY_BOUND, "%s", text_of(key->data.value.string));
            std::fprintf(stdout, "\tfound key %s : %s%s", key->name, key->value, lineEnd);
        }
        return 1;
    }
    return 0;
}
