// What all builders and fillers of the instance model have in common, and each one's table.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/classes/class_test.h"
#include "tests/classes/golden_classes.h"

namespace class_tests {
namespace {

template <typename Golden>
std::string test_name(const testing::TestParamInfo<Golden>& info) {
    return info.param.function;
}

// The services that were called and that may fail: the lock and the release of a message cannot.
std::vector<std::string> services_of(const std::vector<std::string>& calls) {
    std::vector<std::string> services;
    for (const std::string& call : calls) {
        std::string service = call.substr(0, call.find(' '));
        if (service.starts_with("mutex_") || service == "mts_drop") continue;
        if (std::find(services.begin(), services.end(), service) == services.end()) {
            services.push_back(std::move(service));
        }
    }
    return services;
}

class Convention : public ClassTest {
  protected:
    std::vector<std::string> broker_functions() const {
        std::vector<std::string> functions;
        for (const test_support::Call& call : broker.calls()) {
            functions.push_back(call.function());
        }
        return functions;
    }
};

class Builder : public Convention, public testing::WithParamInterface<GoldenBuilder> {
  protected:
    RecordedInstance build(const char* className, const char** properties = nullptr,
                           const char* requestNameSpace = NAMESPACE) {
        return make([&] { return GetParam().build(className, requestNameSpace, properties); });
    }
    RecordedInstance build() { return build(GetParam().className); }
    std::string entry() const { return GetParam().entryTrace ? entering(GetParam().function) : ""; }
};

class Filler : public Convention, public testing::WithParamInterface<GoldenFiller> {
  protected:
    RecordedPath fill(const char* className, const char* requestNameSpace = NAMESPACE) {
        return make([&] { return GetParam().fill(className, requestNameSpace); });
    }
    RecordedPath fill() { return fill(GetParam().className); }
};

class ProfileBuilder : public Builder {};
class ProfileFiller : public Filler {};
class SystemBuilder : public Builder {};
class SystemFiller : public Filler {};

template <typename Golden>
std::vector<Golden> those_that_name_a_system(std::vector<Golden> all) {
    std::erase_if(all, [](const Golden& golden) { return !golden.systemNames; });
    return all;
}

// The services that find the VSAN's system, and the name that stands when each fails.
template <typename Golden>
std::vector<std::pair<const char*, const char*>> fallbacks(const Golden& golden) {
    return {{"pm_cim_get_port_info", golden.systemNames->withoutPort},
            {"dm_cim_get_dmEntry", golden.systemNames->withoutDomain}};
}

Sets with_system_name(const Sets& sets, const char* name) {
    return name == nullptr ? without(sets, {"SystemName"}) : with(sets, "SystemName", name);
}

template <typename Golden>
std::vector<Golden> those_that_need_the_profile(std::vector<Golden> all) {
    std::erase_if(all, [](const Golden& golden) { return !golden.needsProfile; });
    return all;
}

// Builders.

TEST_P(Builder, SetsThePropertiesOfItsTableInOrder) {
    EXPECT_EQ(build().sets(), GetParam().properties);
}

TEST_P(Builder, PassesClassNameAndNamespaceThroughAsSpelled) {
    const RecordedInstance instance = build("kesto_AnyClassAtAll", nullptr, "Some/Other/nameSpace");
    EXPECT_EQ(instance.path().class_name(), "kesto_AnyClassAtAll");
    EXPECT_EQ(instance.path().name_space(), "Some/Other/nameSpace");
}

TEST_P(Builder, MakesTheInstanceOnAKeylessPathWithTheSwitchsHostName) {
    const RecordedInstance instance = build();
    EXPECT_EQ(instance.path().host(), one_tunnel::HOST);
    EXPECT_EQ(instance.path().keys(), Sets{});
    EXPECT_EQ(broker.made(Make::ObjectPath), 1U);
    EXPECT_EQ(broker.made(Make::Instance), 1U);
}

TEST_P(Builder, FiltersByTheRequestsPropertiesAfterTheLastOneWithNoKeys) {
    const char* wanted[] = {"Name", "InstanceID", nullptr};
    const RecordedInstance instance = build(GetParam().className, wanted);
    ASSERT_EQ(instance.filters().size(), 1U);
    EXPECT_EQ(instance.filters()[0], (Filter{{{"Name", "InstanceID"}}, {{}}}));
    EXPECT_EQ(instance.sets_before_filter(), GetParam().properties.size());
    EXPECT_EQ(instance.sets(), GetParam().properties) << "the broker leaves out what is not wanted";
}

TEST_P(Builder, FiltersByTheRequestsListHoweverShort) {
    EXPECT_EQ(build().filters(), (std::vector<Filter>{filter_for(std::nullopt)}));
    const char* none[] = {nullptr};
    EXPECT_EQ(build(GetParam().className, none).filters(),
              (std::vector<Filter>{filter_for(std::vector<std::string>{})}));
}

TEST_P(Builder, CallsTheBrokerInOrderAndReleasesNothing) {
    build();
    std::vector<std::string> want{"newObjectPath", "setHostname", "newInstance"};
    want.insert(want.end(), GetParam().properties.size(), "setProperty");
    want.emplace_back("setPropertyFilter");
    EXPECT_EQ(broker_functions(), want);
}

TEST_P(Builder, TracesItsEntryAndExit) {
    build();
    EXPECT_TRUE(matches(trace, GetParam().trace)) << trace;
}

TEST_P(Builder, ReturnsNullWithoutAnObjectPath) {
    for (const Failure how : {Failure::Null, Failure::WithoutHandle}) {
        broker.fail_nth(Make::ObjectPath, 1, how);
        broker.clear_calls();
        EXPECT_EQ(build().kind(), Object::Null);
        EXPECT_TRUE(broker.fault_hit());
        EXPECT_EQ(broker.calls().size(), 1U) << "nothing but newObjectPath";
        EXPECT_EQ(trace.find(entry()), 0U) << trace;
        EXPECT_EQ(trace.ends_with(exiting(GetParam().function)), GetParam().exitTraceWithoutPath) << trace;
        broker.clear_faults();
    }
}

TEST_P(Builder, ReturnsNullWithoutAnInstance) {
    broker.fail_nth(Make::Instance, 1, Failure::Null);
    EXPECT_EQ(build().kind(), Object::Null);
    EXPECT_TRUE(broker.fault_hit());
    EXPECT_FALSE(trace.ends_with(exiting(GetParam().function))) << trace;
}

TEST_P(Builder, ReturnsAnInstanceWithoutAHandleAsItIs) {
    broker.fail_nth(Make::Instance, 1, Failure::WithoutHandle);
    const RecordedInstance instance = build();
    EXPECT_TRUE(broker.fault_hit());
    EXPECT_EQ(instance.kind(), Object::WithoutHandle);
    EXPECT_EQ(broker.calls().size(), 3U) << "newObjectPath, setHostname, newInstance";
    EXPECT_FALSE(trace.ends_with(exiting(GetParam().function))) << trace;
}

TEST_P(ProfileBuilder, AsksForTheLinksOwnProfileFirst) {
    build();
    const auto calls = emulator::calls("fcip_get_entity_entry");
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), "fcip_get_entity_entry op=1 id=3 5");
}

TEST_P(ProfileBuilder, ReturnsNullWithoutTheProfileAndBeforeItAsksTheBroker) {
    for_each_effect(STATUS_FAILURES, {.symbol = "fcip_get_entity_entry"}, [&] {
        EXPECT_EQ(build().kind(), Object::Null);
        EXPECT_EQ(trace, entry()) << "no exit trace";
        EXPECT_EQ(broker.made(Make::ObjectPath), 0U);
    });
}

// Whatever service fails, at whatever call and in whatever way: no row and no message is left (the
// fixture and the sanitizers look), and what is still built keeps to the table.
TEST_P(Builder, SurvivesEveryFailingService) {
    build();
    const auto services = services_of(emulator::calls());
    for (const std::string& service : services) {
        for (const auto effect : ROW_FAILURES) {
            SCOPED_TRACE(test_support::text_of(effect));
            for_each_platform_failure(service, effect, [&](std::size_t) {
                const RecordedInstance instance = build();
                if (!instance.is_valid()) return;
                EXPECT_EQ(instance.class_name(), GetParam().className);
                const auto golden = GetParam().properties.names();
                for (const std::string& name : instance.sets().names()) {
                    EXPECT_NE(std::find(golden.begin(), golden.end(), name), golden.end()) << name;
                }
            });
            emulator::release_messages();
        }
    }
}

TEST_P(SystemBuilder, FallsBackOnTheseSystemNames) {
    for (const auto& [symbol, name] : fallbacks(GetParam())) {
        emulator::fail_always(symbol);
        EXPECT_EQ(build().sets(), with_system_name(GetParam().properties, name)) << symbol;
        emulator::clear_faults();
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, SystemBuilder,
                         testing::ValuesIn(those_that_name_a_system(golden_builders())),
                         test_name<GoldenBuilder>);
INSTANTIATE_TEST_SUITE_P(Classes, Builder, testing::ValuesIn(golden_builders()), test_name<GoldenBuilder>);
INSTANTIATE_TEST_SUITE_P(Classes, ProfileBuilder,
                         testing::ValuesIn(those_that_need_the_profile(golden_builders())),
                         test_name<GoldenBuilder>);

// Fillers.

TEST_P(Filler, AddsTheKeysOfItsTableInOrder) {
    EXPECT_EQ(fill().keys(), GetParam().keys);
}

TEST_P(Filler, PassesClassNameAndNamespaceThroughAsSpelled) {
    const RecordedPath path = fill("kesto_AnyClassAtAll", "Some/Other/nameSpace");
    EXPECT_EQ(path.class_name(), "kesto_AnyClassAtAll");
    EXPECT_EQ(path.name_space(), "Some/Other/nameSpace");
}

TEST_P(Filler, SetsTheHostNameOnlyWhereItsClassHasOne) {
    EXPECT_EQ(fill().host(),
              GetParam().hostName ? std::optional<std::string>(one_tunnel::HOST) : std::nullopt);
}

TEST_P(Filler, CallsTheBrokerForItsKeysAndReleasesNothing) {
    fill();
    std::vector<std::string> want(GetParam().keys.size(), "addKey");
    want.emplace_back("newObjectPath");
    if (GetParam().hostName) want.emplace_back("setHostname");
    std::vector<std::string> called = broker_functions();
    std::sort(called.begin(), called.end());
    EXPECT_EQ(called, want);
}

TEST_P(Filler, TracesAsItsClassDoes) {
    fill();
    EXPECT_TRUE(matches(trace, GetParam().trace)) << trace;
}

TEST_P(Filler, ReturnsNullWithoutAnObjectPath) {
    broker.fail_nth(Make::ObjectPath, 1, Failure::Null);
    EXPECT_EQ(fill().kind(), Object::Null);
    EXPECT_TRUE(broker.fault_hit());
    EXPECT_EQ(trace, GetParam().traceWithoutPath);
}

TEST_P(Filler, ReturnsAPathWithoutAHandleAsItIs) {
    broker.fail_nth(Make::ObjectPath, 1, Failure::WithoutHandle);
    const RecordedPath path = fill();
    EXPECT_TRUE(broker.fault_hit());
    EXPECT_EQ(path.kind(), Object::WithoutHandle);
    EXPECT_EQ(path.keys(), Sets{});
    EXPECT_EQ(broker.calls().size(), 1U) << "nothing but newObjectPath";
    if (GetParam().checksHandle) {
        EXPECT_EQ(trace, GetParam().traceWithoutPath);
    }
}

TEST_P(ProfileFiller, ReturnsNullWithoutTheProfileAndBeforeItAsksTheBroker) {
    for_each_effect(STATUS_FAILURES, {.symbol = "fcip_get_entity_entry"}, [&] {
        EXPECT_EQ(fill().kind(), Object::Null);
        EXPECT_TRUE(matches(trace, GetParam().traceWithoutProfile)) << trace;
        EXPECT_EQ(broker.made(Make::ObjectPath), 0U);
    });
    EXPECT_EQ(emulator::calls("fcip_get_entity_entry").front(), "fcip_get_entity_entry op=1 id=3 5");
}

TEST_P(Filler, SurvivesEveryFailingService) {
    fill();
    for (const std::string& service : services_of(emulator::calls())) {
        for (const auto effect : ROW_FAILURES) {
            SCOPED_TRACE(test_support::text_of(effect));
            for_each_platform_failure(service, effect, [&](std::size_t) {
                const RecordedPath path = fill();
                if (!path.is_valid()) return;
                // A path has all its keys or, where the profile was missing, none.
                if (path.keys().empty()) return;
                EXPECT_EQ(path.keys().names(), GetParam().keys.names());
            });
        }
    }
}

TEST_P(SystemFiller, FallsBackOnTheseSystemNames) {
    for (const auto& [symbol, name] : fallbacks(GetParam())) {
        emulator::fail_always(symbol);
        EXPECT_EQ(fill().keys(), with_system_name(GetParam().keys, name)) << symbol;
        emulator::clear_faults();
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, SystemFiller, testing::ValuesIn(those_that_name_a_system(golden_fillers())),
                         test_name<GoldenFiller>);
INSTANTIATE_TEST_SUITE_P(Classes, Filler, testing::ValuesIn(golden_fillers()), test_name<GoldenFiller>);
INSTANTIATE_TEST_SUITE_P(Classes, ProfileFiller,
                         testing::ValuesIn(those_that_need_the_profile(golden_fillers())),
                         test_name<GoldenFiller>);

} // namespace
} // namespace class_tests
