// Comparing equal texts in two buffers, which is the most there can be to compare. A row is named
// WIDTH/OPERATION/WHO/SIZE; bench/report.py divides them.
//
// Goals, as ratios within one run:
//   16-bit   at least 1.5 times faster than the best peer
//   8-bit    at or ahead of the best peer, but at most 2.3 times memcmp and strncasecmp, which are hand-written 256-bit
//            code, and so are std::string_view and Qt on top of memcmp
//   8 to 24  at most 1.2 times the best peer at these sizes, where a call costs a nanosecond or two
#include "texts.h"

#include <cctype>
#include <cstring>

#include <strings.h>

#ifdef BENCH_ABSL
#include <absl/strings/match.h>
#endif
#ifdef BENCH_BOOST
#include <boost/algorithm/string/predicate.hpp>
#endif
#ifdef BENCH_ICU
#include <unicode/ustring.h>
#endif
#ifdef BENCH_QT
#include <QByteArrayView>
#include <QStringView>
#endif

namespace {

using namespace bench;
using benchmark::State;

/// How the second text is made from the first.
struct Row {
    std::string operation;
    char (*change)(char c);
};

const Row exact{"equal", [](char c) { return c; }};
const Row nocase{"equal nocase", [](char c) {
                     const int code = static_cast<unsigned char>(c);
                     return static_cast<char>(std::islower(code) && code % 3 != 0 ? std::toupper(code) : code);
                 }};

/// equal(a, b) takes texts of one length. Nor may it find the texts equal after a change in the last character.
template <class C, class As, class Equal>
void add(const Row& row, const std::string& library, As as, Equal equal) {
    const auto run = [=](State& state, std::size_t n) {
        const std::string text = english(n);
        std::string changed = text;
        for (char& c : changed) c = row.change(c);
        const std::basic_string<C> own_a = widen<C>(text), own_b = widen<C>(changed);
        changed.back() = '~';
        const std::basic_string<C> own_other = widen<C>(changed);
        auto a = as(View<C>(own_a)), b = as(View<C>(own_b));
        if (equal(a, as(View<C>(own_other)))) {
            state.SkipWithError("different texts are equal");
            return;
        }
        time(state, a, b, true, [&] { return equal(a, b); });
    };
    for (const std::size_t n : {8u, 24u, 64u, 4096u, 65536u}) {
        benchmark::RegisterBenchmark(row_name<C>(row.operation, library, n).c_str(), run, n);
    }
}

template <class C>
void add_all_widths() {
    add<C>(exact, "kord", as_kord, [](const auto& a, const auto& b) { return a.compare(b) == 0; });
    add<C>(nocase, "kord", as_kord, [](const auto& a, const auto& b) { return a.compare_nocase(b) == 0; });
    add<C>(exact, "std", as_view, [](auto a, auto b) { return a.compare(b) == 0; });
}

using Bytes = View<char>;

void add_libc() {
    add<char>(exact, "memcmp", as_view,
              [](Bytes a, Bytes b) { return std::memcmp(a.data(), b.data(), a.size()) == 0; });
    add<char>(nocase, "strncasecmp", as_view,
              [](Bytes a, Bytes b) { return strncasecmp(a.data(), b.data(), a.size()) == 0; });
}

#ifdef BENCH_ABSL
void add_absl() {
    add<char>(
        nocase, "absl", [](Bytes view) { return absl::string_view(view.data(), view.size()); },
        [](absl::string_view a, absl::string_view b) { return absl::EqualsIgnoreCase(a, b); });
}
#endif

#ifdef BENCH_BOOST
/// The locale it asks has no 16-bit characters.
void add_boost() {
    add<char>(nocase, "boost", as_view, [](Bytes a, Bytes b) { return boost::iequals(a, b); });
}
#endif

#ifdef BENCH_ICU
void add_icu() {
    using Units = View<char16_t>;
    add<char16_t>(exact, "icu", as_view, [](Units a, Units b) {
        return u_memcmp(a.data(), b.data(), static_cast<std::int32_t>(a.size())) == 0;
    });
    add<char16_t>(nocase, "icu", as_view, [](Units a, Units b) {
        return u_strncasecmp(a.data(), b.data(), static_cast<std::int32_t>(a.size()), 0) == 0;
    });
}
#endif

#ifdef BENCH_QT
template <class C, class As>
void add_qt(As as) {
    add<C>(exact, "qt", as, [](auto a, auto b) { return a.compare(b) == 0; });
    add<C>(nocase, "qt", as, [](auto a, auto b) { return a.compare(b, Qt::CaseInsensitive) == 0; });
}

void add_qt_widths() {
    const auto as = []<class Text>(Text*) {
        return [](auto view) { return Text(view.data(), static_cast<qsizetype>(view.size())); };
    };
    add_qt<char>(as(static_cast<QByteArrayView*>(nullptr)));
    add_qt<char16_t>(as(static_cast<QStringView*>(nullptr)));
}
#endif

const bool registered = [] {
    add_all_widths<char>();
    add_all_widths<char16_t>();
    add_libc();
#ifdef BENCH_ABSL
    add_absl();
#endif
#ifdef BENCH_BOOST
    add_boost();
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
