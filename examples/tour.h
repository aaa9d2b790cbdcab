#ifndef KORD_EXAMPLES_TOUR_H
#define KORD_EXAMPLES_TOUR_H

#include <kord/range.h>
#include <kord/string.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// Splits the path names of a file, one a line, or with the name "-" of standard input, and prints the first of them,
/// or all, as a table, and totals. Returns all paths with backslashes. Throws if the file cannot be opened.
std::vector<astring> tour_paths(const std::string& name, bool all);

/// The numbers of a text.
struct Numbers {
    std::vector<int> integers;       ///< the decimal ones
    std::vector<double> reals;       ///< the same with their decimals
    std::vector<unsigned int> codes; ///< the hexadecimal ones
};

/// Searches, compares and reads numbers in the text of a file, in both widths, and prints what it finds and how fast.
/// Hands over the numbers and says whether the widths agree. Throws if the file cannot be read.
bool tour_text(const std::string& name, Numbers& numbers);

/// Formats what the other sections have read: some of the paths, or all, shortened in every way, and the numbers. Says
/// whether the paths got short enough, the widths agree, and what cannot be formatted is empty.
bool tour_report(const std::vector<astring>& paths, const Numbers& numbers, bool all);

/// Takes the UTF-8 text of a file to UTF-16 and back, and a line of it to Latin-1, and prints how many characters of
/// each kind it has and how fast that is. Says whether nothing but what Latin-1 does not have was lost. Throws if the
/// file cannot be read.
bool tour_encodings(const std::string& name);

/// Takes fingerprints of all distinct paths with every hash and prints how well they spread. Says whether each hash is
/// the same by pointers and by the string.
bool tour_hashes(std::vector<astring> paths);

/// The bytes of a file, fewer than positions can count. Throws if it cannot be read or is longer.
std::string read_file(const std::string& name);

/// Columns of the terminal: what the environment's COLUMNS says or the system, otherwise 80; from 40 to 400.
int terminal_width();

/// The same characters for the standard library.
inline std::string_view view(const KordCharacterRange<char>& text) {
    return {text.data(), text.length()};
}

/// A text in the width of S: every character becomes the one of the same code.
template <class S, class T>
S in_width(const KordCharacterRange<T>& text) {
    S other;
    other.reserve(text.length());
    for (const T c : text) other += static_cast<typename S::value_type>(static_cast<std::make_unsigned_t<T>>(c));
    return other;
}
template <class S>
S in_width(const char* text) {
    return in_width<S>(aliteral(text));
}

/// Seconds that `work` takes: the best of five passes, or of fewer once they have taken `limit` together.
template <class Work>
double best_time(const Work& work, double limit = std::numeric_limits<double>::infinity()) {
    using Clock = std::chrono::steady_clock;
    double best = 0, total = 0;
    for (int pass = 0; pass != 5 && total < limit; ++pass) {
        const Clock::time_point start = Clock::now();
        work();
        const double time = std::chrono::duration<double>(Clock::now() - start).count();
        best = pass == 0 ? time : std::min(best, time);
        total += time;
    }
    return best;
}

#endif
