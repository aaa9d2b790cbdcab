#ifndef KORD_CONVERT_H
#define KORD_CONVERT_H

#include <kord/string.h>

#include <cstddef>

/// Conversion between UTF-16 and bytes, from buffer to buffer. Nothing is allocated or thrown, no terminator written,
/// and zeros are characters like others. Counts are below 2^32. Pure but for the target, which must not overlap the
/// source; after a failure, what it holds behind the characters before that is indeterminate. Linear.
namespace KordConvert {

/// Writes each of `count` units as one byte and returns where the target ends; null at a unit of 255 or more, with what
/// comes before it written.
KORD_API unsigned char* ConvertAnsi(const unsigned short* source, unsigned char* target, unsigned long count) noexcept;

/// Writes `count` units (a surrogate pair is two) as UTF-8 and returns where the target ends. The target must have the
/// bytes that `CountUtf8` says. Null at a surrogate that is not one of a pair, with what comes before it written.
KORD_API unsigned char* ConvertUtf8(const unsigned short* source, unsigned char* target, unsigned long count) noexcept;

/// Writes `count` units, from as many bytes of UTF-8 as that takes, and returns where the target ends. The source must
/// have these bytes, as it does if `CountUtf8` gave the count. Null if a character needs two units and one is left,
/// with what comes before it written. To see that a character is cut short, the byte behind it is read.
///
/// Malformed text does not fail: a byte that starts no character, and a character that is cut short, become U+FFFD.
/// Overlong forms and encoded surrogates are decoded by their value. Values above U+10FFFF, which four bytes can have,
/// become two units like others above U+FFFF, none of which is then a high surrogate.
KORD_API unsigned short* ConvertUtf8(const unsigned char* source, unsigned short* target, unsigned long count) noexcept;

/// The bytes of UTF-8 that `count` units become. Pairs are not checked: a high surrogate counts 4, a low one 0.
KORD_API unsigned long CountUtf8(const unsigned short* source, unsigned long count) noexcept;

/// The units that `count` bytes of UTF-8 become. A character that the end cuts off counts nothing.
KORD_API unsigned long CountUtf8(const unsigned char* source, unsigned long count) noexcept;

} // namespace KordConvert

/// 8-bit text out of text of either width, in any form: a parameter of this type takes them all. Sharing where it can
/// (an 8-bit string), otherwise one allocation and a copy.
///
/// 16-bit text is narrowed as Latin-1, unit by unit: what is above 255 becomes '?'. (For UTF-8 there is `KordConvert`.)
/// A null pointer makes an empty adapter without a block. Throws `os_length_error` above `lengthLimit` characters and
/// `std::bad_alloc`.
class KORD_API AstringAdapter {
  public:
    /// A unit as a byte: '?' above 255.
    static char Convert(unsigned short unit) noexcept;

    KORD_EMIT AstringAdapter(const AstringAdapter& other) noexcept : string_(other.string_) {}
    // Sharing: no allocation.
    KORD_EMIT AstringAdapter(const BasicString<char>& s) noexcept : string_(s) {}
    /// [first, first + length) of a block, taking a reference to it; with a null `body`, foreign text.
    KORD_EMIT AstringAdapter(BasicStringBody<char>* body, char* first, unsigned int length) noexcept
        : string_(body, first, length) {}
    // Copying; pointers alone mean zero-terminated text.
    AstringAdapter(const KordCharacterRange<char>& range);
    AstringAdapter(const char* text, unsigned int length);
    AstringAdapter(const char* text);
    // Narrowing.
    AstringAdapter(const KordCharacterRange<unsigned short>& range);
    AstringAdapter(const unsigned short* text, unsigned int length);
    AstringAdapter(const unsigned short* text);

    // A null pointer of no width, and a length of another integer type; any other integer alone is no text.
    AstringAdapter(std::nullptr_t, unsigned int = 0) noexcept {}
    template <class I, kord::detail::if_integers<I> = 0>
    AstringAdapter(std::nullptr_t, I) noexcept {}
    template <class I, kord::detail::if_integers<I> = 0>
    AstringAdapter(const char* text, I length) : AstringAdapter(text, kord::detail::to_count(length)) {}
    template <class I, kord::detail::if_integers<I> = 0>
    AstringAdapter(const unsigned short* text, I length) : AstringAdapter(text, kord::detail::to_count(length)) {}
    template <class I, kord::detail::if_integers<I> = 0>
    AstringAdapter(I) = delete;

    KORD_EMIT ~AstringAdapter() {}

    KORD_EMIT AstringAdapter& operator=(const AstringAdapter& other) noexcept {
        string_ = other.string_;
        return *this;
    }

    /// The text, zero-terminated, valid as long as the adapter; `BasicString::c_str`.
    KORD_EMIT const char* c_str() const { return string_.c_str(); }
    /// The string, sharing the block.
    KORD_EMIT operator astring() const noexcept { return string_; }

  private:
    astring string_;
};

/// 16-bit text out of text of either width; everything as in `AstringAdapter`. 8-bit text is widened as Latin-1: every
/// byte becomes the unit of its unsigned value.
class KORD_API UstringAdapter {
  public:
    /// A byte as the unit of its unsigned value.
    static unsigned short Convert(char c) noexcept;

    KORD_EMIT UstringAdapter(const UstringAdapter& other) noexcept : string_(other.string_) {}
    KORD_EMIT UstringAdapter(const BasicString<unsigned short>& s) noexcept : string_(s) {}
    KORD_EMIT UstringAdapter(BasicStringBody<unsigned short>* body, unsigned short* first, unsigned int length) noexcept
        : string_(body, first, length) {}
    UstringAdapter(const KordCharacterRange<unsigned short>& range);
    UstringAdapter(const unsigned short* text, unsigned int length);
    UstringAdapter(const unsigned short* text);
    UstringAdapter(const KordCharacterRange<char>& range);
    UstringAdapter(const char* text, unsigned int length);
    UstringAdapter(const char* text);

    UstringAdapter(std::nullptr_t, unsigned int = 0) noexcept {}
    template <class I, kord::detail::if_integers<I> = 0>
    UstringAdapter(std::nullptr_t, I) noexcept {}
    template <class I, kord::detail::if_integers<I> = 0>
    UstringAdapter(const unsigned short* text, I length) : UstringAdapter(text, kord::detail::to_count(length)) {}
    template <class I, kord::detail::if_integers<I> = 0>
    UstringAdapter(const char* text, I length) : UstringAdapter(text, kord::detail::to_count(length)) {}
    template <class I, kord::detail::if_integers<I> = 0>
    UstringAdapter(I) = delete;

    KORD_EMIT ~UstringAdapter() {}

    KORD_EMIT UstringAdapter& operator=(const UstringAdapter& other) noexcept {
        string_ = other.string_;
        return *this;
    }

    KORD_EMIT const unsigned short* c_str() const { return string_.c_str(); }
    KORD_EMIT operator ustring() const noexcept { return string_; }

  private:
    ustring string_;
};

#endif
