#include <kord/range.h>

#include "core/scan.h"
#include "text/character_set.h"
#include "text/direction.h"
#include "text/find_text.h"

#include <algorithm>
#include <type_traits>

namespace {

using kord::Backward;
using kord::Exactly;
using kord::Forward;
using kord::WithoutCase;
template <class T>
using Range = KordCharacterRange<T>;

/// A matcher for what is not `c`.
template <class T>
kord::IsOrNot<T, kord::Is<T>> other_than(T c) noexcept {
    return kord::IsOrNot<T, kord::Is<T>>(kord::Is<T>(c), false);
}

// The three conventions for the position. The first two hand the places to a search that narrows them to the one found.

/// `pos` is the first position looked at.
template <class T, class Search>
[[gnu::always_inline]] inline unsigned int forward(const Range<T>& text, unsigned int pos, Search search) noexcept {
    const unsigned int length = text.length();
    if (pos >= length) return Range<T>::npos;
    const T* first = text.begin() + pos;
    const T* last = text.begin() + length;
    search(first, last);
    return first == last ? Range<T>::npos : static_cast<unsigned int>(first - text.begin());
}

/// `pos` is the last position looked at.
template <class T, class Search>
[[gnu::always_inline]] inline unsigned int backward(const Range<T>& text, unsigned int pos, Search search) noexcept {
    const unsigned int length = text.length();
    if (pos == Range<T>::npos) pos = length - 1;
    if (pos >= length) return Range<T>::npos;
    const T* first = text.begin();
    const T* last = first + pos + 1;
    search(first, last);
    return first == last ? Range<T>::npos : static_cast<unsigned int>(last - first) - 1;
}

/// The one of the two that goes in the direction.
template <class Direction, class T, class Search>
[[gnu::always_inline]] inline unsigned int find_from(const Range<T>& text, unsigned int pos, Search search) noexcept {
    if constexpr (std::is_same_v<Direction, Forward>) {
        return forward(text, pos, search);
    } else {
        return backward(text, pos, search);
    }
}

/// The next character that is in a set, or, if that is not `wanted`, is not.
template <class Direction, class T>
[[gnu::noinline]] unsigned int find_one_of_many(const Range<T>& text, const Range<T>& set, unsigned int pos,
                                                bool wanted) noexcept {
    return find_from<Direction>(text, pos, [&set, wanted](const T*& first, const T*& last) {
        kord::seek_member<Direction>(first, last, set, wanted);
    });
}

/// Sets of few members have a path of their own that prepares next to nothing.
template <class Direction, bool wanted, class T>
[[gnu::always_inline]] inline unsigned int find_one_of(const Range<T>& text, const Range<T>& set,
                                                       unsigned int pos) noexcept {
    const unsigned int n = set.length();
    if (n - 1 >= kord::FewMembers<T>::most) return find_one_of_many<Direction>(text, set, pos, wanted);
    return find_from<Direction>(text, pos, [&set, n](const T*& first, const T*& last) {
        const kord::FewMembers<T> members(set.begin(), n);
        Direction::seek(first, last, kord::IsOrNot<T, kord::FewMembers<T>>(members, wanted));
    });
}

/// Where the text is, from `begin` on, or `npos`. In a long text there is room for leaps, where those are fast.
template <class Same, class Direction, class T>
unsigned int place(const T* first, const T* last, const Range<T>& wanted, unsigned int n, const T* begin) noexcept {
    constexpr std::ptrdiff_t is_long = 1024;
    if constexpr (kord::has_fast_character_scan<T> && std::is_same_v<Same, Exactly>) {
        if (last - first >= is_long) {
            return kord::find_in_long_text<Same, Direction>(first, last, wanted.begin(), n, begin);
        }
    }
    return kord::find_text<Same, Direction>(first, last, wanted.begin(), n, begin);
}

/// A match ends at or before `pos`.
template <class Same, class T>
unsigned int backward_text(const Range<T>& text, const Range<T>& wanted, unsigned int pos) noexcept {
    const unsigned int length = text.length();
    const unsigned int n = wanted.length();
    const unsigned int start = (pos == Range<T>::npos ? length : pos) - n; // wraps
    if (start >= length || n > length || n == Range<T>::npos) return Range<T>::npos;
    if (n == 0) return start;
    const T* const first = text.begin();
    const T* const last = first + std::min(start, length - n) + 1;
    return place<Same, Backward>(first, last, wanted, n, first);
}

/// A match begins at or after `pos`.
template <class Same, class T>
unsigned int forward_text(const Range<T>& text, const Range<T>& wanted, unsigned int pos) noexcept {
    const unsigned int length = text.length();
    const unsigned int n = wanted.length();
    if (pos >= length || n > length - pos || n == Range<T>::npos) return Range<T>::npos;
    if (n == 0) return pos;
    const T* const first = text.begin() + pos;
    const T* const last = text.begin() + (length - n) + 1;
    return place<Same, Forward>(first, last, wanted, n, text.begin());
}

} // namespace

template <class T>
unsigned int KordCharacterRange<T>::find(T c, unsigned int pos) const noexcept {
    return forward(*this, pos, [c](const T*& first, const T*& last) { Forward::seek_character(first, last, c); });
}

template <class T>
unsigned int KordCharacterRange<T>::find(const T* s, unsigned int pos) const noexcept {
    return forward_text<Exactly>(*this, Range<T>(s), pos);
}

template <class T>
unsigned int KordCharacterRange<T>::find(const KordCharacterRange<T>& r, unsigned int pos) const noexcept {
    return forward_text<Exactly>(*this, r, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::find_nocase(const KordCharacterRange<T>& r, unsigned int pos) const noexcept {
    return forward_text<WithoutCase>(*this, r, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::rfind(const T* s, unsigned int pos) const noexcept {
    return backward_text<Exactly>(*this, Range<T>(s), pos);
}

template <class T>
unsigned int KordCharacterRange<T>::rfind(const KordCharacterRange<T>& r, unsigned int pos) const noexcept {
    return backward_text<Exactly>(*this, r, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::rfind_nocase(const KordCharacterRange<T>& r, unsigned int pos) const noexcept {
    return backward_text<WithoutCase>(*this, r, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::find_first_of(const KordCharacterRange<T>& set, unsigned int pos) const noexcept {
    return find_one_of<Forward, true>(*this, set, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::find_first_not_of(const KordCharacterRange<T>& set,
                                                      unsigned int pos) const noexcept {
    return find_one_of<Forward, false>(*this, set, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::find_last_of(const KordCharacterRange<T>& set, unsigned int pos) const noexcept {
    return find_one_of<Backward, true>(*this, set, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::find_last_not_of(const KordCharacterRange<T>& set,
                                                     unsigned int pos) const noexcept {
    return find_one_of<Backward, false>(*this, set, pos);
}

template <class T>
unsigned int KordCharacterRange<T>::find_first_not_of(T c, unsigned int pos) const noexcept {
    return forward(*this, pos, [c](const T*& first, const T*& last) { Forward::seek(first, last, other_than(c)); });
}

template <class T>
unsigned int KordCharacterRange<T>::find_last_not_of(T c, unsigned int pos) const noexcept {
    return backward(*this, pos, [c](const T*& first, const T*& last) { Backward::seek(first, last, other_than(c)); });
}

template <class T>
unsigned int KordCharacterRange<T>::rfind(T c, unsigned int pos) const noexcept {
    return backward(*this, pos, [c](const T*& first, const T*& last) { Backward::seek_character(first, last, c); });
}

template <class T>
void KordCharacterRange<T>::remove_trailing(T c) noexcept {
    end_ = kord::scan_backward(begin_, end_, other_than(c));
}

template class KordCharacterRange<char>;
template class KordCharacterRange<unsigned short>;
