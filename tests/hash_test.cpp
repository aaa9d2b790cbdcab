// The hashes: known results, and every length and alignment against definitions that go byte by byte.
#include "support/guard.h"

#include <kord/hash.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace {

using KordHash::FowlerNollVo, KordHash::Jenkins, KordHash::OneAtATime, KordHash::ObjectSpace,
    KordHash::RamakrishnaZobel;

/// FowlerNollVo, Jenkins, OneAtATime, ObjectSpace, RamakrishnaZobel.
using Hashes = std::array<unsigned long, 5>;

Hashes plainly(std::string_view text) {
    std::uint32_t fnv = 0x811C9DC5, once = 0, object = static_cast<std::uint32_t>(text.size()), shifted = 0;
    std::uint32_t words[] = {0x9E3779B9, 0x9E3779B9, 0};
    const auto mix = [&words] {
        const int shifts[] = {-13, 8, -13, -12, 16, -5, -3, 10, -15};
        for (std::size_t i = 0; i != std::size(shifts); ++i) {
            const std::uint32_t y = words[(i + 1) % 3], z = words[(i + 2) % 3];
            words[i % 3] = (words[i % 3] - y - z) ^ (shifts[i] > 0 ? z << shifts[i] : z >> -shifts[i]);
        }
    };
    for (std::size_t i = 0; i != text.size(); ++i) {
        const std::uint32_t byte = static_cast<unsigned char>(text[i]);
        const std::uint32_t extended = byte < 0x80 ? byte : byte + 0xFFFFFF00;
        fnv = fnv * 16777619 ^ byte;
        once += extended;
        once += once << 10;
        once ^= once >> 6;
        object = object * 613 + extended;
        shifted ^= (shifted << 5) + (shifted >> 2) + extended;
        const bool rest = i >= text.size() - text.size() % 12;
        const std::size_t place = i % 12 + (rest && i % 12 >= 8); // the lowest byte of the last word is the length's
        words[place / 4] += byte << 8 * (place % 4);
        if (i % 12 == 11) mix();
    }
    once += once << 3;
    once ^= once >> 11;
    once += once << 15;
    words[2] += static_cast<std::uint32_t>(text.size());
    mix();
    return {fnv, words[2], once, object % 1073741827, shifted};
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
    // clang-format off
    const struct { std::string text; Hashes hashes; } rows[] = {
        {"", {0x811C9DC5, 0xBD49D10D, 0, 0, 0}}, {"a", {0x050C5D7E, 0x29EEC818, 0xCA2E9442, 0x000002C6, 0x00000061}},
        {"abc", {0x439C2F4B, 0x251E4793, 0xED131F5B, 0x2B5D841D, 0x0001AFFA}},
        {"\xE9", {0x050C5DF6, 0x917FA5A8, 0x409848FF, 0x0000024E, 0xFFFFFFE9}},
        {"hello world!", {0x8A01B99C, 0x1ECCB293, 0x9BD919D3, 0x3AD1C0E9, 0x75207472}},
    };
    // clang-format on
    for (const auto& [text, hashes] : rows) {
        EXPECT_EQ(plainly(text), hashes) << text;
        EXPECT_EQ(of_text(text.c_str(), text.size()), hashes) << text;
    }
    for (const std::string& same : {std::string(4000, '\xFF'), std::string(4001, '\0'), std::string(70000, '\x80')})
        EXPECT_EQ(of_range(same), plainly(same)) << same.size();
    EXPECT_EQ(of_range({}), rows[0].hashes); // nothing is read of no bytes
}

// With faults on either side of the text and right behind its zero.
TEST(Hash, IsTheDefinitionsAtEveryLengthAndAlignment) {
    const GuardedPage page;
    for (std::size_t n = 0; n != 201; ++n) {
        for (std::size_t place = 0; place != 34; ++place) {
            char* const text = place < 16 ? page.begin() + place : page.end() - n - (place - 16);
            for (std::size_t i = 0; i != n; ++i) text[i] = static_cast<char>(i * 37 + n * 5 + place * 101 + i * i / 7);
            ASSERT_EQ(of_range({text, n}), plainly({text, n})) << n << " at " << place;
            if (text + n == page.end()) continue;
            std::replace(text, text + n, '\0', '\x80');
            text[n] = 0;
            ASSERT_EQ(of_text(text, n), plainly({text, n})) << n << " at " << place;
        }
    }
}

TEST(Hash, LengthsMayBeAnyInteger) {
    static_assert(noexcept(Jenkins("abc", 3)) && std::is_same_v<decltype(Jenkins("abc", 0)), unsigned long>);
    const auto takes = [](auto... three) {
        for (const unsigned long hash : {Jenkins("abc", three)...}) EXPECT_EQ(hash, 0x251E4793u);
        for (const unsigned long hash : {ObjectSpace("abc", three)...}) EXPECT_EQ(hash, 0x2B5D841Du);
    };
    takes(3, 3u, 3l, 3ul, 3ll, 3ull);
    EXPECT_EQ(Jenkins("abc", 0) - ObjectSpace("abc", 0), 0xBD49D10D); // not a null pointer
}

} // namespace
