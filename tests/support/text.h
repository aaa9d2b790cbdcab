#ifndef KORD_TESTS_TEXT_H
#define KORD_TESTS_TEXT_H

#include <kord/range.h>
#include <kord/string.h>

#include <gtest/gtest.h>

#include <list>
#include <string>
#include <string_view>
#include <vector>

/// The names of one width's classes, for tests written once for both.
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
    Units(std::string_view text) {
        for (const char c : text)
            units_.push_back(static_cast<T>(c));
        units_.push_back(0);
    }
    operator const T*() const { return units_.data(); }
    T* data() { return units_.data(); }

  private:
    std::vector<T> units_;
};

/// Text that outlives every string aimed at it.
template <class T>
const T* lasting(std::string_view text) {
    static std::list<Units<T>> all;
    return all.emplace_back(text);
}

/// A range as readable text: units above 126 as {code}.
template <class T>
std::string show(const KordCharacterRange<T>& range) {
    std::string out;
    for (const T c : range) {
        const unsigned int code = static_cast<std::make_unsigned_t<T>>(c);
        if (code != 0 && code < 127) {
            out += static_cast<char>(code);
        } else {
            out += '{' + std::to_string(code) + '}';
        }
    }
    return out;
}

/// A string of ASCII text, zeros included.
template <class T>
String<T> make(std::string_view text) {
    return String<T>(Units<T>(text), static_cast<unsigned int>(text.size()));
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
