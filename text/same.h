#ifndef KORD_TEXT_SAME_H
#define KORD_TEXT_SAME_H

#include <kord/chars.h>

#include "core/case.h"
#include "core/lanes.h"
#include "text/classify.h"

/// When two characters count as the same: the two answers that comparing and searching are written for. Each says it
/// for lanes, and gives the code by which characters are ordered.
namespace kord {

struct Exactly {
    template <class T>
    Lanes<T> operator()(Lanes<T> a, Lanes<T> b) const noexcept {
        return equal(a, b);
    }
    template <class T>
    static int code(T c) noexcept {
        return static_cast<int>(code_of(c));
    }
    /// The bits in which a character differs from the other one that counts as the same.
    static unsigned int case_bits(unsigned int) noexcept { return 0; }
};

struct WithoutCase {
    template <class T>
    Lanes<T> operator()(Lanes<T> a, Lanes<T> b) const noexcept {
        using L = Lanes<T>;
        if (a.is_ascii()) { // then b has to be: no letter has its partner across that line
            const L case_bit = L::splat(0x20);
            const L letters = in_range(a | case_bit, 'a', 'z');
            return equal(without(a ^ b, letters & case_bit), L::splat(0));
        }
        return same_letters(a, b);
    }
    template <class T>
    static int code(T c) noexcept {
        return KordToUpper(code_of(c));
    }
    static unsigned int case_bits(unsigned int code) noexcept {
        if (code >= 256 || (kordType[code] & (kordUpper | kordLower)) == 0) return 0;
        if ((kordType[code] & kordCaseException) == 0) return 0x20;
        return static_cast<unsigned int>(KordToLower(code) ^ KordToUpper(code));
    }

  private:
    /// With letters beyond ASCII; out of line, as it is long and the loops have several blocks.
    template <class T>
    [[gnu::noinline]] static Lanes<T> same_letters(Lanes<T> a, Lanes<T> b) noexcept {
        return equal(ToUpper<T>()(a), ToUpper<T>()(b));
    }
};

} // namespace kord

#endif
