#ifndef KORD_CONVERT_STRETCH_H
#define KORD_CONVERT_STRETCH_H

#include "convert/shuffles.h"
#include "core/lanes.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

/// Up to 64 bytes of UTF-8 looked at at once.
namespace kord {

/// The lowest n bits, 1 to 64.
constexpr std::uint64_t lowest(std::size_t n) noexcept {
    return ~std::uint64_t{0} >> (-n % 64);
}

/// A bit for each byte of a stretch that starts with a character. `firsts` are the bytes from 0xC0 on,
/// `firsts_of_three` from 0xE0 on, `firsts_of_four` from 0xF0 on: each holds the next.
struct Marks {
    std::uint64_t others = 0; ///< not ASCII
    std::uint64_t firsts = 0, firsts_of_three = 0, firsts_of_four = 0;

    Marks() noexcept = default;
    /// Out of the first, second, third and fourth bits of all bytes.
    Marks(std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d) noexcept
        : others(a), firsts(others & b), firsts_of_three(firsts & c), firsts_of_four(firsts_of_three & d) {}

    std::uint64_t continuations() const noexcept { return others & ~firsts; }

    /// The continuation bytes that belong to no character, and the bytes where one is missing: none of the stretch if
    /// all characters are complete, but for the last one.
    std::uint64_t errors() const noexcept {
        return continuations() ^ (firsts << 1 | firsts_of_three << 2 | firsts_of_four << 3);
    }

    /// Where there are no errors, the last bytes of characters.
    std::uint64_t ends() const noexcept {
        return ~others | (firsts & ~firsts_of_three) << 1 | (firsts_of_three & ~firsts_of_four) << 2 |
               firsts_of_four << 3;
    }

    /// The bytes of 64 that are in characters which the end does not cut off.
    unsigned int whole() const noexcept {
        const bool is_cut = (firsts >> 63 | firsts_of_three >> 62 | firsts_of_four >> 61) != 0;
        return is_cut ? 63 - static_cast<unsigned int>(std::countl_zero(firsts)) : 64;
    }
};

/// 64 bytes at hand and their marks.
struct Stretch : Marks {
    using Bytes = Lanes<char>;
    static constexpr unsigned int size = 64;

    Bytes parts[size / Bytes::count];

    [[gnu::always_inline]] explicit Stretch(const unsigned char* at) noexcept {
        for (Bytes& part : parts) {
            part = Bytes::load(reinterpret_cast<const char*>(at));
            at += Bytes::count;
        }
        // One by one: marks that are made as a whole and copied here go by way of memory.
        others = bits([](Bytes part) { return part; });
        if (others == 0) return;
        firsts = others & bits(twice);
        firsts_of_three = firsts & bits([](Bytes part) { return twice(twice(part)); });
        firsts_of_four = firsts_of_three & bits([](Bytes part) { return twice(twice(twice(part))); });
    }

    /// Is a stretch ASCII throughout? Sooner said than its marks are made.
    [[gnu::always_inline]] static bool is_ascii(const unsigned char* at) noexcept {
        Bytes all = Bytes::splat(0);
        for (unsigned int i = 0; i != size; i += Bytes::count) {
            all = all | Bytes::load(reinterpret_cast<const char*>(at + i));
        }
        return all.is_ascii();
    }

    /// Are all characters complete, but for the last one, and those of four bytes not another character's in disguise?
    /// Only the plain step knows how to take what is not.
    [[gnu::always_inline]] bool is_regular() const noexcept {
        if (errors() != 0) return false;
        if (firsts_of_four == 0) return true;
        // No character begins with F8 and more, whose fifth bit is set; from F0 80 to F0 8F the value is one of fewer
        // bytes.
        if ((firsts_of_four & bits([](Bytes part) { return twice(twice(twice(twice(part)))); })) != 0) return false;
        const std::uint64_t low = bits([](Bytes part) { return in_range(part, 0x80, 0x8F); });
        if ((firsts_of_four << 1 & low) == 0) return true;
        const std::uint64_t least = bits([](Bytes part) { return equal(part, Bytes::splat(0xF0)); });
        return (least << 1 & low) == 0;
    }

  private:
    static Bytes twice(Bytes part) noexcept { return part + part; }

    /// The top bits of what the function makes of each block.
    template <class Make>
    [[gnu::always_inline]] std::uint64_t bits(const Make& make) const noexcept {
        std::uint64_t mask = 0;
        unsigned int place = 0;
        for (const Bytes part : parts) {
            mask |= std::uint64_t{make(part).top_bits()} << place;
            place += Bytes::count;
        }
        return mask;
    }
};

// ---- stretches of which no byte behind the last can be read --------------------------------------------------------

/// 16 bytes from `at` on as far as they lie before the limit, which is behind `at`, and zeros for the others. The 16
/// bytes before the limit can be read.
[[gnu::always_inline]] inline Lanes<char> load_before(const unsigned char* at, const unsigned char* limit) noexcept {
    using Bytes = Lanes<char>;
    const unsigned char* const start = std::min(at, limit - Bytes::count);
    return Bytes::shuffle(Bytes::load(reinterpret_cast<const char*>(start)), shifts.by(at - start));
}

/// The marks of n bytes, 16 to 64; those behind them are marked as ASCII. The last block is loaded from before its
/// place and shifted there, which is sooner done than to load it as above.
[[gnu::always_inline]] inline Marks marks_of(const unsigned char* at, std::size_t n) noexcept {
    using Units = Lanes<unsigned short>;
    constexpr std::size_t block = Lanes<char>::count;
    std::uint64_t a = 0, b = 0, c = 0, d = 0;
    const auto add_before = [&](const unsigned char* p, std::size_t skipped) {
        const auto add = [skipped](std::uint64_t& mask, Units bytes) {
            mask = mask << block | lanes_as<char>(bytes).top_bits() >> skipped;
        };
        const auto bytes = lanes_as<unsigned short>(Lanes<char>::load(reinterpret_cast<const char*>(p)));
        add(a, bytes);
        add(b, Units::shift_left<1>(bytes));
        add(c, Units::shift_left<2>(bytes));
        add(d, Units::shift_left<3>(bytes));
    };
    add_before(at + n - block, -n % block);
    for (std::size_t rest = (n - 1) / block; rest-- != 0;) add_before(at + rest * block, 0);
    return {a, b, c, d};
}

/// The marks of a block.
[[gnu::always_inline]] inline Marks marks_of(Lanes<char> bytes) noexcept {
    using Units = Lanes<unsigned short>;
    const auto units = lanes_as<unsigned short>(bytes);
    return {bytes.top_bits(), lanes_as<char>(Units::shift_left<1>(units)).top_bits(),
            lanes_as<char>(Units::shift_left<2>(units)).top_bits(),
            lanes_as<char>(Units::shift_left<3>(units)).top_bits()};
}

} // namespace kord

#endif
