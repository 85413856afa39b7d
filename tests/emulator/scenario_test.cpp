// Scenarios: what is refused and with which message, and what the loader makes of the members.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>

#include "emulator/control.h"
#include "emulator/generator.h"
#include "platform/platform_records.h"
#include "platform/platform_services.h"
#include "tests/emulator/emulator_test.h"

namespace emulator_test {
namespace {

std::string refusal(const std::string& text) {
    try {
        emulator::load_json(text, "bad.json");
    } catch (const emulator::ScenarioError& error) {
        return error.what();
    }
    return "accepted";
}

// A scenario of one tunnel in which one text is replaced.
std::string scenario_with(const std::string& old, const std::string& replacement) {
    std::string text = R"({
  "system": {"hostName": "h", "name": "n", "wwn": "20:00:02:4b:53:00:00:01"},
  "ip": {"forwarding": true, "defaultTtl": 64},
  "vsans": [{"id": 1, "domain": {"systemName": "one"}}, {"id": 2}],
  "ports": [
    {"ifIndex": 5, "type": 11, "name": "fcip1", "vsan": 1},
    {"ifIndex": "0x9b010001", "type": 26, "subnetMask": "255.0.0.0", "prefixLength": 8, "mtu": 1500,
     "counters": {"inBytes": {"start": 1, "rate": 2}}, "ipStats": {"received": 3, "words": {"168": 4}}}
  ],
  "profiles": [{"entityId": 1, "address": "192.0.2.1", "sackOption": true}],
  "tunnels": [{"entityId": 1, "linkIndex": 0, "ifIndex": "fcip1", "ethIfIndex": "GigabitEthernet1/1",
               "remEntityAddress": "192.0.2.2", "remEntityWwn": "20:00:02:4b:53:00:00:02",
               "errors": {"tooManyErrors": 1}, "tcpConnections": [{"connectionPurpose": 1}]}],
  "faults": [{"symbol": "getCSName", "effect": "fail"}]
})";
    const std::size_t at = text.find(old);
    EXPECT_NE(at, std::string::npos) << old;
    return text.replace(at, old.size(), replacement);
}

struct Refused {
    const char* name;
    const char* old;
    const char* replacement;
    const char* message;

    friend void PrintTo(const Refused& refused, std::ostream* out) { *out << refused.replacement; }
};

class BadScenario : public testing::TestWithParam<Refused> {};

TEST_P(BadScenario, IsRefusedWithItsPlace) {
    emulator::reset();
    EXPECT_EQ(refusal(scenario_with(GetParam().old, GetParam().replacement)),
              std::string("bad.json: ") + GetParam().message);
    EXPECT_TRUE(emulator::find_link({1, 0})) << "the switch is as before";
    EXPECT_EQ(emulator::system_name(), "north-sw1");
}

const Refused REFUSED[] = {
    {"UnknownMember", R"("vsans")", R"("vlans")", "/vlans: is not a member of \"scenario\""},
    {"UnknownMemberOfATunnel", R"("linkIndex")", R"("index")",
     "/tunnels/0/index: is not a member of \"tunnel\""},
    {"UnknownCounter", R"("inBytes")", R"("in/~Bytes")",
     "/ports/1/counters/in~1~0Bytes: is not a member of \"portCounters\""},
    {"MissingSystem", R"("system")", R"("description")", "/description: is not a text"},
    {"MissingName", R"("name": "n", )", "", "/system: has no member \"name\""},
    {"WrongTypeOfArray", R"([{"id": 1, "domain": {"systemName": "one"}}, {"id": 2}])", "{}",
     "/vsans: is not an array"},
    {"WrongTypeOfObject", R"({"forwarding": true, "defaultTtl": 64})", "[]", "/ip: is not an object"},
    {"WrongTypeOfNumber", R"("defaultTtl": 64)", R"("defaultTtl": "64")",
     "/ip/defaultTtl: is not an integer from 0 to 4294967295"},
    {"FractionForInteger", R"("defaultTtl": 64)", R"("defaultTtl": 6.5)",
     "/ip/defaultTtl: is not an integer from 0 to 4294967295"},
    {"NegativeNumber", R"("defaultTtl": 64)", R"("defaultTtl": -1)",
     "/ip/defaultTtl: is not in the range 0 to 4294967295"},
    {"TooLargeNumber", R"("defaultTtl": 64)", R"("defaultTtl": 4294967296)",
     "/ip/defaultTtl: is not in the range 0 to 4294967295"},
    {"TooLargeType", R"("type": 26)", R"("type": 256)", "/ports/1/type: is not in the range 0 to 255"},
    {"NumberForBoolean", R"("forwarding": true)", R"("forwarding": 1)",
     "/ip/forwarding: is neither true nor false"},
    {"EmptyName", R"("name": "n")", R"("name": "")", "/system/name: is not a text of 1 to 255 characters"},
    {"LongPortName", R"("name": "fcip1")", R"("name": "0123456789012345678901234567890")",
     "/ports/0/name: is not a text of 1 to 30 characters"},
    {"ControlCharacter", R"("hostName": "h")", R"("hostName": "a\nb")",
     "/system/hostName: has control characters"},
    {"BadWwn", "20:00:02:4b:53:00:00:01", "20:00:02:4b:53:00:00",
     "/system/wwn: is not a WWN such as \"20:00:02:4b:53:00:00:01\""},
    {"BadWwnDigit", "20:00:02:4b:53:00:00:02", "20:00:02:4b:53:00:00:0g",
     "/tunnels/0/remEntityWwn: is not a WWN such as \"20:00:02:4b:53:00:00:01\""},
    {"BadAddress", R"("192.0.2.1")", R"("192.0.2.256")",
     "/profiles/0/address: is neither an IPv4 nor an IPv6 address"},
    {"BadMask", "255.0.0.0", "255.0.0", "/ports/1/subnetMask: is not a mask such as 255.255.255.0"},
    {"BadPrefix", R"("prefixLength": 8)", R"("prefixLength": 129)",
     "/ports/1/prefixLength: is not in the range 0 to 128"},
    {"BadIfIndex", R"("0x9b010001")", R"("9b010001")",
     "/ports/1/ifIndex: is neither a number nor a text such as \"0x9b010001\""},
    {"NegativeRate", R"("rate": 2)", R"("rate": -2)", "/ports/1/counters/inBytes/rate: is out of range"},
    {"OffsetBeyondTheReply", R"({"168": 4})", R"({"169": 4})",
     "/ports/1/ipStats/words/169: is not named by a number from 0 to 168"},
    {"OffsetThatIsNoNumber", R"({"168": 4})", R"({"one": 4})",
     "/ports/1/ipStats/words/one: is not named by a number from 0 to 168"},
    {"DuplicateVsan", R"({"id": 2})", R"({"id": 1})", "/vsans/1/id: is the id of an earlier VSAN"},
    {"DuplicatePort", R"("0x9b010001")", "5", "/ports/1/ifIndex: is the if-index of an earlier port"},
    {"DuplicatePortName", R"("name": "fcip1")", R"("name": "GigabitEthernet1/1")",
     "/ports/1: has the name of an earlier port: GigabitEthernet1/1"},
    {"DuplicateProfile", R"([{"entityId": 1, "address": "192.0.2.1", "sackOption": true}])",
     R"([{"entityId": 1, "address": ""}, {"entityId": 1, "address": ""}])",
     "/profiles/1/entityId: is the entityId of an earlier profile"},
    {"DuplicateConnection", R"([{"connectionPurpose": 1}])", R"([{}, {"localPort": 3225}])",
     "/tunnels/0/tcpConnections/1: has the ports of an earlier connection of the tunnel"},
    {"DuplicateMember", R"("id": 2)", R"("id": 2, "id": 3)",
     "the member \"id\" is given twice in one object"},
    {"MissingVsan", R"("vsan": 1)", R"("vsan": 9)", "/ports/0/vsan: is not a VSAN of this switch"},
    {"MissingProfile", R"("entityId": 1, "linkIndex")", R"("entityId": 2, "linkIndex")",
     "/tunnels/0/entityId: is not a profile of this switch"},
    {"MissingInterface", R"("ifIndex": "fcip1")", R"("ifIndex": "fcip2")",
     "/tunnels/0/ifIndex: is not an interface of this switch"},
    {"MissingInterfaceNumber", R"("ethIfIndex": "GigabitEthernet1/1")", R"("ethIfIndex": 7)",
     "/tunnels/0/ethIfIndex: is not an interface of this switch"},
    {"UnknownSymbol", "getCSName", "getName", "/faults/0/symbol: is not a platform service"},
    {"UnknownEffect", R"("effect": "fail")", R"("effect": "explode")",
     "/faults/0/effect: is not an effect of a fault"},
    {"EffectOfTheLineCard", R"("effect": "fail")", R"("effect": "noAnswer")",
     "/faults/0/effect: is an effect of line_card only"},
    {"LastBeforeFirst", R"("effect": "fail")", R"("effect": "fail", "first": 3, "last": 2)",
     "/faults/0/last: is not in the range 3 to 4294967295"},
    {"TunnelToRemove", R"("effect": "fail")",
     R"("effect": "none", "removeTunnel": {"entityId": 1, "linkIndex": 1})",
     "/faults/0/removeTunnel: is not a tunnel of this switch"},
};

INSTANTIATE_TEST_SUITE_P(, BadScenario, testing::ValuesIn(REFUSED),
                         [](const testing::TestParamInfo<Refused>& bad) { return bad.param.name; });

class Scenario : public EmulatorTest {};

TEST_F(Scenario, SyntaxErrorNamesItsLine) {
    const auto startOf = [](const std::string& text) { return text.substr(0, text.find(": ", 10)); };
    EXPECT_EQ(startOf(refusal("{\n  \"system\": {,}\n}")), "bad.json: parse error at line 2, column 14");
    EXPECT_EQ(startOf(refusal("")), "bad.json: parse error at line 1, column 1");
    EXPECT_EQ(refusal("[]"), "bad.json: /: is not an object");
}

TEST_F(Scenario, DuplicateTunnelIsRefused) {
    const std::string tunnel = R"({"entityId": 1, "linkIndex": 0, "ifIndex": 5, "remEntityAddress": ""})";
    EXPECT_EQ(refusal(R"({"system": {"hostName": "h", "name": "n", "wwn": "20:00:02:4b:53:00:00:01"},
                          "ports": [{"ifIndex": 5, "type": 11}], "profiles": [{"entityId": 1, "address": ""}],
                          "tunnels": [)" +
                      tunnel + "," + tunnel + "]}"),
              "bad.json: /tunnels/1: has the entityId and linkIndex of an earlier tunnel");
}

TEST_F(Scenario, MissingFileIsRefused) {
    try {
        emulator::load_file("/nowhere/switch.json");
        FAIL() << "accepted";
    } catch (const emulator::ScenarioError& error) {
        EXPECT_STREQ(error.what(), "/nowhere/switch.json: cannot be read");
    }
}

TEST_F(Scenario, EveryFieldLandsInItsWord) {
    // Each numeric member gets its own value; the rows are compared word by word with the platform's layout.
    emulator::load_json(R"({
  "system": {"hostName": "h", "name": "n", "wwn": "20:00:02:4b:53:00:00:01"},
  "ports": [{"ifIndex": 5, "type": 11}, {"ifIndex": 6, "type": 26}, {"ifIndex": 7, "type": 26, "name": "third"}],
  "profiles": [{"entityId": 4, "address": "1.2.3.4", "tcpPort": 106, "sackOption": 107, "seqNumWrap": 108,
    "phbSupport": 109, "pmtuEnable": 111, "pmtuResetTimeout": 112, "keepAliveTimeout": 113,
    "minRetransmitTime": 114, "maxRetransmissions": 115, "sendBufSize": 116, "roundTripTime": 117,
    "maxBandwidth": 118, "minBandwidth": 119, "ifIndex": 5, "cwmEnable": true, "cwmBurstSize": 122,
    "maxJitter": 123, "words": {"10": 110}}],
  "tunnels": [{"entityId": 4, "linkIndex": 201, "ifIndex": 5, "cost": 203,
    "remEntityWwn": "01:02:03:04:05:06:07:08", "remEntityId": 207, "remEntityAddress": "::1", "status": 214,
    "passiveMode": 215, "numTcpConns": 216, "timeStampEnable": 217, "timeStampTolerance": 218,
    "tcpRemPort": 219, "localPortEnable": 220, "specialFrameEnable": 221, "bPortKaEnable": 223,
    "cntrlQos": 224, "dataQos": 225, "ethIfIndex": 6, "writeAccel": 227, "ipCompression": 228,
    "tapeAccel": 229, "flowCtrlBufSize": 230, "ipSec": 231, "phyIfIndex": "third", "writeAccelOper": 233,
    "tapeAccelOper": 234, "tapeAccelReadOper": 235, "words": {"4": 204, "293": 493, "0x24": 236}}]})");
    std::uint32_t words[294];
    const FcipEntityEntry entity = emulator::find_entity(4).value();
    std::memcpy(words, &entity, sizeof entity);
    EXPECT_EQ(words[0], 4U);
    EXPECT_EQ(words[1], 1U);
    EXPECT_EQ(std::memcmp(&words[2], "\1\2\3\4", 4), 0);
    EXPECT_EQ(words[20], 5U);
    EXPECT_EQ(words[21], 1U);
    for (const unsigned word : {6U, 7U, 8U, 9U, 10U, 11U, 12U, 13U, 14U, 15U, 16U, 17U, 18U, 19U, 22U, 23U}) {
        EXPECT_EQ(words[word], 100 + word) << "word " << word;
    }

    const FcipLinkEntry link = emulator::find_link({4, 201}).value();
    std::memcpy(words, &link, sizeof link);
    EXPECT_EQ(words[0], 4U);
    EXPECT_EQ(words[2], 5U);
    EXPECT_EQ(std::memcmp(&words[5], "\1\2\3\4\5\6\7\10", 8), 0);
    EXPECT_EQ(words[8], 2U);
    EXPECT_EQ(words[26], 6U);
    EXPECT_EQ(words[32], 7U);
    EXPECT_EQ(words[293], 493U);
    for (const unsigned word : {1U,  3U,  4U,  7U,  14U, 15U, 16U, 17U, 18U, 19U, 20U, 21U,
                                23U, 24U, 25U, 27U, 28U, 29U, 30U, 31U, 33U, 34U, 35U, 36U}) {
        EXPECT_EQ(words[word], 200 + word) << "word " << word;
    }
}

TEST_F(Scenario, GeneratedSwitchLoadsWithItsTunnels) {
    for (const std::uint32_t tunnels : {0U, 1U, 3U, 1000U}) {
        emulator::load_json(emulator::generate_scenario(tunnels, 7), "generated");
        const emulator::Locked locked;
        FcipLinkKey key{0, 0};
        std::uint32_t found = 0;
        Row<FcipLinkEntry> row;
        while (fcip_get_link_entry(mts_q, 2, &key, row.slot(), 30, 1) == 0) {
            key = {row->kfmFcipEntityId, row->kfmFcipLinkIndex};
            EXPECT_TRUE(emulator::find_port(row->kfmFcipLinkIfIndex));
            EXPECT_TRUE(emulator::find_entity(row->kfmFcipEntityId));
            ++found;
        }
        EXPECT_EQ(found, tunnels);
    }
}

TEST_F(Scenario, GeneratedSwitchDependsOnTheSeedOnly) {
    EXPECT_EQ(emulator::generate_scenario(20, 7), emulator::generate_scenario(20, 7));
    EXPECT_NE(emulator::generate_scenario(20, 7), emulator::generate_scenario(20, 8));
}

TEST_F(Scenario, BuiltInSwitchIsTheDocumentedExample) {
    std::ifstream file(std::string(EMULATOR_FOLDER) + "/examples/two-sites.json");
    std::ostringstream text;
    text << file.rdbuf();
    EXPECT_EQ(emulator::builtin_text(), text.str());
}

} // namespace
} // namespace emulator_test
