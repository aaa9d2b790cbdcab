#include "format/real.h"

#include "format/digits.h"

#include <kord/real.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

const double prevPowerOfTen[17] = {0.1, 1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6, 1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

namespace {

using kord::powers_of_ten;

constexpr unsigned int fraction_bits = 52;
constexpr std::uint64_t fraction_mask = (std::uint64_t{1} << fraction_bits) - 1;

/// The exponent as it is stored: 0 for zero and the subnormal numbers, 0x7FF for infinities and NaNs.
unsigned int biased_exponent(double value) noexcept {
    return static_cast<unsigned int>(std::bit_cast<std::uint64_t>(value) >> fraction_bits) & 0x7FF;
}

/// One unit in the last place of a number, with its sign; 0 where that is not a normal number.
double KordLastPlaceUnit(double value) noexcept {
    const unsigned int exponent = biased_exponent(value);
    if (exponent < fraction_bits) return 0.0;
    const std::uint64_t sign = std::bit_cast<std::uint64_t>(value) & std::uint64_t{1} << 63;
    return std::bit_cast<double>(sign | std::uint64_t{exponent - fraction_bits} << fraction_bits);
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
    std::uint64_t integer = p.high, fraction = p.low, below = 0;
    if (shift < 64) {
        integer = p.high << (64 - shift) | p.low >> shift;
        fraction = p.low << (64 - shift);
    } else if (shift > 64) {
        integer = p.high >> (shift - 64);
        fraction = p.high << (128 - shift) | p.low >> (shift - 64);
        below = p.low << (128 - shift);
    }
    constexpr std::uint64_t half = std::uint64_t{1} << 63;
    return integer + (fraction > half || (fraction == half && (below != 0 || integer % 2 != 0)));
}

/// A magnitude times 10^k, rounded to an integer, with nothing lost before. k is at most 19, and 0 from 2^52 on; the
/// result must be below 2^63.
std::uint64_t scaled(double magnitude, unsigned int k) noexcept {
    const std::uint64_t fraction = std::bit_cast<std::uint64_t>(magnitude) & fraction_mask;
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
    const unsigned int exponent = (biased_exponent(magnitude) - 1023) * 1233 >> 12; // log10 of the power of two in it
    return static_cast<int>(exponent + (exponent < 15 && magnitude >= prevPowerOfTen[exponent + 2]));
}

// ---- the forms: each writes to `to` and returns where its text ends ------------------------------------------------

/// Stores the last n of eight characters, and something behind them: eight are written in all.
void store_last(std::uint64_t characters, unsigned int n, char* to) noexcept {
    characters >>= 64 - 8 * n;
    std::memcpy(to, &characters, sizeof characters);
}

/// Writes an integer with its last `decimals` digits behind a point. Behind the text a few characters more are written,
/// but of `to` not more than 17.
char* write_with_point(char* to, std::uint64_t n, unsigned int decimals) noexcept {
    const unsigned int all = std::max(kord::decimal_digits(n), decimals + 1), whole = all - decimals;
    char* const end = to + all + (decimals != 0);
    if (all <= 8) { // most numbers, and without a loop whose end is hard to foretell
        const std::uint64_t digits = kord::eight_digits(static_cast<std::uint32_t>(n)) | kord::eight_zeros;
        store_last(digits, all, to);
        if (decimals == 0) return end;
        to[whole] = '.';
        store_last(digits, decimals, to + whole + 1);
        return end;
    }
    char* at = end;
    unsigned int left = decimals;
    for (; left >= 2; left -= 2) at = kord::write_pair(at, n);
    if (left != 0) {
        *--at = static_cast<char>('0' + n % 10);
        n /= 10;
    }
    if (decimals != 0) *--at = '.';
    kord::write_decimal(at, n);
    return end;
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
char* write_general(char* to, double magnitude, unsigned int precision) noexcept {
    if (magnitude >= 1e-4 && magnitude < (precision == 16 ? 1e16 : 1e15)) {
        auto decimals = static_cast<unsigned int>(static_cast<int>(precision) - 1 - decimal_exponent(magnitude));
        std::uint64_t n = scaled(magnitude, decimals);
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
    return std::to_chars(to, to + kord::real_room - 2, magnitude, std::chars_format::general,
                         static_cast<int>(precision))
        .ptr;
}

/// The greatest precision for decimals: from there on 15 digits would not show them all.
constexpr int most_decimals = 15;

} // namespace

char* kord::real_text(double value, char* buffer, int precision, bool plus, bool nudge) noexcept {
    const bool with_decimals = precision >= 0 && precision <= most_decimals &&
                               std::fabs(value) < prevPowerOfTen[most_decimals + 1 - precision];
    if (with_decimals && nudge && std::fabs(value) < prevPowerOfTen[most_decimals - precision]) {
        value += KordLastPlaceUnit(value);
    }
    *buffer = std::signbit(value) ? '-' : '+';
    char* const to = buffer + (plus || std::signbit(value));
    const double magnitude = std::fabs(value);
    if (!with_decimals) return write_general(to, magnitude, precision < 0 ? 16 : 15);
    const auto decimals = static_cast<unsigned int>(precision);
    return write_with_point(to, scaled(magnitude, decimals), decimals);
}

char* KordFromReal(double value, char* buffer, int precision, bool keepPlus, bool keepPoint, bool nudge) noexcept {
    // One buffer for both: the text starts behind the plus that it does not keep.
    char* const last = kord::real_text(value, buffer, precision, true, nudge);
    char* const first = *buffer == '+' && !keepPlus ? buffer + 1 : buffer;
    if (!keepPoint) std::replace(first, last, '.', ',');
    *last = '\0';
    return first;
}
