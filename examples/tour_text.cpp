// A text searched, sorted and read for numbers in both widths. It may be of any size: a string would hold at most
// 0x100000 characters, a range points to as many as there are.

#include "tour_findings.h"

#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <map>
#include <sstream>
#include <utility>

namespace {

using Counts = std::map<std::string_view, int>;

/// How often each word occurs that is fit to be printed.
Counts count_words(const KordCharacterRange<char>& text) {
    const aliteral letters("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
    Counts counts;
    for_each_piece<char>(text, aliteral(tour_no_word), [&](const KordCharacterRange<char>& word) {
        const bool fit = word.length() > 2 && word.length() < 17 && word.find_first_not_of(letters) == word.npos;
        if (fit) ++counts[view(word)];
    });
    return counts;
}

/// The needles: a frequent word, a longer frequent one, that in capitals, a rare one, and one that does not occur.
std::vector<astring> choose_needles(const KordCharacterRange<char>& text) {
    std::vector<astring> needles;
    const auto add = [&needles](const astring& needle) {
        const auto same = [&needle](const astring& other) { return other.compare(needle) == 0; };
        if (std::none_of(needles.begin(), needles.end(), same)) needles.push_back(needle);
    };
    const KordCharacterRange<char> beginning(text, 0, 0x100000); // tells enough about a longer text
    if (const Counts counts = count_words(beginning); !counts.empty()) {
        const auto most = [&counts](const auto& rank) {
            const auto less = [&rank](const auto& a, const auto& b) { return rank(a) < rank(b); };
            const std::string_view word = std::max_element(counts.begin(), counts.end(), less)->first;
            return astring(word.data(), word.size());
        };
        add(most([](const auto& word) { return word.second; }));
        astring longer = most([](const auto& word) { return std::pair(word.first.size() > 5, word.second); });
        add(longer);
        add(longer.make_upper());
        add(most([](const auto& word) { return std::pair(-word.second, word.first.size()); }));
    }
    astring absent("unheard-of");
    while (text.find_nocase(absent) != text.npos) absent += '-';
    add(absent);
    return needles;
}

/// A rate to two or three digits, with the letter for thousands, millions or thousands of millions.
std::string short_number(double value) {
    if (value <= 0) return "-  ";
    std::size_t letter = 0;
    for (; value >= 1000 && letter != 3; ++letter) value /= 1000;
    std::ostringstream text;
    text << std::fixed << std::setprecision(value < 100 ? 1 : 0) << value << ' ' << " kMG"[letter];
    return text.str();
}

void print_row(const Finding& row, const std::string& narrow_rate, const std::string& wide_rate) {
    std::cout << std::left << std::setw(32) << row.what << std::setw(54) << row.found << std::right << std::setw(8)
              << narrow_rate << std::setw(10) << wide_rate << "  " << row.unit << '\n';
}

/// Prints the findings of both widths side by side, and which of them differ. Says whether none does.
bool print(const std::vector<Finding>& narrow, const std::vector<Finding>& wide) {
    std::string differences;
    Finding heading;
    heading.unit = "per second";
    print_row(heading, "8 bits", "16 bits");
    for (std::size_t i = 0; i != narrow.size(); ++i) {
        const Finding &a = narrow[i], &b = wide[i];
        print_row(a, short_number(a.rate), short_number(b.rate));
        if (a.found != b.found || a.details != b.details) differences += "  16 bits, " + a.what + ": " + b.found + '\n';
        if (!a.agrees || !b.agrees) differences += "  backwards, " + a.what + '\n';
    }
    std::cout << (differences.empty() ? "\nBoth widths and both directions agree.\n" : "\nThese differ:\n")
              << differences;
    return differences.empty();
}

} // namespace

bool tour_text(const std::string& name, Numbers& numbers) {
    const std::string bytes = read_file(name);
    const aliteral narrow(bytes.data(), bytes.data() + bytes.size());
    std::vector<unsigned short> units(bytes.size());
    std::transform(bytes.begin(), bytes.end(), units.begin(), [](char c) { return static_cast<unsigned char>(c); });
    const uliteral wide(units.data(), units.data() + units.size());

    std::cout << "\nSearching text from " << name << ": " << narrow.length() << " characters\n\n";
    const std::vector<astring> needles = choose_needles(narrow);
    Findings findings = explore(narrow, needles);
    const bool agree = print(findings.rows, explore(wide, needles).rows);
    numbers = std::move(findings.numbers);
    return agree;
}
