// What a generic CIM browser sees: it starts at one tunnel endpoint, knows nothing of the model but the names
// of the association classes, and follows whatever it finds.
#include <deque>
#include <map>
#include <set>

#include "tests/e2e/served_switch.h"

namespace e2e {
namespace {

const char* const INSTANCE_CLASSES[] = {"KESTO_FCIPProtocolEndPoint",
                                        "KESTO_TCPProtocolEndPoint",
                                        "KESTO_IPProtocolEndPoint",
                                        "KESTO_RemoteFCIPPort",
                                        "KESTO_RemoteIPServiceAccessPoint",
                                        "KESTO_RemoteTCPPort",
                                        "KESTO_LANEndPoint",
                                        "KESTO_FCIPProfile",
                                        "KESTO_FCIPSettings",
                                        "KESTO_TCPSettings",
                                        "KESTO_IPSettings",
                                        "KESTO_IPEndPointStatistics",
                                        "KESTO_TCPEndPointStatistics",
                                        "KESTO_EthernetPortStatistics"};

const char* const ASSOCIATION_CLASSES[] = {"KESTO_SANFCIPEndpoint",
                                           "KESTO_SANIPEndpoint",
                                           "KESTO_FCIPTCPEndpoint",
                                           "KESTO_TCPIPEndpoint",
                                           "KESTO_IPEthernetEndpoint",
                                           "KESTO_SwitchHostedFCIPAccessPoint",
                                           "KESTO_SwitchHostedIPAccessPoint",
                                           "KESTO_SwitchHostedTCPAccessPoint",
                                           "KESTO_FCIPElementSettingData",
                                           "KESTO_TCPElementSettingData",
                                           "KESTO_IPElementSettingData",
                                           "KESTO_FCIPPEBasedOn",
                                           "KESTO_TCPEndPointStatisticalData",
                                           "KESTO_IPEndPointStatisticalData",
                                           "KESTO_EthernetPortStatisticalData"};

class BrowserWalk : public ServedSwitch {
  protected:
    // Every object reached from the start, by identity. With the associations' own enumeration the browser
    // also sees the ends that a traversal does not show, such as the other tunnels of a hosting system.
    std::map<std::string, CimPath> walk(const CimPath& start, bool withEnumeratedAssociations) {
        std::multimap<std::string, CimPath> neighbours;
        if (withEnumeratedAssociations) {
            for (const char* association : ASSOCIATION_CLASSES) {
                for (const CimInstance& instance : client().enumerate(association)) {
                    std::vector<CimPath> ends;
                    for (const auto& [name, value] : instance.properties) {
                        if (value.starts_with("{")) ends.push_back(instance.reference(name));
                    }
                    if (ends.size() != 2) continue;
                    neighbours.emplace(ends[0].identity(), ends[1]);
                    neighbours.emplace(ends[1].identity(), ends[0]);
                }
            }
        }
        std::map<std::string, CimPath> reached = {{start.identity(), start}};
        std::deque<CimPath> waiting = {start};
        const auto meet = [&](const CimPath& path) {
            if (reached.emplace(path.identity(), path).second) waiting.push_back(path);
        };
        while (!waiting.empty()) {
            const CimPath object = waiting.front();
            waiting.pop_front();
            for (const CimPath& path : client().associator_names(object)) {
                meet(path);
            }
            for (const CimInstance& instance : client().associators(object)) {
                meet(instance.path);
            }
            const auto [begin, end] = neighbours.equal_range(object.identity());
            for (auto neighbour = begin; neighbour != end; ++neighbour) {
                meet(neighbour->second);
            }
        }
        return reached;
    }
};

TEST_F(BrowserWalk, OneTunnelLeadsToEveryObjectOfTheSwitch) {
    const std::map<std::string, CimPath> reached = walk(first_tunnel(), true);
    // The supervisor's management port has counters, too, but nothing ties it to a tunnel.
    std::set<std::string> tunnelPorts;
    for (const CimPath& port : client().enumerate_names("KESTO_LANEndPoint")) {
        tunnelPorts.insert(port.key("Name").substr(0, port.key("Name").find(':')));
    }
    std::size_t objects = 0;
    for (const char* className : INSTANCE_CLASSES) {
        for (const CimPath& path : client().enumerate_names(className)) {
            ++objects;
            const bool tied = std::string(className) != "KESTO_EthernetPortStatistics" ||
                              tunnelPorts.contains(path.key("InstanceID"));
            EXPECT_EQ(reached.contains(path.identity()), tied) << path.identity();
        }
    }
    EXPECT_GT(objects, 50U);
}

TEST_F(BrowserWalk, EachTunnelLeadsToEveryKindOfObjectByTraversalAlone) {
    for (const CimPath& tunnel : client().enumerate_names("KESTO_FCIPProtocolEndPoint")) {
        std::set<std::string> classes;
        for (const auto& [identity, path] : walk(tunnel, false)) {
            classes.insert(lower_case(path.className));
        }
        for (const char* className : INSTANCE_CLASSES) {
            EXPECT_TRUE(classes.contains(lower_case(className)))
                << className << " from " << tunnel.identity();
        }
        EXPECT_TRUE(classes.contains("kesto_logicalcomputersystem"));
        EXPECT_TRUE(classes.contains("kesto_ethernetport"));
        EXPECT_TRUE(classes.contains("kesto_fcport"));
    }
}

} // namespace
} // namespace e2e
