// The enumerations of the classes that have one object for each link. There are three pairs of walkers; each
// serves several classes, by the name of the class asked for.
#include <span>

#include "common/class_table.h"
#include "common/results.h"
#include "common/trace.h"
#include "include/classes.h"
#include "platform/platform_services.h"
#include "platform/table_walk.h"

namespace {

// A class that a walker serves. The walkers are exported and choose by the class name, so each knows its
// classes itself; the catalogue sends them no others but KESTO_RemoteIPPort.
struct LinkClass {
    const char* className;
    LinkBuilder* build;
    LinkFiller* fill;
};

constexpr LinkClass FCIP_ENDPOINT_CLASSES[] = {
    {"KESTO_FCIPProtocolEndPoint", fcip_pe_build_instance, fcip_pe_fill_reference},
    {"KESTO_RemoteFCIPPort", fcip_remote_pe_build_instance, fcip_remote_pe_fill_reference},
};

constexpr LinkClass IP_ENDPOINT_CLASSES[] = {
    {"KESTO_IPProtocolEndPoint", ip_pe_build_instance, ip_pe_fill_reference},
    {"KESTO_RemoteIPServiceAccessPoint", ip_remote_pe_build_instance, ip_remote_pe_fill_reference},
    {"KESTO_RemoteTCPPort", remote_service_ap_build_instance, remote_service_ap_fill_reference},
    {"KESTO_TCPProtocolEndPoint", tcp_pe_build_instance, tcp_pe_fill_reference},
    {"KESTO_FCIPSettings", fcip_settings_build_instance, fcip_settings_fill_reference},
    {"KESTO_IPSettings", ip_settings_build_instance, ip_settings_fill_reference},
    // The key is the same for all settings; names of TCP settings come from the IP settings' filler.
    {"KESTO_TCPSettings", tcp_settings_build_instance, ip_settings_fill_reference},
};

constexpr LinkClass STATISTICS_CLASSES[] = {
    {"KESTO_IPEndPointStatistics", ip_statistics_build_instance, stat_fill_reference},
    {"KESTO_TCPEndPointStatistics", tcp_statistics_build_instance, stat_fill_reference},
    {"KESTO_TCPStatisticalData", tcp_statistical_data_build_instance, stat_fill_reference},
};

// What a walker does with a class that it does not serve.
enum class Unserved { Skipped, NullForEachLink };

// The numbers with which a walker marks each link, and a failure that brought a row; 0 for none.
struct Marks {
    int link = 0;
    int failure = 0;
};

struct LinkWalk {
    std::span<const LinkClass> classes;
    Unserved unserved;
    Marks marks = {};
};

constexpr LinkWalk FCIP_ENDPOINTS{FCIP_ENDPOINT_CLASSES, Unserved::Skipped};
constexpr LinkWalk IP_ENDPOINTS{IP_ENDPOINT_CLASSES, Unserved::NullForEachLink, {23, 28}};
constexpr LinkWalk STATISTICS{STATISTICS_CLASSES, Unserved::NullForEachLink};

// Hands the object that make(served class, link) gives to the result, for every link. Always 0.
template <typename Object, typename Make>
int return_for_each_link(const LinkWalk& walk, const char* function, const char* className,
                         const CMPIResult* result, Make make) {
    trace_entering(function);
    const LinkClass* served = find_class(walk.classes, className);
    const WalkEnd end = walk_links(mts_q, [&](const FcipLinkEntry& link) {
        if (walk.marks.link != 0) trace_line(function, walk.marks.link);
        Object* object = served != nullptr ? make(*served, link) : nullptr;
        if (served != nullptr || walk.unserved == Unserved::NullForEachLink) hand_over(result, object);
        return Visit::GoOn;
    });
    if (walk.marks.failure != 0 && end == WalkEnd::FailedWithRow) trace_line(function, walk.marks.failure);
    return 0;
}

int return_instances(const LinkWalk& walk, const char* function, const char* className,
                     const CMPIResult* result, const char** properties, const char* nameSpace) {
    return return_for_each_link<CMPIInstance>(
        walk, function, className, result, [&](const LinkClass& served, const FcipLinkEntry& link) {
            return served.build(className, nameSpace, &link, properties);
        });
}

int return_paths(const LinkWalk& walk, const char* function, const char* className, const CMPIResult* result,
                 const char* nameSpace) {
    return return_for_each_link<CMPIObjectPath>(walk, function, className, result,
                                                [&](const LinkClass& served, const FcipLinkEntry& link) {
                                                    return served.fill(className, nameSpace, &link);
                                                });
}

} // namespace

int get_all_fcip_pe_instances(const char* className, const CMPIResult* result, const char** properties,
                              const char* nameSpace) {
    return return_instances(FCIP_ENDPOINTS, __func__, className, result, properties, nameSpace);
}

int get_all_fcip_pe_references(const char* className, const CMPIResult* result, const char* nameSpace) {
    return return_paths(FCIP_ENDPOINTS, __func__, className, result, nameSpace);
}

int get_all_ip_pe_instances(const char* className, const CMPIResult* result, const char** properties,
                            const char* nameSpace) {
    return return_instances(IP_ENDPOINTS, __func__, className, result, properties, nameSpace);
}

int get_all_ip_pe_references(const char* className, const CMPIResult* result, const char* nameSpace) {
    return return_paths(IP_ENDPOINTS, __func__, className, result, nameSpace);
}

int get_all_statistics(const char* className, const CMPIResult* result, const char** properties,
                       const char* nameSpace) {
    return return_instances(STATISTICS, __func__, className, result, properties, nameSpace);
}

int get_all_statistic_references(const char* className, const CMPIResult* result, const char* nameSpace) {
    return return_paths(STATISTICS, __func__, className, result, nameSpace);
}
