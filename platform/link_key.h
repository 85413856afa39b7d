// Key strings of CIM object paths, turned back into the link that they name.
//
// Every class that is made of a link writes its keys in one of a few forms, and each form has a mode in which
// it is read back. A key is taken apart once for a walk over the link table.
#ifndef KESTO_PLATFORM_LINK_KEY_H
#define KESTO_PLATFORM_LINK_KEY_H

#include <cstdint>

#include "common/export.h"
#include "platform/platform_records.h"

extern "C" {

// How a key string is read. Tokens are separated by the characters named; numbers are decimal, taken from the
// start of the token and saturated to 32 bits.
enum LinkKeyMode {
    LINK_BY_TUNNEL = 1,            // "_": first token is the one-based tunnel number, kfmFcipLinkIndex + 1
    LINK_BY_IF_INDEX_TOKEN = 2,    // "_": first token is kfmFcipLinkIfIndex
    LINK_BY_IF_INDEX = 3,          // the whole string is kfmFcipLinkIfIndex
    LINK_BY_ETHERNET_IF_INDEX = 4, // ":" or "_": first token is kfmFcipLinkExtEthIfIndex
    LINK_BY_ENTITY = 5,            // the whole string is kfmFcipEntityId
    LINK_BY_REMOTE_ADDRESS = 6,    // "_": first token is 0, the second is the remote address as text
    LINK_BY_REMOTE_IF_INDEX = 7,   // "_": first token is 0, the second is kfmFcipLinkIfIndex
};

// The first link that the key string matches in the given mode. 0 when found, and also when nothing matches
// (out untouched); -1 when the mode needs a token, the key has none, and there is a link. A null key is an
// empty one.
FCIP_API int get_fcip_link_entry_from(const char* keyValue, FcipLinkEntry* out, int mode);

// The if-index at the start of a LAN endpoint's key, its first token of ":" or "_". 0, or -1 when the key has
// no token.
FCIP_API int get_eth_ifidx_from_keyvalue(std::uint32_t* ifIndexOut, const char* keyValue);

} // extern "C"

// Unlike get_fcip_link_entry_from, find_link reports a missing link as such.
enum class LinkLookup { Found, Missing, UnusableKey };

// mode is a LinkKeyMode; any other finds nothing. out is written only when a link is found.
LinkLookup find_link(const char* keyValue, int mode, FcipLinkEntry* out);

#endif
