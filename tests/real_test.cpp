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
        expected.erase(0, drops);
        if (!point) std::replace(expected.begin(), expected.end(), '.', ',');
        ASSERT_EQ(text, expected) << std::hexfloat << value << ' ' << precision << ' ' << switches;
        ASSERT_TRUE(text == buffer + 1 + drops && buffer[0] == 'g' && buffer[33] == 'g') << expected;
    }
}

// clang-format off
TEST(Real, TheFormDependsOnTheDigitsThatCount) {
    const double nan = std::nan("");
    const struct { double value; int precision; const char* text; bool nudge = true; } rows[] = {
        {2.5, 6, "+2.500000"}, {2.675, 2, "+2.68"}, {2.675, 2, "+2.67", false}, {-2.5, 0, "-3"}, {0.5, 0, "+0", false},
        {-0.0, 6, "+0.000000"}, {-0.0, 6, "-0.000000", false}, {-0.0, 20, "-0"}, {1e9, 6, "+1000000000"},
        {999999999.5, 6, "+999999999.500000"}, {1.0 / 3, -1, "+0.3333333333333333"}, {1e15, 0, "+1e+15"},
        {1e15, -1, "+1000000000000000"}, {-HUGE_VAL, -1, "-inf"}, {nan, 2, "+nan"}, {-nan, 20, "-nan", false},
    };
    for (const auto& [value, precision, text, nudge] : rows) {
        EXPECT_EQ(real_model(value, precision, nudge), text);
        check(value, precision);
    }
}
// clang-format on

TEST(Real, IsWrittenAsTheRulesSayWhateverItIs) {
    for (int precision = -1; precision <= 20; ++precision) {
        for (int k = -7; k <= 19; ++k) {
            const double power = power_of_ten(k), half = 0.5 * power_of_ten(-std::max(precision, 0));
            for (const double x : {power, power - half, power + half, power / 2, 9.5 * power}) {
                for (const double value : {x, std::nextafter(x, 0.0), std::nextafter(x, HUGE_VAL)}) {
                    for (const double sign : {1, -1}) check(sign * value, precision);
                }
            }
        }
    }
    Dice below(9);
    const int precisions[] = {-1, -100, INT_MIN, 0, 1, 2, 3, 6, 10, 13, 14, 15, 16, 17, 20, 309, INT_MAX};
    for (int round = 0; round != 40000 && !HasFatalFailure(); ++round) check(any_real(below), below.pick(precisions));
}

} // namespace
