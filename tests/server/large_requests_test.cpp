// Requests that bring thousands of anything: the time to answer grows with their size, not with its square.
#include <ctime>

#include <functional>
#include <string>

#include "tests/server/probe_service.h"

namespace {

constexpr int MANY = 20000;

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
    static constexpr double A_SECOND = 1;

    Response ask_in_time(const std::string& method, const std::string& parameters) const {
        const std::string body = imethod_call(method, parameters);
        const double before = time_used();
        const cimserver::HttpReply reply = send(post(body, method));
        EXPECT_LT(time_used() - before, A_SECOND);
        EXPECT_EQ(reply.status, 200U);
        return Response(reply.body);
    }
    static std::string many_keys() {
        return instance_name("Probe_Thing", key("Name", "one") + repeated(MANY, [](const std::string& i) {
                                                return key("K" + i, i);
                                            }));
    }
};

TEST_F(LargeRequests, ManyAttributesAreRefusedInTime) {
    constexpr int ATTRIBUTES = 100000;
    const std::string attributes =
        repeated(ATTRIBUTES, [](const std::string& i) { return " a" + i + "='x'"; });
    const auto request = post("<CIM" + attributes + "/>", "GetInstance");
    const double before = time_used();
    EXPECT_EQ(send(request).status, 400U);
    EXPECT_LT(time_used() - before, A_SECOND);
}

TEST_F(LargeRequests, ManyParametersAreRefusedInTime) {
    const auto unknown = [](const std::string& i) { return parameter("P" + i, value(i)); };
    EXPECT_EQ(ask_in_time("GetInstance", repeated(MANY, unknown)).error_code(), 4);
}

TEST_F(LargeRequests, ManyKeysAreReadInTime) {
    EXPECT_EQ(ask_in_time("GetInstance", parameter("InstanceName", many_keys())).property("Name"), "one");
}

TEST_F(LargeRequests, TraversalsFromManyKeysTakeNoLonger) {
    const Response response = ask_in_time(
        "AssociatorNames", parameter("ObjectName", many_keys()) + parameter("Role", value("Left")));
    EXPECT_EQ(response.count("//OBJECTPATH"), 1U);
}

TEST_F(LargeRequests, ManyPropertiesAreReadInTime) {
    const std::string properties = repeated(MANY, [](const std::string& i) {
        return "<PROPERTY NAME=\"P" + i + "\" TYPE=\"string\">" + value(i) + "</PROPERTY>";
    });
    const Response response =
        ask_in_time("CreateInstance", parameter("NewInstance",
                                                "<INSTANCE CLASSNAME=\"Probe_Thing\"><PROPERTY NAME=\"Name\" "
                                                "TYPE=\"string\"><VALUE>new</VALUE></PROPERTY>" +
                                                    properties + "</INSTANCE>"));
    EXPECT_EQ(response.text("//INSTANCENAME/KEYBINDING/KEYVALUE"), "new");
}

TEST_F(LargeRequests, LongPropertyListsAreAppliedInTime) {
    const std::string names = repeated(MANY, [](const std::string& i) { return value("P" + i); });
    const Response response = ask_in_time(
        "EnumerateInstances",
        parameter("ClassName", class_name("Probe_Thing")) +
            parameter("PropertyList", "<VALUE.ARRAY>" + names + value("Colour") + "</VALUE.ARRAY>"));
    EXPECT_EQ(response.texts("//INSTANCE/PROPERTY/@NAME"), (std::vector<std::string>{"Colour", "Colour"}));
}

} // namespace
