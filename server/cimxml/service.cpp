#include "server/cimxml/service.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "server/cimxml/http_binding.h"
#include "server/model/text.h"

namespace cimserver {

struct CimXmlService::Call {
    ResponseFrame frame;
    std::string nameSpace;
    OperationParameters parameters;
    CallContext context;
    WriteOptions options;
    std::string target; // what the operation is about, for the report

    ObjectPath class_path(std::string className) {
        target = className;
        return {{}, nameSpace, std::move(className), {}};
    }
    ObjectPath about(ObjectPath path) {
        target = path.to_string();
        return path;
    }
    void set_flags(CMPIFlags flags) {
        context.entries.set(CMPIInvocationFlags, Value::integer(CMPI_uint32, std::uint64_t{flags}));
    }
    // The parameters that operations returning instances have in common. IncludeQualifiers asks for something
    // that only class declarations could give.
    void take_instance_options() {
        CMPIFlags flags = 0;
        if (parameters.flag("IncludeQualifiers", false)) flags |= CMPI_FLAG_IncludeQualifiers;
        options.classOrigin = parameters.flag("IncludeClassOrigin", false);
        if (options.classOrigin) flags |= CMPI_FLAG_IncludeClassOrigin;
        options.wanted = parameters.property_list();
        set_flags(flags | localFlags);
    }
    // LocalOnly and DeepInheritance of the operations that have them, both true unless told otherwise.
    void take_inheritance_options(bool deep) {
        if (parameters.flag("LocalOnly", true)) localFlags |= CMPI_FLAG_LocalOnly;
        if (deep && parameters.flag("DeepInheritance", true)) localFlags |= CMPI_FLAG_DeepInheritance;
    }
    AssociatorFilter associator_filter() {
        return {parameters.optional_class_name("AssocClass"), parameters.optional_class_name("ResultClass"),
                parameters.optional_text("Role"), parameters.optional_text("ResultRole")};
    }
    ReferenceFilter reference_filter() {
        return {parameters.optional_class_name("ResultClass"), parameters.optional_text("Role")};
    }

    CMPIFlags localFlags = 0;
};

namespace {

// "SELECT ... FROM Class ...": the provider is called for that class.
std::string class_of_query(const std::string& query) {
    std::istringstream words(query);
    for (std::string word; words >> word;) {
        if (same_name(word, "FROM") && words >> word) return word;
    }
    return {};
}

} // namespace

// Runs an operation into the answer. `run` gets the sink that its objects go to.
template <typename Run>
std::string CimXmlService::respond(Call& call, ObjectForm form, Run run) const {
    call.parameters.expect_no_more();
    ObjectWriter writer(form, call.options);
    const Outcome outcome = run(writer);
    report(call, outcome);
    if (!outcome.ok()) throw CimError{outcome.code, outcome.message};
    return result_response(call.frame, writer.take());
}

HttpReply CimXmlService::answer(const HttpRequest& request) const {
    try {
        const CimHeaders headers(request);
        const CimXmlRequest message(request.body);
        headers.expect_to_match(message);
        return headers.reply(run_operation(request, message));
    } catch (const HttpError& error) {
        if (settings_.report) {
            settings_.report("refused with HTTP " + std::to_string(error.status) + " " + error.cimError +
                             ": " + error.detail);
        }
        return error_reply(error);
    }
}

std::string CimXmlService::run_operation(const HttpRequest& http, const CimXmlRequest& request) const {
    const ResponseFrame frame{request.messageId, request.method, request.extrinsic, request.typedKeys};
    try {
        const Handler handler = request.extrinsic ? nullptr : handler_of(request.method);
        if (handler == nullptr) throw CimError{CMPI_RC_ERR_NOT_SUPPORTED, request.method + " is not served"};
        if (!serves_name_space(request.nameSpace))
            throw CimError{CMPI_RC_ERR_INVALID_NAMESPACE, request.nameSpace};

        Call call{frame, request.nameSpace, OperationParameters(request.parameters()), {}, {}, {}};
        call.options.host = settings_.host;
        call.options.nameSpace = request.nameSpace;
        call.options.typedKeys = request.typedKeys;
        call.set_flags(0);
        call.context.entries.set(CMPIInitNameSpace, Value::text(request.nameSpace));
        call.context.entries.set(CMPIPrincipal, Value::text(""));
        if (const std::string* language = http.header("Accept-Language")) {
            call.context.entries.set(CMPIAcceptLanguage, Value::text(*language));
        }
        return (this->*handler)(call);
    } catch (const CimError& error) {
        return error_response(frame, error);
    }
}

CimXmlService::Handler CimXmlService::handler_of(std::string_view method) {
    struct Entry {
        std::string_view method;
        Handler handler;
    };
    constexpr std::array<Entry, 11> OPERATIONS = {{
        {"EnumerateInstances", &CimXmlService::enumerate_instances},
        {"EnumerateInstanceNames", &CimXmlService::enumerate_instance_names},
        {"GetInstance", &CimXmlService::get_instance},
        {"CreateInstance", &CimXmlService::create_instance},
        {"ModifyInstance", &CimXmlService::modify_instance},
        {"DeleteInstance", &CimXmlService::delete_instance},
        {"ExecQuery", &CimXmlService::exec_query},
        {"Associators", &CimXmlService::associators},
        {"AssociatorNames", &CimXmlService::associator_names},
        {"References", &CimXmlService::references},
        {"ReferenceNames", &CimXmlService::reference_names},
    }};
    for (const Entry& entry : OPERATIONS) {
        if (same_name(entry.method, method)) return entry.handler;
    }
    return nullptr;
}

bool CimXmlService::serves_name_space(const std::string& nameSpace) const {
    return contains_name(settings_.nameSpaces, nameSpace);
}

void CimXmlService::report(const Call& call, const Outcome& outcome) const {
    if (!settings_.report) return;
    std::string line = call.frame.method + " " + call.target + ": ";
    line += outcome.ok() ? std::to_string(outcome.delivered) + " returned"
                         : cim_error_name(cim_error_code(outcome.code));
    if (outcome.ignored != 0)
        line += ", " + std::to_string(outcome.ignored) + " that were no objects ignored";
    if (!outcome.message.empty()) line += " (" + outcome.message + ")";
    settings_.report(line);
}

std::string CimXmlService::enumerate_instances(Call& call) const {
    const ObjectPath path = call.class_path(call.parameters.class_name("ClassName"));
    call.take_inheritance_options(true);
    call.take_instance_options();
    return respond(call, ObjectForm::NamedInstance, [&](ResultSink& sink) {
        return operations_.enumerate_instances(call.context, path, call.options.wanted, sink);
    });
}

std::string CimXmlService::enumerate_instance_names(Call& call) const {
    const ObjectPath path = call.class_path(call.parameters.class_name("ClassName"));
    return respond(call, ObjectForm::InstanceName, [&](ResultSink& sink) {
        return operations_.enumerate_instance_names(call.context, path, sink);
    });
}

std::string CimXmlService::get_instance(Call& call) const {
    const ObjectPath path = call.about(call.parameters.instance_name("InstanceName"));
    call.take_inheritance_options(false);
    call.take_instance_options();
    return respond(call, ObjectForm::Instance, [&](ResultSink& sink) {
        return operations_.get_instance(call.context, path, call.options.wanted, sink);
    });
}

std::string CimXmlService::create_instance(Call& call) const {
    const Instance instance = call.parameters.instance("NewInstance");
    call.about(instance.path);
    return respond(call, ObjectForm::InstanceName, [&](ResultSink& sink) {
        return operations_.create_instance(call.context, instance, sink);
    });
}

std::string CimXmlService::modify_instance(Call& call) const {
    const Instance instance = call.parameters.instance("ModifiedInstance");
    call.about(instance.path);
    call.parameters.flag("IncludeQualifiers", true);
    const PropertyNames wanted = call.parameters.property_list();
    respond(call, ObjectForm::Instance,
            [&](ResultSink&) { return operations_.modify_instance(call.context, instance, wanted); });
    return empty_response(call.frame);
}

std::string CimXmlService::delete_instance(Call& call) const {
    const ObjectPath path = call.about(call.parameters.instance_name("InstanceName"));
    respond(call, ObjectForm::Instance,
            [&](ResultSink&) { return operations_.delete_instance(call.context, path); });
    return empty_response(call.frame);
}

std::string CimXmlService::exec_query(Call& call) const {
    const std::string language = call.parameters.text("QueryLanguage");
    const std::string query = call.parameters.text("Query");
    const ObjectPath path = call.class_path(class_of_query(query));
    return respond(call, ObjectForm::Object, [&](ResultSink& sink) {
        return operations_.exec_query(call.context, path, language, query, sink);
    });
}

std::string CimXmlService::associators(Call& call) const {
    const ObjectPath source = call.about(call.parameters.object_name("ObjectName"));
    const AssociatorFilter filter = call.associator_filter();
    call.take_instance_options();
    return respond(call, ObjectForm::ObjectWithPath, [&](ResultSink& sink) {
        return operations_.associators(call.context, source, filter, call.options.wanted, sink);
    });
}

std::string CimXmlService::associator_names(Call& call) const {
    const ObjectPath source = call.about(call.parameters.object_name("ObjectName"));
    const AssociatorFilter filter = call.associator_filter();
    return respond(call, ObjectForm::ObjectPath, [&](ResultSink& sink) {
        return operations_.associator_names(call.context, source, filter, sink);
    });
}

std::string CimXmlService::references(Call& call) const {
    const ObjectPath source = call.about(call.parameters.object_name("ObjectName"));
    const ReferenceFilter filter = call.reference_filter();
    call.take_instance_options();
    return respond(call, ObjectForm::ObjectWithPath, [&](ResultSink& sink) {
        return operations_.references(call.context, source, filter, call.options.wanted, sink);
    });
}

std::string CimXmlService::reference_names(Call& call) const {
    const ObjectPath source = call.about(call.parameters.object_name("ObjectName"));
    const ReferenceFilter filter = call.reference_filter();
    return respond(call, ObjectForm::ObjectPath, [&](ResultSink& sink) {
        return operations_.reference_names(call.context, source, filter, sink);
    });
}

} // namespace cimserver
