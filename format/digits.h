#ifndef KORD_FORMAT_DIGITS_H
#define KORD_FORMAT_DIGITS_H

#include "core/lanes.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

/// The digits of numbers, eight at a time where words have 64 bits.
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

/// The character '0' in each byte of a word.
inline constexpr std::uint64_t eight_zeros = 0x3030303030303030;

/// Eight decimal digits as the bytes of a word, the first one lowest: the number is divided, then both halves of it are
/// side by side, then their halves. A part that splits into q and r is q at its own place and r behind it, which is
/// the part itself moved there, less q times what it was divided by. `n` is below 10^8.
constexpr std::uint64_t eight_digits(std::uint32_t n) noexcept {
    const std::uint64_t whole = n, q = n / 10000;
    const std::uint64_t fours = (whole << 32) - q * ((std::uint64_t{10000} << 32) - 1);
    const std::uint64_t hundreds = (fours * 10486 >> 20) & 0x0000007F0000007F;
    const std::uint64_t pairs = (fours << 16) - hundreds * ((100 << 16) - 1);
    const std::uint64_t tens = (pairs * 103 >> 10) & 0x000F000F000F000F;
    return (pairs << 8) - tens * ((10 << 8) - 1);
}
static_assert(eight_digits(12345678) == 0x0807060504030201 && eight_digits(99999999) == 0x0909090909090909);

/// Stores the eight bytes of a word as characters.
template <class T>
[[gnu::always_inline]] inline void store_eight(T* to, std::uint64_t characters) noexcept {
    if constexpr (sizeof(T) == 1) {
        std::memcpy(to, &characters, sizeof characters);
    } else {
        widen_first(Lanes<char>::load_partial(reinterpret_cast<const char*>(&characters), 8)).store(to);
    }
}

inline constexpr std::uint32_t hundred_million = 100000000;

/// Writes the digits of `n`, which is below 10^8, and something behind them: eight characters in all. Returns where the
/// digits end. There is no branch, as lengths are hard to foretell.
template <class T>
[[gnu::always_inline]] inline T* write_few(T* to, std::uint32_t n) noexcept {
    const std::uint64_t digits = eight_digits(n);
    const unsigned int zeros = static_cast<unsigned int>(std::countr_zero(digits | std::uint64_t{1} << 56)) / 8;
    store_eight(to, (digits | eight_zeros) >> (8 * zeros));
    return to + (8 - zeros);
}

/// The same for 10^8 and more; nothing is written behind the digits.
template <class T, class U>
[[gnu::noinline]] T* write_many(T* to, U n) noexcept {
    const U head = n / hundred_million;
    to += decimal_digits(head);
    write_decimal(to, head);
    store_eight(to, eight_digits(static_cast<std::uint32_t>(n % hundred_million)) | eight_zeros);
    return to + 8;
}

/// Stores the last n, 1 to 8, of eight digits, which are characters of a word, and something behind them: eight
/// characters in all.
template <class T>
[[gnu::always_inline]] inline void store_last(T* to, std::uint64_t digits, unsigned int n) noexcept {
    store_eight(to, digits >> (64 - 8 * n));
}

/// The digits of a number below 10^16, as characters.
struct SixteenDigits {
    std::uint64_t first, last; ///< eight each

    explicit SixteenDigits(std::uint64_t n) noexcept
        : first(eight_digits(static_cast<std::uint32_t>(n / hundred_million)) | eight_zeros),
          last(eight_digits(static_cast<std::uint32_t>(n % hundred_million)) | eight_zeros) {}

    /// Stores the last n, 9 to 16, and something behind them: sixteen characters in all.
    template <class T>
    [[gnu::always_inline]] void store_last(T* to, unsigned int n) const noexcept {
        const unsigned int shift = 128 - 8 * n;
        store_eight(to, first >> shift | last << 1 << (63 - shift));
        store_eight(to + 8, last >> shift);
    }
};

/// Room for a sign and the digits of a `long`, or for the digits of an `unsigned long`.
inline constexpr std::size_t decimal_room = std::numeric_limits<long>::digits10 + 2;
static_assert(decimal_room >= 1 + 8); // a sign, and what `write_few` stores

/// Writes a sign, or nothing for 0, and the decimal digits of `n`; of the room perhaps more. Returns where they end.
template <class T>
[[gnu::always_inline]] inline T* decimal_text(T* to, char sign, unsigned long n) noexcept {
    *to = static_cast<T>(static_cast<unsigned char>(sign)); // overwritten if there is none
    to += sign != 0;
    if constexpr (sizeof(std::size_t) == sizeof(std::uint64_t)) { // else digit after digit is faster
        return n < hundred_million ? write_few(to, static_cast<std::uint32_t>(n)) : write_many(to, n);
    }
    to += decimal_digits(n);
    write_decimal(to, n);
    return to;
}

template <class U>
unsigned int hexadecimal_digits(U n) noexcept {
    return (static_cast<unsigned int>(std::bit_width(static_cast<U>(n | 1))) + 3) / 4;
}

/// The eight hexadecimal digits of `n` as the bytes of a word, the first one lowest. `ten` is 'a' or 'A'.
constexpr std::uint64_t eight_hexadecimal(std::uint32_t n, char ten) noexcept {
    std::uint64_t nibbles = n; // moved apart by halves, the first ones lowest
    nibbles = nibbles >> 16 | (nibbles & 0xFFFF) << 32;
    nibbles = (nibbles >> 8 & 0x000000FF000000FF) | (nibbles & 0x000000FF000000FF) << 16;
    nibbles = (nibbles >> 4 & 0x000F000F000F000F) | (nibbles & 0x000F000F000F000F) << 8;
    const std::uint64_t letters = (nibbles + 0x0606060606060606) >> 4 & 0x0101010101010101;
    return nibbles + eight_zeros + letters * static_cast<unsigned int>(ten - '9' - 1);
}
static_assert(eight_hexadecimal(0x1A2B90CF, 'a') == 0x6663303962326131);

/// Writes the last digits of `n`, zeros among them, and perhaps something behind them: eight characters at least.
/// Returns where the digits end.
template <class T>
[[gnu::always_inline]] inline T* write_hexadecimal(T* to, unsigned long n, unsigned int count, char ten) noexcept {
    const std::uint64_t last = eight_hexadecimal(static_cast<std::uint32_t>(n), ten);
    if (count <= 8) {
        store_last(to, last, count);
        return to + count;
    }
    store_last(to, eight_hexadecimal(static_cast<std::uint32_t>(std::uint64_t{n} >> 32), ten), count - 8);
    store_eight(to + count - 8, last);
    return to + count;
}

} // namespace kord

#endif
