#include <kord/range.h>

#include "core/scan.h"
#include "text/same.h"

#include <algorithm>
#include <limits>

namespace {

template <class T>
using Range = KordCharacterRange<T>;

/// Lengths differ by more than an `int` holds only where no string reaches; the sign stays right even there.
int length_difference(std::size_t a, std::size_t b) noexcept {
    constexpr std::ptrdiff_t most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(static_cast<std::ptrdiff_t>(a - b), -most, most));
}

/// What two texts differ by that have `same` characters in common.
template <class Same, class T>
int difference_at(const Range<T>& left, const Range<T>& right, std::size_t same) noexcept {
    const T* const a = left.begin() + same;
    const T* const b = right.begin() + same;
    if (a == left.end() || b == right.end()) {
        return length_difference(static_cast<std::size_t>(left.end() - a), static_cast<std::size_t>(right.end() - b));
    }
    return Same::code(*a) - Same::code(*b);
}

/// A path of its own, so that the usual one keeps nothing across a call.
template <class Same, class T>
[[gnu::noinline]] int difference_from(const Range<T>& left, const Range<T>& right, std::size_t n,
                                      std::size_t i) noexcept {
    return difference_at<Same>(left, right, kord::same_front_from<Same>(left.begin(), right.begin(), n, i));
}

template <class Same, class T>
[[gnu::noinline]] int difference(const Range<T>& left, const Range<T>& right) noexcept {
    const T* const a = left.begin();
    const T* const b = right.begin();
    const std::size_t a_length = static_cast<std::size_t>(left.end() - a);
    const std::size_t b_length = static_cast<std::size_t>(right.end() - b);
    const std::size_t n = std::min(a_length, b_length);
    const std::size_t same = kord::common_front(a, b, n, Same());
    if (same == n) return length_difference(a_length, b_length);
    if (Same::missed(a[same], b[same])) return difference_from<Same>(left, right, n, same);
    return Same::code(a[same]) - Same::code(b[same]);
}

} // namespace

template <class T>
int KordCharacterRange<T>::compare(T c) const noexcept {
    return difference<kord::Exactly>(*this, Range<T>(&c, 0, 1));
}

template <class T>
int KordCharacterRange<T>::compare(const T* s) const noexcept {
    return difference<kord::Exactly>(*this, Range<T>(s));
}

template <class T>
int KordCharacterRange<T>::compare(const KordCharacterRange<T>& r) const noexcept {
    return difference<kord::Exactly>(*this, r);
}

template <class T>
int KordCharacterRange<T>::compare(unsigned int pos, unsigned int len, const T* s, unsigned int n) const noexcept {
    return difference<kord::Exactly>(Range<T>(*this, pos, len), Range<T>(s, 0, n));
}

template <class T>
int KordCharacterRange<T>::compare(unsigned int pos1, unsigned int len1, const KordCharacterRange<T>& r,
                                   unsigned int pos2, unsigned int len2) const noexcept {
    return difference<kord::Exactly>(Range<T>(*this, pos1, len1), Range<T>(r, pos2, len2));
}

template <class T>
int KordCharacterRange<T>::compare_nocase(T c) const noexcept {
    return difference<kord::WithoutCase>(*this, Range<T>(&c, 0, 1));
}

template <class T>
int KordCharacterRange<T>::compare_nocase(const T* s) const noexcept {
    return difference<kord::WithoutCase>(*this, Range<T>(s));
}

template <class T>
int KordCharacterRange<T>::compare_nocase(const KordCharacterRange<T>& r) const noexcept {
    return difference<kord::WithoutCase>(*this, r);
}

template <class T>
int KordCharacterRange<T>::compare_nocase(unsigned int pos, unsigned int len, const T* s,
                                          unsigned int n) const noexcept {
    return difference<kord::WithoutCase>(Range<T>(*this, pos, len), Range<T>(s, 0, n));
}

template <class T>
int KordCharacterRange<T>::compare_nocase(unsigned int pos1, unsigned int len1, const KordCharacterRange<T>& r,
                                          unsigned int pos2, unsigned int len2) const noexcept {
    return difference<kord::WithoutCase>(Range<T>(*this, pos1, len1), Range<T>(r, pos2, len2));
}

template class KordCharacterRange<char>;
template class KordCharacterRange<unsigned short>;
