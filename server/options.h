// The command line of kesto-cimserver.
//
// Without a certificate the server speaks HTTP, with one it speaks HTTPS, and HTTP only when a port is given
// for it. Beyond loopback it speaks HTTPS alone, to users alone.
#ifndef KESTO_SERVER_OPTIONS_H
#define KESTO_SERVER_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "server/http/server.h"

namespace cimserver {

struct Options {
    HttpServer::Settings http; // what the ports have in common
    std::optional<std::uint16_t> httpPort, httpsPort;
    std::string certificate, privateKey; // files, of HTTPS
    std::string users;                   // file; empty: everybody may use the server
    std::string provider;                // empty: the one that lies beside the program
    std::string providerName = "FCIPProvider";
    std::string providerLog;
    std::string registration;            // empty: the one of that name in the data folder
    std::vector<std::string> schema;     // likewise
    std::vector<std::string> nameSpaces; // empty: those of the registration
    bool keepHosts = false;
    bool verbose = false;
};

// What to serve; or, where there is nothing to serve, the exit status: 0 after --help and --version, which
// have been printed then, and USAGE_ERROR after a message on standard error.
struct CommandLine {
    std::optional<Options> options;
    int exitStatus = 0;
};

CommandLine parse_command_line(int argc, char** argv);

} // namespace cimserver

#endif
