#ifndef KORD_TEXT_CHARACTER_SET_H
#define KORD_TEXT_CHARACTER_SET_H

#include <kord/range.h>

#include "core/scan.h"
#include "text/classify.h"

/// Searching for a character that is, or is not, in a set.
namespace kord {

/// A matcher: one of at least one and at most four members.
template <class T>
class FewMembers {
  public:
    static constexpr unsigned int most = 4;

    FewMembers(const T* members, unsigned int n) noexcept : FewMembers(load(members, n)) {}
    [[gnu::always_inline]] Lanes<T> operator()(const auto& block) const noexcept { return has(block.at(0)); }
    [[gnu::always_inline]] Lanes<T> has(Lanes<T> x) const noexcept {
        return (equal(x, a_) | equal(x, b_)) | (equal(x, c_) | equal(x, d_));
    }

  private:
    using L = Lanes<T>;

    explicit FewMembers(std::uint64_t word) noexcept
        : a_(L::template splat_of<0>(word)), b_(L::template splat_of<1>(word)), c_(L::template splat_of<2>(word)),
          d_(L::template splat_of<3>(word)) {}

    /// Four members in a word; fewer are repeated.
    static std::uint64_t load(const T* p, unsigned int n) noexcept {
        if (n == 4) return sizeof(T) == 1 ? load_word<std::uint32_t>(p) : load_word<std::uint64_t>(p);
        std::uint64_t word = load_few(p, n);
        for (unsigned int k = n; k < 4; k += k) word |= word << 8 * sizeof(T) * k;
        return word;
    }

    L a_, b_, c_, d_;
};

/// A matcher: one of more than four members, compared with each, four at a time. Takes no preparation.
template <class T>
class EachMember {
  public:
    explicit EachMember(const KordCharacterRange<T>& set) noexcept : first_(set.begin()), last_(set.end() - most) {}
    [[gnu::always_inline]] Lanes<T> operator()(const auto& block) const noexcept {
        return is_one(block.at(0), first_, last_);
    }

  private:
    static constexpr unsigned int most = FewMembers<T>::most;

    [[gnu::noinline]] static Lanes<T> is_one(Lanes<T> x, const T* first, const T* last) noexcept {
        Lanes<T> found = FewMembers<T>(last, most).has(x);
        for (; first < last; first += most) found = found | FewMembers<T>(first, most).has(x);
        return found;
    }

    const T* first_;
    const T* last_; // the last four members, which the ones before may overlap
};

template <class T>
inline constexpr bool is_long_matcher<EachMember<T>> = true;

/// A matcher: one of any number of members. A bitmap of the codes below 256, and of the last bytes of the others.
template <class T>
class ManyMembers {
  public:
    explicit ManyMembers(const KordCharacterRange<T>& set) noexcept : set_(set) {
        for (const T c : set) {
            if (code_of(c) < 256) {
                narrow_.add(code_of(c));
            } else {
                wide_.add(code_of(c) & 0xFF);
                has_wide_ = true;
            }
        }
    }
    const CodeSet& narrow() const noexcept { return narrow_; }
    bool has_wide() const noexcept { return has_wide_; }

    [[gnu::noinline]] Lanes<T> operator()(const auto& block) const noexcept {
        return Lanes<T>::where(block.at(0), [this](T c) { return has(c); });
    }

  private:
    bool has(T c) const noexcept {
        const unsigned int code = code_of(c);
        if (code < 256) return narrow_.has(code);
        return wide_.has(code & 0xFF) && scan_forward(set_.begin(), set_.end(), Is<T>(c)) != set_.end();
    }

    const KordCharacterRange<T>& set_;
    CodeSet narrow_, wide_;
    bool has_wide_ = false;
};

template <class T>
inline constexpr bool is_long_matcher<ManyMembers<T>> = true;

/// A matcher: one of the members of a bitmap, found by shuffles.
template <class T>
class NarrowMembers {
  public:
    explicit NarrowMembers(const CodeSet& set) noexcept : set_(set) {}
    KORD_SHUFFLES Lanes<T> operator()(const auto& block) const noexcept { return in_set(block.at(0), set_); }

  private:
    const CodeSet& set_;
};

/// Narrows [first, last) to the next character that is in a set prepared for that, or, if that is not `wanted`, is not.
template <class Direction, class T>
KORD_SHUFFLES void seek_narrow_member(const T*& first, const T*& last, const CodeSet& set, bool wanted) noexcept {
    Direction::seek(first, last, IsOrNot<T, NarrowMembers<T>>(NarrowMembers<T>(set), wanted));
}

template <class Direction, class T>
[[gnu::noinline]] void seek_prepared_member(const T*& first, const T*& last, const KordCharacterRange<T>& set,
                                            bool wanted) noexcept {
    const ManyMembers<T> members(set);
    if (!members.has_wide() && has_shuffles()) {
        return seek_narrow_member<Direction>(first, last, members.narrow(), wanted);
    }
    Direction::seek(first, last, IsOrNot<T, ManyMembers<T>>(members, wanted));
}

/// The same in any set but one of few members. In a short text, and near by in a longer one, preparation does not pay.
template <class Direction, class T>
[[gnu::always_inline]] inline void seek_member(const T*& first, const T*& last, const KordCharacterRange<T>& set,
                                               bool wanted) noexcept {
    if (set.empty()) return seek_prepared_member<Direction>(first, last, set, wanted);
    constexpr std::ptrdiff_t block = Lanes<T>::count;
    const T* near_first = first;
    const T* near_last = last;
    if (last - first > 3 * block) Direction::keep(near_first, near_last, block);
    Direction::seek(near_first, near_last, IsOrNot<T, EachMember<T>>(EachMember<T>(set), wanted));
    Direction::follow(first, last, near_first, near_last);
    if (near_first == near_last && first != last) seek_prepared_member<Direction>(first, last, set, wanted);
}

} // namespace kord

#endif
