// kesto-cimserver: serves a CMPI provider to CIM-XML clients.
#include <limits.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "server/broker/broker.h"
#include "server/cimxml/service.h"
#include "server/command.h"
#include "server/console.h"
#include "server/http/message.h"
#include "server/http/server.h"
#include "server/http/tls.h"
#include "server/http/users.h"
#include "server/interop/interop.h"
#include "server/model/cim_model.h"
#include "server/model/perform.h"
#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/options.h"
#include "server/provider/operations.h"
#include "server/provider/provider.h"
#include "server/provider/provider_call.h"
#include "server/provider/registrations.h"
#include "server/provider/served.h"
#include "server/schema/class_schema.h"
#include "server/schema/mof_parser.h"

namespace {

using namespace cimserver;

// Beside the program: where the build puts it, then where an installation does.
std::string default_provider() {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    std::string file = "libFCIPProvider.so";
    const std::filesystem::path candidates[] = {program / "../lib" / file,
                                                program / CIMSERVER_PROVIDER_DIR / file};
    for (const auto& candidate : candidates) {
        if (std::filesystem::exists(candidate)) return std::filesystem::weakly_canonical(candidate).string();
    }
    return file; // the loader's own search
}

std::string host_name() {
    char name[HOST_NAME_MAX + 1] = {};
    return gethostname(name, sizeof name - 1) == 0 ? name : "localhost";
}

// What is installed beside the program: declarations and registration of the provider that it serves without
// further ado.
std::string data_file(const std::string& name) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    return (program / CIMSERVER_DATA_DIR / name).lexically_normal().string();
}

std::vector<Registration> registrations_of(const Options& options) {
    const std::string file =
        options.registration.empty() ? data_file(options.providerName + ".reg") : options.registration;
    std::vector<Registration> rows = read_registration_file(file);
    std::erase_if(rows, [&options](const Registration& row) { return row.provider != options.providerName; });
    if (rows.empty()) throw RegistrationError(file + " registers no class for " + options.providerName);
    return rows;
}

std::vector<std::string> served_names(const Options& options,
                                      const std::vector<Registration>& registrations) {
    if (!options.nameSpaces.empty()) return options.nameSpaces;
    std::vector<std::string> names;
    for (const Registration& row : registrations) {
        for (const std::string& name : row.nameSpaces) {
            if (!contains_name(names, name)) names.push_back(name);
        }
    }
    return names;
}

std::vector<ServedNameSpace> served_name_spaces(const Options& options, const Perform& provider) {
    const std::vector<Registration> registrations = registrations_of(options);
    std::vector<std::string> schema = options.schema;
    if (schema.empty()) schema.push_back(data_file(options.providerName + "Standalone.mof"));
    std::vector<ServedNameSpace> served;
    for (const std::string& name : served_names(options, registrations)) {
        ServedNameSpace& added = served.emplace_back(ServedNameSpace{name, ClassSchema(name), {}});
        for (const std::string& file : schema) {
            parse_mof_file(file, added.schema);
        }
        std::vector<Registration> here = registrations;
        if (options.nameSpaces.empty()) {
            std::erase_if(here,
                          [&name](const Registration& row) { return !contains_name(row.nameSpaces, name); });
        }
        serve_registered(added, here, provider);
    }
    return served;
}

// Blocked in all threads, so that only wait_for_stop sees them.
sigset_t stop_signals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

void wait_for_stop() {
    const sigset_t signals = stop_signals();
    int received = 0;
    sigwait(&signals, &received);
    // A second signal ends a stop that takes too long.
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

using Report = std::function<void(const std::string& line)>;
using Ports = std::vector<std::unique_ptr<HttpServer>>;

Ports listen(const Options& options, const HttpServer::Handler& handler, const Report& warn,
             const Report& report) {
    HttpServer::Settings settings = options.http;
    settings.report = report;
    if (!options.users.empty()) settings.users = std::make_shared<Users>(options.users, warn);
    Ports ports;
    if (options.httpPort) {
        settings.port = *options.httpPort;
        ports.push_back(std::make_unique<HttpServer>(settings, handler));
    }
    if (options.httpsPort) {
        settings.port = *options.httpsPort;
        settings.tls = read_tls_credentials(options.certificate, options.privateKey);
        ports.push_back(std::make_unique<HttpServer>(settings, handler));
    }
    return ports;
}

std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) {
        result += (result.empty() ? "" : ", ") + text;
    }
    return result;
}

void serve(const Options& options, Console& console) {
    if (!options.providerLog.empty()) console.redirect_provider(options.providerLog);
    const Report warn = [&console](const std::string& line) { console.warn("kesto-cimserver: " + line); };
    const Report report = options.verbose ? warn : nullptr;

    Broker broker(warn, options.verbose);
    const std::string library = options.provider.empty() ? default_provider() : options.provider;
    const Provider provider(library, options.providerName, broker);
    std::vector<ServedNameSpace> nameSpaces =
        served_name_spaces(options, [&provider](const Request& request, ResultSink& sink) {
            return call_provider(provider, request, sink);
        });
    std::vector<std::string> names;
    for (const ServedNameSpace& nameSpace : nameSpaces) {
        names.push_back(nameSpace.name);
    }
    serve_interop(nameSpaces, {.systemName = host_name(), .asksForUsers = !options.users.empty()});
    const Operations operations(std::move(nameSpaces));
    broker.serve([&operations](const Request& request, ResultSink& sink) {
        return operations.perform(request, sink);
    });
    const CimXmlService service(operations, {host_name(), options.keepHosts, report});
    const Ports ports = listen(
        options, [&service](const HttpRequest& request) { return service.answer(request); }, warn, report);

    std::vector<std::string> urls;
    for (const auto& port : ports) {
        urls.push_back(port->url() + "/cimom");
    }
    console.say("kesto-cimserver: serving " + joined(urls) + " (namespace " + joined(names) + ")");
    wait_for_stop();
    for (const auto& port : ports) {
        port->stop(options.http.timeout);
    }
    console.say("kesto-cimserver: stopped");
}

int run(int argc, char** argv) {
    const CommandLine commandLine = parse_command_line(argc, argv);
    if (!commandLine.options) return commandLine.exitStatus;

    const sigset_t signals = stop_signals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    signal(SIGPIPE, SIG_IGN);
    Console console;
    try {
        serve(*commandLine.options, console);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        console.warn(std::string("kesto-cimserver: ") + error.what());
        return EXIT_FAILURE;
    }
}

} // namespace

int main(int argc, char** argv) {
    return run_command("kesto-cimserver", run, argc, argv); // prints what no console does
}
