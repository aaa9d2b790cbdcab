// UTF-8 to UTF-16. Converting and counting share a step that reads a character and alone knows the rules; stretches of
// characters that are as they should be go faster, and come to the same.
#include "convert/shuffles.h"
#include "core/lanes.h"

#include <kord/convert.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace {

using Bytes = kord::Lanes<char>;
using Units = kord::Lanes<unsigned short>;

constexpr std::ptrdiff_t block = Bytes::count;

Bytes load(const unsigned char* p) noexcept {
    return Bytes::load(reinterpret_cast<const char*>(p));
}

// ---- one character -------------------------------------------------------------------------------------------------

/// For a byte, by its upper five bits: how many continuation bytes follow, or one of the markers.
constexpr unsigned char is_continuation = 4, is_nothing = 5;
constexpr unsigned char utf8ByteClass[32] = {
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,         // 0x00 to 0x7F
    4, 4, 4, 4, 4, 4, 4, 4, 1, 1, 1, 1, 2, 2, 3, is_nothing // 0x80, 0xC0, 0xE0, 0xF0, 0xF8
};
static_assert(utf8ByteClass[0x80 >> 3] == is_continuation && utf8ByteClass[0xBF >> 3] == is_continuation);

constexpr std::uint32_t replacement = 0xFFFD;

/// A text as long as it takes.
struct Endless {
    bool is_end(const unsigned char*) const noexcept { return false; }
};
struct EndsAt {
    const unsigned char* end;
    bool is_end(const unsigned char* at) const noexcept { return at == end; }
};

/// Reads the next character, or a replacement for what is none; false if the text ends in it.
template <class Text>
[[gnu::always_inline]] inline bool decode(const unsigned char*& at, const Text& text, std::uint32_t& c) noexcept {
    const unsigned char first = *at++;
    const unsigned int more = utf8ByteClass[first >> 3];
    c = first;
    if (more == 0) return true;
    if (more >= is_continuation) {
        c = replacement;
        return true;
    }
    c &= 0x3Fu >> more;
    for (unsigned int i = 0; i != more; ++i) {
        if (text.is_end(at)) return false;
        if (utf8ByteClass[*at >> 3] != is_continuation) {
            c = replacement;
            return true;
        }
        c = c << 6 | (*at++ & 0x3F);
    }
    return true;
}

constexpr unsigned int units_of(std::uint32_t c) noexcept {
    return c < 0x10000 ? 1 : 2;
}

/// Reads and writes the next character; false if it has no room.
bool decode_to(const unsigned char*& at, unsigned short*& to, const unsigned short* end) noexcept {
    std::uint32_t c;
    decode(at, Endless(), c);
    if (units_of(c) == 1) {
        *to++ = static_cast<unsigned short>(c);
        return true;
    }
    if (end - to < 2) return false;
    *to++ = static_cast<unsigned short>(0xD7C0 + (c >> 10));
    *to++ = static_cast<unsigned short>(0xDC00 + (c & 0x3FF));
    return true;
}

// ---- stretches -----------------------------------------------------------------------------------------------------

/// The lowest n bits, 1 to 64.
constexpr std::uint64_t lowest(std::size_t n) noexcept {
    return ~std::uint64_t{0} >> (-n % 64);
}

/// What the bytes of a stretch, which starts with a character, are; a bit each.
template <unsigned int blocks>
struct Stretch {
    static constexpr unsigned int size = blocks * static_cast<unsigned int>(block);

    Bytes parts[blocks];
    std::uint64_t others; ///< not ASCII
    std::uint64_t firsts = 0, firsts_of_three = 0, firsts_of_four = 0;

    [[gnu::always_inline]] explicit Stretch(const unsigned char* at) noexcept {
        for (unsigned int i = 0; i != blocks; ++i) parts[i] = load(at + i * block);
        classify();
    }
    [[gnu::always_inline]] explicit Stretch(Bytes bytes) noexcept : parts{bytes} { classify(); }

    std::uint64_t continuations() const noexcept { return others & ~firsts; }

    /// Are all characters complete, but for the last one, and those of four bytes not another character's in disguise?
    /// Only the plain step knows how to take what is not. Of the bytes those in the mask are looked at.
    [[gnu::always_inline]] bool is_regular(std::uint64_t mask) const noexcept {
        const std::uint64_t expected = firsts << 1 | firsts_of_three << 2 | firsts_of_four << 3;
        if (((continuations() ^ expected) & mask) != 0) return false;
        if (firsts_of_four == 0) return true;
        // No character begins with F8 and more; from F0 80 to F0 8F the value is one of fewer bytes.
        const std::uint64_t nothing = bits([](Bytes part) { return in_range(part, 0xF8, 0xFF); });
        const std::uint64_t least = bits([](Bytes part) { return equal(part, Bytes::splat(0xF0)); });
        const std::uint64_t low = bits([](Bytes part) { return in_range(part, 0x80, 0x8F); });
        return (nothing | (least << 1 & low)) == 0;
    }

    /// Of a regular stretch the last bytes of characters.
    std::uint64_t ends() const noexcept {
        return ~others | (firsts & ~firsts_of_three) << 1 | (firsts_of_three & ~firsts_of_four) << 2 |
               firsts_of_four << 3;
    }

    /// The bytes of the characters that the end does not cut off.
    unsigned int whole() const noexcept {
        const bool is_cut = (firsts >> (size - 1) | firsts_of_three >> (size - 2) | firsts_of_four >> (size - 3)) != 0;
        return is_cut ? 63 - static_cast<unsigned int>(std::countl_zero(firsts)) : size;
    }

  private:
    static Bytes twice(Bytes part) noexcept { return part + part; }

    /// Bit by bit from the top: set for what is not ASCII, then for first bytes, then for those of longer characters.
    [[gnu::always_inline]] void classify() noexcept {
        others = bits([](Bytes part) { return part; });
        if (others == 0) return;
        firsts = others & bits(twice);
        firsts_of_three = firsts & bits([](Bytes part) { return twice(twice(part)); });
        firsts_of_four = firsts_of_three & bits([](Bytes part) { return twice(twice(twice(part))); });
    }

    /// The top bits of what the function makes of each block.
    template <class Make>
    [[gnu::always_inline]] std::uint64_t bits(const Make& make) const noexcept {
        std::uint64_t mask = 0;
        for (unsigned int i = 0; i != blocks; ++i) mask |= std::uint64_t{make(parts[i]).top_bits()} << i * block;
        return mask;
    }
};

[[gnu::always_inline]] inline Units spread_out(Bytes bytes, const kord::Spread& spread) noexcept {
    const Units low = kord::lanes_as<unsigned short>(Bytes::shuffle(bytes, spread.low.from));
    const Units high = kord::lanes_as<unsigned short>(Bytes::shuffle(bytes, spread.high.from));
    return (low & Units::splat(0x7F)) | Units::shift_right<2>(low & Units::splat(0x3F00)) | Units::shift_left<12>(high);
}

/// Four characters of four bytes as pairs of units.
[[gnu::always_inline]] inline Units four_pairs(Bytes bytes) noexcept {
    constexpr unsigned char z = kord::Places::zero;
    constexpr unsigned char second_first[16] = {1, 0, 5, 4, 9, 8, 13, 12, z, z, z, z, z, z, z, z};
    constexpr unsigned char third[16] = {2, z, 6, z, 10, z, 14, z, z, z, z, z, z, z, z, z};
    constexpr unsigned char fourth_third[16] = {3, 2, 7, 6, 11, 10, 15, 14, z, z, z, z, z, z, z, z};
    const auto shuffled = [bytes](const unsigned char(&places)[16]) {
        return kord::lanes_as<unsigned short>(Bytes::shuffle(bytes, places));
    };
    const Units a = shuffled(second_first), b = shuffled(third), c = shuffled(fourth_third);
    const Units six_bits = Units::splat(0x3F);
    const Units upper =
        (a & Units::splat(0x0700)) | Units::shift_left<2>(a & six_bits) | Units::shift_right<4>(b & Units::splat(0x30));
    const Units lower = (c & six_bits) | Units::shift_right<2>(c & Units::splat(0x0F00));
    return Units::interleave_first(upper + Units::splat(0xD7C0), lower + Units::splat(0xDC00));
}

/// Some characters.
struct Group {
    unsigned int bytes, units;
};

/// Decodes the first of the characters that the block holds and that end where the bits say. Eight units are written
/// whatever they are. Takes nothing if only the plain step knows how.
[[gnu::always_inline]] inline Group decode_group(Bytes bytes, std::uint64_t ends, unsigned short* to) noexcept {
    constexpr const kord::Spreads& tables = kord::spreads;
    const auto entry = tables.of_ends[ends & ((1u << tables.window) - 1)];
    if (entry.number != tables.none) {
        spread_out(bytes, tables.spreads[entry.number]).store(to);
        return {entry.bytes, entry.units()};
    }
    if ((ends & 0xFF) == 0xFF) {
        widen_first(bytes).store(to);
        return {8, 8};
    }
    if ((ends & 0x7FFF) == 0b100100100100100) {
        spread_out(bytes, tables.spreads[tables.five_triples]).store(to);
        return {15, 5};
    }
    if ((ends & 0xFFFF) == 0b1000100010001000) {
        four_pairs(bytes).store(to);
        return {16, 8};
    }
    return {0, 0};
}

using Long = Stretch<4>;

/// Decodes most of a regular stretch. Up to a block behind it is read, and up to half a block behind the units written.
[[gnu::always_inline]] inline void decode_stretch(const Long& stretch, const unsigned char*& at, unsigned short*& to,
                                                  const unsigned short* end) noexcept {
    const std::uint64_t ends = stretch.ends();
    unsigned int pos = 0;
    while (pos < Long::size - kord::Spreads::window) {
        const Group group = decode_group(load(at + pos), ends >> pos, to);
        pos += group.bytes;
        to += group.units;
        if (group.bytes == 0) {
            const unsigned char* character = at + pos;
            decode_to(character, to, end);
            pos = static_cast<unsigned int>(character - at);
        }
    }
    at += pos;
}

/// Decodes stretches as long as there is room for all that may be written.
template <bool shuffles>
[[gnu::always_inline]] inline void decode_stretches(const unsigned char*& at, unsigned short*& to,
                                                    const unsigned short* end) noexcept {
    // No unit takes less than a byte: where there is room for so many units, so many bytes can be read. The last block
    // that is decoded begins before the end of the stretch by more than a window.
    constexpr std::ptrdiff_t room = Long::size + block - kord::Spreads::window;
    while (end - to >= room) {
        const Long stretch(at);
        if (stretch.others == 0) {
            for (const Bytes part : stretch.parts) {
                store_widened(part, to);
                to += block;
            }
            at += Long::size;
        } else if (shuffles && stretch.is_regular(lowest(Long::size))) {
            decode_stretch(stretch, at, to, end);
        } else {
            for (const unsigned short* const stop = to + Units::count; to < stop;) decode_to(at, to, end);
        }
    }
}

/// The same a few characters at a time. No more bytes are read than units are wanted.
template <bool shuffles>
[[gnu::always_inline]] inline void decode_groups(const unsigned char*& at, unsigned short*& to,
                                                 const unsigned short* end) noexcept {
    while (end - to >= static_cast<std::ptrdiff_t>(Units::count)) {
        const auto known = static_cast<std::size_t>(std::min(end - to, block));
        const Stretch<1> stretch(known < block ? Bytes::load_partial(reinterpret_cast<const char*>(at), known)
                                               : load(at));
        const Bytes bytes = stretch.parts[0];
        Group group{0, 0};
        if (stretch.others == 0) {
            widen_first(bytes).store(to);
            group = {8, 8};
        } else if (shuffles && stretch.is_regular(lowest(known))) {
            group = decode_group(bytes, stretch.ends() & lowest(known), to);
        }
        at += group.bytes;
        to += group.units;
        if (group.bytes != 0) continue;
        for (const unsigned short* const stop = to + Units::count / 2; to < stop;) decode_to(at, to, end);
    }
}

template <bool shuffles>
[[gnu::always_inline]] inline unsigned short* decode_all(const unsigned char* at, unsigned short* to,
                                                         const unsigned short* end) noexcept {
    decode_stretches<shuffles>(at, to, end);
    decode_groups<shuffles>(at, to, end);
    while (to != end) {
        if (!decode_to(at, to, end)) return nullptr;
    }
    return to;
}

KORD_SHUFFLES unsigned short* decode_shuffling(const unsigned char* at, unsigned short* to,
                                               const unsigned short* end) noexcept {
    return decode_all<true>(at, to, end);
}
[[gnu::noinline]] unsigned short* decode_plainly(const unsigned char* at, unsigned short* to,
                                                 const unsigned short* end) noexcept {
    return decode_all<false>(at, to, end);
}

// ---- counting ------------------------------------------------------------------------------------------------------

/// Writes a block of bytes as a unit each if they are ASCII; says whether they are.
[[gnu::always_inline]] inline bool decode_ascii(const unsigned char* at, unsigned short* to) noexcept {
    const Bytes bytes = load(at);
    if (!bytes.is_ascii()) return false;
    store_widened(bytes, to);
    return true;
}

/// The number of bits set. `std::popcount` is a call where the processor is not known to count them.
constexpr unsigned int bits_set(std::uint64_t word) noexcept {
    word -= word >> 1 & 0x5555555555555555;
    word = (word & 0x3333333333333333) + (word >> 2 & 0x3333333333333333);
    word = (word + (word >> 4)) & 0x0F0F0F0F0F0F0F0F;
    return static_cast<unsigned int>(word * 0x0101010101010101 >> 56);
}

} // namespace

unsigned short* KordConvert::ConvertUtf8(const unsigned char* source, unsigned short* target,
                                         unsigned long count) noexcept {
    unsigned short* const end = target + count;
    // Text that is ASCII throughout, or begins so, is not worth getting ready for more.
    for (; end - target >= block && decode_ascii(source, target); target += block) source += block;
    const std::ptrdiff_t rest = end - target;
    if (rest == 0) return end;
    // What is left of a block is begun before it.
    if (rest < block && count >= block && decode_ascii(source + rest - block, end - block)) return end;
    return kord::has_shuffles() ? decode_shuffling(source, target, end) : decode_plainly(source, target, end);
}

unsigned long KordConvert::CountUtf8(const unsigned char* source, unsigned long count) noexcept {
    const EndsAt text{source + count};
    std::uint64_t units = 0;
    while (source != text.end) {
        if (text.end - source >= static_cast<std::ptrdiff_t>(Long::size)) {
            const Long stretch(source);
            if (stretch.is_regular(lowest(Long::size))) {
                const unsigned int whole = stretch.whole();
                const std::uint64_t counted = lowest(whole);
                // A unit for the first byte of every character, another for those of four.
                units += bits_set(~stretch.continuations() & counted) + bits_set(stretch.firsts_of_four & counted);
                source += whole;
                continue;
            }
        }
        const unsigned char* const stop = text.end - source < block ? text.end : source + block;
        while (source < stop) {
            std::uint32_t c;
            if (!decode(source, text, c)) return static_cast<unsigned long>(units);
            units += units_of(c);
        }
    }
    return static_cast<unsigned long>(units);
}
