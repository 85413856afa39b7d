// kesto-cimserver: serves a CMPI provider to CIM-XML clients.
#include <limits.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>

#include "server/broker/broker.h"
#include "server/cimxml/service.h"
#include "server/console.h"
#include "server/http/message.h"
#include "server/http/server.h"
#include "server/model/request.h"
#include "server/model/result_sink.h"
#include "server/options.h"
#include "server/provider/association_table.h"
#include "server/provider/operations.h"
#include "server/provider/provider.h"

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

// Without the option, the table is the one that lies beside the provider's library under the provider's name.
AssociationTable association_table(const Options& options, const std::string& library) {
    if (!options.associations.empty()) return AssociationTable::read_file(options.associations);
    const std::filesystem::path folder = std::filesystem::path(library).parent_path();
    const std::filesystem::path file = folder / (options.providerName + ".associations");
    if (folder.empty() || !std::filesystem::exists(file)) return {};
    return AssociationTable::read_file(file.string());
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

void serve(const Options& options, Console& console) {
    if (!options.providerLog.empty()) console.redirect_provider(options.providerLog);
    const auto warn = [&console](const std::string& line) { console.warn("kesto-cimserver: " + line); };
    const auto report = options.verbose ? std::function<void(const std::string&)>(warn) : nullptr;

    Broker broker(warn, options.verbose);
    const std::string library = options.provider.empty() ? default_provider() : options.provider;
    const Provider provider(library, options.providerName, broker);
    const Operations operations(provider, association_table(options, library));
    broker.serve(
        [operations](const Request& request, ResultSink& sink) { return operations.perform(request, sink); });
    const CimXmlService service(operations, {options.nameSpaces, host_name(), report});
    HttpServer server(options.http,
                      [&service](const HttpRequest& request) { return service.answer(request); });

    std::string served;
    for (const std::string& nameSpace : options.nameSpaces) {
        served += (served.empty() ? "" : ", ") + nameSpace;
    }
    console.say("kesto-cimserver: serving " + server.url() + "/cimom (namespace " + served + ")");
    wait_for_stop();
    server.stop(options.http.timeout);
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
    try {
        return run(argc, argv);
    } catch (const std::exception& error) { // before there is a console, or because it fails
        std::fprintf(stderr, "kesto-cimserver: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
