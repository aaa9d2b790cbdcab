// Shortened path names: the documented examples, and every kind of string beside a plain twin.
#include "support/dice.h"
#include "support/model.h"
#include "support/text.h"

#include <kord/errors.h>

namespace {

using std::string_view_literals::operator""sv;

template <class T>
class PathFormat : public ::testing::Test {};
TYPED_TEST_SUITE(PathFormat, Widths);

enum Mode { middle, fill, end, begin, unknown = 7 };

/// The same told plainly, with the block that it leaves behind.
template <class T>
void shorten(Model<T>& m, std::size_t most, int mode) {
    const std::size_t n = m.text.size();
    const auto drop_front = [&m](std::size_t k) {
        m.offset += k;
        m.text.erase(0, k);
    };
    if (n <= most) return;
    if (most < 4) {
        m.reserve(most);
        m.text.assign(most, '.');
    } else if (mode == end) {
        m.reserve(most);
        m.text = m.text.substr(0, most - 3) + U"...";
    } else if (mode == begin) {
        drop_front(n - most);
        m.reserve(most);
        m.text.replace(0, 3, U"...");
    } else if (mode == middle || mode == fill) {
        const std::size_t last = m.text.rfind('\\');
        if (last == m.text.npos) return shorten(m, most, end);
        const std::u32string tail = m.text.substr(last);
        if (tail.size() + 3 > most) {
            drop_front(last + 1);
            return shorten(m, most, end);
        }
        // The longest start in whole folders that leaves room for "..." and the last component.
        std::size_t start = 0;
        for (std::size_t i = 0; i != last; ++i) {
            if (m.text[i] == '\\' && i + 1 + 3 + tail.size() <= most) start = i + 1;
        }
        std::u32string kept;
        if (start >= 2 && m.text[start - 2] != '\\')
            kept = m.text.substr(0, mode == fill ? most - 3 - tail.size() : start);
        m = Model<T>();
        m.reserve(kept.size() + 3 + tail.size());
        m.text = kept + U"..." + tail;
    }
}

// clang-format off
TYPED_TEST(PathFormat, PutsTheDotsWhereTheModeSays) {
    const char* const disk = "C:\\dir1\\dir2\\dir3\\file.txt", * const server = "\\\\server\\share\\dir\\file", * const letters = "abcdefghij";
    struct Row { const char* path; unsigned int most; std::vector<Mode> modes; const char* text; };
    const Row rows[] = {
        {disk, 26, {middle, fill, end, begin, unknown}, disk}, {disk, 0xFFFFFFFF, {middle, fill, end, begin}, disk}, {disk, 20, {unknown}, disk},
        {disk, 20, {middle}, "C:\\dir1\\...\\file.txt"}, {disk, 24, {middle}, "C:\\dir1\\...\\file.txt"}, {disk, 17, {middle}, "C:\\...\\file.txt"}, {disk, 17, {fill}, "C:\\di...\\file.txt"},
        {disk, 22, {fill}, "C:\\dir1\\di...\\file.txt"}, {disk, 24, {fill}, "C:\\dir1\\dir2...\\file.txt"}, {disk, 12, {middle, fill}, "...\\file.txt"}, {disk, 13, {middle, fill}, "...\\file.txt"},
        {disk, 11, {middle, fill}, "file.txt"}, {disk, 8, {middle}, "file.txt"}, {disk, 6, {middle, fill}, "fil..."}, {disk, 20, {end}, "C:\\dir1\\dir2\\dir3..."}, {disk, 20, {begin}, "...ir2\\dir3\\file.txt"},
        {disk, 3, {middle, fill, end, begin, unknown}, "..."}, {disk, 2, {begin}, ".."}, {disk, 1, {fill}, "."}, {disk, 0, {middle, end, begin}, ""}, {"", 0, {middle, end}, ""}, {"abc", 3, {end}, "abc"}, {"abcd", 3, {begin}, "..."},
        {server, 16, {middle, fill}, "...\\file"}, {server, 20, {middle}, "\\\\server\\...\\file"}, {server, 20, {fill}, "\\\\server\\sha...\\file"},
        {letters, 5, {middle, fill, end}, "ab..."}, {letters, 5, {begin}, "...ij"}, {"a/b/c/d/e", 6, {middle, fill}, "a/b..."}, {"abcdefg\\", 4, {middle, fill}, "...\\"}, {"\\a\\bcdefg\\h", 7, {middle}, "...\\h"}, {"abcdefgh\\", 3, {middle}, "..."},
    };
    for (const Row& row : rows) {
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
    using Path = typename String<TypeParam>::t_format_path;
    Dice below(10);
    for (unsigned int round = 0; round != 6000; ++round) {
        const unsigned int n = round % 20 == 0 ? below(60) : below(13), state = round % 4;
        std::vector<TypeParam> units;
        while (units.size() != n) units.push_back(static_cast<TypeParam>(below.pick(U"ab\\\\\\/.\x15C"sv)));
        units.push_back(0);
        M model{{units.begin(), units.end() - 1}, nullptr, 0, n == 0};
        for (char32_t& c : model.text) c &= sizeof(TypeParam) == 1 ? 0xFF : 0xFFFF;
        const std::u32string before = model.text;
        String<TypeParam> made(units.data(), n);
        if (state != 3) model = M{before, std::make_shared<unsigned int>(M::capacity_for(n)), 0, false};
        if (state == 2) model.view(M(model), 1, n), made.erase(0, 1);
        for (unsigned int most = 0; most != n + 3; ++most) {
            for (const Mode mode : {middle, fill, end, begin, unknown}) {
                // Alone, shared, a piece of a block, foreign text.
                String<TypeParam> s = state == 0 ? String<TypeParam>(units.data(), n) : made;
                if (state == 3) s.assign_literal(units.data());
                M m = state == 0 ? M{before, std::make_shared<unsigned int>(*model.block), 0, false} : model;
                shorten(m, most, mode);
                s.format_path(most, static_cast<Path>(mode));
                ASSERT_EQ(codes(s), m.text) << show(made) << ' ' << most << ' ' << mode;
                ASSERT_EQ(s.capacity(), m.block ? *m.block : 0)
                    << show(made) << ' ' << most << ' ' << mode << ' ' << state;
                ASSERT_EQ(holders(s), m.block.use_count()) << show(made) << ' ' << most << ' ' << mode << ' ' << state;
                ASSERT_EQ(codes(KordCharacterRange<TypeParam>(s.c_str())), m.text)
                    << most << ' ' << mode << ' ' << state;
            }
        }
        ASSERT_EQ(codes(made), before.substr(state == 2 && n != 0));
    }
}

TYPED_TEST(PathFormat, TextAboveTheLimitIsShortenedIfTheResultIsNot) {
    using S = String<TypeParam>;
    std::vector<TypeParam> units(0x100020, 'f');
    units[5] = units[0x100000] = '\\';
    const auto foreign = [&units] { return S(nullptr, units.data(), 0x10001F); };
    S s = foreign();
    EXPECT_EQ(s.format_path(0x10001F, S::ellipsis_end).data(), units.data());
    EXPECT_EQ(s.format_path(0x100000, S::ellipsis_end).length(), 0x100000u);
    EXPECT_EQ((s = foreign()).format_path(0x100000, S::ellipsis_begin).length(), 0x100000u);
    EXPECT_EQ((s = foreign()).format_path(0x100000, S::ellipsis_middle_fill).length(), 0x100000u);
    EXPECT_EQ(show((s = foreign()).format_path(0x100001, S::ellipsis_middle)), "fffff\\...\\" + std::string(0x1E, 'f'));
    EXPECT_EQ(show((s = foreign()).format_path(3, S::ellipsis_end)), "...");
    for (const auto mode : {S::ellipsis_middle_fill, S::ellipsis_end}) {
        s = foreign();
        EXPECT_THROW(s.format_path(0x100001, mode), os_length_error);
        EXPECT_EQ(s.data(), units.data());
        EXPECT_EQ(s.length(), 0x10001Fu);
    }
    s = foreign();
    EXPECT_THROW(s.format_path(0x100001, S::ellipsis_begin), os_length_error);
    EXPECT_EQ(s.cend(), units.data() + 0x10001F);
}

} // namespace
