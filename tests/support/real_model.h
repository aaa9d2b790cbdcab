#ifndef KORD_TESTS_REAL_MODEL_H
#define KORD_TESTS_REAL_MODEL_H

#include "support/dice.h"

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

inline double power_of_ten(int k) {
    return std::strtod(("1e" + std::to_string(k)).c_str(), nullptr);
}

/// The text of a real, always with its sign: the form by the library's rules told plainly, the digits by the run time.
inline std::string real_model(double value, int precision, bool nudge) {
    if (std::isnan(value)) return std::signbit(value) ? "-nan" : "+nan";
    char text[64];
    const bool general = precision < 0 || precision > 15 || std::fabs(value) >= power_of_ten(15 - precision);
    if (!general && nudge && std::fabs(value) < power_of_ten(14 - precision))
        value = value == 0 ? 0.0 : std::nextafter(value, std::copysign(HUGE_VAL, value));
    std::snprintf(text, sizeof text, general ? "%+.*g" : "%+.*f",
                  !general        ? precision
                  : precision < 0 ? 16
                                  : 15,
                  value);
    return text;
}

/// A real of any kind: any bits, decimals, beside a power of ten, or one that is special.
inline double any_real(Dice& below) {
    using Limits = std::numeric_limits<double>;
    const double sign = below(2) == 0 ? 1 : -1, digits = static_cast<double>(below.bits() >> (11 + below(53)));
    const double power = power_of_ten(static_cast<int>(below(24)) - 6);
    const double special[] = {
        0, 0.5, 2.5, 2.675, 1e-5, DBL_MAX, DBL_MIN, Limits::denorm_min(), HUGE_VAL, Limits::quiet_NaN()};
    const double beside[] = {power, std::nextafter(power, 0.0), std::nextafter(power, HUGE_VAL), power - 0.5};
    switch (below(6)) {
    case 0: return std::bit_cast<double>(below.bits());
    case 1: return sign * std::ldexp(digits, -static_cast<int>(below(24))); // often half a place
    case 2: return sign * digits / power_of_ten(static_cast<int>(below(20)));
    case 3: return sign * (digits * 10 + 5) / power_of_ten(static_cast<int>(below(20)));
    case 4: return sign * below.pick(beside);
    default: return std::copysign(below.pick(special), sign);
    }
}

#endif
