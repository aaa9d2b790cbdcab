// The conversions against the rules told plainly, with source and target ending where memory does.
#include "support/convert_model.h"
#include "support/dice.h"
#include "support/guard.h"

#include <kord/convert.h>

#include <gtest/gtest.h>

#include <numeric>
#include <sstream>
#include <stdexcept>
#include <type_traits>

namespace {

using KordConvert::ConvertAnsi, KordConvert::ConvertUtf8, KordConvert::CountUtf8;

constexpr unsigned short nothing[1] = {};
static_assert(noexcept(ConvertAnsi(nothing, nullptr, 0)) && noexcept(ConvertUtf8(nothing, nullptr, 0)));
static_assert(std::is_same_v<decltype(CountUtf8(nothing, std::size_t{1})), unsigned long>);

/// Characters of one, two, three and four bytes.
const Utf16 fillers16[] = {{'a'}, {0xE9}, {0x20AC}, {0xD83D, 0xDE00}};
const Utf8 fillers8[] = {{'a'}, {0xC3, 0xA9}, {0xE2, 0x82, 0xAC}, {0xF0, 0x9F, 0x98, 0x80}};

template <class T>
void add(std::vector<T>& text, const std::vector<T>& piece, std::size_t times = 1) {
    while (times-- != 0) text.insert(text.end(), piece.begin(), piece.end());
}
template <class T>
std::vector<T> embed(const std::vector<T>& filler, std::size_t before, const std::vector<T>& piece, std::size_t after) {
    std::vector<T> text;
    add(text, filler, before);
    add(text, piece);
    add(text, filler, after);
    return text;
}
/// Every text of up to `longest` of these characters.
template <class T>
std::vector<std::vector<T>> sequences(const std::vector<T>& characters, std::size_t longest) {
    std::vector<std::vector<T>> all{{}};
    for (std::size_t i = 0; i != all.size() && all[i].size() != longest; ++i) {
        for (const T c : characters) all.push_back(embed(all[i], 1, {c}, 0));
    }
    return all;
}

/// What a conversion does otherwise than the model ends the test.
class Convert : public ::testing::Test {
  protected:
    void ansi(const Utf16& text) {
        const auto bad = std::find_if(text.begin(), text.end(), [](unsigned short u) { return u >= 0xFF; });
        const auto convert = [](auto... arguments) { return ConvertAnsi(arguments...); };
        check(convert, std::span(text), text.size(), text.size(), Utf8(text.begin(), bad), bad != text.end());
    }
    void writing(std::span<const unsigned short> text) {
        const Encoded model(text);
        const std::size_t size = Encoded::count(text);
        counting(text, size);
        check(utf8, text, text.size(), size, model.text, model.failed);
    }
    /// The units before the `n`th out of as many bytes as they take.
    void reading(std::span<const unsigned char> text, const Decoded& all, std::size_t n) {
        const auto [size, fits] = all.rooms[n];
        check(utf8, text.first(size), n, n, std::span(all.text).first(n - !fits), !fits);
    }
    /// All of it; or in part, every number of units written and every number of bytes counted.
    void reading(const Utf8& text, bool in_part = false) {
        const Decoded all(text);
        for (std::size_t n = in_part ? 0 : all.text.size(); n <= all.text.size(); ++n) reading(text, all, n);
        for (std::size_t n = in_part ? 0 : text.size(); n <= text.size(); ++n)
            counting(std::span(text).first(n), all.count(n));
    }
    template <class T>
    void counting(std::span<const T> text, std::size_t expected) {
        require(CountUtf8(last_of_memory(text), text.size()) == expected, "counts otherwise", text);
    }

  private:
    static constexpr auto utf8 = [](auto... arguments) { return ConvertUtf8(arguments...); };

    template <class T>
    void require(bool right, const char* fault, std::span<const T> text) {
        if (right) return;
        std::ostringstream out;
        for (const T c : text) out << ' ' << std::hex << +c;
        throw std::logic_error(fault + out.str());
    }
    template <class T>
    const T* last_of_memory(std::span<const T> text) {
        return std::copy_backward(text.begin(), text.end(), reinterpret_cast<T*>(source_.end()));
    }
    /// After a failure what was written stays; the rest of the counted room is nobody's.
    template <class F, class From, class Text>
    void check(F convert, std::span<const From> text, std::size_t n, std::size_t size, const Text& model, bool fails) {
        auto* const to = reinterpret_cast<std::remove_cv_t<typename Text::value_type>*>(target_.end()) - size;
        char* const before = reinterpret_cast<char*>(to) - 16;
        std::fill(before, target_.end(), '\x5A');
        require(convert(last_of_memory(text), to, n) == (fails ? nullptr : to + size), "ends otherwise", text);
        require(std::equal(model.begin(), model.end(), to), "becomes another text", text);
        require(std::count(before, before + 16, '\x5A') == 16, "writes before the target", text);
    }
    GuardedPage source_, target_;
};

// clang-format off
/// Rows by hand, to which the models are held.
const struct { Utf16 units; Utf8 bytes; std::size_t counted; bool fails = false; } written_rows[] = {
    {{0x7F}, {0x7F}, 1}, {{0x80}, {0xC2, 0x80}, 2}, {{0x7FF}, {0xDF, 0xBF}, 2}, {{0x800}, {0xE0, 0xA0, 0x80}, 3},
    {{0x41, 0, 0x42}, {0x41, 0, 0x42}, 3}, {{0xFFFF}, {0xEF, 0xBF, 0xBF}, 3},
    {{0xD800, 0xDC00}, {0xF0, 0x90, 0x80, 0x80}, 4}, {{0xDBFF, 0xDFFF}, {0xF4, 0x8F, 0xBF, 0xBF}, 4},
    {{0xD800}, {}, 4, true}, {{0xDC00}, {}, 0, true}, {{0xD800, 0x41}, {}, 5, true},
    {{0x41, 0xDC00, 0x41}, {0x41}, 2, true},
};
const struct { Utf8 bytes; Utf16 units; } read_rows[] = {
    {{0}, {0}}, {fillers8[1], {0xE9}}, {fillers8[2], {0x20AC}}, {fillers8[3], {0xD83D, 0xDE00}},
    {{0x80}, {0xFFFD}}, {{0xFF}, {0xFFFD}}, {{0xC3}, {}}, {{0xC3, 0xC3}, {0xFFFD}}, {{0xC3, 0x41}, {0xFFFD, 0x41}},
    {{0xE2, 0x82}, {}}, {{0xE2, 0x82, 0x41}, {0xFFFD, 0x41}}, {{0xE2, 0xE2, 0x82}, {0xFFFD}}, {{0xF0, 0x9F, 0x98}, {}},
    {{0xED, 0xA0, 0x80}, {0xD800}}, {{0xC0, 0x80}, {0}}, {{0xE0, 0x80, 0xAF}, {0x2F}},
    {{0xF0, 0x8F, 0xBF, 0xBF}, {0xFFFF}}, {{0xF4, 0x90, 0x80, 0x80}, {0xDC00, 0xDC00}},
    {{0xF7, 0xBF, 0xBF, 0xBF}, {0xDFBF, 0xDFFF}}, {{0xF8, 0x80, 0x80, 0x80}, {0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD}},
    {{0xFC, 0x80, 0x80, 0x80}, {0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD}},
    {{0xFF, 0xBF, 0xBF, 0xBF}, {0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD}},
};
// clang-format on

TEST_F(Convert, TheModelsFollowTheRowsByHand) {
    for (const auto& [units, bytes, counted, fails] : written_rows) {
        const Encoded model(units);
        EXPECT_TRUE(model.text == bytes && model.failed == fails && Encoded::count(units) == counted) << bytes.size();
        writing(units);
    }
    for (const auto& [bytes, units] : read_rows) EXPECT_EQ(Decoded(bytes).text, units);
    EXPECT_FALSE(Decoded(fillers8[3]).rooms[1].fits);
}

TEST_F(Convert, AnsiTakesUnitsBelow255AtEveryPlace) {
    for (unsigned int u = 0; u != 0x10000; ++u) {
        for (const std::size_t n : {1, 19}) ansi(Utf16(n, static_cast<unsigned short>(u)));
    }
    for (std::size_t n = 0; n != 70; ++n) {
        for (const unsigned short bad : Utf16{0xFE, 0xFF, 0x100, 0x1FE, 0x7FFF, 0x8000, 0xFF00, 0xFFFF}) {
            for (std::size_t place = 0; place <= n; ++place) {
                Utf16 text(n);
                std::iota(text.begin(), text.end(), static_cast<unsigned short>(0xFF - n));
                if (place != n) text[place] = bad;
                ansi(text);
            }
        }
    }
}

TEST_F(Convert, UnitsAreWrittenAtEveryOffsetOfEveryText) {
    for (unsigned int u = 0; u != 0x10000; ++u) {
        const Utf16 unit{static_cast<unsigned short>(u)};
        writing(unit);
        writing(embed(unit, 19, fillers16[u % 4], 21));
    }
    const Utf16 nasty{0, 0x41, 0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xFFFF};
    std::vector<Utf16> pieces = sequences(nasty, 3);
    // Low surrogates count nothing, so that they leave less room than there are units to come.
    for (const Utf16& lone : {Utf16{}, Utf16{0xDFFF}, Utf16(3, 0xDBFF)}) pieces.push_back(embed({0xDC00}, 0, lone, 40));
    for (const Utf16& piece : pieces) {
        for (std::size_t i = 0; i != 41 * 4; ++i) writing(embed(fillers16[i % 4], i / 4, piece, i / 4 % 3 * 10));
    }
}

TEST_F(Convert, ShortByteSequencesAreReadByTheRules) {
    const Utf8 nasty{0,    0x41, 0x7F, 0x80, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC3,
                     0xDF, 0xE0, 0xE2, 0xED, 0xEF, 0xF0, 0xF4, 0xF7, 0xF8, 0xFF};
    std::vector<Utf8> pieces = sequences(nasty, 3);
    add(pieces, sequences(Utf8{0x41, 0x80, 0x8F, 0x90, 0xC3, 0xE2, 0xF0, 0xF4, 0xFF}, 4));
    for (const Utf8& piece : pieces) {
        reading(piece, true);
        for (const Utf8& filler : std::span(fillers8).first(3)) { // after runs of every length, one behind the other
            Utf8 text;
            for (std::size_t run = 0; run != 41; ++run) add(text, embed(filler, run, piece, 0));
            reading(embed(filler, 0, text, 1));
        }
    }
}

TEST_F(Convert, BytesAreReadAtEveryOffsetIntoEveryRoom) {
    for (const auto& [piece, units] : read_rows) {
        for (std::size_t i = 0; i != 100 * 4; ++i) {
            reading(embed(fillers8[i % 4], i / 4, piece, 27 - i / 4 % 27), true);
            reading(embed(fillers8[i % 4], i / 4, piece, 150));
        }
    }
}

TEST_F(Convert, RandomMixturesAreConvertedByTheRules) {
    Dice below(1);
    for (unsigned int round = 0; round != 4000; ++round) {
        Utf8 bytes;
        Utf16 units;
        const unsigned int kinds = 1 + below(6), first = below(4), noise = below(3) == 0 ? 20 : 0xFFFFFFFF;
        for (unsigned int left = below(300); left != 0 && bytes.size() <= 1000 && units.size() <= 1000; --left) {
            const unsigned int kind = (first + below(kinds)) % 4;
            add(bytes, fillers8[kind], 1 + below(12) / 8 * below(20));
            add(units, fillers16[kind], 1 + below(12) / 8 * below(20));
            if (below(noise) != 0) continue;
            bytes.push_back(static_cast<unsigned char>(below(256)));
            units.push_back(static_cast<unsigned short>(below(0x10000) & (below(2) == 0 ? 0xDFFF : 0x9FF)));
        }
        const Decoded all(bytes);
        reading(bytes);
        writing(units);
        for (int i = 0; i != 8; ++i) {
            reading(bytes, all, below(all.rooms.size()));
            const std::size_t n = below(bytes.size() + 1);
            counting(std::span<const unsigned char>(bytes).first(n), all.count(n));
            writing(std::span(units).first(below(units.size() + 1)));
        }
    }
}

TEST_F(Convert, LongTextsAreConvertedByTheRules) {
    // Every value in its forms of two, three and four bytes; every character; and nothing but malformed.
    std::vector<Utf8> bytes{{}, {}, {}, {}, Utf8(99999, 0x80), Utf8(99999, 0xE2)};
    for (char32_t value = 0; value != 0x200000; ++value) {
        if (value < 0x800) put(bytes[0], value, 1);
        if (value < 0x10000) put(bytes[1], value, 2);
        if (value % 7 == 0) put(bytes[2], value, 3);
        if (value < 0x110000 && value / 0x800 != 0x1B) put(bytes[3], value, bytes_behind(value));
    }
    std::vector<Utf16> units{Decoded(bytes[3]).text};
    for (const Utf16& filler : fillers16) units.push_back(embed(filler, 99999, {'b'}, 9));
    for (const Utf16& text : units) {
        Utf8& to = bytes.emplace_back(CountUtf8(text.data(), text.size())); // to be read again
        ASSERT_EQ(ConvertUtf8(text.data(), to.data(), text.size()), to.data() + to.size());
        ASSERT_TRUE(to == Encoded(text).text);
    }
    for (const Utf8& text : bytes) {
        Utf16 to(CountUtf8(text.data(), text.size()));
        ASSERT_EQ(ConvertUtf8(text.data(), to.data(), to.size()), to.data() + to.size());
        ASSERT_TRUE(to == Decoded(text).text);
    }
}

} // namespace
