// The platform's lock, as the emulated switch itself sees it.
#ifndef KESTO_EMULATOR_LOCK_H
#define KESTO_EMULATOR_LOCK_H

namespace emulator {

bool this_thread_holds_lock();

} // namespace emulator

#endif
