#ifndef KORD_FORMAT_CONVERSION_H
#define KORD_FORMAT_CONVERSION_H

#include "format/argument.h"
#include "format/field.h"
#include "format/placeholder.h"
#include "text/classify.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

/// The conversions: the arguments they are for, the room that they need, and how they are rendered.
namespace kord {

/// What the engine knows of a conversion.
struct Conversion {
    char letter = '\0';     ///< of the signature; 0 for what is no conversion
    unsigned char room = 0; ///< characters reserved for it, if its width is not greater
};

/// A blank, a sign and digits, or a prefix and hexadecimal digits.
inline constexpr unsigned char integer_room = sizeof(long) == 4 ? 12 : 21;
static_assert(integer_room >= 1 + decimal_room); // a blank in front
static_assert(integer_room >= 2 + 8);            // "0x", and eight digits at once

/// The precision if none is given, and the most that the room of a real is for.
inline constexpr unsigned int usual_precision = 6, covered_precision = 19;

/// A row for every ASCII character. The letter of a signature is always one of its conversions.
struct Conversions {
    Conversion rows[128];
    constexpr Conversions() {
        set('d', {'d', integer_room});
        set('i', {'d', integer_room});
        set('u', {'u', integer_room});
        set('x', {'u', integer_room});
        set('X', {'u', integer_room});
        set('c', {'c', 1});
        set('f', {'f', 13 + covered_precision}); // a greater precision adds what it has more
        set('s', {'s', 0});                      // its characters are in the length sum
    }
    constexpr void set(char character, Conversion row) { rows[static_cast<unsigned char>(character)] = row; }
};
inline constexpr Conversions conversions;

template <class T>
constexpr const Conversion& conversion_of(T character) noexcept {
    const unsigned int code = code_of(character);
    return conversions.rows[code < std::size(conversions.rows) ? code : 0];
}

/// The room that a placeholder needs for itself; a text also needs its length.
template <class T>
constexpr std::uint64_t room_for(const Conversion& conversion, const FormatSpec<T>& spec) noexcept {
    std::uint64_t room = conversion.room;
    if (conversion.letter == 'f' && spec.precision != spec.none && spec.precision > covered_precision) {
        room += spec.precision - covered_precision;
    }
    return std::max<std::uint64_t>(room, spec.width);
}

/// No argument stands for a star.
template <class T>
constexpr bool has_star(const FormatSpec<T>& spec) noexcept {
    return (spec.flags & (flag_width_star | flag_precision_star)) != 0;
}

template <class T>
[[gnu::always_inline]] inline void put_unsigned(Output<T>& out, const FormatSpec<T>& spec,
                                                unsigned long value) noexcept {
    if (spec.conversion == 'u') return out.put_decimal('\0', value);
    unsigned int prefix = 0;
    if (spec.flags & flag_alternate) {
        out.put('0');
        out.put(spec.conversion);
        prefix = 2;
    }
    // Padding with zeros begins here: up to eight digits come at once.
    const bool zeros = (spec.flags & flag_zeros) != 0 && spec.width > prefix;
    out.put_hexadecimal(value, zeros ? std::min(spec.width - prefix, 8u) : 0, spec.conversion == 'X' ? 'A' : 'a');
}

/// Writes an argument, given its letter of the signature, as its placeholder says, but for the padding that `pad` does.
template <class T>
[[gnu::always_inline]] inline void put_argument(Output<T>& out, const FormatSpec<T>& spec, char letter,
                                                const Argument<T>& argument) noexcept {
    switch (letter) {
    case 'd':
        if ((spec.flags & flag_blank) && argument.d >= 0) out.put(' ');
        out.put_decimal(spec.flags & flag_plus ? '+' : '\0', argument.d);
        break;
    case 'u': put_unsigned(out, spec, argument.u); break;
    case 'f':
        if ((spec.flags & flag_blank) && argument.f >= 0) out.put(' ');
        out.put_real(argument.f, static_cast<int>(spec.precision == spec.none ? usual_precision : spec.precision),
                     (spec.flags & flag_plus) != 0);
        break;
    case 'c': out.put(argument.c); break;
    default: // 's'
        out.put_text(argument.s->begin(), std::min(argument.s->length(), spec.precision),
                     spec.flags & flag_zeros ? 0 : spec.width, (spec.flags & flag_left) != 0);
    }
}

} // namespace kord

#endif
