#include "support/guard.h"
#include "support/text.h"

#include <kord/chars.h>

namespace {

template <class T>
class Compare : public ::testing::Test {};
TYPED_TEST_SUITE(Compare, Widths);

TYPED_TEST(Compare, GivesTheDifferenceOfTheFirstCodesOrOfTheLengths) {
    using R = KordCharacterRange<TypeParam>;
    struct Row {
        const char *a, *b;
        int exact, nocase;
    };
    const Row rows[] = {{"", "", 0, 0},          {"", "abc", -3, -3},
                        {"abc", "", 3, 3},       {"abc", "abd", -1, -1},
                        {"abc", "ab", 1, 1},     {"ABC", "abc", -32, 0},
                        {"a", "_", 2, -30},      {"abc", "ABD", 32, -1},
                        {"z", "{z", -1, -33},    {"\xE9", "e", 132, 132},
                        {"\xE9", "\xC9", 32, 0}, {"\xFF", "\x9F", 96, 0},
                        {"\xDF", "S", 140, 140}, {"abcdefghijklmnopqrstuvwxyz", "abcdefghijklmnopqrstuvwxy", 1, 1}};
    for (const Row& x : rows) {
        const std::u32string wide_a = codes(aliteral(x.a)), wide_b = codes(aliteral(x.b));
        const std::vector<TypeParam> a(wide_a.begin(), wide_a.end());
        std::vector<TypeParam> b(wide_b.begin(), wide_b.end());
        const unsigned int n = static_cast<unsigned int>(b.size());
        b.push_back(0);
        b.push_back('x');
        const R left(a.data(), 0, static_cast<unsigned int>(a.size())), right(b.data(), 0, n + 2);
        EXPECT_EQ(left.compare(R(right, 0, n)), x.exact) << x.a << ' ' << x.b;
        EXPECT_EQ(left.compare_nocase(R(right, 0, n)), x.nocase) << x.a << ' ' << x.b;
        EXPECT_EQ(left.compare(b.data()), x.exact);
        EXPECT_EQ(left.compare_nocase(b.data()), x.nocase);
        EXPECT_EQ(left.compare(0, R::npos, b.data()) + left.compare(0, 9999, right, 0, n), 2 * x.exact);
        EXPECT_EQ(left.compare_nocase(0, R::npos, b.data(), n) + left.compare_nocase(0, 99, right, 0, n), 2 * x.nocase);
        EXPECT_EQ(right.compare(2u, 0u, a.data(), 0u) + R().compare_nocase(right), -static_cast<int>(n + 2));
    }
}

TYPED_TEST(Compare, PiecesAreClampedAndTextsMeasured) {
    using R = KordCharacterRange<TypeParam>;
    const Units<TypeParam> units("abc"), zeros(std::string_view("a\0b", 3));
    const R abc(units), azb(zeros, 0, 3);
    EXPECT_EQ(abc.compare('a') + abc.compare_nocase('A'), 4);
    EXPECT_EQ(R(units, 0, 1).compare('a') + R(units, 0, 1).compare_nocase('A'), 0);
    EXPECT_EQ(R().compare('a') + R().compare_nocase('a'), -2);
    EXPECT_EQ(abc.compare(static_cast<const TypeParam*>(nullptr)), 3);
    EXPECT_EQ(abc.compare_nocase(1, 1, static_cast<const TypeParam*>(nullptr), 7), 1);
    EXPECT_EQ(abc.compare(3, 1, units) + abc.compare(9, R::npos, units) + abc.compare_nocase(R::npos, 0, units), -9);
    EXPECT_EQ(abc.compare(1, R::npos, abc, 1) + abc.compare(1, 1, abc, 1, 1) + abc.compare(5, 2, abc, 0, 0), 0);
    EXPECT_EQ(abc.compare_nocase(1, 9, abc, 2, 9) + abc.compare(0, 2, abc, 7, 9), 'b' - 'c' + 2);
    EXPECT_EQ(azb.compare(0, R::npos, zeros, 3), 0);
    EXPECT_EQ(azb.compare(0, R::npos, zeros), 2);
    EXPECT_EQ(azb.compare(R(azb, 0, 1)), 2);
}

// At every length and place around a block, with faults beside both texts.
TYPED_TEST(Compare, FindsTheFirstDifferenceWhereverItIs) {
    using R = KordCharacterRange<TypeParam>;
    for (unsigned int n = 1; n != 82; ++n) {
        const GuardedText<TypeParam> low(n, true), high(n, false);
        TypeParam *const a = low.data(), *const b = high.data();
        const R left(a, 0, n), right(b, 0, n);
        for (unsigned int i = 0; i < n; i += i % 3 + 1) a[i] = 'G';
        EXPECT_EQ(left.compare_nocase(right), 0);
        EXPECT_EQ(left.compare(right), 'G' - 'g');
        for (unsigned int i = 0; i != n; ++i) {
            const TypeParam old = a[i];
            b[n - 1] = 'X';
            a[i] = static_cast<TypeParam>(sizeof(TypeParam) == 1 ? 0xE9 : 0x6701); // the low byte is the smaller one
            const int code = sizeof(TypeParam) == 1 ? 0xC9 : 0x6701;
            EXPECT_EQ(left.compare_nocase(right), code - (i == n - 1 ? 'X' : 'G')) << n << ' ' << i;
            EXPECT_EQ(right.compare_nocase(left), (i == n - 1 ? 'X' : 'G') - code);
            EXPECT_EQ(left.compare_nocase(R(right, 0, i)), static_cast<int>(n - i));
            a[i] = old;
            std::copy(a, a + n, b);
            b[i] = 0;
            EXPECT_EQ(left.compare(right), old) << n << ' ' << i;
            std::fill_n(b, n, TypeParam{'g'});
        }
    }
}

TYPED_TEST(Compare, IgnoresCaseForEveryPairOfCodes) {
    using R = KordCharacterRange<TypeParam>;
    std::vector<TypeParam> a(20, 'x'), b(20, 'X');
    b[19] = 'Z'; // counts where everything before is the same
    for (unsigned int c = 0; c != 256; ++c) {
        for (unsigned int d = 0; d != 256; ++d) {
            a[17] = static_cast<TypeParam>(c);
            b[17] = static_cast<TypeParam>(d);
            const int difference = KordToUpper(c) - KordToUpper(d);
            ASSERT_EQ(R(a.data(), 0, 20).compare_nocase(R(b.data(), 0, 20)), difference != 0 ? difference : 'X' - 'Z')
                << c << ' ' << d;
            ASSERT_EQ(R(a.data(), 17, 1).compare_nocase(b[17]), difference);
        }
    }
}

TEST(WideCompare, OrdersByUnitAndFoldsNothingAbove255) {
    const unsigned short alpha[] = {0x3B1}, capital[] = {0x391}, last[] = {0xFFFF}, a[] = {0x41};
    using R = KordCharacterRange<unsigned short>;
    EXPECT_EQ(R(alpha, 0, 1).compare_nocase(R(capital, 0, 1)), 32);
    EXPECT_EQ(R(last, 0, 1).compare(R(a, 0, 1)), 65470);
    EXPECT_EQ(R(a, 0, 1).compare_nocase(last[0]), -65470);
}

} // namespace
