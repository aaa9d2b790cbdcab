#ifndef KORD_RANGE_H
#define KORD_RANGE_H

#include <kord/export.h>

#include <cstddef>
#include <type_traits>

namespace kord::detail {

/// The integer types whose literal 0 would otherwise be taken for a null pointer, and the ones a size may have.
template <class I>
inline constexpr bool is_integer =
    std::is_same_v<I, int> || std::is_same_v<I, unsigned int> || std::is_same_v<I, long> ||
    std::is_same_v<I, unsigned long> || std::is_same_v<I, long long> || std::is_same_v<I, unsigned long long>;

/// Enables an overload for integer arguments of any of those types.
template <class... I>
using if_integers = std::enable_if_t<(is_integer<I> && ...), int>;

/// Enables an overload for a pointer and an integer, whichever comes first: a pair that means nothing.
template <class A, class B>
using if_mixed =
    std::enable_if_t<(std::is_pointer_v<A> && is_integer<B>) || (is_integer<A> && std::is_pointer_v<B>), int>;

/// An integer as a position or count of characters. One that 32 bits cannot hold, and a negative one, becomes a number
/// that no text reaches: past every end as a position, up to the end as a count, above every limit as a length.
template <class I>
constexpr unsigned int to_count(I value) noexcept {
    if constexpr (sizeof(I) > sizeof(unsigned int)) {
        if (static_cast<unsigned long long>(value) > 0xFFFFFFFFull) return 0xFFFFFFFFu;
    }
    return static_cast<unsigned int>(value);
}

/// Characters before the first zero; 0 for a null pointer. Linear.
inline std::size_t text_length(const char* text) noexcept {
    return text == nullptr ? 0 : __builtin_strlen(text);
}

/// Units before the first zero unit; 0 for a null pointer. Linear; one unit after the other, as nothing past the zero
/// may be read, but four to a step.
inline std::size_t text_length(const unsigned short* text) noexcept {
    if (text == nullptr) return 0;
    for (std::size_t n = 0;; n += 4) {
        if (text[n] == 0) return n;
        if (text[n + 1] == 0) return n + 1;
        if (text[n + 2] == 0) return n + 2;
        if (text[n + 3] == 0) return n + 3;
    }
}

} // namespace kord::detail

/// A run of characters that somebody else owns: a begin and an end pointer, nothing more.
///
/// The base of every text type. T is `char` (8-bit text) or `unsigned short` (UTF-16 code units). Anything that reads
/// text takes a `const KordCharacterRange<T>&`, so a literal, a string or a piece of either is passed without a copy.
///
/// Positions and lengths are `unsigned int` counts of characters, never bytes. The text need not end in a zero and may
/// hold zeros. It must outlive the range. Nothing here allocates, throws or copies characters.
template <class T>
class KORD_API KordCharacterRange {
  public:
    using value_type = T;
    using const_iterator = const T*;

    /// As a count: up to the end. As the result of a search: nothing found.
    static const unsigned int npos = 0xFFFFFFFFu;

    /// The null range: both pointers null.
    KordCharacterRange() noexcept {}

    /// `len` characters of `text` from `pos` on. With `npos` the length is measured from `pos` to the first zero
    /// (linear). The null range if `text` is null. `pos` and an explicit `len` are not checked: the caller guarantees
    /// that the characters are there.
    KordCharacterRange(const T* text, unsigned int pos = 0, unsigned int len = npos) noexcept {
        if (text == nullptr) return;
        begin_ = text + pos;
        end_ = begin_ + (len == npos ? kord::detail::text_length(begin_) : len);
    }

    /// A piece of another range. A `pos` at or past its end gives an empty range at its end; a `len` that reaches past
    /// the end is cut there.
    KordCharacterRange(const KordCharacterRange<T>& range, unsigned int pos, unsigned int len = npos) noexcept
        : begin_(range.begin_), end_(range.end_) {
        const std::size_t n = static_cast<std::size_t>(end_ - begin_);
        if (pos >= n) {
            begin_ = end_;
            return;
        }
        begin_ += pos;
        if (len != npos && len < n - pos) end_ = begin_ + len;
    }

    /// An integer is not a text; without this a literal 0 would be a null pointer.
    template <class I, kord::detail::if_integers<I> = 0>
    KordCharacterRange(I, unsigned int = 0, unsigned int = npos) = delete;

    KordCharacterRange(const KordCharacterRange<T>&) noexcept = default;
    KordCharacterRange<T>& operator=(const KordCharacterRange<T>&) noexcept = default;

    /// Leaves the text alone. Virtual so that a literal or string may be destroyed through its base.
    virtual ~KordCharacterRange() {}

    /// The first character; not zero-terminated in general; null for the null range.
    const T* data() const noexcept { return begin_; }
    const T* begin() const noexcept { return begin_; }
    const T* end() const noexcept { return end_; }
    const T* cbegin() const noexcept { return begin_; }
    const T* cend() const noexcept { return end_; }

    /// The number of characters. A range of 2^32 characters or more, which only a pointer pair can make, says `npos`.
    unsigned int length() const noexcept {
        const std::size_t n = static_cast<std::size_t>(end_ - begin_);
        return n < npos ? static_cast<unsigned int>(n) : npos;
    }
    unsigned int size() const noexcept { return length(); }
    bool empty() const noexcept { return begin_ == end_; }

    /// The character at `pos`, which must be below `length()`.
    T operator[](unsigned int pos) const noexcept { return begin_[pos]; }

    // --- comparing --------------------------------------------------------------------------------------------------
    //
    // The result is a difference, not only its sign: of the first two codes that differ, or, if one text begins with
    // the other, of their lengths; 0 for equal texts. Codes are unsigned, and 16-bit text orders by unit. The `_nocase`
    // members compare the upper-case partners of `KordToUpper`: they ignore case, and order 'a' before '_'.
    //
    // A piece (`pos`, `len`) is clamped as in the constructor above. A text (`s`, `n`) is as in the constructor from a
    // pointer: empty if null, measured for `n` = `npos`, otherwise exactly `n` characters, zeros included. Linear in
    // the common beginning. Reads nothing outside the two texts, but in them some characters behind the first
    // difference.

    /// With the text of the one character `c`.
    int compare(T c) const noexcept;
    int compare(const T* s) const noexcept;
    int compare(const KordCharacterRange<T>& r) const noexcept;
    /// A piece of this range with a text.
    int compare(unsigned int pos, unsigned int len, const T* s, unsigned int n = npos) const noexcept;
    /// A piece of this range with a piece of `r`.
    int compare(unsigned int pos1, unsigned int len1, const KordCharacterRange<T>& r, unsigned int pos2 = 0,
                unsigned int len2 = npos) const noexcept;

    int compare_nocase(T c) const noexcept;
    int compare_nocase(const T* s) const noexcept;
    int compare_nocase(const KordCharacterRange<T>& r) const noexcept;
    int compare_nocase(unsigned int pos, unsigned int len, const T* s, unsigned int n = npos) const noexcept;
    int compare_nocase(unsigned int pos1, unsigned int len1, const KordCharacterRange<T>& r, unsigned int pos2 = 0,
                       unsigned int len2 = npos) const noexcept;

    /// An integer is not a text here either.
    template <class I, kord::detail::if_integers<I> = 0>
    int compare(unsigned int, unsigned int, I, unsigned int = npos, unsigned int = npos) const = delete;
    template <class I, kord::detail::if_integers<I> = 0>
    int compare_nocase(unsigned int, unsigned int, I, unsigned int = npos, unsigned int = npos) const = delete;

    // --- searching forwards: `pos` is the first position looked at --------------------------------------------------
    //
    // All searches return a position from the range's beginning, or `npos`. Nothing is found at or past the end, not
    // even an empty text. Texts and sets may be pieces of this range. Linear in the characters looked at, whatever the
    // texts are, plus once the length of the text or set. The one exception: units of 256 and more are looked up one by
    // one in a set of more than four members, if that has such units.

    /// The first `c`.
    unsigned int find(T c, unsigned int pos = 0) const noexcept;
    /// The first occurrence of a text that ends in a zero; null is the empty text, which is found at `pos`.
    unsigned int find(const T* s, unsigned int pos = 0) const noexcept;
    /// The first occurrence of `r`.
    unsigned int find(const KordCharacterRange<T>& r, unsigned int pos = 0) const noexcept;
    /// The same without regard to case: characters match whose partners of `KordToUpper` are equal.
    unsigned int find_nocase(const KordCharacterRange<T>& r, unsigned int pos = 0) const noexcept;
    /// The first character that is in `set`, whose order and repetitions do not matter; never one of an empty set.
    unsigned int find_first_of(const KordCharacterRange<T>& set, unsigned int pos = 0) const noexcept;
    /// The first character that is not in `set`.
    unsigned int find_first_not_of(const KordCharacterRange<T>& set, unsigned int pos = 0) const noexcept;
    /// The first character other than `c`.
    unsigned int find_first_not_of(T c, unsigned int pos = 0) const noexcept;

    // --- searching backwards for a character: `pos` is the last position looked at ----------------------------------
    //
    // `npos` starts at the last character. Any other position at or past the end finds nothing.

    /// The last `c` at or before `pos`.
    unsigned int rfind(T c, unsigned int pos = npos) const noexcept;
    unsigned int find_last_of(const KordCharacterRange<T>& set, unsigned int pos = npos) const noexcept;
    unsigned int find_last_not_of(const KordCharacterRange<T>& set, unsigned int pos = npos) const noexcept;
    unsigned int find_last_not_of(T c, unsigned int pos = npos) const noexcept;

    // --- searching backwards for a text: a match ends at or before `pos` --------------------------------------------
    //
    // `npos` is the end of the range. Nothing is found if `pos` is the two lengths together or more. An empty text is
    // found at `pos` if that lies before the end. Note the difference: `rfind('a', 3)` looks at position 3,
    // `rfind("a", 3)` finds nothing after position 2.

    unsigned int rfind(const T* s, unsigned int pos = npos) const noexcept;
    unsigned int rfind(const KordCharacterRange<T>& r, unsigned int pos = npos) const noexcept;
    unsigned int rfind_nocase(const KordCharacterRange<T>& r, unsigned int pos = npos) const noexcept;

    /// Moves the end back over every `c` at the end of the range. The characters stay as they are, and in a string the
    /// block; no terminator is written.
    void remove_trailing(T c) noexcept;

    // --- numbers at the beginning of the range ----------------------------------------------------------------------
    //
    // What does not fit the syntax ends the number; a text that begins with it reads as 0. White space is not skipped,
    // there is no exponent, no locale has a say, and units of 256 and more are never digits.

    /// An optional '+' or '-', then decimal digits. Saturates at the limits of a 32-bit `int`.
    int as_int() const noexcept;
    /// Decimal digits, or hexadecimal ones after "0x", "0X" or '$'; no sign. Saturates at 4294967295.
    unsigned int as_unsigned() const noexcept;
    /// An optional '+' or '-', decimal digits, optionally '.' or ',' and more digits. The first 18 significant digits
    /// count, the others give only their place. Each digit is taken in with a rounded multiplication and addition, and
    /// the result is scaled with one more: exact to the last bit up to 15 digits with at most 22 decimals. From 1e308
    /// on the largest finite number; 0 below 1e-307, and where the last digit that counts lies behind the 308th
    /// decimal. A lone '-' gives -0.0.
    double as_double() const noexcept;

  protected:
    // Mutable because a constant string, too, is unshared by `c_str` and aimed by `assign_literal`. Nothing else that
    // is const changes them.
    mutable const T* begin_ = nullptr;
    mutable const T* end_ = nullptr;
};

template <class T>
const unsigned int KordCharacterRange<T>::npos;

extern template class KordCharacterRange<char>;
extern template class KordCharacterRange<unsigned short>;

/// Constant 8-bit text: a range that can be made from a literal and re-aimed. Owns nothing.
class KORD_API aliteral : public KordCharacterRange<char> {
  public:
    /// The null range.
    KORD_EMIT aliteral() noexcept {}
    /// [first, last), stored unchanged; `first` must not be after `last`.
    KORD_EMIT aliteral(const char* first, const char* last) noexcept { assign(first, last); }
    /// The text up to its first zero, measured here (at compile time for a literal).
    KORD_EMIT aliteral(const char* text) noexcept : KordCharacterRange<char>(text) {}
    /// `n` characters from `text` on, zeros included.
    KORD_EMIT aliteral(const char* text, unsigned int n) noexcept { assign(text, n); }
    /// The same for a count of another integer type; keeps a literal 0 from being a null pointer.
    template <class I, kord::detail::if_integers<I> = 0>
    aliteral(const char* text, I n) noexcept : aliteral(text, kord::detail::to_count(n)) {}
    template <class I, kord::detail::if_integers<I> = 0>
    aliteral(I) = delete;
    KORD_EMIT aliteral(const aliteral& other) noexcept : KordCharacterRange<char>(other) {}
    KORD_EMIT ~aliteral() override {}

    KORD_EMIT aliteral& operator=(const aliteral& other) noexcept {
        assign(other.begin_, other.end_);
        return *this;
    }
    /// Aims at the characters of any range, a string included; valid while that text stays as it is.
    KORD_EMIT aliteral& assign(const KordCharacterRange<char>& range) noexcept {
        return assign(range.begin(), range.end());
    }
    KORD_EMIT aliteral& assign(const char* first, const char* last) noexcept {
        begin_ = first;
        end_ = last;
        return *this;
    }
    KORD_EMIT aliteral& assign(const char* text) noexcept {
        return assign(text, text + kord::detail::text_length(text));
    }
    KORD_EMIT aliteral& assign(const char* text, unsigned int n) noexcept { return assign(text, text + n); }
    template <class I, kord::detail::if_integers<I> = 0>
    aliteral& assign(const char* text, I n) noexcept {
        return assign(text, kord::detail::to_count(n));
    }
    template <class I, kord::detail::if_integers<I> = 0>
    aliteral& assign(I) = delete;
};

/// Constant 16-bit text; everything as in `aliteral`, counted in UTF-16 units.
class KORD_API uliteral : public KordCharacterRange<unsigned short> {
  public:
    KORD_EMIT uliteral() noexcept {}
    KORD_EMIT uliteral(const unsigned short* first, const unsigned short* last) noexcept { assign(first, last); }
    KORD_EMIT uliteral(const unsigned short* text) noexcept : KordCharacterRange<unsigned short>(text) {}
    KORD_EMIT uliteral(const unsigned short* text, unsigned int n) noexcept { assign(text, n); }
    template <class I, kord::detail::if_integers<I> = 0>
    uliteral(const unsigned short* text, I n) noexcept : uliteral(text, kord::detail::to_count(n)) {}
    template <class I, kord::detail::if_integers<I> = 0>
    uliteral(I) = delete;
    KORD_EMIT uliteral(const uliteral& other) noexcept : KordCharacterRange<unsigned short>(other) {}
    KORD_EMIT ~uliteral() override {}

    KORD_EMIT uliteral& operator=(const uliteral& other) noexcept {
        assign(other.begin_, other.end_);
        return *this;
    }
    KORD_EMIT uliteral& assign(const KordCharacterRange<unsigned short>& range) noexcept {
        return assign(range.begin(), range.end());
    }
    KORD_EMIT uliteral& assign(const unsigned short* first, const unsigned short* last) noexcept {
        begin_ = first;
        end_ = last;
        return *this;
    }
    KORD_EMIT uliteral& assign(const unsigned short* text) noexcept {
        return assign(text, text + kord::detail::text_length(text));
    }
    KORD_EMIT uliteral& assign(const unsigned short* text, unsigned int n) noexcept { return assign(text, text + n); }
    template <class I, kord::detail::if_integers<I> = 0>
    uliteral& assign(const unsigned short* text, I n) noexcept {
        return assign(text, kord::detail::to_count(n));
    }
    template <class I, kord::detail::if_integers<I> = 0>
    uliteral& assign(I) = delete;
};

#endif
