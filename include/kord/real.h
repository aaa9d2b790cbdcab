#ifndef KORD_REAL_H
#define KORD_REAL_H

#include <kord/export.h>

/// The powers of ten from 0.1 to 1e15: entry i is the number nearest to 10^(i - 1), exact but for the first.
extern KORD_API const double prevPowerOfTen[17];

/// Writes a number into `buffer`, which must have room for 32 characters, and returns where the zero-terminated text
/// starts: at `buffer`, or one behind it.
///
/// With a `precision` of 0 to 15 the text has that many decimals if at most 15 digits then count, that is, below
/// 10^(15 - precision). From there on, and with a greater precision, it has 15 significant digits, with a negative one
/// 16: without trailing zeros, and with an exponent of at least two digits below 10^-4 and from 10^15 (10^16) on.
/// Infinities and NaNs are "inf" and "nan". Digits are exact, and halves go to the even digit.
///
/// `keepPlus`: a '+' before what is not negative. `keepPoint`: a '.'; otherwise a ','. `nudge`: before it is written
/// with decimals, a number that has a place to spare (below 10^(14 - precision)) is moved away from zero by one unit in
/// its last place, so that 2.675, which is stored as a little less, gives "2.68". A negative zero becomes positive by
/// that. No locale has a say. Pure but for the buffer.
KORD_API char* KordFromReal(double value, char* buffer, int precision, bool keepPlus, bool keepPoint,
                            bool nudge) noexcept;

#endif
