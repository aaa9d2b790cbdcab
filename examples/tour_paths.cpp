// Path names split into typed items, and what sharing saves.

#include "tour.h"

#include <kord/kord.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

/// Lends the identity of a string's block, as a derived class may see it.
class Block : public astring {
  public:
    explicit Block(const astring& s) : astring(s) {}
    const void* identity() const { return body_; }
};

/// Counts strings, the blocks behind them, and what a private copy each would have cost.
class Sharing {
  public:
    void count(const astring& s) {
        ++strings_;
        characters_ += s.length();
        if (const void* const block = Block(s).identity(); block != nullptr && blocks_.insert(block).second) {
            held_ += s.capacity() + 9u;
        }
    }
    void print() const {
        std::cout << "\nSharing: " << strings_ << " strings of " << characters_ << " characters made, "
                  << blocks_.size() << " blocks of " << held_ << " bytes allocated: " << strings_ - blocks_.size()
                  << " strings cost no allocation and no copy.\n";
    }

  private:
    std::size_t strings_ = 0, characters_ = 0, held_ = 0;
    std::set<const void*> blocks_;
};

struct Input {
    std::string name;
    std::vector<astring> paths;
    std::size_t too_long = 0;
};

Input read(const std::string& name) {
    Input input{name == "-" ? "standard input" : name, {}, 0};
    std::ifstream file;
    if (name != "-") file.open(name, std::ios::binary);
    std::istream& in = name == "-" ? std::cin : file;
    if (!in) throw std::ios_base::failure("cannot open it");
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        try {
            input.paths.emplace_back(line.data(), line.size());
        } catch (const os_length_error&) {
            ++input.too_long;
        }
    }
    return input;
}

constexpr std::array<const char*, 8> kinds = {"Server", "Share",     "Mount",    "Drive",
                                              "Parent", "Directory", "FileName", "Extension"};

/// One path as a row: a cell for each kind, several items of a kind joined.
std::array<astring, 8> cells(const KordSplitPath& path) {
    std::array<astring, 8> row;
    for (const KordSplitPath::Item& item : path) {
        astring& cell = row[static_cast<std::size_t>(item.kind)];
        switch (item.kind) {
        case KordSplitPath::Parent: cell += cell.empty() ? ".." : "\\.."; break;
        case KordSplitPath::Directory: (cell += cell.empty() ? "" : "\\") += item.text(); break;
        case KordSplitPath::Extension: (cell += ".") += item.text(); break;
        default: cell += item.text();
        }
    }
    return row;
}

void print_cell(const KordCharacterRange<char>& text, std::size_t width) {
    if (text.length() <= width) {
        std::cout << view(text) << std::string(width - text.length(), ' ');
    } else {
        std::cout << view(text).substr(0, width - 1) << '~';
    }
    std::cout << "  ";
}

void print_table(const std::vector<KordSplitPath>& paths, std::size_t rows) {
    constexpr std::size_t widest = 26;
    std::vector<std::array<astring, 8>> table;
    std::array<std::size_t, 8> widths{};
    for (std::size_t k = 0; k != kinds.size(); ++k) widths[k] = std::strlen(kinds[k]);
    for (std::size_t i = 0; i != rows; ++i) {
        table.push_back(cells(paths[i]));
        for (std::size_t k = 0; k != kinds.size(); ++k) {
            widths[k] = std::min<std::size_t>(widest, std::max<std::size_t>(widths[k], table.back()[k].length()));
        }
    }
    std::cout << "\n          ";
    for (std::size_t k = 0; k != kinds.size(); ++k) print_cell(aliteral(kinds[k]), widths[k]);
    std::cout << '\n';
    for (std::size_t i = 0; i != rows; ++i) {
        std::cout << (paths[i].Relative() ? "relative  " : "absolute  ");
        for (std::size_t k = 0; k != kinds.size(); ++k) print_cell(table[i][k], widths[k]);
        std::cout << '\n';
    }
    if (rows != paths.size()) std::cout << "... and " << paths.size() - rows << " more rows (--all shows them)\n";
}

void print_totals(const std::vector<KordSplitPath>& paths, Sharing& sharing) {
    std::array<std::size_t, 8> totals{};
    std::size_t relative = 0;
    std::vector<astring> extensions;
    for (const KordSplitPath& path : paths) {
        relative += path.Relative() ? 1u : 0u;
        sharing.count(path.RawPathname());
        for (const KordSplitPath::Item& item : path) {
            ++totals[static_cast<std::size_t>(item.kind)];
            const astring name(path.RawPathname(), item.begin, item.end);
            if (item.kind == KordSplitPath::Extension) {
                extensions.push_back(name);
            } else {
                sharing.count(name);
            }
        }
    }
    std::cout << "\nPaths: " << paths.size() << ", relative " << relative << ", absolute or blank "
              << paths.size() - relative << "\nItems:";
    for (std::size_t k = 0; k != kinds.size(); ++k) std::cout << ' ' << kinds[k] << ' ' << totals[k];

    std::map<std::string_view, std::size_t> counts;
    for (astring& extension : extensions) {
        extension.make_lower(); // to be changed it gets a block of its own; every other item is a piece of its path
        sharing.count(extension);
        ++counts[view(extension)];
    }
    std::vector<std::pair<std::string_view, std::size_t>> order(counts.begin(), counts.end());
    std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) {
        return a.second != b.second ? a.second > b.second : a.first < b.first;
    });
    std::cout << "\nExtensions (" << order.size() << "):";
    for (std::size_t i = 0; i != std::min<std::size_t>(order.size(), 16); ++i) {
        std::cout << " ." << order[i].first << ' ' << order[i].second;
    }
    std::cout << (order.size() > 16 ? " ...\n" : "\n");
}

/// Nanoseconds to split one of the paths and let it go again.
double time_per_path(const std::vector<astring>& paths) {
    const double seconds = best_time([&paths] {
        for (const astring& path : paths) {
            const KordSplitPath split(path);
        }
    });
    return seconds * 1e9 / static_cast<double>(paths.size());
}

} // namespace

std::vector<astring> tour_paths(const std::string& name, bool all) {
    const Input input = read(name);
    std::cout << "Splitting path names from " << input.name << '\n';
    Sharing sharing;
    for (const astring& path : input.paths) sharing.count(path);

    const std::vector<KordSplitPath> paths(input.paths.begin(), input.paths.end());

    print_table(paths, all ? paths.size() : std::min<std::size_t>(paths.size(), 30));
    print_totals(paths, sharing);
    sharing.print();
    if (!paths.empty()) {
        std::cout << "Time: " << std::fixed << std::setprecision(0) << time_per_path(input.paths)
                  << " ns to split a path (the best of five passes)\n";
    }
    if (input.too_long != 0) std::cout << input.too_long << " lines above the length limit were passed over\n";

    std::vector<astring> names;
    names.reserve(paths.size());
    for (const KordSplitPath& path : paths) names.push_back(path.RawPathname());
    return names;
}
