#include "tests/e2e/traversal.h"

#include <stdexcept>

namespace e2e {

Names classes_of(const std::vector<CimPath>& paths) {
    Names names;
    for (const CimPath& path : paths) {
        names.push_back(path.className);
    }
    return names;
}

Names classes_of(const std::vector<CimInstance>& instances) {
    Names names;
    for (const CimInstance& instance : instances) {
        names.push_back(instance.path.className);
    }
    return names;
}

Names folded(Names names) {
    for (std::string& name : names) {
        name = lower_case(name);
    }
    return names;
}

CimPath Traversal::hop(const CimPath& source, const std::string& association) const {
    const std::vector<CimPath> far = client().associator_names(source, {association, "", "", ""});
    if (far.empty()) throw std::runtime_error(source.identity() + " has no " + association);
    return far.front();
}

CimPath Traversal::source(const std::string& className) const {
    const auto first = [&](const std::string& name) { return client().enumerate_names(name).at(0); };
    if (className == "KESTO_FCIPProfile") return hop(first_tunnel(), "KESTO_FCIPPEBasedOn");
    if (className == "KESTO_LogicalComputerSystem") {
        return hop(first_tunnel(), "KESTO_SwitchHostedFCIPAccessPoint");
    }
    const auto port = [&] { return hop(first("KESTO_IPProtocolEndPoint"), "KESTO_IPEthernetEndpoint"); };
    if (className == "KESTO_EthernetPort") return port();
    if (className == "KESTO_LANEndPoint") return hop(port(), "KESTO_EthernetPortProtocolEndpoint");
    if (className == "KESTO_EthernetPortStatistics") {
        return client().associators(port(), {"KESTO_EthernetPortStatisticalData", "", "", ""}).at(0).path;
    }
    return first(className);
}

} // namespace e2e
