// UTF-8 to UTF-16. Converting and counting share a step that reads a character and alone knows the rules; stretches of
// characters that are as they should be go faster, and come to the same.
#include "convert/shuffles.h"
#include "convert/stretch.h"
#include "core/lanes.h"

#include <kord/convert.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

using Bytes = kord::Lanes<char>;
using Units = kord::Lanes<unsigned short>;
using kord::Stretch;

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

constexpr bool continues(unsigned int byte) noexcept {
    return (byte & 0xC0) == 0x80;
}

/// Reads and writes the next character; false if it has no room.
[[gnu::always_inline]] inline bool decode_to(const unsigned char*& at, unsigned short*& to,
                                             const unsigned short* end) noexcept {
    const std::uint32_t first = at[0];
    if (first < 0xE0 && !continues(first)) {
        // Whether it is one byte or two is hard to foretell: no branch. Of one the last is the first once more.
        const std::uint32_t is_two = first >> 7, if_two = 0 - is_two, last = at[is_two];
        if (((last ^ 0x80) & 0xC0 & if_two) == 0) [[likely]] {
            *to++ = static_cast<unsigned short>(last + (((first << 6) - (0xC0 << 6 | 0x80)) & if_two));
            at += 1 + is_two;
            return true;
        }
    } else if ((first & 0xF0) == 0xE0 && continues(at[1]) && continues(at[2])) {
        *to++ = static_cast<unsigned short>(first << 12 | (at[1] & 0x3Fu) << 6 | (at[2] & 0x3Fu));
        at += 3;
        return true;
    }
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

[[gnu::always_inline]] inline Units spread_out(Bytes bytes, const kord::Spread& spread) noexcept {
    const Units low = kord::lanes_as<unsigned short>(Bytes::shuffle(bytes, spread.low.from));
    const Units high = kord::lanes_as<unsigned short>(Bytes::shuffle(bytes, spread.high.from));
    return (low & Units::splat(0x7F)) | Units::shift_right<2>(low & Units::splat(0x3F00)) | Units::shift_left<12>(high);
}

/// Four characters of four bytes as pairs of units.
[[gnu::always_inline]] inline Units four_pairs(Bytes bytes) noexcept {
    constexpr unsigned char z = kord::Places::zero;
    static constexpr unsigned char second_first[16] = {1, 0, 5, 4, 9, 8, 13, 12, z, z, z, z, z, z, z, z};
    static constexpr unsigned char third[16] = {2, z, 6, z, 10, z, 14, z, z, z, z, z, z, z, z, z};
    static constexpr unsigned char fourth_third[16] = {3, 2, 7, 6, 11, 10, 15, 14, z, z, z, z, z, z, z, z};
    const Units a = kord::lanes_as<unsigned short>(Bytes::shuffle(bytes, second_first));
    const Units b = kord::lanes_as<unsigned short>(Bytes::shuffle(bytes, third));
    const Units c = kord::lanes_as<unsigned short>(Bytes::shuffle(bytes, fourth_third));
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
    if (entry.number < tables.five_triples) [[likely]] {
        spread_out(bytes, tables.spreads[entry.number]).store(to);
        return {entry.bytes, tables.units[entry.number]};
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

/// Decodes most of a regular stretch. Up to a block behind it is read, and up to half a block behind the units written.
[[gnu::always_inline]] inline void decode_stretch(const Stretch& stretch, const unsigned char*& at, unsigned short*& to,
                                                  const unsigned short* end) noexcept {
    const unsigned char* const stop = at + Stretch::size - kord::Spreads::window;
    for (std::uint64_t ends = stretch.ends(); at < stop;) {
        const Group group = decode_group(load(at), ends, to);
        at += group.bytes;
        to += group.units;
        ends >>= group.bytes;
        if (group.bytes == 0) {
            const unsigned char* const character = at;
            decode_to(at, to, end);
            ends >>= at - character;
        }
    }
}

/// Decodes stretches as long as there is room for all that may be written.
template <bool shuffles>
[[gnu::always_inline]] inline void decode_stretches(const unsigned char*& at, unsigned short*& to,
                                                    const unsigned short* end) noexcept {
    // No unit takes less than a byte: where there is room for so many units, so many bytes can be read. The last block
    // that is decoded begins before the end of the stretch by more than a window.
    constexpr std::ptrdiff_t room = Stretch::size + block - kord::Spreads::window;
    while (end - to >= room) {
        const Stretch stretch(at);
        if (stretch.others == 0) {
            for (const Bytes part : stretch.parts) {
                store_widened(part, to);
                to += block;
            }
            at += Stretch::size;
        } else if (shuffles && stretch.is_regular()) {
            decode_stretch(stretch, at, to, end);
        } else {
            for (const unsigned short* const stop = to + Units::count; to < stop;) decode_to(at, to, end);
        }
    }
}

// ---- short texts and the ends of long ones -------------------------------------------------------------------------

/// Writes some blocks of bytes as a unit each if they are ASCII; says whether they are.
template <std::size_t blocks>
[[gnu::always_inline]] inline bool decode_ascii(const unsigned char* at, unsigned short* to) noexcept {
    Bytes parts[blocks], all = Bytes::splat(0);
    for (Bytes& part : parts) {
        part = load(at);
        all = all | part;
        at += block;
    }
    if (!all.is_ascii()) [[unlikely]]
        return false;
    for (const Bytes part : parts) {
        store_widened(part, to);
        to += block;
    }
    return true;
}

/// Are all characters of the block, but for one that it cuts off, of the length, which is three or four? Those of four
/// may yet be others in disguise.
template <unsigned int length>
[[gnu::always_inline]] inline bool are_alike(Bytes bytes) noexcept {
    struct Pattern {
        char mask[block] = {}, bits[block] = {};
        constexpr Pattern() {
            for (unsigned int i = 0; i != block / length * length; ++i) {
                const bool is_first = i % length == 0;
                mask[i] = static_cast<char>(is_first ? (length == 3 ? 0xF0 : 0xF8) : 0xC0);
                bits[i] = static_cast<char>(is_first ? (length == 3 ? 0xE0 : 0xF0) : 0x80);
            }
        }
    };
    static constexpr Pattern pattern;
    return equal(bytes & Bytes::load(pattern.mask), Bytes::load(pattern.bits)).mask() == Bytes::all;
}

/// Decodes a block of characters of three bytes, or of four; says whether it is one.
[[gnu::always_inline]] inline bool decode_alike(const unsigned char*& at, unsigned short*& to) noexcept {
    const Bytes bytes = load(at);
    if (are_alike<3>(bytes)) {
        spread_out(bytes, kord::spreads.spreads[kord::Spreads::five_triples]).store(to);
        at += 15;
        to += 5;
        return true;
    }
    if (*at < 0xF0 || !are_alike<4>(bytes)) return false;
    const Units pairs = four_pairs(bytes);
    if (equal(pairs & Units::splat(0xF800), Units::splat(0xD800)).mask() != Units::all) return false;
    pairs.store(to);
    at += 16;
    to += 8;
    return true;
}

/// Decodes groups. At least a block of units is wanted, so that as many bytes can be read; the last few of these, which
/// hold no group, are left.
[[gnu::always_inline]] inline void decode_groups(const unsigned char*& at, unsigned short*& to,
                                                 const unsigned short* end) noexcept {
    constexpr const kord::Spreads& tables = kord::spreads;
    constexpr std::ptrdiff_t least = 4, room = Units::count; // bytes and units of a group
    const auto known = static_cast<std::size_t>(std::min<std::ptrdiff_t>(end - to, Stretch::size));
    const unsigned char* const limit = at + known;
    const kord::Marks marks = kord::marks_of(at, known);
    if ((marks.errors() & kord::lowest(known)) != 0) return;
    std::uint64_t ends = marks.ends() & kord::lowest(known);
    do {
        const auto entry = tables.of_ends[ends & ((1u << tables.window) - 1)];
        if (entry.number == tables.none) return;
        spread_out(kord::load_before(at, limit), tables.spreads[entry.number]).store(to);
        at += entry.bytes;
        to += tables.units[entry.number];
        ends >>= entry.bytes;
    } while (limit - at >= least && end - to >= room);
}

/// Decodes a group out of eight bytes, where as many units are wanted; says whether there is one.
[[gnu::always_inline]] inline bool decode_eight(const unsigned char*& at, unsigned short*& to) noexcept {
    constexpr const kord::Spreads& tables = kord::spreads;
    if (*at >= 0xE0) return false; // probably all are of three bytes, of which eight hold no group
    const Bytes bytes = Bytes::load_partial(reinterpret_cast<const char*>(at), 8);
    const kord::Marks marks = kord::marks_of(bytes);
    if ((marks.errors() & 0xFF) != 0) return false;
    const auto entry = tables.of_ends[marks.ends() & 0xFF];
    if (entry.number == tables.none) return false;
    spread_out(bytes, tables.spreads[entry.number]).store(to);
    at += entry.bytes;
    to += tables.units[entry.number];
    return true;
}

unsigned short* decode_characters(const unsigned char* at, unsigned short* to, const unsigned short* end) noexcept {
    while (to != end) {
        if (!decode_to(at, to, end)) return nullptr;
    }
    return to;
}

/// A text shorter than a block. Such texts are mostly ASCII.
unsigned short* decode_few(const unsigned char* at, unsigned short* to, const unsigned short* end) noexcept {
    while (to != end && *at < 0x80) *to++ = *at++;
    return decode_characters(at, to, end);
}

/// Not a part of `decode_shuffling`: in one function with the long stretches, either would get in the other's way.
[[gnu::noinline]] KORD_SHUFFLES unsigned short* decode_rest(const unsigned char* at, unsigned short* to,
                                                            const unsigned short* end) noexcept {
    while (end - to >= block) {
        if (*at >= 0xE0 && decode_alike(at, to)) continue;
        const unsigned short* const before = to;
        decode_groups(at, to, end);
        if (to != before) continue;
        for (const unsigned short* const stop = to + Units::count / 2; to < stop;) decode_to(at, to, end);
    }
    while (end - to >= static_cast<std::ptrdiff_t>(Units::count) && decode_eight(at, to)) {
    }
    return decode_characters(at, to, end);
}

KORD_SHUFFLES unsigned short* decode_shuffling(const unsigned char* at, unsigned short* to,
                                               const unsigned short* end) noexcept {
    decode_stretches<true>(at, to, end);
    return decode_rest(at, to, end);
}
[[gnu::noinline]] unsigned short* decode_plainly(const unsigned char* at, unsigned short* to,
                                                 const unsigned short* end) noexcept {
    decode_stretches<false>(at, to, end);
    return decode_characters(at, to, end);
}

// ---- counting ------------------------------------------------------------------------------------------------------

/// The number of bits set. `std::popcount` is a call where the processor is not known to count them.
constexpr unsigned int bits_set(std::uint64_t word) noexcept {
    word -= word >> 1 & 0x5555555555555555;
    word = (word & 0x3333333333333333) + (word >> 2 & 0x3333333333333333);
    word = (word + (word >> 4)) & 0x0F0F0F0F0F0F0F0F;
    return static_cast<unsigned int>(word * 0x0101010101010101 >> 56);
}

} // namespace

// Short ASCII takes so few instructions that it counts how many cache lines they lie in.
[[gnu::aligned(64)]] unsigned short* KordConvert::ConvertUtf8(const unsigned char* source, unsigned short* target,
                                                              unsigned long count) noexcept {
    unsigned short* const end = target + count;
    const auto decode_others = [&] {
        return kord::has_shuffles() ? decode_shuffling(source, target, end) : decode_plainly(source, target, end);
    };
    if (count < block) return decode_few(source, target, end);
    // Text that is ASCII throughout, or begins so, is not worth getting ready for more.
    for (; end - target >= 2 * block; target += 2 * block, source += 2 * block) {
        if (!decode_ascii<2>(source, target)) return decode_others();
    }
    if (end - target >= block) {
        if (!decode_ascii<1>(source, target)) return decode_others();
        target += block;
        source += block;
    }
    const std::ptrdiff_t rest = end - target;
    if (rest == 0) return end;
    // What is left of a block is begun before it.
    if (decode_ascii<1>(source + rest - block, end - block)) return end;
    return decode_others();
}

unsigned long KordConvert::CountUtf8(const unsigned char* source, unsigned long count) noexcept {
    const EndsAt text{source + count};
    std::uint64_t units = 0;
    while (source != text.end) {
        if (text.end - source >= static_cast<std::ptrdiff_t>(Stretch::size)) {
            if (Stretch::is_ascii(source)) {
                units += Stretch::size;
                source += Stretch::size;
                continue;
            }
            const Stretch stretch(source);
            if (stretch.is_regular()) {
                const unsigned int whole = stretch.whole();
                const std::uint64_t counted = kord::lowest(whole);
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
