#ifndef KORD_FORMAT_DIGITS_H
#define KORD_FORMAT_DIGITS_H

#include <kord/chars.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

/// The digits of numbers, counted beforehand and written from the last to the first.
namespace kord {

/// 10^k in as many bits as there are.
template <class U>
struct PowersOfTen {
    U power[std::numeric_limits<U>::digits10 + 1];
    constexpr PowersOfTen() : power{} {
        U p = 1;
        for (U& entry : power) {
            entry = p;
            p = static_cast<U>(p * 10); // the last one is not used
        }
    }
};
template <class U>
inline constexpr PowersOfTen<U> powers_of_ten;

/// How many decimal digits `n` has; 1 for 0.
template <class U>
unsigned int decimal_digits(U n) noexcept {
    n |= 1;
    const unsigned int fewest = static_cast<unsigned int>(std::bit_width(n)) * 1233 >> 12; // times log10(2)
    return fewest + (n >= powers_of_ten<U>.power[fewest]);
}

/// The two-digit numbers, one behind the other.
template <class T>
struct DigitPairs {
    T digits[200];
    constexpr DigitPairs() : digits{} {
        for (int i = 0; i != 100; ++i) {
            digits[2 * i] = static_cast<T>('0' + i / 10);
            digits[2 * i + 1] = static_cast<T>('0' + i % 10);
        }
    }
};
template <class T>
inline constexpr DigitPairs<T> digit_pairs;

/// Takes the last two digits off `n` and writes them before `end`; returns where they begin.
template <class T, class U>
[[gnu::always_inline]] inline T* write_pair(T* end, U& n) noexcept {
    std::memcpy(end - 2, digit_pairs<T>.digits + 2 * (n % 100), 2 * sizeof(T));
    n /= 100;
    return end - 2;
}

/// Writes the decimal digits of `n`, the last one before `end`.
template <class T, class U>
[[gnu::always_inline]] inline void write_decimal(T* end, U n) noexcept {
    if constexpr (sizeof(U) > sizeof(std::uint32_t)) {
        while (n > std::numeric_limits<std::uint32_t>::max()) end = write_pair(end, n);
    }
    auto rest = static_cast<std::uint32_t>(n);
    while (rest >= 100) end = write_pair(end, rest);
    if (rest >= 10) {
        write_pair(end, rest);
    } else {
        end[-1] = static_cast<T>('0' + rest);
    }
}

/// Eight decimal digits as the characters of a word, the first one lowest: halves of the number, halves of these and
/// again halves are taken apart side by side. `n` is below 10^8.
inline std::uint64_t eight_digits(std::uint32_t n) noexcept {
    const std::uint64_t fours = n / 10000 | std::uint64_t{n % 10000} << 32;
    const std::uint64_t hundreds = (fours * 10486 >> 20) & 0x0000007F0000007F; // over 100
    const std::uint64_t pairs = hundreds | (fours - hundreds * 100) << 16;
    const std::uint64_t tens = (pairs * 103 >> 10) & 0x000F000F000F000F; // over 10
    return (tens | (pairs - tens * 10) << 8) | 0x3030303030303030;
}

template <class U>
unsigned int hexadecimal_digits(U n) noexcept {
    return (static_cast<unsigned int>(std::bit_width(static_cast<U>(n | 1))) + 3) / 4;
}

/// Writes the hexadecimal digits of `n`, out of a row of `kordDigits`, the last one before `end`.
template <class T, class U>
void write_hexadecimal(T* end, U n, const char (&digits)[17]) noexcept {
    do {
        *--end = static_cast<T>(static_cast<unsigned char>(digits[n % 16]));
        n /= 16;
    } while (n != 0);
}

} // namespace kord

#endif
