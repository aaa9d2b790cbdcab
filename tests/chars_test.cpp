#include "support/text.h"

#include <kord/chars.h>

namespace {

/// Codes given as ranges: {65, 90, 138, 138} is 65 to 90, and 138.
bool among(const std::vector<unsigned int>& ranges, unsigned int c) {
    for (std::size_t i = 0; i != ranges.size(); i += 2) {
        if (c >= ranges[i] && c <= ranges[i + 1]) return true;
    }
    return false;
}

// clang-format off
TEST(Chars, TheTableCarriesEachFlagWhereItIsStated) {
    const struct { unsigned int flag; std::vector<unsigned int> codes; } rows[] = {
        {0x0001, {65, 90, 138, 138, 140, 140, 142, 142, 159, 159, 192, 214, 216, 221, 254, 254}},
        {0x0002, {97, 122, 154, 154, 156, 156, 158, 158, 222, 246, 248, 253, 255, 255}}, {0x0004, {48, 57}},
        {0x0008, {9, 13, 32, 32}}, {0x0020, {0, 31, 127, 127}}, {0x0040, {32, 32}},
        {0x0010, {33, 47, 58, 64, 91, 96, 123, 126, 128, 128, 130, 137, 139, 139, 145, 153, 155, 155, 161, 191,
                  215, 215, 247, 247}},
        {0x0080, {48, 57, 65, 70, 97, 102}}, {0x0100, {43, 43, 45, 45}}, {0x0200, {44, 44, 46, 46}},
        {0x0400, {49, 57}}, {0x1000, {138, 138, 140, 140, 142, 142, 154, 154, 156, 156, 158, 159, 222, 223, 254, 255}},
    };
    for (unsigned int c = 0; c != 256; ++c) {
        unsigned int flags = 0;
        for (const auto& row : rows) flags |= among(row.codes, c) ? row.flag : 0u;
        EXPECT_EQ(kordType[c], flags) << c;
    }
    EXPECT_TRUE(kordType[120] & kordLower && kordType[55] & kordNonZeroDigit && kordType[44] & kordDecimalSeparator);
    EXPECT_STREQ(kordDigits[0], "0123456789abcdef");
    EXPECT_STREQ(kordDigits[1], "0123456789ABCDEF");
}
// clang-format on

/// The letters beside the two plain runs, each with its upper-case partner.
constexpr unsigned int odd_pairs[][2] = {{154, 138}, {156, 140}, {158, 142}, {222, 254}, {255, 159}};

TEST(Chars, MappingsPairTheLettersAndLeaveTheRest) {
    std::vector<unsigned int> upper(0x10000), lower(0x10000);
    for (unsigned int c = 0; c != 0x10000; ++c) upper[c] = lower[c] = c;
    for (unsigned int c = 0; c != 256; ++c) {
        if (among({97, 122, 224, 246, 248, 253}, c)) upper[c] = c - 32, lower[c - 32] = c;
    }
    for (const auto& pair : odd_pairs) upper[pair[0]] = pair[1], lower[pair[1]] = pair[0];
    for (unsigned int c = 0; c != 0x10000; ++c) {
        ASSERT_EQ(KordToUpper(c), static_cast<int>(upper[c])) << c;
        ASSERT_EQ(KordToLower(c), static_cast<int>(lower[c])) << c;
    }
    EXPECT_EQ(KordToLower(0xFFFFFFC1u), static_cast<int>(0xFFFFFFC1u));
    EXPECT_EQ(KordToUpper(0xFFFFFFE9u), static_cast<int>(0xFFFFFFE9u));
}

template <class T>
class Case : public ::testing::Test {};
TYPED_TEST_SUITE(Case, Widths);

TYPED_TEST(Case, EveryCharacterIsMappedAsTheTableSaysWhereverItStands) {
    // Every code among ASCII letters and among others, at each place of a block, and texts of every short length.
    for (const auto filler : {TypeParam{'q'}, static_cast<TypeParam>(0xE9)}) {
        for (unsigned int shift = 0; shift != 17; ++shift) {
            std::vector<TypeParam> text(shift, filler);
            for (unsigned int c = 0; c != (sizeof(TypeParam) == 1 ? 0x100 : shift == 0 ? 0x10000 : 0x200); ++c) {
                text.push_back(static_cast<TypeParam>(c));
                text.insert(text.end(), shift, filler);
            }
            for (const std::size_t n : {text.size(), std::size_t{shift}, std::size_t{shift * 3}}) {
                const String<TypeParam> s(text.data(), n);
                String<TypeParam> up(s), down(s);
                up.make_upper();
                down.make_lower();
                std::u32string upper = codes(s), lower = upper;
                for (char32_t& c : upper) c = static_cast<char32_t>(KordToUpper(c));
                for (char32_t& c : lower) c = static_cast<char32_t>(KordToLower(c));
                ASSERT_EQ(codes(up), upper) << shift << ' ' << n;
                ASSERT_EQ(codes(down), lower) << shift << ' ' << n;
            }
        }
    }
}

} // namespace
