#ifndef KORD_TEXT_CHARACTER_SET_H
#define KORD_TEXT_CHARACTER_SET_H

#include <kord/range.h>

#include "core/scan.h"
#include "text/classify.h"

/// Matchers for the characters of a set.
namespace kord {

/// A few members, each compared with. At least one.
template <class T>
class FewMembers {
  public:
    static constexpr unsigned int most = 8;

    explicit FewMembers(const KordCharacterRange<T>& set) noexcept : more_(set.length() > 4) {
        const unsigned int n = more_ ? 8 : 4;
        for (unsigned int i = 0; i != n; ++i) {
            members_[i] = i < set.length() ? Lanes<T>::splat(static_cast<unsigned int>(set[i])) : members_[0];
        }
    }
    Lanes<T> operator()(const auto& block) const noexcept {
        const Lanes<T> x = block.at(0);
        return more_ ? four(x, 0) | four(x, 4) : four(x, 0);
    }

  private:
    Lanes<T> four(Lanes<T> x, unsigned int i) const noexcept {
        return (equal(x, members_[i]) | equal(x, members_[i + 1])) |
               (equal(x, members_[i + 2]) | equal(x, members_[i + 3]));
    }

    Lanes<T> members_[most];
    bool more_;
};

/// Any number of members: a bitmap of the codes below 256, and of the last bytes of the others.
template <class T>
class ManyMembers {
  public:
    explicit ManyMembers(const KordCharacterRange<T>& set) noexcept : set_(set) {
        for (const T c : set) (code_of(c) < 256 ? narrow_ : wide_).add(code_of(c) & 0xFF);
        for (const T c : set) has_wide_ |= code_of(c) >= 256;
    }
    const CodeSet& narrow() const noexcept { return narrow_; }
    bool has_wide() const noexcept { return has_wide_; }

    Lanes<T> operator()(const auto& block) const noexcept {
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

/// Members below 256 only, found by shuffles.
template <class T>
class NarrowMembers {
  public:
    explicit NarrowMembers(const CodeSet& set) noexcept : set_(set) {}
    KORD_SHUFFLES Lanes<T> operator()(const auto& block) const noexcept { return in_set(block.at(0), set_); }

  private:
    const CodeSet& set_;
};

template <class T, class Scan>
KORD_SHUFFLES const T* scan_narrow_members(const CodeSet& set, const Scan& scan) noexcept {
    return scan(NarrowMembers<T>(set));
}

/// Calls the scan with a matcher for the members of the set.
template <class T, class Scan>
const T* scan_members(const KordCharacterRange<T>& set, const Scan& scan) noexcept {
    if (!set.empty() && set.length() <= FewMembers<T>::most) return scan(FewMembers<T>(set));
    const ManyMembers<T> members(set);
    if (!members.has_wide() && has_shuffles()) return scan_narrow_members<T>(members.narrow(), scan);
    return scan(members);
}

} // namespace kord

#endif
