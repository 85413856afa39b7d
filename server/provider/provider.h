// A CMPI provider loaded from a shared library.
#ifndef KESTO_SERVER_PROVIDER_PROVIDER_H
#define KESTO_SERVER_PROVIDER_PROVIDER_H

#include <cmpidt.h>
#include <cmpift.h>

#include <memory>
#include <string>

#include "server/model/error.h"

namespace cimserver {

class Broker;

// The library cannot be loaded, or is not a provider of that name.
class ProviderError : public Error {
  public:
    using Error::Error;
};

// Loads the library, asks its factories <name>_Create_InstanceMI and <name>_Create_AssociationMI for their
// interfaces, one of which may be missing, and cleans the provider up in the end.
class Provider {
  public:
    Provider(const std::string& file, const std::string& name, const Broker& broker);
    ~Provider();
    Provider(const Provider&) = delete;
    Provider& operator=(const Provider&) = delete;

    CMPIInstanceMI* instances() const { return instances_; }          // NULL when it has none
    CMPIAssociationMI* associations() const { return associations_; } // NULL when it has none

  private:
    struct Loaded; // the library, and what the provider made outside of requests
    std::unique_ptr<Loaded> loaded_;
    CMPIInstanceMI* instances_ = nullptr;
    CMPIAssociationMI* associations_ = nullptr;
};

} // namespace cimserver

#endif
