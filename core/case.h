#ifndef KORD_CORE_CASE_H
#define KORD_CORE_CASE_H

#include "core/lanes.h"

#include <kord/chars.h>

#include <type_traits>

/// Case mapping by lanes of either width, for `transform`.
///
/// A letter and its partner differ in fixed bits, so both directions are one exclusive or with the bits of each group:
///  - 0x20: the 26 letters from `a` on; the 30 from `latin` on but for a sign at the 24th place; the letter `odd`
///  - 0x10: three letters, every other code from `near` on
///  - 0x60: the letter `far`
/// A block of codes below 128 needs the first comparison only. Codes of 256 and more are in no group.
namespace kord {

struct UpperLetters {
    static constexpr unsigned int a = 'A', latin = 192, odd = 254, near = 138, far = 159;
    static int partner(unsigned int c) noexcept { return KordToLower(c); }
};

struct LowerLetters {
    static constexpr unsigned int a = 'a', latin = 224, odd = 222, near = 154, far = 255;
    static int partner(unsigned int c) noexcept { return KordToUpper(c); }
};

/// Maps the given letters to their partners and every other character to itself.
template <class T, class Letters>
struct CaseMap {
    using L = Lanes<T>;

    L operator()(L x) const noexcept {
        const L basic = in_range(x, Letters::a, Letters::a + 25);
        if (x.is_ascii()) return x ^ (basic & L::splat(0x20));
        const L latin = without(in_range(x, Letters::latin, Letters::latin + 29), is(x, Letters::latin + 23));
        const L near = is(x, Letters::near) | is(x, Letters::near + 2) | is(x, Letters::near + 4);
        return x ^ ((basic | latin | is(x, Letters::odd)) & L::splat(0x20)) ^ (near & L::splat(0x10)) ^
               (is(x, Letters::far) & L::splat(0x60));
    }
    T operator()(T c) const noexcept {
        return static_cast<T>(Letters::partner(static_cast<std::make_unsigned_t<T>>(c)));
    }

  private:
    static L is(L x, unsigned int c) noexcept { return equal(x, L::splat(c)); }
};

template <class T>
using ToUpper = CaseMap<T, LowerLetters>;
template <class T>
using ToLower = CaseMap<T, UpperLetters>;

} // namespace kord

#endif
