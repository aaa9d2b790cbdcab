#ifndef KORD_EXAMPLES_TOUR_FINDINGS_H
#define KORD_EXAMPLES_TOUR_FINDINGS_H

#include "tour.h"

#include <string>
#include <vector>

/// What one way of looking at a text came to: a row of the table.
struct Finding {
    std::string what, found;
    std::vector<double> details; ///< every position found or number read, in turn: more than the row has room for
    bool agrees = true;          ///< whether looking backwards found the same
    double rate = 0;             ///< a second, 0 if there was nothing to do
    const char* unit = "";       ///< what the rate counts
};

/// All rows, and the numbers that were read for the last ones.
struct Findings {
    std::vector<Finding> rows;
    Numbers numbers;
};

/// Looks for every needle in a text, sorts its lines, counts its words and reads its numbers.
Findings explore(const KordCharacterRange<char>& text, const std::vector<astring>& needles);
Findings explore(const KordCharacterRange<unsigned short>& text, const std::vector<astring>& needles);

/// What parts one number from the next, and what parts words. Zero-terminated.
inline constexpr char tour_space[] = " \t\n\v\f\r";
inline constexpr char tour_no_word[] = " \t\n\v\f\r!\"#$%&()*+,./:;<=>?@[\\]^_`{|}~";

/// Calls visit(piece) for each run of characters that are not among the separators.
template <class T, class Visit>
void for_each_piece(const KordCharacterRange<T>& text, const KordCharacterRange<T>& separators, const Visit& visit) {
    unsigned int first = text.find_first_not_of(separators);
    while (first != text.npos) {
        const unsigned int last = text.find_first_of(separators, first);
        visit(KordCharacterRange<T>(text, first, last - first)); // cut at the end of the text where nothing was found,
        first = text.find_first_not_of(separators, last);        // behind which nothing is found either
    }
}

#endif
