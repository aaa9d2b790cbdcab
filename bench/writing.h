#ifndef KORD_BENCH_WRITING_H
#define KORD_BENCH_WRITING_H

#include "texts.h"

#include <kord/string.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <tuple>

#ifdef BENCH_QT
#include <QString>
#endif

/// What the benchmarks that write text have in common: tables of arguments, too long for a processor to learn how each
/// one branches (some know 16384 of them by heart), and the timing loop. Every result must be the text that kord makes.
namespace bench {

inline constexpr std::size_t table_size = 65536;

template <class C>
using Text = std::conditional_t<sizeof(C) == 1, astring, ustring>;

// ---- the arguments --------------------------------------------------------------------------------------------------

/// Of 1 to `most` digits, each as often, below 2^31; none begins with a 0.
inline long magnitude(Random& random, std::size_t most) {
    std::size_t least = 1;
    for (std::size_t n = random.below(most); n != 0; --n) least *= 10;
    return static_cast<long>(least + random.below(std::min<std::size_t>(9 * least, 2147483648u - least)));
}

inline long mixed(Random& random) {
    const long n = magnitude(random, 10);
    return random.below(2) == 0 ? n : -n;
}

/// As people write them: at most 9 digits, and up to `decimals` of them behind the point.
inline double decimal(Random& random, std::size_t decimals) {
    double unit = 1;
    for (std::size_t n = random.below(decimals + 1); n != 0; --n) unit *= 10;
    const double value = static_cast<double>(magnitude(random, 9)) / unit;
    return random.below(2) == 0 ? value : -value;
}

/// Any bits that are a number.
inline double any_real(Random& random) {
    const auto bits = [&] { return std::uint64_t{random.below(1u << 31)}; };
    const double value = std::bit_cast<double>(bits() << 33 ^ bits() << 16 ^ bits());
    return std::isfinite(value) ? value : any_real(random);
}

inline std::string letters(Random& random, std::size_t n) {
    std::string text;
    while (text.size() != n) text += static_cast<char>('a' + random.below(26));
    return text;
}

/// The arguments, with change(text) for each text.
template <class Values, class Change>
auto with_texts(const Values& values, Change change) {
    const auto one = [&](const auto& value) {
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>) {
            return value;
        } else {
            return change(value);
        }
    };
    return std::apply([&](const auto&... value) { return std::tuple(one(value)...); }, values);
}

/// The same for every library; texts in the given width.
template <class C, class Row>
auto arguments_of(const Row& row) {
    const auto widened = [](const std::string& text) { return widen<C>(text); };
    Random random;
    std::vector<decltype(with_texts(row.values(random), widened))> table;
    while (table.size() != table_size) table.push_back(with_texts(row.values(random), widened));
    return table;
}

/// The arguments as a library wants them; each is made once, outside the loop.
template <class C, class As, class Table>
auto given(const Table& table, As as) {
    const auto one = [&](const auto& values) {
        return with_texts(values, [&](const std::basic_string<C>& text) { return as(View<C>(text)); });
    };
    std::vector<decltype(one(table.front()))> result;
    for (const auto& values : table) result.push_back(one(values));
    return result;
}

// ---- timing ---------------------------------------------------------------------------------------------------------

// Results as one type; `format` of an integer alone writes a plus where others have none.

inline std::string plain(std::string_view text) {
    return std::string(text.substr(text.starts_with('+') ? 1 : 0));
}
inline std::string plain(const char* text) {
    return plain(std::string_view(text));
}
template <class T>
std::string plain(const KordCharacterRange<T>& text) {
    std::string narrow;
    for (const T c : text) narrow += static_cast<char>(c);
    return plain(std::string_view(narrow));
}
#ifdef BENCH_QT
inline std::string plain(const QString& text) {
    return plain(std::string_view(text.toStdString()));
}
#endif

/// What kord makes of the arguments.
template <class Row>
std::vector<std::string> expected(const Row& row) {
    const auto own = arguments_of<char>(row);
    auto make = row.template kord<char>();
    std::vector<std::string> texts;
    for (const auto& arguments : given<char>(own, as_kord)) texts.push_back(plain(std::apply(make, arguments)));
    return texts;
}

/// Times make(arguments...), which gives a text of any type.
template <class C, class Row, class As, class Make>
void add(const Row& row, const std::string& library, As as, Make make) {
    const auto run = [=](benchmark::State& state) {
        const auto own = arguments_of<C>(row);
        const auto table = given<C>(own, as);
        const std::vector<std::string> texts = expected(row);
        Make made = make; // it may have a string of its own
        for (std::size_t i = 0; i != table_size; ++i) {
            const std::string text = plain(std::apply(made, table[i]));
            if (text != texts[i]) return state.SkipWithError(("'" + text + "' is not '" + texts[i] + "'").c_str());
        }
        while (state.KeepRunningBatch(table_size)) {
            for (const auto& arguments : table) benchmark::DoNotOptimize(std::apply(made, arguments));
        }
    };
    benchmark::RegisterBenchmark(row_name<C>(row.operation, library).c_str(), run);
}

template <class Row>
void add_kord(const Row& row) {
    add<char>(row, "kord", as_kord, row.template kord<char>());
    add<char16_t>(row, "kord", as_kord, row.template kord<char16_t>());
}

inline constexpr auto as_c_string = [](auto view) { return view.data(); };

} // namespace bench

#endif
