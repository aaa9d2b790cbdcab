// The printf-like form. The characters are the C library's; how many there may be is reckoned here, from the template
// and the arguments, each of which is read as the type that the C library will read.
#include "format/placeholder.h"

#include <kord/string.h>

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string_view>

namespace {

using Spec = kord::FormatSpec<char>;

/// The length modifiers of C, and anything else.
enum class Length { none, hh, h, l, ll, L, unknown };

/// What stands before the conversion, which is not to be C's if there is a number before a star.
Length length_of(const Spec& spec) noexcept {
    const char* const last = spec.end - 1;
    const char* first = last;
    while (first[-1] == 'h' || first[-1] == 'l' || first[-1] == 'L') --first;
    if ((spec.flags & kord::flag_width_star) && spec.width != 0) return Length::unknown;
    if ((spec.flags & kord::flag_precision_star) && first[-2] != '.') return Length::unknown;
    constexpr std::string_view names[] = {"", "hh", "h", "l", "ll", "L"};
    const auto* const found = std::find(std::begin(names), std::end(names), std::string_view(first, last));
    return static_cast<Length>(found - std::begin(names));
}

/// A placeholder with its stars resolved.
struct Field {
    std::uint64_t width;
    bool has_precision;
    std::uint64_t precision; // 0 without one
};

/// The arguments of a call, passed over one by one.
struct Arguments {
    std::va_list list;

    /// Passes over an argument and returns its size.
    template <class A>
    std::size_t pass() noexcept {
        (void)va_arg(list, A);
        return sizeof(A);
    }

    Field field(const Spec& spec) noexcept {
        Field field{spec.width, spec.precision != spec.none, 0};
        if (field.has_precision) field.precision = spec.precision;
        if (spec.flags & kord::flag_width_star) field.width = magnitude(va_arg(list, int)); // negative: left-justified
        if (spec.flags & kord::flag_precision_star) {
            const int precision = va_arg(list, int);
            field.has_precision = precision >= 0; // negative: none
            field.precision = static_cast<std::uint64_t>(std::max(precision, 0));
        }
        return field;
    }

    static std::uint64_t magnitude(std::int64_t n) noexcept { return static_cast<std::uint64_t>(n < 0 ? -n : n); }
};

/// The characters that are allowed for the digits before and after the point, not counting a precision.
template <class Real>
std::uint64_t realDigitAllowance(Real x) noexcept {
    const Real magnitude = std::fabs(x);
    // Of what only a `long double` can hold.
    if (magnitude > static_cast<Real>(std::numeric_limits<double>::max()))
        return std::numeric_limits<Real>::max_exponent10 + 1;
    return magnitude > static_cast<Real>(1e16) || (magnitude != 0 && magnitude < static_cast<Real>(1e-16)) ? 309 : 17;
}

template <class Real>
std::uint64_t real_room(const Field& field, Real x) noexcept {
    constexpr std::uint64_t usual_precision = 19;
    const std::uint64_t digits = realDigitAllowance(x);
    return field.has_precision ? digits + std::max(usual_precision, field.precision) + 10 : digits + 9;
}

/// `least` is the room of a number of 32 bits, `front` what may stand before the digits.
std::uint64_t integer_room(const Field& field, std::size_t size, std::uint64_t least, std::uint64_t front) noexcept {
    constexpr std::uint64_t octal_digits = 22; // of 64 bits
    return std::max(size > 4 ? octal_digits + 2 : least, field.precision + front);
}

std::uint64_t text_room(const Field& field, const char* text) noexcept {
    if (field.has_precision) return field.precision;
    return text == nullptr ? std::strlen("(null)") : std::strlen(text);
}

constexpr std::uint64_t refused = std::numeric_limits<std::uint64_t>::max();

/// The room for a placeholder, whose argument is passed over; its width not counted. `refused` where C, or this form,
/// has no such placeholder.
std::uint64_t room_for(const Spec& spec, const Field& field, Arguments& arguments) noexcept {
    const Length length = length_of(spec);
    if (length == Length::unknown) return refused;
    switch (spec.conversion) {
    case 'd':
    case 'i':
    case 'o':
    case 'u':
    case 'x':
    case 'X': {
        const bool hexadecimal = spec.conversion == 'x' || spec.conversion == 'X';
        const std::uint64_t least = hexadecimal ? 14 : 12, front = hexadecimal ? 2 : 1;
        switch (length) {
        case Length::l: return integer_room(field, arguments.pass<long>(), least, front);
        case Length::ll:
        case Length::L: return integer_room(field, arguments.pass<long long>(), least, front);
        default: return integer_room(field, arguments.pass<int>(), least, front);
        }
    }
    case 'e':
    case 'E':
    case 'f':
    case 'g':
    case 'G':
        switch (length) {
        case Length::none:
        case Length::l: return real_room(field, va_arg(arguments.list, double));
        case Length::L: return real_room(field, va_arg(arguments.list, long double));
        default: return refused;
        }
    case 'n':
        if (length == Length::L) return refused;
        arguments.pass<void*>();
        return 0;
    default: break;
    }
    if (length != Length::none) return refused;
    switch (spec.conversion) {
    case '%': return 1;
    case 'c': arguments.pass<int>(); return 1;
    case 'p': arguments.pass<void*>(); return std::max<std::uint64_t>(32, field.precision + 3); // a sign and "0x"
    case 's': return text_room(field, va_arg(arguments.list, const char*));
    default: return refused;
    }
}

/// An upper bound of the result's length; 0 for a template that is refused.
std::uint64_t room_for(const char* tmpl, Arguments& arguments) noexcept {
    const char* const end = tmpl + std::strlen(tmpl);
    std::uint64_t room = 0;
    while (tmpl != end) {
        const Spec spec = kord::scan_placeholder(tmpl, end);
        room += static_cast<std::uint64_t>(spec.begin - tmpl);
        tmpl = spec.end;
        if (spec.conversion == 0) continue;
        const Field field = arguments.field(spec);
        const std::uint64_t own = room_for(spec, field, arguments);
        if (own == refused) return 0;
        room += std::max(own, spec.conversion == 'n' ? 0 : field.width);
    }
    return room;
}

} // namespace

astring& astring::format_unchecked(const char* fmt, ...) {
    Arguments arguments;
    va_start(arguments.list, fmt);
    const std::uint64_t room = room_for(fmt, arguments);
    va_end(arguments.list);
    if (room == 0) {
        end_ = begin_;
        return *this;
    }
    astring result;
    char* const text = result.get_buffer(kord::detail::to_count(room));
    *text = '\0'; // should nothing at all be written
    va_start(arguments.list, fmt);
    const int written = std::vsnprintf(text, static_cast<std::size_t>(room) + 1, fmt, arguments.list);
    va_end(arguments.list);
    const bool failed = written < 0; // then what it has written counts
    result.release_buffer(failed ? npos
                                 : std::min(static_cast<unsigned int>(written), static_cast<unsigned int>(room)));
    swap(result);
    return *this;
}
