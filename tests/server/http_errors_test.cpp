// What the headers of a request must say.
#include <string>

#include "tests/server/probe_service.h"

namespace {

using namespace cimserver;

class Headers : public ProbeService {
  protected:
    HttpRequest good() const {
        return post(imethod_call("GetInstance", parameter("InstanceName", thing_name("one"))), "GetInstance");
    }
    // The same as M-POST, with the extension's number.
    HttpRequest good_m_post() const {
        HttpRequest request = good();
        request.method = "M-POST";
        for (const char* name : {"cimoperation", "cimprotocolversion", "cimmethod", "cimobject"}) {
            request.headers[std::string("48-") + name] = request.headers[name];
            request.headers.erase(name);
        }
        request.headers["man"] = "http://www.dmtf.org/cim/mapping/http/v1.0 ; ns=48";
        return request;
    }
    std::string header_of(const HttpReply& reply, const std::string& name) const {
        for (const auto& header : reply.headers) {
            if (header.first == name) return header.second;
        }
        return "(none)";
    }
    std::string outcome(const HttpRequest& request) const {
        const HttpReply reply = send(request);
        const std::string error = header_of(reply, "CIMError");
        return std::to_string(reply.status) + (error == "(none)" ? "" : " " + error);
    }
    std::string outcome_with(const std::string& name, const std::string& value) const {
        HttpRequest request = good();
        request.headers[name] = value;
        return outcome(request);
    }
    std::string outcome_without(const std::string& name) const {
        HttpRequest request = good();
        request.headers.erase(name);
        return outcome(request);
    }
};

TEST_F(Headers, AGoodRequestIsAnswered) {
    const HttpReply reply = send(good());
    EXPECT_EQ(reply.status, 200U);
    EXPECT_EQ(header_of(reply, "Content-Type"), "application/xml; charset=\"utf-8\"");
    EXPECT_EQ(header_of(reply, "CIMOperation"), "MethodResponse");
}

TEST_F(Headers, MPostIsAnsweredAsSuch) {
    const HttpReply reply = send(good_m_post());
    EXPECT_EQ(reply.status, 200U);
    EXPECT_EQ(header_of(reply, "48-CIMOperation"), "MethodResponse");
    EXPECT_EQ(header_of(reply, "Man"), "http://www.dmtf.org/cim/mapping/http/v1.0; ns=48");
    EXPECT_EQ(header_of(reply, "Ext"), "");
    EXPECT_EQ(header_of(reply, "CIMOperation"), "(none)");
}

TEST_F(Headers, MPostNeedsItsDeclaration) {
    HttpRequest request = good_m_post();
    request.headers["man"] = "\"http://www.dmtf.org/cim/mapping/http/v1.0\"; ns=48";
    EXPECT_EQ(outcome(request), "200");
    request.headers["man"] = "http://www.dmtf.org/cim/mapping/http/v1.0";
    EXPECT_EQ(outcome(request), "510");
    request.headers["man"] = "http://example.net/; ns=48";
    EXPECT_EQ(outcome(request), "510");
    request.headers.erase("man");
    EXPECT_EQ(outcome(request), "510");
    // Not the number of the headers.
    request.headers["man"] = "http://www.dmtf.org/cim/mapping/http/v1.0; ns=49";
    EXPECT_EQ(outcome(request), "400 header-mismatch");
}

TEST_F(Headers, OtherMethodsAreNotAllowed) {
    for (const char* method : {"GET", "HEAD", "PUT", "DELETE", "OPTIONS", "post"}) {
        HttpRequest request = good();
        request.method = method;
        const HttpReply reply = send(request);
        EXPECT_EQ(reply.status, 405U) << method;
        EXPECT_EQ(header_of(reply, "Allow"), "POST, M-POST");
    }
}

TEST_F(Headers, ContentMustBeXmlInUtf8) {
    EXPECT_EQ(outcome_with("content-type", "text/xml"), "200");
    EXPECT_EQ(outcome_with("content-type", "Application/XML;charset=UTF-8"), "200");
    EXPECT_EQ(outcome_with("content-type", "text/plain"), "415");
    EXPECT_EQ(outcome_with("content-type", "application/xml; charset=utf-16"), "415");
    EXPECT_EQ(outcome_with("content-encoding", "gzip"), "415");
    EXPECT_EQ(outcome_without("content-type"), "415");
}

TEST_F(Headers, TheOperationMustBeAMethodCall) {
    EXPECT_EQ(outcome_with("cimoperation", "methodcall"), "200");
    EXPECT_EQ(outcome_with("cimoperation", "MethodRequest"), "400 unsupported-operation");
    EXPECT_EQ(outcome_without("cimoperation"), "400 header-mismatch");
}

TEST_F(Headers, IndicationsAreNotTaken) {
    HttpRequest request = good();
    request.headers.erase("cimoperation");
    request.headers["cimexport"] = "MethodRequest";
    EXPECT_EQ(outcome(request), "501 unsupported-operation");
}

TEST_F(Headers, BatchesAreNotSupported) {
    EXPECT_EQ(outcome_with("cimbatch", ""), "501 multiple-requests-unsupported");
}

TEST_F(Headers, ProtocolVersions) {
    EXPECT_EQ(outcome_with("cimprotocolversion", "1.1"), "200");
    EXPECT_EQ(outcome_with("cimprotocolversion", "2.0"), "501 unsupported-protocol-version");
    EXPECT_EQ(outcome_without("cimprotocolversion"), "200");
}

TEST_F(Headers, MethodAndObjectMustMatchTheMessage) {
    EXPECT_EQ(outcome_with("cimmethod", "EnumerateInstances"), "400 header-mismatch");
    EXPECT_EQ(outcome_without("cimmethod"), "400 header-mismatch");
    EXPECT_EQ(outcome_with("cimobject", "root/other"), "400 header-mismatch");
    EXPECT_EQ(outcome_without("cimobject"), "400 header-mismatch");
    EXPECT_EQ(outcome_with("cimobject", "root%2fcimv2"), "200");
    EXPECT_EQ(outcome_with("cimobject", "root%2Gcimv2"), "400 header-mismatch");
}

TEST_F(Headers, RefusalsSayWhy) {
    const HttpReply reply = send(post("<html/>", "GetInstance"));
    EXPECT_EQ(reply.body, "the document element is not CIM\n");
    EXPECT_EQ(header_of(reply, "Content-Type"), "text/plain; charset=utf-8");
    ASSERT_EQ(reported.size(), 1U);
    EXPECT_EQ(reported[0],
              "refused with HTTP 400 request-not-loosely-valid: the document element is not CIM");
}

} // namespace
