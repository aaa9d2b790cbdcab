#ifndef KORD_FORMAT_PLACEHOLDER_H
#define KORD_FORMAT_PLACEHOLDER_H

#include "core/scan.h"

#include <cstddef>

/// The grammar of placeholders, which both formatters read their templates with:
/// '%', flags, width, '*', then '.', precision, '*', then length modifiers, then a conversion.
namespace kord {

enum FormatFlags : unsigned int {
    flag_left = 0x001,           ///< '-'
    flag_zeros = 0x002,          ///< '0', without '-'
    flag_plus = 0x004,           ///< '+'
    flag_blank = 0x008,          ///< ' ', without '+'
    flag_alternate = 0x010,      ///< '#'
    flag_width_star = 0x020,     ///< '*' behind the width
    flag_precision_star = 0x040, ///< '*' behind the precision
    flag_short = 0x080,          ///< 'h'
    flag_long = 0x100,           ///< 'l' or 'L'
};

template <class T>
struct FormatSpec {
    /// As a precision: none was written.
    static constexpr unsigned int none = 0xFFFFFFFFu;

    T conversion;           ///< 0 in an end record: no placeholder is left, or the last one is unfinished
    unsigned int flags;     ///< of `FormatFlags`
    unsigned int width;     ///< 0 if none is written
    unsigned int precision; ///< `none`, or 0 if a '.' has no digits
    const T* begin;         ///< the '%', or the end of the template
    const T* end;           ///< behind the conversion
};

/// The first '%' of [at, end), or `end`. In short templates, and at the beginning of what is left of long ones, it is
/// sooner found without a call.
template <class T>
[[gnu::always_inline]] inline const T* find_percent(const T* at, const T* end) noexcept {
    constexpr std::ptrdiff_t few = 12, first_few = 3;
    for (const T* const stop = end - at > few ? at + first_few : end; at != stop; ++at) {
        if (*at == '%') return at;
    }
    return at == end ? end : scan_character(at, end, T{'%'});
}

/// The next placeholder of the template text [from, end). Nothing is judged: any character may be the conversion. A
/// width or precision of more than 32 bits is not taken, so that its first digit becomes the conversion.
template <class T>
FormatSpec<T> scan_placeholder(const T* from, const T* end) noexcept;

/// The same of a text that begins with a '%' and ends with the letter of a conversion, behind which nothing is looked
/// for.
template <class T>
FormatSpec<T> scan_closed(const T* percent, const T* end) noexcept;

} // namespace kord

#endif
