#include "server/broker/memory.h"

#include <cmpidt.h>

#include <cstddef>
#include <cstring>
#include <limits>

#include "server/broker/array.h"
#include "server/broker/datetime.h"
#include "server/broker/encapsulated.h"
#include "server/broker/instance.h"
#include "server/broker/named_lists.h"
#include "server/broker/object_path.h"
#include "server/broker/request_pool.h"
#include "server/broker/string.h"

namespace cimserver {

namespace {

// A place in a pool to go back to. It lies in the pool itself, just before what it marks.
class Mark final : public PooledObject {
  public:
    explicit Mark(RequestPool* pool) : marked(pool), position(pool->size()) {}
    void release_content() override { marked = nullptr; }
    RequestPool* marked;
    std::size_t position;
};

CMPIGcStat* mark(const CMPIBroker*, CMPIStatus* rc) {
    set_status(rc, CMPI_RC_OK);
    return make_pooled<Mark>(&RequestPool::current());
}

CMPIStatus release(const CMPIBroker*, const CMPIGcStat* gc) {
    const Mark* made = static_cast<const Mark*>(gc);
    if (made == nullptr || made->marked != &RequestPool::current()) {
        return status(CMPI_RC_ERR_INVALID_HANDLE);
    }
    RequestPool::current().truncate(made->position);
    return status(CMPI_RC_OK);
}

void* cmpi_malloc(const CMPIBroker*, size_t size) {
    return RequestPool::current().allocate(size);
}

void* cmpi_calloc(const CMPIBroker*, size_t count, size_t size) {
    if (size != 0 && count > std::numeric_limits<size_t>::max() / size) return nullptr;
    return RequestPool::current().allocate(count * size); // comes cleared
}

void* cmpi_realloc(const CMPIBroker*, void* block, size_t size) {
    return RequestPool::current().reallocate(block, size);
}

char* cmpi_str_dup(const CMPIBroker*, const char* text) {
    if (text == nullptr) return nullptr;
    const size_t size = std::strlen(text) + 1;
    void* copy = RequestPool::current().allocate(size);
    if (copy != nullptr) std::memcpy(copy, text, size);
    return static_cast<char*>(copy);
}

void cmpi_free(const CMPIBroker*, void* block) {
    RequestPool::current().free(block);
}

void free_chars(const CMPIBroker*, char* chars) {
    RequestPool::current().free(chars);
}

template <typename Object, typename Handle>
void free_object(const CMPIBroker*, Handle* object) {
    release_object<Object>(object);
}

// The server makes no select expressions, so there is none to free.
void free_select_exp(const CMPIBroker*, CMPISelectExp*) {}

constexpr CMPIBrokerMemFT TABLE = {CMPICurrentVersion,
                                   mark,
                                   release,
                                   cmpi_malloc,
                                   cmpi_calloc,
                                   cmpi_realloc,
                                   cmpi_str_dup,
                                   cmpi_free,
                                   free_object<InstanceObject, CMPIInstance>,
                                   free_object<PathObject, CMPIObjectPath>,
                                   free_object<ArgsObject, CMPIArgs>,
                                   free_object<StringObject, CMPIString>,
                                   free_object<ArrayObject, CMPIArray>,
                                   free_object<DateTimeObject, CMPIDateTime>,
                                   free_select_exp,
                                   free_chars};

} // namespace

const CMPIBrokerMemFT* broker_memory() {
    return &TABLE;
}

} // namespace cimserver
