// Everything here is written once for both widths: S is the string type, `astring` or `ustring`. No text is copied, as
// lines, words and numbers are ranges that point into the one they were found in.

#include "tour_findings.h"

#include <kord/chars.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <limits>
#include <sstream>
#include <type_traits>
#include <utility>

namespace {

constexpr double time_limit = 0.05; // for the passes of one row, in seconds

template <class T>
unsigned int flags(T c) {
    const unsigned int code = static_cast<std::make_unsigned_t<T>>(c);
    return code < 256 ? kordType[code] : 0u;
}

/// Whether a piece begins like something that `as_unsigned` reads in radix 16.
template <class T>
bool is_hexadecimal(const KordCharacterRange<T>& piece) {
    const unsigned int n = piece.length();
    if (n > 1 && piece[0] == '$') return (flags(piece[1]) & kordHexDigit) != 0;
    return n > 2 && piece[0] == '0' && (piece[1] | 0x20) == 'x' && (flags(piece[2]) & kordHexDigit) != 0;
}

/// Whether a piece begins with a digit, or with a sign and a digit.
template <class T>
bool is_decimal(const KordCharacterRange<T>& piece) {
    const unsigned int digit = (flags(piece[0]) & kordSign) != 0 ? 1 : 0;
    return digit < piece.length() && (flags(piece[digit]) & kordDigit) != 0;
}

template <class S>
class Explorer {
    using T = typename S::value_type;
    using Range = KordCharacterRange<T>;
    using Find = unsigned int (Range::*)(const Range&, unsigned int) const noexcept;
    using Compare = int (Range::*)(const Range&) const noexcept;

  public:
    explicit Explorer(const Range& text) : text_(text) {}

    void search(const astring& needle) {
        const std::string name = '"' + std::string(view(needle)) + '"';
        search(in_width<S>(needle), name, &Range::find, &Range::rfind);
        search(in_width<S>(needle), name + " without case", &Range::find_nocase, &Range::rfind_nocase);
    }
    void count_words();
    void split_lines();
    void sort_lines(const char* what, Compare compare);
    void read_numbers();

    Findings findings() { return {std::move(findings_), std::move(numbers_)}; }

  private:
    void search(const Range& needle, const std::string& what, Find find, Find rfind);
    template <class N>
    std::vector<N> read_all(const char* what, const std::vector<Range>& pieces, N (Range::*read)() const noexcept);
    Finding& add(const std::string& what, double amount, double seconds, const char* unit);
    Finding& add_scan(const std::string& what, double seconds) { return add(what, text_.length(), seconds, "chars"); }
    double place(const Range& piece) const { return static_cast<double>(piece.begin() - text_.begin()); }

    Range text_;
    std::vector<Range> lines_;
    std::vector<Finding> findings_;
    Numbers numbers_;
};

template <class S>
Finding& Explorer<S>::add(const std::string& what, double amount, double seconds, const char* unit) {
    findings_.emplace_back();
    findings_.back().what = what;
    findings_.back().rate = amount / std::max(seconds, 1e-9); // a clock may not see the time that a short text takes
    findings_.back().unit = unit;
    return findings_.back();
}

template <class S>
void Explorer<S>::search(const Range& needle, const std::string& what, Find find, Find rfind) {
    // Matches may overlap: forwards the next one begins a character later, backwards it ends a character earlier.
    std::vector<double> forwards, backwards;
    const auto pass = [&] {
        forwards.clear();
        for (unsigned int at = (text_.*find)(needle, 0); at != Range::npos; at = (text_.*find)(needle, at + 1)) {
            forwards.push_back(at);
        }
    };
    const double seconds = best_time(pass, time_limit);
    for (unsigned int at = (text_.*rfind)(needle, Range::npos); at != Range::npos;
         at = (text_.*rfind)(needle, at + needle.length() - 1)) {
        backwards.push_back(at);
    }
    Finding& finding = add_scan(what, seconds);
    finding.agrees = std::equal(forwards.begin(), forwards.end(), backwards.rbegin(), backwards.rend());
    finding.found = std::to_string(forwards.size());
    if (!backwards.empty()) finding.found += ", the last at " + std::to_string(static_cast<std::size_t>(backwards[0]));
    finding.details = std::move(forwards);
}

template <class S>
void Explorer<S>::count_words() {
    const S separators = in_width<S>(tour_no_word);
    std::vector<double> places;
    const auto pass = [&] {
        places.clear();
        for_each_piece<T>(text_, separators, [&](const Range& word) { places.push_back(place(word)); });
    };
    Finding& finding = add_scan("words", best_time(pass, time_limit));
    finding.found = std::to_string(places.size());
    finding.details = std::move(places);
}

template <class S>
void Explorer<S>::split_lines() {
    const auto pass = [this] {
        lines_.clear();
        for (unsigned int first = 0; first < text_.length();) {
            const unsigned int last = std::min(text_.find(T{'\n'}, first), text_.length());
            lines_.emplace_back(text_, first, last - first);
            lines_.back().remove_trailing(T{'\r'});
            first = last + 1;
        }
    };
    Finding& finding = add_scan("lines", best_time(pass, time_limit));
    for (const Range& line : lines_) finding.details.push_back(place(line));
    finding.found = std::to_string(lines_.size());
}

/// Leaves the distinct lines only: what is the same in every character is the same without case, too.
template <class S>
void Explorer<S>::sort_lines(const char* what, Compare compare) {
    std::vector<Range> sorted;
    std::size_t comparisons = 0;
    const auto before = [&comparisons, compare](const Range& a, const Range& b) {
        ++comparisons;
        return (a.*compare)(b) < 0;
    };
    const auto sort = [&] {
        comparisons = 0;
        sorted = lines_;
        std::sort(sorted.begin(), sorted.end(), before);
    };
    const double seconds = best_time(sort, time_limit);
    Finding& finding = add(what, static_cast<double>(comparisons), seconds, "compares");
    for (const Range& line : sorted) finding.details.push_back(place(line));
    const auto same = [compare](const Range& a, const Range& b) { return (a.*compare)(b) == 0; };
    sorted.erase(std::unique(sorted.begin(), sorted.end(), same), sorted.end());
    finding.found = std::to_string(sorted.size()) + " distinct";
    lines_ = std::move(sorted);
}

/// The number at the beginning of each piece, all of them read by one member function.
template <class S>
template <class N>
std::vector<N> Explorer<S>::read_all(const char* what, const std::vector<Range>& pieces,
                                     N (Range::*read)() const noexcept) {
    std::vector<N> numbers(pieces.size());
    const auto pass = [&] {
        for (std::size_t i = 0; i != pieces.size(); ++i) numbers[i] = (pieces[i].*read)();
    };
    const double seconds = best_time(pass, time_limit);
    Finding& finding = add(what, static_cast<double>(pieces.size()), seconds, "numbers");
    finding.details.assign(numbers.begin(), numbers.end());
    return numbers;
}

template <class N>
std::string sum_of_integers(const std::vector<N>& numbers) {
    std::int64_t sum = 0; // a double could not hold every sum
    for (const N number : numbers) sum += number;
    return "sum " + std::to_string(sum);
}

std::string sum_of_reals(const std::vector<double>& numbers) {
    double sum = 0;
    for (const double number : numbers) sum += number;
    std::ostringstream text;
    text << "sum " << std::fixed << std::setprecision(2) << sum;
    return text.str();
}

template <class S>
void Explorer<S>::read_numbers() {
    const S separators = in_width<S>(tour_space);
    std::vector<Range> decimals, hexadecimals;
    const auto sift = [&] {
        decimals.clear();
        hexadecimals.clear();
        for_each_piece<T>(text_, separators, [&](const Range& piece) {
            if (is_hexadecimal(piece)) {
                hexadecimals.push_back(piece);
            } else if (is_decimal(piece)) {
                decimals.push_back(piece);
            }
        });
    };
    Finding& pieces = add_scan("numbers", best_time(sift, time_limit));
    for (const Range& piece : decimals) pieces.details.push_back(place(piece));
    for (const Range& piece : hexadecimals) pieces.details.push_back(place(piece));
    pieces.found =
        std::to_string(decimals.size()) + " decimal, " + std::to_string(hexadecimals.size()) + " hexadecimal";

    const std::vector<int>& integers = numbers_.integers;
    numbers_.integers = read_all("numbers by as_int", decimals, &Range::as_int);
    const auto largest = std::count(integers.begin(), integers.end(), std::numeric_limits<int>::max());
    const auto smallest = std::count(integers.begin(), integers.end(), std::numeric_limits<int>::min());
    findings_.back().found = sum_of_integers(integers) + ", saturated " + std::to_string(largest) + " up, " +
                             std::to_string(smallest) + " down";
    numbers_.codes = read_all("numbers by as_unsigned", hexadecimals, &Range::as_unsigned);
    findings_.back().found = sum_of_integers(numbers_.codes);
    numbers_.reals = read_all("numbers by as_double", decimals, &Range::as_double);
    findings_.back().found = sum_of_reals(numbers_.reals);
}

template <class S>
Findings explore_as(const KordCharacterRange<typename S::value_type>& text, const std::vector<astring>& needles) {
    using Range = KordCharacterRange<typename S::value_type>;
    Explorer<S> explorer(text);
    for (const astring& needle : needles) explorer.search(needle);
    explorer.count_words();
    explorer.split_lines();
    explorer.sort_lines("lines by compare", &Range::compare);
    explorer.sort_lines("lines by compare_nocase", &Range::compare_nocase);
    explorer.read_numbers();
    return explorer.findings();
}

} // namespace

Findings explore(const KordCharacterRange<char>& text, const std::vector<astring>& needles) {
    return explore_as<astring>(text, needles);
}

Findings explore(const KordCharacterRange<unsigned short>& text, const std::vector<astring>& needles) {
    return explore_as<ustring>(text, needles);
}
