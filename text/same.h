#ifndef KORD_TEXT_SAME_H
#define KORD_TEXT_SAME_H

#include <kord/chars.h>

#include "core/case.h"
#include "core/scan.h"
#include "text/classify.h"

#include <algorithm>
#include <cstddef>

/// When two characters count as the same: the two answers that comparing and searching are written for. Each says it
/// for lanes, and gives the code by which characters are ordered.
namespace kord {

struct Exactly {
    using Fully = Exactly;
    template <class T>
    Lanes<T> operator()(Lanes<T> a, Lanes<T> b) const noexcept {
        return equal(a, b);
    }
    template <class T>
    static int code(T c) noexcept {
        return static_cast<int>(code_of(c));
    }
    /// Are characters the same that the lanes say are not?
    template <class T>
    static bool missed(T, T) noexcept {
        return false;
    }
    /// The bits in which a character differs from the other one that counts as the same.
    static unsigned int case_bits(unsigned int) noexcept { return 0; }
};

/// To the lanes only the letters of ASCII have a partner, as others are rare and would take three times as long. Where
/// they find a difference, `missed` says whether it is one, and if not, `Fully` goes on from there.
struct WithoutCase {
    template <class T>
    Lanes<T> operator()(Lanes<T> a, Lanes<T> b) const noexcept {
        using L = Lanes<T>;
        const L case_bit = L::splat(0x20);
        const L letters = in_range(a | case_bit, 'a', 'z');
        return equal(without(a ^ b, letters & case_bit), L::splat(0));
    }
    /// The lanes with all letters.
    struct Fully {
        template <class T>
        [[gnu::noinline]] Lanes<T> operator()(Lanes<T> a, Lanes<T> b) const noexcept {
            return equal(ToUpper<T>()(a), ToUpper<T>()(b));
        }
    };
    template <class T>
    static int code(T c) noexcept {
        return KordToUpper(code_of(c));
    }
    template <class T>
    static bool missed(T a, T b) noexcept {
        return code(a) == code(b);
    }
    static unsigned int case_bits(unsigned int code) noexcept {
        if (code >= 256 || (kordType[code] & (kordUpper | kordLower)) == 0) return 0;
        if ((kordType[code] & kordCaseException) == 0) return 0x20;
        return static_cast<unsigned int>(KordToLower(code) ^ KordToUpper(code));
    }
};

/// How many characters a[0 .. n) and b[0 .. n) have in common from the front on, where lanes have missed that those at
/// i are the same.
template <class Same, class T>
[[gnu::noinline]] std::size_t same_front_from(const T* a, const T* b, std::size_t n, std::size_t i) noexcept {
    while (i != n) {
        const std::size_t block = std::min<std::size_t>(n - i, Lanes<T>::count);
        const std::size_t same = common_front_of_block(a + i, b + i, block, typename Same::Fully());
        i += same;
        if (same != block) break;
    }
    return i;
}

/// How many characters a[0 .. n) and b[0 .. n) have in common from the front on.
template <class Same, class T>
[[gnu::noinline]] std::size_t same_front(const T* a, const T* b, std::size_t n) noexcept {
    const std::size_t i = common_front(a, b, n, Same());
    return i != n && Same::missed(a[i], b[i]) ? same_front_from<Same>(a, b, n, i) : i;
}

/// `same_front_from` from the back on: `left` characters are left, the last of which are the same.
template <class Same, class T>
[[gnu::noinline]] std::size_t same_back_from(const T* a, const T* b, std::size_t n, std::size_t left) noexcept {
    while (left != 0) {
        const std::size_t block = std::min<std::size_t>(left, Lanes<T>::count), at = left - block;
        const std::size_t same = common_back_of_block(a + at, b + at, block, typename Same::Fully());
        left -= same;
        if (same != block) break;
    }
    return n - left;
}

/// The same from the back on.
template <class Same, class T>
[[gnu::noinline]] std::size_t same_back(const T* a, const T* b, std::size_t n) noexcept {
    const std::size_t left = n - common_back(a, b, n, Same());
    return left != 0 && Same::missed(a[left - 1], b[left - 1]) ? same_back_from<Same>(a, b, n, left) : n - left;
}

} // namespace kord

#endif
