// The broker's memory for providers. All of it belongs to the current pool, whoever frees it.
#include <cstring>
#include <limits>

#include "server/cmpi_broker.h"
#include "server/cmpi_objects.h"

namespace cimserver {

namespace {

// A place in a pool to go back to. It lies in the pool itself, just before what it marks.
class Mark final : public Shell {
  public:
    explicit Mark(RequestPool* pool) : marked(pool), position(pool->size()) {}
    void releaseContent() override { marked = nullptr; }
    RequestPool* marked;
    std::size_t position;
};

CMPIGcStat* mark(const CMPIBroker*, CMPIStatus* rc) {
    setStatus(rc, CMPI_RC_OK);
    return makePooled<Mark>(&RequestPool::current());
}

CMPIStatus release(const CMPIBroker*, const CMPIGcStat* gc) {
    const Mark* made = static_cast<const Mark*>(gc);
    if (!made || made->marked != &RequestPool::current()) return status(CMPI_RC_ERR_INVALID_HANDLE);
    RequestPool::current().truncate(made->position);
    return status(CMPI_RC_OK);
}

void* cmpiMalloc(const CMPIBroker*, size_t size) {
    return RequestPool::current().allocate(size);
}

void* cmpiCalloc(const CMPIBroker*, size_t count, size_t size) {
    if (size != 0 && count > std::numeric_limits<size_t>::max() / size) return nullptr;
    return RequestPool::current().allocate(count * size); // comes cleared
}

void* cmpiRealloc(const CMPIBroker*, void* block, size_t size) {
    return RequestPool::current().reallocate(block, size);
}

char* cmpiStrDup(const CMPIBroker*, const char* text) {
    if (!text) return nullptr;
    const size_t size = std::strlen(text) + 1;
    void* copy = RequestPool::current().allocate(size);
    if (copy) std::memcpy(copy, text, size);
    return static_cast<char*>(copy);
}

void cmpiFree(const CMPIBroker*, void* block) {
    RequestPool::current().free(block);
}

void freeChars(const CMPIBroker*, char* chars) {
    RequestPool::current().free(chars);
}

template <typename Object, typename Face>
void freeObject(const CMPIBroker*, Face* object) {
    releaseObject<Object>(object);
}

// The server makes no select expressions, so there is none to free.
void freeSelectExp(const CMPIBroker*, CMPISelectExp*) {}

constexpr CMPIBrokerMemFT kTable = {CMPICurrentVersion,
                                    mark,
                                    release,
                                    cmpiMalloc,
                                    cmpiCalloc,
                                    cmpiRealloc,
                                    cmpiStrDup,
                                    cmpiFree,
                                    freeObject<InstanceObject, CMPIInstance>,
                                    freeObject<PathObject, CMPIObjectPath>,
                                    freeObject<ArgsObject, CMPIArgs>,
                                    freeObject<StringObject, CMPIString>,
                                    freeObject<ArrayObject, CMPIArray>,
                                    freeObject<DateTimeObject, CMPIDateTime>,
                                    freeSelectExp,
                                    freeChars};

} // namespace

const CMPIBrokerMemFT* brokerMemory() {
    return &kTable;
}

} // namespace cimserver
