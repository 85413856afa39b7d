// The ends of associations: for each kind of object that stands there, how its path and its instance are made
// from what the source's key has selected.
//
// An end's class name is what the client sees. Most associations spell it as the class itself is spelled, and
// some do not: their rows say how.
#ifndef KESTO_ASSOC_ENDS_H
#define KESTO_ASSOC_ENDS_H

#include <cmpidt.h>
#include <cmpift.h>

#include "assoc/source.h"
#include "include/classes.h"
#include "platform/computer_system.h"

// NULL, or the value -1, when the object cannot be made.
using PathMaker = CMPIObjectPath*(const Source& source, const char* className);
using InstanceMaker = CMPIInstance*(const Source& source, const char* className);

// For ends that are only ever asked for as instances, or as paths.
PathMaker no_path;
InstanceMaker no_instance;

struct End {
    const char* className;
    PathMaker* path = no_path;
    InstanceMaker* instance = no_instance;
};

inline CMPIObjectPath* make_path(const End& end, const Source& source) {
    return end.path(source, end.className);
}
inline CMPIInstance* make_instance(const End& end, const Source& source) {
    return end.instance(source, end.className);
}

// Objects that a class's own filler and builder make of the link.
template <LinkFiller* fill>
CMPIObjectPath* path_of_link(const Source& source, const char* className) {
    return fill(className, source.nameSpace, &source.link);
}
template <LinkBuilder* build>
CMPIInstance* instance_of_link(const Source& source, const char* className) {
    return build(className, source.nameSpace, &source.link, source.properties);
}
template <LinkFiller* fill, LinkBuilder* build>
constexpr End end_of_link(const char* className) {
    return {className, path_of_link<fill>, instance_of_link<build>};
}

constexpr End fcip_endpoint(const char* className = "KESTO_FCIPProtocolEndPoint") {
    return end_of_link<fcip_pe_fill_reference, fcip_pe_build_instance>(className);
}
constexpr End tcp_endpoint(const char* className = "KESTO_TCPProtocolEndPoint") {
    return end_of_link<tcp_pe_fill_reference, tcp_pe_build_instance>(className);
}
constexpr End ip_endpoint(const char* className = "KESTO_IPProtocolEndPoint") {
    return end_of_link<ip_pe_fill_reference, ip_pe_build_instance>(className);
}
constexpr End remote_fcip_port() {
    return end_of_link<fcip_remote_pe_fill_reference, fcip_remote_pe_build_instance>("KESTO_RemoteFCIPPort");
}
constexpr End remote_ip_access_point(const char* className = "KESTO_RemoteIPServiceAccessPoint") {
    return end_of_link<ip_remote_pe_fill_reference, ip_remote_pe_build_instance>(className);
}
constexpr End remote_tcp_port() {
    return end_of_link<tcp_remote_pe_fill_reference, tcp_remote_pe_build_instance>("KESTO_RemoteTCPPort");
}
constexpr End fcip_settings() {
    return end_of_link<fcip_settings_fill_reference, fcip_settings_build_instance>("KESTO_FCIPSettings");
}
constexpr End ip_settings() {
    return end_of_link<ip_settings_fill_reference, ip_settings_build_instance>("KESTO_IPSettings");
}

// The instance of the TCP settings is made of the link's row as the platform has it now.
InstanceMaker tcp_settings_instance;
constexpr End tcp_settings() {
    return {"KESTO_TCPSettings", path_of_link<tcp_settings_fill_reference>, tcp_settings_instance};
}

// The statistics of the link.
constexpr End statistics(const char* className) {
    return {className, path_of_link<stat_fill_reference>};
}

// The profile that the link uses, which is asked for.
PathMaker profile_path;
InstanceMaker profile_instance;
constexpr End profile() {
    return {"KESTO_FCIPProfile", profile_path, profile_instance};
}

// The computer system that hosts the link.
PathMaker hosting_system_path;
InstanceMaker hosting_system_instance;
constexpr End hosting_system() {
    return {LOGICAL_COMPUTER_SYSTEM, hosting_system_path, hosting_system_instance};
}

// The source's port, and its statistics.
PathMaker port_path;
InstanceMaker port_instance;
constexpr End fc_port() {
    return {"KESTO_FCPort", port_path, port_instance};
}
constexpr End ethernet_port() {
    return {"KESTO_EthernetPort", port_path, port_instance};
}
PathMaker port_statistics_path;
InstanceMaker port_statistics_instance;
constexpr End port_statistics() {
    return {"KESTO_EthernetPortStatistics", port_statistics_path, port_statistics_instance};
}

// The LAN endpoint of the if-index that begins the key.
PathMaker lan_endpoint_path_of_key;
InstanceMaker lan_endpoint_instance_of_key;
constexpr End lan_endpoint_of_key(const char* className = "KESTO_LANEndPoint") {
    return {className, lan_endpoint_path_of_key, lan_endpoint_instance_of_key};
}

// The LAN endpoint of the Ethernet port that carries the link.
PathMaker lan_endpoint_path_of_link;
constexpr End lan_endpoint_of_link(const char* className = "KESTO_LANEndPoint") {
    return {className, lan_endpoint_path_of_link};
}

#endif
