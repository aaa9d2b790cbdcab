#ifndef KORD_CONVERT_SHUFFLES_H
#define KORD_CONVERT_SHUFFLES_H

#include <cstddef>

/// The tables by which bytes are shuffled into their places, 16 at once: made by the compiler out of what they are for.
namespace kord {

/// For each of 16 bytes where it comes from, for `Lanes::shuffle`; 0x80 for a zero.
struct Places {
    static constexpr unsigned char zero = 0x80;
    unsigned char from[16];
    constexpr Places() : from{} {
        for (unsigned char& place : from) place = zero;
    }
};

/// Places that shift a block by some bytes, -16 to 16, towards its first one; zeros follow, or go before.
struct Shifts {
    unsigned char from[48];
    constexpr Shifts() : from{} {
        for (unsigned int i = 0; i != 48; ++i)
            from[i] = static_cast<unsigned char>(i >= 16 && i < 32 ? i - 16 : Places::zero);
    }
    const unsigned char* by(std::ptrdiff_t n) const noexcept { return from + 16 + n; }
};
inline constexpr Shifts shifts;

// ---- closing gaps: characters of one to three bytes stand in cells of equal size and are to follow one another -----

struct alignas(32) GapRow {
    Places places;
    unsigned char length = 0;

    constexpr void keep(unsigned int byte) { places.from[length++] = static_cast<unsigned char>(byte); }
};

/// Eight cells of two bytes, of which both or, where the mask has a bit, the last one are kept.
struct PairGaps {
    GapRow rows[256];

    constexpr PairGaps() {
        for (unsigned int mask = 0; mask != 256; ++mask) {
            for (unsigned int cell = 0; cell != 8; ++cell) {
                if ((mask >> cell & 1) == 0) rows[mask].keep(2 * cell);
                rows[mask].keep(2 * cell + 1);
            }
        }
    }
};
inline constexpr PairGaps pair_gaps;

/// Four cells of four bytes: the first of a character of three, nothing, its second, its last. The mask has two bits
/// for each: is it a character of one byte, and of fewer than three?
struct QuadGaps {
    static constexpr std::ptrdiff_t longest = 12; ///< the row of no bits
    GapRow rows[256];

    constexpr QuadGaps() {
        for (unsigned int mask = 0; mask != 256; ++mask) {
            for (unsigned int cell = 0; cell != 4; ++cell) {
                if ((mask >> (2 * cell + 1) & 1) == 0) rows[mask].keep(4 * cell);
                if ((mask >> 2 * cell & 1) == 0) rows[mask].keep(4 * cell + 2);
                rows[mask].keep(4 * cell + 3);
            }
        }
    }
};
inline constexpr QuadGaps quad_gaps;

// ---- taking characters apart: the next six of one or two bytes, or four of one to three ----------------------------

/// Where the bytes of some characters go: their last two into the units of `low`, last one first, and the first one of
/// three into those of `high`.
struct alignas(32) Spread {
    Places low, high;

    /// Adds the next character, which makes unit number `unit` and lies before byte `end`.
    constexpr void add(std::size_t unit, unsigned int end, unsigned int length) {
        low.from[2 * unit] = static_cast<unsigned char>(end - 1);
        if (length > 1) low.from[2 * unit + 1] = static_cast<unsigned char>(end - 2);
        if (length > 2) high.from[2 * unit] = static_cast<unsigned char>(end - 3);
    }
};

struct Spreads {
    static constexpr unsigned int pairs = 64, triples = 81; // two to the sixth, three to the fourth
    static constexpr unsigned int window = 12;              // bytes: no more than are looked at
    static constexpr unsigned char none = 255;

    static constexpr unsigned int five_triples = pairs + triples;   ///< two more: five of three bytes
    static constexpr unsigned int eight_singles = five_triples + 1; ///< and eight of one

    /// For each mask of the bytes that end a character: a spread and the bytes that it takes. `none` if the window has
    /// too few characters, or one of four bytes among the first. `five_triples` is entered for four triples, with their
    /// 12 bytes; whoever knows that a fifth follows may take 15.
    struct Entry {
        unsigned char number = none;
        unsigned char bytes = 0;
    };
    Entry of_ends[1u << window]; // the first member: what decoding waits for is the way to an entry
    Spread spreads[pairs + triples + 2];
    unsigned char units[pairs + triples + 2]; ///< what a spread makes, of five triples only four

    constexpr Spreads() {
        unsigned char bytes[pairs + triples] = {};
        for (unsigned int i = 0; i != eight_singles; ++i) units[i] = i < pairs ? 6 : 4;
        units[eight_singles] = 8;
        for (unsigned int i = 0; i != pairs; ++i) bytes[i] = add(spreads[i], i, 2, 6);
        for (unsigned int i = 0; i != triples; ++i) bytes[pairs + i] = add(spreads[pairs + i], i, 3, 4);
        for (unsigned int k = 0; k != 5; ++k) spreads[five_triples].add(k, 3 * k + 3, 3);
        for (unsigned int k = 0; k != 8; ++k) spreads[eight_singles].add(k, k + 1, 1);
        for (unsigned int ends = 0; ends != 1u << window; ++ends) {
            const unsigned char number = number_of(ends);
            if ((ends & 0xFF) == 0xFF) {
                of_ends[ends] = {eight_singles, 8};
            } else if (number == pairs + triples - 1) {
                of_ends[ends] = {five_triples, 12};
            } else if (number != none) {
                of_ends[ends] = {number, bytes[number]};
            }
        }
    }

  private:
    /// Adds characters whose lengths, less one, are the digits of a number; returns their bytes.
    static constexpr unsigned char add(Spread& spread, unsigned int number, unsigned int radix, unsigned int count) {
        unsigned int end = 0;
        for (unsigned int k = 0; k != count; ++k, number /= radix) {
            const unsigned int length = 1 + number % radix;
            end += length;
            spread.add(k, end, length);
        }
        return static_cast<unsigned char>(end);
    }

    static constexpr unsigned char number_of(unsigned int ends) {
        unsigned int lengths[6] = {}, known = 0, length = 0;
        for (unsigned int i = 0; i != window && known != 6; ++i) {
            ++length;
            if (ends >> i & 1) {
                lengths[known++] = length;
                length = 0;
            }
        }
        unsigned int pair = 0, triple = 0, longest_of_six = 0, longest_of_four = 0;
        for (unsigned int k = 6; k-- != 0;) {
            pair = 2 * pair + (lengths[k] - 1);
            longest_of_six = lengths[k] > longest_of_six ? lengths[k] : longest_of_six;
            if (k >= 4) continue;
            triple = 3 * triple + (lengths[k] - 1);
            longest_of_four = lengths[k] > longest_of_four ? lengths[k] : longest_of_four;
        }
        if (known == 6 && longest_of_six <= 2) return static_cast<unsigned char>(pair);
        if (known >= 4 && longest_of_four <= 3) return static_cast<unsigned char>(pairs + triple);
        return none;
    }
};
inline constexpr Spreads spreads;

} // namespace kord

#endif
