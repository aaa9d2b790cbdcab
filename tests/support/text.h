#ifndef KORD_TESTS_TEXT_H
#define KORD_TESTS_TEXT_H

#include <kord/convert.h>
#include <kord/range.h>
#include <kord/string.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

/// The classes of one width, for tests written once for both.
template <class T>
struct Width;
template <>
struct Width<char> {
    using String = astring;
    using Literal = aliteral;
    using Adapter = AstringAdapter;
    using Other = unsigned short;
};
template <>
struct Width<unsigned short> {
    using String = ustring;
    using Literal = uliteral;
    using Adapter = UstringAdapter;
    using Other = char;
};
template <class T>
using String = typename Width<T>::String;
template <class T>
using Literal = typename Width<T>::Literal;
template <class T>
using Adapter = typename Width<T>::Adapter;
template <class T>
using OtherWidth = typename Width<T>::Other;

using Widths = ::testing::Types<char, unsigned short>;

/// ASCII text in the width of the test, zero-terminated; lives as long as the object.
template <class T>
class Units {
  public:
    Units(std::string_view text) : units_(text.begin(), text.end()) { units_.push_back(0); }
    operator const T*() const { return units_.data(); }

  private:
    std::vector<T> units_;
};

template <class T>
String<T> make(std::string_view text) {
    return String<T>(Units<T>(text), text.size());
}

/// The characters with these codes, and nothing behind them.
template <class T>
std::vector<T> exactly(std::u32string_view codes) {
    return {codes.begin(), codes.end()};
}
template <class T>
std::vector<T> exactly(std::string_view bytes) {
    const auto* const codes = reinterpret_cast<const unsigned char*>(bytes.data());
    return {codes, codes + bytes.size()};
}
template <class T>
KordCharacterRange<T> range_of(const std::vector<T>& text) {
    return KordCharacterRange<T>(text.data(), 0, static_cast<unsigned int>(text.size()));
}

/// The codes of a range.
template <class T>
std::u32string codes(const KordCharacterRange<T>& range) {
    std::u32string out;
    for (const T c : range) out += static_cast<std::make_unsigned_t<T>>(c);
    return out;
}

/// A range as readable text; codes without a printable character as {code}.
template <class T>
std::string show(const KordCharacterRange<T>& range) {
    std::string out;
    for (const char32_t c : codes(range)) {
        out += c >= 32 && c < 127 ? std::string(1, static_cast<char>(c)) : '{' + std::to_string(c) + '}';
    }
    return out;
}

/// Lends a string's block to the tests, as a derived class may.
template <class T>
class Probe : public String<T> {
  public:
    static BasicStringBody<T>* body(const BasicString<T>& s) { return s.*&Probe::body_; }
};

/// The block of a string; null without one.
template <class T>
BasicStringBody<T>* block_of(const BasicString<T>& s) {
    return Probe<T>::body(s);
}

/// How many strings hold that block; 0 without one.
template <class T>
unsigned int holders(const BasicString<T>& s) {
    return block_of(s) == nullptr ? 0 : block_of(s)->count;
}

#endif
