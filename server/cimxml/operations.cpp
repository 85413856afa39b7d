#include "server/cimxml/operations.h"

#include <cmpidt.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>

#include "server/model/text.h"

namespace cimserver {

namespace {

void read_class(OperationParameters& parameters, Request& request) {
    request.target.className = parameters.class_name("ClassName");
}

void read_instance_name(OperationParameters& parameters, Request& request) {
    request.target = parameters.instance_name("InstanceName");
}

// What operations that return instances have in common. IncludeQualifiers asks for something that only class
// declarations could give.
void read_instance_options(OperationParameters& parameters, Request& request) {
    parameters.flag("IncludeQualifiers", false, CMPI_FLAG_IncludeQualifiers);
    parameters.flag("IncludeClassOrigin", false, CMPI_FLAG_IncludeClassOrigin);
    request.wanted = parameters.property_list();
}

void read_enumeration(OperationParameters& parameters, Request& request) {
    read_class(parameters, request);
    parameters.flag("LocalOnly", true, CMPI_FLAG_LocalOnly);
    parameters.flag("DeepInheritance", true, CMPI_FLAG_DeepInheritance);
    read_instance_options(parameters, request);
}

void read_get(OperationParameters& parameters, Request& request) {
    read_instance_name(parameters, request);
    parameters.flag("LocalOnly", true, CMPI_FLAG_LocalOnly);
    read_instance_options(parameters, request);
}

void read_creation(OperationParameters& parameters, Request& request) {
    request.instance = parameters.instance("NewInstance");
    request.target = request.instance.path;
}

void read_modification(OperationParameters& parameters, Request& request) {
    request.instance = parameters.instance("ModifiedInstance");
    request.target = request.instance.path;
    parameters.flag("IncludeQualifiers", true);
    request.wanted = parameters.property_list();
}

// "SELECT ... FROM Class ...": the provider is called for that class.
std::string class_of_query(const std::string& query) {
    std::istringstream words(query);
    for (std::string word; words >> word;) {
        if (same_name(word, "FROM") && words >> word) return word;
    }
    return {};
}

void read_query(OperationParameters& parameters, Request& request) {
    request.queryLanguage = parameters.text("QueryLanguage");
    request.query = parameters.text("Query");
    request.target.className = class_of_query(request.query);
}

void read_associator_names(OperationParameters& parameters, Request& request) {
    request.target = parameters.object_name("ObjectName");
    request.associationClass = parameters.optional_class_name("AssocClass");
    request.resultClass = parameters.optional_class_name("ResultClass");
    request.role = parameters.optional_text("Role");
    request.resultRole = parameters.optional_text("ResultRole");
}

void read_associators(OperationParameters& parameters, Request& request) {
    read_associator_names(parameters, request);
    read_instance_options(parameters, request);
}

// The result of a traversal to references is the association itself.
void read_reference_names(OperationParameters& parameters, Request& request) {
    request.target = parameters.object_name("ObjectName");
    request.associationClass = parameters.optional_class_name("ResultClass");
    request.role = parameters.optional_text("Role");
}

void read_references(OperationParameters& parameters, Request& request) {
    read_reference_names(parameters, request);
    read_instance_options(parameters, request);
}

constexpr CimXmlOperation OPERATIONS[] = {
    {"EnumerateInstances", Operation::EnumerateInstances, ObjectForm::NamedInstance, read_enumeration},
    {"EnumerateInstanceNames", Operation::EnumerateInstanceNames, ObjectForm::InstanceName, read_class},
    {"GetInstance", Operation::GetInstance, ObjectForm::Instance, read_get},
    {"CreateInstance", Operation::CreateInstance, ObjectForm::InstanceName, read_creation},
    {"ModifyInstance", Operation::ModifyInstance, ObjectForm::Nothing, read_modification},
    {"DeleteInstance", Operation::DeleteInstance, ObjectForm::Nothing, read_instance_name},
    {"ExecQuery", Operation::ExecQuery, ObjectForm::Object, read_query},
    {"Associators", Operation::Associators, ObjectForm::ObjectWithPath, read_associators},
    {"AssociatorNames", Operation::AssociatorNames, ObjectForm::ObjectPath, read_associator_names},
    {"References", Operation::References, ObjectForm::ObjectWithPath, read_references},
    {"ReferenceNames", Operation::ReferenceNames, ObjectForm::ObjectPath, read_reference_names},
};

} // namespace

const CimXmlOperation* find_operation(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(OPERATIONS), std::end(OPERATIONS),
                     [name](const CimXmlOperation& operation) { return same_name(operation.name, name); });
    return found != std::end(OPERATIONS) ? found : nullptr;
}

} // namespace cimserver
