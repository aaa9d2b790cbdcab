// The numbers at the beginning of a text: rows by hand, and reals of any shape beside the rules told plainly.
#include "support/real_model.h"
#include "support/text.h"

#include <kord/real.h>

namespace {

template <class T>
class Number : public ::testing::Test {};
TYPED_TEST_SUITE(Number, Widths);

constexpr int least = -2147483647 - 1, most = 2147483647;
constexpr unsigned int top = 0xFFFFFFFF;

/// The rules for reals, a digit at a time.
double plain_real(const std::string& text) {
    volatile double value = 0; // each step rounded
    int taken = 0, scale = 0, lead = -1;
    bool in_fraction = false;
    for (std::size_t i = text.find_first_not_of('0', text.find_first_of("+-") == 0); i < text.size(); ++i) {
        const bool is_point = !in_fraction && (text[i] == '.' || text[i] == ',');
        in_fraction |= is_point;
        if (is_point) continue;
        if (text[i] < '0' || text[i] > '9') break;
        const bool leads = taken == 0 && text[i] == '0';
        lead += in_fraction ? -leads : 1;
        if (leads || taken == 18) {
            scale += in_fraction ? -leads : 1;
            continue;
        }
        value = value * 10.0;
        value = value + (text[i] - '0');
        ++taken;
        scale -= in_fraction;
    }
    const double result = lead >= 308   ? 0x1.FFFFFFFFFFFFFp1023
                          : lead < -307 ? 0.0
                          : scale >= 0  ? value * power_of_ten(scale)
                                        : value / power_of_ten(-scale);
    return text[0] == '-' ? -result : result;
}

template <class T>
void check_real(const std::string& text, double value) {
    const double read = range_of(exactly<T>(text)).as_double();
    ASSERT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(value)) << text;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(plain_real(text)), std::bit_cast<std::uint64_t>(value)) << text;
}

// clang-format off
TYPED_TEST(Number, IntegersStopAtWhatDoesNotFitAndSaturate) {
    const struct { const char* text; int as_int; unsigned int as_unsigned; } rows[] = {
        {"", 0, 0}, {"12abc", 12, 12}, {"-45", -45, 0}, {"+7", 7, 0}, {"-", 0, 0}, {"+-1", 0, 0}, {" 1", 0, 0},
        {"007", 7, 7}, {"1,000", 1, 1}, {"1e3", 1, 1}, {"1:", 1, 1}, {"1/", 1, 1}, {"\xB1", 0, 0}, {"1\xB1", 1, 1},
        {"0x1F", 0, 31}, {"0X1f", 0, 31}, {"0x", 0, 0}, {"$ff", 0, 255}, {"$", 0, 0}, {"ff", 0, 0}, {"0xfg", 0, 15},
        {"$0x1", 0, 0}, {"00x1", 0, 0}, {"0xAbCdEf", 0, 0xABCDEF}, {"12345678:", 12345678, 12345678},
        {"12345678/", 12345678, 12345678}, {"123456789", 123456789, 123456789}, {"00000000000000000012", 12, 12},
        {"2147483646", most - 1, 2147483646}, {"2147483647", most, 2147483647}, {"2147483648", most, 2147483648},
        {"-2147483647", -most, 0}, {"-2147483648", least, 0}, {"-99999999999", least, 0},
        {"4294967294", most, top - 1}, {"4294967296", most, top}, {"0xFFFFFFFE", 0, top - 1}, {"$100000000", 0, top},
        {"18446744073709551617", most, top},
    };
    for (const auto& row : rows) {
        const auto text = exactly<TypeParam>(row.text); // nothing behind it may be read
        EXPECT_EQ(range_of(text).as_int(), row.as_int) << row.text;
        EXPECT_EQ(range_of(text).as_unsigned(), row.as_unsigned) << row.text;
    }
}

TYPED_TEST(Number, RealsFollowTheRulesToTheLastBit) {
    const auto zeros = [](const char* front, std::size_t n, const char* back = "") {
        return std::string(front).append(n, '0') + back;
    };
    const struct { std::string text; double value; } rows[] = {
        {"", 0.0}, {"12,5", 12.5}, {".5", 0.5}, {"-", -0.0}, {"1e5", 1.0}, {"1,234.5", 1.234}, {" 1", 0.0},
        {"9007199254740993", 9007199254740992.0}, {"1234567890123456789012", 123456789012345696.0 * 1e4},
        {zeros("1", 308), 0x1.FFFFFFFFFFFFFp1023}, {zeros("-1", 308), -0x1.FFFFFFFFFFFFFp1023},
        {zeros("9", 307), 9e17 * 1e290}, {zeros("0.", 306, "1"), 1 / 1e307}, {zeros("0.", 307, "1"), 0.0},
        {zeros("0.", 306, "12"), 12 / 1e308}, {zeros("0.", 306, "123"), 0.0}, {zeros("", 310, "12.5"), 12.5},
    };
    for (const auto& [text, value] : rows) check_real<TypeParam>(text, value);
}
// clang-format on

TYPED_TEST(Number, RealsOfAnyShapeAreReadAsThePlainRulesSay) {
    Dice below(4);
    for (int round = 0; round != 60000 && !this->HasFatalFailure(); ++round) {
        std::string text;
        const auto zeros = [&](std::size_t n) { text.append(below(8) == 0 ? below(n) : 0, '0'); };
        const auto digits = [&](std::size_t n) {
            while (n-- != 0) text += static_cast<char>('0' + below(10));
        };
        const bool close = round % 3 != 0; // to what a double holds and scales exactly
        const unsigned int integer = below(close ? 9 : 40);
        if (below(2) == 0) text += "+-"[below(2)];
        zeros(close ? 3 : 300);
        digits(integer);
        if (below(4) != 0) text += ".,"[below(2)];
        if (!close || integer == 0) zeros(close ? 7 : 320);
        digits(close ? 15 - integer : below(30));
        const bool ends = below(4) != 0;
        if (!ends) text += "e7,x"[below(4)];
        check_real<TypeParam>(text, plain_real(text));
        if (close && ends && text.find(',') == text.npos) {
            ASSERT_EQ(plain_real(text), std::strtod(text.c_str(), nullptr)) << text;
        }
    }
}

TYPED_TEST(Number, EveryUnitThatIsNoDigitEndsANumber) {
    std::u32string units;
    for (char32_t unit = 0; unit != 256; ++unit) units += unit;
    if (sizeof(TypeParam) == 2) units += {0xFF11, 0x0131, 0x8031, 0x3031, 0x0661, 0x3131, 0x3900};
    for (const std::uint32_t unit : units) {
        for (std::size_t n = 2; n != 10; ++n) {
            for (std::size_t place = 1; place != n; ++place) {
                std::u32string text(n, U'1');
                text[place] = unit;
                int value = 0;
                for (std::size_t i = 0; i != n && text[i] - '0' < 10; ++i) {
                    value = value * 10 + static_cast<int>(text[i] - '0');
                }
                const auto kept = exactly<TypeParam>(text);
                ASSERT_EQ(range_of(kept).as_int(), value) << unit;
                ASSERT_EQ(range_of(kept).as_unsigned(), static_cast<unsigned int>(value)) << unit;
                const bool separates = unit == '.' || unit == ',';
                ASSERT_TRUE(separates || range_of(kept).as_double() == value) << unit;
            }
        }
    }
}

TEST(PowersOfTen, AreTheNearestNumbers) {
    for (int i = 0; i != 17; ++i) EXPECT_EQ(prevPowerOfTen[i], power_of_ten(i - 1));
}

} // namespace
