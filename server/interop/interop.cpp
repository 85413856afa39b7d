#include "server/interop/interop.h"

#include <cmpidt.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <utility>

#include "server/interop/fixed_objects.h"
#include "server/interop/interop_mof.h"
#include "server/model/cim_model.h"
#include "server/model/perform.h"
#include "server/model/text.h"
#include "server/provider/registrations.h"
#include "server/schema/class_schema.h"
#include "server/schema/mof_parser.h"

namespace cimserver {

namespace {

using NameSpaceNames = std::vector<std::string>;
using Properties = std::vector<std::pair<std::string_view, Value>>;

constexpr std::string_view SERVER_NAME = "kesto-cimserver";
constexpr std::string_view INTEROP_NAMES[] = {"interop", "root/interop"};

constexpr std::string_view KEY_QUALIFIER =
    "Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);";
constexpr std::string_view NAMESPACE_CLASS = "class __Namespace { [Key] string Name; };";

// Values of the classes' enumerations (interop.mof).
constexpr std::uint64_t CLASS_INFO_UNKNOWN = 0;
constexpr std::uint64_t CLASS_TYPE_CIM = 2;
constexpr std::uint64_t MECHANISM_CIM_XML = 2;
constexpr std::uint64_t PROFILE_BASIC_READ = 2;
constexpr std::uint64_t PROFILE_ASSOCIATION_TRAVERSAL = 6;
constexpr std::uint64_t PROFILE_PULLED_READ = 10;
constexpr std::uint64_t PROFILE_PULLED_READ_COUNT = 11;
constexpr std::uint64_t AUTHENTICATION_NONE = 2;
constexpr std::uint64_t AUTHENTICATION_BASIC = 3;
constexpr std::uint64_t NOT_ADVERTISED = 2;
constexpr std::uint64_t CIM_XML_1_0 = 1;

Value text(std::string_view value) {
    return Value::text(std::string(value));
}

Value number(std::uint64_t value) {
    return Value::integer(CMPI_uint16, value);
}

Value numbers(std::initializer_list<std::uint64_t> values) {
    std::vector<Value> elements;
    for (const std::uint64_t value : values) {
        elements.push_back(number(value));
    }
    return {CMPI_uint16A, std::move(elements)};
}

Instance object(const std::string& className, const Properties& keys, const Properties& others = {}) {
    Instance made;
    made.path.className = className;
    for (const auto& [name, value] : keys) {
        made.path.keys.set(name, value);
        made.set(name, value);
    }
    for (const auto& [name, value] : others) {
        made.set(name, value);
    }
    return made;
}

Instance association(const std::string& className, const Instance& antecedent, const Instance& dependent) {
    return object(className, {{"Antecedent", Value::reference(antecedent.path)},
                              {"Dependent", Value::reference(dependent.path)}});
}

// The keys of what belongs to the machine.
Properties keys_in_system(const ServerDescription& server, std::string_view className,
                          std::string_view name) {
    return {{"SystemCreationClassName", text("CIM_ComputerSystem")},
            {"SystemName", text(server.systemName)},
            {"CreationClassName", text(className)},
            {"Name", text(name)}};
}

Instance object_manager(const ServerDescription& server) {
    constexpr auto CLASS = "CIM_ObjectManager";
    return object(CLASS, keys_in_system(server, CLASS, SERVER_NAME),
                  {{"ElementName", text(SERVER_NAME)},
                   {"Caption", text("Embedded CIM server")},
                   {"Description", text("Embedded CIM server, version " CIMSERVER_VERSION)},
                   {"Started", Value::boolean(true)},
                   {"GatherStatisticalData", Value::boolean(false)}});
}

Instance communication_mechanism(const ServerDescription& server) {
    constexpr auto CLASS = "CIM_CIMXMLCommunicationMechanism";
    const std::uint64_t authentication = server.asksForUsers ? AUTHENTICATION_BASIC : AUTHENTICATION_NONE;
    return object(CLASS, keys_in_system(server, CLASS, "CIM-XML"),
                  {{"ElementName", text("CIM-XML over HTTP")},
                   {"CommunicationMechanism", number(MECHANISM_CIM_XML)},
                   {"FunctionalProfilesSupported", numbers({PROFILE_BASIC_READ, PROFILE_ASSOCIATION_TRAVERSAL,
                                                            PROFILE_PULLED_READ, PROFILE_PULLED_READ_COUNT})},
                   {"MultipleOperationsSupported", Value::boolean(false)},
                   {"AuthenticationMechanismsSupported", numbers({authentication})},
                   {"AdvertiseTypes", numbers({NOT_ADVERTISED})},
                   {"Version", text("1.0")},
                   {"CIMXMLProtocolVersion", number(CIM_XML_1_0)},
                   {"CIMValidated", Value::boolean(false)}});
}

Instance name_space_object(const ServerDescription& server, const std::string& name) {
    constexpr auto CLASS = "CIM_Namespace";
    return object(CLASS,
                  {{"SystemCreationClassName", text("CIM_ComputerSystem")},
                   {"SystemName", text(server.systemName)},
                   {"ObjectManagerCreationClassName", text("CIM_ObjectManager")},
                   {"ObjectManagerName", text(SERVER_NAME)},
                   {"CreationClassName", text(CLASS)},
                   {"Name", text(name)}},
                  {{"ElementName", text(name)},
                   {"ClassInfo", number(CLASS_INFO_UNKNOWN)},
                   {"ClassType", number(CLASS_TYPE_CIM)}});
}

Perform interop_objects(const ServerDescription& server, const NameSpaceNames& names) {
    const Instance manager = object_manager(server);
    const Instance mechanism = communication_mechanism(server);
    std::vector<Instance> objects = {manager, mechanism,
                                     association("CIM_CommMechanismForManager", manager, mechanism)};
    for (const std::string& name : names) {
        objects.push_back(name_space_object(server, name));
        const Instance added = objects.back();
        objects.push_back(association("CIM_NamespaceInManager", manager, added));
    }
    return serve_fixed_objects(std::move(objects));
}

void serve_interop_objects(ServedNameSpace& nameSpace, const Perform& provider) {
    for (const char* className : {"CIM_Namespace", "CIM_ObjectManager", "CIM_CIMXMLCommunicationMechanism"}) {
        nameSpace.classes.push_back({className, provider, true, false});
    }
    for (const char* className : {"CIM_NamespaceInManager", "CIM_CommMechanismForManager"}) {
        nameSpace.classes.push_back({className, provider, true, true});
    }
}

// Names the namespaces directly below this one as they are called in it.
void serve_names_below(ServedNameSpace& nameSpace, const NameSpaceNames& names) {
    constexpr auto CLASS = "__Namespace";
    if (nameSpace.schema.find(CLASS) != nullptr) return; // the provider's own
    if (nameSpace.schema.qualifier_type("Key") == nullptr) parse_mof(KEY_QUALIFIER, CLASS, nameSpace.schema);
    parse_mof(NAMESPACE_CLASS, CLASS, nameSpace.schema);

    const std::string above = nameSpace.name + "/";
    std::vector<Instance> below;
    for (const std::string& name : names) {
        const bool isBelow = same_name(std::string_view(name).substr(0, above.size()), above) &&
                             name.find('/', above.size()) == std::string::npos;
        if (isBelow) below.push_back(object(CLASS, {{"Name", text(name.substr(above.size()))}}));
    }
    nameSpace.classes.push_back({CLASS, serve_fixed_objects(std::move(below)), true, false});
}

NameSpaceNames names_of(const std::vector<ServedNameSpace>& served) {
    NameSpaceNames names;
    for (const ServedNameSpace& nameSpace : served) {
        names.push_back(nameSpace.name);
    }
    return names;
}

ServedNameSpace& add(std::vector<ServedNameSpace>& served, const std::string& name) {
    return served.emplace_back(ServedNameSpace{name, ClassSchema(name), {}});
}

// root for root/cimv2.
void add_those_above(std::vector<ServedNameSpace>& served) {
    NameSpaceNames names = names_of(served);
    for (const std::string& name : names_of(served)) {
        for (auto slash = name.find('/'); slash != std::string::npos; slash = name.find('/', slash + 1)) {
            const std::string above = name.substr(0, slash);
            if (contains_name(names, above)) continue;
            add(served, above);
            names.push_back(above);
        }
    }
}

} // namespace

void serve_interop(std::vector<ServedNameSpace>& served, const ServerDescription& server) {
    for (const std::string_view name : INTEROP_NAMES) {
        if (contains_name(names_of(served), name)) {
            throw RegistrationError("the namespace " + std::string(name) + " is the server's own");
        }
        parse_mof(INTEROP_MOF, "interop.mof", add(served, std::string(name)).schema);
    }
    add_those_above(served);

    const NameSpaceNames names = names_of(served);
    const Perform objects = interop_objects(server, names);
    for (ServedNameSpace& nameSpace : served) {
        const bool isInterop =
            std::any_of(std::begin(INTEROP_NAMES), std::end(INTEROP_NAMES),
                        [&nameSpace](std::string_view name) { return same_name(name, nameSpace.name); });
        if (isInterop) serve_interop_objects(nameSpace, objects);
        serve_names_below(nameSpace, names);
    }
}

} // namespace cimserver
