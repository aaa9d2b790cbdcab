#ifndef KORD_CHARS_H
#define KORD_CHARS_H

#include <kord/export.h>

/// The flags of `kordType`. The low eight have the values of the C runtime's character-class masks on Windows.
inline constexpr unsigned short kordUpper = 0x0001;            ///< upper-case letter
inline constexpr unsigned short kordLower = 0x0002;            ///< lower-case letter
inline constexpr unsigned short kordDigit = 0x0004;            ///< '0' to '9'
inline constexpr unsigned short kordSpace = 0x0008;            ///< tab to carriage return, and the space
inline constexpr unsigned short kordPunct = 0x0010;            ///< printable, neither letter, digit nor space
inline constexpr unsigned short kordControl = 0x0020;          ///< 0 to 31, 127
inline constexpr unsigned short kordBlank = 0x0040;            ///< the space
inline constexpr unsigned short kordHexDigit = 0x0080;         ///< digits, 'A' to 'F', 'a' to 'f'
inline constexpr unsigned short kordSign = 0x0100;             ///< '+', '-'
inline constexpr unsigned short kordDecimalSeparator = 0x0200; ///< ',', '.'
inline constexpr unsigned short kordNonZeroDigit = 0x0400;     ///< '1' to '9'
inline constexpr unsigned short kordCaseException = 0x1000;    ///< letter whose partner is not 32 away, or has none

/// The flags of the characters 0 to 255, laid out after Windows-1252. Fixed: no locale changes it.
extern KORD_API const unsigned short kordType[256];

/// The digits of the radixes up to 16, zero-terminated: row 0 in lower case, row 1 in upper case.
extern KORD_API const char kordDigits[2][17];

/// The lower-case partner of a character given by its unsigned code; the code itself if it has none. Codes from 256
/// on come back unchanged.
KORD_API int KordToLower(unsigned int c) noexcept;

/// The upper-case partner, likewise. 223 (sharp s) has none.
KORD_API int KordToUpper(unsigned int c) noexcept;

#endif
