#ifndef KORD_BENCH_SEARCH_ROWS_H
#define KORD_BENCH_SEARCH_ROWS_H

#include "texts.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <utility>

/// What the libraries search for and where: the rows of the benchmark, their texts and the right answers.
namespace bench {

// --- the rows ---

struct Sample {
    std::string text, wanted;
};

/// The first or last match, or all of them in either direction.
enum class Way { first, last, all, all_backwards };

struct Row {
    std::string operation;
    Way way;
    std::vector<std::size_t> sizes;
    std::function<Sample(std::size_t)> sample;
};

/// Rows that one function of a library serves: find(text, wanted, pos), with `pos` where the search starts, or where it
/// ends if it goes backwards. `naive` has the answers.
struct Kind {
    std::size_t (*naive)(const std::string& text, const std::string& wanted, std::size_t pos);
    std::vector<Row> rows;
};

template <class Text, class Wanted, class Find>
std::size_t count_all(const Text& text, const Wanted& wanted, Find find) {
    std::size_t n = 0;
    for (std::size_t pos = 0; (pos = find(text, wanted, pos)) != npos; ++pos) ++n;
    return n;
}

template <class Text, class Wanted, class Find>
std::size_t count_all_backwards(const Text& text, const Wanted& wanted, std::size_t pos, Find find) {
    std::size_t n = 0;
    while (pos != 0 && (pos = find(text, wanted, pos)) != npos) ++n;
    return n;
}

/// Hands `with` a search that goes the way of a row in a text of `n` characters.
template <class Find, class With>
void go(Way way, std::size_t n, Find find, With with) {
    switch (way) {
    case Way::first: return with([=](const auto& text, const auto& wanted) { return find(text, wanted, 0); });
    case Way::last: return with([=](const auto& text, const auto& wanted) { return find(text, wanted, n); });
    case Way::all: return with([=](const auto& text, const auto& wanted) { return count_all(text, wanted, find); });
    case Way::all_backwards:
        return with([=](const auto& text, const auto& wanted) { return count_all_backwards(text, wanted, n, find); });
    }
}

template <class C, class AsText, class AsWanted, class Find>
void add(const Kind& kind, const std::string& library, AsText as_text, AsWanted as_wanted, Find find) {
    const auto run = [=, naive = kind.naive](benchmark::State& state, const Row& row, std::size_t n) {
        const Sample sample = row.sample(n);
        const std::basic_string<C> own_text = widen<C>(sample.text), own_wanted = widen<C>(sample.wanted);
        auto text = as_text(View<C>(own_text));
        auto wanted = as_wanted(View<C>(own_wanted));
        std::size_t expected = 0;
        go(row.way, n, naive, [&](auto search) { expected = search(sample.text, sample.wanted); });
        go(row.way, n, find,
           [&](auto search) { time(state, text, wanted, expected, [&] { return search(text, wanted); }); });
    };
    for (const Row& row : kind.rows) {
        for (const std::size_t n : row.sizes) {
            benchmark::RegisterBenchmark(row_name<C>(row.operation, library, n).c_str(), run, row, n);
        }
    }
}

/// The rows in whose sizes a peer has a chance.
template <class Good>
Kind only(Kind kind, Good good) {
    for (Row& row : kind.rows) std::erase_if(row.sizes, [&](std::size_t n) { return !good(row, n); });
    return kind;
}

// --- the texts ---

inline const std::vector<std::size_t> all_sizes{8, 24, 64, 4096, 65536}, from_24{24, 64, 4096, 65536},
    to_4096{24, 64, 4096}, long_sizes{4096, 65536}, one_size{4096};

/// English text with `wanted` written over it at `pos`.
inline Sample planted(std::size_t n, const std::string& wanted, std::size_t pos) {
    return {english(n).replace(pos, wanted.size(), wanted), wanted};
}

inline auto never(const std::string& wanted) {
    return [=](std::size_t n) { return Sample{english(n), wanted}; };
}
inline auto at_three_quarters(const std::string& wanted) {
    return [=](std::size_t n) { return planted(n, wanted, n * 3 / 4); };
}
inline auto at_begin(const std::string& wanted) {
    return [=](std::size_t n) { return planted(n, wanted, 0); };
}
inline auto at_end(const std::string& wanted) {
    return [=](std::size_t n) { return planted(n, wanted, n - wanted.size()); };
}

/// Not in `english`.
inline const std::string ordinary = "the window of the house that was little more than a garden, and up";

inline const std::string four = " ,.;", twenty_one = "\t\n\r !\"#&'(),./:;?@[]_";

/// Text without the members of the set.
inline auto without(const std::string& set) {
    return [=](std::size_t n) {
        std::string text = english(n);
        for (char& c : text) c = set.find(c) == npos ? c : 'o';
        return Sample{text, set};
    };
}

/// Text of nothing but members.
inline Sample members_only(std::size_t n) {
    Random random;
    std::string text;
    while (text.size() != n) text += four[random.below(four.size())];
    return {text, four};
}

inline std::string repeat(const std::string& bit, std::size_t n) {
    std::string text;
    while (text.size() < n) text += bit;
    text.resize(n);
    return text;
}

inline std::string random_ab(Random& random, std::size_t n) {
    std::string text;
    while (text.size() != n) text += "ab"[random.below(2)];
    return text;
}

inline Sample hard_middle(std::size_t n) {
    Sample sample{repeat("ab", n), repeat("ab", n / 2)};
    sample.wanted[n / 4] = 'c';
    return sample;
}

inline Sample hard_random(std::size_t n) {
    Random random;
    const std::string text = random_ab(random, n);
    return {text, random_ab(random, 64)};
}

inline Sample hard_fibonacci(std::size_t n) {
    std::string text = "ab", before = "a";
    while (text.size() < n) before = std::exchange(text, text + before);
    text.resize(n);
    std::string wanted = text.substr(0, 90); // its last three letters are "aba", and "bb" is never there
    wanted.back() = 'b';
    return {text, wanted};
}

inline std::vector<Row> hard_rows(const std::string& name, Way way) {
    const std::string a63(63, 'a');
    const auto in_a = [](const std::string& wanted) {
        return [=](std::size_t n) { return Sample{std::string(n, 'a'), wanted}; };
    };
    return {
        {name + " a..ab half", way, long_sizes,
         [=](std::size_t n) { return in_a(std::string(n / 2 - 1, 'a') + "b")(n); }},
        {name + " a..ab 64", way, long_sizes, in_a(a63 + "b")},
        {name + " ba..a 64", way, long_sizes, in_a(std::string("b") + a63)},
        {name + " ab..c..ab", way, long_sizes, hard_middle},
        {name + " a63 in a62b", way, long_sizes,
         [=](std::size_t n) {
             return Sample{repeat(a63.substr(1) + "b", n), a63};
         }},
        {name + " far a", way, long_sizes,
         [=](std::size_t n) {
             Sample sample{repeat("a" + std::string(127, 'b'), n), ""};
             sample.wanted = sample.text.substr(0, n / 2);
             sample.wanted[n / 4] = 'c';
             return sample;
         }},
        {name + " random ab", way, long_sizes, hard_random},
        {name + " fibonacci", way, long_sizes, hard_fibonacci},
        {name + " easy", way, long_sizes, never(ordinary)},
    };
}

// --- the kinds ---

inline std::size_t naive_find(const std::string& text, const std::string& wanted, std::size_t pos) {
    return text.find(wanted, pos);
}

/// A match lies before `end`.
inline std::size_t naive_rfind(const std::string& text, const std::string& wanted, std::size_t end) {
    return end < wanted.size() ? npos : text.rfind(wanted, end - wanted.size());
}

inline std::size_t naive_find_nocase(std::string text, std::string wanted, std::size_t pos) {
    const auto lower = [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); };
    std::transform(text.begin(), text.end(), text.begin(), lower);
    std::transform(wanted.begin(), wanted.end(), wanted.begin(), lower);
    return text.find(wanted, pos);
}

inline const Kind find_char{naive_find,
                            {{"find char never", Way::first, all_sizes, never("z")},
                             {"find char rare", Way::first, all_sizes, at_three_quarters("z")},
                             {"find char common", Way::all, to_4096, never("e")}}};

inline const Kind rfind_char{naive_rfind,
                             {{"rfind char never", Way::last, all_sizes, never("z")},
                              {"rfind char common", Way::all_backwards, to_4096, never("e")}}};

inline const Kind find_text{naive_find,
                            {{"find text never j", Way::first, from_24, never("jubilant")},
                             {"find text never t", Way::first, from_24, never("thousand")},
                             {"find text rare", Way::first, to_4096, at_end("thousand")},
                             {"find text common", Way::all, {64, 4096}, never("the ")},
                             {"find text of 2", Way::first, one_size, never("tj")},
                             {"find text of 32", Way::first, one_size, never("thousands of years ago the river")}}};

inline const Kind rfind_text{naive_rfind,
                             {{"rfind text never", Way::last, from_24, never("thousand")},
                              {"rfind text rare", Way::last, to_4096, at_begin("thousand")}}};

inline const Kind find_nocase{[](const std::string& text, const std::string& wanted, std::size_t pos) {
                                  return naive_find_nocase(text, wanted, pos);
                              },
                              {{"find nocase never", Way::first, from_24, never("tHOUSANd")},
                               {"find nocase rare", Way::first, to_4096, [](std::size_t n) {
                                    return Sample{planted(n, "ThouSand", n - 8).text, "tHOUSANd"};
                                }}}};

inline const Kind first_of{
    [](const std::string& text, const std::string& set, std::size_t pos) { return text.find_first_of(set, pos); },
    {{"first of 4 never", Way::first, all_sizes, without(four)},
     {"first of 21 never", Way::first, all_sizes, without(twenty_one)},
     {"first of 4 common", Way::all, {64, 4096}, never(four)},
     {"first of 21 common", Way::all, {64, 4096}, never(twenty_one)}}};

inline const Kind first_not_of{
    [](const std::string& text, const std::string& set, std::size_t pos) { return text.find_first_not_of(set, pos); },
    {{"first not of 4 never", Way::first, all_sizes, members_only}}};

inline const Kind last_of{
    [](const std::string& text, const std::string& set, std::size_t) { return text.find_last_of(set); },
    {{"last of 4 never", Way::last, all_sizes, without(four)}}};

inline const Kind hard{naive_find, hard_rows("hard", Way::first)};
inline const Kind back_hard{naive_rfind, hard_rows("back hard", Way::last)};

/// What a search that looks at each place anew does in well under a millisecond.
inline bool bearable(const Row& row, std::size_t n) {
    return n * row.sample(n).wanted.size() <= std::size_t{1} << 19;
}

/// Where a table that must be built first can pay.
inline bool long_once(const Row& row, std::size_t n) {
    return n >= 4096 && row.way == Way::first;
}

} // namespace bench

#endif
