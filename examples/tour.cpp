// What the library does, on real input: on path names from a file, from standard input, or the list shipped beside this
// program, on a text from a file, or the ledger shipped there too, in a report of the paths and numbers in them, on a
// text in many languages from a file of UTF-8, or the one shipped, and in fingerprints of the paths.
//
//     kord_tour [--all] [--text FILE] [--utf8 FILE] [FILE | -]

#include "tour.h"

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
    std::string utf8 = KORD_TOUR_DATA "/languages.txt";
    bool all = false;
    for (int i = 1; i != argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--all") {
            all = true;
        } else if (argument != "--text" && argument != "--utf8") {
            paths = argument;
        } else if (++i != argc) {
            (argument == "--text" ? text : utf8) = argv[i];
        } else {
            std::cerr << "kord_tour: " << argument << " needs the name of a file\n";
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
    const auto fingerprint = [&](const std::string&) { return tour_hashes(names); };
    const bool good = run(paths, split) && run(text, search) && run("report", report) && run(utf8, tour_encodings) &&
                      run("fingerprints", fingerprint);
    return good && std::cout.flush() ? 0 : 1;
}
