// Who owns the objects that a provider sees.
//
// A provider never has to release what the broker made for it: every object belongs to the pool of the
// request in which it was made, and goes when the request ends. A pool belongs to one thread; a RequestScope
// puts a new one in charge of the calling thread. Only what clone() makes belongs to nobody but its caller.
//
// An object is a shell, which the provider's pointer points at, and its content. Releasing a pooled object
// frees the content only; the few bytes of the shell stay until the pool goes, with a NULL handle. So nothing
// that a provider still does with a released object touches freed memory: calls answer
// CMPI_RC_ERR_INVALID_HANDLE, and handing it to a result is ignored like handing over NULL.
//
// Objects handed to a result are released early (see releaseHandedOver): what has been written into the
// answer need not be kept a second time until the request ends. The objects that they were made of, which the
// provider may still use, do stay until then.
#ifndef KESTO_SERVER_CMPI_MEMORY_H
#define KESTO_SERVER_CMPI_MEMORY_H

#include <cmpidt.h>
#include <cmpift.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace cimserver {

class RequestPool;

class Shell {
  public:
    Shell() = default;
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;
    virtual ~Shell() = default;
    virtual void release_content() = 0;

    RequestPool* owner() const { return owner_; } // none for a clone

  private:
    friend class RequestPool;
    RequestPool* owner_ = nullptr;
};

class RequestPool {
  public:
    RequestPool() = default;
    RequestPool(const RequestPool&) = delete;
    RequestPool& operator=(const RequestPool&) = delete;

    // The pool in charge of the calling thread. A thread that no scope covers, which the provider started
    // without attaching it, has one that lasts as long as the thread.
    static RequestPool& current();

    void add(std::unique_ptr<Shell> object);

    // Notes that the object has been written into the answer, and releases the content of the one for which
    // that was longest ago. The latest KEPT_AFTER_HAND_OVER stay whole, because providers hand one object
    // over again and again after changing it (the path of a loop, or a handful of them in turn).
    void release_handed_over(Shell* object);
    static constexpr std::size_t KEPT_AFTER_HAND_OVER = 64;

    // Plain memory for the provider, which lasts as long as the pool's objects.
    void* allocate(std::size_t size);
    void* reallocate(void* block, std::size_t size);
    void free(void* block);

    // Frees everything made after the pool held `count` objects.
    std::size_t size() const { return objects_.size(); }
    void truncate(std::size_t count);

  private:
    class Block;

    std::unordered_map<void*, Block*> blocks_; // declared first: blocks leave it when they go
    std::vector<std::unique_ptr<Shell>> objects_;
    std::deque<Shell*> handedOver_;
};

// Puts a pool in charge of the calling thread while it lives: a fresh one, or one that outlives it.
class RequestScope {
  public:
    RequestScope() : RequestScope(own_) {}
    explicit RequestScope(RequestPool& pool);
    ~RequestScope();
    RequestScope(const RequestScope&) = delete;
    RequestScope& operator=(const RequestScope&) = delete;

  private:
    RequestPool own_;
    RequestPool* outer_;
};

// Which function table stands for an object type; defined next to each type's functions.
template <typename Face>
struct TableOf;

// An object of the CMPI interface (Face, which the provider knows) around a content of ours.
template <typename Face, typename Content>
class Enclosed final : public Face, public Shell {
  public:
    explicit Enclosed(Content content) : content_(std::make_unique<Content>(std::move(content))) {
        this->hdl = content_.get();
        this->ft = TableOf<Face>::table();
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
template <typename Face>
bool is_minus_one(const Face* object) {
    return reinterpret_cast<std::intptr_t>(object) == -1;
}

// The object behind a provider's pointer, or NULL when it is none of ours: NULL, -1, released, or another
// type.
template <typename Object, typename Face>
Object* opened(const Face* object) {
    if (!object || is_minus_one(object)) return nullptr;
    if (object->ft != TableOf<Face>::table() || !object->hdl) return nullptr;
    // The interface passes every object as const, the ones that the call is to change included.
    return static_cast<Object*>(const_cast<Face*>(object));
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

// The release and clone members that every object type has.
template <typename Object, typename Face>
CMPIStatus release_object(Face* object) {
    Object* ours = opened<Object>(object);
    if (!ours) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (ours->owner()) {
        ours->release_content();
    } else {
        delete ours;
    }
    return status(CMPI_RC_OK);
}

template <typename Object, typename Face>
Face* clone_object(const Face* object, CMPIStatus* rc) {
    Object* ours = opened<Object>(object);
    set_status(rc, ours ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return ours ? new Object(ours->content()) : nullptr;
}

} // namespace cimserver

#endif
