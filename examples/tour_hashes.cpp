// Fingerprints of path names, and how evenly they would fill a hash table.

#include "tour.h"

#include <kord/kord.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iostream>

namespace {

/// A hash in its two forms: of what is between two pointers, and of a string in the way that its other overload takes.
struct Hash {
    const char* name;
    unsigned long (*between)(const char* begin, const char* end);
    unsigned long (*of_string)(const astring& text);
};
const Hash hashes[] = {
    {"FowlerNollVo", KordHash::FowlerNollVo, [](const astring& s) { return KordHash::FowlerNollVo(s.c_str()); }},
    {"Jenkins", KordHash::Jenkins, [](const astring& s) { return KordHash::Jenkins(s.data(), s.length()); }},
    {"OneAtATime", KordHash::OneAtATime, [](const astring& s) { return KordHash::OneAtATime(s.c_str()); }},
    {"ObjectSpace", KordHash::ObjectSpace,
     [](const astring& s) { return KordHash::ObjectSpace(s.data(), s.length()); }},
    {"RamakrishnaZobel", KordHash::RamakrishnaZobel,
     [](const astring& s) { return KordHash::RamakrishnaZobel(s.c_str()); }},
};

/// How a number of hashes came out, or would on average by pure chance.
struct Spread {
    double collisions; ///< texts whose hash another text before them has, too
    double used;       ///< buckets that are not empty
    double looks;      ///< texts to compare until one that is there is found, on average
};

Spread spread_of(std::vector<std::uint32_t> values, std::size_t buckets) {
    Spread spread{};
    std::vector<unsigned int> filled(buckets);
    for (const std::uint32_t value : values) spread.looks += ++filled[value % buckets];
    spread.looks /= static_cast<double>(values.size());
    spread.used = static_cast<double>(buckets) - static_cast<double>(std::count(filled.begin(), filled.end(), 0u));
    std::sort(values.begin(), values.end());
    const auto distinct = std::unique(values.begin(), values.end()) - values.begin();
    spread.collisions = static_cast<double>(values.size()) - static_cast<double>(distinct);
    return spread;
}

Spread spread_by_chance(double texts, double buckets) {
    return {texts * (texts - 1) / 2 / 4294967296.0, buckets * (1 - std::pow(1 - 1 / buckets, texts)),
            1 + (texts - 1) / 2 / buckets};
}

void print_row(const char* name, const astring& sum, const char* decimals, const Spread& spread, const astring& rate) {
    astring line, cell;
    line.format("%-18s", name);
    line.append(cell.format("%10s", sum)).append(cell.format(decimals, spread.collisions, spread.used));
    line.append(cell.format("%8.2f", spread.looks)).append(cell.format("%12s", rate));
    line.remove_trailing(' ');
    std::cout << view(line) << '\n';
}

/// Hashes all paths in turn and prints what came of it.
void show(const Hash& hash, const std::vector<astring>& paths, std::size_t buckets) {
    std::vector<std::uint32_t> values(paths.size());
    const double seconds = best_time([&] {
        std::transform(paths.begin(), paths.end(), values.begin(), [&hash](const astring& path) {
            return static_cast<std::uint32_t>(hash.between(path.begin(), path.end()));
        });
    });
    std::uint32_t sum = 0;
    double characters = 0;
    for (const std::uint32_t value : values) sum += value;
    for (const astring& path : paths) characters += path.length();
    astring sum_text, rate;
    sum_text.format("%08X", sum);
    rate.format("%.1f M", characters / std::max(seconds, 1e-9) / 1e6);
    print_row(hash.name, sum_text, "%12.0f%10.0f", spread_of(values, buckets), rate);
}

/// Does the hash say the same in both forms? The one that takes a string may end at a zero.
bool agrees(const Hash& hash, const std::vector<astring>& paths) {
    return std::all_of(paths.begin(), paths.end(), [&hash](const astring& path) {
        return path.find('\0') != path.npos || hash.of_string(path) == hash.between(path.begin(), path.end());
    });
}

/// Leaves one of each.
void make_distinct(std::vector<astring>& paths) {
    std::sort(paths.begin(), paths.end(), [](const astring& a, const astring& b) { return a.compare(b) < 0; });
    const auto same = [](const astring& a, const astring& b) { return a.compare(b) == 0; };
    paths.erase(std::unique(paths.begin(), paths.end(), same), paths.end());
}

} // namespace

bool tour_hashes(std::vector<astring> paths) {
    make_distinct(paths);
    if (paths.empty()) return true;
    std::size_t buckets = 1;
    while (buckets < paths.size()) buckets *= 2;
    std::cout << "\nFingerprints of " << paths.size() << " distinct paths, in " << buckets << " buckets\n\n"
              << "                         sum  collisions      used   looks  characters per second\n";
    bool agree = true;
    for (const Hash& hash : hashes) {
        show(hash, paths, buckets);
        agree = agrees(hash, paths) && agree;
    }
    const Spread chance = spread_by_chance(static_cast<double>(paths.size()), static_cast<double>(buckets));
    print_row("by chance", "", "%12.2f%10.1f", chance, "");
    std::cout << (agree ? "Both forms of each hash agree.\n" : "THE FORMS OF A HASH DIFFER.\n");
    return agree;
}
