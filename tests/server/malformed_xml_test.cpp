// Requests that are no CIM-XML, or no XML at all.
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "tests/server/probe_service.h"

namespace {

using cimserver::HttpReply;

class MalformedRequests : public ProbeService {
  protected:
    // The HTTP status and the CIMError header that the body earns.
    std::string refusal(const std::string& body) const {
        const HttpReply reply = send(post(body, "GetInstance"));
        std::string result = std::to_string(reply.status);
        for (const auto& [name, value] : reply.headers) {
            if (name == "CIMError") result += " " + value;
        }
        return result;
    }
    std::string good() const {
        return imethod_call("GetInstance", parameter("InstanceName", thing_name("one")));
    }
    std::string replaced(const std::string& what, const std::string& with) const {
        std::string body = good();
        const std::size_t at = body.find(what);
        EXPECT_NE(at, std::string::npos) << what;
        return body.replace(at, what.size(), with);
    }
};

constexpr auto NOT_WELL_FORMED = "400 request-not-well-formed";
constexpr auto NOT_LOOSELY_VALID = "400 request-not-loosely-valid";

TEST_F(MalformedRequests, TheGoodRequestPasses) {
    EXPECT_EQ(refusal(good()), "200");
}

TEST_F(MalformedRequests, WhatIsNoXmlIsNotWellFormed) {
    for (const std::string& body :
         {std::string(), std::string("hello"), std::string("<CIM>"), std::string("<CIM></MIC>"),
          good() + "<CIM/>", replaced("one", "&nbsp;"), replaced("one", "\xFF")}) {
        EXPECT_EQ(refusal(body), NOT_WELL_FORMED) << body;
    }
}

TEST_F(MalformedRequests, WhatIsNoCimXmlIsNotLooselyValid) {
    EXPECT_EQ(refusal("<html/>"), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal("<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"/>"), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(message("")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(message("<SIMPLEREQ/>")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(message("<SIMPLERSP/>")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(message("<SIMPLEREQ><OTHERCALL NAME=\"x\"/></SIMPLEREQ>")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(replaced(" ID=\"42\"", "")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(replaced(" CIMVERSION=\"2.0\"", "")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(replaced("IMETHODCALL NAME=\"GetInstance\"", "IMETHODCALL")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(replaced("<NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"cimv2\"/>", "")),
              NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(replaced("<SIMPLEREQ>", "<SIMPLEREQ>stray text")), NOT_LOOSELY_VALID);
}

TEST_F(MalformedRequests, ElementsOutOfPlaceAreNotLooselyValid) {
    EXPECT_EQ(refusal(replaced("<IPARAMVALUE", "<VALUE/><IPARAMVALUE")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(replaced(" CLASSNAME=\"Probe_Thing\"", "")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(replaced(" NAME=\"Name\"", "")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(replaced("KEYVALUE VALUETYPE=\"string\">one</KEYVALUE", "VALUE>one</VALUE")),
              NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(replaced("<INSTANCENAME", "<VALUE/><INSTANCENAME")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(replaced("one</KEYVALUE>", "<VALUE>one</VALUE></KEYVALUE>")), NOT_LOOSELY_VALID);
    EXPECT_EQ(refusal(imethod_call(
                  "GetInstance",
                  parameter("InstanceName", instance_name("Probe_Echo", reference_key("R", "<HOST/>"))))),
              NOT_LOOSELY_VALID);
}

TEST_F(MalformedRequests, UnknownKindsOfKeysAreNotValid) {
    EXPECT_EQ(refusal(replaced("VALUETYPE=\"string\"", "VALUETYPE=\"colour\"")), "400 request-not-valid");
}

TEST_F(MalformedRequests, UnknownAttributesDoNoHarm) {
    EXPECT_EQ(refusal(replaced("<SIMPLEREQ>", "<SIMPLEREQ COLOUR=\"red\"><CORRELATOR NAME=\"c\"/>")), "200");
}

TEST_F(MalformedRequests, OtherVersionsAreNotSupported) {
    EXPECT_EQ(refusal(replaced("CIMVERSION=\"2.0\"", "CIMVERSION=\"3.0\"")), "501 unsupported-cim-version");
    EXPECT_EQ(refusal(replaced("DTDVERSION=\"2.0\"", "DTDVERSION=\"1.0\"")), "501 unsupported-dtd-version");
    EXPECT_EQ(refusal(replaced("PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"2.0\"")),
              "501 unsupported-protocol-version");
    EXPECT_EQ(refusal(replaced("PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"1.4\"")), "200");
    EXPECT_EQ(refusal(replaced("DTDVERSION=\"2.0\"", "DTDVERSION=\"2.3.1\"")), "200");
}

TEST_F(MalformedRequests, SeveralRequestsInOneAreNotSupported) {
    EXPECT_EQ(refusal(message("<MULTIREQ><SIMPLEREQ/><SIMPLEREQ/></MULTIREQ>")),
              "501 multiple-requests-unsupported");
}

// Whatever is cut off or overwritten, the server answers, and what it answers in CIM-XML is well-formed.
TEST_F(MalformedRequests, DamagedRequestsAreAnswered) {
    std::mt19937 random(5); // always the same damage
    const std::string whole = imethod_call(
        "GetInstance",
        parameter("InstanceName",
                  instance_name("Probe_Echo", key("K", "v") + reference_key("R", thing_name("t")) +
                                                  key("N", "5", "VALUETYPE=\"numeric\""))) +
            parameter("PropertyList", value_array({"K", "R"})));
    constexpr std::string_view DIRT =
        "<>&;\"'/= \xFF\x00\x80"
        "A0";
    int answered = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string body = whole;
        const unsigned damages = random() % 4;
        for (unsigned i = 0; i < damages; ++i) {
            body[random() % body.size()] = DIRT[random() % DIRT.size()];
        }
        const std::size_t from = random() % body.size();
        if (random() % 3 == 0) body.erase(from, random() % 40);
        if (random() % 5 == 0) body.resize(random() % body.size() + 1);
        const HttpReply reply = send(post(body, "GetInstance"));
        ASSERT_TRUE(reply.status == 200 || reply.status == 400 || reply.status == 501) << reply.status;
        if (reply.status != 200) continue;
        ++answered;
        ASSERT_TRUE(Response(reply.body).well_formed()) << body << "\n" << reply.body;
    }
    EXPECT_GT(answered, 100); // the undamaged ones at least
}

} // namespace
