#include "format/real.h"

#include "format/digits.h"

#include <kord/real.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>

const double prevPowerOfTen[17] = {0.1, 1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6, 1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

namespace {

using kord::powers_of_ten;

constexpr unsigned int fraction_bits = 52;
constexpr std::uint64_t fraction_mask = (std::uint64_t{1} << fraction_bits) - 1;

/// The exponent as the bits of a number have it: 0 for zero and the subnormal numbers, 0x7FF for infinities and NaNs.
unsigned int biased_exponent(std::uint64_t bits) noexcept {
    return static_cast<unsigned int>(bits >> fraction_bits) & 0x7FF;
}

/// One unit in the last place of a number, as what it adds to the number's bits: it carries into the exponent as it
/// should. Where that is no normal number it is not to be added, but nothing so small is ever seen in decimals.
constexpr std::uint64_t KordLastPlaceUnit = 1;

/// The number moved by a unit away from zero; a zero loses its sign, as it does in a sum.
std::uint64_t nudged(std::uint64_t bits) noexcept {
    return bits << 1 == 0 ? 0 : bits + KordLastPlaceUnit;
}

// ---- scaling by powers of ten --------------------------------------------------------------------------------------

struct Product {
    std::uint64_t high, low;
};

Product multiply(std::uint64_t a, std::uint64_t b) noexcept {
#ifdef __SIZEOF_INT128__
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else
    constexpr std::uint64_t half = 0xFFFFFFFF;
    const std::uint64_t low = (a & half) * (b & half);
    const std::uint64_t middle = (a >> 32) * (b & half) + (low >> 32);
    const std::uint64_t other = (a & half) * (b >> 32) + (middle & half);
    return {(a >> 32) * (b >> 32) + (middle >> 32) + (other >> 32), other << 32 | (low & half)};
#endif
}

/// A product below 2^127 divided by 2^shift, rounded to the nearest integer, halves to the even one. `shift` is not 0,
/// and 64 bits must hold the result.
std::uint64_t divide_rounding(const Product& p, unsigned int shift) noexcept {
    if (shift >= 128) return 0;
    std::uint64_t integer = p.high, fraction = p.low;
    if (shift < 64) {
        integer = p.high << (64 - shift) | p.low >> shift;
        fraction = p.low << (64 - shift);
    } else if (shift > 64) {
        integer = p.high >> (shift - 64);
        const bool more = p.low << (128 - shift) != 0;
        fraction = p.high << (128 - shift) | p.low >> (shift - 64) | more;
    }
    constexpr std::uint64_t half = std::uint64_t{1} << 63;
    return integer + (fraction > half - integer % 2); // of a half, an odd integer goes up: no branch to foretell
}

/// A magnitude, given its bits, times 10^k, rounded to an integer, with nothing lost before. k is at most 19, and 0
/// from 2^52 on; the result must be below 2^63.
[[gnu::always_inline]] inline std::uint64_t scaled(std::uint64_t magnitude, unsigned int k) noexcept {
    const std::uint64_t fraction = magnitude & fraction_mask;
    const unsigned int exponent = biased_exponent(magnitude);
    const std::uint64_t significand = exponent == 0 ? fraction : fraction | (fraction_mask + 1);
    const int shift = 1075 - static_cast<int>(std::max(exponent, 1u)); // the magnitude is significand / 2^shift
    if (shift <= 0) return significand << -shift;
    return divide_rounding(multiply(significand, powers_of_ten<std::uint64_t>.power[k]),
                           static_cast<unsigned int>(shift));
}

/// The decimal exponent of a magnitude in [1e-4, 1e16): of 10, 1; of 0.1, -1.
int decimal_exponent(double magnitude) noexcept {
    if (magnitude < 1) return magnitude >= 0.1 ? -1 : magnitude >= 0.01 ? -2 : magnitude >= 0.001 ? -3 : -4;
    const unsigned int power_of_two = biased_exponent(std::bit_cast<std::uint64_t>(magnitude)) - 1023;
    const unsigned int exponent = power_of_two * 1233 >> 12; // times log10(2)
    return static_cast<int>(exponent + (exponent < 15 && magnitude >= prevPowerOfTen[exponent + 2]));
}

// ---- the forms: each writes to `to` and returns where its text ends ------------------------------------------------

/// An integer below 10^8, which `write_with_point` describes.
template <class T>
[[gnu::always_inline]] inline T* write_few_with_point(T* to, std::uint32_t n, unsigned int decimals) noexcept {
    const std::uint64_t characters = kord::eight_digits(n) | kord::eight_zeros;
    const unsigned int all = std::max(kord::decimal_digits(n), decimals + 1);
    kord::store_last(to, characters, all);
    T* const point = to + (all - decimals);
    if (decimals == 0) return point;
    *point = '.';
    kord::store_last(point + 1, characters, decimals);
    return point + 1 + decimals;
}

template <class T>
[[gnu::noinline]] T* write_many_with_point(T* to, std::uint64_t n, unsigned int decimals) noexcept {
    const unsigned int all = std::max(kord::decimal_digits(n), decimals + 1), whole = all - decimals;
    const kord::SixteenDigits digits(n);
    T* const behind = to + whole + 1; // the point, if there are decimals
    if (all <= 16) {
        digits.store_last(to, all);
    } else { // a zero, the point, and first of the decimals more zeros
        *to = '0';
        kord::store_eight(behind, kord::eight_zeros);
    }
    if (decimals == 0) return to + all;
    if (decimals <= 8) {
        kord::store_last(behind, digits.last, decimals);
    } else {
        const unsigned int shown = std::min(decimals, 16u);
        digits.store_last(behind + (decimals - shown), shown);
    }
    to[whole] = '.';
    return behind + decimals;
}

/// Writes an integer below 10^16 with its last `decimals` digits, at most 19, behind a point. A few characters behind
/// the text are written too, but no more than 24 in all.
template <class T>
[[gnu::always_inline]] inline T* write_with_point(T* to, std::uint64_t n, unsigned int decimals) noexcept {
    if (n < kord::hundred_million && decimals < 8) { // as most
        return write_few_with_point(to, static_cast<std::uint32_t>(n), decimals);
    }
    return write_many_with_point(to, n, decimals);
}

/// Takes k zeros off the end of the decimals, if there are so many.
template <unsigned int k>
void strip_zeros(std::uint64_t& n, unsigned int& decimals) noexcept {
    constexpr std::uint64_t power = powers_of_ten<std::uint64_t>.power[k];
    if (decimals < k || n % power != 0) return;
    n /= power;
    decimals -= k;
}

/// The shorter of decimals and exponent, with `precision` significant digits, 15 or 16, but for zeros at their end.
/// Every NaN is "nan"; some of `std::to_chars` add its kind.
template <class T>
[[gnu::noinline]] T* write_general(T* to, double magnitude, unsigned int precision) noexcept {
    if (magnitude >= 1e-4 && magnitude < (precision == 16 ? 1e16 : 1e15)) {
        auto decimals = static_cast<unsigned int>(static_cast<int>(precision) - 1 - decimal_exponent(magnitude));
        std::uint64_t n = scaled(std::bit_cast<std::uint64_t>(magnitude), decimals);
        if (decimals != 0 || n != powers_of_ten<std::uint64_t>.power[precision]) {
            strip_zeros<8>(n, decimals);
            strip_zeros<8>(n, decimals);
            strip_zeros<4>(n, decimals);
            strip_zeros<2>(n, decimals);
            strip_zeros<1>(n, decimals);
            return write_with_point(to, n, decimals);
        }
    }
    if (!std::isfinite(magnitude)) return std::copy_n(std::isnan(magnitude) ? "nan" : "inf", 3, to);
    char text[kord::real_room];
    const char* const last =
        std::to_chars(text, std::end(text), magnitude, std::chars_format::general, static_cast<int>(precision)).ptr;
    return std::copy(static_cast<const char*>(text), last, to);
}

/// The greatest precision for decimals: from there on 15 digits would not show them all.
constexpr int most_decimals = 15;

} // namespace

template <class T>
T* kord::real_text(double value, T* buffer, int precision, bool plus, bool nudge) noexcept {
    auto bits = std::bit_cast<std::uint64_t>(value);
    const double magnitude = std::fabs(value);
    bool with_decimals = precision >= 0 && precision <= most_decimals;
    if (with_decimals) {
        if (nudge && magnitude < prevPowerOfTen[most_decimals - precision]) {
            bits = nudged(bits);
        } else {
            with_decimals = magnitude < prevPowerOfTen[most_decimals + 1 - precision];
        }
    }
    const auto negative = static_cast<unsigned int>(bits >> 63); // nobody can foretell it: no branch
    *buffer = static_cast<T>('+' + negative * ('-' - '+'));
    T* const to = buffer + (static_cast<unsigned int>(plus) | negative);
    if (!with_decimals) return write_general(to, magnitude, precision < 0 ? 16 : 15);
    const auto decimals = static_cast<unsigned int>(precision);
    return write_with_point(to, scaled(bits << 1 >> 1, decimals), decimals);
}

template char* kord::real_text(double, char*, int, bool, bool) noexcept;
template unsigned short* kord::real_text(double, unsigned short*, int, bool, bool) noexcept;

char* KordFromReal(double value, char* buffer, int precision, bool keepPlus, bool keepPoint, bool nudge) noexcept {
    // One buffer for both: the text starts behind the plus that it does not keep.
    char* const last = kord::real_text(value, buffer, precision, true, nudge);
    char* const first = buffer + (static_cast<unsigned int>(*buffer == '+') & static_cast<unsigned int>(!keepPlus));
    if (!keepPoint) std::replace(first, last, '.', ',');
    *last = '\0';
    return first;
}
