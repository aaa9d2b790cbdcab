// The hashes: known results, and every length and alignment against definitions that go byte by byte.
#include "support/guard.h"

#include <kord/hash.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace {

using namespace std::string_view_literals;
using KordHash::FowlerNollVo, KordHash::Jenkins, KordHash::OneAtATime, KordHash::ObjectSpace,
    KordHash::RamakrishnaZobel;

/// FowlerNollVo, Jenkins, OneAtATime, ObjectSpace, RamakrishnaZobel.
using Hashes = std::array<unsigned long, 5>;

/// A byte as a signed number, in 32 bits.
std::uint32_t extended(char c) {
    const std::uint32_t byte = static_cast<unsigned char>(c);
    return byte < 0x80 ? byte : byte + 0xFFFFFF00;
}

struct Words {
    std::uint32_t a = 0x9E3779B9, b = 0x9E3779B9, c = 0;

    void mix() {
        const auto step = [](std::uint32_t& x, std::uint32_t y, std::uint32_t z, int left, int right) {
            x = x - y - z;
            x ^= left != 0 ? z << left : z >> right;
        };
        step(a, b, c, 0, 13), step(b, c, a, 8, 0), step(c, a, b, 0, 13);
        step(a, b, c, 0, 12), step(b, c, a, 16, 0), step(c, a, b, 0, 5);
        step(a, b, c, 0, 3), step(b, c, a, 10, 0), step(c, a, b, 0, 15);
    }
};

std::uint32_t jenkins(std::string_view text) {
    Words w;
    std::uint32_t* const words[] = {&w.a, &w.b, &w.c};
    const std::size_t blocks = text.size() - text.size() % 12;
    for (std::size_t i = 0; i != blocks; ++i) {
        *words[i % 12 / 4] += static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])) << 8 * (i % 4);
        if (i % 12 == 11) w.mix();
    }
    w.c += static_cast<std::uint32_t>(text.size());
    for (std::size_t i = blocks; i != text.size(); ++i) { // the lowest byte of the last word is the length's
        const std::size_t place = i % 12 < 8 ? i % 4 : i % 4 + 1;
        *words[i % 12 / 4] += static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])) << 8 * place;
    }
    w.mix();
    return w.c;
}

Hashes plainly(std::string_view text) {
    std::uint32_t fnv = 0x811C9DC5, once = 0, object = static_cast<std::uint32_t>(text.size()), shifted = 0;
    for (const char c : text) {
        fnv = fnv * 16777619 ^ static_cast<unsigned char>(c);
        once += extended(c);
        once += once << 10;
        once ^= once >> 6;
        object = object * 613 + extended(c);
        shifted ^= (shifted << 5) + (shifted >> 2) + extended(c);
    }
    once += once << 3;
    once ^= once >> 11;
    once += once << 15;
    return {fnv, jenkins(text), once, object % 1073741827, shifted};
}

Hashes of_range(std::string_view text) {
    const char *const begin = text.data(), *const end = begin + text.size();
    return {FowlerNollVo(begin, end), Jenkins(begin, end), OneAtATime(begin, end), ObjectSpace(begin, end),
            RamakrishnaZobel(begin, end)};
}
/// Counted where there is such a form, otherwise terminated.
Hashes of_text(const char* text, std::size_t n) {
    return {FowlerNollVo(text), Jenkins(text, n), OneAtATime(text), ObjectSpace(text, n), RamakrishnaZobel(text)};
}

TEST(Hash, HasTheKnownResults) {
    struct Row {
        std::string text;
        Hashes hashes;
    };
    const Row rows[] = {
        {"", {0x811C9DC5, 0xBD49D10D, 0, 0, 0}},
        {"a", {0x050C5D7E, 0x29EEC818, 0xCA2E9442, 0x000002C6, 0x00000061}},
        {"abc", {0x439C2F4B, 0x251E4793, 0xED131F5B, 0x2B5D841D, 0x0001AFFA}},
        {"\xE9", {0x050C5DF6, 0x917FA5A8, 0x409848FF, 0x0000024E, 0xFFFFFFE9}},
        {"hello world!", {0x8A01B99C, 0x1ECCB293, 0x9BD919D3, 0x3AD1C0E9, 0x75207472}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(of_range(row.text), row.hashes) << row.text;
        EXPECT_EQ(of_text(row.text.c_str(), row.text.size()), row.hashes) << row.text;
        EXPECT_EQ(plainly(row.text), row.hashes) << row.text;
    }
}

// With faults on either side of the text and right behind its zero.
TEST(Hash, IsTheDefinitionsAtEveryLengthAndAlignment) {
    const GuardedPage page;
    for (std::size_t n = 0; n != 201; ++n) {
        for (std::size_t place = 0; place != 34; ++place) {
            char* const text = place < 16 ? page.begin() + place : page.end() - n - (place - 16);
            const bool room = text + n != page.end();
            for (std::size_t i = 0; i != n; ++i) text[i] = static_cast<char>(i * 37 + n * 5 + place * 101 + i * i / 7);
            ASSERT_EQ(of_range({text, n}), plainly({text, n})) << n << " at " << place;
            ASSERT_EQ(Jenkins(text, n), Jenkins(text, text + n));
            ASSERT_EQ(ObjectSpace(text, n), ObjectSpace(text, text + n));
            if (!room) continue;
            for (std::size_t i = 0; i != n; ++i) text[i] = text[i] == 0 ? '\x80' : text[i];
            text[n] = 0;
            ASSERT_EQ(of_text(text, n), plainly({text, n})) << n << " at " << place;
        }
    }
}

TEST(Hash, TakesEveryByteInEveryPlaceOfABlock) {
    std::string text(30, '\x11');
    for (std::size_t place = 0; place != text.size(); ++place) {
        for (int byte = 0; byte != 256; ++byte) {
            text[place] = static_cast<char>(byte);
            ASSERT_EQ(of_range(text), plainly(text)) << byte << " at " << place;
        }
    }
    for (const std::string& same : {std::string(4000, '\xFF'), std::string(4001, '\0'), std::string(70000, '\x80')})
        EXPECT_EQ(of_range(same), plainly(same)) << same.size();
}

TEST(Hash, OnlyATerminatedTextEndsAtAZero) {
    const std::string_view text = "ab\0cd\0"sv;
    const Hashes all = of_range(text), before = of_range("ab");
    EXPECT_EQ(of_text(text.data(), 2), before);
    for (std::size_t i = 0; i != all.size(); ++i) EXPECT_NE(all[i], before[i]) << i;
    EXPECT_EQ(Jenkins(text.data(), text.size()), all[1]);
    EXPECT_EQ(ObjectSpace(text.data(), text.size()), all[3]);
    const Hashes none = of_range({}); // nothing is read of no bytes
    EXPECT_EQ(none, plainly(""));
    EXPECT_EQ(Jenkins(static_cast<const char*>(nullptr), 0), none[1]);
    EXPECT_EQ(ObjectSpace(static_cast<const char*>(nullptr), 0), none[3]);
}

TEST(Hash, LengthsMayBeAnyInteger) {
    const char text[] = "abc";
    static_assert(std::is_same_v<decltype(Jenkins(text, 0)), unsigned long>);
    static_assert(noexcept(Jenkins(text, 3)));
    // clang-format off
    const unsigned long jenkins[] = {Jenkins(text, 3), Jenkins(text, 3u), Jenkins(text, 3l), Jenkins(text, 3ul), Jenkins(text, 3ll), Jenkins(text, 3ull)};
    const unsigned long object[] = {ObjectSpace(text, 3), ObjectSpace(text, 3u), ObjectSpace(text, 3l), ObjectSpace(text, 3ul), ObjectSpace(text, 3ll), ObjectSpace(text, 3ull)};
    // clang-format on
    for (const unsigned long hash : jenkins) EXPECT_EQ(hash, 0x251E4793u);
    for (const unsigned long hash : object) EXPECT_EQ(hash, 0x2B5D841Du);
    EXPECT_EQ(Jenkins(text, 0), 0xBD49D10D);
    EXPECT_EQ(ObjectSpace(text, 0), 0u);
}

} // namespace
