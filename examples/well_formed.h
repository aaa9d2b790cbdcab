#ifndef KORD_EXAMPLES_WELL_FORMED_H
#define KORD_EXAMPLES_WELL_FORMED_H

#include <algorithm>
#include <cstddef>

// KordConvert takes any bytes for UTF-8 and makes the best of them. Who would rather refuse malformed text asks here
// first.

/// How much of a text is well-formed.
struct WellFormed {
    std::size_t length; ///< of the longest beginning that consists of whole, well-formed characters
    bool so_far;        ///< whether what follows, if anything, is the beginning of another one
};

/// The UTF-8 of a character by its first byte: how many bytes, and from where to where the second one goes. Any others
/// go from 0x80 to 0xBF. No bytes if nothing begins so.
struct Utf8Form {
    unsigned int length, low, high;
};
inline Utf8Form utf8_form(unsigned char first) {
    if (first < 0x80) return {1, 0, 0};
    if (first < 0xC2) return {0, 0, 0}; // a later byte, or the first of what fits in one byte
    if (first < 0xE0) return {2, 0x80, 0xBF};
    if (first == 0xE0) return {3, 0xA0, 0xBF}; // below is what fits in two bytes,
    if (first == 0xED) return {3, 0x80, 0x9F}; // above are the surrogates,
    if (first < 0xF0) return {3, 0x80, 0xBF};
    if (first == 0xF0) return {4, 0x90, 0xBF}; // below what fits in three,
    if (first < 0xF4) return {4, 0x80, 0xBF};
    if (first == 0xF4) return {4, 0x80, 0x8F}; // and above what is above U+10FFFF
    return {0, 0, 0};
}

/// Of UTF-8. Linear.
inline WellFormed well_formed(const unsigned char* text, std::size_t length) {
    std::size_t at = 0;
    while (at != length) {
        const Utf8Form form = utf8_form(text[at]);
        if (form.length == 0) return {at, false};
        const std::size_t present = std::min<std::size_t>(form.length, length - at);
        for (std::size_t i = 1; i < present; ++i) {
            const unsigned int low = i == 1 ? form.low : 0x80, high = i == 1 ? form.high : 0xBF;
            if (text[at + i] < low || text[at + i] > high) return {at, false};
        }
        if (present != form.length) break;
        at += present;
    }
    return {at, true};
}

inline bool is_high_surrogate(unsigned int unit) {
    return (unit & 0xFC00) == 0xD800;
}
inline bool is_low_surrogate(unsigned int unit) {
    return (unit & 0xFC00) == 0xDC00;
}

/// Of UTF-16. Linear.
inline WellFormed well_formed(const unsigned short* text, std::size_t length) {
    std::size_t at = 0;
    while (at != length) {
        if (is_low_surrogate(text[at])) return {at, false};
        if (is_high_surrogate(text[at])) {
            if (at + 1 == length) break;
            if (!is_low_surrogate(text[++at])) return {at - 1, false};
        }
        ++at;
    }
    return {at, true};
}

#endif
