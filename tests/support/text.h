#ifndef KORD_TESTS_TEXT_H
#define KORD_TESTS_TEXT_H

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
};
template <>
struct Width<unsigned short> {
    using String = ustring;
    using Literal = uliteral;
};
template <class T>
using String = typename Width<T>::String;
template <class T>
using Literal = typename Width<T>::Literal;

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
