// Searching against peers. A row is named WIDTH/OPERATION/WHO/SIZE; bench/report.py divides them.
//
// Goals, as ratios within one run:
//   16-bit           at least 1.5 times faster than the best peer
//   8-bit            at or ahead of the best peer, but at most 2.3 times memrchr, which is hand-written 256-bit code
//   8 to 24          at most 1.2 times the best peer at these sizes, where a call costs a nanosecond or two
//   hard, back hard  texts made to defeat a search: at most 4 times `hard easy` or `back hard easy` of the same size,
//                    which looks for an ordinary text of the same length in another
//
// `never` finds nothing and `rare` one match, late; `common` walks through all matches with a call for each. The
// searchers that must be built first are built in the timed call, as the others prepare in it, too.
#include "texts.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <functional>

#ifdef BENCH_ABSL
#include <absl/strings/string_view.h>
#endif
#ifdef BENCH_BOOST
#include <boost/algorithm/searching/boyer_moore_horspool.hpp>
#include <boost/algorithm/string/find.hpp>
#include <boost/range/iterator_range.hpp>
#endif
#ifdef BENCH_ICU
#include <unicode/ustring.h>
#endif
#ifdef BENCH_QT
#include <QByteArrayView>
#include <QLatin1String>
#include <QStringView>
#endif

namespace {

using namespace bench;
using benchmark::State;

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
    const auto run = [=, naive = kind.naive](State& state, const Row& row, std::size_t n) {
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

const std::vector<std::size_t> all_sizes{8, 24, 64, 4096, 65536}, from_24{24, 64, 4096, 65536}, to_4096{24, 64, 4096},
    long_sizes{4096, 65536}, one_size{4096};

/// English text with `wanted` written over it at `pos`.
Sample planted(std::size_t n, const std::string& wanted, std::size_t pos) {
    return {english(n).replace(pos, wanted.size(), wanted), wanted};
}

auto never(const std::string& wanted) {
    return [=](std::size_t n) { return Sample{english(n), wanted}; };
}
auto at_three_quarters(const std::string& wanted) {
    return [=](std::size_t n) { return planted(n, wanted, n * 3 / 4); };
}
auto at_begin(const std::string& wanted) {
    return [=](std::size_t n) { return planted(n, wanted, 0); };
}
auto at_end(const std::string& wanted) {
    return [=](std::size_t n) { return planted(n, wanted, n - wanted.size()); };
}

const std::string ordinary = "the window of the house that was little more than a garden, and up"; // not in `english`

const std::string four = " ,.;", twenty_one = "\t\n\r !\"#&'(),./:;?@[]_";

/// Text without the members of the set.
auto without(const std::string& set) {
    return [=](std::size_t n) {
        std::string text = english(n);
        for (char& c : text) c = set.find(c) == npos ? c : 'o';
        return Sample{text, set};
    };
}

/// Text of nothing but members.
Sample members_only(std::size_t n) {
    Random random;
    std::string text;
    while (text.size() != n) text += four[random.below(four.size())];
    return {text, four};
}

std::string repeat(const std::string& bit, std::size_t n) {
    std::string text;
    while (text.size() < n) text += bit;
    text.resize(n);
    return text;
}

std::string random_ab(Random& random, std::size_t n) {
    std::string text;
    while (text.size() != n) text += "ab"[random.below(2)];
    return text;
}

Sample hard_middle(std::size_t n) {
    Sample sample{repeat("ab", n), repeat("ab", n / 2)};
    sample.wanted[n / 4] = 'c';
    return sample;
}

Sample hard_random(std::size_t n) {
    Random random;
    const std::string text = random_ab(random, n);
    return {text, random_ab(random, 64)};
}

Sample hard_fibonacci(std::size_t n) {
    std::string text = "ab", before = "a";
    while (text.size() < n) before = std::exchange(text, text + before);
    text.resize(n);
    std::string wanted = text.substr(0, 90); // its last three letters are "aba", and "bb" is never there
    wanted.back() = 'b';
    return {text, wanted};
}

std::vector<Row> hard_rows(const std::string& name, Way way) {
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

std::size_t naive_find(const std::string& text, const std::string& wanted, std::size_t pos) {
    return text.find(wanted, pos);
}

/// A match lies before `end`.
std::size_t naive_rfind(const std::string& text, const std::string& wanted, std::size_t end) {
    return end < wanted.size() ? npos : text.rfind(wanted, end - wanted.size());
}

std::size_t naive_find_nocase(std::string text, std::string wanted, std::size_t pos) {
    const auto lower = [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); };
    std::transform(text.begin(), text.end(), text.begin(), lower);
    std::transform(wanted.begin(), wanted.end(), wanted.begin(), lower);
    return text.find(wanted, pos);
}

const Kind find_char{naive_find,
                     {{"find char never", Way::first, all_sizes, never("z")},
                      {"find char rare", Way::first, all_sizes, at_three_quarters("z")},
                      {"find char common", Way::all, to_4096, never("e")}}};

const Kind rfind_char{naive_rfind,
                      {{"rfind char never", Way::last, all_sizes, never("z")},
                       {"rfind char common", Way::all_backwards, to_4096, never("e")}}};

const Kind find_text{naive_find,
                     {{"find text never j", Way::first, from_24, never("jubilant")},
                      {"find text never t", Way::first, from_24, never("thousand")},
                      {"find text rare", Way::first, to_4096, at_end("thousand")},
                      {"find text common", Way::all, {64, 4096}, never("the ")},
                      {"find text of 2", Way::first, one_size, never("tj")},
                      {"find text of 32", Way::first, one_size, never("thousands of years ago the river")}}};

const Kind rfind_text{naive_rfind,
                      {{"rfind text never", Way::last, from_24, never("thousand")},
                       {"rfind text rare", Way::last, to_4096, at_begin("thousand")}}};

const Kind find_nocase{[](const std::string& text, const std::string& wanted, std::size_t pos) {
                           return naive_find_nocase(text, wanted, pos);
                       },
                       {{"find nocase never", Way::first, from_24, never("tHOUSANd")},
                        {"find nocase rare", Way::first, to_4096, [](std::size_t n) {
                             return Sample{planted(n, "ThouSand", n - 8).text, "tHOUSANd"};
                         }}}};

const Kind first_of{
    [](const std::string& text, const std::string& set, std::size_t pos) { return text.find_first_of(set, pos); },
    {{"first of 4 never", Way::first, all_sizes, without(four)},
     {"first of 21 never", Way::first, all_sizes, without(twenty_one)},
     {"first of 4 common", Way::all, {64, 4096}, never(four)},
     {"first of 21 common", Way::all, {64, 4096}, never(twenty_one)}}};

const Kind first_not_of{
    [](const std::string& text, const std::string& set, std::size_t pos) { return text.find_first_not_of(set, pos); },
    {{"first not of 4 never", Way::first, all_sizes, members_only}}};

const Kind last_of{[](const std::string& text, const std::string& set, std::size_t) { return text.find_last_of(set); },
                   {{"last of 4 never", Way::last, all_sizes, without(four)}}};

const Kind hard{naive_find, hard_rows("hard", Way::first)};
const Kind back_hard{naive_rfind, hard_rows("back hard", Way::last)};

/// What a search that looks at each place anew does in well under a millisecond.
bool bearable(const Row& row, std::size_t n) {
    return n * row.sample(n).wanted.size() <= std::size_t{1} << 19;
}

/// Where a table that must be built first can pay.
bool long_once(const Row& row, std::size_t n) {
    return n >= 4096 && row.way == Way::first;
}

// --- the libraries ---

std::size_t from_kord(unsigned int pos) {
    return pos == KordCharacterRange<char>::npos ? npos : pos;
}

template <class C>
std::size_t from_pointer(View<C> text, const void* found) {
    return found == nullptr ? npos : static_cast<std::size_t>(static_cast<const C*>(found) - text.data());
}

template <class Iterator>
std::size_t from_iterator(Iterator first, Iterator last, Iterator found) {
    return found == last ? npos : static_cast<std::size_t>(found - first);
}

template <class C>
void add_kord() {
    const auto as_unit = [](View<C> view) { return static_cast<Unit<C>>(view.front()); };
    const auto at = [](std::size_t pos) { return static_cast<unsigned int>(pos); };
    const auto find = [=](const auto& text, const auto& wanted, std::size_t pos) {
        return from_kord(text.find(wanted, at(pos)));
    };
    const auto rfind = [](const auto& text, const auto& wanted, std::size_t) { return from_kord(text.rfind(wanted)); };
    add<C>(find_char, "kord", as_kord, as_unit, find);
    add<C>(find_text, "kord", as_kord, as_kord, find);
    add<C>(hard, "kord", as_kord, as_kord, find);
    add<C>(rfind_char, "kord", as_kord, as_unit,
           [=](const auto& text, auto c, std::size_t end) { return from_kord(text.rfind(c, at(end - 1))); });
    add<C>(rfind_text, "kord", as_kord, as_kord, rfind);
    add<C>(back_hard, "kord", as_kord, as_kord, rfind);
    add<C>(find_nocase, "kord", as_kord, as_kord, [=](const auto& text, const auto& wanted, std::size_t pos) {
        return from_kord(text.find_nocase(wanted, at(pos)));
    });
    add<C>(first_of, "kord", as_kord, as_kord, [=](const auto& text, const auto& set, std::size_t pos) {
        return from_kord(text.find_first_of(set, at(pos)));
    });
    add<C>(first_not_of, "kord", as_kord, as_kord, [=](const auto& text, const auto& set, std::size_t pos) {
        return from_kord(text.find_first_not_of(set, at(pos)));
    });
    add<C>(last_of, "kord", as_kord, as_kord,
           [](const auto& text, const auto& set, std::size_t) { return from_kord(text.find_last_of(set)); });
}

template <class C>
void add_std() {
    const auto find = [](auto text, auto wanted, std::size_t pos) { return text.find(wanted, pos); };
    const auto rfind = [](auto text, auto wanted, std::size_t) { return text.rfind(wanted); };
    add<C>(find_char, "std", as_view, as_character, find);
    add<C>(find_text, "std", as_view, as_view, find);
    add<C>(only(hard, bearable), "std", as_view, as_view, find);
    add<C>(rfind_char, "std", as_view, as_character,
           [](auto text, auto c, std::size_t end) { return text.rfind(c, end - 1); });
    add<C>(rfind_text, "std", as_view, as_view, rfind);
    add<C>(only(back_hard, bearable), "std", as_view, as_view, rfind);
    add<C>(only(find_text, long_once), "std-horspool", as_view, as_view, [](auto text, auto wanted, std::size_t) {
        const std::boyer_moore_horspool_searcher searcher(wanted.begin(), wanted.end());
        return from_iterator(text.begin(), text.end(), searcher(text.begin(), text.end()).first);
    });
    add<C>(first_of, "std", as_view, as_view,
           [](auto text, auto set, std::size_t pos) { return text.find_first_of(set, pos); });
    add<C>(first_not_of, "std", as_view, as_view,
           [](auto text, auto set, std::size_t pos) { return text.find_first_not_of(set, pos); });
    add<C>(last_of, "std", as_view, as_view, [](auto text, auto set, std::size_t) { return text.find_last_of(set); });
}

using Bytes = View<char>;

/// The GNU C library; the texts end in a zero.
void add_libc() {
    add<char>(find_char, "memchr", as_view, as_character, [](Bytes text, char c, std::size_t pos) {
        return from_pointer(text, std::memchr(text.data() + pos, c, text.size() - pos));
    });
    add<char>(rfind_char, "memrchr", as_view, as_character,
              [](Bytes text, char c, std::size_t end) { return from_pointer(text, memrchr(text.data(), c, end)); });
    const auto find = [](Bytes text, Bytes wanted, std::size_t pos) {
        return from_pointer(text, memmem(text.data() + pos, text.size() - pos, wanted.data(), wanted.size()));
    };
    add<char>(find_text, "memmem", as_view, as_view, find);
    add<char>(hard, "memmem", as_view, as_view, find);
    add<char>(find_nocase, "strcasestr", as_view, as_view, [](Bytes text, Bytes wanted, std::size_t pos) {
        return from_pointer(text, strcasestr(text.data() + pos, wanted.data()));
    });
    const auto end_of_span = [](Bytes text, std::size_t pos) { return pos == text.size() ? npos : pos; };
    add<char>(first_of, "strcspn", as_view, as_view, [=](Bytes text, Bytes set, std::size_t pos) {
        return end_of_span(text, pos + std::strcspn(text.data() + pos, set.data()));
    });
    add<char>(first_not_of, "strspn", as_view, as_view, [=](Bytes text, Bytes set, std::size_t pos) {
        return end_of_span(text, pos + std::strspn(text.data() + pos, set.data()));
    });
}

#ifdef BENCH_ABSL
void add_absl() {
    const auto as_absl = [](Bytes view) { return absl::string_view(view.data(), view.size()); };
    using Text = absl::string_view;
    add<char>(only(find_text, long_once), "absl", as_absl, as_absl,
              [](Text text, Text wanted, std::size_t pos) { return text.find(wanted, pos); });
    add<char>(first_of, "absl", as_absl, as_absl,
              [](Text text, Text set, std::size_t pos) { return text.find_first_of(set, pos); });
    add<char>(first_not_of, "absl", as_absl, as_absl,
              [](Text text, Text set, std::size_t pos) { return text.find_first_not_of(set, pos); });
    add<char>(last_of, "absl", as_absl, as_absl,
              [](Text text, Text set, std::size_t) { return text.find_last_of(set); });
}
#endif

#ifdef BENCH_BOOST
template <class C>
void add_boost() {
    add<C>(only(find_text, long_once), "boost-horspool", as_view, as_view, [](auto text, auto wanted, std::size_t) {
        const auto found =
            boost::algorithm::boyer_moore_horspool_search(text.begin(), text.end(), wanted.begin(), wanted.end());
        return from_iterator(text.begin(), text.end(), found.first);
    });
    add<C>(only(find_text, long_once), "boost", as_view, as_view, [](auto text, auto wanted, std::size_t) {
        return from_iterator(text.begin(), text.end(), boost::find_first(text, wanted).begin());
    });
}

/// The locale it asks has no 16-bit characters.
void add_boost_nocase() {
    add<char>(find_nocase, "boost", as_view, as_view, [](Bytes text, Bytes wanted, std::size_t) {
        return from_iterator(text.begin(), text.end(), boost::ifind_first(text, wanted).begin());
    });
}
#endif

#ifdef BENCH_ICU
using Units = View<char16_t>;

void add_icu() {
    const auto size = [](std::size_t n) { return static_cast<std::int32_t>(n); };
    add<char16_t>(find_char, "icu", as_view, as_character, [=](Units text, char16_t c, std::size_t pos) {
        return from_pointer(text, u_memchr(text.data() + pos, c, size(text.size() - pos)));
    });
    add<char16_t>(rfind_char, "icu", as_view, as_character, [=](Units text, char16_t c, std::size_t end) {
        return from_pointer(text, u_memrchr(text.data(), c, size(end)));
    });
    add<char16_t>(find_text, "icu", as_view, as_view, [=](Units text, Units wanted, std::size_t pos) {
        return from_pointer(
            text, u_strFindFirst(text.data() + pos, size(text.size() - pos), wanted.data(), size(wanted.size())));
    });
    add<char16_t>(rfind_text, "icu", as_view, as_view, [=](Units text, Units wanted, std::size_t) {
        return from_pointer(text, u_strFindLast(text.data(), size(text.size()), wanted.data(), size(wanted.size())));
    });
    const auto end_of_span = [](Units text, std::size_t pos, std::int32_t n) {
        pos += static_cast<std::size_t>(n);
        return pos == text.size() ? npos : pos;
    };
    add<char16_t>(first_of, "icu", as_view, as_view, [=](Units text, Units set, std::size_t pos) {
        return end_of_span(text, pos, u_strcspn(text.data() + pos, set.data()));
    });
    add<char16_t>(first_not_of, "icu", as_view, as_view, [=](Units text, Units set, std::size_t pos) {
        return end_of_span(text, pos, u_strspn(text.data() + pos, set.data()));
    });
}
#endif

#ifdef BENCH_QT
std::size_t from_qt(qsizetype pos) {
    return static_cast<std::size_t>(pos);
}

template <class C, class AsText, class AsChar, class AsAnyCase>
void add_qt(AsText as_text, AsChar as_char, AsAnyCase as_any_case) {
    const auto at = [](std::size_t pos) { return static_cast<qsizetype>(pos); };
    const auto find = [=](auto text, auto wanted, std::size_t pos) { return from_qt(text.indexOf(wanted, at(pos))); };
    add<C>(find_char, "qt", as_text, as_char, find);
    add<C>(find_text, "qt", as_text, as_text, find);
    add<C>(rfind_char, "qt", as_text, as_char,
           [=](auto text, auto c, std::size_t end) { return from_qt(text.lastIndexOf(c, at(end) - 1)); });
    add<C>(rfind_text, "qt", as_text, as_text,
           [](auto text, auto wanted, std::size_t) { return from_qt(text.lastIndexOf(wanted)); });
    add<C>(find_nocase, "qt", as_any_case, as_any_case, [=](auto text, auto wanted, std::size_t pos) {
        return from_qt(text.indexOf(wanted, at(pos), Qt::CaseInsensitive));
    });
}

void add_qt_widths() {
    const auto as_bytes = [](Bytes view) { return QByteArrayView(view.data(), static_cast<qsizetype>(view.size())); };
    const auto as_latin = [](Bytes view) { return QLatin1String(view.data(), static_cast<qsizetype>(view.size())); };
    const auto as_string = [](View<char16_t> view) {
        return QStringView(view.data(), static_cast<qsizetype>(view.size()));
    };
    add_qt<char>(as_bytes, as_character, as_latin);
    add_qt<char16_t>(
        as_string, [](View<char16_t> view) { return QChar(view.front()); }, as_string);
}
#endif

const bool registered = [] {
    add_kord<char>();
    add_std<char>();
    add_libc();
    add_kord<char16_t>();
    add_std<char16_t>();
#ifdef BENCH_ABSL
    add_absl();
#endif
#ifdef BENCH_BOOST
    add_boost<char>();
    add_boost<char16_t>();
    add_boost_nocase();
#endif
#ifdef BENCH_ICU
    add_icu();
#endif
#ifdef BENCH_QT
    add_qt_widths();
#endif
    return true;
}();

} // namespace
