#include "support/real_model.h"

#include <kord/real.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

namespace {

/// What KordFromReal writes, with all switches, beside the model; and where.
void check(double value, int precision) {
    for (unsigned int switches = 0; switches != 8; ++switches) {
        const bool plus = (switches & 1) != 0, point = (switches & 2) != 0, nudge = (switches & 4) != 0;
        char buffer[34];
        std::fill(std::begin(buffer), std::end(buffer), 'g'); // the first and the last are guards
        const char* const text = KordFromReal(value, buffer + 1, precision, plus, point, nudge);
        std::string expected = real_model(value, precision, nudge);
        const bool drops = !plus && expected[0] == '+';
        if (drops) expected.erase(0, 1);
        if (!point) std::replace(expected.begin(), expected.end(), '.', ',');
        ASSERT_EQ(text, expected) << std::hexfloat << value << ' ' << precision << ' ' << switches;
        ASSERT_EQ(text - buffer, drops ? 2 : 1) << expected;
        ASSERT_TRUE(buffer[0] == 'g' && buffer[33] == 'g') << expected;
    }
}

// clang-format off
TEST(Real, TheFormDependsOnTheDigitsThatCount) {
    struct Row { double value; int precision; bool plus, point, nudge; const char* text; };
    const Row rows[] = {
        {2.5, 6, false, true, true, "2.500000"}, {2.5, 6, true, true, true, "+2.500000"}, {2.675, 2, false, true, true, "2.68"}, {2.675, 2, false, true, false, "2.67"}, {1234.5, 2, false, false, true, "1234,50"},
        {0.5, 0, false, true, true, "1"}, {0.5, 0, false, true, false, "0"}, {-2.5, 0, false, true, true, "-3"}, {0.125, 2, false, true, true, "0.13"}, {1.005, 2, false, true, true, "1.01"},
        {-0.0, 6, false, true, true, "0.000000"}, {-0.0, 6, false, true, false, "-0.000000"}, {-0.0, 20, true, true, true, "-0"}, {-0.0, -1, false, true, true, "-0"},
        {1e9, 6, false, true, true, "1000000000"}, {999999999.5, 6, false, true, true, "999999999.500000"}, {1234567890.5, 6, false, true, true, "1234567890.5"}, {99999999999999.5, 0, false, true, true, "100000000000000"},
        {0.1, 20, false, true, true, "0.1"}, {1.0 / 3, -1, false, true, true, "0.3333333333333333"}, {1e-300, 6, false, true, true, "0.000000"}, {-1e-300, 6, false, true, true, "-0.000000"},
        {1e15, 0, true, true, true, "+1e+15"}, {1e20, 6, false, false, true, "1e+20"}, {1.5e-7, -1, false, false, true, "1,5e-07"}, {1e300, 3, false, true, true, "1e+300"}, {1e15, -1, false, true, true, "1000000000000000"}, {1e16, -1, false, true, true, "1e+16"},
        {HUGE_VAL, 6, true, true, true, "+inf"}, {-HUGE_VAL, -1, false, true, true, "-inf"}, {std::nan(""), 2, false, true, true, "nan"}, {std::nan(""), 20, true, true, false, "+nan"}, {-std::nan(""), 0, false, true, true, "-nan"},
    };
    for (const Row& row : rows) {
        char buffer[32];
        EXPECT_STREQ(KordFromReal(row.value, buffer, row.precision, row.plus, row.point, row.nudge), row.text);
        check(row.value, row.precision);
    }
}
// clang-format on

TEST(Real, IsWrittenAsTheRulesSayAroundEveryThreshold) {
    for (int precision = -1; precision <= 20; ++precision) {
        for (int k = -7; k <= 19; ++k) {
            const double power = power_of_ten(k), half = 0.5 * power_of_ten(-std::max(precision, 0));
            for (const double x : {power, power - half, power + half, power / 2, 9.5 * power}) {
                for (const double value : {x, std::nextafter(x, 0.0), std::nextafter(x, HUGE_VAL)}) {
                    check(value, precision);
                    check(-value, precision);
                    if (HasFatalFailure()) return;
                }
            }
        }
    }
}

TEST(Real, IsWrittenAsTheRulesSayWhateverItIs) {
    Dice below(9);
    const int precisions[] = {-1, -100, INT_MIN, 0, 1, 2, 3, 6, 10, 13, 14, 15, 16, 17, 20, 309, INT_MAX};
    for (int round = 0; round != 40000; ++round) {
        const double value = any_real(below);
        check(value, below.pick(precisions));
        if (HasFatalFailure()) return;
    }
}

} // namespace
