// Ownership of the rows that the platform hands out: malloc'ed blocks that the caller frees.
#ifndef KESTO_PLATFORM_ROW_H
#define KESTO_PLATFORM_ROW_H

#include <cstdlib>
#include <memory>

struct FreeRow {
    void operator()(void* row) const { std::free(row); }
};

template <typename Row>
using PlatformRow = std::unique_ptr<Row, FreeRow>;

// Calls a service that stores a row through a pointer, and takes the row over whatever the status: a failing
// call may store one too. Returns the service's status.
template <typename Row, typename Service>
int fetch_row(PlatformRow<Row>& row, Service service) {
    Row* stored = nullptr;
    const int status = service(&stored);
    row.reset(stored);
    return status;
}

#endif
