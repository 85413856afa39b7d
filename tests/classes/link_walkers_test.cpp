// The link walkers that serve seven classes: of the TCP and IP endpoints, the remote IP and TCP ends, and the
// three kinds of settings.
#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"

namespace class_tests {
namespace {

class LinkWalk : public ClassTest {
  protected:
    Answer walk_instances(const std::string& className, const char** properties = nullptr) {
        return ClassTest::walk_instances(get_all_ip_pe_instances, className, properties);
    }
    Answer walk_paths(const std::string& className) {
        return walk_names(get_all_ip_pe_references, className);
    }
};

struct Route {
    const char* className;
    const char* builder;
    const char* filler;
};

// The last row is as it stands: names of TCP settings are made by the IP settings' filler.
const Route ROUTES[] = {
    {"KESTO_IPProtocolEndPoint", "ip_pe_build_instance", "ip_pe_fill_reference"},
    {"KESTO_RemoteIPServiceAccessPoint", "ip_remote_pe_build_instance", "ip_remote_pe_fill_reference"},
    {"KESTO_RemoteTCPPort", "remote_service_ap_build_instance", "remote_service_ap_fill_reference"},
    {"KESTO_TCPProtocolEndPoint", "tcp_pe_build_instance", "tcp_pe_fill_reference"},
    {"KESTO_FCIPSettings", "fcip_settings_build_instance", "fcip_settings_fill_reference"},
    {"KESTO_IPSettings", "ip_settings_build_instance", "ip_settings_fill_reference"},
    {"KESTO_TCPSettings", "tcp_settings_build_instance", "ip_settings_fill_reference"},
};

TEST_F(LinkWalk, EachClassIsBuiltByItsOwnBuilder) {
    for (const Route& route : ROUTES) {
        SCOPED_TRACE(route.className);
        const Answer answer = walk_instances(route.className);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(answer.returned.size(), 1U);
        ASSERT_EQ(answer.instances.size(), 1U);
        EXPECT_EQ(answer.instances[0].class_name(), route.className);
        EXPECT_EQ(answer.instances[0].sets(), golden_properties(route.builder));
        EXPECT_NE(answer.output.find(entering(route.builder)), std::string::npos);
        EXPECT_EQ(answer.doneCalls, 0U);
    }
}

TEST_F(LinkWalk, EachClassIsFilledByItsOwnFillerButTcpSettings) {
    for (const Route& route : ROUTES) {
        SCOPED_TRACE(route.className);
        const Answer answer = walk_paths(route.className);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(answer.returned.size(), 1U);
        ASSERT_EQ(answer.paths.size(), 1U);
        EXPECT_EQ(answer.paths[0].class_name(), route.className);
        EXPECT_EQ(answer.paths[0].keys(), golden_keys(route.filler));
        EXPECT_EQ(answer.doneCalls, 0U);
    }
}

TEST_F(LinkWalk, NamesOfTcpSettingsComeFromTheIpSettingsFiller) {
    const Answer answer = walk_paths("KESTO_TCPSettings");
    EXPECT_NE(answer.output.find(entering("ip_settings_fill_reference")), std::string::npos);
    EXPECT_EQ(answer.output.find("tcp_settings_fill_reference"), std::string::npos);
    ASSERT_EQ(answer.paths.size(), 1U);
    EXPECT_EQ(answer.paths[0], RecordedPath(NAMESPACE, "KESTO_TCPSettings",
                                            {{"InstanceID", CMPI_chars, "17"}}, one_tunnel::HOST));
}

TEST_F(LinkWalk, ClassNamesAreComparedWithoutCaseAndReturnedAsSpelled) {
    for (const Route& route : ROUTES) {
        std::string lower = route.className;
        for (char& letter : lower) {
            letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        }
        const Answer instances = walk_instances(lower);
        ASSERT_EQ(instances.instances.size(), 1U) << lower;
        EXPECT_EQ(instances.instances[0].class_name(), lower);
        EXPECT_EQ(instances.instances[0].sets(), golden_properties(route.builder));
        const Answer paths = walk_paths(lower);
        ASSERT_EQ(paths.paths.size(), 1U) << lower;
        EXPECT_EQ(paths.paths[0].class_name(), lower);
    }
}

TEST_F(LinkWalk, EveryLinkIsTracedBeforeItsObject) {
    add_two_tunnels();
    const std::string instanceTrace = any_line_trace("get_all_ip_pe_instances");
    const std::string builderTrace =
        entering("fcip_settings_build_instance") + exiting("fcip_settings_build_instance");
    std::string want = entering("get_all_ip_pe_instances");
    for (int i = 0; i < 3; ++i) {
        want += instanceTrace + builderTrace;
    }
    std::string traced = walk_instances("KESTO_FCIPSettings").output;
    EXPECT_TRUE(matches(traced, want)) << traced;

    want = entering("get_all_ip_pe_references");
    for (int i = 0; i < 3; ++i) {
        want += any_line_trace("get_all_ip_pe_references") + entering("tcp_pe_fill_reference");
    }
    traced = walk_paths("KESTO_TCPProtocolEndPoint").output;
    EXPECT_TRUE(matches(traced, want)) << traced;
}

TEST_F(LinkWalk, OneObjectALinkInTableOrder) {
    add_two_tunnels();
    const Answer instances = walk_instances("KESTO_TCPProtocolEndPoint");
    ASSERT_EQ(instances.instances.size(), 3U);
    EXPECT_EQ(instances.instances[0].value("Name"), "17");
    EXPECT_EQ(instances.instances[1].value("Name"), "18");
    EXPECT_EQ(instances.instances[2].value("Name"), "19");
    const Answer paths = walk_paths("KESTO_TCPProtocolEndPoint");
    ASSERT_EQ(paths.paths.size(), 3U);
    EXPECT_EQ(paths.paths[0].key("Name"), "17");
    EXPECT_EQ(paths.paths[1].key("Name"), "18");
    EXPECT_EQ(paths.paths[2].key("Name"), "19");
}

TEST_F(LinkWalk, AnUnknownClassGivesOneNullALink) {
    add_two_tunnels();
    for (const char* className : {"KESTO_Nothing", "KESTO_RemoteIPPort", "KESTO_FCIPProtocolEndPoint"}) {
        const Answer instances = walk_instances(className);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(instances.instances.size(), 3U) << className;
        for (const RecordedInstance& instance : instances.instances) {
            EXPECT_EQ(instance.kind(), Object::Null);
        }
        const Answer paths = walk_paths(className);
        EXPECT_EQ(status, 0);
        ASSERT_EQ(paths.paths.size(), 3U) << className;
        for (const RecordedPath& path : paths.paths) {
            EXPECT_EQ(path.kind(), Object::Null);
        }
    }
}

TEST_F(LinkWalk, AnObjectThatCannotBeBuiltIsHandedOverAsNull) {
    add_two_tunnels();
    emulator::clear_entities();
    for (const Route& route : ROUTES) {
        const Answer instances = walk_instances(route.className);
        ASSERT_EQ(instances.instances.size(), 3U) << route.className;
        for (const RecordedInstance& instance : instances.instances) {
            EXPECT_EQ(instance.kind(), Object::Null) << route.className;
        }
        const Answer paths = walk_paths(route.className);
        ASSERT_EQ(paths.paths.size(), 3U) << route.className;
        for (const RecordedPath& path : paths.paths) {
            EXPECT_EQ(path.kind(), Object::Null) << route.className;
        }
    }
}

TEST_F(LinkWalk, AnErrorThatBringsARowEndsTheWalkWithOneMoreTrace) {
    add_two_tunnels();
    emulator::add_fault({.symbol = "fcip_get_link_entry", .first = 2, .effect = Effect::FailWithRow});
    const Answer instances = walk_instances("KESTO_TCPProtocolEndPoint");
    EXPECT_EQ(instances.instances.size(), 1U);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(matches(instances.output,
                        entering("get_all_ip_pe_instances") + any_line_trace("get_all_ip_pe_instances") +
                            entering("tcp_pe_build_instance") + exiting("tcp_pe_build_instance") +
                            any_line_trace("get_all_ip_pe_instances")))
        << instances.output;
    emulator::clear_faults();
    emulator::add_fault({.symbol = "fcip_get_link_entry", .first = 2, .effect = Effect::FailWithRow});
    const Answer paths = walk_paths("KESTO_TCPProtocolEndPoint");
    EXPECT_EQ(paths.paths.size(), 1U);
    EXPECT_TRUE(matches(paths.output,
                        entering("get_all_ip_pe_references") + any_line_trace("get_all_ip_pe_references") +
                            entering("tcp_pe_fill_reference") + any_line_trace("get_all_ip_pe_references")))
        << paths.output;
}

TEST_F(LinkWalk, AnEndWithoutARowEndsTheWalkSilently) {
    add_two_tunnels();
    for (const auto effect : {Effect::Fail, Effect::SucceedWithoutRow}) {
        emulator::add_fault({.symbol = "fcip_get_link_entry", .first = 2, .effect = effect});
        const Answer answer = walk_instances("KESTO_TCPProtocolEndPoint");
        EXPECT_EQ(answer.instances.size(), 1U);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(occurrences(answer.output, " Function : get_all_ip_pe_instances Line "), 1U);
        emulator::clear_faults();
    }
}

} // namespace
} // namespace class_tests
