// kesto-cimserver-certificate: makes a key and a self-signed certificate, to try HTTPS with.
#include <limits.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "server/command.h"
#include "server/http/file.h"
#include "server/http/tls.h"

namespace {

using namespace cimserver;

// What a client on this machine, or of its network, knows it by.
std::vector<std::string> own_names() {
    std::vector<std::string> names = {"localhost", "127.0.0.1", "::1"};
    char name[HOST_NAME_MAX + 1] = {};
    if (gethostname(name, sizeof name - 1) == 0 && names.front() != name) names.emplace_back(name);
    return names;
}

int run(int argc, char** argv) {
    std::string folder;
    std::vector<std::string> hosts;
    int days = 365;
    CLI::App app(
        "Makes a self-signed certificate, certificate.pem, and its key, private-key.pem, for this "
        "machine's name and loopback addresses. Clients trust it when they are given the certificate.",
        "kesto-cimserver-certificate");
    app.set_version_flag("--version", "kesto-cimserver-certificate " CIMSERVER_VERSION,
                         "Print the version and exit");
    app.add_option("--host", hosts, "Name or address that clients reach the server by, too; may be repeated");
    app.add_option("--days", days, "How long it is valid")->capture_default_str()->check(CLI::Range(1, 3650));
    app.add_option("FOLDER", folder, "Where to put the two files; none is overwritten")->required();
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : USAGE_ERROR;
    }
    std::vector<std::string> names = own_names();
    names.insert(names.end(), hosts.begin(), hosts.end());
    const Moment now = std::chrono::system_clock::now();
    const TlsCredentials made = make_self_signed(names, now, now + std::chrono::hours(24) * days);
    const std::string certificateFile = folder + "/certificate.pem";
    const std::string keyFile = folder + "/private-key.pem";
    create_file(keyFile, made.privateKey, 0600);
    try {
        create_file(certificateFile, made.certificate, 0644);
    } catch (const std::exception&) {
        unlink(keyFile.c_str()); // it fits no certificate
        throw;
    }
    std::printf("--certificate %s --private-key %s\n", certificateFile.c_str(), keyFile.c_str());
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv) {
    return run_command("kesto-cimserver-certificate", run, argc, argv);
}
