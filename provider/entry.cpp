// Factory functions, start-up and the static MI tables.
#include <cstdio>

#include "platform/platform_services.h"
#include "provider/provider.h"

const CMPIBroker* _broker = nullptr;

void initialize(void) {
    mutex_lock();
    if (init_mts(&mts_q) < 0) {
        // The provider goes on all the same: the platform calls fail on their own and read as empty tables.
        std::fputs("get_using_cmi done init mts response q with error\n", stdout);
    }
    mutex_unlock();
}
