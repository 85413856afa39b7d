// The provider lock: the platform's one process-wide lock, which serialises every use of the platform.
#ifndef KESTO_PROVIDER_PROVIDER_LOCK_H
#define KESTO_PROVIDER_PROVIDER_LOCK_H

#include "platform/platform_services.h"

// Holds the lock for its own life, and so releases it too when the CIM server cancels the thread within.
class ProviderLock {
  public:
    ProviderLock() { mutex_lock(); }
    // The platform's unlock may be a point at which a thread is cancelled.
    ~ProviderLock() noexcept(false) { mutex_unlock(); }
    ProviderLock(const ProviderLock&) = delete;
    ProviderLock& operator=(const ProviderLock&) = delete;
};

#endif
