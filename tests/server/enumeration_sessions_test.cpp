// Open enumerations: how long they are kept, how many, and several clients at once.
#include "server/cimxml/enumeration_sessions.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "server/cimxml/errors.h"

namespace {

using namespace cimserver;
using std::chrono::seconds;

const EnumerationOwner ANN{"root/cimv2", "ann"};

class EnumerationSessionsTest : public testing::Test {
  protected:
    // Of `count` objects, each of which is the one letter x in its XML.
    static Enumeration enumeration(std::size_t count, seconds timeout = seconds(10)) {
        Enumeration made{ANN, ObjectForm::InstancePath, timeout, {}};
        for (std::size_t i = 1; i <= count; ++i) {
            made.objects.xml += 'x';
            made.objects.ends.push_back(i);
        }
        return made;
    }
    Portion pull(const std::string& context, std::size_t most) {
        return sessions.pull(context, ANN, ObjectForm::InstancePath, most);
    }
    template <typename Call>
    static int error_of(Call call) {
        try {
            call();
        } catch (const CimError& error) {
            return error.code;
        }
        return 0;
    }

    EnumerationSessions::Clock::time_point now{};
    EnumerationSessions sessions{{.sessions = 3, .bytes = 1000, .now = [this] { return now; }}};
};

TEST_F(EnumerationSessionsTest, AnEnumerationLeftAloneTooLongIsGone) {
    const std::string context = sessions.open(enumeration(5), 0).context;
    now += seconds(10);
    EXPECT_EQ(error_of([&] { pull(context, 1); }), CIM_RC_INVALID_ENUMERATION_CONTEXT);
}

TEST_F(EnumerationSessionsTest, EveryPullStartsTheTimeAgain) {
    const std::string context = sessions.open(enumeration(5), 0).context;
    for (int i = 0; i < 3; ++i) {
        now += seconds(9);
        EXPECT_EQ(pull(context, 1).objects, 1U);
    }
}

TEST_F(EnumerationSessionsTest, CountingDoesNotStartTheTimeAgain) {
    const std::string context = sessions.open(enumeration(5), 0).context;
    now += seconds(9);
    EXPECT_EQ(sessions.to_come(context, ANN), 5U);
    now += seconds(1);
    EXPECT_EQ(error_of([&] { sessions.to_come(context, ANN); }), CIM_RC_INVALID_ENUMERATION_CONTEXT);
}

TEST_F(EnumerationSessionsTest, NoMoreAreOpenThanTheLimit) {
    for (int i = 0; i < 3; ++i) {
        sessions.open(enumeration(2), 1);
    }
    EXPECT_EQ(error_of([&] { sessions.open(enumeration(2), 1); }), CMPI_RC_ERR_SERVER_LIMITS_EXCEEDED);
    EXPECT_EQ(sessions.open(enumeration(2), 2).objects, 2U) << "what is taken at once needs no place";
}

TEST_F(EnumerationSessionsTest, ThoseThatAreGoneMakePlace) {
    for (int i = 0; i < 3; ++i) {
        sessions.open(enumeration(2), 1);
    }
    now += seconds(10);
    const std::string context = sessions.open(enumeration(2), 1).context;
    EXPECT_EQ(pull(context, 1).objects, 1U);
}

TEST_F(EnumerationSessionsTest, NoMoreIsKeptThanTheLimit) {
    const auto each = 1 + sizeof(std::size_t); // the bytes of an object: its XML and where that ends
    sessions.open(enumeration(500 / each), 1);
    sessions.open(enumeration(500 / each), 1);
    EXPECT_EQ(error_of([&] { sessions.open(enumeration(10), 1); }), CMPI_RC_ERR_SERVER_LIMITS_EXCEEDED);
}

TEST_F(EnumerationSessionsTest, ContextsDoNotRepeat) {
    std::set<std::string> seen;
    for (int i = 0; i < 100; ++i) {
        const std::string context = sessions.open(enumeration(2), 1).context;
        EXPECT_EQ(context.size(), 32U);
        EXPECT_TRUE(seen.insert(context).second);
        sessions.close(context, ANN);
    }
}

TEST_F(EnumerationSessionsTest, SeveralPullsAtOnceShareTheObjects) {
    constexpr std::size_t OBJECTS = 90;
    const std::string context = sessions.open(enumeration(OBJECTS), 0).context;
    std::atomic<std::size_t> taken{0};
    std::vector<std::thread> clients;
    for (int i = 0; i < 4; ++i) {
        clients.emplace_back([&] {
            while (error_of([&] { taken += pull(context, 2).objects; }) == 0) {
            }
        });
    }
    for (std::thread& client : clients) {
        client.join();
    }
    EXPECT_EQ(taken, OBJECTS);
}

} // namespace
