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
#include "search_rows.h"

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
