#include "server/broker/request_pool.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace cimserver {

namespace {

thread_local RequestPool threadPool;
thread_local RequestPool* currentPool = nullptr;

} // namespace

class RequestPool::Block final : public PooledObject {
  public:
    Block(RequestPool& pool, std::size_t size)
        : pool_(pool), size_(size), memory_(std::calloc(1, size != 0 ? size : 1)) {
        if (memory_ != nullptr) pool_.blocks_.emplace(memory_, this);
    }
    ~Block() override { Block::release_content(); }
    void release_content() override {
        if (memory_ == nullptr) return;
        pool_.blocks_.erase(memory_);
        std::free(memory_);
        memory_ = nullptr;
    }
    void* memory() const { return memory_; }
    std::size_t size() const { return size_; }

  private:
    RequestPool& pool_;
    std::size_t size_;
    void* memory_;
};

RequestPool& RequestPool::current() {
    return currentPool != nullptr ? *currentPool : threadPool;
}

void RequestPool::add(std::unique_ptr<PooledObject> object) {
    object->owner_ = this;
    objects_.push_back(std::move(object));
}

void RequestPool::release_handed_over(PooledObject* object) {
    if (object->owner() != this) return; // a clone, or made on another thread: not ours to release
    handedOver_.erase(std::remove(handedOver_.begin(), handedOver_.end(), object), handedOver_.end());
    handedOver_.push_back(object);
    if (handedOver_.size() > KEPT_AFTER_HAND_OVER) {
        handedOver_.front()->release_content();
        handedOver_.pop_front();
    }
}

void* RequestPool::allocate(std::size_t size) {
    auto block = std::make_unique<Block>(*this, size);
    void* memory = block->memory();
    add(std::move(block));
    return memory;
}

void* RequestPool::reallocate(void* block, std::size_t size) {
    void* grown = allocate(size);
    const auto known = blocks_.find(block);
    if (known == blocks_.end() || grown == nullptr) return grown;
    std::memcpy(grown, block, std::min(size, known->second->size()));
    known->second->release_content();
    return grown;
}

void RequestPool::free(void* block) {
    const auto known = blocks_.find(block);
    if (known != blocks_.end()) known->second->release_content();
}

void RequestPool::truncate(std::size_t count) {
    while (objects_.size() > count) {
        PooledObject* last = objects_.back().get();
        handedOver_.erase(std::remove(handedOver_.begin(), handedOver_.end(), last), handedOver_.end());
        objects_.pop_back();
    }
}

RequestScope::RequestScope(RequestPool& pool) : outer_(currentPool) {
    currentPool = &pool;
}

RequestScope::~RequestScope() {
    currentPool = outer_;
}

} // namespace cimserver
