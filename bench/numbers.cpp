// Reading numbers: nanoseconds per number, over a table of them with the lengths mixed, and too many for a processor to
// learn how each one branches (some know 16384 of them by heart). A row is named WIDTH/OPERATION/WHO; bench/report.py
// divides them.
//
// Goal, as a ratio within one run: at or ahead of std::from_chars. It reads no 16-bit text, so there, as a program
// would have to, it gets a copy made in a buffer.
#include "texts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#ifdef BENCH_ABSL
#include <absl/strings/numbers.h>
#endif
#ifdef BENCH_BOOST
#include <boost/lexical_cast.hpp>
#endif
#ifdef BENCH_FAST_FLOAT
#include <fast_float/fast_float.h>
#endif
#ifdef BENCH_QT
#include <QString>
#endif

namespace {

using namespace bench;
using benchmark::DoNotOptimize;
using benchmark::State;

constexpr std::size_t table_size = 65536;

/// Numbers of `least` to `most` digits, none with a sign. Reals have a point behind the first `before` digits, or
/// anywhere behind the first one if that is 0.
template <class Number>
struct Row {
    std::string operation;
    std::size_t least, most, before;
};

using IntRow = Row<int>;
using UnsignedRow = Row<unsigned int>;
using DoubleRow = Row<double>;

const std::vector<IntRow> ints{{"int of 1-5", 1, 5, 0}, {"int of 9-10", 9, 10, 0}};
const std::vector<UnsignedRow> unsigneds{{"unsigned of 1-5", 1, 5, 0}, {"unsigned of 9-10", 9, 10, 0}};
const std::vector<DoubleRow> doubles{
    {"double of 15", 15, 15, 6}, {"double of 1-6", 1, 6, 0}, {"double of 18", 18, 18, 6}};

/// `n` digits; the first is never a 0, and a 1 where there are ten, which 31 bits must hold.
std::string digits(Random& random, std::size_t n) {
    std::string text(1, static_cast<char>(n == 10 ? '1' : '1' + random.below(9)));
    while (text.size() != n) text += static_cast<char>('0' + random.below(10));
    return text;
}

template <class Number>
std::vector<std::string> texts_of(const Row<Number>& row) {
    Random random;
    std::vector<std::string> texts;
    while (texts.size() != table_size) {
        const std::size_t n = row.least + random.below(row.most - row.least + 1);
        std::string text = digits(random, n);
        if (std::is_same_v<Number, double>) text.insert(row.before == 0 ? 1 + random.below(n) : row.before, 1, '.');
        texts.push_back(text);
    }
    return texts;
}

/// Exact, but where there are more digits than a double holds: kord rounds with each of those and once more.
template <class Number>
bool agrees(Number read, const std::string& text) {
    Number right{};
    std::from_chars(text.data(), text.data() + text.size(), right);
    if constexpr (std::is_same_v<Number, double>) {
        return std::abs(read - right) <= (text.size() > 16 ? right * 6e-16 : 0);
    } else {
        return read == right;
    }
}

template <class C, class Number, class As, class Read>
void add(const std::vector<Row<Number>>& rows, const std::string& library, As as, Read read) {
    const auto run = [=](State& state, const Row<Number>& row) {
        const std::vector<std::string> texts = texts_of(row);
        std::basic_string<C> all; // close together, so that reading is measured and not fetching; zeros end them
        for (const std::string& text : texts) (all += widen<C>(text)) += C{};
        std::vector<decltype(as(View<C>()))> table;
        for (const C* at = all.data(); table.size() != table_size; at += texts[table.size() - 1].size() + 1) {
            table.push_back(as(View<C>(at, texts[table.size()].size())));
        }
        for (std::size_t i = 0; i != table_size; ++i) {
            if (!agrees<Number>(read(table[i]), texts[i])) return state.SkipWithError("wrong answer");
        }
        while (state.KeepRunningBatch(table_size)) {
            for (auto& text : table) DoNotOptimize(read(text));
        }
    };
    for (const Row<Number>& row : rows) {
        benchmark::RegisterBenchmark(row_name<C>(row.operation, library).c_str(), run, row);
    }
}

template <class C, class As, class Read>
void add_integers(const std::string& library, As as, Read read) {
    add<C>(ints, library, as, [=](const auto& text) { return read(text, int{}); });
    add<C>(unsigneds, library, as, [=](const auto& text) { return read(text, 0u); });
}

template <class C, class As, class Read>
void add_numbers(const std::string& library, As as, Read read) {
    add_integers<C>(library, as, read);
    add<C>(doubles, library, as, [=](const auto& text) { return read(text, 0.0); });
}

template <class C>
void add_kord() {
    add<C>(ints, "kord", as_kord, [](const auto& text) { return text.as_int(); });
    add<C>(unsigneds, "kord", as_kord, [](const auto& text) { return text.as_unsigned(); });
    add<C>(doubles, "kord", as_kord, [](const auto& text) { return text.as_double(); });
}

using Bytes = View<char>;

void add_std() {
    add_numbers<char>("std", as_view, [](Bytes text, auto number) {
        std::from_chars(text.data(), text.data() + text.size(), number);
        return number;
    });
    add_numbers<char16_t>("std of a copy", as_view, [](View<char16_t> text, auto number) {
        std::array<char, 32> copy;
        const auto end = std::transform(text.begin(), text.end(), copy.begin(),
                                        [](char16_t c) { return static_cast<char>(c < 256 ? c : 0); });
        std::from_chars(copy.data(), &*end, number);
        return number;
    });
}

void add_libc() {
    add<char>(ints, "strtol", as_view,
              [](Bytes text) { return static_cast<int>(std::strtol(text.data(), nullptr, 10)); });
    add<char>(unsigneds, "strtoul", as_view,
              [](Bytes text) { return static_cast<unsigned int>(std::strtoul(text.data(), nullptr, 10)); });
    add<char>(doubles, "strtod", as_view, [](Bytes text) { return std::strtod(text.data(), nullptr); });
}

#ifdef BENCH_ABSL
void add_absl() {
    const auto as_absl = [](Bytes view) { return absl::string_view(view.data(), view.size()); };
    add_integers<char>("absl", as_absl, [](absl::string_view text, auto number) {
        return absl::SimpleAtoi(text, &number) ? number : 0;
    });
    add<char>(doubles, "absl", as_absl, [](absl::string_view text) {
        double number = 0;
        return absl::SimpleAtod(text, &number) ? number : 0;
    });
}
#endif

#ifdef BENCH_BOOST
void add_boost() {
    add_integers<char>("boost", as_view, [](Bytes text, auto number) {
        return boost::lexical_cast<decltype(number)>(text.data(), text.size());
    });
}
#endif

#ifdef BENCH_FAST_FLOAT
void add_fast_float() {
    add<char>(doubles, "fast_float", as_view, [](Bytes text) {
        double number = 0;
        fast_float::from_chars(text.data(), text.data() + text.size(), number);
        return number;
    });
}
#endif

#ifdef BENCH_QT
void add_qt() {
    const auto as_qt = [](View<char16_t> view) {
        return QStringView(view.data(), static_cast<qsizetype>(view.size()));
    };
    add<char16_t>(ints, "qt", as_qt, [](QStringView text) { return text.toInt(); });
    add<char16_t>(unsigneds, "qt", as_qt, [](QStringView text) { return text.toUInt(); });
    add<char16_t>(doubles, "qt", as_qt, [](QStringView text) { return text.toDouble(); });
}
#endif

const bool registered = [] {
    add_kord<char>();
    add_kord<char16_t>();
    add_std();
    add_libc();
#ifdef BENCH_ABSL
    add_absl();
#endif
#ifdef BENCH_BOOST
    add_boost();
#endif
#ifdef BENCH_FAST_FLOAT
    add_fast_float();
#endif
#ifdef BENCH_QT
    add_qt();
#endif
    return true;
}();

} // namespace
