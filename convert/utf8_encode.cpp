// UTF-16 to UTF-8. Converting and counting share the rule for the length of a character, and one step alone knows what
// is none; blocks of characters that are as they should be go faster, and come to the same.
#include "convert/shuffles.h"
#include "core/copy.h"
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

/// The same with nothing written behind, by way of a copy.
[[gnu::always_inline]] inline unsigned char* encode_last_block(Units units, unsigned char* to) noexcept {
    unsigned char text[3 * Units::count + 8];
    const auto n = static_cast<std::size_t>(encode_block(units, text) - text);
    if (n >= static_cast<std::size_t>(block)) {
        kord::copy_two_words<Bytes>(to, text, n);
    } else {
        kord::copy_two_words<std::uint64_t>(to, text, n);
    }
    return to + n;
}

template <bool shuffles>
[[gnu::always_inline]] inline unsigned char* encode_all(const unsigned short* at, const unsigned short* end,
                                                        unsigned char* to) noexcept {
    while (end - at >= block) {
        const Units first = Units::load(at), next = Units::load(at + Units::count);
        if (encode_ascii<1>(at, to)) {
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
    if (shuffles && end - at >= static_cast<std::ptrdiff_t>(Units::count)) {
        const Units units = Units::load(at);
        if (surrogates(units).mask() == 0) {
            to = encode_last_block(units, to);
            at += Units::count;
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

// Short ASCII takes so few instructions that it counts how many cache lines they lie in.
[[gnu::aligned(64)]] unsigned char* KordConvert::ConvertUtf8(const unsigned short* source, unsigned char* target,
                                                             unsigned long count) noexcept {
    const unsigned short* const end = source + count;
    const auto encode_rest = [&] {
        return kord::has_shuffles() ? encode_shuffling(source, end, target) : encode_plainly(source, end, target);
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
