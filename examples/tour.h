#ifndef KORD_EXAMPLES_TOUR_H
#define KORD_EXAMPLES_TOUR_H

#include <kord/range.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <string>
#include <string_view>

/// Splits the path names of a file, one a line, or with the name "-" of standard input, and prints the first of them,
/// or all, as a table, and totals. Throws if the file cannot be opened.
void tour_paths(const std::string& name, bool all);

/// Searches, compares and reads numbers in the text of a file, in both widths, and prints what it finds and how fast.
/// Says whether the widths agree. Throws if the file cannot be read.
bool tour_text(const std::string& name);

/// The same characters for the standard library.
inline std::string_view view(const KordCharacterRange<char>& text) {
    return {text.data(), text.length()};
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
