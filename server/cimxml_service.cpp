#include "server/cimxml_service.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "server/cimxml_http.h"
#include "server/text.h"

namespace cimserver {

struct CimXmlService::Call {
    ResponseFrame frame;
    std::string nameSpace;
    OperationParameters parameters;
    CallContext context;
    WriteOptions options;
    std::string target; // what the operation is about, for the report

    ObjectPath classPath(std::string className) {
        target = className;
        return {{}, nameSpace, std::move(className), {}};
    }
    ObjectPath about(ObjectPath path) {
        target = path.toString();
        return path;
    }
    void setFlags(CMPIFlags flags) {
        context.entries.set(CMPIInvocationFlags, Value::integer(CMPI_uint32, std::uint64_t{flags}));
    }
    // The parameters that operations returning instances have in common. IncludeQualifiers asks for something
    // that only class declarations could give.
    void takeInstanceOptions() {
        CMPIFlags flags = 0;
        if (parameters.flag("IncludeQualifiers", false)) flags |= CMPI_FLAG_IncludeQualifiers;
        options.classOrigin = parameters.flag("IncludeClassOrigin", false);
        if (options.classOrigin) flags |= CMPI_FLAG_IncludeClassOrigin;
        options.wanted = parameters.propertyList();
        setFlags(flags | localFlags);
    }
    // LocalOnly and DeepInheritance of the operations that have them, both true unless told otherwise.
    void takeInheritanceOptions(bool deep) {
        if (parameters.flag("LocalOnly", true)) localFlags |= CMPI_FLAG_LocalOnly;
        if (deep && parameters.flag("DeepInheritance", true)) localFlags |= CMPI_FLAG_DeepInheritance;
    }
    AssociatorFilter associatorFilter() {
        return {parameters.optionalClassName("AssocClass"), parameters.optionalClassName("ResultClass"),
                parameters.optionalText("Role"), parameters.optionalText("ResultRole")};
    }
    ReferenceFilter referenceFilter() {
        return {parameters.optionalClassName("ResultClass"), parameters.optionalText("Role")};
    }

    CMPIFlags localFlags = 0;
};

namespace {

// "SELECT ... FROM Class ...": the provider is called for that class.
std::string classOfQuery(const std::string& query) {
    std::istringstream words(query);
    for (std::string word; words >> word;) {
        if (sameName(word, "FROM") && words >> word) return word;
    }
    return {};
}

} // namespace

// Runs an operation into the answer. `run` gets the sink that its objects go to.
template <typename Run>
std::string CimXmlService::respond(Call& call, ObjectForm form, Run run) const {
    call.parameters.expectNoMore();
    ObjectWriter writer(form, call.options);
    const Outcome outcome = run(writer);
    report(call, outcome);
    if (!outcome.ok()) throw CimError{outcome.code, outcome.message};
    return resultResponse(call.frame, writer.take());
}

HttpReply CimXmlService::answer(const HttpRequest& request) const {
    try {
        const CimHeaders headers(request);
        const CimXmlRequest message(request.body);
        headers.expectToMatch(message);
        return headers.reply(runOperation(request, message));
    } catch (const HttpError& error) {
        if (settings_.report) {
            settings_.report("refused with HTTP " + std::to_string(error.status) + " " + error.cimError +
                             ": " + error.detail);
        }
        return errorReply(error);
    }
}

std::string CimXmlService::runOperation(const HttpRequest& http, const CimXmlRequest& request) const {
    const ResponseFrame frame{request.messageId, request.method, request.extrinsic, request.typedKeys};
    try {
        const Handler handler = request.extrinsic ? nullptr : handlerOf(request.method);
        if (!handler) throw CimError{CMPI_RC_ERR_NOT_SUPPORTED, request.method + " is not served"};
        if (!servesNameSpace(request.nameSpace))
            throw CimError{CMPI_RC_ERR_INVALID_NAMESPACE, request.nameSpace};

        Call call{frame, request.nameSpace, OperationParameters(request.parameters()), {}, {}, {}};
        call.options.host = settings_.host;
        call.options.nameSpace = request.nameSpace;
        call.options.typedKeys = request.typedKeys;
        call.setFlags(0);
        call.context.entries.set(CMPIInitNameSpace, Value::text(request.nameSpace));
        call.context.entries.set(CMPIPrincipal, Value::text(""));
        if (const std::string* language = http.header("Accept-Language")) {
            call.context.entries.set(CMPIAcceptLanguage, Value::text(*language));
        }
        return (this->*handler)(call);
    } catch (const CimError& error) {
        return errorResponse(frame, error);
    }
}

CimXmlService::Handler CimXmlService::handlerOf(std::string_view method) {
    struct Entry {
        std::string_view method;
        Handler handler;
    };
    constexpr std::array<Entry, 11> kOperations = {{
        {"EnumerateInstances", &CimXmlService::enumerateInstances},
        {"EnumerateInstanceNames", &CimXmlService::enumerateInstanceNames},
        {"GetInstance", &CimXmlService::getInstance},
        {"CreateInstance", &CimXmlService::createInstance},
        {"ModifyInstance", &CimXmlService::modifyInstance},
        {"DeleteInstance", &CimXmlService::deleteInstance},
        {"ExecQuery", &CimXmlService::execQuery},
        {"Associators", &CimXmlService::associators},
        {"AssociatorNames", &CimXmlService::associatorNames},
        {"References", &CimXmlService::references},
        {"ReferenceNames", &CimXmlService::referenceNames},
    }};
    for (const Entry& entry : kOperations) {
        if (sameName(entry.method, method)) return entry.handler;
    }
    return nullptr;
}

bool CimXmlService::servesNameSpace(const std::string& nameSpace) const {
    return containsName(settings_.nameSpaces, nameSpace);
}

void CimXmlService::report(const Call& call, const Outcome& outcome) const {
    if (!settings_.report) return;
    std::string line = call.frame.method + " " + call.target + ": ";
    line += outcome.ok() ? std::to_string(outcome.delivered) + " returned"
                         : cimErrorName(cimErrorCode(outcome.code));
    if (outcome.ignored) line += ", " + std::to_string(outcome.ignored) + " that were no objects ignored";
    if (!outcome.message.empty()) line += " (" + outcome.message + ")";
    settings_.report(line);
}

std::string CimXmlService::enumerateInstances(Call& call) const {
    const ObjectPath path = call.classPath(call.parameters.className("ClassName"));
    call.takeInheritanceOptions(true);
    call.takeInstanceOptions();
    return respond(call, ObjectForm::kNamedInstance, [&](ResultSink& sink) {
        return operations_.enumerateInstances(call.context, path, call.options.wanted, sink);
    });
}

std::string CimXmlService::enumerateInstanceNames(Call& call) const {
    const ObjectPath path = call.classPath(call.parameters.className("ClassName"));
    return respond(call, ObjectForm::kInstanceName, [&](ResultSink& sink) {
        return operations_.enumerateInstanceNames(call.context, path, sink);
    });
}

std::string CimXmlService::getInstance(Call& call) const {
    const ObjectPath path = call.about(call.parameters.instanceName("InstanceName"));
    call.takeInheritanceOptions(false);
    call.takeInstanceOptions();
    return respond(call, ObjectForm::kInstance, [&](ResultSink& sink) {
        return operations_.getInstance(call.context, path, call.options.wanted, sink);
    });
}

std::string CimXmlService::createInstance(Call& call) const {
    const Instance instance = call.parameters.instance("NewInstance");
    call.about(instance.path);
    return respond(call, ObjectForm::kInstanceName, [&](ResultSink& sink) {
        return operations_.createInstance(call.context, instance, sink);
    });
}

std::string CimXmlService::modifyInstance(Call& call) const {
    const Instance instance = call.parameters.instance("ModifiedInstance");
    call.about(instance.path);
    call.parameters.flag("IncludeQualifiers", true);
    const PropertyNames wanted = call.parameters.propertyList();
    respond(call, ObjectForm::kInstance,
            [&](ResultSink&) { return operations_.modifyInstance(call.context, instance, wanted); });
    return emptyResponse(call.frame);
}

std::string CimXmlService::deleteInstance(Call& call) const {
    const ObjectPath path = call.about(call.parameters.instanceName("InstanceName"));
    respond(call, ObjectForm::kInstance,
            [&](ResultSink&) { return operations_.deleteInstance(call.context, path); });
    return emptyResponse(call.frame);
}

std::string CimXmlService::execQuery(Call& call) const {
    const std::string language = call.parameters.text("QueryLanguage");
    const std::string query = call.parameters.text("Query");
    const ObjectPath path = call.classPath(classOfQuery(query));
    return respond(call, ObjectForm::kObject, [&](ResultSink& sink) {
        return operations_.execQuery(call.context, path, language, query, sink);
    });
}

std::string CimXmlService::associators(Call& call) const {
    const ObjectPath source = call.about(call.parameters.objectName("ObjectName"));
    const AssociatorFilter filter = call.associatorFilter();
    call.takeInstanceOptions();
    return respond(call, ObjectForm::kObjectWithPath, [&](ResultSink& sink) {
        return operations_.associators(call.context, source, filter, call.options.wanted, sink);
    });
}

std::string CimXmlService::associatorNames(Call& call) const {
    const ObjectPath source = call.about(call.parameters.objectName("ObjectName"));
    const AssociatorFilter filter = call.associatorFilter();
    return respond(call, ObjectForm::kObjectPath, [&](ResultSink& sink) {
        return operations_.associatorNames(call.context, source, filter, sink);
    });
}

std::string CimXmlService::references(Call& call) const {
    const ObjectPath source = call.about(call.parameters.objectName("ObjectName"));
    const ReferenceFilter filter = call.referenceFilter();
    call.takeInstanceOptions();
    return respond(call, ObjectForm::kObjectWithPath, [&](ResultSink& sink) {
        return operations_.references(call.context, source, filter, call.options.wanted, sink);
    });
}

std::string CimXmlService::referenceNames(Call& call) const {
    const ObjectPath source = call.about(call.parameters.objectName("ObjectName"));
    const ReferenceFilter filter = call.referenceFilter();
    return respond(call, ObjectForm::kObjectPath, [&](ResultSink& sink) {
        return operations_.referenceNames(call.context, source, filter, sink);
    });
}

} // namespace cimserver
