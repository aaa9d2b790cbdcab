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
    explicit FewMembers(const KordCharacterRange<T>& set) noexcept : FewMembers(load(set.begin(), set.length())) {}
    [[gnu::always_inline]] Lanes<T> operator()(const auto& block) const noexcept {
        const Lanes<T> x = block.at(0);
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

/// A matcher: one of the members of a bitmap, found by shuffles.
template <class T>
class NarrowMembers {
  public:
    explicit NarrowMembers(const CodeSet& set) noexcept : set_(set) {}
    KORD_SHUFFLES Lanes<T> operator()(const auto& block) const noexcept { return in_set(block.at(0), set_); }

  private:
    const CodeSet& set_;
};

/// A set as it is, the front of it held in lanes: whether a character is in it takes a few comparisons and no
/// preparation.
template <class T>
class PlainSet {
  public:
    /// Of at least one member.
    explicit PlainSet(const KordCharacterRange<T>& set) noexcept : set_(set) {
        constexpr unsigned int block = Lanes<T>::count;
        const unsigned int n = set.length();
        if (n < block) {
            front_[0] = front_[1] = front_[2] = front_[3] = Lanes<T>::load_partial(set.begin(), n);
            members_ = Lanes<T>::lanes_before(Lanes<T>::all, n);
            return;
        }
        for (unsigned int i = 0; i != 4; ++i) {
            front_[i] = Lanes<T>::load(set.begin() + (i * block < n - block ? i * block : n - block));
        }
    }
    bool has(T c) const noexcept {
        const Lanes<T> x = Lanes<T>::splat(static_cast<unsigned int>(c));
        const Lanes<T> found =
            (equal(x, front_[0]) | equal(x, front_[1])) | (equal(x, front_[2]) | equal(x, front_[3]));
        if ((found.mask() & members_) != 0) return true;
        constexpr std::ptrdiff_t in_front = 4 * Lanes<T>::count;
        return set_.end() - set_.begin() > in_front &&
               scan_forward(set_.begin() + in_front, set_.end(), Is<T>(c)) != set_.end();
    }

  private:
    const KordCharacterRange<T>& set_;
    Lanes<T> front_[4];
    unsigned int members_ = Lanes<T>::all;
};

/// Narrows [first, last) to the next character that is in the set, or, if that is not `wanted`, is not.
template <class Direction, class T>
class MemberSearch {
  public:
    [[gnu::always_inline]] static void seek(const T*& first, const T*& last, const KordCharacterRange<T>& set,
                                            bool wanted) noexcept {
        const unsigned int n = set.length();
        if (n - 1 < 4) return seek(first, last, FewMembers<T>(set), wanted);
        seek_near(first, last, set, wanted);
    }

  private:
    /// The next few characters are looked up in the set as it is, which for them is less work than any preparation.
    [[gnu::noinline]] static void seek_near(const T*& first, const T*& last, const KordCharacterRange<T>& set,
                                            bool wanted) noexcept {
        if (set.empty()) return seek_prepared(first, last, set, wanted);
        const PlainSet<T> members(set);
        for (unsigned int i = 0; i != 8 && first != last; ++i) {
            if (members.has(*Direction::next(first, last)) == wanted) return;
            Direction::drop(first, last, 1);
        }
        if (first != last) seek_prepared(first, last, set, wanted);
    }

    [[gnu::noinline]] static void seek_prepared(const T*& first, const T*& last, const KordCharacterRange<T>& set,
                                                bool wanted) noexcept {
        const ManyMembers<T> members(set);
        if (!members.has_wide() && has_shuffles()) return seek_narrow(first, last, members.narrow(), wanted);
        seek(first, last, members, wanted);
    }

    KORD_SHUFFLES static void seek_narrow(const T*& first, const T*& last, const CodeSet& set, bool wanted) noexcept {
        seek(first, last, NarrowMembers<T>(set), wanted);
    }

    template <class Matcher>
    [[gnu::always_inline]] static void seek(const T*& first, const T*& last, const Matcher& members,
                                            bool wanted) noexcept {
        Direction::seek(first, last, IsOrNot<T, Matcher>(members, wanted));
    }
};

} // namespace kord

#endif
