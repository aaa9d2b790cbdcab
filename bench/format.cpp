// Templates: nanoseconds per text, which is a new string. A row is named WIDTH/OPERATION/WHO; bench/report.py divides
// them. The libraries read their templates at run time and get their texts as they like them. The 8-bit rows of Qt make
// 16-bit text, as it has no other.
#include "writing.h"

#include <cstdio>

#ifdef BENCH_ABSL
#include <absl/strings/str_format.h>
#endif
#ifdef BENCH_FMT
#include <fmt/format.h>
#include <fmt/printf.h>
#endif
#ifdef BENCH_QT
#include <QString>
#endif

namespace {

using namespace bench;

// ---- the rows -------------------------------------------------------------------------------------------------------

/// A template in the characters of kord's family.
template <class C, const auto& text>
constexpr auto literal = [] {
    std::array<Unit<C>, std::size(text)> wide{};
    for (std::size_t i = 0; i != wide.size(); ++i) wide[i] = static_cast<Unit<C>>(text[i]);
    return wide;
}();

/// A row has the template as printf and as fmt have it. Of 8 bits it is text up to a zero for all; of 16 bits its
/// length is known, as Qt knows it.
template <class Row>
struct Formatted {
    template <class C>
    static auto kord() {
        constexpr const auto& characters = literal<C, Row::printf>;
        using Template = std::conditional_t<sizeof(C) == 1, const Unit<C>*, KordCharacterRange<Unit<C>>>;
        return [text_template = Template(characters.data())](const auto&... arguments) {
            Text<C> text;
            text.format(text_template, arguments...);
            return text;
        };
    }
};

struct Int : Formatted<Int> {
    static constexpr char operation[] = "format int", printf[] = "%d", braces[] = "{}";
    static auto values(Random& random) { return std::tuple(static_cast<int>(mixed(random))); }
};
struct KeyAndInt : Formatted<KeyAndInt> {
    static constexpr char operation[] = "format key and int", printf[] = "%s=%d", braces[] = "{}={}";
    static auto values(Random& random) { return std::tuple(letters(random, 5), static_cast<int>(mixed(random))); }
};
struct Hex : Formatted<Hex> {
    static constexpr char operation[] = "format hex", printf[] = "%08x", braces[] = "{:08x}";
    static auto values(Random& random) { return std::tuple(static_cast<unsigned int>(magnitude(random, 10))); }
};
struct TwoDecimals : Formatted<TwoDecimals> {
    static constexpr char operation[] = "format two decimals", printf[] = "%.2f", braces[] = "{:.2f}";
    static auto values(Random& random) { return std::tuple(decimal(random, 2)); }
};
struct SixDecimals : Formatted<SixDecimals> {
    static constexpr char operation[] = "format real", printf[] = "%f", braces[] = "{:f}";
    static auto values(Random& random) { return std::tuple(decimal(random, 6)); }
};
struct TwoTexts : Formatted<TwoTexts> {
    static constexpr char operation[] = "format two texts", printf[] = "%s and %s", braces[] = "{} and {}";
    static auto values(Random& random) { return std::tuple(letters(random, 12), letters(random, 12)); }
};
struct Padded : Formatted<Padded> {
    static constexpr char operation[] = "format padded", printf[] = "%-20s|%10s", braces[] = "{:<20}|{:>10}";
    static auto values(Random& random) {
        return std::tuple(letters(random, 5 + random.below(10)), letters(random, 1 + random.below(9)));
    }
};

/// 200 characters, and the placeholder in the middle of them.
template <std::size_t n>
constexpr std::array<char, 200 + n> in_sentences(const char (&placeholder)[n]) {
    std::array<char, 200 + n> text{};
    for (std::size_t i = 0; i != 200; ++i) text[i < 100 ? i : i + n - 1] = "The quick brown fox, "[i % 21];
    std::copy_n(placeholder, n - 1, &text[100]);
    return text;
}

struct LongTemplate : Formatted<LongTemplate> {
    static constexpr char operation[] = "format long template";
    static constexpr auto printf = in_sentences("%d"), braces = in_sentences("{}");
    static auto values(Random& random) { return Int::values(random); }
};

struct Unchecked : KeyAndInt {
    static constexpr char operation[] = "unchecked key and int";
};

// ---- the libraries --------------------------------------------------------------------------------------------------

template <class Row>
void add_absl([[maybe_unused]] const Row& row) {
#ifdef BENCH_ABSL
    const auto as_absl = [](View<char> view) { return absl::string_view(view.data(), view.size()); };
    add<char>(row, "absl", as_absl,
              [](const auto&... arguments) { return absl::StrFormat(std::data(Row::printf), arguments...); });
#endif
}

template <class Row>
void add_fmt([[maybe_unused]] const Row& row) {
#ifdef BENCH_FMT
    add<char>(row, "fmt", as_view,
              [](const auto&... arguments) { return fmt::format(fmt::runtime(std::data(Row::braces)), arguments...); });
    add<char>(row, "fmt-sprintf", as_view,
              [](const auto&... arguments) { return fmt::sprintf(std::data(Row::printf), arguments...); });
#endif
}

template <class Values>
constexpr bool numbers_only = false;
template <class... Numbers>
constexpr bool numbers_only<std::tuple<Numbers...>> = (std::is_arithmetic_v<Numbers> && ...);

/// Where there are texts, `asprintf` reads them in UTF-8: see `add_qt_arg`.
template <class Row>
void add_qt_printf([[maybe_unused]] const Row& row) {
#ifdef BENCH_QT
    const auto print = [](const auto&... arguments) { return QString::asprintf(std::data(Row::printf), arguments...); };
    add<char>(row, "qt asprintf", as_c_string, print);
    using Values = decltype(Row::values(std::declval<Random&>()));
    if constexpr (numbers_only<Values>) add<char16_t>(row, "qt asprintf", as_c_string, print);
#endif
}

template <class... Rows>
void add_templates(const Rows&... rows) {
    const auto one = []<class Row>(const Row& row) {
        add_kord(row);
        add<char>(row, "snprintf", as_c_string, [](const auto&... arguments) {
            std::array<char, 512> buffer;
            const int n = std::snprintf(buffer.data(), buffer.size(), std::data(Row::printf), arguments...);
            return std::string(buffer.data(), static_cast<std::size_t>(n));
        });
        add_absl(row);
        add_fmt(row);
        add_qt_printf(row);
    };
    (one(rows), ...);
}

void add_unchecked() {
    const Unchecked row;
    add<char>(row, "kord", as_c_string, [](const char* key, int n) {
        astring text;
        text.format_unchecked(Unchecked::printf, key, n);
        return text;
    });
    add<char>(row, "snprintf twice", as_c_string, [](const char* key, int n) {
        const auto size = static_cast<std::size_t>(std::snprintf(nullptr, 0, Unchecked::printf, key, n));
        std::string text(size, '\0');
        std::snprintf(text.data(), size + 1, Unchecked::printf, key, n);
        return text;
    });
    add_absl(row);
}

#ifdef BENCH_QT
template <class Row, class Make>
void add_qt_arg(const Row& row, const char* text, Make make) {
    const auto as_qt = [](View<char16_t> view) {
        return QStringView(view.data(), static_cast<qsizetype>(view.size())).toString();
    };
    add<char16_t>(row, "qt arg", as_qt,
                  [=, tmpl = QString(text)](const auto&... arguments) { return make(tmpl, arguments...); });
}

void add_qt_args() {
    using Template = const QString&;
    const auto in_turn = [](Template tmpl, auto... arguments) {
        QString text = tmpl;
        ((text = text.arg(arguments)), ...);
        return text;
    };
    add_qt_arg(Int(), "%1", in_turn);
    add_qt_arg(KeyAndInt(), "%1=%2", in_turn);
    add_qt_arg(LongTemplate(), in_sentences("%1").data(), in_turn);
    add_qt_arg(Hex(), "%1", [](Template tmpl, unsigned int n) { return tmpl.arg(n, 8, 16, QChar('0')); });
    add_qt_arg(TwoDecimals(), "%1", [](Template tmpl, double x) { return tmpl.arg(x, 0, 'f', 2); });
    add_qt_arg(SixDecimals(), "%1", [](Template tmpl, double x) { return tmpl.arg(x, 0, 'f', 6); });
    add_qt_arg(TwoTexts(), "%1 and %2", [](Template tmpl, Template a, Template b) { return tmpl.arg(a, b); });
    add_qt_arg(Padded(), "%1|%2", [](Template tmpl, Template a, Template b) { return tmpl.arg(a, -20).arg(b, 10); });
}
#endif

// ---- paths ----------------------------------------------------------------------------------------------------------

struct Path {
    std::string operation;
    BasicString<char>::t_format_path mode;

    /// 60 characters, of which `format_path` leaves 30.
    static std::tuple<std::string> values(Random& random) {
        std::string path = "C:\\";
        while (path.size() < 48) path += letters(random, 2 + random.below(8)) + "\\";
        return {path + letters(random, 60 - path.size())};
    }

    template <class C>
    auto kord() const {
        return [how = mode](const KordCharacterRange<Unit<C>>& path) {
            Text<C> text;
            text.assign(path);
            text.format_path(30, static_cast<typename BasicString<Unit<C>>::t_format_path>(how));
            return text;
        };
    }
};

const bool registered = [] {
    add_templates(Int(), KeyAndInt(), Hex(), TwoDecimals(), SixDecimals(), TwoTexts(), Padded(), LongTemplate());
    add_unchecked();
#ifdef BENCH_QT
    add_qt_args();
#endif
    using Mode = BasicString<char>;
    add_kord(Path{"path middle", Mode::ellipsis_middle});
    add_kord(Path{"path middle filled", Mode::ellipsis_middle_fill});
    add_kord(Path{"path end", Mode::ellipsis_end});
    add_kord(Path{"path begin", Mode::ellipsis_begin});
    return true;
}();

} // namespace
