#include <kord/range.h>

#include "core/scan.h"
#include "text/character_set.h"
#include "text/find_text.h"

#include <algorithm>

namespace {

template <class T>
using Range = KordCharacterRange<T>;

template <class T, class Matcher>
kord::IsNot<T, Matcher> not_in(const Matcher& matcher) noexcept {
    return kord::IsNot<T, Matcher>(matcher);
}

// The three conventions for the position. Each gets a search over pointers that says where it ended: the place itself,
// or the end of what it was given.

/// `pos` is the first position looked at; search(first, last) returns the place, or last.
template <class T, class Search>
unsigned int forward(const Range<T>& text, unsigned int pos, Search search) noexcept {
    const unsigned int length = text.length();
    if (pos >= length) return Range<T>::npos;
    const T* const last = text.begin() + length;
    const T* const found = search(text.begin() + pos, last);
    return found == last ? Range<T>::npos : static_cast<unsigned int>(found - text.begin());
}

/// `pos` is the last position looked at; search(first, last) returns the place behind the character, or first.
template <class T, class Search>
unsigned int backward(const Range<T>& text, unsigned int pos, Search search) noexcept {
    const unsigned int length = text.length();
    if (pos == Range<T>::npos) pos = length - 1;
    if (pos >= length) return Range<T>::npos;
    const T* const found = search(text.begin(), text.begin() + pos + 1);
    return static_cast<unsigned int>(found - text.begin()) - 1;
}

/// A match ends at or before `pos`.
template <class Same, class T>
unsigned int backward_text(const Range<T>& text, const Range<T>& wanted, unsigned int pos) noexcept {
    const unsigned int length = text.length();
    const unsigned int n = wanted.length();
    const unsigned int start = (pos == Range<T>::npos ? length : pos) - n; // wraps
    if (start >= length || n > length) return Range<T>::npos;
    if (n == 0) return start;
    const T* const first = text.begin();
    const T* const last = first + std::min(start, length - n) + 1;
    const T* const found = kord::find_text<Same, kord::Backward>(first, last, wanted.begin(), n);
    return found == nullptr ? Range<T>::npos : static_cast<unsigned int>(found - first);
}

template <class Same, class T>
unsigned int forward_text(const Range<T>& text, const Range<T>& wanted, unsigned int pos) noexcept {
    return forward(text, pos, [&](const T* first, const T* last) {
        const std::size_t n = static_cast<std::size_t>(wanted.end() - wanted.begin());
        if (n == 0) return first;
        if (n > static_cast<std::size_t>(last - first)) return last;
        const T* const found = kord::find_text<Same, kord::Forward>(first, last - n + 1, wanted.begin(), n);
        return found == nullptr ? last : found;
    });
}

} // namespace

template <class T>
unsigned int KordCharacterRange<T>::find(T c, unsigned int pos) const noexcept {
    return forward(*this, pos, [c](const T* first, const T* last) { return kord::scan_character(first, last, c); });
}

template <class T>
unsigned int KordCharacterRange<T>::find(const T* s, unsigned int pos) const noexcept {
    return forward_text<kord::Exactly>(*this, Range<T>(s), pos);
}

template <class T>
unsigned int KordCharacterRange<T>::find(const KordCharacterRange<T>& r, unsigned int pos) const noexcept {
    return forward_text<kord::Exactly>(*this, r, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::find_nocase(const KordCharacterRange<T>& r, unsigned int pos) const noexcept {
    return forward_text<kord::WithoutCase>(*this, r, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::rfind(const T* s, unsigned int pos) const noexcept {
    return backward_text<kord::Exactly>(*this, Range<T>(s), pos);
}

template <class T>
unsigned int KordCharacterRange<T>::rfind(const KordCharacterRange<T>& r, unsigned int pos) const noexcept {
    return backward_text<kord::Exactly>(*this, r, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::rfind_nocase(const KordCharacterRange<T>& r, unsigned int pos) const noexcept {
    return backward_text<kord::WithoutCase>(*this, r, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::find_first_of(const KordCharacterRange<T>& set, unsigned int pos) const noexcept {
    return forward(*this, pos, [&set](const T* first, const T* last) {
        return kord::scan_members(set, [=](const auto& in) { return kord::scan_forward(first, last, in); });
    });
}

template <class T>
unsigned int KordCharacterRange<T>::find_first_not_of(const KordCharacterRange<T>& set,
                                                      unsigned int pos) const noexcept {
    return forward(*this, pos, [&set](const T* first, const T* last) {
        return kord::scan_members(set, [=](const auto& in) { return kord::scan_forward(first, last, not_in<T>(in)); });
    });
}

template <class T>
unsigned int KordCharacterRange<T>::find_last_of(const KordCharacterRange<T>& set, unsigned int pos) const noexcept {
    return backward(*this, pos, [&set](const T* first, const T* last) {
        return kord::scan_members(set, [=](const auto& in) { return kord::scan_backward(first, last, in); });
    });
}

template <class T>
unsigned int KordCharacterRange<T>::find_last_not_of(const KordCharacterRange<T>& set,
                                                     unsigned int pos) const noexcept {
    return backward(*this, pos, [&set](const T* first, const T* last) {
        return kord::scan_members(set, [=](const auto& in) { return kord::scan_backward(first, last, not_in<T>(in)); });
    });
}

template <class T>
unsigned int KordCharacterRange<T>::find_first_not_of(T c, unsigned int pos) const noexcept {
    return forward(*this, pos, [c](const T* first, const T* last) {
        return kord::scan_forward(first, last, not_in<T>(kord::Is<T>(c)));
    });
}

template <class T>
unsigned int KordCharacterRange<T>::find_last_not_of(T c, unsigned int pos) const noexcept {
    return backward(*this, pos, [c](const T* first, const T* last) {
        return kord::scan_backward(first, last, not_in<T>(kord::Is<T>(c)));
    });
}

template <class T>
unsigned int KordCharacterRange<T>::rfind(T c, unsigned int pos) const noexcept {
    return backward(*this, pos,
                    [c](const T* first, const T* last) { return kord::scan_character_backward(first, last, c); });
}

template <class T>
void KordCharacterRange<T>::remove_trailing(T c) noexcept {
    end_ = kord::scan_backward(begin_, end_, not_in<T>(kord::Is<T>(c)));
}

template class KordCharacterRange<char>;
template class KordCharacterRange<unsigned short>;
