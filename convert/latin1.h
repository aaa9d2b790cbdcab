#ifndef KORD_CONVERT_LATIN1_H
#define KORD_CONVERT_LATIN1_H

#include <cstddef>

/// Latin-1: bytes as the units of the same value, and units as bytes.
namespace kord {

/// What stands for a unit that no byte can be.
inline constexpr char no_byte = '?';

constexpr unsigned short widen(char c) noexcept {
    return static_cast<unsigned char>(c);
}

constexpr char narrow(unsigned short unit) noexcept {
    return unit < 256 ? static_cast<char>(static_cast<unsigned char>(unit)) : no_byte;
}

/// Writes n characters in the other width.
void convert(const char* from, std::size_t n, unsigned short* to) noexcept;
void convert(const unsigned short* from, std::size_t n, char* to) noexcept;

/// Writes the units below `limit`, at most 256, as bytes, up to the first that is not. Returns how many those are.
std::size_t convert_below(unsigned int limit, const unsigned short* from, std::size_t n, char* to) noexcept;

} // namespace kord

#endif
