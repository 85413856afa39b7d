// Leaves a walk over a platform table that never ends.
//
// A platform that keeps handing out rows it has handed out before would hold the provider lock for ever. The
// guard remembers one key of the walk, a later one each time the walk's length has doubled, and calls the
// walk a circle when it has met the remembered keys many times. A table of any size in any order is walked
// whole, even one that holds a key more than once, and no key but the one is kept.
#ifndef KESTO_PLATFORM_CIRCLE_GUARD_H
#define KESTO_PLATFORM_CIRCLE_GUARD_H

#include <cstdint>

template <typename Key>
class CircleGuard {
  public:
    // Takes the key of the next row. True when the walk goes round in a circle.
    bool is_circle(const Key& key) {
        if (length_ > 0 && key == remembered_ && ++meetings_ == MANY_MEETINGS) return true;
        if (++length_ == rememberAgainAt_) {
            remembered_ = key;
            rememberAgainAt_ *= 2;
        }
        return false;
    }

  private:
    static constexpr unsigned MANY_MEETINGS = 100;

    Key remembered_{};
    unsigned meetings_ = 0;
    std::uint64_t length_ = 0;
    std::uint64_t rememberAgainAt_ = 1;
};

#endif
