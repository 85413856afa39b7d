// KESTO_TCPSettings and KESTO_IPSettings.
#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"

namespace class_tests {
namespace {

class TcpIpSettings : public ClassTest {
  protected:
    RecordedInstance build_ip() {
        return make(
            [&] { return ip_settings_build_instance("KESTO_IPSettings", NAMESPACE, &link, nullptr); });
    }
    RecordedInstance build_tcp() {
        return make(
            [&] { return tcp_settings_build_instance("KESTO_TCPSettings", NAMESPACE, &link, nullptr); });
    }
    // A tunnel of another profile that has the one tunnel's link index and stands after it in the table.
    void use_twin_of_another_profile() {
        FcipEntityEntry other = one_tunnel::profile();
        other.kfmFcipEntityId = 9;
        emulator::add_entity(other);
        link.kfmFcipEntityId = 9;
        link.kfmFcipLinkIfIndex = 99;
        link.kfmFcipLinkExtEthIfIndex = 0x9B020000;
        emulator::add_link(link);
    }
    const Sets ip = golden_properties("ip_settings_build_instance");
    const Sets tcp = golden_properties("tcp_settings_build_instance");
};

// Both.

TEST_F(TcpIpSettings, AllSettingsOfATunnelShareTheIfIndexAsInstanceId) {
    link.kfmFcipLinkIfIndex = 100;
    emulator::add_link(link);
    EXPECT_EQ(build_ip().value("InstanceID"), "100");
    EXPECT_EQ(build_tcp().value("InstanceID"), "100");
    const Sets key{{"InstanceID", CMPI_chars, "100"}};
    for (auto* filler :
         {fcip_settings_fill_reference, ip_settings_fill_reference, tcp_settings_fill_reference}) {
        EXPECT_EQ(make([&] { return filler("KESTO_AnySettings", NAMESPACE, &link); }).keys(), key);
    }
}

// IP.

TEST_F(TcpIpSettings, IpAsksThePlatformInThisOrder) {
    build_ip();
    EXPECT_EQ(calls_of_any(emulator::calls(), {"fcip_get_entity_entry", "sprintf_if_index", "mts_send",
                                               "mts_recv", "cmi_req_resp"})
                  .size(),
              5U);
    const auto calls = calls_of_any(
        emulator::calls(), {"fcip_get_entity_entry", "sprintf_if_index", "mts_send", "cmi_req_resp"});
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[0], "fcip_get_entity_entry op=1 id=3 5");
    EXPECT_EQ(calls[1], "sprintf_if_index if=0x00000011");
    EXPECT_NE(calls[2].find("service=943 code=1917 length=32"), std::string::npos) << calls[2];
    EXPECT_EQ(calls[3], "cmi_req_resp code=873 1 0 0 0 service=35 5");
}

TEST_F(TcpIpSettings, IpAsksForACopyOfTheEthernetPortsCounters) {
    build_ip();
    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(std::vector<std::uint8_t>(requests[0].payload.begin() + 24, requests[0].payload.end()),
              (std::vector<std::uint8_t>{0x9B, 0x01, 0x00, 0x00, 0, 0, 0, 1}));
}

TEST_F(TcpIpSettings, IpNamesTheInterfaceInCaptionAndDescription) {
    emulator::Port port = emulator::find_port(one_tunnel::IF_INDEX).value();
    port.name = "an-interface-of-30-characters-"; // the longest that the platform gives
    ASSERT_EQ(port.name.size(), 30U);
    emulator::add_port(port);
    EXPECT_EQ(build_ip().sets(), with(with(ip, "Caption", port.name), "Description", port.name));
}

TEST_F(TcpIpSettings, IpGoesOnWithoutCounters) {
    emulator::fail_always("mts_send");
    EXPECT_EQ(build_ip().sets(), ip);
    emulator::clear_faults();
    emulator::add_fault({.symbol = emulator::LINE_CARD, .effect = Effect::NoAnswer});
    EXPECT_EQ(build_ip().sets(), ip);
    emulator::clear_faults();
    emulator::set_reply(one_tunnel::IP_STATISTICS, std::vector<std::uint8_t>(5));
    EXPECT_EQ(build_ip().sets(), ip);
}

TEST_F(TcpIpSettings, IpReadsNothingPastAShortReply) {
    // 140 bytes from byte 32 are put aside; a reply may end before them.
    for (const std::size_t size : {12U, 32U, 33U, 171U}) {
        emulator::set_reply(one_tunnel::IP_STATISTICS, std::vector<std::uint8_t>(size));
        EXPECT_EQ(build_ip().sets(), ip) << size;
    }
}

TEST_F(TcpIpSettings, IpIsNullWithoutTheIpConfiguration) {
    for_each_effect(ROW_FAILURES, {.symbol = "cmi_req_resp"},
                    [&] { EXPECT_EQ(build_ip().kind(), Object::Null); });
    EXPECT_EQ(broker.call_texts("setPropertyFilter").size(), 0U) << "the instance made so far is abandoned";
}

TEST_F(TcpIpSettings, IpForwardingIsTheFlagsLowByte) {
    const std::pair<std::uint32_t, int> cases[] = {{0, 0}, {1, 1}, {2, 2}, {0x100, 0}, {0x1FF, 255}};
    for (const auto& [flag, byte] : cases) {
        emulator::set_ip_configuration({flag, 64});
        EXPECT_EQ(build_ip().sets(), with(ip, "EnableIPForwarding", byte)) << flag;
    }
}

TEST_F(TcpIpSettings, IpTimeToLiveIsTheConfigurationsWord) {
    emulator::set_ip_configuration({1, 0x12345678});
    EXPECT_EQ(build_ip().sets(), with(ip, "DefaultTimeToLive", 0x12345678));
}

TEST_F(TcpIpSettings, IpHasNoSystemAndNoCreationClass) {
    const RecordedInstance instance = build_ip();
    for (const char* name : {"SystemName", "SystemCreationClassName", "CreationClassName"}) {
        EXPECT_FALSE(instance.has(name)) << name;
    }
    EXPECT_TRUE(emulator::calls("pm_cim_get_port_info").empty());
}

// TCP.

TEST_F(TcpIpSettings, TcpAsksThePlatformInThisOrder) {
    build_tcp();
    const auto calls = calls_of_any(emulator::calls(), {"fcip_get_link_entry", "fcip_get_entity_entry",
                                                        "mts_send", "pm_cim_get_port_info"});
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[0], "fcip_get_link_entry op=2 key={0,0} 30 1");
    EXPECT_EQ(calls[1], "fcip_get_entity_entry op=1 id=3 5");
    EXPECT_NE(calls[2].find("service=943 code=1920 length=40"), std::string::npos) << calls[2];
    EXPECT_EQ(calls[3], "pm_cim_get_port_info op=1 if=0x00000011");
}

TEST_F(TcpIpSettings, TcpIsTheSameForEveryTunnel) {
    link.kfmFcipLinkIndex = 11;
    link.kfmFcipLinkIfIndex = 111;
    emulator::add_link(link);
    const RecordedInstance instance = build_tcp();
    EXPECT_EQ(instance.value("RetransmissionTimeoutMax"), 5000);
    EXPECT_EQ(instance.value("RetransmissionTimeoutMin"), 200);
    EXPECT_EQ(instance.value("RetransmissionTimeoutAlgorithm"), 4);
    EXPECT_EQ(instance.value("InstanceID"), "111");
}

TEST_F(TcpIpSettings, TcpIsBuiltFromTheFirstTunnelOfTheSameIndex) {
    use_twin_of_another_profile();
    EXPECT_EQ(build_tcp().sets(), tcp) << "the one tunnel's, though the other one was handed in";
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry"),
              std::vector<std::string>{"fcip_get_entity_entry op=1 id=3 5"});
    EXPECT_EQ(emulator::calls("pm_cim_get_port_info"),
              std::vector<std::string>{"pm_cim_get_port_info op=1 if=0x00000011"});
    const auto requests = emulator::sent_requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].payload.at(25), 1) << "port 0x9B010000, not 0x9B020000";
}

TEST_F(TcpIpSettings, TcpIsMinusOneWhenTheTunnelIsGone) {
    emulator::clear_links();
    EXPECT_EQ(build_tcp().kind(), Object::MinusOne);
    EXPECT_TRUE(matches(
        trace, entering("tcp_settings_build_instance") + any_line_trace("tcp_settings_build_instance")))
        << trace;
    EXPECT_EQ(broker.call_texts("setProperty"),
              std::vector<std::string>{
                  "setProperty SystemCreationClassName CMPI_chars \"KESTO_LogicalComputerSystem\""});
}

TEST_F(TcpIpSettings, TcpIsMinusOneWhenTheTableCannotBeRead) {
    for_each_effect(ROW_FAILURES, {.symbol = "fcip_get_link_entry"},
                    [&] { EXPECT_EQ(build_tcp().kind(), Object::MinusOne); });
}

TEST_F(TcpIpSettings, MinusOneReachesTheResultUnchanged) {
    // The tunnel goes away between the walk and the second look.
    emulator::add_fault(
        {.symbol = "fcip_get_link_entry", .first = 2, .last = 2, .effect = Effect::None, .action = [] {
             emulator::clear_links();
         }});
    const Answer answer = enumerate("KESTO_TCPSettings");
    EXPECT_EQ(answer.rc, 0);
    ASSERT_EQ(answer.instances.size(), 1U);
    EXPECT_EQ(answer.instances[0].kind(), Object::MinusOne);
}

TEST_F(TcpIpSettings, TcpIsNullWithoutTheTunnelsProfile) {
    for_each_effect(STATUS_FAILURES, {.symbol = "fcip_get_entity_entry"}, [&] {
        EXPECT_EQ(build_tcp().kind(), Object::Null);
        EXPECT_FALSE(trace.ends_with(exiting("tcp_settings_build_instance"))) << trace;
    });
}

TEST_F(TcpIpSettings, TcpGoesOnWithoutCountersAndSaysSo) {
    emulator::fail_always("mts_send");
    EXPECT_EQ(build_tcp().sets(), tcp);
    EXPECT_NE(trace.find("******* Error ******** \n"), std::string::npos);
    EXPECT_TRUE(trace.ends_with(exiting("tcp_settings_build_instance")));
    emulator::clear_faults();
    EXPECT_EQ(build_tcp().sets(), tcp);
    EXPECT_EQ(trace.find("Error"), std::string::npos);
}

} // namespace
} // namespace class_tests
