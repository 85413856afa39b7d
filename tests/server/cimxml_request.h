// CIM-XML requests and responses as the tests write and read them.
#ifndef KESTO_TESTS_SERVER_CIMXML_REQUEST_H
#define KESTO_TESTS_SERVER_CIMXML_REQUEST_H

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "server/http/message.h"

// ---- Parts of a request. ----

std::string parameter(const std::string& name, const std::string& content);
std::string class_name(const std::string& name);                  // CLASSNAME
std::string value(const std::string& text);                       // VALUE
std::string value_array(const std::vector<std::string>& texts);   // VALUE.ARRAY
std::string key(const std::string& name, const std::string& text, // KEYBINDING
                const std::string& attributes = "VALUETYPE=\"string\"");
std::string reference_key(const std::string& name, const std::string& path);
std::string instance_name(const std::string& className, const std::string& keys); // INSTANCENAME
std::string thing_name(const std::string& name); // of the provider's Probe_Thing

// An IMETHODCALL in its message.
std::string imethod_call(const std::string& method, const std::string& parameters,
                         const std::string& nameSpace = "root/cimv2");
// The message around anything: <SIMPLEREQ> and the like.
std::string message(const std::string& content);
// The POST request that carries it, with the headers that belong to it.
cimserver::HttpRequest post(const std::string& body, const std::string& method,
                            const std::string& nameSpace = "root/cimv2");

// ---- Responses. ----

class Response {
  public:
    explicit Response(const std::string& body);

    bool well_formed() const { return wellFormed_; }
    std::string text(const std::string& xpath) const; // of the first match
    std::vector<std::string> texts(const std::string& xpath) const;
    std::size_t count(const std::string& xpath) const { return texts(xpath).size(); }
    std::string property(const std::string& name) const; // of the first instance
    int error_code() const;                              // 0 without an ERROR
    std::string error_description() const { return text("//ERROR/@DESCRIPTION"); }

  private:
    pugi::xml_document document_;
    bool wellFormed_;
};

#endif
