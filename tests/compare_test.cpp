// Comparing, beside the rule told plainly.
#include "support/dice.h"
#include "support/guard.h"
#include "support/text.h"

#include <kord/chars.h>

#include <algorithm>

namespace {

template <class T>
class Compare : public ::testing::Test {};
TYPED_TEST_SUITE(Compare, Widths);

/// The rule told plainly.
template <class T>
int plainly(const KordCharacterRange<T>& a, const KordCharacterRange<T>& b, int (*fold)(unsigned int)) {
    const std::u32string x = codes(a), y = codes(b);
    for (std::size_t i = 0; i != std::min(x.size(), y.size()); ++i) {
        if (const int difference = fold(x[i]) - fold(y[i])) return difference;
    }
    return static_cast<int>(x.size()) - static_cast<int>(y.size());
}

template <class T>
void check(const KordCharacterRange<T>& a, const KordCharacterRange<T>& b) {
    const auto itself = [](unsigned int c) { return static_cast<int>(c); };
    ASSERT_EQ(a.compare(b), plainly(a, b, itself)) << show(a) << " / " << show(b);
    ASSERT_EQ(a.compare_nocase(b), plainly(a, b, KordToUpper)) << show(a) << " / " << show(b);
}

TYPED_TEST(Compare, PiecesAreClampedAndTextsMeasured) {
    using R = KordCharacterRange<TypeParam>;
    const Units<TypeParam> text("abc"), capitals("ABC"), zeros(std::string_view("a\0b", 3));
    const R abc(text), azb(zeros, 0, 3);
    EXPECT_EQ(abc.compare('a') + R().compare('a') + abc.compare_nocase('A') + R().compare_nocase('a'), 2 - 1 + 2 - 1);
    EXPECT_EQ(abc.compare_nocase(capitals) + abc.compare_nocase(1, R::npos, capitals, 1), 1);
    EXPECT_EQ(abc.compare(static_cast<const TypeParam*>(nullptr)), 3);
    EXPECT_EQ(abc.compare_nocase(1, 1, static_cast<const TypeParam*>(nullptr), 7), 1);
    EXPECT_EQ(abc.compare(3, 1, text) + abc.compare(9, R::npos, text) + abc.compare_nocase(R::npos, 0, text), -9);
    EXPECT_EQ(abc.compare(1, R::npos, abc, 1) + abc.compare(1, 1, abc, 1, 1) + abc.compare(5, 2, abc, 0, 0), 0);
    EXPECT_EQ(abc.compare_nocase(1, 9, abc, 2, 9) + abc.compare(0, 2, abc, 7, 9), 'b' - 'c' + 2);
    EXPECT_EQ(azb.compare(0, R::npos, zeros, 3), 0);
    EXPECT_EQ(azb.compare(0, R::npos, zeros), 2);
}

// At every length and place around a block, with faults beside both texts: a difference, and others behind it.
TYPED_TEST(Compare, FindsTheFirstDifferenceWhereverItIs) {
    using R = KordCharacterRange<TypeParam>;
    constexpr unsigned short nasty[] = {0, 'G', 'X', '{', '_', 0xC9, 0xE9, 0x391, 0x3B1, 0x6701, 0xFFFF};
    Dice below(6);
    for (unsigned int round = 0; round != 2 * 82; ++round) {
        const unsigned int n = round / 2;
        const GuardedText<TypeParam> low(n, true), high(n, false);
        TypeParam *const a = low.data(), *const b = high.data();
        const R left(a, 0, n), right(b, 0, n);
        for (unsigned int i = 0; i < n && round % 2 == 0; i += i % 3 + 1) a[i] = 'G';
        check(left, right);
        for (unsigned int i = n; i-- != 0 && !this->HasFatalFailure();) {
            check(left, R(right, 0, i));
            a[i] = static_cast<TypeParam>(below.pick(nasty));
            b[i] = static_cast<TypeParam>(below.pick(nasty));
            check(left, right);
            check(right, left);
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
    std::vector<TypeParam> a(20, 'x'), b(20, 'X');
    b[19] = 'Z'; // counts where everything before is the same
    for (unsigned int c = 0; c != 256; ++c) {
        for (unsigned int d = 0; d != 256 && !this->HasFatalFailure(); ++d) {
            a[17] = static_cast<TypeParam>(c);
            b[17] = static_cast<TypeParam>(d);
            check(range_of(a), range_of(b));
        }
    }
}

} // namespace
