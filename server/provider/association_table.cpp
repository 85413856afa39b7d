#include "server/provider/association_table.h"

#include <algorithm>
#include <sstream>

#include "server/model/cim_model.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

// The FCIP provider. Two names stand here for the sake of one operation each, because that operation knows
// its association by that name only: the references of a TCP endpoint to its FCIP endpoint, and the
// associator names of an Ethernet port to its statistics.
constexpr std::string_view FCIP_PROVIDER = "FCIPProvider";
constexpr std::string_view FCIP_ASSOCIATIONS = R"(
    KESTO_FCIPElementSettingData: KESTO_FCIPProtocolEndPoint KESTO_FCIPSettings
    KESTO_FCIPTCPEndpoint: KESTO_FCIPProtocolEndPoint KESTO_TCPProtocolEndPoint
    KESTO_FCIPTCPEnpoint: KESTO_TCPProtocolEndPoint
    KESTO_SANFCIPEndpoint: KESTO_FCIPProtocolEndPoint KESTO_RemoteFCIPPort
    KESTO_FCPortProtocolEndPoint: KESTO_FCIPProtocolEndPoint
    KESTO_FCIPPEBasedOn: KESTO_FCIPProtocolEndPoint KESTO_FCIPProfile
    KESTO_SwitchHostedFCIPAccessPoint: KESTO_FCIPProtocolEndPoint
    KESTO_IPElementSettingData: KESTO_IPProtocolEndPoint KESTO_IPSettings
    KESTO_IPEndPointStatisticalData: KESTO_IPProtocolEndPoint KESTO_IPEndPointStatistics
    KESTO_TCPIPEndpoint: KESTO_IPProtocolEndPoint KESTO_TCPProtocolEndPoint
    KESTO_IPEthernetEndpoint: KESTO_IPProtocolEndPoint KESTO_LANEndPoint
    KESTO_SwitchHostedIPAccessPoint: KESTO_IPProtocolEndPoint
    KESTO_SANIPEndpoint: KESTO_IPProtocolEndPoint KESTO_RemoteIPServiceAccessPoint
    KESTO_TCPEndPointStatisticalData: KESTO_TCPProtocolEndPoint KESTO_TCPEndPointStatistics
    KESTO_SwitchHostedTCPAccessPoint: KESTO_TCPProtocolEndPoint
    KESTO_SANTCPEndpoint: KESTO_TCPProtocolEndPoint KESTO_RemoteTCPPort
    KESTO_TCPElementSettingData: KESTO_TCPProtocolEndPoint KESTO_TCPSettings
    KESTO_EthernetPortProtocolEndpoint: KESTO_LANEndPoint KESTO_EthernetPort
    CIM_HostedAccessPoint: KESTO_LANEndPoint
    KESTO_EthernetPortStatisticalData: KESTO_EthernetPort KESTO_EthernetPortStatistics
    KESTO_EthernetPortStatistics: KESTO_EthernetPort
)";

bool is_name(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
}

} // namespace

AssociationTable AssociationTable::read(std::istream& text, const std::string& fileName) {
    std::vector<Row> rows;
    std::string line;
    for (unsigned number = 1; std::getline(text, line); ++number) {
        const std::string_view content = trimmed(line);
        if (content.empty() || content.starts_with('#')) continue;
        const std::size_t colon = content.find(':');
        Row row{std::string(trimmed(content.substr(0, colon))), {}};
        if (colon != std::string_view::npos) {
            std::istringstream sources{std::string(content.substr(colon + 1))};
            for (std::string source; sources >> source;) {
                row.sources.push_back(source);
            }
        }
        const bool named =
            is_name(row.association) && std::all_of(row.sources.begin(), row.sources.end(), is_name);
        if (!named || (colon != std::string_view::npos && row.sources.empty())) {
            throw AssociationTableError(fileName + ":" + std::to_string(number) +
                                        ": expected \"Association: Source ...\" or \"Association\"");
        }
        rows.push_back(std::move(row));
    }
    return AssociationTable(std::move(rows));
}

AssociationTable AssociationTable::built_in(std::string_view providerName) {
    if (providerName != FCIP_PROVIDER) return {};
    std::istringstream text{std::string(FCIP_ASSOCIATIONS)};
    return read(text, std::string(providerName));
}

std::vector<std::string> AssociationTable::from(std::string_view sourceClass) const {
    std::vector<std::string> associations;
    for (const Row& row : rows_) {
        if (row.sources.empty() || contains_name(row.sources, sourceClass))
            associations.push_back(row.association);
    }
    return associations;
}

} // namespace cimserver
