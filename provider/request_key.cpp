#include "provider/request_key.h"

#include <strings.h>

#include <cstddef>
#include <cstdio>

#include "common/broker.h"
#include "provider/catalogue.h"

namespace {

// One character short of the buffer, as all copies of keys and their names.
constexpr std::size_t KEY_BOUND = 254;

} // namespace

int is_valid_key_for_class(const char* className, const char* keyName) {
    const char* accepted = served_class(className).key;
    if (accepted == nullptr) return 0;
    return accepted == ANY_KEY || strcasecmp(accepted, keyName != nullptr ? keyName : "") == 0 ? 1 : 0;
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
