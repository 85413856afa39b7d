// A CIM-XML request message, read.
//
// The message's frame is read at once; the parameters on demand, because what is wrong with them matters only
// for an operation that the server has. Validation is loose: unknown attributes do no harm, what is missing
// or stands where it cannot be understood is refused.
#ifndef KESTO_SERVER_CIMXML_READER_H
#define KESTO_SERVER_CIMXML_READER_H

#include <string>
#include <variant>
#include <vector>

#include "server/cimxml/xml_document.h"
#include "server/model/cim_model.h"

namespace cimserver {

struct ClassNameValue {
    std::string name;
};
struct UnreadValue { // of an element that no operation of this server takes
    std::string element;
};

// What a parameter holds: nothing (NULL), VALUE, VALUE.ARRAY, CLASSNAME, INSTANCENAME, INSTANCE.
using ParameterValue = std::variant<std::monostate, std::string, std::vector<std::string>, ClassNameValue,
                                    ObjectPath, Instance, UnreadValue>;

struct Parameter {
    std::string name;
    ParameterValue value;
};

class CimXmlRequest {
  public:
    // Throws HttpError when the text is no request that this server can answer in CIM-XML.
    explicit CimXmlRequest(const std::string& text);
    CimXmlRequest(const CimXmlRequest&) = delete;
    CimXmlRequest& operator=(const CimXmlRequest&) = delete;

    std::string messageId;
    bool typedKeys = false; // the client's DTD is recent enough to know the types of keys (2.3)
    bool extrinsic = false; // a method of a class, not an operation of the server
    std::string method;
    std::string nameSpace; // of an operation

    // Throws HttpError for elements out of place, CimError for values that are not of their type.
    std::vector<Parameter> parameters() const;

  private:
    XmlElement document_;
    const XmlElement* call_ = nullptr; // IMETHODCALL or METHODCALL in it
};

// References in references in references: as deep as clients really nest them, and a good deal more.
constexpr unsigned DEEPEST_REFERENCE = 32;

} // namespace cimserver

#endif
