// UTF-16 to UTF-8. Converting and counting share the rule for the length of a character, and one step alone knows what
// is none; blocks of characters that are as they should be go faster, and come to the same.
#include "convert/shuffles.h"
#include "core/lanes.h"

#include <kord/convert.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

using Bytes = kord::Lanes<char>;
using Units = kord::Lanes<unsigned short>;

constexpr std::ptrdiff_t block = Bytes::count;

void store(Bytes bytes, unsigned char* p) noexcept {
    bytes.store(reinterpret_cast<char*>(p));
}

// ---- one character -------------------------------------------------------------------------------------------------

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

// ---- blocks --------------------------------------------------------------------------------------------------------

/// Writes some blocks of units as a byte each if they are ASCII; says whether they are.
template <std::size_t blocks>
[[gnu::always_inline]] inline bool encode_ascii(const unsigned short* at, unsigned char* to) noexcept {
    Units units[2 * blocks], all = Units::splat(0);
    for (Units& part : units) {
        part = Units::load(at);
        all = all | part;
        at += Units::count;
    }
    if (!all.is_ascii()) return false;
    for (std::size_t i = 0; i != 2 * blocks; i += 2) {
        store(narrow(units[i], units[i + 1]), to);
        to += block;
    }
    return true;
}

Units surrogates(Units units) noexcept {
    return equal(units & Units::splat(0xF800), Units::splat(0xD800));
}

/// Eight units, none a surrogate, taken apart into bytes: the first one of three, and the last two.
struct Cells {
    Units starts, ends;
    Units ones;         ///< the units of one byte
    unsigned int sizes; ///< two bits for each unit, as in the masks of `QuadGaps`

    [[gnu::always_inline]] explicit Cells(Units units) noexcept {
        ones = below(units, 0x80);
        const Units fewer = below(units, 0x800);
        const Units six_bits = Units::splat(0x3F);
        const Units last = without((units & six_bits) | Units::splat(0x80), ones) | (units & ones);
        const Units second =
            (Units::shift_right<6>(units) & six_bits) | (fewer & Units::splat(0x40)) | Units::splat(0x80);
        starts = Units::shift_right<12>(units) | Units::splat(0xE0);
        ends = second | Units::shift_left<8>(last);
        sizes = kord::lanes_as<char>(fewer & (ones | Units::splat(0xFF00))).top_bits();
    }

    bool has_threes() const noexcept { return (sizes & 0xAAAA) != 0xAAAA; }

    /// How many bytes the first n units are.
    std::ptrdiff_t bytes_of_first(std::ptrdiff_t n) const noexcept {
        const unsigned int those = sizes & ((1u << 2 * n) - 1);
        const auto& rows = kord::quad_gaps.rows; // a byte less for each bit
        return 3 * n + rows[those & 0xFF].length + rows[those >> 8].length - 2 * kord::QuadGaps::longest;
    }
};

/// What the first or the last units of a block are.
struct Run {
    Bytes bytes; ///< and zeros
    std::ptrdiff_t length;

    [[gnu::always_inline]] Run(Units cells, const kord::GapRow& row) noexcept
        : bytes(Bytes::shuffle(kord::lanes_as<char>(cells), row.places.from)), length(row.length) {}
};
/// All eight, none of three bytes.
[[gnu::always_inline]] inline Run in_pairs(const Cells& cells) noexcept {
    return {cells.ends, kord::pair_gaps.rows[cells.ones.bits()]};
}
[[gnu::always_inline]] inline Run first_four(const Cells& cells) noexcept {
    return {Units::interleave_first(cells.starts, cells.ends), kord::quad_gaps.rows[cells.sizes & 0xFF]};
}
[[gnu::always_inline]] inline Run last_four(const Cells& cells) noexcept {
    return {Units::interleave_last(cells.starts, cells.ends), kord::quad_gaps.rows[cells.sizes >> 8]};
}

/// Writes a block and returns where it ends. Up to eight bytes behind that may be written.
[[gnu::always_inline]] inline unsigned char* encode_block(const Cells& cells, unsigned char* to) noexcept {
    if (!cells.has_threes()) {
        const Run pairs = in_pairs(cells);
        store(pairs.bytes, to);
        return to + pairs.length;
    }
    const Run front = first_four(cells), back = last_four(cells);
    store(front.bytes, to);
    to += front.length;
    back.bytes.store_12(to);
    return to + back.length;
}

/// Writes the first n bytes, 8 to 16, and nothing behind them.
[[gnu::always_inline]] inline unsigned char* store_first(Bytes bytes, std::ptrdiff_t n, unsigned char* to) noexcept {
    bytes.store_8(to);
    Bytes::shuffle(bytes, kord::shifts.by(n - 8)).store_8(to + n - 8);
    return to + n;
}

/// The same as `encode_block` with nothing written behind.
[[gnu::always_inline]] inline unsigned char* encode_last_block(const Cells& cells, unsigned char* to) noexcept {
    if (!cells.has_threes()) {
        const Run pairs = in_pairs(cells);
        return store_first(pairs.bytes, pairs.length, to);
    }
    if (cells.sizes >> 8 == 0)
        return encode_block(cells, to); // the last four are the 12 bytes that are stored for them
    const Run front = first_four(cells), back = last_four(cells);
    const std::ptrdiff_t n = front.length + back.length;
    if (n < block) {
        return store_first(front.bytes | Bytes::shuffle(back.bytes, kord::shifts.by(-front.length)), n, to);
    }
    store(front.bytes, to);
    const Bytes end_of_front = Bytes::shuffle(front.bytes, kord::shifts.by(n - block));
    store(end_of_front | Bytes::shuffle(back.bytes, kord::shifts.by(back.length - block)), to + n - block);
    return to + n;
}

/// Writes eight units if they are four pairs; says whether they are.
[[gnu::always_inline]] inline bool encode_four_pairs(Units units, unsigned char* to) noexcept {
    struct InTurn {
        unsigned short codes[Units::count];
        constexpr InTurn(unsigned int first, unsigned int second) : codes{} {
            for (unsigned int i = 0; i != Units::count; ++i)
                codes[i] = static_cast<unsigned short>(i % 2 == 0 ? first : second);
        }
    };
    static constexpr InTurn limits(0xD800, 0xDC00), less(0x10000 - 0xD7C0, 0x10000 - 0xDC00);
    static constexpr InTurn of_first(0xFFFF, 0), of_second(0, 0xFFFF), last_two(0, 0x0C00), marks(0x80F0, 0x8080);
    const auto load = [](const InTurn& codes) { return Units::load(codes.codes); };
    if (equal(units & Units::splat(0xFC00), load(limits)).mask() != Units::all) return false;
    // The upper bits of a character and the lower ten; then twelve bits each, which are two bytes.
    const Units bits = units + load(less);
    const Units uppers =
        kord::lanes_as<unsigned short>(Bytes::shuffle(kord::lanes_as<char>(bits), kord::shifts.by(-2)));
    const Units twelve = (Units::shift_right<2>(bits) & load(of_first)) | (bits & load(of_second)) |
                         (Units::shift_left<10>(uppers) & load(last_two));
    const Units bytes =
        Units::shift_right<6>(twelve) | (Units::shift_left<8>(twelve) & Units::splat(0x3F00)) | load(marks);
    store(kord::lanes_as<char>(bytes), to);
    return true;
}

/// Writes what is left by blocks as long as they have no surrogates or are four pairs. The last block is begun before
/// its place: the same bytes are written there once more. The text has at least eight units.
[[gnu::always_inline]] inline void encode_last_blocks(const unsigned short*& at, const unsigned short* end,
                                                      unsigned char*& to) noexcept {
    while (at != end) {
        const unsigned short* const start = std::min(at, end - Units::count);
        const Units units = Units::load(start);
        const std::ptrdiff_t again = at - start;
        if (surrogates(units).mask() == 0) {
            const Cells cells(units);
            to = encode_last_block(cells, to - cells.bytes_of_first(again));
        } else if (encode_four_pairs(units, to - 2 * again)) {
            to += block - 2 * again;
        } else {
            return;
        }
        at = start + Units::count;
    }
}

template <bool shuffles>
[[gnu::always_inline]] inline unsigned char* encode_all(const unsigned short* begin, const unsigned short* at,
                                                        const unsigned short* end, unsigned char* to) noexcept {
    while (end - at >= block) {
        const Units first = Units::load(at), next = Units::load(at + Units::count);
        if (encode_ascii<1>(at, to)) {
            at += block;
            to += block;
        } else if (shuffles && (surrogates(first) | surrogates(next)).mask() == 0) {
            // What is written behind the first units will be overwritten by the next, which are a byte each at least.
            to = encode_block(Cells(first), to);
            at += Units::count;
        } else if (shuffles && encode_four_pairs(first, to)) {
            at += Units::count;
            to += block;
        } else {
            for (const unsigned short* const stop = at + Units::count; at < stop;) {
                if (!encode(at, end, to)) return nullptr;
            }
        }
    }
    if (shuffles && end - begin >= static_cast<std::ptrdiff_t>(Units::count)) encode_last_blocks(at, end, to);
    while (at != end) {
        if (!encode(at, end, to)) return nullptr;
    }
    return to;
}

KORD_SHUFFLES unsigned char* encode_shuffling(const unsigned short* begin, const unsigned short* at,
                                              const unsigned short* end, unsigned char* to) noexcept {
    return encode_all<true>(begin, at, end, to);
}
[[gnu::noinline]] unsigned char* encode_plainly(const unsigned short* begin, const unsigned short* at,
                                                const unsigned short* end, unsigned char* to) noexcept {
    return encode_all<false>(begin, at, end, to);
}

// ---- counting ------------------------------------------------------------------------------------------------------

/// The bytes that eight units stand for, lane by lane.
[[gnu::always_inline]] inline Units bytes_of(Units units) noexcept {
    // Three each, one less below each limit; of a pair, one more for the first and three less for the second.
    const Units is_first = equal(units & Units::splat(0xFC00), Units::splat(0xD800));
    const Units is_second = equal(units & Units::splat(0xFC00), Units::splat(0xDC00));
    return Units::splat(3) + below(units, 0x80) + below(units, 0x800) + (is_first & Units::splat(1)) +
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

// Short ASCII takes so few instructions that it counts how many cache lines they lie in.
[[gnu::aligned(64)]] unsigned char* KordConvert::ConvertUtf8(const unsigned short* source, unsigned char* target,
                                                             unsigned long count) noexcept {
    const unsigned short* const end = source + count;
    const auto encode_rest = [&] {
        const unsigned short* const begin = end - count;
        return kord::has_shuffles() ? encode_shuffling(begin, source, end, target)
                                    : encode_plainly(begin, source, end, target);
    };
    // Text that is ASCII throughout, or begins so, is not worth getting ready for more.
    for (; end - source >= 2 * block; source += 2 * block, target += 2 * block) {
        if (!encode_ascii<2>(source, target)) return encode_rest();
    }
    if (end - source >= block) {
        if (!encode_ascii<1>(source, target)) return encode_rest();
        source += block;
        target += block;
    }
    const std::ptrdiff_t rest = end - source;
    if (rest == 0) return target;
    // What is left of a block is begun before it.
    if (count >= block && encode_ascii<1>(end - block, target + rest - block)) return target + rest;
    return encode_rest();
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
    for (; source != end; ++source) bytes += bytes_of(*source);
    return static_cast<unsigned long>(bytes);
}
