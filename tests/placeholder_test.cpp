#include "format/placeholder.h"

#include "support/text.h"

namespace {

template <class T>
class Placeholder : public ::testing::Test {};
TYPED_TEST_SUITE(Placeholder, Widths);

constexpr unsigned int none = 0xFFFFFFFF;
using std::string_view_literals::operator""sv;

// clang-format off
TYPED_TEST(Placeholder, IsReadPartByPart) {
    struct Row { std::u32string_view text; unsigned int begin, end; char32_t conversion; unsigned int flags, width, precision; };
    const Row rows[] = {
        {U""sv, 0, 0, 0, 0, 0, 0}, {U"abc"sv, 3, 3, 0, 0, 0, 0}, {U"a\0b%d"sv, 3, 5, 'd', 0, 0, none}, {U"%d %i"sv, 0, 2, 'd', 0, 0, none},
        {U"x=%-08.3lf!"sv, 2, 10, 'f', 0x101, 8, 3}, {U"%+ d"sv, 0, 4, 'd', 0x4, 0, none}, {U"% +d"sv, 0, 4, 'd', 0x4, 0, none}, {U"%0-0-d"sv, 0, 6, 'd', 0x1, 0, none}, {U"%# 00d"sv, 0, 6, 'd', 0x1A, 0, none},
        {U"%*.*d"sv, 0, 5, 'd', 0x60, 0, 0}, {U"%5*.7*d"sv, 0, 7, 'd', 0x60, 5, 7}, {U"%.d"sv, 0, 3, 'd', 0, 0, 0}, {U"%.-1d"sv, 0, 3, '-', 0, 0, 0}, {U"%**d"sv, 0, 3, '*', 0x20, 0, none}, {U"%5-d"sv, 0, 3, '-', 0, 5, none},
        {U"%%"sv, 0, 2, '%', 0, 0, none}, {U"%5.1%%"sv, 0, 5, '%', 0, 5, 1}, {U"%hhlLd"sv, 0, 6, 'd', 0x180, 0, none}, {U"%l5d"sv, 0, 3, '5', 0x100, 0, none}, {U"%.007hx"sv, 0, 7, 'x', 0x80, 0, 7}, {U"%zd"sv, 0, 2, 'z', 0, 0, none},
        {U"50%"sv, 2, 3, 0, 0, 0, none}, {U"50%5"sv, 2, 4, 0, 0, 5, none}, {U"%-0 #"sv, 0, 5, 0, 0x19, 0, none}, {U"%3*"sv, 0, 3, 0, 0x20, 3, none}, {U"%3."sv, 0, 3, 0, 0, 3, 0}, {U"%.4"sv, 0, 3, 0, 0, 0, 4}, {U"%.4*"sv, 0, 4, 0, 0x40, 0, 4}, {U"%.2hl"sv, 0, 5, 0, 0x180, 0, 2},
        {U"a%\0b%d"sv, 1, 3, 0, 0, 0, none}, {U"%-7\0d"sv, 0, 4, 0, 0x1, 7, none}, {U"%99999999999d"sv, 0, 2, '9', 0, none, none}, {U"%.99999999999d"sv, 0, 3, '9', 0, 0, none}, {U"%4294967295d"sv, 0, 12, 'd', 0, none, none},
        {U"%4294967294.4294967294d"sv, 0, 23, 'd', 0, none - 1, none - 1}, {U"%4294967296d"sv, 0, 2, '4', 0, none, none}, {U"%0004294967296d"sv, 0, 5, '4', 0x2, none, none},
        {U"\xA5%\xA5%d"sv, 1, 3, 0xA5, 0, 0, none}, {U"%-\xAB""d"sv, 0, 3, 0xAB, 0x1, 0, none}, {U"%\xB1""d"sv, 0, 2, 0xB1, 0, 0, none}, {U"%h\xE8""d"sv, 0, 3, 0xE8, 0x80, 0, none}, {U"%\xFF"sv, 0, 2, 0xFF, 0, 0, none},
        // Units that end in the byte of a character with a meaning: only in the wide width.
        {U"\x125%d"sv, 1, 3, 'd', 0, 0, none}, {U"%\x12B""d"sv, 0, 2, 0x12B, 0, 0, none}, {U"%\x131""d"sv, 0, 2, 0x131, 0, 0, none}, {U"%1\xFF11""d"sv, 0, 3, 0xFF11, 0, 1, none}, {U"%\x12A""d"sv, 0, 2, 0x12A, 0, 0, none},
        {U"%\x12E""3d"sv, 0, 2, 0x12E, 0, 0, none}, {U"%l\x16C""d"sv, 0, 3, 0x16C, 0x100, 0, none}, {U"%5\x100"sv, 0, 3, 0x100, 0, 5, none}, {U"%\xFFFF"sv, 0, 2, 0xFFFF, 0, 0, none},
    };
    for (const Row& row : rows) {
        const std::vector<TypeParam> units(row.text.begin(), row.text.end()); // exactly: nothing behind it may be read
        if (sizeof(TypeParam) == 1 && row.text.find_first_of(U"\x125\x12B\x131\xFF11\x12A\x12E\x16C\x100\xFFFF") != row.text.npos) continue;
        const TypeParam* const from = units.data();
        const auto spec = kord::scan_placeholder<TypeParam>(from, from + units.size());
        const std::string text = show(KordCharacterRange<TypeParam>(from, 0, static_cast<unsigned int>(units.size())));
        EXPECT_EQ(spec.begin - from, row.begin) << text;
        EXPECT_EQ(spec.end - from, row.end) << text;
        EXPECT_EQ(static_cast<std::make_unsigned_t<TypeParam>>(spec.conversion), row.conversion) << text;
        EXPECT_EQ(spec.flags, row.flags) << text;
        EXPECT_EQ(spec.width, row.width) << text;
        EXPECT_EQ(spec.precision, row.precision) << text;
    }
}
// clang-format on

} // namespace
