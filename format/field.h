#ifndef KORD_FORMAT_FIELD_H
#define KORD_FORMAT_FIELD_H

#include "core/copy.h"
#include "format/digits.h"
#include "format/placeholder.h"
#include "format/real.h"
#include "text/classify.h"

#include <kord/chars.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kord {

/// Writes a sign, or nothing for 0, and digits, if they do not pass `limit`; returns where they end.
template <class T>
[[gnu::noinline]] T* put_decimal_if_fits(T* at, const T* limit, char sign, unsigned long n) noexcept {
    T text[decimal_room];
    const T* const last = decimal_text(text, sign, n);
    return last - text <= limit - at ? std::copy(static_cast<const T*>(text), last, at) : at;
}

/// Where a text is being written, and the end of the room that was reserved for it. The reserved room is always
/// enough; numbers look once more, and one that would not fit is left out whole. To be kept in registers: what is too
/// long to be inlined gets and returns places.
template <class T>
struct Output {
    T* at;
    T* limit;

    Output(T* first, std::size_t room) noexcept : at(first), limit(first + room) {}

    bool has_room(std::size_t n) const noexcept { return n <= static_cast<std::size_t>(limit - at); }

    void put(T c) noexcept { *at++ = c; }

    [[gnu::always_inline]] void put(const T* text, std::size_t n) noexcept {
        copy_characters(at, text, n);
        at += n;
    }

    /// A sign, or 0 for none, and the decimal digits of `n`.
    [[gnu::always_inline]] void put_decimal(char sign, unsigned long n) noexcept {
        if (has_room(decimal_room)) {
            at = decimal_text(at, sign, n);
            return;
        }
        at = put_decimal_if_fits(at, limit, sign, n);
    }

    /// The same for a signed number; `plus` is the sign of what is not negative.
    [[gnu::always_inline]] void put_decimal(char plus, long n) noexcept {
        const auto ones = static_cast<unsigned long>(n >> (8 * sizeof n - 1)); // all, or none: no branch to foretell
        put_decimal(static_cast<char>(plus ^ ((plus ^ '-') & static_cast<int>(ones))),
                    (static_cast<unsigned long>(n) ^ ones) - ones);
    }

    [[gnu::always_inline]] void put_hexadecimal(unsigned long n, const char (&row)[17]) noexcept {
        const unsigned int digits = hexadecimal_digits(n);
        if (!has_room(digits)) return;
        at += digits;
        write_hexadecimal(at, n, row);
    }

    /// A real number as by `KordFromReal`, nudged.
    [[gnu::always_inline]] void put_real(double value, int precision, bool plus) noexcept {
        if constexpr (sizeof(T) == 1) {
            if (has_room(real_room)) {
                at = real_text(value, at, precision, plus, true);
                return;
            }
        }
        char text[real_room];
        const char* const last = real_text(value, text, precision, plus, true);
        if (has_room(static_cast<std::size_t>(last - text))) at = std::copy(static_cast<const char*>(text), last, at);
    }

    /// Puts a zero behind the text and returns where that ends.
    const T* terminate() noexcept {
        *at = 0;
        return at;
    }
};

/// How many of a field's first characters stay in front of the padding: a sign, or the prefix of a hexadecimal number,
/// if it is padded with zeros.
template <class T>
std::size_t kept_in_front(const FormatSpec<T>& spec, T first) noexcept {
    if ((spec.flags & flag_zeros) == 0) return 0;
    if (has_flag(first, kordSign) || (first == ' ' && (spec.flags & flag_blank))) return 1;
    return (spec.flags & flag_alternate) && (spec.conversion == 'x' || spec.conversion == 'X') ? 2 : 0;
}

/// Brings the field [start, end) to its width, in place, and returns where it now ends.
template <class T>
[[gnu::noinline]] T* pad(T* start, T* end, const FormatSpec<T>& spec) noexcept {
    const auto written = static_cast<std::size_t>(end - start);
    if (written >= spec.width) return end;
    const std::size_t padding = spec.width - written;
    T* gap = end;
    if ((spec.flags & flag_left) == 0 && written != 0) {
        gap = start + std::min(written, kept_in_front(spec, *start));
        std::memmove(gap + padding, gap, static_cast<std::size_t>(end - gap) * sizeof(T));
    }
    std::fill_n(gap, padding, static_cast<T>(spec.flags & flag_zeros ? '0' : ' '));
    return end + padding;
}

} // namespace kord

#endif
