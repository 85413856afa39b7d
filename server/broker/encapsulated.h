// The encapsulated objects of the CMPI interface as the server makes them.
//
// A provider holds handles: the interface's own records (CMPIString and its like), each with a function
// table. The server's object derives from the record and adds one of its own plain values as the content.
// An object that has been released stays as a handle without content: calls answer
// CMPI_RC_ERR_INVALID_HANDLE, and handing it to a result is ignored like handing over NULL.
//
// The file named after a type (string.h, instance.h, ...) has its content and its functions.
#ifndef KESTO_SERVER_BROKER_ENCAPSULATED_H
#define KESTO_SERVER_BROKER_ENCAPSULATED_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>
#include <memory>
#include <utility>

#include "server/broker/request_pool.h"

namespace cimserver {

// Which function table belongs to an object type; defined next to each type's functions.
template <typename Handle>
struct FunctionTableOf;

template <typename Handle, typename Content>
class Encapsulated final : public Handle, public PooledObject {
  public:
    explicit Encapsulated(Content content) : content_(std::make_unique<Content>(std::move(content))) {
        this->hdl = content_.get();
        this->ft = FunctionTableOf<Handle>::table();
    }
    void release_content() override {
        content_.reset();
        this->hdl = nullptr;
    }
    Content& content() { return *content_; }

  private:
    std::unique_ptr<Content> content_;
};

// The value -1, which some platforms hand out for an object that they could not make.
template <typename Handle>
bool is_minus_one(const Handle* handle) {
    return reinterpret_cast<std::intptr_t>(handle) == -1;
}

// The object that a provider's handle stands for, or NULL when it is none of ours: NULL, -1, released, or of
// another type.
template <typename Object, typename Handle>
Object* from_handle(const Handle* handle) {
    if (handle == nullptr || is_minus_one(handle)) return nullptr;
    if (handle->ft != FunctionTableOf<Handle>::table() || handle->hdl == nullptr) return nullptr;
    // The interface passes every object as const, the ones that the call is to change included.
    return static_cast<Object*>(const_cast<Handle*>(handle));
}

inline void set_status(CMPIStatus* status, CMPIrc rc) {
    if (status != nullptr) *status = {rc, nullptr};
}

inline CMPIStatus status(CMPIrc rc) {
    return {rc, nullptr};
}

// A new object that the current pool owns.
template <typename Object, typename Content>
Object* make_pooled(Content&& content) {
    auto object = std::make_unique<Object>(std::forward<Content>(content));
    Object* made = object.get();
    RequestPool::current().add(std::move(object));
    return made;
}

// The release and clone functions that every object type has.
template <typename Object, typename Handle>
CMPIStatus release_object(Handle* handle) {
    Object* ours = from_handle<Object>(handle);
    if (ours == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (ours->owner() != nullptr) {
        ours->release_content();
    } else {
        delete ours;
    }
    return status(CMPI_RC_OK);
}

template <typename Object, typename Handle>
Handle* clone_object(const Handle* handle, CMPIStatus* rc) {
    Object* ours = from_handle<Object>(handle);
    set_status(rc, ours != nullptr ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours != nullptr ? new Object(ours->content()) : nullptr;
}

} // namespace cimserver

#endif
