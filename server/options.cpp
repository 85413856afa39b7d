#include "server/options.h"

#include <CLI/CLI.hpp>
#include <chrono>

#include "server/command.h"
#include "server/http/ip_address.h"

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
    app.add_option("--listen", http.address,
                   "Address to listen on; beyond loopback, --certificate and --users are needed")
        ->capture_default_str();
    app.add_option("--host-name", http.hostNames,
                   "Name that clients know the server by, besides its address; may be repeated");
    app.add_option("--max-connections", http.maxConnections, "Clients at a time, at each port")
        ->capture_default_str()
        ->check(CLI::Range(1, 1024));
    app.add_option("--max-body", http.maxBody, "Largest request in bytes")->capture_default_str();
}

// An empty name is no way to switch a protection off: it may be a script's unset variable.
std::string fault_of_file_name(const std::string& name) {
    return name.empty() ? "the file's name is empty" : "";
}

void add_access_options(CLI::App& app, Options& options) {
    const CLI::Validator isFileName(fault_of_file_name, "FILE", "file name");
    app.add_option("--port", options.httpPort,
                   "Port of HTTP; 0 for any free one (default: 5988, but none with --certificate)");
    CLI::Option* certificate =
        app.add_option("--certificate", options.certificate,
                       "The server's certificate and those of its issuers, in PEM: serves HTTPS");
    CLI::Option* privateKey = app.add_option("--private-key", options.privateKey, "Its key, in PEM");
    certificate->needs(privateKey)->check(isFileName);
    privateKey->needs(certificate)->check(isFileName);
    app.add_option("--tls-port", options.httpsPort, "Port of HTTPS; 0 for any free one (default: 5989)")
        ->needs(certificate);
    app.add_option("--users", options.users,
                   "Lets in only the users of this file; kesto-cimserver-user adds them")
        ->check(isFileName);
}

void choose_ports(Options& options) {
    constexpr std::uint16_t HTTP_PORT = 5988;
    constexpr std::uint16_t HTTPS_PORT = 5989;
    const bool tls = !options.certificate.empty();
    if (tls && !options.httpsPort) options.httpsPort = HTTPS_PORT;
    if (!tls && !options.httpPort) options.httpPort = HTTP_PORT;
}

void expect_safe_address(const Options& options) {
    const std::optional<IpAddress> address = HttpServer::parse_address(options.http.address);
    if (!address) throw CLI::ValidationError("--listen", "not an address: " + options.http.address);
    if (address->is_loopback()) return;
    if (options.certificate.empty() || options.users.empty()) {
        throw CLI::ValidationError("--listen", "beyond loopback, --certificate and --users are needed");
    }
    if (options.httpPort) throw CLI::ValidationError("--port", "HTTP is served on loopback only");
}

} // namespace

CommandLine parse_command_line(int argc, char** argv) {
    Options options;
    auto timeout = static_cast<unsigned>(options.http.timeout.count());
    CLI::App app("Serves a CMPI provider to CIM-XML clients (WBEM).", "kesto-cimserver");
    app.set_version_flag("--version", "kesto-cimserver " CIMSERVER_VERSION, "Print the version and exit");
    add_provider_options(app, options);
    add_http_options(app, options.http);
    add_access_options(app, options);
    app.add_option("--timeout", timeout, "Seconds that a client may keep the server waiting")
        ->capture_default_str()
        ->check(CLI::Range(1, 3600));
    app.add_flag("--verbose", options.verbose, "Report every operation on standard error");
    try {
        app.parse(argc, argv);
        expect_safe_address(options);
    } catch (const CLI::ParseError& error) { // --help and --version, too
        return {std::nullopt, app.exit(error) == 0 ? 0 : USAGE_ERROR};
    }
    options.http.timeout = std::chrono::seconds(timeout);
    choose_ports(options);
    return {options, 0};
}

} // namespace cimserver
