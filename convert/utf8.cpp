// UTF-8. Converting and counting share one step each way, a character at a time, which alone knows the rules; blocks of
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

void store(Bytes bytes, unsigned char* p) noexcept {
    bytes.store(reinterpret_cast<char*>(p));
}

// ---- units to bytes, one character ---------------------------------------------------------------------------------

/// How many bytes a unit stands for: the first one of a pair for all, the second for none.
constexpr unsigned int bytes_of(unsigned int unit) noexcept {
    if (unit < 0x80) return 1;
    if (unit < 0x800) return 2;
    if (unit < 0xD800 || unit > 0xDFFF) return 3;
    return unit < 0xDC00 ? 4 : 0;
}

constexpr unsigned char continuation(std::uint32_t bits) noexcept {
    return static_cast<unsigned char>(0x80 | (bits & 0x3F));
}

/// Writes the next character; false at a surrogate that is not one of a pair.
bool encode(const unsigned short*& at, const unsigned short* end, unsigned char*& to) noexcept {
    std::uint32_t c = *at++;
    const unsigned int length = bytes_of(c);
    switch (length) {
    case 0: return false;
    case 1: *to++ = static_cast<unsigned char>(c); return true;
    case 2: *to++ = static_cast<unsigned char>(0xC0 + (c >> 6)); break;
    case 3:
        *to++ = static_cast<unsigned char>(0xE0 + (c >> 12));
        *to++ = continuation(c >> 6);
        break;
    default:
        if (at == end || bytes_of(*at) != 0) return false;
        c = ((c - 0xD7C0) << 10) + (*at++ & 0x3FFu);
        *to++ = static_cast<unsigned char>(0xF0 + (c >> 18));
        *to++ = continuation(c >> 12);
        *to++ = continuation(c >> 6);
    }
    *to++ = continuation(c);
    return true;
}

// ---- units to bytes, blocks ----------------------------------------------------------------------------------------

Units surrogates(Units units) noexcept {
    return equal(units & Units::splat(0xF800), Units::splat(0xD800));
}

/// Writes eight units, none a surrogate, and returns where they end. Up to eight bytes behind that may be written.
[[gnu::always_inline]] inline unsigned char* encode_block(Units units, unsigned char* to) noexcept {
    const Units two = in_range(units, 0x80, 0xFFFF), three = in_range(units, 0x800, 0xFFFF);
    // The last two bytes of each character; of one byte the last is the unit itself.
    const Units six_bits = Units::splat(0x3F);
    const Units last = ((units & six_bits) | Units::splat(0x80)) & two;
    const Units second =
        (Units::shift_right<6>(units) & six_bits) | (Units::splat(0xC0) ^ (three & Units::splat(0x40)));
    const Units ends = second | Units::shift_left<8>(last | without(units, two));
    if (three.mask() == 0) {
        const auto& gaps = kord::pair_gaps.rows[two.bits()];
        store(Bytes::shuffle(kord::lanes_as<char>(ends), gaps.places.from), to);
        return to + gaps.length;
    }
    const Units starts = Units::shift_right<12>(units) | Units::splat(0xE0);
    const unsigned int twos = two.bits(), threes = three.bits();
    const auto& front = kord::quad_gaps.rows[(twos & 15) | (threes & 15) << 4];
    store(Bytes::shuffle(kord::lanes_as<char>(Units::interleave_first(starts, ends)), front.places.from), to);
    to += front.length;
    const auto& back = kord::quad_gaps.rows[twos >> 4 | (threes & 0xF0)];
    Bytes::shuffle(kord::lanes_as<char>(Units::interleave_last(starts, ends)), back.places.from).store_12(to);
    return to + back.length;
}

template <bool shuffles>
[[gnu::always_inline]] inline unsigned char* encode_all(const unsigned short* at, const unsigned short* end,
                                                        unsigned char* to) noexcept {
    while (end - at >= block) {
        const Units first = Units::load(at), next = Units::load(at + Units::count);
        if ((first | next).is_ascii()) {
            store(narrow(first, next), to);
            at += block;
            to += block;
        } else if (shuffles && (surrogates(first) | surrogates(next)).mask() == 0) {
            // What is written behind the first units will be overwritten by the next, which are a byte each at least.
            to = encode_block(first, to);
            at += Units::count;
        } else {
            for (const unsigned short* const stop = at + Units::count; at < stop;) {
                if (!encode(at, end, to)) return nullptr;
            }
        }
    }
    while (at != end) {
        if (!encode(at, end, to)) return nullptr;
    }
    return to;
}

KORD_SHUFFLES unsigned char* encode_shuffling(const unsigned short* at, const unsigned short* end,
                                              unsigned char* to) noexcept {
    return encode_all<true>(at, end, to);
}
[[gnu::noinline]] unsigned char* encode_plainly(const unsigned short* at, const unsigned short* end,
                                                unsigned char* to) noexcept {
    return encode_all<false>(at, end, to);
}

// ---- bytes to units, one character ---------------------------------------------------------------------------------

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

// ---- bytes to units, stretches -------------------------------------------------------------------------------------

/// What the bytes of a stretch, which starts with a character, are; a bit each.
template <unsigned int blocks>
struct Stretch {
    static constexpr unsigned int size = blocks * static_cast<unsigned int>(block);
    static constexpr std::uint64_t all = ~std::uint64_t{0} >> (64 - size);

    const unsigned char* bytes;
    std::uint64_t others = 0; ///< not ASCII
    std::uint64_t firsts = 0, firsts_of_three = 0, firsts_of_four = 0;

    /// Bit by bit from the top: set for what is not ASCII, then for first bytes, then for those of longer characters.
    [[gnu::always_inline]] explicit Stretch(const unsigned char* at) noexcept : bytes(at) {
        others = bits([](Bytes part) { return part; });
        if (others == 0) return;
        firsts = others & bits(twice);
        firsts_of_three = firsts & bits([](Bytes part) { return twice(twice(part)); });
        firsts_of_four = firsts_of_three & bits([](Bytes part) { return twice(twice(twice(part))); });
    }

    std::uint64_t continuations() const noexcept { return others & ~firsts; }

    /// Are all characters complete, and those of four bytes not another character's in disguise? Only the plain step
    /// knows how to take what is not.
    [[gnu::always_inline]] bool is_regular() const noexcept {
        const std::uint64_t expected = firsts << 1 | firsts_of_three << 2 | firsts_of_four << 3;
        if (((continuations() ^ expected) & all) != 0) return false;
        if (firsts_of_four == 0) return true;
        // No character begins with F8 and more; from F0 80 to F0 8F the value is one of fewer bytes.
        const std::uint64_t nothing = bits([](Bytes part) { return in_range(part, 0xF8, 0xFF); });
        const std::uint64_t least = bits([](Bytes part) { return equal(part, Bytes::splat(0xF0)); });
        const std::uint64_t low = bits([](Bytes part) { return in_range(part, 0x80, 0x8F); });
        return (nothing | (least << 1 & low)) == 0;
    }

    /// The bytes of the characters that the end does not cut off.
    unsigned int whole() const noexcept {
        const bool is_cut = (firsts >> (size - 1) | firsts_of_three >> (size - 2) | firsts_of_four >> (size - 3)) != 0;
        return is_cut ? 63 - static_cast<unsigned int>(std::countl_zero(firsts)) : size;
    }

  private:
    static Bytes twice(Bytes part) noexcept { return part + part; }

    /// The top bits of what the function makes of each block.
    template <class Make>
    [[gnu::always_inline]] std::uint64_t bits(const Make& make) const noexcept {
        std::uint64_t mask = 0;
        for (unsigned int i = 0; i != size; i += block) mask |= std::uint64_t{make(load(bytes + i)).top_bits()} << i;
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

/// Decodes most of a regular stretch. Up to a block behind it is read, and up to half a block behind the units written.
template <class S>
[[gnu::always_inline]] inline void decode_stretch(const S& stretch, const unsigned char*& at, unsigned short*& to,
                                                  const unsigned short* end) noexcept {
    // A byte ends a character if the one behind it does not continue it; of the last byte that is not known.
    const std::uint64_t ends = (~stretch.continuations() & S::all) >> 1;
    constexpr const kord::Spreads& tables = kord::spreads;
    constexpr unsigned int window = tables.window;
    unsigned int pos = 0;
    const auto spread_by = [&](unsigned int number) { spread_out(load(at + pos), tables.spreads[number]).store(to); };
    while (pos < S::size - window) {
        const std::uint64_t next_ends = ends >> pos;
        const auto entry = tables.of_ends[next_ends & ((1u << window) - 1)];
        unsigned int units = Units::count;
        if (entry.number != tables.none) {
            spread_by(entry.number);
            pos += entry.bytes;
            units = entry.units();
        } else if ((next_ends & 0xFF) == 0xFF) {
            widen_first(load(at + pos)).store(to);
            pos += units;
        } else if ((next_ends & 0x7FFF) == 0b100100100100100) {
            spread_by(tables.five_triples);
            pos += 15;
            units = 5;
        } else if ((next_ends & 0xFFFF) == 0b1000100010001000) {
            four_pairs(load(at + pos)).store(to);
            pos += 16;
        } else {
            const unsigned char* character = at + pos;
            decode_to(character, to, end);
            pos = static_cast<unsigned int>(character - at);
            units = 0;
        }
        to += units;
    }
    at += pos;
}

/// Decodes stretches of some blocks as long as there is room for all that may be written.
template <bool shuffles, unsigned int blocks>
[[gnu::always_inline]] inline void decode_stretches(const unsigned char*& at, unsigned short*& to,
                                                    const unsigned short* end) noexcept {
    // No unit takes less than a byte: where there is room for so many units, so many bytes can be read. The last block
    // that is decoded begins before the end of the stretch by more than a window.
    constexpr std::ptrdiff_t room = Stretch<blocks>::size + block - kord::Spreads::window;
    while (end - to >= room) {
        const Stretch<blocks> stretch(at);
        if (stretch.others == 0) {
            for (unsigned int i = 0; i != blocks; ++i, at += block, to += block) {
                store_widened(load(at), to);
            }
        } else if (shuffles && stretch.is_regular()) {
            decode_stretch(stretch, at, to, end);
        } else {
            for (const unsigned short* const stop = to + Units::count; to < stop;) decode_to(at, to, end);
        }
    }
}

template <bool shuffles>
[[gnu::always_inline]] inline unsigned short* decode_all(const unsigned char* at, unsigned short* to,
                                                         const unsigned short* end) noexcept {
    decode_stretches<shuffles, 4>(at, to, end);
    decode_stretches<shuffles, 1>(at, to, end);
    while (to != end) {
        if (end - to >= 8 && (kord::load_word<std::uint64_t>(at) & 0x8080808080808080) == 0) {
            for (unsigned int i = 0; i != 8; ++i) *to++ = *at++;
        } else if (!decode_to(at, to, end)) {
            return nullptr;
        }
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

/// The number of bits set, without the call that it is where the processor is not known to count them.
constexpr unsigned int bits_set(std::uint64_t word) noexcept {
    word -= word >> 1 & 0x5555555555555555;
    word = (word & 0x3333333333333333) + (word >> 2 & 0x3333333333333333);
    word = (word + (word >> 4)) & 0x0F0F0F0F0F0F0F0F;
    return static_cast<unsigned int>(word * 0x0101010101010101 >> 56);
}

// ---- counting ------------------------------------------------------------------------------------------------------

/// The bytes that eight units stand for, lane by lane.
[[gnu::always_inline]] inline Units bytes_of(Units units) noexcept {
    const Units one = Units::splat(1);
    // One each, one more from each limit on; of a pair, one more for the first and three less for the second.
    const Units is_first = equal(units & Units::splat(0xFC00), Units::splat(0xD800));
    const Units is_second = equal(units & Units::splat(0xFC00), Units::splat(0xDC00));
    return one + (in_range(units, 0x80, 0xFFFF) & one) + (in_range(units, 0x800, 0xFFFF) & one) + (is_first & one) +
           (is_second & Units::splat(0xFFFD));
}

std::uint64_t sum_of(Units units) noexcept {
    unsigned short each[Units::count];
    units.store(each);
    std::uint64_t sum = 0;
    for (const unsigned short n : each) sum += n;
    return sum;
}

} // namespace

unsigned char* KordConvert::ConvertUtf8(const unsigned short* source, unsigned char* target,
                                        unsigned long count) noexcept {
    // Text that is ASCII throughout, or begins so, is not worth getting ready for more.
    const unsigned short* const end = source + count;
    for (; end - source >= block; source += block, target += block) {
        const Units first = Units::load(source), next = Units::load(source + Units::count);
        if (!(first | next).is_ascii()) break;
        store(narrow(first, next), target);
    }
    const std::ptrdiff_t rest = end - source;
    if (rest == 0) return target;
    if (rest < block && count >= block) {
        const unsigned short* const last = end - block;
        const Units first = Units::load(last), next = Units::load(last + Units::count);
        if ((first | next).is_ascii()) {
            store(narrow(first, next), target + rest - block);
            return target + rest;
        }
    }
    return kord::has_shuffles() ? encode_shuffling(source, end, target) : encode_plainly(source, end, target);
}

unsigned short* KordConvert::ConvertUtf8(const unsigned char* source, unsigned short* target,
                                         unsigned long count) noexcept {
    unsigned short* const end = target + count;
    for (; end - target >= block; source += block, target += block) { // as above
        const Bytes bytes = load(source);
        if (!bytes.is_ascii()) break;
        store_widened(bytes, target);
    }
    const std::ptrdiff_t rest = end - target;
    if (rest == 0) return end;
    if (rest < block && count >= block) {
        const Bytes bytes = load(source + rest - block);
        if (bytes.is_ascii()) {
            store_widened(bytes, end - block);
            return end;
        }
    }
    return kord::has_shuffles() ? decode_shuffling(source, target, end) : decode_plainly(source, target, end);
}

unsigned long KordConvert::CountUtf8(const unsigned short* source, unsigned long count) noexcept {
    const unsigned short* const end = source + count;
    std::uint64_t bytes = 0;
    while (end - source >= static_cast<std::ptrdiff_t>(Units::count)) {
        // As many blocks as the sums of a lane have room for.
        constexpr std::ptrdiff_t most = 0xFFFF / 4;
        Units sums = Units::splat(0);
        for (std::ptrdiff_t n = std::min((end - source) / static_cast<std::ptrdiff_t>(Units::count), most); n != 0;
             --n, source += Units::count) {
            sums = sums + bytes_of(Units::load(source));
        }
        bytes += sum_of(sums);
    }
    for (; source != end; ++source) bytes += ::bytes_of(*source);
    return static_cast<unsigned long>(bytes);
}

unsigned long KordConvert::CountUtf8(const unsigned char* source, unsigned long count) noexcept {
    const EndsAt text{source + count};
    std::uint64_t units = 0;
    while (source != text.end) {
        using S = Stretch<4>;
        if (text.end - source >= static_cast<std::ptrdiff_t>(S::size)) {
            const S stretch(source);
            if (stretch.is_regular()) {
                const unsigned int whole = stretch.whole();
                const std::uint64_t counted = S::all >> (S::size - whole);
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
