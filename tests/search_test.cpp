// The searches, against searches that look at one character after the other.
#include "support/dice.h"
#include "support/guard.h"
#include "support/text.h"

#include <kord/chars.h>

#include <algorithm>
#include <span>

namespace {

constexpr unsigned int npos = 0xFFFFFFFF;

template <class T>
class Search : public ::testing::Test {};
TYPED_TEST_SUITE(Search, Widths);

// clang-format off
// What the plain searches below do not call: members without a position, and with texts that end in a zero.
TYPED_TEST(Search, StartsAtEitherEndUnlessAPositionIsGiven) {
    const auto text = make<TypeParam>("abcABCabc"), bc = make<TypeParam>("bc"), abc = make<TypeParam>("abc");
    const Units<TypeParam> terminated("bc");
    const TypeParam *const zero_ended = terminated, *const null = nullptr;
    const struct { unsigned int found, expected; } rows[] = {
        {text.find('a'), 0}, {text.rfind('c'), 8}, {text.find(abc), 0}, {text.rfind(abc), 6},
        {text.find_nocase(abc), 0}, {text.rfind_nocase(abc), 6}, {text.find_first_of(abc), 0},
        {text.find_last_of(abc), 8}, {text.find_first_not_of(bc), 0}, {text.find_last_not_of(bc), 6},
        {text.find_first_not_of('b'), 0}, {text.find_last_not_of('b'), 8}, {text.find(zero_ended), 1},
        {text.find(zero_ended, 2), 7}, {text.rfind(zero_ended), 7}, {text.rfind(zero_ended, 6), 1},
        {text.find(null, 2), 2}, {text.rfind(null, 2), 2},
    };
    for (const auto& row : rows) EXPECT_EQ(row.found, row.expected) << "row " << &row - rows;
}
// clang-format on

TYPED_TEST(Search, TrailingCharactersAreCutOff) {
    const auto cut = [](const std::string& text) {
        String<TypeParam> s = make<TypeParam>(text);
        const TypeParam* const begin = s.cbegin();
        s.remove_trailing('0');
        EXPECT_EQ(s.cbegin(), begin);
        return show(s);
    };
    EXPECT_EQ(cut("1.500") + '|' + cut("000") + '|' + cut("abc") + '|' + cut("1" + std::string(44, '0')), "1.5||abc|1");
    KordCharacterRange<TypeParam> null;
    null.remove_trailing('0');
    EXPECT_EQ(null.end(), nullptr);
}

/// The searches told plainly.
template <class T>
struct Twin {
    using R = KordCharacterRange<T>;
    struct Row {
        const char* name;
        unsigned int found, expected;
    };
    R text;
    unsigned int length = text.length();

    /// The first position from `pos` on, by steps of `step`, that is taken.
    template <class Takes>
    unsigned int seek(unsigned int pos, unsigned int step, Takes takes) const {
        for (; pos < length; pos += step) {
            if (takes(pos)) return pos;
        }
        return npos;
    }
    bool is_at(unsigned int pos, const R& wanted, int (*fold)(unsigned int)) const {
        if (wanted.length() > length - pos) return false;
        return std::equal(wanted.begin(), wanted.end(), text.begin() + pos, [fold](T a, T b) {
            using U = std::make_unsigned_t<T>;
            return fold(static_cast<U>(a)) == fold(static_cast<U>(b));
        });
    }
    void check(const R& r, unsigned int pos) const {
        const auto itself = [](unsigned int c) { return static_cast<int>(c); };
        const auto exact = [&](unsigned int i) { return is_at(i, r, itself); };
        const auto nocase = [&](unsigned int i) { return is_at(i, r, KordToUpper); };
        const unsigned int last = (pos == npos ? length : pos) - r.length();
        const Row rows[] = {{"find", text.find(r, pos), seek(pos, 1, exact)},
                            {"rfind", text.rfind(r, pos), seek(last, npos, exact)},
                            {"find_nocase", text.find_nocase(r, pos), seek(pos, 1, nocase)},
                            {"rfind_nocase", text.rfind_nocase(r, pos), seek(last, npos, nocase)}};
        compare(rows, r, pos);
    }
    void check_members(const R& set, unsigned int pos) const {
        const unsigned int last = pos == npos ? length - 1 : pos;
        const auto in = [&](unsigned int i) { return std::find(set.begin(), set.end(), text[i]) != set.end(); };
        const auto out = [&](unsigned int i) { return !in(i); };
        const unsigned int first_in = seek(pos, 1, in), first_out = seek(pos, 1, out);
        const unsigned int last_in = seek(last, npos, in), last_out = seek(last, npos, out);
        const Row rows[] = {{"find_first_of", text.find_first_of(set, pos), first_in},
                            {"find_first_not_of", text.find_first_not_of(set, pos), first_out},
                            {"find_last_of", text.find_last_of(set, pos), last_in},
                            {"find_last_not_of", text.find_last_not_of(set, pos), last_out}};
        compare(rows, set, pos);
        if (set.length() != 1) return;
        const Row of_one[] = {{"find", text.find(set[0], pos), first_in},
                              {"find_first_not_of", text.find_first_not_of(set[0], pos), first_out},
                              {"rfind", text.rfind(set[0], pos), last_in},
                              {"find_last_not_of", text.find_last_not_of(set[0], pos), last_out}};
        compare(of_one, set, pos);
    }
    void compare(std::span<const Row> rows, const R& wanted, unsigned int pos) const {
        for (const auto& [name, found, expected] : rows)
            ASSERT_EQ(found, expected) << name << ": " << show(text) << " / " << show(wanted) << ' ' << pos;
    }
};

/// Letters whose partners are 16, 32 and 96 away, one that has none, and units that end in the byte of another.
constexpr unsigned short nasty[] = {'a',  'A',  0xE9, 'b',  0xC9, 0x9F,  0xFF,   0x8A,
                                    0x9A, 0xDF, 0xBF, 0xDE, 0,    0x161, 0xFFFF, 0x6161};

// At every length around a block and place, with faults on both sides of the text and behind the needle.
TYPED_TEST(Search, FindsWhatThePlainSearchesFind) {
    using R = KordCharacterRange<TypeParam>;
    Dice below(1);
    for (unsigned int round = 0; round != 12000; ++round) {
        const unsigned int n = round / 2 % 90, m = below(round % 3 == 0 ? 40 : 5);
        const GuardedText<TypeParam> text(n, round % 2 == 0), wanted(m, round % 2 != 0);
        const unsigned int kinds = 1 + below(5), from = below(std::size(nasty));
        const auto pick = [&] { return static_cast<TypeParam>(nasty[(from + below(kinds)) % std::size(nasty)]); };
        std::generate_n(text.data(), n, pick);
        std::generate_n(wanted.data(), m, pick);
        if (m <= n && round % 4 < 2) std::copy_n(text.data() + below(n - m + 1), m, wanted.data());
        const Twin<TypeParam> twin{R(text.data(), 0, n)};
        for (const unsigned int pos : {0u, npos, n, below(n + 1), n + below(m + 3)}) {
            twin.check(R(wanted.data(), 0, m), pos);
            twin.check_members(R(wanted.data(), 0, m), pos);
            if (this->HasFatalFailure()) return;
        }
    }
}

// Long texts, in which rare characters are leapt to from some way on, and common ones not.
TYPED_TEST(Search, OneMatchInALongTextIsFoundWhereverItIs) {
    const auto needle = exactly<TypeParam>("needle");
    for (unsigned int place = 0; place < 1994 && !this->HasFatalFailure(); place += place % 250 < 8 ? 1 : 11) {
        std::vector<TypeParam> text(2000, place % 2 == 0 ? 'x' : 'e');
        const Twin<TypeParam> twin{range_of(text)};
        for (const TypeParam last : {'e', 'x'}) { // it is there, then it nearly is
            std::copy(needle.begin(), needle.end(), text.begin() + place);
            text[place + 5] = last;
            for (const unsigned int pos : {0u, npos, place + 1, place + 5}) twin.check(range_of(needle), pos);
        }
    }
}

// Texts that nearly match nearly everywhere, long enough for every way of searching to be used up.
TYPED_TEST(Search, RepetitiveTextsAreFoundToo) {
    Dice below(2);
    std::string fibonacci = "a", next = "ab";
    while (next.size() < 3000) fibonacci = std::exchange(next, next + fibonacci);
    for (unsigned int round = 0; round != 1200 && !this->HasFatalFailure(); ++round) {
        std::string text = fibonacci;
        const unsigned int period = round % 40 + 1, size = 20 + below(400);
        for (unsigned int i = 0; i != text.size() && round % 4 != 0; ++i)
            text[i] = i < period || round % 4 == 1 ? "ab"[below(2)] : text[i - period];
        const std::size_t place = below(text.size() - size);
        std::string wanted = text.substr(place, size);
        if (round % 3 != 0) wanted[below(size)] = 'b';
        if (round % 5 == 0) text[place + below(size)] = 'c';
        for (std::size_t i = 0; i < text.size(); i += 7) text[i] = static_cast<char>(KordToUpper(text[i]));
        const auto characters = exactly<TypeParam>(text), needle = exactly<TypeParam>(wanted);
        for (const unsigned int pos : {0u, npos}) Twin<TypeParam>{range_of(characters)}.check(range_of(needle), pos);
    }
}

TYPED_TEST(Search, SetsOfAnySizeAreMetWithTheirMembers) {
    using R = KordCharacterRange<TypeParam>;
    Dice below(3);
    for (unsigned int round = 0; round != 6000 && !this->HasFatalFailure(); ++round) {
        const unsigned int n = round % 150, m = round % 80;
        const GuardedText<TypeParam> text(n, round % 2 == 0), set(m, round % 2 != 0);
        const unsigned int top = round % 3 == 0 ? 0xFFFF : 0xFF, few = round % 5 == 0 ? 0x2F : 0xFFFF;
        std::generate_n(set.data(), m, [&] { return static_cast<TypeParam>(below(0x10000) & top & few); });
        std::generate_n(text.data(), n, [&] {
            const unsigned int code = m != 0 && round % 4 < 2 ? set.data()[below(m)] : below(0x10000);
            return static_cast<TypeParam>(below(16) == 0 ? code ^ 0x100 : round % 4 < 2 ? code : code & few);
        });
        const Twin<TypeParam> twin{R(text.data(), 0, n)};
        for (const unsigned int pos : {0u, npos, n / 2}) twin.check_members(R(set.data(), 0, m), pos);
    }
}

} // namespace
