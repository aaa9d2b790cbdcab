// What the library does, on real input: on path names from a file, from standard input, or the list shipped beside this
// program, on a text from a file, or the ledger shipped there too, and in a report of the paths and numbers in them.
//
//     kord_tour [--all] [--text FILE] [FILE | -]

#include "tour.h"

#include <cstring>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

/// Runs a section; what goes wrong in it is reported with the name of the file it reads.
template <class Section>
bool run(const std::string& name, const Section& section) {
    try {
        return section(name);
    } catch (const std::exception& e) {
        std::cerr << "kord_tour: " << name << ": " << e.what() << '\n';
        return false;
    }
}

} // namespace

int main(int argc, char** argv) {
    std::string paths = KORD_TOUR_DATA "/paths.txt";
    std::string text = KORD_TOUR_DATA "/ledger.txt";
    bool all = false;
    for (int i = 1; i != argc; ++i) {
        if (std::strcmp(argv[i], "--all") == 0) {
            all = true;
        } else if (std::strcmp(argv[i], "--text") != 0) {
            paths = argv[i];
        } else if (++i != argc) {
            text = argv[i];
        } else {
            std::cerr << "kord_tour: --text needs the name of a file\n";
            return 1;
        }
    }
    std::vector<astring> names;
    Numbers numbers;
    const auto split = [&](const std::string& name) {
        names = tour_paths(name, all);
        return true;
    };
    const auto search = [&](const std::string& name) { return tour_text(name, numbers); };
    const auto report = [&](const std::string&) { return tour_report(names, numbers, all); };
    return run(paths, split) && run(text, search) && run("report", report) && std::cout.flush() ? 0 : 1;
}
