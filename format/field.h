#ifndef KORD_FORMAT_FIELD_H
#define KORD_FORMAT_FIELD_H

#include "core/copy.h"
#include "format/digits.h"
#include "format/placeholder.h"
#include "format/real.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace kord {

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
        if (has_room(decimal_room)) at = decimal_text(at, sign, n);
    }

    /// The same for a signed number; `plus` is the sign of what is not negative.
    [[gnu::always_inline]] void put_decimal(char plus, long n) noexcept {
        const auto ones = static_cast<unsigned long>(n >> (8 * sizeof n - 1)); // all, or none: no branch to foretell
        put_decimal(static_cast<char>(plus ^ ((plus ^ '-') & static_cast<int>(ones))),
                    (static_cast<unsigned long>(n) ^ ones) - ones);
    }

    /// At least so many digits, which are at most eight. `ten` is 'a' or 'A'.
    [[gnu::always_inline]] void put_hexadecimal(unsigned long n, unsigned int least, char ten) noexcept {
        const unsigned int count = std::max(hexadecimal_digits(n), least);
        if (has_room(std::max(count, 8u))) at = write_hexadecimal(at, n, count, ten);
    }

    /// A text, in a field of a width if that is greater.
    [[gnu::always_inline]] void put_text(const T* text, std::size_t n, std::size_t width, bool left) noexcept {
        if (width <= n) return put(text, n);
        std::fill_n(at, width, T{' '});
        copy_characters(at + (left ? 0 : width - n), text, n);
        at += width;
    }

    /// A real number as by `KordFromReal`, nudged.
    [[gnu::always_inline]] void put_real(double value, int precision, bool plus) noexcept {
        if (has_room(real_room)) {
            at = real_text(value, at, precision, plus, true);
            return;
        }
        T text[real_room];
        const T* const last = real_text(value, text, precision, plus, true);
        if (has_room(static_cast<std::size_t>(last - text))) at = std::copy(static_cast<const T*>(text), last, at);
    }

    /// Puts a zero behind the text and returns where that ends.
    const T* terminate() noexcept {
        *at = 0;
        return at;
    }
};

/// Brings the field [start, end) to its width, in place, and returns where it now ends.
template <class T>
T* pad(T* start, T* end, const FormatSpec<T>& spec) noexcept;

} // namespace kord

#endif
