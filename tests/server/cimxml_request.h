// CIM-XML requests as the tests write them.
#ifndef KESTO_TESTS_SERVER_CIMXML_REQUEST_H
#define KESTO_TESTS_SERVER_CIMXML_REQUEST_H

#include <string>
#include <vector>

#include "server/http/message.h"

// Parts of a request.

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

#endif
