#ifndef KORD_CORE_SCAN_H
#define KORD_CORE_SCAN_H

#include "core/lanes.h"

#include <cstddef>

/// The loops over characters [first, last). Each takes what it asks or does from a small object that answers for a
/// block of lanes and for one character; the object decides, the loop walks. Nothing outside [first, last) is read:
/// fewer characters than a block are taken singly, and a last partial block overlaps the one before it.
namespace kord {

/// A matcher: characters equal to `c`.
template <class T>
class Is {
  public:
    explicit Is(T c) noexcept : lanes_(Lanes<T>::splat(static_cast<unsigned int>(c))), c_(c) {}
    unsigned int operator()(Lanes<T> x) const noexcept { return equal(x, lanes_).mask(); }
    bool operator()(T x) const noexcept { return x == c_; }

  private:
    Lanes<T> lanes_;
    T c_;
};

/// The first character that the matcher takes; `last` if there is none.
template <class T, class Matcher>
const T* scan_forward(const T* first, const T* last, const Matcher& matches) noexcept {
    constexpr std::ptrdiff_t block = Lanes<T>::count;
    if (last - first < block) {
        while (first != last && !matches(*first))
            ++first;
        return first;
    }
    for (;; first += block) {
        if (last - first < block) first = last - block;
        if (const unsigned int mask = matches(Lanes<T>::load(first))) return first + Lanes<T>::first_lane(mask);
        if (last - first == block) return last;
    }
}

/// The last character that the matcher takes; `last` if there is none.
template <class T, class Matcher>
const T* scan_backward(const T* first, const T* last, const Matcher& matches) noexcept {
    constexpr std::ptrdiff_t block = Lanes<T>::count;
    if (last - first < block) {
        for (const T* p = last; p != first;) {
            if (matches(*--p)) return p;
        }
        return last;
    }
    for (const T* end = last;; end -= block) {
        if (end - first < block) end = first + block;
        if (const unsigned int mask = matches(Lanes<T>::load(end - block))) {
            return end - block + Lanes<T>::last_lane(mask);
        }
        if (end - first == block) return last;
    }
}

/// Replaces every character by what the map gives for it. Applying the map twice must be the same as once, since some
/// characters near the end may be mapped again.
template <class T, class Map>
void transform(T* first, T* last, const Map& map) noexcept {
    constexpr std::ptrdiff_t block = Lanes<T>::count;
    if (last - first < block) {
        for (; first != last; ++first)
            *first = map(*first);
        return;
    }
    for (; last - first > block; first += block)
        map(Lanes<T>::load(first)).store(first);
    map(Lanes<T>::load(last - block)).store(last - block);
}

} // namespace kord

#endif
