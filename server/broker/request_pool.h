// Who owns the objects that a provider sees.
//
// A provider never has to release what the broker made for it: every object belongs to the pool of the
// request in which it was made, and goes when the request ends. A pool belongs to one thread; a RequestScope
// puts a new one in charge of the calling thread. Only what clone() makes belongs to nobody but its caller.
//
// Releasing a pooled object frees its content only; the few bytes of the object itself stay until the pool
// goes. So nothing that a provider still does with a released object touches freed memory.
//
// Objects handed to a result are released early (see release_handed_over): what has been written into the
// answer need not be kept a second time until the request ends. The objects that they were made of, which the
// provider may still use, do stay until then.
#ifndef KESTO_SERVER_BROKER_REQUEST_POOL_H
#define KESTO_SERVER_BROKER_REQUEST_POOL_H

#include <cstddef>
#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

namespace cimserver {

class RequestPool;

class PooledObject {
  public:
    PooledObject() = default;
    PooledObject(const PooledObject&) = delete;
    PooledObject& operator=(const PooledObject&) = delete;
    virtual ~PooledObject() = default;
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

    void add(std::unique_ptr<PooledObject> object);

    // Notes that the object has been written into the answer, and releases the content of the one for which
    // that was longest ago. The latest KEPT_AFTER_HAND_OVER stay whole, because providers hand one object
    // over again and again after changing it (the path of a loop, or a handful of them in turn).
    void release_handed_over(PooledObject* object);
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
    std::vector<std::unique_ptr<PooledObject>> objects_;
    std::deque<PooledObject*> handedOver_;
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

} // namespace cimserver

#endif
