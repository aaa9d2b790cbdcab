#ifndef KORD_HASH_H
#define KORD_HASH_H

#include <kord/export.h>
#include <kord/range.h>

/// Five classic hashes of 8-bit text, for tables and fingerprints; the library itself uses none of them. Computed in 32
/// bits, so that a result is below 2^32 whatever `long` holds, the same on every target. None is fit for keys that an
/// attacker chooses.
///
/// A terminated text is hashed up to its first zero and must not be null; a range or counted text includes its zeros.
/// Both forms of a function agree. Linear, one pass; pure.
namespace KordHash {

/// FNV-1 (Fowler, Noll, Vo), 32 bits: multiply, then exclusive-or.
KORD_API unsigned long FowlerNollVo(const char* text) noexcept;
KORD_API unsigned long FowlerNollVo(const char* begin, const char* end) noexcept;

/// lookup2 (Bob Jenkins, "Hash Functions", Dr. Dobb's Journal, September 1997), with initial value 0.
KORD_API unsigned long Jenkins(const char* data, unsigned long length) noexcept;
KORD_API unsigned long Jenkins(const char* begin, const char* end) noexcept;

/// One-at-a-time (the same article), of bytes as signed numbers: above 0x7F it differs from the usual variant.
KORD_API unsigned long OneAtATime(const char* text) noexcept;
KORD_API unsigned long OneAtATime(const char* begin, const char* end) noexcept;

/// A polynomial in 613 that starts with the length, modulo 1073741827; of bytes as signed numbers.
KORD_API unsigned long ObjectSpace(const char* data, unsigned long length) noexcept;
KORD_API unsigned long ObjectSpace(const char* begin, const char* end) noexcept;

/// Shift-add-xor (Ramakrishna and Zobel, "Performance in practice of string hashing functions", 1997), with shifts 5
/// and 2 and seed 0; of bytes as signed numbers.
KORD_API unsigned long RamakrishnaZobel(const char* text) noexcept;
KORD_API unsigned long RamakrishnaZobel(const char* begin, const char* end) noexcept;

// Lengths of other integer types; a literal 0 would otherwise also be a null end.
template <class I, kord::detail::if_integers<I> = 0>
unsigned long Jenkins(const char* data, I length) noexcept {
    return Jenkins(data, static_cast<unsigned long>(length));
}
template <class I, kord::detail::if_integers<I> = 0>
unsigned long ObjectSpace(const char* data, I length) noexcept {
    return ObjectSpace(data, static_cast<unsigned long>(length));
}

} // namespace KordHash

#endif
