// UTF-8 to UTF-16 and back: count, make room, convert. And what Latin-1 leaves of a line.

#include "tour.h"
#include "well_formed.h"

#include <kord/kord.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <iostream>
#include <stdexcept>

namespace {

using Bytes = std::vector<unsigned char>;
using Units = std::vector<unsigned short>;
using Wide = KordCharacterRange<unsigned short>;

Wide range_of(const Units& units) {
    return {units.data(), 0, static_cast<unsigned int>(units.size())};
}

/// The UTF-16 of UTF-8, which need not be well-formed.
Units to_utf16(const Bytes& bytes) {
    const auto count = static_cast<unsigned long>(bytes.size());
    Units units(KordConvert::CountUtf8(bytes.data(), count));
    const auto room = static_cast<unsigned long>(units.size());
    const unsigned short* const end = KordConvert::ConvertUtf8(bytes.data(), units.data(), room);
    if (end != units.data() + units.size()) throw std::logic_error("the conversion does not write what was counted");
    return units;
}

/// The UTF-8 of UTF-16; empty if a surrogate has no partner.
Bytes to_utf8(const Wide& units) {
    Bytes bytes(KordConvert::CountUtf8(units.data(), units.length()));
    const unsigned char* const end = KordConvert::ConvertUtf8(units.data(), bytes.data(), units.length());
    if (end != bytes.data() + bytes.size()) bytes.clear();
    return bytes;
}

std::string printable(const Wide& units) {
    const Bytes bytes = to_utf8(units);
    return {bytes.begin(), bytes.end()};
}

/// Prints a row of cells behind a label, such as the numbers of characters in each class.
template <class Cell>
void print_row(const char* label, const char* column, std::initializer_list<Cell> cells) {
    astring line, cell;
    line.format("%-20s", label);
    for (const Cell& value : cells) line.append(cell.format(column, value));
    std::cout << view(line) << '\n';
}

void print_conversion(const char* label, unsigned long size, const char* unit, double characters_per_second) {
    astring line, rate;
    line.format("%-20s", label);
    line.append(rate.format("%10u", size)).append(rate.format(" %-6s", unit));
    line.append(rate.format("%10.1f million characters per second", characters_per_second / 1e6));
    std::cout << view(line) << '\n';
}

/// Prints the characters by the bytes that they take. Returns how many there are; the text must be well-formed.
unsigned int print_classes(const Bytes& text) {
    std::array<unsigned int, 5> counts{}; // of bytes that begin none, and of characters of one byte to four
    for (const unsigned char byte : text) ++counts[utf8_form(byte).length];
    const unsigned int all = static_cast<unsigned int>(text.size()) - counts[0];
    print_row("bytes a character", "%10s", {"1", "2", "3", "4", "all"});
    print_row("characters", "%10u", {counts[1], counts[2], counts[3], counts[4], all});
    return all;
}

/// Says whether the text comes back as it was.
bool show_utf8(const Bytes& text, const Wide& wide) {
    const double characters = print_classes(text);
    const double there = best_time([&text] { to_utf16(text); });
    const double back = best_time([&wide] { to_utf8(wide); });
    print_conversion("UTF-8 to UTF-16", wide.length(), "units", characters / std::max(there, 1e-9));
    const Bytes again = to_utf8(wide);
    print_conversion("UTF-16 to UTF-8", static_cast<unsigned long>(again.size()), "bytes",
                     characters / std::max(back, 1e-9));
    std::cout << (again == text ? "The text comes back byte for byte.\n" : "THE TEXT COMES BACK CHANGED.\n");
    return again == text;
}

bool is_control(unsigned short unit) {
    return unit < 0x20 || (unit > 0x7E && unit < 0xA0);
}
bool is_accented(unsigned short unit) {
    return unit >= 0xA0 && unit <= 0xFF;
}
bool is_foreign(unsigned short unit) {
    return unit > 0xFF;
}
bool has(const Wide& line, bool (*is)(unsigned short)) {
    return std::any_of(line.begin(), line.end(), is);
}

/// The beginning of the first line that is fit to be printed and for which `wanted` is true.
template <class Wanted>
Wide find_line(const Wide& text, const Wanted& wanted) {
    for (unsigned int first = 0; first < text.length();) {
        const unsigned int last = std::min(text.find(static_cast<unsigned short>('\n'), first), text.length());
        Wide line(text, first, std::min(last - first, 72u));
        line.remove_trailing('\r');
        if (!has(line, is_control) && wanted(line)) return line;
        first = last + 1;
    }
    return {};
}

/// Takes a line to Latin-1 and back by the adapters. Says whether nothing but what Latin-1 does not have was lost.
bool show_latin1(const Wide& line) {
    const astring narrow = AstringAdapter(line);
    const ustring again = UstringAdapter(narrow);
    unsigned int kept = 0;
    bool right = again.length() == line.length();
    for (unsigned int i = 0; right && i != line.length(); ++i) {
        if (again[i] == line[i]) ++kept;
        right = again[i] == (line[i] <= 0xFF ? line[i] : '?');
    }
    std::cout << "Latin-1 keeps " << kept << " of " << line.length() << " units: " << printable(again) << '\n';
    return right;
}

} // namespace

bool tour_encodings(const std::string& name) {
    const std::string file = read_file(name);
    const Bytes text(file.begin(), file.end());
    const Units units = to_utf16(text);
    const Wide wide = range_of(units);
    std::cout << "\nTranscoding UTF-8 text from " << name << ": " << text.size() << " bytes\n\n";

    bool right = true;
    if (const std::size_t good = well_formed(text.data(), text.size()).length; good == text.size()) {
        right = show_utf8(text, wide);
    } else {
        std::cout << "Malformed at byte " << good << "; read all the same, as " << units.size() << " units, "
                  << std::count(units.begin(), units.end(), 0xFFFD) << " of them U+FFFD.\n";
    }
    const Wide lines[] = {
        find_line(wide, [](const Wide& line) { return has(line, is_accented) && !has(line, is_foreign); }),
        find_line(wide, [](const Wide& line) { return has(line, is_foreign); }),
    };
    for (const Wide& line : lines) {
        if (!line.empty()) right = show_latin1(line) && right;
    }
    return right;
}
