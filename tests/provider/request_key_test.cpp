// Which key of a request identifies the instance asked for: the acceptance rule, class by class, and the
// reading of the key.
#include "provider/request_key.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "tests/support/one_tunnel.h"
#include "tests/support/traces.h"

namespace {

using one_tunnel::OneTunnelTest;
using test_support::Answer;
using test_support::calls_of;
using test_support::Key;
using test_support::NAMESPACE;
using test_support::printed_by;
using Calls = std::vector<std::string>;

using CaseChange = int (*)(int);
constexpr CaseChange LOWER = &std::tolower, UPPER = &std::toupper;

std::string changed_case(std::string text, CaseChange change) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [change](unsigned char letter) { return static_cast<char>(change(letter)); });
    return text;
}

// The acceptance rule.

// The key name that a class accepts, ANY or NONE.
constexpr const char* ANY = "*";
constexpr const char* NONE = "";

struct Rule {
    const char* className;
    const char* keyName;
};
void PrintTo(const Rule& rule, std::ostream* out) {
    *out << rule.className << " accepts \"" << rule.keyName << '"';
}

constexpr Rule RULES[] = {
    {"KESTO_FCIPProtocolEndPoint", "Name"},
    {"KESTO_RemoteFCIPPort", "Name"},
    {"KESTO_IPProtocolEndPoint", "Name"},
    {"KESTO_TCPProtocolEndPoint", "Name"},
    {"KESTO_RemoteIPServiceAccessPoint", "Name"},
    {"KESTO_RemoteTCPPort", "Name"},
    {"KESTO_LanEndPoint", "Name"},
    {"KESTO_FCIPSettings", "InstanceID"},
    {"KESTO_FCIPProfile", "InstanceID"},
    {"KESTO_IPSettings", "InstanceID"},
    {"KESTO_TCPSettings", "InstanceID"},
    {"KESTO_IPEndPointStatistics", "InstanceID"},
    {"KESTO_EthernetPortStatistics", "InstanceID"},
    {"KESTO_EthernetPort", "DeviceID"},
    {"KESTO_TCPEndPointStatistics", ANY},
    {"KESTO_FCIPPEBasedOn", ANY},
    {"KESTO_SANFCIPEndpoint", ANY},
    {"KESTO_SANIPEndpoint", ANY},
    {"KESTO_SANTCPEndpoint", ANY},
    {"KESTO_FCIPTCPEndpoint", ANY},
    {"KESTO_TCPIPEndpoint", ANY},
    {"KESTO_IPEthernetEndpoint", ANY},
    {"KESTO_SwitchHostedFCIPAccessPoint", ANY},
    {"KESTO_SwitchHostedIPAccessPoint", ANY},
    {"KESTO_SwitchHostedTCPAccessPoint", ANY},
    {"KESTO_FCIPElementSettingData", ANY},
    {"KESTO_TCPElementSettingData", ANY},
    {"KESTO_IPElementSettingData", ANY},
    {"KESTO_IPEndPointStatisticalData", ANY},
    {"KESTO_TCPEndPointStatisticalData", ANY},
    {"KESTO_EthernetPortStatisticalData", ANY},
    {"KESTO_RemoteIPPort", NONE},
    {"KESTO_TCPStatisticalData", NONE},
    {"KESTO_LogicalComputerSystem", NONE},
    {"KESTO_FCPortProtocolEndPoint", NONE},
    {"KESTO_EthernetPortProtocolEndpoint", NONE},
    {"CIM_ComputerSystem", NONE},
    {"KESTO_FCIPSettingsX", NONE},
    {"KESTO_FCIPSetting", NONE},
    {"", NONE},
};

class KeyRuleTest : public testing::TestWithParam<Rule> {};

TEST_P(KeyRuleTest, AcceptsItsKeysOnly) {
    const std::string accepted = GetParam().keyName;
    for (const char* keyName : {"Name", "InstanceID", "DeviceID", "CreationClassName", "SystemName",
                                "Antecedent", "NoSuchProperty", "Nam", "Name ", ""}) {
        const int expected = accepted == ANY || (accepted != NONE && accepted == keyName) ? 1 : 0;
        EXPECT_EQ(is_valid_key_for_class(GetParam().className, keyName), expected) << '"' << keyName << '"';
    }
}

TEST_P(KeyRuleTest, IgnoresLetterCase) {
    const std::string className = GetParam().className;
    const std::string keyName = GetParam().keyName;
    const int expected = keyName == NONE ? 0 : 1;
    for (const CaseChange change : {LOWER, UPPER}) {
        EXPECT_EQ(is_valid_key_for_class(changed_case(className, change).c_str(), keyName.c_str()), expected);
        EXPECT_EQ(is_valid_key_for_class(className.c_str(), changed_case(keyName, change).c_str()), expected);
        EXPECT_EQ(is_valid_key_for_class(changed_case(className, change).c_str(),
                                         changed_case(keyName, change).c_str()),
                  expected);
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, KeyRuleTest, testing::ValuesIn(RULES), [](const auto& parameter) {
    const std::string name = parameter.param.className;
    return name.empty() ? "NoClassName" : name;
});

TEST(KeyRuleSpellingTest, SpellingsOfOneClassAreOneClass) {
    for (const char* className :
         {"KESTO_LanEndPoint", "KESTO_LanEndpoint", "KESTO_LANEndPoint", "KESTO_LANEndpoint"}) {
        EXPECT_EQ(is_valid_key_for_class(className, "Name"), 1) << className;
        EXPECT_EQ(is_valid_key_for_class(className, "InstanceID"), 0) << className;
    }
    for (const char* className : {"KESTO_FCIPProtocolEndPoint", "KESTO_FCIPProtocolEndpoint"}) {
        EXPECT_EQ(is_valid_key_for_class(className, "Name"), 1) << className;
    }
    for (const char* className : {"KESTO_IPEndPointStatistics", "KESTO_IpEndPointStatistics"}) {
        EXPECT_EQ(is_valid_key_for_class(className, "InstanceID"), 1) << className;
        EXPECT_EQ(is_valid_key_for_class(className, "Name"), 0) << className;
    }
}

// Reading the key, as get-instance does: the trace shows the key that was found.

class RequestKeyTest : public OneTunnelTest {
  protected:
    static constexpr const char* ENTERING = "Entering FCIP_GetInstance\n";

    // What get-instance prints up to the end of the key's trace, without its own "Entering" line; the class
    // is one whose lookup prints nothing.
    std::string key_trace(const std::string& className, const std::vector<Key>& keys) {
        const Answer answer = get_instance(className, keys);
        EXPECT_TRUE(answer.output.starts_with(ENTERING)) << answer.output;
        return answer.output.substr(std::string(ENTERING).size());
    }

    // Get-instance without an acceptable key.
    void expect_no_key(const Answer& answer) {
        EXPECT_EQ(answer.rc, CMPI_RC_OK);
        EXPECT_EQ(answer.message, "invalid key name");
        EXPECT_EQ(answer.output, "Entering FCIP_GetInstance\ngetInstance can't find key\n");
        EXPECT_TRUE(answer.returned.empty());
        EXPECT_EQ(answer.platformCalls, Calls{}) << "the lock is never taken";
    }
};

TEST_F(RequestKeyTest, KeyAndValueAreTraced) {
    EXPECT_EQ(key_trace("KESTO_FCIPSettings", {{"InstanceID", "99"}}), "\tfound key InstanceID : 99\n");
}

TEST_F(RequestKeyTest, KeyNameIsTracedAsTheClientSpelledIt) {
    EXPECT_EQ(key_trace("kesto_fcipsettings", {{"instanceid", "99"}}), "\tfound key instanceid : 99\n");
}

TEST_F(RequestKeyTest, NoKeysAreNoKey) {
    const Answer answer = get_instance("KESTO_FCIPSettings", {});
    expect_no_key(answer);
    EXPECT_EQ(calls_of(broker.call_texts(), "getKeyAt"), Calls{});
}

TEST_F(RequestKeyTest, NoAcceptedKeyIsNoKey) {
    expect_no_key(get_instance("KESTO_FCIPSettings", {{"Name", "17"}, {"DeviceID", "17"}}));
    EXPECT_EQ(calls_of(broker.call_texts(), "getKeyAt"), (Calls{"getKeyAt 0", "getKeyAt 1"}));
}

TEST_F(RequestKeyTest, NameIsNoKeyOfIpStatistics) {
    expect_no_key(get_instance("KESTO_IPEndPointStatistics", {{"Name", "17"}}));
}

TEST_F(RequestKeyTest, ClassesWithoutAKeyOfTheirOwnFindNone) {
    for (const char* className :
         {"KESTO_RemoteIPPort", "KESTO_TCPStatisticalData", "KESTO_LogicalComputerSystem",
          "KESTO_FCPortProtocolEndPoint", "CIM_ComputerSystem"}) {
        expect_no_key(get_instance(className, {{"Name", "17"}, {"InstanceID", "17"}}));
    }
}

TEST_F(RequestKeyTest, MessageThatCannotBeMadeIsNull) {
    broker.fail_nth(test_support::Make::String, 1, test_support::Failure::Null);
    const Answer answer = get_instance("KESTO_FCIPSettings", {});
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_EQ(answer.message, std::nullopt);
}

TEST_F(RequestKeyTest, TcpStatisticsTakeAKeyThatIsNoProperty) {
    EXPECT_EQ(key_trace("KESTO_TCPEndPointStatistics", {{"NoSuchProperty", "99"}}),
              "\tfound key NoSuchProperty : 99\n");
    emulator::clear_calls();
    const Answer answer = get_instance("KESTO_TCPEndPointStatistics", {{"NoSuchProperty", "17"}});
    EXPECT_EQ(answer.instances.size(), 1U) << "its value is the instance id";
}

TEST_F(RequestKeyTest, FirstAcceptedKeyWinsAndLaterOnesAreNotLookedAt) {
    EXPECT_EQ(key_trace("KESTO_FCIPSettings",
                        {{"Name", "1"}, {"InstanceID", "99"}, {"INSTANCEID", "17"}, {"instanceid", "18"}}),
              "\tfound key InstanceID : 99\n");
    EXPECT_EQ(calls_of(broker.call_texts(), "getKeyAt"), (Calls{"getKeyAt 0", "getKeyAt 1"}));
}

TEST_F(RequestKeyTest, AssociationClassTakesItsFirstKeyWhateverItIs) {
    EXPECT_EQ(key_trace("KESTO_SANFCIPEndpoint", {{"Whatever", "1"}, {"Antecedent", "2"}}),
              "\tfound key Whatever : 1\n");
    EXPECT_EQ(key_trace("KESTO_FCIPElementSettingData", {{"", "1"}}), "\tfound key  : 1\n");
}

TEST_F(RequestKeyTest, ValuesAreCutTo253Characters) {
    for (const std::size_t length : {252U, 253U, 254U, 300U}) {
        const std::string value(length, '9');
        EXPECT_EQ(key_trace("KESTO_FCIPSettings", {{"InstanceID", value}}),
                  "\tfound key InstanceID : " + value.substr(0, 253) + "\n")
            << length;
    }
}

TEST_F(RequestKeyTest, ValueOf300CharactersReachesTheRoutingCut) {
    // 253 characters that read as 17, and 47 that would make another number of it.
    const std::string value = std::string(251, '0') + "17" + std::string(47, '0');
    EXPECT_EQ(get_instance("KESTO_FCIPSettings", {{"InstanceID", value}}).instances.size(), 1U);
}

TEST_F(RequestKeyTest, NamesAreCutTo253Characters) {
    for (const std::size_t length : {252U, 253U, 254U, 300U}) {
        const std::string name(length, 'n');
        EXPECT_EQ(key_trace("KESTO_SANFCIPEndpoint", {{name, "1"}}),
                  "\tfound key " + name.substr(0, 253) + " : 1\n")
            << length;
    }
}

TEST_F(RequestKeyTest, KeyThatIsNoStringIsFoundWithoutATrace) {
    const Answer answer = get_instance("KESTO_FCIPSettings", {{"InstanceID", CMPI_uint32, 17}});
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_EQ(answer.message, std::nullopt);
    EXPECT_EQ(answer.output, ENTERING);
    EXPECT_TRUE(answer.returned.empty()) << "an empty value names no link";
    EXPECT_EQ(answer.platformCalls.front(), "mutex_lock") << "the operation continues as if found";
}

TEST_F(RequestKeyTest, KeyThatIsNoStringHidesALaterString) {
    const Answer answer =
        get_instance("KESTO_FCIPSettings", {{"InstanceID", CMPI_sint64, 17}, {"InstanceID", "17"}});
    EXPECT_EQ(answer.output, ENTERING);
    EXPECT_TRUE(answer.returned.empty());
}

TEST_F(RequestKeyTest, StringKeyWithoutAStringReadsAsEmpty) {
    const Answer answer = get_instance("KESTO_FCIPSettings", {{"InstanceID", CMPI_string, nullptr}});
    EXPECT_EQ(answer.rc, CMPI_RC_OK);
    EXPECT_TRUE(answer.returned.empty());
}

// The extraction by itself.

class KeyExtractionTest : public OneTunnelTest {
  protected:
    int extract(const char* className, const std::vector<Key>& keys, RequestKey* key,
                const char* lineEnd = "\n") {
        const CMPIObjectPath* op = broker.path(NAMESPACE, className, keys);
        int found = -1;
        output = printed_by([&] { found = find_request_key(op, className, lineEnd, key); });
        return found;
    }
    std::string output;
};

TEST_F(KeyExtractionTest, FoundKeyHasItsNameValueAndData) {
    RequestKey key{};
    EXPECT_EQ(extract("KESTO_FCIPSettings", {{"Name", "x"}, {"InstanceID", "17"}}, &key), 1);
    EXPECT_STREQ(key.name, "InstanceID");
    EXPECT_STREQ(key.value, "17");
    EXPECT_EQ(key.data.type, CMPI_string);
    EXPECT_EQ(output, "\tfound key InstanceID : 17\n");
}

TEST_F(KeyExtractionTest, TraceEndsAsTheOperationSays) {
    RequestKey key{};
    EXPECT_EQ(extract("KESTO_FCIPSettings", {{"InstanceID", "17"}}, &key, " \n"), 1);
    EXPECT_EQ(output, "\tfound key InstanceID : 17 \n");
}

TEST_F(KeyExtractionTest, MissingKeyIsNotFoundAndNotTraced) {
    RequestKey key{};
    EXPECT_EQ(extract("KESTO_FCIPSettings", {}, &key), 0);
    EXPECT_EQ(output, "");
    EXPECT_STREQ(key.value, "");
    EXPECT_EQ(extract("KESTO_FCIPSettings", {{"Name", "17"}}, &key), 0);
    EXPECT_STREQ(key.value, "");
}

TEST_F(KeyExtractionTest, NumberHasItsDataAndAnEmptyValue) {
    RequestKey key{};
    EXPECT_EQ(extract("KESTO_FCIPSettings", {{"InstanceID", CMPI_uint32, 17}}, &key), 1);
    EXPECT_STREQ(key.name, "InstanceID");
    EXPECT_STREQ(key.value, "");
    EXPECT_EQ(key.data.type, CMPI_uint32);
    EXPECT_EQ(key.data.value.uint32, 17U);
    EXPECT_EQ(output, "");
}

TEST_F(KeyExtractionTest, ReferenceHasItsDataAndAnEmptyValue) {
    const CMPIObjectPath* end = broker.path(NAMESPACE, "KESTO_FCIPProtocolEndPoint", {{"Name", "5"}});
    RequestKey key{};
    EXPECT_EQ(extract("KESTO_SANFCIPEndpoint", {{"Antecedent", end}}, &key), 1);
    EXPECT_STREQ(key.name, "Antecedent");
    EXPECT_STREQ(key.value, "");
    EXPECT_EQ(key.data.type, CMPI_ref);
    EXPECT_EQ(key.data.value.ref, end);
    EXPECT_EQ(output, "");
}

} // namespace
