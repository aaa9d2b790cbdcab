// The conversions against the rules told plainly, with source and target ending where memory does.
#include "support/convert_model.h"
#include "support/dice.h"
#include "support/guard.h"

#include <kord/convert.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <numeric>
#include <string>
#include <type_traits>

namespace {

using KordConvert::ConvertAnsi, KordConvert::ConvertUtf8, KordConvert::CountUtf8;

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
std::vector<std::vector<T>> sequences(std::span<const T> characters, std::size_t longest) {
    std::vector<std::vector<T>> all{{}};
    for (std::size_t i = 0; i != all.size() && all[i].size() != longest; ++i) {
        for (const T c : characters) {
            all.push_back(all[i]);
            all.back().push_back(c);
        }
    }
    return all;
}
template <class T>
std::string hex(std::span<const T> text) {
    std::string out;
    for (const T c : text) {
        char code[8];
        std::snprintf(code, sizeof code, " %0*X", static_cast<int>(2 * sizeof c), static_cast<unsigned int>(c));
        out += code;
    }
    return out;
}

/// Says what a conversion does wrong; nothing if it does as the model.
class Convert : public ::testing::Test {
  protected:
    std::string ansi_fault(std::span<const unsigned short> text) {
        const auto bad = std::find_if(text.begin(), text.end(), [](unsigned short u) { return u >= 0xFF; });
        const Utf8 expected(text.begin(), bad);
        const unsigned short* const from = last_of_memory(text);
        unsigned char* const to = room<unsigned char>(text.size());
        return fault("ansi", text, ConvertAnsi(from, to, text.size()), to, text.size(), expected, bad != text.end());
    }
    std::string writing_fault(std::span<const unsigned short> text) {
        const Encoded expected(text);
        const unsigned short* const from = last_of_memory(text);
        const std::size_t size = CountUtf8(from, text.size());
        if (size != Encoded::count(text)) return "counted " + std::to_string(size) + " of" + hex(text);
        unsigned char* const to = room<unsigned char>(size);
        return fault("to bytes", text, ConvertUtf8(from, to, text.size()), to, size, expected.text, expected.failed);
    }
    /// The units before the `n`th out of as many bytes as they take.
    std::string reading_fault(std::span<const unsigned char> text, const Decoded& all, std::size_t n) {
        text = text.first(all.rooms[n].read);
        const bool fits = all.rooms[n].fits;
        const unsigned char* const from = last_of_memory(text);
        unsigned short* const to = room<unsigned short>(n);
        return fault("to units", text, ConvertUtf8(from, to, n), to, n, std::span(all.text).first(fits ? n : n - 1),
                     !fits);
    }
    std::string counting_fault(std::span<const unsigned char> text, const Decoded& all) {
        const unsigned long n = CountUtf8(last_of_memory(text), text.size());
        return n == all.count(text.size()) ? "" : "counted " + std::to_string(n) + " of" + hex(text);
    }
    /// Every number of units written, every number of bytes counted.
    std::string reading_fault(const Utf8& text) {
        const Decoded all(text);
        std::string found;
        for (std::size_t n = 0; n <= all.text.size() && found.empty(); ++n) found = reading_fault(text, all, n);
        for (std::size_t n = 0; n <= text.size() && found.empty(); ++n)
            found = counting_fault(std::span(text).first(n), all);
        return found;
    }
    std::string whole_reading_fault(const Utf8& text) {
        const Decoded all(text);
        return counting_fault(text, all) + reading_fault(text, all, all.text.size());
    }

  private:
    template <class T>
    static T* last(const GuardedPage& page, std::size_t n) {
        if (n * sizeof(T) + 16 > GuardedPage::size) std::abort();
        return reinterpret_cast<T*>(page.end()) - n;
    }
    template <class T>
    const T* last_of_memory(std::span<const T> text) const {
        T* const at = last<T>(source_, text.size());
        std::copy(text.begin(), text.end(), at);
        return at;
    }
    template <class T>
    T* room(std::size_t n) const {
        T* const at = last<T>(target_, n);
        std::fill(reinterpret_cast<char*>(at) - 16, target_.end(), '\x5A');
        return at;
    }
    /// After a failure what was written stays; the rest of the counted room is nobody's.
    template <class From, class To>
    static std::string fault(const char* what, std::span<const From> text, const To* end, const To* to,
                             std::size_t size, std::span<const std::type_identity_t<To>> expected, bool failed) {
        const char* const before = reinterpret_cast<const char*>(to) - 16;
        if (end == (failed ? nullptr : to + size) && std::equal(expected.begin(), expected.end(), to) &&
            std::count(before, before + 16, '\x5A') == 16)
            return {};
        return std::string(what) + hex(text) + (failed ? " fails" : "") + " after" + hex(expected) + ", not " +
               (end == nullptr ? "fails" : "ends at " + std::to_string(end - to)) + " after" +
               hex(std::span<const To>(to, size));
    }
    GuardedPage source_, target_;
};

TEST_F(Convert, LiteralCounts) {
    const unsigned short units[] = {'a'};
    const unsigned char bytes[] = {'a'};
    unsigned char to_bytes[1];
    unsigned short to_units[1];
    EXPECT_EQ(ConvertAnsi(units, to_bytes, 0), to_bytes);
    EXPECT_EQ(ConvertUtf8(units, to_bytes, 0), to_bytes);
    EXPECT_EQ(ConvertUtf8(bytes, to_units, 0), to_units);
    EXPECT_EQ(CountUtf8(units, 0) + CountUtf8(bytes, 0), 0u);
    static_assert(std::is_same_v<decltype(CountUtf8(bytes, std::size_t{1})), unsigned long>);
    static_assert(noexcept(ConvertAnsi(units, to_bytes, 0)));
    static_assert(noexcept(ConvertUtf8(units, to_bytes, 0)));
}

// The model itself is held to rows written by hand.
TEST_F(Convert, RowsByHand) {
    struct Written { // clang-format off
        Utf16 units;
        Utf8 bytes;
        unsigned long counted;
        bool fails = false;
    };
    const Written written[] = {
        {{0x7F}, {0x7F}, 1}, {{0x80}, {0xC2, 0x80}, 2}, {{0x7FF}, {0xDF, 0xBF}, 2}, {{0x800}, {0xE0, 0xA0, 0x80}, 3},
        {{0xFFFF}, {0xEF, 0xBF, 0xBF}, 3}, {{0xD800, 0xDC00}, {0xF0, 0x90, 0x80, 0x80}, 4}, {{0xDBFF, 0xDFFF}, {0xF4, 0x8F, 0xBF, 0xBF}, 4},
        {{0xD83D, 0xDE00}, {0xF0, 0x9F, 0x98, 0x80}, 4}, {{0x41, 0, 0x42}, {0x41, 0, 0x42}, 3},
        {{0xD800}, {}, 4, true}, {{0xDC00}, {}, 0, true}, {{0xD800, 0x41}, {}, 5, true}, {{0x41, 0xDC00, 0x41}, {0x41}, 2, true},
    };
    for (const Written& row : written) {
        const Encoded model(row.units);
        EXPECT_TRUE(model.text == row.bytes && model.failed == row.fails && Encoded::count(row.units) == row.counted) << hex<unsigned short>(row.units);
        EXPECT_EQ(writing_fault(row.units), "");
    }
    struct Read {
        Utf8 bytes;
        Utf16 units;
    };
    const Read read[] = {
        {{0x41}, {0x41}}, {{0xC3, 0xA9}, {0xE9}}, {{0xE2, 0x82, 0xAC}, {0x20AC}}, {{0xF0, 0x9F, 0x98, 0x80}, {0xD83D, 0xDE00}}, {{0x41, 0, 0x42}, {0x41, 0, 0x42}},
        {{0xC3, 0x41}, {0xFFFD, 0x41}}, {{0x80, 0x41}, {0xFFFD, 0x41}}, {{0xFF}, {0xFFFD}}, {{0xE2, 0x82, 0x41}, {0xFFFD, 0x41}}, {{0xE2, 0x82}, {}},
        {{0xC0, 0x80}, {0}}, {{0xE0, 0x80, 0xAF}, {0x2F}}, {{0xED, 0xA0, 0x80}, {0xD800}}, {{0xF4, 0x90, 0x80, 0x80}, {0xDC00, 0xDC00}},
        {{0xF7, 0xBF, 0xBF, 0xBF}, {0xDFBF, 0xDFFF}}, {{0xF0, 0x80, 0x80, 0x80}, {0}}, {{0xF0, 0x8F, 0xBF, 0xBF}, {0xFFFF}},
    }; // clang-format on
    for (const Read& row : read) {
        EXPECT_EQ(Decoded(row.bytes).text, row.units) << hex<unsigned char>(row.bytes);
        EXPECT_EQ(reading_fault(row.bytes), "");
    }
    EXPECT_FALSE(Decoded(fillers8[3]).rooms[1].fits);
}

TEST_F(Convert, AnsiTakesUnitsBelow255AtEveryPlace) {
    const unsigned short edges[] = {0xFE, 0xFF, 0x100, 0x1FE, 0x7FFF, 0x8000, 0xFF00, 0xFFFF};
    for (unsigned int u = 0; u != 0x10000; ++u) {
        ASSERT_EQ(ansi_fault(Utf16(1, static_cast<unsigned short>(u))), "");
        ASSERT_EQ(ansi_fault(Utf16(19, static_cast<unsigned short>(u))), "");
    }
    for (std::size_t n = 0; n != 70; ++n) {
        Utf16 text(n);
        std::iota(text.begin(), text.end(), static_cast<unsigned short>(0xFF - n));
        ASSERT_EQ(ansi_fault(text), "");
        for (const unsigned short bad : edges) {
            for (std::size_t place = 0; place != n; ++place) {
                Utf16 other = text;
                other[place] = bad;
                ASSERT_EQ(ansi_fault(other), "");
            }
        }
    }
}

TEST_F(Convert, EveryUnitIsWrittenAloneAndAmongItsLikes) {
    for (unsigned int u = 0; u != 0x10000; ++u) {
        const Utf16 unit{static_cast<unsigned short>(u)};
        ASSERT_EQ(writing_fault(unit), "");
        ASSERT_EQ(writing_fault(embed(unit, 19, fillers16[u % 4], 21)), "");
    }
}

TEST_F(Convert, UnitsAreWrittenAtEveryOffsetOfEveryText) {
    const unsigned short nasty[] = {0,      0x41,   0x7F,   0x80,   0x7FF,  0x800, 0xD7FF,
                                    0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xFFFF};
    for (const Utf16& piece : sequences<unsigned short>(nasty, 3)) {
        for (const Utf16& filler : fillers16) {
            for (std::size_t offset = 0; offset != 41; ++offset) {
                ASSERT_EQ(writing_fault(embed(filler, offset, piece, offset % 3 == 0 ? 0 : 20)), "");
            }
        }
    }
}

// Low surrogates count nothing, so that they leave less room than there are units to come.
TEST_F(Convert, NothingIsWrittenBehindTheCountOfMalformedUnits) {
    for (const Utf16& filler : fillers16) {
        for (std::size_t n = 0; n != 81; ++n) {
            for (const Utf16& lone : {Utf16(40, 0xDC00), Utf16(1, 0xDFFF), Utf16(3, 0xDBFF)}) {
                Utf16 text = embed(filler, n, lone, n % 3);
                ASSERT_EQ(writing_fault(text), "");
                add(text, Utf16(40, 0xDC00));
                ASSERT_EQ(writing_fault(text), "");
                for (std::size_t k = 1; k < text.size(); k += 3) text[k] = 0xDC00;
                ASSERT_EQ(writing_fault(text), "");
            }
        }
    }
}

TEST_F(Convert, ShortByteSequencesAreReadByTheRules) {
    const unsigned char nasty[] = {0,    0x41, 0x7F, 0x80, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC3,
                                   0xDF, 0xE0, 0xE2, 0xED, 0xEF, 0xF0, 0xF4, 0xF7, 0xF8, 0xFF};
    const unsigned char few[] = {0x41, 0x80, 0x8F, 0x90, 0xC3, 0xE2, 0xF0, 0xF4, 0xFF};
    std::vector<Utf8> pieces = sequences<unsigned char>(nasty, 3);
    add(pieces, sequences<unsigned char>(few, 4));
    for (const Utf8& piece : pieces) {
        ASSERT_EQ(reading_fault(piece), "");
        for (const Utf8& filler : fillers8) { // after runs of every length, one behind the other
            if (filler.size() == 4) continue;
            Utf8 text;
            for (std::size_t run = 0; run != 41; ++run) {
                add(text, filler, run);
                add(text, piece);
            }
            add(text, filler);
            ASSERT_EQ(whole_reading_fault(text), "");
        }
    }
}

TEST_F(Convert, BytesAreReadAtEveryOffsetIntoEveryRoom) {
    const Utf8 pieces[] = {{0},
                           {0xC3, 0xA9},
                           {0xE2, 0x82, 0xAC},
                           {0xF0, 0x9F, 0x98, 0x80},
                           {0x80},
                           {0xFF},
                           {0xC3},
                           {0xC3, 0xC3},
                           {0xE2, 0x82},
                           {0xE2, 0xE2, 0x82},
                           {0xF0, 0x9F, 0x98},
                           {0xED, 0xA0, 0x80},
                           {0xC0, 0x80},
                           {0xE0, 0x80, 0x80},
                           {0xF0, 0x8F, 0xBF, 0xBF},
                           {0xF4, 0x90, 0x80, 0x80},
                           {0xF8, 0x80, 0x80, 0x80},
                           {0xF7, 0xBF, 0xBF, 0xBF}};
    for (const Utf8& piece : pieces) {
        for (const Utf8& filler : fillers8) {
            for (std::size_t offset = 0; offset != 100; ++offset) {
                ASSERT_EQ(reading_fault(embed(filler, offset, piece, 27 - offset % 27)), "");
                ASSERT_EQ(whole_reading_fault(embed(filler, offset, piece, 150)), "");
            }
        }
    }
}

TEST_F(Convert, RandomMixturesAreConvertedByTheRules) {
    Dice below(1);
    for (unsigned int round = 0; round != 4000; ++round) {
        Utf8 bytes;
        Utf16 units;
        const unsigned int kinds = 1 + below(6), first = below(4), noise = below(3) == 0 ? 20 : 0xFFFFFFFF;
        for (unsigned int left = below(300); left != 0; --left) {
            const unsigned int kind = (first + below(kinds)) % 4;
            add(bytes, fillers8[kind], 1 + below(12) / 8 * below(20));
            add(units, fillers16[kind], 1 + below(12) / 8 * below(20));
            if (bytes.size() > 1000 || units.size() > 1000) break;
            if (below(noise) != 0) continue;
            bytes.push_back(static_cast<unsigned char>(below(256)));
            units.push_back(static_cast<unsigned short>(below(0x10000) & (below(2) == 0 ? 0xDFFF : 0x9FF)));
        }
        const Decoded all(bytes);
        ASSERT_EQ(whole_reading_fault(bytes), "");
        ASSERT_EQ(writing_fault(units), "");
        for (int i = 0; i != 8; ++i) {
            ASSERT_EQ(reading_fault(bytes, all, below(all.rooms.size())), "");
            ASSERT_EQ(counting_fault(std::span(bytes).first(below(bytes.size() + 1)), all), "");
            ASSERT_EQ(writing_fault(std::span(units).first(below(units.size() + 1))), "");
        }
    }
}

TEST_F(Convert, LongTextsComeBackAsTheyWent) {
    Utf16 every;
    for (unsigned int c = 0; c != 0x110000; ++c) {
        if (c >= 0x10000) every.push_back(static_cast<unsigned short>(0xD7C0 + c / 0x400));
        if (c < 0xD800 || c > 0xDFFF)
            every.push_back(static_cast<unsigned short>(c < 0x10000 ? c : 0xDC00 + c % 0x400));
    }
    std::vector<Utf16> texts{every};
    for (const Utf16& filler : fillers16) texts.push_back(embed(filler, 99999, {'b'}, 9));
    for (const Utf16& text : texts) {
        Utf8 bytes(CountUtf8(text.data(), text.size()));
        ASSERT_EQ(bytes.size(), Encoded::count(text));
        ASSERT_EQ(ConvertUtf8(text.data(), bytes.data(), text.size()), bytes.data() + bytes.size());
        ASSERT_TRUE(bytes == Encoded(text).text);
        Utf16 back(CountUtf8(bytes.data(), bytes.size()));
        ASSERT_EQ(back.size(), text.size());
        ASSERT_EQ(ConvertUtf8(bytes.data(), back.data(), back.size()), back.data() + back.size());
        ASSERT_TRUE(back == text);
    }
}

/// Every value in its form of so many bytes behind the first, even if a shorter one would do; of three every seventh.
Utf8 every_form(unsigned int more) {
    const unsigned int leads[] = {0, 0xC0, 0xE0, 0xF0}, ends[] = {0x80, 0x800, 0x10000, 0x200000};
    Utf8 text;
    for (unsigned int value = 0; value < ends[more]; value += more == 3 ? 7 : 1) {
        text.push_back(static_cast<unsigned char>(leads[more] + (value >> 6 * more)));
        for (unsigned int i = more; i-- != 0;) text.push_back(static_cast<unsigned char>(0x80 + (value >> 6 * i) % 64));
    }
    return text;
}

TEST_F(Convert, LongTextsAreReadByTheirValuesWhateverTheForm) {
    for (const Utf8& text : {every_form(1), every_form(2), every_form(3), Utf8(99999, 0x80), Utf8(99999, 0xE2)}) {
        const Decoded all(text);
        Utf16 back(CountUtf8(text.data(), text.size()));
        ASSERT_EQ(back.size(), all.text.size());
        ASSERT_EQ(ConvertUtf8(text.data(), back.data(), back.size()), back.data() + back.size());
        ASSERT_TRUE(back == all.text);
    }
}

} // namespace
