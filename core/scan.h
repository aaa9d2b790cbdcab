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

/// A matcher: characters equal to `c` or to `d`.
template <class T>
class IsEither {
  public:
    IsEither(T c, T d) noexcept
        : c_lanes_(Lanes<T>::splat(static_cast<unsigned int>(c))),
          d_lanes_(Lanes<T>::splat(static_cast<unsigned int>(d))), c_(c), d_(d) {}
    unsigned int operator()(Lanes<T> x) const noexcept { return (equal(x, c_lanes_) | equal(x, d_lanes_)).mask(); }
    bool operator()(T x) const noexcept { return x == c_ || x == d_; }

  private:
    Lanes<T> c_lanes_, d_lanes_;
    T c_, d_;
};

/// The first character that the matcher takes; `last` if there is none.
template <class T, class Matcher>
const T* scan_forward(const T* first, const T* last, const Matcher& matches) noexcept {
    constexpr std::ptrdiff_t block = Lanes<T>::count;
    if (last - first < block) {
        while (first != last && !matches(*first)) ++first;
        return first;
    }
    for (;; first += block) {
        if (last - first < block) first = last - block;
        if (const unsigned int mask = matches(Lanes<T>::load(first))) return first + Lanes<T>::first_lane(mask);
        if (last - first == block) return last;
    }
}

/// Walks all matches from the back to the front; each block is looked at once.
template <class T, class Matcher>
class BackwardMatches {
  public:
    BackwardMatches(const T* first, const T* last, const Matcher& matches) noexcept
        : matches_(matches), first_(first), at_(last), whole_(last - first >= block) {}

    /// The next match towards the front; null if there is none.
    const T* next() noexcept {
        while (mask_ == 0) {
            if (at_ == first_) return nullptr;
            load();
        }
        const unsigned int lane = Lanes<T>::last_lane(mask_);
        mask_ = Lanes<T>::lanes_before(mask_, lane);
        return at_ + lane;
    }

  private:
    static constexpr std::ptrdiff_t block = Lanes<T>::count;

    void load() noexcept {
        const std::ptrdiff_t left = at_ - first_;
        if (left >= block) {
            at_ -= block;
            mask_ = matches_(Lanes<T>::load(at_));
            return;
        }
        at_ = first_;
        if (whole_) {
            mask_ = Lanes<T>::lanes_before(matches_(Lanes<T>::load(at_)), static_cast<unsigned int>(left));
            return;
        }
        for (unsigned int lane = 0; lane != static_cast<unsigned int>(left); ++lane) {
            if (matches_(at_[lane])) mask_ |= Lanes<T>::lane_bit(lane);
        }
    }

    const Matcher matches_;
    const T* const first_;
    const T* at_; // where the block begins that the mask is of
    const bool whole_;
    unsigned int mask_ = 0;
};

/// Replaces every character by what the map gives for it. Where the last block overlaps the one before it, both write
/// the same: all of it is read before anything there is written.
template <class T, class Map>
void transform(T* first, T* last, const Map& map) noexcept {
    constexpr std::ptrdiff_t block = Lanes<T>::count;
    if (last - first < block) {
        for (; first != last; ++first) *first = map(*first);
        return;
    }
    const Lanes<T> end = map(Lanes<T>::load(last - block));
    for (; last - first > block; first += block) map(Lanes<T>::load(first)).store(first);
    end.store(last - block);
}

} // namespace kord

#endif
