// Whether the library is built for CIM servers other than the switch's own (FCIP_FOREIGN_SERVERS), as
// packages are. It then keeps back what such servers do not survive, and names the keys that they would lose.
#ifndef KESTO_COMMON_FOREIGN_SERVERS_H
#define KESTO_COMMON_FOREIGN_SERVERS_H

#ifdef FCIP_FOREIGN_SERVERS
inline constexpr bool FOR_FOREIGN_SERVERS = true;
#else
inline constexpr bool FOR_FOREIGN_SERVERS = false;
#endif

#endif
