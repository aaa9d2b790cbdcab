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

/// Units before the first zero unit; 0 for a null pointer. Linear; a plain loop, as nothing past the zero may be read.
inline std::size_t text_length(const unsigned short* text) noexcept {
    std::size_t n = 0;
    if (text != nullptr) {
        while (text[n] != 0) ++n;
    }
    return n;
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
