#ifndef KORD_REAL_H
#define KORD_REAL_H

#include <kord/export.h>

/// The powers of ten from 0.1 to 1e15: entry i is the number nearest to 10^(i - 1), exact but for the first.
extern KORD_API const double prevPowerOfTen[17];

#endif
