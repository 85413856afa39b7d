#include "tests/server/cimxml_request.h"

#include <algorithm>
#include <cstddef>

std::string parameter(const std::string& name, const std::string& content) {
    return "<IPARAMVALUE NAME=\"" + name + "\">" + content + "</IPARAMVALUE>";
}

std::string class_name(const std::string& name) {
    return "<CLASSNAME NAME=\"" + name + "\"/>";
}

std::string value(const std::string& text) {
    return "<VALUE>" + text + "</VALUE>";
}

std::string value_array(const std::vector<std::string>& texts) {
    std::string content;
    for (const std::string& text : texts) {
        content += value(text);
    }
    return "<VALUE.ARRAY>" + content + "</VALUE.ARRAY>";
}

std::string key(const std::string& name, const std::string& text, const std::string& attributes) {
    return "<KEYBINDING NAME=\"" + name + "\"><KEYVALUE " + attributes + ">" + text +
           "</KEYVALUE></KEYBINDING>";
}

std::string reference_key(const std::string& name, const std::string& path) {
    return "<KEYBINDING NAME=\"" + name + "\"><VALUE.REFERENCE>" + path + "</VALUE.REFERENCE></KEYBINDING>";
}

std::string instance_name(const std::string& className, const std::string& keys) {
    return "<INSTANCENAME CLASSNAME=\"" + className + "\">" + keys + "</INSTANCENAME>";
}

std::string thing_name(const std::string& name) {
    return instance_name("Probe_Thing", key("Name", name));
}

std::string message(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">"
           "<MESSAGE ID=\"42\" PROTOCOLVERSION=\"1.0\">" +
           content + "</MESSAGE></CIM>";
}

std::string imethod_call(const std::string& method, const std::string& parameters,
                         const std::string& nameSpace) {
    std::string path;
    for (std::size_t at = 0; at <= nameSpace.size();) {
        const std::size_t slash = std::min(nameSpace.find('/', at), nameSpace.size());
        path += "<NAMESPACE NAME=\"" + nameSpace.substr(at, slash - at) + "\"/>";
        at = slash + 1;
    }
    return message("<SIMPLEREQ><IMETHODCALL NAME=\"" + method + "\"><LOCALNAMESPACEPATH>" + path +
                   "</LOCALNAMESPACEPATH>" + parameters + "</IMETHODCALL></SIMPLEREQ>");
}

cimserver::HttpRequest post(const std::string& body, const std::string& method,
                            const std::string& nameSpace) {
    cimserver::HttpRequest request;
    request.method = "POST";
    request.headers = {{"content-type", "application/xml; charset=\"utf-8\""},
                       {"cimoperation", "MethodCall"},
                       {"cimprotocolversion", "1.0"},
                       {"cimmethod", method},
                       {"cimobject", nameSpace}};
    request.body = body;
    return request;
}
