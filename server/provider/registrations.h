// Which classes a provider serves: its registration, in the form that SFCB reads, too.
//
//     [Class]
//        provider: Name
//        location: Name          the library is libName.so
//        type: instance association
//        namespace: root/cimv2 ...
#ifndef KESTO_SERVER_PROVIDER_REGISTRATIONS_H
#define KESTO_SERVER_PROVIDER_REGISTRATIONS_H

#include <istream>
#include <string>
#include <vector>

#include "server/model/error.h"

namespace cimserver {

class RegistrationError : public Error {
  public:
    using Error::Error;
};

struct Registration {
    std::string className;
    std::string provider;
    std::vector<std::string> nameSpaces;
    bool instances = false;
    bool associations = false;
};

// Blank lines and lines that start with # do not count. Throws RegistrationError.
std::vector<Registration> read_registrations(std::istream& text, const std::string& fileName);
// The same from a file. Throws RegistrationError for one that cannot be read, too.
std::vector<Registration> read_registration_file(const std::string& fileName);

} // namespace cimserver

#endif
