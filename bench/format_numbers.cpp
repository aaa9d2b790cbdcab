// Writing numbers: nanoseconds per number. A row is named WIDTH/OPERATION/WHO; bench/report.py divides them.
//
//   number ...   without a template: by kord into a string that owns a block, by others into a buffer
//   real of ...  `KordFromReal`; "any" are numbers of all exponents
//
// Goal, as a ratio within one run: `number long` at most 1.3 times std::to_chars, which writes no plus.
#include "writing.h"

#include <kord/real.h>

#include <charconv>
#include <cstdio>

#ifdef BENCH_ABSL
#include <absl/strings/str_format.h>
#endif
#ifdef BENCH_FMT
#include <fmt/format.h>
#endif
#ifdef BENCH_QT
#include <QString>
#endif

namespace {

using namespace bench;

/// Room for any number.
using Buffer = std::array<char, 32>;

/// write(first, last, number) into a buffer, of which it gives the end.
template <class Row, class Write>
void add_buffer(const Row& row, const std::string& library, Write write) {
    add<char>(row, library, as_view, [buffer = Buffer(), write](auto number) mutable {
        const char* const end = write(buffer.data(), buffer.data() + buffer.size(), number);
        return View<char>(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    });
}

struct Number {
    template <class C>
    static auto kord() {
        return [text = Text<C>()](auto number) mutable -> const Text<C>& {
            text.format(number);
            return text;
        };
    }
};
struct LongNumber : Number {
    static constexpr char operation[] = "number long";
    static auto values(Random& random) { return std::tuple(mixed(random)); }
};
struct DoubleNumber : Number {
    static constexpr char operation[] = "number double";
    static auto values(Random& random) { return std::tuple(decimal(random, 6)); }
};

void add_numbers() {
    const LongNumber integer;
    const DoubleNumber real;
    add_kord(integer);
    add_kord(real);
    add_buffer(integer, "to_chars", [](char* at, char* end, long n) { return std::to_chars(at, end, n).ptr; });
    add_buffer(real, "to_chars", [](char* at, char* end, double x) {
        return std::to_chars(at, end, x, std::chars_format::general, 16).ptr;
    });
    add_buffer(real, "snprintf", [](char* at, char*, double x) { return at + std::snprintf(at, 32, "%.16g", x); });
#ifdef BENCH_ABSL
    add_buffer(real, "absl", [](char* at, char*, double x) { return at + absl::SNPrintF(at, 32, "%.16g", x); });
#endif
#ifdef BENCH_FMT
    add_buffer(real, "fmt",
               [](char* at, char*, double x) { return fmt::format_to_n(at, 32, fmt::runtime("{:.16g}"), x).out; });
#endif
#ifdef BENCH_QT
    add<char16_t>(integer, "qt", as_view,
                  [text = QString()](long n) mutable -> const QString& { return text.setNum(n); });
    add<char16_t>(real, "qt", as_view,
                  [text = QString()](double x) mutable -> const QString& { return text.setNum(x, 'g', 16); });
#endif
}

struct Real {
    std::string operation;
    int precision;
    bool any;

    std::tuple<double> values(Random& random) const { return {any ? any_real(random) : decimal(random, 6)}; }

    template <class C>
    auto kord() const {
        return [buffer = Buffer(), digits = precision](double x) mutable {
            return KordFromReal(x, buffer.data(), digits, false, true, false);
        };
    }
};

/// Where kord writes decimals others have to be asked for them, and elsewhere for 15 or 16 digits.
void add_real(const Real& row) {
    const int decimals = row.precision, digits = decimals < 0 ? 16 : 15;
    const double limit = decimals < 0 ? 0 : std::pow(10, 15 - decimals);
    add<char>(row, "kord", as_view, row.kord<char>());
    add_buffer(row, "to_chars", [=](char* at, char* end, double x) {
        return std::abs(x) < limit ? std::to_chars(at, end, x, std::chars_format::fixed, decimals).ptr
                                   : std::to_chars(at, end, x, std::chars_format::general, digits).ptr;
    });
    add_buffer(row, "snprintf", [=](char* at, char*, double x) {
        return at + (std::abs(x) < limit ? std::snprintf(at, 32, "%.*f", decimals, x)
                                         : std::snprintf(at, 32, "%.*g", digits, x));
    });
}

const bool registered = [] {
    add_numbers();
    for (const bool any : {false, true}) {
        for (const int precision : {2, 6, -1}) {
            const std::string form = precision < 0 ? "16 digits" : std::to_string(precision) + " decimals";
            add_real({"real of " + form + (any ? " any" : ""), precision, any});
        }
    }
    return true;
}();

} // namespace
