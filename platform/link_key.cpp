#include "platform/link_key.h"

#include <strings.h>

#include <cstddef>
#include <cstdio>
#include <cstring>

#include "common/trace.h"
#include "platform/key_number.h"
#include "platform/platform_services.h"
#include "platform/table_walk.h"

namespace {

// Longer keys are cut before they are taken apart.
constexpr std::size_t KEY_COPY_SIZE = 512;

constexpr const char* WHOLE_KEY = nullptr;

// A key string, taken apart in one mode.
struct LinkKey {
    char copy[KEY_COPY_SIZE] = {};
    bool usable = true;           // the tokens that the mode needs are there
    std::uint32_t number = 0;     // of the whole key or its first token
    const char* second = nullptr; // the second token, in modes that need one
    std::uint32_t secondNumber = 0;
};

bool remote_address_is(const FcipLinkEntry& link, const char* text) {
    char address[128] = {};
    ip_addr_to_str(&link.kfmFcipLinkRemFcipEntityAddress, address, sizeof address);
    return strcasecmp(address, text) == 0;
}

// One mode: how the key is taken apart, and which link it then names.
struct KeyForm {
    int mode;
    const char* separators;
    bool (*names)(const LinkKey& key, const FcipLinkEntry& link);
    // The keys of remote endpoints begin with an entity id of 0, and what names the link follows.
    bool isRemote = false;
};

constexpr KeyForm KEY_FORMS[] = {
    {LINK_BY_TUNNEL, "_",
     [](const LinkKey& key, const FcipLinkEntry& link) { return link.kfmFcipLinkIndex + 1 == key.number; }},
    {LINK_BY_IF_INDEX_TOKEN, "_",
     [](const LinkKey& key, const FcipLinkEntry& link) { return link.kfmFcipLinkIfIndex == key.number; }},
    {LINK_BY_IF_INDEX, WHOLE_KEY,
     [](const LinkKey& key, const FcipLinkEntry& link) { return link.kfmFcipLinkIfIndex == key.number; }},
    {LINK_BY_ETHERNET_IF_INDEX, ":_",
     [](const LinkKey& key, const FcipLinkEntry& link) {
         return link.kfmFcipLinkExtEthIfIndex == key.number;
     }},
    {LINK_BY_ENTITY, WHOLE_KEY,
     [](const LinkKey& key, const FcipLinkEntry& link) { return link.kfmFcipEntityId == key.number; }},
    {LINK_BY_REMOTE_ADDRESS, "_",
     [](const LinkKey& key, const FcipLinkEntry& link) { return remote_address_is(link, key.second); }, true},
    {LINK_BY_REMOTE_IF_INDEX, "_",
     [](const LinkKey& key, const FcipLinkEntry& link) {
         return link.kfmFcipLinkIfIndex == key.secondNumber;
     },
     true},
};

const KeyForm* form_of(int mode) {
    for (const KeyForm& form : KEY_FORMS) {
        if (form.mode == mode) return &form;
    }
    return nullptr;
}

// Takes the key apart into tokens that point into its copy; the first one, or null.
const char* first_token(LinkKey& key, const char* keyValue, const char* separators, char** rest) {
    std::strncpy(key.copy, keyValue != nullptr ? keyValue : "", sizeof key.copy - 1);
    return strtok_r(key.copy, separators, rest);
}

void take_apart(LinkKey& key, const char* keyValue, const KeyForm& form) {
    if (form.separators == WHOLE_KEY) {
        key.number = key_number(keyValue);
        return;
    }
    char* rest = nullptr;
    const char* first = first_token(key, keyValue, form.separators, &rest);
    key.usable = first != nullptr;
    if (!key.usable) return;
    key.number = key_number(first);
    if (!form.isRemote || key.number != 0) return;
    key.second = strtok_r(nullptr, form.separators, &rest);
    key.usable = key.second != nullptr;
    key.secondNumber = key_number(key.second);
}

LinkLookup match(const LinkKey& key, const KeyForm& form, const FcipLinkEntry& link) {
    if (!key.usable) return LinkLookup::UnusableKey;
    if (form.isRemote && key.number != 0) return LinkLookup::Missing;
    return form.names(key, link) ? LinkLookup::Found : LinkLookup::Missing;
}

} // namespace

LinkLookup find_link(const char* keyValue, int mode, FcipLinkEntry* out) {
    const KeyForm* form = form_of(mode);
    LinkKey key;
    if (form != nullptr) take_apart(key, keyValue, *form);

    auto found = LinkLookup::Missing;
    walk_links(mts_q, [&](const FcipLinkEntry& link) {
        // A key that cannot be used, and a mode that does not exist, show only when there is a link.
        if (form != nullptr) found = match(key, *form, link);
        if (found == LinkLookup::Missing) return Visit::GoOn;
        if (found == LinkLookup::Found) *out = link;
        return Visit::Stop;
    });
    return found;
}

int get_fcip_link_entry_from(const char* keyValue, FcipLinkEntry* out, int mode) {
    return find_link(keyValue, mode, out) == LinkLookup::UnusableKey ? -1 : 0;
}

int get_eth_ifidx_from_keyvalue(std::uint32_t* ifIndexOut, const char* keyValue) {
    LinkKey key;
    char* rest = nullptr;
    const char* token = first_token(key, keyValue, ":_", &rest);
    trace_entering(__func__);
    if (token == nullptr) return -1;
    *ifIndexOut = key_number(token);
    std::printf("if_index : %d \n", as_printed(*ifIndexOut));
    trace_exiting(__func__);
    return 0;
}
