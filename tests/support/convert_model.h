#ifndef KORD_TESTS_CONVERT_MODEL_H
#define KORD_TESTS_CONVERT_MODEL_H

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

using Utf8 = std::vector<unsigned char>;
using Utf16 = std::vector<unsigned short>;

/// How many bytes a character has behind its first.
constexpr unsigned int bytes_behind(char32_t c) {
    return c < 0x80 ? 0 : c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
}
/// Appends a value in its form of so many bytes behind the first, even if a
/// shorter one would do.
inline void put(Utf8& text, char32_t value, unsigned int more) {
    const unsigned int leads[] = {0, 0xC0, 0xE0, 0xF0};
    text.push_back(static_cast<unsigned char>(leads[more] + (value >> 6 * more)));
    while (more-- != 0) text.push_back(static_cast<unsigned char>(0x80 + (value >> 6 * more) % 64));
}

/// The rules for units once more, told plainly: the bytes up to the first unit that has none, and whether there is one.
struct Encoded {
    Utf8 text;
    bool failed = false;

    explicit Encoded(std::span<const unsigned short> units) {
        for (std::size_t i = 0; i != units.size(); ++i) {
            char32_t c = units[i];
            if (c / 0x800 == 0x1B) {
                failed = c / 0x400 == 0x37 || i + 1 == units.size() || units[i + 1] / 0x400 != 0x37;
                if (failed) return;
                c = 0x10000 + (c - 0xD800) * 0x400 + (units[++i] - 0xDC00u);
            }
            put(text, c, bytes_behind(c));
        }
    }
    /// What is counted without looking at more than one unit.
    static std::size_t count(std::span<const unsigned short> units) {
        std::size_t n = 0;
        for (const unsigned short u : units) n += u / 0x400 == 0x36 ? 4 : u / 0x400 == 0x37 ? 0 : 1 + bytes_behind(u);
        return n;
    }
};

/// The rules for bytes: the units, and for every number of units from 0 on how many bytes are read to write so many,
/// and whether they end with a character.
struct Decoded {
    struct Room {
        std::size_t read;
        bool fits;
    };
    Utf16 text;
    std::vector<Room> rooms{{0, true}};

    explicit Decoded(std::span<const unsigned char> bytes) {
        for (std::size_t i = 0; i != bytes.size();) {
            const unsigned int lead = bytes[i++];
            const bool none = (lead >= 0x80 && lead < 0xC0) || lead >= 0xF8;
            unsigned int missing = lead < 0x80 || none ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
            char32_t value = lead & (missing == 0 ? 0x7F : 0x3F >> missing);
            for (; missing != 0 && i != bytes.size() && bytes[i] >= 0x80 && bytes[i] < 0xC0; --missing)
                value = value * 64 + bytes[i++] % 64;
            const bool cut = missing != 0; // by the next byte, which was looked at, or by the end
            if (cut && i == bytes.size()) return;
            if (none || cut) value = 0xFFFD;
            if (value >= 0x10000) add(0xD7C0 + (value >> 10), i, false);
            add(value >= 0x10000 ? 0xDC00 + value % 0x400 : value, i + cut, true);
        }
    }
    /// The units that the first `bytes` bytes become.
    std::size_t count(std::size_t bytes) const {
        const auto behind = [](std::size_t n, const Room& room) { return n < room.read; };
        return static_cast<std::size_t>(std::upper_bound(rooms.begin(), rooms.end(), bytes, behind) - rooms.begin()) -
               1;
    }

  private:
    void add(char32_t unit, std::size_t bytes, bool is_end) {
        text.push_back(static_cast<unsigned short>(unit));
        rooms.push_back({bytes, is_end});
    }
};

#endif
