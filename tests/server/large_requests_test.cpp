// Requests that bring thousands of anything: the time to answer grows with their size, not with its square.
#include <ctime>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "tests/server/probe_service.h"

namespace {

constexpr int MANY = 20000; // parameters, keys, properties or names

// `write(i)` for each of so many numbers.
std::string repeated(int count, const std::function<std::string(const std::string&)>& write) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += write(std::to_string(i));
    }
    return all;
}

// The processor's time in seconds: what else runs on the machine does not count.
double time_used() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

class LargeRequests : public ProbeService {
  protected:
    // What an operation answers to parameters that `write` makes with so many of something. It has a second,
    // or where a slow build or tool needs more, not much more than ten times as long as for a tenth.
    cimserver::HttpReply ask_in_time(const std::string& method,
                                     const std::function<std::string(int)>& write) const {
        constexpr double A_SECOND = 1;
        constexpr double MOST_GROWTH = 30; // 10 when the time grows with the size, 100 with its square
        cimserver::HttpReply reply;
        const auto timeFor = [&](int count) {
            const cimserver::HttpRequest request = post(write(count), method);
            const double before = time_used();
            reply = send(request);
            return time_used() - before;
        };
        const double ofATenth = timeFor(MANY / 10);
        EXPECT_LT(timeFor(MANY), std::max(A_SECOND, MOST_GROWTH * ofATenth));
        return reply;
    }
    // The same for the parameters of an operation.
    Response perform_in_time(const std::string& method, const std::function<std::string(int)>& write) const {
        const auto whole = [&](int count) { return imethod_call(method, write(count)); };
        return Response(ask_in_time(method, whole).body);
    }
    static std::string many_keys(int count) {
        const auto more = [](const std::string& i) { return key("K" + i, i); };
        return instance_name("Probe_Thing", key("Name", "one") + repeated(count, more));
    }
};

TEST_F(LargeRequests, ManyAttributesAreRefusedInTime) {
    const auto write = [](int count) {
        const auto attribute = [](const std::string& i) { return " a" + i + "='x'"; };
        return "<CIM" + repeated(5 * count, attribute) + "/>"; // 100,000 of them
    };
    EXPECT_EQ(ask_in_time("GetInstance", write).status, 400U);
}

TEST_F(LargeRequests, ManyParametersAreRefusedInTime) {
    const auto write = [](int count) {
        return repeated(count, [](const std::string& i) { return parameter("P" + i, value(i)); });
    };
    EXPECT_EQ(perform_in_time("GetInstance", write).error_code(), 4);
}

TEST_F(LargeRequests, ManyKeysAreReadInTime) {
    const auto write = [](int count) { return parameter("InstanceName", many_keys(count)); };
    EXPECT_EQ(perform_in_time("GetInstance", write).property("Name"), "one");
}

TEST_F(LargeRequests, TraversalsFromManyKeysTakeNoLonger) {
    const auto write = [](int count) {
        return parameter("ObjectName", many_keys(count)) + parameter("Role", value("Left"));
    };
    EXPECT_EQ(perform_in_time("AssociatorNames", write).count("//OBJECTPATH"), 1U);
}

TEST_F(LargeRequests, ManyPropertiesAreReadInTime) {
    const auto write = [](int count) {
        const auto property = [](const std::string& name, const std::string& text) {
            return "<PROPERTY NAME=\"" + name + "\" TYPE=\"string\">" + value(text) + "</PROPERTY>";
        };
        return parameter("NewInstance",
                         "<INSTANCE CLASSNAME=\"Probe_Thing\">" + property("Name", "new") +
                             repeated(count, [&](const std::string& i) { return property("P" + i, i); }) +
                             "</INSTANCE>");
    };
    EXPECT_EQ(perform_in_time("CreateInstance", write).text("//INSTANCENAME/KEYBINDING/KEYVALUE"), "new");
}

TEST_F(LargeRequests, LongPropertyListsAreAppliedInTime) {
    const auto write = [](int count) {
        const auto name = [](const std::string& i) { return value("P" + i); };
        return parameter("ClassName", class_name("Probe_Thing")) +
               parameter("PropertyList",
                         "<VALUE.ARRAY>" + repeated(count, name) + value("Colour") + "</VALUE.ARRAY>");
    };
    EXPECT_EQ(perform_in_time("EnumerateInstances", write).texts("//INSTANCE/PROPERTY/@NAME"),
              (std::vector<std::string>{"Colour", "Colour"}));
}

} // namespace
