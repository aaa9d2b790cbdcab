#include "text/number.h"

#include "support/text.h"

#include <kord/real.h>

#include <algorithm>
#include <bit>
#include <iterator>
#include <random>

namespace {

template <class T>
class Number : public ::testing::Test {};
TYPED_TEST_SUITE(Number, Widths);

constexpr int least = -2147483647 - 1, most = 2147483647;
constexpr unsigned int top = 0xFFFFFFFF;

// clang-format off
TYPED_TEST(Number, IntegersStopAtWhatDoesNotFitAndSaturate) {
    struct Row { const char* text; int as_int; unsigned int as_unsigned; };
    const Row rows[] = {
        {"", 0, 0}, {"12abc", 12, 12}, {"-45", -45, 0}, {"+7", 7, 0}, {"-", 0, 0}, {"+-1", 0, 0}, {" 1", 0, 0}, {"007", 7, 7}, {"1,000", 1, 1}, {"1e3", 1, 1},
        {"0x10", 0, 16}, {"0", 0, 0}, {"017", 17, 17}, {"0x1F", 0, 31}, {"0X1f", 0, 31}, {"0x", 0, 0}, {"$ff", 0, 255}, {"$", 0, 0}, {"x1", 0, 0}, {"ff", 0, 0},
        {"12ab", 12, 12}, {"0b1", 0, 0}, {"0xfg", 0, 15}, {"$0x1", 0, 0}, {"00x1", 0, 0}, {"0xAbCdEf", 0, 0xABCDEF}, {"1:", 1, 1}, {"1/", 1, 1}, {"\xB1", 0, 0}, {"1\xB1", 1, 1},
        {"1234567", 1234567, 1234567}, {"12345678", 12345678, 12345678}, {"12345678:", 12345678, 12345678}, {"12345678/", 12345678, 12345678}, {"123456789", 123456789, 123456789}, {"00000000000000000012", 12, 12},
        {"2147483646", most - 1, 2147483646}, {"2147483647", most, 2147483647}, {"2147483648", most, 2147483648}, {"2147483650", most, 2147483650}, {"99999999999", most, top},
        {"-2147483647", -most, 0}, {"-2147483648", least, 0}, {"-99999999999", least, 0}, {"4294967294", most, top - 1}, {"4294967295", most, top}, {"4294967296", most, top},
        {"0xFFFFFFFE", 0, top - 1}, {"0xFFFFFFFF", 0, top}, {"0x100000000", 0, top}, {"$123456789", 0, top}, {"18446744073709551617", most, top},
    };
    for (const Row& row : rows) {
        std::u32string text = codes(aliteral(row.text));
        const std::vector<TypeParam> exact(text.begin(), text.end()); // so that no byte behind it is read unnoticed
        const KordCharacterRange<TypeParam> range(exact.data(), 0, static_cast<unsigned int>(exact.size()));
        EXPECT_EQ(range.as_int(), row.as_int) << row.text;
        EXPECT_EQ(range.as_unsigned(), row.as_unsigned) << row.text;
    }
}

TYPED_TEST(Number, TheScannerSaysWhereItStopped) {
    struct Row { const char* text; unsigned int radix, value, stop; };
    const Row rows[] = {{"", 10, 0, 0}, {"12ab", 10, 12, 2}, {"12ab", 16, 0x12AB, 4}, {"12ag", 16, 0x12A, 3}, {"129", 8, 10, 2}, {"123456789x", 10, 123456789, 9},
        {"12345678x", 10, 12345678, 8}, {"4294967295.", 10, top, 10}, {"4294967296.", 10, top, 0}, {"fffffffff", 16, top, 0}, {"-1", 10, 0, 0}};
    for (const Row& row : rows) {
        const Units<TypeParam> text(row.text);
        const TypeParam* const first = text;
        const auto scanned = kord::KordScanUnsigned(first, first + std::string_view(row.text).size(), row.radix);
        EXPECT_EQ(scanned.value, row.value) << row.text;
        EXPECT_EQ(scanned.stop - first, row.stop) << row.text;
    }
}

TYPED_TEST(Number, RealsFollowTheRulesToTheLastBit) {
    const auto zeros = [](const char* front, std::size_t n, const char* back = "") { return std::string(front).append(n, '0').append(back); };
    struct Row { std::string text; double value; };
    const Row rows[] = {
        {"", 0.0}, {"-12.5", -12.5}, {"12,5", 12.5}, {".5", 0.5}, {"5.", 5.0}, {",", 0.0}, {"-", -0.0}, {"-0", -0.0}, {"+.25x", 0.25}, {"0.001", 0.001}, {"00012.000", 12.0}, {"1e5", 1.0},
        {"1,234.5", 1.234}, {" 1", 0.0}, {"--1", -0.0}, {"9007199254740993", 9007199254740992.0}, {"123456789012345678", 123456789012345696.0}, {"1234567890123456789012", 123456789012345696.0 * 1e4},
        {zeros("1", 308), 0x1.FFFFFFFFFFFFFp1023}, {zeros("-1", 308), -0x1.FFFFFFFFFFFFFp1023}, {zeros("9", 307), 9e17 * 1e290}, {zeros("1", 20), 1e17 * 1e3},
        {zeros("0.", 306, "1"), 1 / 1e307}, {zeros("0.", 307, "1"), 0.0}, {zeros("0.", 306, "12"), 12 / 1e308}, {zeros("0.", 306, "123"), 0.0}, {zeros("", 310, ".00"), 0.0}, {zeros("", 310, "12.5"), 12.5},
    };
    for (const Row& row : rows) {
        const Units<TypeParam> text(row.text);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(KordCharacterRange<TypeParam>(text).as_double()), std::bit_cast<std::uint64_t>(row.value)) << row.text;
    }
}
// clang-format on

/// The rules for reals, a digit at a time, with the powers that strtod rounds.
double plain_real(const std::string& text) {
    const auto power = [](long k) { return std::strtod(("1e" + std::to_string(k)).c_str(), nullptr); };
    std::size_t i = text.find_first_not_of("+-");
    i = text.find_first_not_of('0', i);
    volatile double value = 0; // each step rounded
    long taken = 0, whole = 0, zeros = 0;
    const auto digit = [&] { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    const auto take = [&] {
        value = value * 10.0;
        value = value + (text[i] - '0');
        ++taken;
    };
    for (; digit(); ++i, ++whole) taken < 18 ? take() : void();
    if (i < text.size() && (text[i] == '.' || text[i] == ',')) {
        for (++i; taken == 0 && i < text.size() && text[i] == '0'; ++i) ++zeros;
        for (; digit() && taken < 18; ++i) take();
    }
    // `whole` counted what was taken of the integer part too.
    const long scale = whole - taken - zeros, lead = whole - zeros - 1;
    if (lead >= 308)
        value = 0x1.FFFFFFFFFFFFFp1023;
    else if (lead < -307)
        value = 0.0;
    else
        value = scale >= 0 ? value * power(scale) : value / power(-scale);
    return text[0] == '-' ? -value : +value;
}

TYPED_TEST(Number, RealsOfAnyShapeAreReadAsThePlainRulesSay) {
    std::mt19937 random(4);
    std::string text;
    const auto below = [&](std::size_t n) { return random() % n; };
    const auto zeros = [&](std::size_t n) { below(8) == 0 ? text.append(below(n), '0') : text; };
    const auto digits = [&](std::size_t n) {
        std::generate_n(std::back_inserter(text), n, [&] { return "0123456789"[below(10)]; });
    };
    for (int round = 0; round != 60000; ++round) {
        const bool close = round % 3 != 0; // to what a double holds and scales exactly
        const std::size_t whole = below(close ? 9 : 40);
        text.clear();
        if (below(2) == 0) text += "+-"[below(2)];
        zeros(close ? 3 : 300);
        digits(whole);
        if (below(4) != 0) text += ".,"[below(2)];
        if (!close || whole == 0) zeros(close ? 7 : 320);
        digits(close ? 15 - whole : below(30));
        std::string c_text = text;
        if (below(4) == 0) text += "e7,x"[below(4)];
        const double read = KordCharacterRange<TypeParam>(Units<TypeParam>(text)).as_double();
        ASSERT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(plain_real(text))) << text;
        std::replace(c_text.begin(), c_text.end(), ',', '.');
        if (close && c_text == text) {
            ASSERT_EQ(read, std::strtod(text.c_str(), nullptr)) << text;
        }
    }
}

TEST(WideNumber, UnitsFrom256OnEndTheNumber) {
    for (const unsigned int unit : {0xFF11u, 0x0131u, 0x8031u, 0x3031u, 0x0661u}) {
        const unsigned short text[] = {'1', static_cast<unsigned short>(unit), '2', '3'};
        for (const unsigned int n : {2u, 4u}) {
            const KordCharacterRange<unsigned short> range(text, 0, n);
            EXPECT_EQ(range.as_int() + static_cast<int>(range.as_unsigned()) + range.as_double(), 3.0);
        }
    }
}

TEST(PowersOfTen, AreTheNearestNumbers) {
    for (int i = 0; i != 17; ++i)
        EXPECT_EQ(prevPowerOfTen[i], std::strtod(("1e" + std::to_string(i - 1)).c_str(), nullptr));
}

} // namespace
