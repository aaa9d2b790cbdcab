#include "support/text.h"

#include <kord/chars.h>

#include <numeric>
#include <set>
#include <utility>

namespace {

using Codes = std::vector<std::pair<unsigned int, unsigned int>>;

bool among(const Codes& codes, unsigned int c) {
    for (const auto& [low, high] : codes) {
        if (c >= low && c <= high) return true;
    }
    return false;
}

TEST(Chars, TheTableCarriesEachFlagWhereItIsStated) {
    const struct {
        unsigned int flag;
        Codes codes;
    } rows[] = {
        {kordUpper, {{65, 90}, {138, 138}, {140, 140}, {142, 142}, {159, 159}, {192, 214}, {216, 221}, {254, 254}}},
        {kordLower, {{97, 122}, {154, 154}, {156, 156}, {158, 158}, {222, 246}, {248, 253}, {255, 255}}},
        {kordDigit, {{48, 57}}},
        {kordSpace, {{9, 13}, {32, 32}}},
        {kordPunct,
         {{33, 47},
          {58, 64},
          {91, 96},
          {123, 126},
          {128, 128},
          {130, 137},
          {139, 139},
          {145, 153},
          {155, 155},
          {161, 191},
          {215, 215},
          {247, 247}}},
        {kordControl, {{0, 31}, {127, 127}}},
        {kordBlank, {{32, 32}}},
        {kordHexDigit, {{48, 57}, {65, 70}, {97, 102}}},
        {kordSign, {{43, 43}, {45, 45}}},
        {kordDecimalSeparator, {{44, 44}, {46, 46}}},
        {kordNonZeroDigit, {{49, 57}}},
        {kordCaseException,
         {{138, 138}, {140, 140}, {142, 142}, {154, 154}, {156, 156}, {158, 159}, {222, 223}, {254, 255}}},
    };
    std::set<unsigned int> entries;
    for (unsigned int c = 0; c != 256; ++c) {
        unsigned int flags = 0;
        for (const auto& row : rows)
            flags |= among(row.codes, c) ? row.flag : 0u;
        EXPECT_EQ(kordType[c], flags) << c;
        entries.insert(kordType[c]);
    }
    EXPECT_EQ(entries, (std::set<unsigned int>{0x0000, 0x0001, 0x0002, 0x0010, 0x0020, 0x0028, 0x0048, 0x0081, 0x0082,
                                               0x0084, 0x0110, 0x0210, 0x0484, 0x1001, 0x1002}));
}

TEST(Chars, DigitsStandInTwoTerminatedRows) {
    EXPECT_STREQ(kordDigits[0], "0123456789abcdef");
    EXPECT_STREQ(kordDigits[1], "0123456789ABCDEF");
}

/// The upper-case partners in code order, by where they differ from 32 less.
unsigned int upper(unsigned int c) {
    switch (c) {
    case 154: return 138;
    case 156: return 140;
    case 158: return 142;
    case 222: return 254;
    case 223: return 223;
    case 255: return 159;
    default: return among({{97, 122}, {224, 246}, {248, 253}}, c) ? c - 32 : c;
    }
}

unsigned int lower(unsigned int c) {
    for (unsigned int l = 0; l != 256; ++l) {
        if (l != c && upper(l) == c) return l;
    }
    return c;
}

TEST(Chars, MappingsPairTheLettersAndLeaveTheRest) {
    for (unsigned int c = 0; c != 0x10000; ++c) {
        ASSERT_EQ(static_cast<unsigned int>(KordToUpper(c)), c < 256 ? upper(c) : c);
        ASSERT_EQ(static_cast<unsigned int>(KordToLower(c)), c < 256 ? lower(c) : c);
    }
    EXPECT_EQ(static_cast<unsigned int>(KordToLower(0xFFFFFFC1u)), 0xFFFFFFC1u);
    EXPECT_EQ(static_cast<unsigned int>(KordToUpper(0xFFFFFFE9u)), 0xFFFFFFE9u);
}

template <class T>
class Case : public ::testing::Test {};
TYPED_TEST_SUITE(Case, Widths);

TYPED_TEST(Case, EveryCharacterIsMappedAsTheTableSaysWhereverItStands) {
    // Every code among ASCII neighbours and among others of its kind, at each place of a block.
    for (const unsigned int filler : {unsigned{'q'}, 0xE9u}) {
        for (unsigned int shift = 0; shift != 17; ++shift) {
            const unsigned int codes = sizeof(TypeParam) == 1 ? 0x100 : shift == 0 ? 0x10000 : 0x200;
            std::vector<TypeParam> text(shift, static_cast<TypeParam>(filler));
            for (unsigned int c = 0; c != codes; ++c) {
                text.push_back(static_cast<TypeParam>(c));
                text.insert(text.end(), shift, static_cast<TypeParam>(filler));
            }
            for (const unsigned int cut : {0u, 5u}) {
                const unsigned int n = static_cast<unsigned int>(text.size()) - cut;
                const String<TypeParam> s(text.data(), n);
                String<TypeParam> up(s), down(s);
                up.make_upper();
                down.make_lower();
                for (unsigned int i = 0; i != n; ++i) {
                    const auto code = static_cast<std::make_unsigned_t<TypeParam>>(text[i]);
                    ASSERT_EQ(up.data()[i], static_cast<TypeParam>(KordToUpper(code))) << int{code};
                    ASSERT_EQ(down.data()[i], static_cast<TypeParam>(KordToLower(code))) << int{code};
                    ASSERT_EQ(s.data()[i], text[i]);
                }
            }
        }
    }
}

TYPED_TEST(Case, ShortTextsAndTheNullString) {
    for (unsigned int n = 0; n != 40; ++n) {
        String<TypeParam> s(n, 'b');
        EXPECT_EQ(show(s.make_upper()), std::string(n, 'B'));
        EXPECT_EQ(show(s.make_lower()), std::string(n, 'b'));
    }
    String<TypeParam> null;
    null.make_upper();
    EXPECT_TRUE(null.empty());
    EXPECT_EQ(null.capacity(), sizeof(TypeParam) == 1 ? 7u : 3u);
}

} // namespace
