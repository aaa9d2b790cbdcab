#ifndef KORD_TEXT_CLASSIFY_H
#define KORD_TEXT_CLASSIFY_H

#include <kord/chars.h>

#include <type_traits>

namespace kord {

/// A character's code: its unsigned value.
template <class T>
constexpr unsigned int code_of(T c) noexcept {
    return static_cast<std::make_unsigned_t<T>>(c);
}

/// '0' to '9'.
template <class T>
constexpr bool is_digit(T c) noexcept {
    return code_of(c) - '0' < 10;
}

/// Does the character carry one of the flags? Units of 256 and more carry none.
template <class T>
bool has_flag(T c, unsigned int flags) noexcept {
    const unsigned int code = code_of(c);
    return code < 256 && (kordType[code] & flags) != 0;
}

} // namespace kord

#endif
