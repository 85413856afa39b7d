#include "server/cimxml/operations.h"

#include <cmpidt.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>

#include "server/cimxml/errors.h"
#include "server/model/text.h"

namespace cimserver {

namespace {

void read_class(OperationParameters& parameters, Request& request) {
    request.target.className = parameters.class_name("ClassName");
}

void read_instance_name(OperationParameters& parameters, Request& request) {
    request.target = parameters.instance_name("InstanceName");
}

void read_properties(OperationParameters& parameters, Request& request) {
    request.includeClassOrigin = parameters.flag("IncludeClassOrigin", false, CMPI_FLAG_IncludeClassOrigin);
    request.wanted = parameters.property_list();
}

// What operations that return instances or classes have in common. Qualifiers belong to a class unless the
// client does without, and to an instance only if it asks for them.
void read_extent(OperationParameters& parameters, Request& request, bool qualifiersByDefault = false) {
    request.includeQualifiers =
        parameters.flag("IncludeQualifiers", qualifiersByDefault, CMPI_FLAG_IncludeQualifiers);
    read_properties(parameters, request);
}

// By the letter, instances come without what they inherit unless the client says otherwise. No client means
// that by saying nothing, and no server obeys it.
void read_local_only_of_instances(OperationParameters& parameters, Request& request) {
    const bool given = parameters.is_given("LocalOnly");
    request.localOnly = parameters.flag("LocalOnly", true, CMPI_FLAG_LocalOnly) && given;
}

void read_depth(OperationParameters& parameters, Request& request) {
    request.deepInheritance = parameters.flag("DeepInheritance", true, CMPI_FLAG_DeepInheritance);
}

void read_enumeration(OperationParameters& parameters, Request& request) {
    read_class(parameters, request);
    read_local_only_of_instances(parameters, request);
    read_depth(parameters, request);
    read_extent(parameters, request);
}

void read_get(OperationParameters& parameters, Request& request) {
    read_instance_name(parameters, request);
    read_local_only_of_instances(parameters, request);
    read_extent(parameters, request);
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

void read_source(OperationParameters& parameters, Request& request) {
    OperationParameters::ObjectName source = parameters.object_name("ObjectName");
    // Some clients name a class as an instance without keys.
    request.ofClass = source.ofClass || source.path.keys.empty();
    if (request.ofClass) {
        request.target.className = std::move(source.path.className);
    } else {
        request.target = std::move(source.path);
    }
}

void read_associator_filters(OperationParameters& parameters, Request& request) {
    request.associationClass = parameters.optional_class_name("AssocClass");
    request.resultClass = parameters.optional_class_name("ResultClass");
    request.role = parameters.optional_text("Role");
    request.resultRole = parameters.optional_text("ResultRole");
}

void read_associator_names(OperationParameters& parameters, Request& request) {
    read_source(parameters, request);
    read_associator_filters(parameters, request);
}

void read_associators(OperationParameters& parameters, Request& request) {
    read_associator_names(parameters, request);
    read_extent(parameters, request);
}

// The result of a traversal to references is the association itself.
void read_reference_filters(OperationParameters& parameters, Request& request) {
    request.associationClass = parameters.optional_class_name("ResultClass");
    request.role = parameters.optional_text("Role");
}

void read_reference_names(OperationParameters& parameters, Request& request) {
    read_source(parameters, request);
    read_reference_filters(parameters, request);
}

void read_references(OperationParameters& parameters, Request& request) {
    read_reference_names(parameters, request);
    read_extent(parameters, request);
}

void read_get_property(OperationParameters& parameters, Request& request) {
    read_instance_name(parameters, request);
    request.wanted = {parameters.text("PropertyName")};
}

void read_get_class(OperationParameters& parameters, Request& request) {
    read_class(parameters, request);
    request.localOnly = parameters.flag("LocalOnly", true);
    read_extent(parameters, request, true);
}

void read_class_names(OperationParameters& parameters, Request& request) {
    request.target.className = parameters.optional_class_name("ClassName").value_or("");
    request.deepInheritance = parameters.flag("DeepInheritance", false);
}

void read_classes(OperationParameters& parameters, Request& request) {
    read_class_names(parameters, request);
    request.localOnly = parameters.flag("LocalOnly", true);
    request.includeQualifiers = parameters.flag("IncludeQualifiers", true);
    request.includeClassOrigin = parameters.flag("IncludeClassOrigin", false);
}

void read_qualifier_name(OperationParameters& parameters, Request& request) {
    request.qualifier = parameters.text("QualifierName");
}

void read_open_enumeration(OperationParameters& parameters, Request& request) {
    read_class(parameters, request);
    read_depth(parameters, request);
    read_properties(parameters, request);
}

void read_open_associator_paths(OperationParameters& parameters, Request& request) {
    read_instance_name(parameters, request);
    read_associator_filters(parameters, request);
}

void read_open_associators(OperationParameters& parameters, Request& request) {
    read_open_associator_paths(parameters, request);
    read_properties(parameters, request);
}

void read_open_reference_paths(OperationParameters& parameters, Request& request) {
    read_instance_name(parameters, request);
    read_reference_filters(parameters, request);
}

void read_open_references(OperationParameters& parameters, Request& request) {
    read_open_reference_paths(parameters, request);
    read_properties(parameters, request);
}

// What a query selects is not worked out here, so there is no class of it to describe.
void read_open_query(OperationParameters& parameters, Request& request) {
    request.queryLanguage = parameters.text("FilterQueryLanguage");
    request.query = parameters.text("FilterQuery");
    request.target.className = class_of_query(request.query);
    if (parameters.flag("ReturnQueryResultClass", false)) {
        throw CimError(CMPI_RC_ERR_NOT_SUPPORTED, "there is no class of a query's result");
    }
}

void read_nothing(OperationParameters&, Request&) {}

constexpr bool OPENS = true;

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
    {"GetProperty", Operation::GetProperty, ObjectForm::PropertyValue, read_get_property},
    {"GetClass", Operation::GetClass, ObjectForm::Class, read_get_class},
    {"EnumerateClasses", Operation::EnumerateClasses, ObjectForm::Class, read_classes},
    {"EnumerateClassNames", Operation::EnumerateClassNames, ObjectForm::ClassName, read_class_names},
    {"GetQualifier", Operation::GetQualifier, ObjectForm::Qualifier, read_qualifier_name},
    {"EnumerateQualifiers", Operation::EnumerateQualifiers, ObjectForm::Qualifier, read_nothing},
    {"OpenEnumerateInstances", Operation::EnumerateInstances, ObjectForm::InstanceWithPath,
     read_open_enumeration, OPENS},
    {"OpenEnumerateInstancePaths", Operation::EnumerateInstanceNames, ObjectForm::InstancePath, read_class,
     OPENS},
    {"OpenAssociatorInstances", Operation::Associators, ObjectForm::InstanceWithPath, read_open_associators,
     OPENS},
    {"OpenAssociatorInstancePaths", Operation::AssociatorNames, ObjectForm::InstancePath,
     read_open_associator_paths, OPENS},
    {"OpenReferenceInstances", Operation::References, ObjectForm::InstanceWithPath, read_open_references,
     OPENS},
    {"OpenReferenceInstancePaths", Operation::ReferenceNames, ObjectForm::InstancePath,
     read_open_reference_paths, OPENS},
    {"OpenQueryInstances", Operation::ExecQuery, ObjectForm::Instance, read_open_query, OPENS},
};

} // namespace

const CimXmlOperation* find_operation(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(OPERATIONS), std::end(OPERATIONS),
                     [name](const CimXmlOperation& operation) { return same_name(operation.name, name); });
    return found != std::end(OPERATIONS) ? found : nullptr;
}

} // namespace cimserver
