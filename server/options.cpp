#include "server/options.h"

#include <CLI/CLI.hpp>
#include <chrono>

namespace cimserver {

namespace {

void add_provider_options(CLI::App& app, Options& options) {
    app.add_option("--provider", options.provider,
                   "The provider's shared library (default: libFCIPProvider.so)");
    app.add_option("--provider-name", options.providerName, "Its name: the factories are <name>_Create_...MI")
        ->capture_default_str();
    app.add_option("--provider-log", options.providerLog,
                   "File that the provider's standard output is appended to; - for standard error");
    app.add_option("--registration", options.registration,
                   "File with the classes that the provider serves (default: <provider-name>.reg)");
    app.add_option("--schema", options.schema,
                   "MOF file with the classes (default: <provider-name>Standalone.mof); may be repeated");
    app.add_option("--namespace", options.nameSpaces,
                   "Namespace to serve; may be repeated (default: those of the registration)");
    app.add_flag("--keep-hosts", options.keepHosts,
                 "Leave the host in paths as the provider names it, not as the client reached the server");
}

void add_http_options(CLI::App& app, HttpServer::Settings& http) {
    app.add_option("--listen", http.address, "Loopback address to listen on")->capture_default_str();
    app.add_option("--port", http.port, "Port to listen on; 0 for any free one")->capture_default_str();
    app.add_option("--max-connections", http.maxConnections, "Clients at a time")
        ->capture_default_str()
        ->check(CLI::Range(1, 1024));
    app.add_option("--max-body", http.maxBody, "Largest request in bytes")->capture_default_str();
}

} // namespace

CommandLine parse_command_line(int argc, char** argv) {
    Options options;
    auto timeout = static_cast<unsigned>(options.http.timeout.count());
    CLI::App app("Serves a CMPI provider to CIM-XML clients (WBEM).", "kesto-cimserver");
    app.set_version_flag("--version", "kesto-cimserver " CIMSERVER_VERSION, "Print the version and exit");
    add_provider_options(app, options);
    add_http_options(app, options.http);
    app.add_option("--timeout", timeout, "Seconds that a client may keep the server waiting")
        ->capture_default_str()
        ->check(CLI::Range(1, 3600));
    app.add_flag("--verbose", options.verbose, "Report every operation on standard error");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) { // --help and --version, too
        return {std::nullopt, app.exit(error) == 0 ? 0 : USAGE_ERROR};
    }
    options.http.timeout = std::chrono::seconds(timeout);
    return {options, 0};
}

} // namespace cimserver
