// The computer systems that the switch's VSANs are, and the VSANs of its ports.
//
// All functions expect the provider lock to be held.
#ifndef KESTO_PLATFORM_COMPUTER_SYSTEM_H
#define KESTO_PLATFORM_COMPUTER_SYSTEM_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>

#include "common/export.h"

extern "C" {

// The VSAN of a port. 0 or -1.
FCIP_API int get_vsan_id(std::uint32_t ifIndex, std::uint32_t* vsanOut);
// The VSAN of a port from the port configuration. 0 or -1.
FCIP_API int get_vsan_from_ifindex(std::uint32_t ifIndex, std::uint32_t* vsanOut);
// The name of the VSAN's computer system, at most 20 characters; out holds at least 21 bytes and is not
// terminated here when the name is that long. 0 or -1; "NULL" when only the domain is missing.
FCIP_API int get_vsan_wwn(std::uint32_t ifIndex, char* out);
// Clears the eight bytes and returns them.
FCIP_API unsigned char* init_wwn(unsigned char wwn[8]);
// The logical computer system that hosts the port, as path or instance; the value -1 on failure.
FCIP_API CMPIObjectPath* get_logical_computer_keys(std::uint32_t ifIndex, const char* nameSpace,
                                                   const CMPIBroker* broker);
FCIP_API CMPIInstance* get_logical_computer_instance(std::uint32_t ifIndex, const char* nameSpace,
                                                     const char** properties, const CMPIBroker* broker);

} // extern "C"

// The classes of the switch's computer systems.
inline constexpr const char* LOGICAL_COMPUTER_SYSTEM = "KESTO_LogicalComputerSystem";
inline constexpr const char* PHYSICAL_COMPUTER_SYSTEM = "KESTO_PhysicalComputerSystem";

#endif
