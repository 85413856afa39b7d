// Texts of a class's properties and keys, formatted into buffers of fixed sizes on the stack. Longer ones are
// cut, which is what clients see. Nothing here allocates.
#ifndef KESTO_CLASSES_TEXT_H
#define KESTO_CLASSES_TEXT_H

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "platform/computer_system.h"
#include "platform/key_number.h"
#include "platform/platform_records.h"
#include "platform/platform_services.h"

// The size counts the final NUL.
template <std::size_t Size>
struct Text {
    char chars[Size] = {};
};

// The text as far as it fits.
template <std::size_t Size>
Text<Size> cut(const char* whole) {
    Text<Size> text;
    std::snprintf(text.chars, Size, "%s", whole);
    return text;
}

// The decimal text of a word, as "%d" prints it.
template <std::size_t Size>
Text<Size> decimal(std::uint32_t word) {
    Text<Size> text;
    std::snprintf(text.chars, Size, "%d", as_printed(word));
    return text;
}

// "number_first_second", the form of most endpoint names.
template <std::size_t Size>
Text<Size> numbered_pair(std::uint32_t number, const char* first, const char* second) {
    Text<Size> text;
    std::snprintf(text.chars, Size, "%d_%s_%s", as_printed(number), first, second);
    return text;
}

// An address as text; the platform cuts it to the buffer.
template <std::size_t Size = 128>
Text<Size> address_text(const IpAddr& address) {
    Text<Size> text;
    ip_addr_to_str(&address, text.chars, Size);
    return text;
}

// An address as it stands in object paths of the FCIP classes, where it is cut to 19 characters.
inline Text<20> path_address_text(const IpAddr& address) {
    return address_text<20>(address);
}

// The name of the computer system of an interface's VSAN, and the lookup's status. The text is empty when the
// port is not known and "NULL" when its domain is not.
struct SystemName {
    int status;
    Text<100> text;
};
inline SystemName system_name(std::uint32_t ifIndex) {
    SystemName name{};
    name.status = get_vsan_wwn(ifIndex, name.text.chars);
    return name;
}

// The name, or a class's own word for a system without one.
inline const char* name_or(const SystemName& name, const char* fallback) {
    return name.status == 0 ? name.text.chars : fallback;
}

// The printable name of an interface.
inline Text<256> interface_name(std::uint32_t ifIndex) {
    Text<256> name;
    sprintf_if_index(name.chars, ifIndex);
    return name;
}

// A WWN as text, and the switch's own.
inline Text<64> wwn_text(const std::uint8_t (&wwn)[8]) {
    Text<64> text;
    cim_sprintf_wwn(text.chars, &wwn);
    return text;
}
inline Text<64> switch_wwn_text() {
    std::uint8_t wwn[8];
    init_wwn(wwn);
    system_cim_get_switch_wwn(mts_q, &wwn);
    return wwn_text(wwn);
}

#endif
