// The properties of each class and the keys of its paths, as they come out on the switch with one tunnel, in
// the order in which they are set. The values are worked out by hand from the facts in one_tunnel.h.
#ifndef KESTO_TESTS_CLASSES_GOLDEN_TABLES_H
#define KESTO_TESTS_CLASSES_GOLDEN_TABLES_H

#include "tests/support/recorded.h"

namespace class_tests::golden {

extern const test_support::Sets FCIP_ENDPOINT;
extern const test_support::Sets FCIP_ENDPOINT_KEYS;
extern const test_support::Sets TCP_ENDPOINT;
extern const test_support::Sets TCP_ENDPOINT_KEYS;
extern const test_support::Sets IP_ENDPOINT;
extern const test_support::Sets IP_ENDPOINT_KEYS;
extern const test_support::Sets FCIP_SETTINGS;
extern const test_support::Sets SETTINGS_KEYS;
extern const test_support::Sets PROFILE;
extern const test_support::Sets PROFILE_KEYS;
extern const test_support::Sets IP_SETTINGS;
extern const test_support::Sets TCP_SETTINGS;
extern const test_support::Sets REMOTE_FCIP_PORT;
extern const test_support::Sets REMOTE_FCIP_PORT_KEYS;
extern const test_support::Sets REMOTE_IP_ACCESS_POINT;
extern const test_support::Sets REMOTE_IP_ACCESS_POINT_KEYS;
extern const test_support::Sets REMOTE_TCP_PORT;
extern const test_support::Sets REMOTE_TCP_PORT_KEYS;
extern const test_support::Sets LAN_ENDPOINT;
extern const test_support::Sets LAN_ENDPOINT_KEYS;
extern const test_support::Sets IP_STATISTICS;
extern const test_support::Sets TCP_STATISTICS;
extern const test_support::Sets TCP_STATISTICAL_DATA;
extern const test_support::Sets STATISTICS_KEYS;
extern const test_support::Sets ETHERNET_STATISTICS;
extern const test_support::Sets ETHERNET_STATISTICS_KEYS;

} // namespace class_tests::golden

#endif
