// A report of what the sections before it have read, every line of it formatted: the paths shortened to the room that
// the terminal leaves them, and the numbers in the ways to write them.

#include "tour.h"

#include <kord/kord.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iostream>
#include <numeric>
#include <vector>

namespace {

/// Prints lines and counts them.
class Page {
  public:
    void print(const KordCharacterRange<char>& line) {
        std::cout << view(line) << '\n';
        ++lines;
        characters += line.length();
    }
    unsigned long lines = 0, characters = 0;
};

// ---- paths ---------------------------------------------------------------------------------------------------------

constexpr std::size_t mode_count = 4;
using Cells = std::array<astring, mode_count>;

/// A path in the four modes. They share its block where they leave it as it is.
Cells shorten(const astring& path, unsigned int room) {
    Cells texts{path, path, path, path};
    texts[0].format_path(room, astring::ellipsis_middle);
    texts[1].format_path(room, astring::ellipsis_middle_fill);
    texts[2].format_path(room, astring::ellipsis_end);
    texts[3].format_path(room, astring::ellipsis_begin);
    return texts;
}

/// A table of paths: behind the first columns of a line four cells, side by side, or in two lines if that is too close.
class PathTable {
  public:
    PathTable(Page& page, int width) : page_(page), beside_(width < 120 ? 2 : 4), room_((width - front) / beside_ - 2) {
        column_.format("  %%-%d.%ds", room_, room_); // such as "  %-29.29s"
    }
    unsigned int room() const { return static_cast<unsigned int>(room_); }

    void print_heading() {
        print_cells("  path chars  kept%",
                    {"ellipsis_middle", "ellipsis_middle_fill", "ellipsis_end", "ellipsis_begin"});
    }
    /// In front of the cells stand the path's place and length, and how much of it they keep on average.
    void print(int number, const astring& path, const Cells& texts) {
        double kept = 0;
        for (const astring& text : texts) kept += text.length();
        const double whole = path.length() * static_cast<double>(mode_count);
        astring line, percentage;
        line.format("%6d%6d", number, static_cast<int>(path.length()));
        line.append(percentage.format("%7.1f", path.empty() ? 100.0 : 100 * kept / whole));
        print_cells(line, texts);
    }

  private:
    static constexpr int front = 19; // characters before the cells

    void print_cells(astring line, const Cells& texts) {
        astring cell;
        int column = 0;
        for (const astring& text : texts) {
            line.append(cell.format(column_, text));
            if (++column % beside_ != 0) continue;
            line.remove_trailing(' ');
            page_.print(line);
            line.assign(front, ' ');
        }
    }

    Page& page_;
    int beside_, room_;
    astring column_;
};

/// All paths shortened: what came of it, and which to show.
struct Shortened {
    unsigned long characters = 0;
    unsigned int longest = 0;
    std::array<unsigned long, mode_count> left{};
    std::vector<unsigned int> order; ///< paths with most to show first: longer than the room, and filled in the middle
};

Shortened shorten_all(const std::vector<astring>& paths, unsigned int room) {
    Shortened all;
    std::vector<int> merits;
    for (const astring& path : paths) {
        const Cells texts = shorten(path, room);
        all.characters += path.length();
        for (std::size_t i = 0; i != mode_count; ++i) {
            all.left[i] += texts[i].length();
            all.longest = std::max(all.longest, texts[i].length());
        }
        merits.push_back((path.length() > room ? 1 : 0) + (texts[0].compare(texts[1]) != 0 ? 1 : 0));
    }
    all.order.resize(paths.size());
    std::iota(all.order.begin(), all.order.end(), 0u);
    std::sort(all.order.begin(), all.order.end(), [&merits](unsigned int a, unsigned int b) {
        return merits[a] != merits[b] ? merits[a] > merits[b] : a < b;
    });
    return all;
}

/// Says whether every path got into the room.
bool report_paths(Page& page, const std::vector<astring>& paths, bool every) {
    PathTable table(page, terminal_width());
    const Shortened all = shorten_all(paths, table.room());
    table.print_heading();
    for (unsigned int i = 0; i != (every ? paths.size() : std::min<std::size_t>(paths.size(), 6)); ++i) {
        const unsigned int at = every ? i : all.order[i];
        table.print(static_cast<int>(at + 1), paths[at], shorten(paths[at], table.room()));
    }
    astring line;
    page.print(line.format_unchecked("Shortened to %u: %u paths of %lu characters, in the modes to %lu, %lu, %lu, %lu",
                                     all.longest, static_cast<unsigned int>(paths.size()), all.characters, all.left[0],
                                     all.left[1], all.left[2], all.left[3]));
    std::cout << '\n';
    return all.longest <= table.room();
}

// ---- numbers -------------------------------------------------------------------------------------------------------

template <class N>
struct Extremes {
    unsigned int count;
    std::array<N, 3> values; ///< the smallest, the median (of two, the greater) and the largest; 0 if there are none
};

template <class N>
Extremes<N> extremes(std::vector<N> numbers) {
    if (numbers.empty()) return {0, {}};
    std::sort(numbers.begin(), numbers.end());
    return {static_cast<unsigned int>(numbers.size()), {numbers.front(), numbers[numbers.size() / 2], numbers.back()}};
}

/// Lines that grow column by column, in the width of S.
template <class S>
class Lines {
  public:
    void begin(const char* label) {
        lines_.emplace_back();
        add("%-12s", label);
    }
    void add(const char* tmpl, const char* text) { add(tmpl, in_width<S>(text)); }
    template <class V>
    void add(const char* tmpl, const V& value) {
        S cell;
        lines_.back().append(cell.format(in_width<S>(tmpl), value));
    }
    const std::vector<S>& all() const { return lines_; }

  private:
    std::vector<S> lines_;
};

/// What there is to say about the numbers, the same in both widths.
template <class S>
std::vector<S> number_lines(const Extremes<int>& integers, const Extremes<unsigned int>& codes,
                            const Extremes<double>& reals, double sum) {
    Lines<S> lines;
    lines.begin("");
    for (const char* const heading : {"count", "smallest", "median", "largest"}) lines.add("%13s", heading);
    lines.begin("integers");
    lines.add("%13u", integers.count);
    for (const int n : integers.values) lines.add("%+13d", n);
    lines.begin("hexadecimal");
    lines.add("%13u", codes.count);
    for (const unsigned int n : codes.values) lines.add("%#13x", n);

    lines.begin("reals");
    for (const char* const heading : {"2 decimals", "6 decimals", "16 digits"}) lines.add("%22s", heading);
    const auto add = [&lines](const char* label, double value) {
        S digits;
        lines.begin(label);
        lines.add("%22.2f", value);
        lines.add("%22.6f", value);
        lines.add("%22s", digits.format(value));
    };
    add("smallest", reals.values[0]);
    add("median", reals.values[1]);
    add("largest", reals.values[2]);
    add("sum", sum);
    add("mean", reals.count == 0 ? 0 : sum / reals.count);
    return lines.all();
}

/// Formats the lines in both widths and prints those of 16 bits. Says whether the others are the same.
bool report_numbers(Page& page, const Numbers& numbers) {
    const auto integers = extremes(numbers.integers);
    const auto codes = extremes(numbers.codes);
    const auto reals = extremes(numbers.reals);
    const double sum = std::accumulate(numbers.reals.begin(), numbers.reals.end(), 0.0);
    const std::vector<astring> narrow = number_lines<astring>(integers, codes, reals, sum);
    const std::vector<ustring> wide = number_lines<ustring>(integers, codes, reals, sum);
    bool same = narrow.size() == wide.size();
    for (std::size_t i = 0; i != wide.size(); ++i) {
        const astring line = in_width<astring>(wide[i]);
        page.print(line);
        same = same && line.compare(narrow[i]) == 0;
    }
    page.print(aliteral(same ? "Both widths give the same lines." : "The widths differ."));
    return same;
}

/// Says whether every template that does not fit one integer gives the empty string.
bool report_refused(Page& page) {
    astring line("Refused for one integer:"), text;
    bool refused = true;
    for (const char* const tmpl : {"%s", "%f", "%d of %d", "%*d", "%y", "none"}) {
        refused = refused && text.format(tmpl, 7).empty();
        line.append(text.format(" '%s'", tmpl));
    }
    page.print(line.append(aliteral(refused ? ": all empty" : ": NOT EMPTY")));
    return refused;
}

} // namespace

bool tour_report(const std::vector<astring>& paths, const Numbers& numbers, bool all) {
    std::cout << "\nReporting the paths and the numbers\n\n";
    Page page;
    const bool fits = report_paths(page, paths, all);
    const bool same = report_numbers(page, numbers);
    const bool refused = report_refused(page);
    std::cout << "Formatted " << page.lines << " lines of " << page.characters << " characters.\n";
    return fits && same && refused;
}
