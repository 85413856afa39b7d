#include "server/provider/provider.h"

#include <dlfcn.h>

#include "server/broker/broker.h"
#include "server/broker/encapsulated.h"
#include "server/broker/named_lists.h"
#include "server/broker/request_pool.h"
#include "server/broker/string.h"

namespace cimserver {

struct Provider::Loaded {
    explicit Loaded(const std::string& file) : library(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
        if (library == nullptr) throw ProviderError(dlerror());
    }

    template <typename Interface>
    Interface* make(const std::string& factory, const CMPIBroker* broker) {
        using Factory = Interface* (*)(const CMPIBroker*, const CMPIContext*, CMPIStatus*);
        const auto create = reinterpret_cast<Factory>(dlsym(library, factory.c_str()));
        if (!create) return nullptr;
        const RequestScope scope(lifetime);
        CMPIStatus made = status(CMPI_RC_OK); // a factory need not write it
        Interface* interface = create(broker, make_pooled<ContextObject>(ContextContent{}), &made);
        if (made.rc != CMPI_RC_OK || !interface || !interface->ft) {
            throw ProviderError(factory + " failed with status " + std::to_string(made.rc) +
                                (made.msg ? ": " + text_of(made.msg) : ""));
        }
        return interface;
    }

    RequestPool lifetime; // what the factories make lives as long as the provider
    void* library;        // never closed: a provider may have left threads or exit handlers running
};

Provider::Provider(const std::string& file, const std::string& name, const Broker& broker)
    : loaded_(std::make_unique<Loaded>(file)) {
    instances_ = loaded_->make<CMPIInstanceMI>(name + "_Create_InstanceMI", broker.handle());
    associations_ = loaded_->make<CMPIAssociationMI>(name + "_Create_AssociationMI", broker.handle());
    if (instances_ == nullptr && associations_ == nullptr) {
        throw ProviderError(file + " has neither " + name + "_Create_InstanceMI nor " + name +
                            "_Create_AssociationMI");
    }
}

Provider::~Provider() {
    const RequestScope scope;
    CMPIContext* context = make_pooled<ContextObject>(ContextContent{});
    constexpr CMPIBoolean TERMINATING = 1;
    if (instances_ != nullptr) instances_->ft->cleanup(instances_, context, TERMINATING);
    if (associations_ != nullptr) associations_->ft->cleanup(associations_, context, TERMINATING);
}

} // namespace cimserver
