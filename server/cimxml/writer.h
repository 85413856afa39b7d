// CIM objects as CIM-XML, and the response messages around them.
#ifndef KESTO_SERVER_CIMXML_WRITER_H
#define KESTO_SERVER_CIMXML_WRITER_H

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "server/cimxml/errors.h"
#include "server/cimxml/xml_writer.h"
#include "server/model/cim_class.h"
#include "server/model/cim_model.h"
#include "server/model/result_sink.h"
#include "server/model/text.h"
#include "server/schema/class_schema.h"

namespace cimserver {

struct WriteOptions {
    const ClassSchema& schema; // of the namespace
    std::string host;          // of the server, as the client reached it
    std::string nameSpace;     // of objects whose path names none
    bool keepHosts = false;    // where the provider names one
    bool typedKeys = false;
    bool localOnly = false; // of classes
    bool qualifiers = false;
    bool classOrigin = false;
    std::optional<NameSet> wanted; // without it, all properties
};

// The element that an operation returns its objects in.
enum class ObjectForm {
    Instance,         // INSTANCE
    NamedInstance,    // VALUE.NAMEDINSTANCE
    InstanceName,     // INSTANCENAME
    ObjectWithPath,   // VALUE.OBJECTWITHPATH
    ObjectPath,       // OBJECTPATH
    Object,           // VALUE.OBJECT
    InstanceWithPath, // VALUE.INSTANCEWITHPATH
    InstancePath,     // INSTANCEPATH
    PropertyValue,    // VALUE, VALUE.ARRAY or VALUE.REFERENCE of the one property that is wanted
    Class,            // CLASS
    ClassName,        // CLASSNAME
    ClassWithPath,    // VALUE.OBJECTWITHPATH of a class
    ClassPath,        // OBJECTPATH of a class
    Qualifier,        // QUALIFIER.DECLARATION
    Nothing,          // the operation returns none
};

// Writes each object into the answer as it comes. A form that is a name takes names only, the others take
// instances only; anything else a provider returns there is no result of that operation.
class ObjectWriter : public ResultSink {
  public:
    ObjectWriter(ObjectForm form, WriteOptions options) : form_(form), options_(std::move(options)) {}
    void deliver(const Instance& instance) override;
    void deliver(const ObjectPath& path) override;
    void deliver_class(const ClassDeclaration& declared) override;
    void deliver_qualifier(const QualifierType& declared) override;
    std::size_t length() const { return xml_.result().size(); } // of what has been written
    std::string take() { return xml_.take(); }

  private:
    void instance(const Instance& instance);
    void property(const NamedValue& property, const PropertyDeclaration* declared);
    void values(const Value& value);
    void scalar_element(const Value& value);
    void instance_name(const ObjectPath& path);
    void instance_path(const ObjectPath& path);
    void class_path(const ObjectPath& path);
    void class_name(const ObjectPath& path);
    void declaration(const ClassDeclaration& declared);
    void reference(const ObjectPath& path);
    bool shows_host(const ObjectPath& path) const { return options_.keepHosts && !path.host.empty(); }
    void name_space_path(const ObjectPath& path);
    void local_name_space(const std::string& nameSpace);

    ObjectForm form_;
    WriteOptions options_;
    XmlWriter xml_;
};

// What an operation returns, as the content of its response.
std::string return_value(const std::string& objects);

// Complete response messages.
struct ResponseFrame {
    std::string messageId;
    std::string method;
    bool extrinsic = false;
    bool typedKeys = false;
};
std::string response(const ResponseFrame& frame, const std::string& content); // which is XML already
std::string error_response(const ResponseFrame& frame, const CimError& error);

} // namespace cimserver

#endif
