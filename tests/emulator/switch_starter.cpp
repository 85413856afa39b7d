// Uses the emulated switch as a CIM server's process does: through nothing but the platform services.
#include <cstdio>
#include <cstdlib>

#include "platform/platform_records.h"
#include "platform/platform_services.h"

int main() {
    mutex_lock();
    const bool good = init_mts(&mts_q) >= 0;
    FcipLinkKey key{0, 0};
    FcipLinkEntry* row = nullptr;
    unsigned tunnels = 0;
    while (fcip_get_link_entry(mts_q, 2, &key, &row, 30, 1) == 0) {
        key = {row->kfmFcipEntityId, row->kfmFcipLinkIndex};
        std::free(row);
        ++tunnels;
    }
    mutex_unlock();
    std::printf("init_mts %s, %u tunnels, %s\n", good ? "good" : "failed", tunnels, getCSName());
}
