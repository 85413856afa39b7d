#include "provider/get_instance.h"

#include "common/trace.h"
#include "platform/fcip_config.h"
#include "platform/key_number.h"
#include "platform/link_key.h"
#include "platform/platform_row.h"
#include "platform/platform_services.h"
#include "platform/row_lookup.h"

void get_instance(const GetWay& way, const GetRequest& request) {
    if (way.answer != nullptr) way.answer(request);
    if (way.answerLink == nullptr) return;
    FcipLinkEntry link{};
    if (find_link(request.keyValue, way.mode, &link) == LinkLookup::Found) way.answerLink(request, link);
}

void tcp_endpoint_statistics(const GetRequest& request, const FcipLinkEntry& link) {
    // The error counters are read along with the statistics and dropped: the builder fetches what it shows.
    PlatformRow<FcipLinkErrors> errors;
    if (fetch_link_errors(key_of(link), errors) != 0 && errors) {
        errors.reset();
        trace_line("FCIP_GetInstance", 435);
    }
    hand_over(request.result, tcp_statistics_build_instance("KESTO_TCPEndPointStatistics", request.nameSpace,
                                                            &link, request.properties));
}

void profile_of_key(const GetRequest& request, const FcipLinkEntry& /*link*/) {
    FcipEntityEntry profile{};
    if (get_fcip_entity_from_key_value(mts_q, request.keyValue, &profile) != 1) return;
    hand_over(request.result, fcip_profile_build_instance("KESTO_FCIPProfile", request.nameSpace, &profile,
                                                          request.properties));
}

void lan_endpoint_of_interface(const GetRequest& request, const FcipLinkEntry& link) {
    hand_over(request.result, lan_endpoint_build_instance(request.className, request.nameSpace,
                                                          link.kfmFcipLinkIfIndex, request.properties));
}

void ethernet_port_statistics(const GetRequest& request) {
    PlatformRow<PortInfo> port;
    if (fetch_port(key_number(request.keyValue), port) != 0 || !port) return;
    hand_over(request.result, eth_statistics_build_instance(request.className, request.nameSpace, port.get(),
                                                            request.properties));
}
