// Comparing: the differences by rows, and at every place with faults around the texts.
#include "support/guard.h"
#include "support/text.h"

#include <kord/chars.h>

#include <algorithm>

namespace {

template <class T>
class Compare : public ::testing::Test {};
TYPED_TEST_SUITE(Compare, Widths);

TYPED_TEST(Compare, GivesTheDifferenceOfTheFirstCodesOrOfTheLengths) {
    using R = KordCharacterRange<TypeParam>;
    // clang-format off
    const struct { const char *a, *b; int exact, nocase; } rows[] = {
        {"", "", 0, 0}, {"", "abc", -3, -3}, {"abc", "", 3, 3}, {"abc", "abd", -1, -1}, {"abc", "ab", 1, 1},
        {"ABC", "abc", -32, 0}, {"a", "_", 2, -30}, {"abc", "ABD", 32, -1}, {"z", "{z", -1, -33},
        {"\xE9", "e", 132, 132}, {"\xE9", "\xC9", 32, 0}, {"\xFF", "\x9F", 96, 0}, {"\xDF", "S", 140, 140},
    };
    // clang-format on
    for (const auto& [left, right, exact, nocase] : rows) {
        const auto a = exactly<TypeParam>(left);
        auto b = exactly<TypeParam>(right);
        const auto n = static_cast<unsigned int>(b.size());
        b.insert(b.end(), {0, 'x'});
        const R x = range_of(a), y = range_of(b);
        const int all[] = {x.compare(R(y, 0, n)), x.compare(b.data()), x.compare(0, R::npos, b.data()),
                           x.compare(0, 9999, y, 0, n)};
        const int all_nocase[] = {x.compare_nocase(R(y, 0, n)), x.compare_nocase(b.data()),
                                  x.compare_nocase(0, R::npos, b.data(), n), x.compare_nocase(0, 99, y, 0, n)};
        for (const int difference : all) EXPECT_EQ(difference, exact) << left << ' ' << right;
        for (const int difference : all_nocase) EXPECT_EQ(difference, nocase) << left << ' ' << right;
    }
}

TYPED_TEST(Compare, PiecesAreClampedAndTextsMeasured) {
    using R = KordCharacterRange<TypeParam>;
    const Units<TypeParam> text("abc"), zeros(std::string_view("a\0b", 3));
    const R abc(text), azb(zeros, 0, 3);
    EXPECT_EQ(abc.compare('a') + R().compare('a') + abc.compare_nocase('A') + R().compare_nocase('a'), 2 - 1 + 2 - 1);
    EXPECT_EQ(abc.compare(static_cast<const TypeParam*>(nullptr)), 3);
    EXPECT_EQ(abc.compare_nocase(1, 1, static_cast<const TypeParam*>(nullptr), 7), 1);
    EXPECT_EQ(abc.compare(3, 1, text) + abc.compare(9, R::npos, text) + abc.compare_nocase(R::npos, 0, text), -9);
    EXPECT_EQ(abc.compare(1, R::npos, abc, 1) + abc.compare(1, 1, abc, 1, 1) + abc.compare(5, 2, abc, 0, 0), 0);
    EXPECT_EQ(abc.compare_nocase(1, 9, abc, 2, 9) + abc.compare(0, 2, abc, 7, 9), 'b' - 'c' + 2);
    EXPECT_EQ(azb.compare(0, R::npos, zeros, 3), 0);
    EXPECT_EQ(azb.compare(0, R::npos, zeros), 2);
}

// At every length and place around a block, with faults beside both texts.
TYPED_TEST(Compare, FindsTheFirstDifferenceWhereverItIs) {
    using R = KordCharacterRange<TypeParam>;
    for (unsigned int n = 1; n != 82; ++n) {
        const GuardedText<TypeParam> low(n, true), high(n, false);
        TypeParam *const a = low.data(), *const b = high.data();
        const R left(a, 0, n), right(b, 0, n);
        for (unsigned int i = 0; i < n; i += i % 3 + 1) a[i] = 'G';
        ASSERT_EQ(left.compare_nocase(right), 0) << n;
        ASSERT_EQ(left.compare(right), 'G' - 'g') << n;
        for (unsigned int i = 0; i != n; ++i) {
            const TypeParam old = a[i];
            b[n - 1] = 'X';
            a[i] = static_cast<TypeParam>(sizeof(TypeParam) == 1 ? 0xE9 : 0x6701); // the low byte is the smaller one
            const int difference = (sizeof(TypeParam) == 1 ? 0xC9 : 0x6701) - (i == n - 1 ? 'X' : 'G');
            ASSERT_EQ(left.compare_nocase(right), difference) << n << ' ' << i;
            ASSERT_EQ(right.compare_nocase(left), -difference) << n << ' ' << i;
            ASSERT_EQ(left.compare_nocase(R(right, 0, i)), static_cast<int>(n - i)) << n << ' ' << i;
            a[i] = old;
            std::copy_n(a, n, b);
            b[i] = 0;
            ASSERT_EQ(left.compare(right), old) << n << ' ' << i;
            std::fill_n(b, n, TypeParam{'g'});
        }
    }
}

// Letters beyond ASCII from every place on, then one character that differs behind each, with faults beside both texts.
TYPED_TEST(Compare, IgnoresCaseBeyondAsciiWhereverItBegins) {
    using R = KordCharacterRange<TypeParam>;
    const auto unit = [](unsigned int code) { return static_cast<TypeParam>(code); };
    for (unsigned int n = 1; n != 52; ++n) {
        const GuardedText<TypeParam> low(n, true), high(n, false);
        TypeParam *const a = low.data(), *const b = high.data();
        const R left(a, 0, n), right(b, 0, n);
        for (unsigned int i = 0; i != n; ++i) {
            std::fill_n(a, i, unit('g'));
            std::fill_n(b, i, unit('G'));
            for (unsigned int j = i; j != n; ++j) {
                a[j] = unit(j % 2 == 0 ? 0xE9 : 0xDE);
                b[j] = unit(j % 2 == 0 ? 0xC9 : 0xFE);
            }
            ASSERT_EQ(left.compare_nocase(right), 0) << n << ' ' << i;
            ASSERT_EQ(left.compare_nocase(R(right, 0, i)), static_cast<int>(n - i)) << n << ' ' << i;
            for (unsigned int j = i; j != n; ++j) {
                const TypeParam old = b[j];
                b[j] = 'x';
                const int difference = KordToUpper(j % 2 == 0 ? 0xE9 : 0xDE) - 'X';
                ASSERT_EQ(left.compare_nocase(right), difference) << n << ' ' << i << ' ' << j;
                ASSERT_EQ(right.compare_nocase(left), -difference) << n << ' ' << i << ' ' << j;
                b[j] = old;
            }
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
            ASSERT_EQ(range_of(a).compare_nocase(range_of(b)), difference != 0 ? difference : 'X' - 'Z')
                << c << ' ' << d;
            ASSERT_EQ(R(a.data(), 17, 1).compare_nocase(b[17]), difference) << c << ' ' << d;
        }
    }
}

TEST(WideCompare, OrdersByUnitAndFoldsNothingAbove255) {
    const auto alpha = exactly<unsigned short>(U"\x3B1"), capital = exactly<unsigned short>(U"\x391");
    const auto last = exactly<unsigned short>(U"\xFFFF"), a = exactly<unsigned short>(U"A");
    EXPECT_EQ(range_of(alpha).compare_nocase(range_of(capital)), 32);
    EXPECT_EQ(range_of(last).compare(range_of(a)), 65470);
    EXPECT_EQ(range_of(a).compare_nocase(last[0]), -65470);
}

} // namespace
