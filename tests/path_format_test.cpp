// Shortened path names: the documented examples, and every kind of string beside a plain twin.
#include "support/dice.h"
#include "support/model.h"
#include "support/text.h"

#include <kord/errors.h>

#include <array>

namespace {

using std::string_view_literals::operator""sv;

template <class T>
class PathFormat : public ::testing::Test {};
TYPED_TEST_SUITE(PathFormat, Widths);

enum Mode { middle, fill, end, begin, unknown = 7 };

/// The same told plainly, with the block that it leaves behind.
template <class T>
void shorten(Model<T>& m, std::size_t most, int mode) {
    const std::size_t n = m.text.size(), last = m.text.rfind('\\'), tail = n - std::min(last, n);
    if (n <= most || (most >= 4 && mode == unknown)) return;
    if (mode == begin && most >= 4) {
        m.erase(0, n - most);
        m.reserve(most);
        m.text.replace(0, 3, U"...");
    } else if (mode == end || last == m.text.npos || most < 4) {
        m.reserve(most);
        const std::size_t dots = std::min<std::size_t>(most, 3);
        m.text = m.text.substr(0, most - dots) + std::u32string(dots, '.');
    } else if (tail + 3 > most) {
        m.erase(0, last + 1);
        shorten(m, most, end);
    } else {
        // The longest start in whole folders that leaves room for "..." and the last component.
        std::size_t start = 0;
        for (std::size_t i = 0; i != last; ++i) {
            if (m.text[i] == '\\' && i + 1 + 3 + tail <= most) start = i + 1;
        }
        if (start < 2 || m.text[start - 2] == '\\') start = 0;
        const std::u32string kept = m.text.substr(0, mode == fill && start != 0 ? most - 3 - tail : start);
        const std::u32string result = kept + U"..." + m.text.substr(last);
        m = Model<T>();
        m.reserve(result.size());
        m.text = result;
    }
}

// clang-format off
TYPED_TEST(PathFormat, PutsTheDotsWhereTheModeSays) {
    const char* const disk = "C:\\dir1\\dir2\\dir3\\file.txt", * const server = "\\\\server\\share\\dir\\file",
    * const letters = "abcdefghij";
    const struct { const char* path; unsigned int most; std::vector<Mode> modes; const char* text; } rows[] = {
        {disk, 26, {middle, fill, end, begin, unknown}, disk}, {disk, 20, {unknown}, disk},
        {disk, 20, {middle}, "C:\\dir1\\...\\file.txt"}, {disk, 24, {fill}, "C:\\dir1\\dir2...\\file.txt"},
        {disk, 12, {middle, fill}, "...\\file.txt"}, {disk, 6, {middle, fill}, "fil..."},
        {disk, 20, {end}, "C:\\dir1\\dir2\\dir3..."}, {disk, 20, {begin}, "...ir2\\dir3\\file.txt"},
        {disk, 3, {middle, fill, end, begin, unknown}, "..."}, {server, 16, {middle, fill}, "...\\file"},
        {letters, 5, {middle, fill, end}, "ab..."}, {letters, 5, {begin}, "...ij"},
    };
    for (const auto& row : rows) {
        for (const Mode mode : row.modes) {
            String<TypeParam> s = make<TypeParam>(row.path);
            EXPECT_EQ(&s.format_path(row.most, static_cast<typename String<TypeParam>::t_format_path>(mode)), &s);
            EXPECT_EQ(show(s), row.text) << row.path << ' ' << row.most << ' ' << mode;
        }
    }
}
// clang-format on

TYPED_TEST(PathFormat, AnyPathIsShortenedAsThePlainTwinDoes) {
    using M = Model<TypeParam>;
    Dice below(10);
    for (unsigned int round = 0; round != 6000; ++round) {
        const unsigned int n = round % 20 == 0 ? below(60) : below(13), state = round % 4;
        std::vector<TypeParam> units;
        while (units.size() != n) units.push_back(static_cast<TypeParam>(below.pick(U"ab\\\\\\/.\x15C"sv)));
        const std::u32string before = codes(range_of(units));
        units.push_back(0);
        const auto fresh = [&] { return M{before, std::make_shared<unsigned int>(M::capacity_for(n)), 0, false}; };
        const M whole = fresh();
        const String<TypeParam> made(units.data(), n);
        for (unsigned int i = 0; i != 5 * (n + 3); ++i) {
            const unsigned int most = i / 5;
            const Mode mode = std::array{middle, fill, end, begin, unknown}[i % 5];
            // Alone, shared, a piece of a block, foreign text.
            String<TypeParam> s = state == 0 ? String<TypeParam>(units.data(), n) : state == 2 ? made.substr(1) : made;
            M m = state == 0 ? fresh() : whole;
            if (state == 2) m.view(whole, 1, n);
            if (state == 3) s.assign_literal(units.data()), m = M{before, nullptr, 0, n == 0};
            shorten(m, most, mode);
            s.format_path(most, static_cast<typename String<TypeParam>::t_format_path>(mode));
            ASSERT_EQ(codes(s), m.text) << show(made) << ' ' << most << ' ' << mode;
            ASSERT_EQ(s.capacity(), m.block ? *m.block : 0) << show(made) << ' ' << most << ' ' << mode;
            ASSERT_EQ(holders(s), m.block.use_count()) << show(made) << ' ' << most << ' ' << mode;
            ASSERT_EQ(codes(KordCharacterRange<TypeParam>(s.c_str())), m.text) << show(made) << ' ' << state;
        }
        ASSERT_EQ(codes(made), before);
    }
}

TYPED_TEST(PathFormat, TextAboveTheLimitIsShortenedIfTheResultIsNot) {
    using S = String<TypeParam>;
    std::vector<TypeParam> units(0x100020, 'f');
    units[5] = units[0x100000] = '\\';
    const auto foreign = [&units] { return S(nullptr, units.data(), 0x10001F); };
    EXPECT_EQ(foreign().format_path(0x10001F, S::ellipsis_end).data(), units.data());
    for (const auto mode : {S::ellipsis_middle_fill, S::ellipsis_end, S::ellipsis_begin}) {
        S s = foreign();
        EXPECT_THROW(s.format_path(0x100001, mode), os_length_error);
        EXPECT_TRUE(s.cend() == units.data() + 0x10001F && (mode == S::ellipsis_begin || s.data() == units.data()));
        EXPECT_EQ(foreign().format_path(0x100000, mode).length(), 0x100000u);
    }
    EXPECT_EQ(show(foreign().format_path(0x100001, S::ellipsis_middle)), "fffff\\...\\" + std::string(0x1E, 'f'));
    EXPECT_EQ(show(foreign().format_path(3, S::ellipsis_end)), "...");
}

} // namespace
