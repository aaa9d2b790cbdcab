// Conversions between UTF-16 and bytes: nanoseconds per text. A row is named WIDTH/OPERATION TEXT/WHO/SIZE, with the
// width of the source and its size in bytes of UTF-8; bench/report.py divides them. All convert into a buffer that is
// there, but where "string" is in the name of a row, and the adapters and their peers: they make a new string.
//
// Goal, as a ratio within one run: at or ahead of the best peer. The loops that count know that the text is well-formed
// and need not look at the order of its bytes or units.
#include "languages.h"

#include <kord/convert.h>

#include <algorithm>
#include <bit>
#include <iconv.h>
#include <memory>

#ifdef BENCH_BOOST
#include <boost/nowide/utf/convert.hpp>
#endif
#ifdef BENCH_ICU
#include <unicode/ucnv.h>
#include <unicode/ustring.h>
#endif
#ifdef BENCH_QT
#include <QByteArray>
#include <QString>
#include <QStringDecoder>
#include <QStringEncoder>
#endif

namespace {

using namespace bench;

// ---- results --------------------------------------------------------------------------------------------------------

/// Where everybody converts to; as long as any needs, which is 3 bytes for a unit.
template <class C>
std::array<C, 3 << 20> target;

/// The target up to `end`, of whatever type that is there.
template <class C>
View<C> written(const void* end) {
    if (end == nullptr) return {};
    return View<C>(target<C>.data(), static_cast<std::size_t>(static_cast<const C*>(end) - target<C>.data()));
}
template <class C>
View<C> written_count(std::int32_t n) {
    return View<C>(target<C>.data(), static_cast<std::size_t>(n));
}

/// A string of a peer that has none: characters that were not set before they were written.
template <class C>
struct Block {
    std::unique_ptr<C[]> characters;
    std::size_t size;
};

/// A block for `n` characters that fill(first) has written.
template <class C, class Fill>
Block<C> filled(std::size_t n, Fill fill) {
    Block<C> block{std::make_unique_for_overwrite<C[]>(n), n};
    fill(block.characters.get());
    return block;
}

// A result as one type.

std::size_t plain(std::size_t n) {
    return n;
}
template <class C>
std::basic_string<C> plain(View<C> text) {
    return std::basic_string<C>(text);
}
template <class C>
std::basic_string<C> plain(const Block<C>& block) {
    return {block.characters.get(), block.size};
}
std::string plain(const AstringAdapter& adapter) {
    const astring text = adapter;
    return {text.begin(), text.end()};
}
std::u16string plain(const UstringAdapter& adapter) {
    const ustring text = adapter;
    return {text.begin(), text.end()};
}
#ifdef BENCH_QT
std::string plain(const QByteArray& text) {
    return text.toStdString();
}
std::u16string plain(const QString& text) {
    return text.toStdU16String();
}
#endif

// ---- the rows -------------------------------------------------------------------------------------------------------

const unsigned char* bytes_of(const Passage& passage) {
    return reinterpret_cast<const unsigned char*>(passage.bytes.data());
}
const unsigned short* units_of(const Passage& passage) {
    return reinterpret_cast<const unsigned short*>(passage.units.data());
}
unsigned char* target_bytes() {
    return reinterpret_cast<unsigned char*>(target<char>.data());
}
unsigned short* target_units() {
    return reinterpret_cast<unsigned short*>(target<char16_t>.data());
}

/// What an operation converts on UTF-8.
struct Utf8Rows {
    static std::vector<Script> scripts() {
        const std::vector<Language> all{english_words, chat, french, german, russian, greek, japanese, chinese, korean};
        return {{" ascii", {english_words}},
                {" cyrillic", {russian}},
                {" japanese", {japanese}},
                {" emoji", {emoji}},
                {" mixed", all}};
    }
    static constexpr auto passages = utf8_passages;
};

struct Latin1Rows {
    static std::vector<Script> scripts() { return {{"", {english_words}}}; }
    static constexpr auto passages = latin1_passages;
};

// An operation: its source, its scripts and what kord does.

struct Utf8ToUtf16 : Utf8Rows {
    using Source = char;
    static constexpr char operation[] = "utf8 to utf16";
    static auto kord(const Passage& passage) {
        return written<char16_t>(KordConvert::ConvertUtf8(bytes_of(passage), target_units(), passage.units.size()));
    }
};
struct Utf16ToUtf8 : Utf8Rows {
    using Source = char16_t;
    static constexpr char operation[] = "utf16 to utf8";
    static auto kord(const Passage& passage) {
        return written<char>(KordConvert::ConvertUtf8(units_of(passage), target_bytes(), passage.units.size()));
    }
};
struct CountUnits : Utf8Rows {
    using Source = char;
    static constexpr char operation[] = "count units";
    static std::size_t kord(const Passage& passage) {
        return KordConvert::CountUtf8(bytes_of(passage), passage.bytes.size());
    }
};
struct CountBytes : Utf8Rows {
    using Source = char16_t;
    static constexpr char operation[] = "count bytes";
    static std::size_t kord(const Passage& passage) {
        return KordConvert::CountUtf8(units_of(passage), passage.units.size());
    }
};
struct Ansi : Latin1Rows {
    using Source = char16_t;
    static constexpr char operation[] = "ansi";
    static auto kord(const Passage& passage) {
        return written<char>(KordConvert::ConvertAnsi(units_of(passage), target_bytes(), passage.units.size()));
    }
};
struct Widen : Latin1Rows {
    using Source = char;
    static constexpr char operation[] = "widen";
    static auto kord(const Passage& passage) { return UstringAdapter(passage.bytes.data(), passage.bytes.size()); }
};
struct Narrow : Latin1Rows {
    using Source = char16_t;
    static constexpr char operation[] = "narrow";
    static auto kord(const Passage& passage) { return AstringAdapter(units_of(passage), passage.units.size()); }
};

/// Times convert(passage), whose result must be the same as kord's.
template <class Operation, class Convert>
void add(const std::string& library, Convert convert) {
    const auto run = [=](benchmark::State& state, const Script& script, std::size_t n) {
        const std::vector<Passage> table = Operation::passages(script, n);
        for (const Passage& passage : table) {
            const auto expected = plain(Operation::kord(passage));
            std::fill_n(target<char>.begin(), n, char());
            std::fill_n(target<char16_t>.begin(), n, char16_t());
            if (plain(convert(passage)) != expected) return state.SkipWithError("another result than kord's");
        }
        while (state.KeepRunningBatch(static_cast<benchmark::IterationCount>(table.size()))) {
            for (const Passage& passage : table) benchmark::DoNotOptimize(convert(passage));
        }
    };
    for (const Script& script : Operation::scripts()) {
        for (const std::size_t n : {64u, 4096u, 1u << 20}) {
            const std::string name =
                row_name<typename Operation::Source>(Operation::operation + script.name, library, n);
            benchmark::RegisterBenchmark(name.c_str(), run, script, n);
        }
    }
}

template <class... Operations>
void add_kord() {
    (add<Operations>("kord", Operations::kord), ...);
}

// ---- the peers ------------------------------------------------------------------------------------------------------

std::uint32_t one_if(bool condition) {
    return condition ? 1 : 0;
}

void add_loops() {
    add<CountUnits>("loop", [](const Passage& passage) {
        std::uint32_t n = 0; // no wider than it has to be, and no branches, so that compilers make vectors of it
        for (const char c : passage.bytes) n += one_if(!continues(c)) + one_if(static_cast<unsigned char>(c) >= 0xF0);
        return std::size_t{n};
    });
    add<CountBytes>("loop", [](const Passage& passage) {
        std::uint32_t n = 0;
        for (const char16_t c : passage.units)
            n += 1 + one_if(c >= 0x80) + one_if(c >= 0x800 && (c & 0xF800) != 0xD800);
        return std::size_t{n};
    });
    add<Ansi>("loop", [](const Passage& passage) {
        char* to = target<char>.data();
        for (const char16_t c : passage.units) {
            if (c >= 0xFF) return View<char>();
            *to++ = static_cast<char>(c);
        }
        return written<char>(to);
    });
    add<Widen>("loop", [](const Passage& passage) {
        const std::string& from = passage.bytes;
        return filled<char16_t>(from.size(), [&](char16_t* to) {
            std::transform(from.begin(), from.end(), to, [](char c) { return static_cast<unsigned char>(c); });
        });
    });
    add<Narrow>("loop", [](const Passage& passage) {
        const std::u16string& from = passage.units;
        return filled<char>(from.size(), [&](char* to) {
            std::transform(from.begin(), from.end(), to,
                           [](char16_t c) { return static_cast<char>(c < 256 ? c : '?'); });
        });
    });
}

/// A conversion of the C library, between bytes and units.
class Iconv {
  public:
    Iconv(const char* to, const char* from) : handle_(iconv_open(to, from), iconv_close) {}

    /// Returns the end of the target.
    template <class From, class To>
    To* operator()(const std::basic_string<From>& from, To* to, std::size_t room) const {
        char* source = reinterpret_cast<char*>(const_cast<From*>(from.data()));
        char* end = reinterpret_cast<char*>(to);
        std::size_t left = from.size() * sizeof(From), space = room * sizeof(To);
        iconv(handle_.get(), &source, &left, &end, &space);
        return reinterpret_cast<To*>(end);
    }

  private:
    std::shared_ptr<void> handle_;
};

void add_iconv() {
    const char* const utf16 = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";
    add<Utf8ToUtf16>("iconv", [convert = Iconv(utf16, "UTF-8")](const Passage& passage) {
        return written<char16_t>(convert(passage.bytes, target<char16_t>.data(), target<char16_t>.size()));
    });
    add<Utf16ToUtf8>("iconv", [convert = Iconv("UTF-8", utf16)](const Passage& passage) {
        return written<char>(convert(passage.units, target<char>.data(), target<char>.size()));
    });
    const Iconv narrow("ISO-8859-1", utf16);
    add<Ansi>("iconv", [=](const Passage& passage) {
        return written<char>(narrow(passage.units, target<char>.data(), target<char>.size()));
    });
    add<Narrow>("iconv", [=](const Passage& passage) {
        const std::size_t n = passage.units.size();
        return filled<char>(n, [&](char* to) { narrow(passage.units, to, n); });
    });
    add<Widen>("iconv", [widen = Iconv(utf16, "ISO-8859-1")](const Passage& passage) {
        const std::size_t n = passage.bytes.size();
        return filled<char16_t>(n, [&](char16_t* to) { widen(passage.bytes, to, n); });
    });
}

#ifdef BENCH_BOOST
void add_boost() {
    using boost::nowide::utf::convert_buffer;
    add<Utf8ToUtf16>("boost", [](const Passage& passage) {
        const char* const from = passage.bytes.data();
        char16_t* const to = target<char16_t>.data();
        convert_buffer(to, target<char16_t>.size(), from, from + passage.bytes.size());
        return View<char16_t>(to, passage.units.size());
    });
    add<Utf16ToUtf8>("boost", [](const Passage& passage) {
        const char16_t* const from = passage.units.data();
        char* const to = target<char>.data();
        convert_buffer(to, target<char>.size(), from, from + passage.units.size());
        return View<char>(to, passage.bytes.size());
    });
}
#endif

#ifdef BENCH_ICU
/// With a null target these only count.
std::int32_t icu_decode(const Passage& passage, char16_t* to, std::size_t room) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t n = 0;
    u_strFromUTF8(to, static_cast<std::int32_t>(room), &n, passage.bytes.data(),
                  static_cast<std::int32_t>(passage.bytes.size()), &status);
    return n;
}
std::int32_t icu_encode(const Passage& passage, char* to, std::size_t room) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t n = 0;
    u_strToUTF8(to, static_cast<std::int32_t>(room), &n, passage.units.data(),
                static_cast<std::int32_t>(passage.units.size()), &status);
    return n;
}

/// ICU's converter for Latin-1.
class IcuLatin1 {
  public:
    void narrow(const std::u16string& from, char* to) const {
        UErrorCode status = U_ZERO_ERROR;
        const auto n = static_cast<std::int32_t>(from.size());
        ucnv_fromUChars(converter_.get(), to, n, from.data(), n, &status);
    }
    void widen(const std::string& from, char16_t* to) const {
        UErrorCode status = U_ZERO_ERROR;
        const auto n = static_cast<std::int32_t>(from.size());
        ucnv_toUChars(converter_.get(), to, n, from.data(), n, &status);
    }

  private:
    static UConverter* open() {
        UErrorCode status = U_ZERO_ERROR;
        return ucnv_open("ISO-8859-1", &status);
    }

    std::shared_ptr<UConverter> converter_{open(), ucnv_close};
};

void add_icu() {
    add<Utf8ToUtf16>("icu", [](const Passage& passage) {
        return written_count<char16_t>(icu_decode(passage, target<char16_t>.data(), passage.units.size()));
    });
    add<Utf16ToUtf8>("icu", [](const Passage& passage) {
        return written_count<char>(icu_encode(passage, target<char>.data(), passage.bytes.size()));
    });
    add<CountUnits>("icu", [](const Passage& s) { return static_cast<std::size_t>(icu_decode(s, nullptr, 0)); });
    add<CountBytes>("icu", [](const Passage& s) { return static_cast<std::size_t>(icu_encode(s, nullptr, 0)); });
    const IcuLatin1 latin1;
    add<Ansi>("icu", [=](const Passage& passage) {
        latin1.narrow(passage.units, target<char>.data());
        return View<char>(target<char>.data(), passage.units.size());
    });
    add<Narrow>("icu", [=](const Passage& passage) {
        return filled<char>(passage.units.size(), [&](char* to) { latin1.narrow(passage.units, to); });
    });
    add<Widen>("icu", [=](const Passage& passage) {
        return filled<char16_t>(passage.bytes.size(), [&](char16_t* to) { latin1.widen(passage.bytes, to); });
    });
}
#endif

#ifdef BENCH_QT
QStringView qt_units(const Passage& passage) {
    return {passage.units.data(), static_cast<qsizetype>(passage.units.size())};
}
QByteArrayView qt_bytes(const Passage& passage) {
    return {passage.bytes.data(), static_cast<qsizetype>(passage.bytes.size())};
}

/// Into the buffer, with an encoder that was made before.
auto qt_encode(QStringEncoder::Encoding encoding) {
    return [encoder =
                std::make_shared<QStringEncoder>(encoding, QStringEncoder::Flag::Stateless)](const Passage& passage) {
        return written<char>(encoder->appendToBuffer(target<char>.data(), qt_units(passage)));
    };
}

void add_qt() {
    const auto decoder = std::make_shared<QStringDecoder>(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    add<Utf8ToUtf16>("qt", [=](const Passage& passage) {
        return written<char16_t>(
            decoder->appendToBuffer(reinterpret_cast<QChar*>(target<char16_t>.data()), qt_bytes(passage)));
    });
    add<Utf8ToUtf16>("qt string", [](const Passage& passage) { return QString::fromUtf8(qt_bytes(passage)); });
    add<Utf16ToUtf8>("qt", qt_encode(QStringEncoder::Utf8));
    add<Utf16ToUtf8>("qt string", [](const Passage& passage) { return qt_units(passage).toUtf8(); });
    add<Ansi>("qt", qt_encode(QStringEncoder::Latin1));
    add<Narrow>("qt", [](const Passage& passage) { return qt_units(passage).toLatin1(); });
    add<Widen>("qt", [](const Passage& passage) { return QString::fromLatin1(qt_bytes(passage)); });
}
#endif

const bool registered = [] {
    add_kord<Utf8ToUtf16, Utf16ToUtf8, CountUnits, CountBytes, Ansi, Widen, Narrow>();
    add_loops();
    add_iconv();
#ifdef BENCH_BOOST
    add_boost();
#endif
#ifdef BENCH_ICU
    add_icu();
#endif
#ifdef BENCH_QT
    add_qt();
#endif
    return true;
}();

} // namespace
