#ifndef KORD_CORE_SCAN_H
#define KORD_CORE_SCAN_H

#include "core/lanes.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

/// The loops over characters [first, last). Each takes what it asks or does from a small object that answers for a
/// block of lanes; the object decides, the loop walks. Nothing outside [first, last) is read: fewer characters than
/// make a block are one partial block, and a last partial block overlaps the one before it.
namespace kord {

/// A block of characters at `p`, as a matcher sees it. A matcher is called with a block and answers which lanes match;
/// one that looks for texts also reads at offsets, where the text goes on.
template <class T>
struct Block {
    const T* p;
    [[gnu::always_inline]] Lanes<T> at(std::size_t offset) const noexcept { return Lanes<T>::load(p + offset); }
};

/// The same of n characters only.
template <class T>
struct PartialBlock {
    const T* p;
    std::size_t n;
    [[gnu::always_inline]] Lanes<T> at(std::size_t offset) const noexcept {
        return Lanes<T>::load_partial(p + offset, n);
    }

    template <class Matcher>
    [[gnu::always_inline]] unsigned int mask(const Matcher& matches) const noexcept {
        return Lanes<T>::lanes_before(matches(*this).mask(), static_cast<unsigned int>(n));
    }
};

/// A matcher: characters equal to `c`. Matchers are a few instructions in a loop that has them several times, more than
/// compilers care to inline unasked.
template <class T>
class Is {
  public:
    explicit Is(T c) noexcept : c_(Lanes<T>::splat(static_cast<unsigned int>(c))) {}
    [[gnu::always_inline]] Lanes<T> operator()(const auto& block) const noexcept { return equal(block.at(0), c_); }

  private:
    Lanes<T> c_;
};

/// A matcher: characters equal to `c` or to `d`.
template <class T>
class IsEither {
  public:
    IsEither(T c, T d) noexcept
        : c_(Lanes<T>::splat(static_cast<unsigned int>(c))), d_(Lanes<T>::splat(static_cast<unsigned int>(d))) {}
    [[gnu::always_inline]] Lanes<T> operator()(const auto& block) const noexcept {
        return equal(block.at(0), c_) | equal(block.at(0), d_);
    }

  private:
    Lanes<T> c_, d_;
};

/// A matcher: what another takes, or, if that is not `wanted`, what it does not take.
template <class T, class Matcher>
class IsOrNot {
  public:
    IsOrNot(const Matcher& matcher, bool wanted) noexcept
        : matcher_(matcher), flip_(Lanes<T>::splat(wanted ? 0 : ~0u)) {}
    [[gnu::always_inline]] Lanes<T> operator()(const auto& block) const noexcept { return matcher_(block) ^ flip_; }

  private:
    Matcher matcher_;
    Lanes<T> flip_;
};

/// Is a matcher so long that the loops should hold it once instead of being unrolled?
template <class Matcher>
inline constexpr bool is_long_matcher = false;
template <class T, class Matcher>
inline constexpr bool is_long_matcher<IsOrNot<T, Matcher>> = is_long_matcher<Matcher>;

/// The first character that the matcher takes; `last` if there is none.
///
/// The first block is looked at alone, as what is sought is often near; then four go together.
template <class T, class Matcher>
[[gnu::always_inline]] inline const T* scan_forward(const T* first, const T* last, const Matcher& matches) noexcept {
    using L = Lanes<T>;
    constexpr std::ptrdiff_t block = L::count;
    if (last - first < block) {
        const PartialBlock<T> part{first, static_cast<std::size_t>(last - first)};
        const unsigned int mask = part.mask(matches);
        return mask == 0 ? last : first + L::first_lane(mask);
    }
    if constexpr (!is_long_matcher<Matcher>) {
        if (const unsigned int mask = matches(Block<T>{first}).mask()) return first + L::first_lane(mask);
        for (first += block; last - first >= 4 * block; first += 4 * block) {
            const L a = matches(Block<T>{first}), b = matches(Block<T>{first + block});
            const L c = matches(Block<T>{first + 2 * block}), d = matches(Block<T>{first + 3 * block});
            if ((a | b | c | d).mask() == 0) continue;
            if (const unsigned int mask = a.mask()) return first + L::first_lane(mask);
            if (const unsigned int mask = b.mask()) return first + block + L::first_lane(mask);
            if (const unsigned int mask = c.mask()) return first + 2 * block + L::first_lane(mask);
            return first + 3 * block + L::first_lane(d.mask());
        }
        if (first == last) return last;
    }
    for (const T* const end = last - block;; first += block) {
        first = std::min(first, end);
        if (const unsigned int mask = matches(Block<T>{first}).mask()) return first + L::first_lane(mask);
        if (first == end) return last;
    }
}

/// Behind the last character that the matcher takes; `first` if there is none.
template <class T, class Matcher>
[[gnu::always_inline]] inline const T* scan_backward(const T* first, const T* last, const Matcher& matches) noexcept {
    using L = Lanes<T>;
    constexpr std::ptrdiff_t block = L::count;
    const auto behind = [](const T* p, unsigned int mask) { return p + L::last_lane(mask) + 1; };
    if (last - first < block) {
        const PartialBlock<T> part{first, static_cast<std::size_t>(last - first)};
        const unsigned int mask = part.mask(matches);
        return mask == 0 ? first : behind(first, mask);
    }
    if constexpr (!is_long_matcher<Matcher>) {
        if (const unsigned int mask = matches(Block<T>{last - block}).mask()) return behind(last - block, mask);
        for (last -= block; last - first >= 4 * block; last -= 4 * block) {
            const L a = matches(Block<T>{last - block}), b = matches(Block<T>{last - 2 * block});
            const L c = matches(Block<T>{last - 3 * block}), d = matches(Block<T>{last - 4 * block});
            if ((a | b | c | d).mask() == 0) continue;
            if (const unsigned int mask = a.mask()) return behind(last - block, mask);
            if (const unsigned int mask = b.mask()) return behind(last - 2 * block, mask);
            if (const unsigned int mask = c.mask()) return behind(last - 3 * block, mask);
            return behind(last - 4 * block, d.mask());
        }
        if (first == last) return first;
    }
    for (;;) {
        last -= std::min(block, last - first);
        if (const unsigned int mask = matches(Block<T>{last}).mask()) return behind(last, mask);
        if (last == first) return first;
    }
}

/// Is the C library's own search for a character known to be a fast one?
template <class T>
inline constexpr bool has_fast_character_scan =
#ifdef __GLIBC__
    sizeof(T) == 1;
#else
    false;
#endif

/// `scan_forward` for one character, by the C library's search where that is fast.
template <class T>
const T* scan_character(const T* first, const T* last, T c) noexcept {
#ifdef __GLIBC__
    if constexpr (has_fast_character_scan<T>) {
        const void* const found =
            first == last ? nullptr : std::memchr(first, c, static_cast<std::size_t>(last - first));
        return found == nullptr ? last : static_cast<const T*>(found);
    }
#endif
    return scan_forward(first, last, Is<T>(c));
}

/// `scan_backward`, likewise.
template <class T>
const T* scan_character_backward(const T* first, const T* last, T c) noexcept {
#ifdef __GLIBC__
    if constexpr (has_fast_character_scan<T>) {
        const void* const found = first == last ? nullptr : memrchr(first, c, static_cast<std::size_t>(last - first));
        return found == nullptr ? first : static_cast<const T*>(found) + 1;
    }
#endif
    return scan_backward(first, last, Is<T>(c));
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
            mask_ = matches_(Block<T>{at_}).mask();
            return;
        }
        at_ = first_;
        if (whole_) {
            mask_ = Lanes<T>::lanes_before(matches_(Block<T>{at_}).mask(), static_cast<unsigned int>(left));
        } else {
            mask_ = PartialBlock<T>{at_, static_cast<std::size_t>(left)}.mask(matches_);
        }
    }

    const Matcher matches_;
    const T* const first_;
    const T* at_; // where the block begins that the mask is of
    const bool whole_;
    unsigned int mask_ = 0;
};

/// `common_front` of at most one block.
template <class T, class Same>
std::size_t common_front_of_block(const T* a, const T* b, std::size_t n, const Same& same) noexcept {
    using L = Lanes<T>;
    const L both = n < L::count ? same(L::load_partial(a, n), L::load_partial(b, n)) : same(L::load(a), L::load(b));
    const unsigned int other = both.mask() ^ L::all;
    return other == 0 ? n : L::first_lane(other);
}

/// How many characters a[0 .. n) and b[0 .. n) have in common from the front on; n if they are the same. `same` says of
/// two blocks which lanes are.
template <class T, class Same>
[[gnu::always_inline]] inline std::size_t common_front(const T* a, const T* b, std::size_t n,
                                                       const Same& same) noexcept {
    using L = Lanes<T>;
    constexpr std::size_t block = L::count;
    if (n < block) return common_front_of_block(a, b, n, same);
    const auto part = [&](std::size_t i) { return same(L::load(a + i), L::load(b + i)); };
    std::size_t i = 0;
    for (; n - i >= 4 * block; i += 4 * block) {
        const L front = part(i) & part(i + block), back = part(i + 2 * block) & part(i + 3 * block);
        if ((front & back).mask() != L::all) break;
    }
    const std::size_t end = n - block;
    for (; i < end; i += block) {
        if (const unsigned int other = part(i).mask() ^ L::all) return i + L::first_lane(other);
    }
    const unsigned int other = part(end).mask() ^ L::all;
    return other == 0 ? n : end + L::first_lane(other);
}

/// `common_back` of at most one block.
template <class T, class Same>
std::size_t common_back_of_block(const T* a, const T* b, std::size_t n, const Same& same) noexcept {
    using L = Lanes<T>;
    const L both = n < L::count ? same(L::load_partial(a, n), L::load_partial(b, n)) : same(L::load(a), L::load(b));
    const unsigned int other = L::lanes_before(both.mask() ^ L::all, static_cast<unsigned int>(n));
    return other == 0 ? n : n - L::last_lane(other) - 1;
}

/// The same from the back on.
template <class T, class Same>
[[gnu::always_inline]] inline std::size_t common_back(const T* a, const T* b, std::size_t n,
                                                      const Same& same) noexcept {
    using L = Lanes<T>;
    constexpr std::size_t block = L::count;
    if (n < block) return common_back_of_block(a, b, n, same);
    for (std::size_t left = n; left != 0; left -= block) {
        if (left < block) left = block;
        const std::size_t i = left - block;
        const unsigned int other = same(L::load(a + i), L::load(b + i)).mask() ^ L::all;
        if (other != 0) return n - i - L::last_lane(other) - 1;
    }
    return n;
}

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
