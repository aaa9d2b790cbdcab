#ifndef KORD_STRING_H
#define KORD_STRING_H

#include <kord/basic_string.h>

/// 8-bit text. Adds constructors, assignment from text, `+=` and pieces to `BasicString<char>`, and no data.
class KORD_API astring : public BasicString<char> {
  public:
    /// An empty string that owns a block (capacity 7), built when the library is loaded.
    static const astring nullString;
    /// A pointer to a zero character, there before any code runs.
    static const char* const nullCString;

    /// The null string; no allocation.
    KORD_EMIT astring() noexcept {}

    // Sharing: no allocation, no copy of characters.
    KORD_EMIT astring(const astring& s) noexcept : BasicString<char>(s) {}
    KORD_EMIT astring(const BasicString<char>& s) noexcept : BasicString<char>(s) {}
    KORD_EMIT astring(astring&& s) noexcept : BasicString<char>(static_cast<BasicString<char>&&>(s)) {}
    /// The piece (`pos`, `n`) of `s`.
    KORD_EMIT astring(const BasicString<char>& s, unsigned int pos, unsigned int n) noexcept
        : BasicString<char>(s, pos, n) {}
    /// [first, last), which must lie in the text of `s`.
    KORD_EMIT astring(const BasicString<char>& s, const char* first, const char* last) noexcept
        : BasicString<char>(s, first, last) {}
    /// [first, first + n) of a block, taking a reference to it; with a null `body`, foreign text.
    KORD_EMIT astring(BasicStringBody<char>* body, char* first, unsigned int n) noexcept
        : BasicString<char>(body, first, n) {}

    // Copying: one allocation, also for an empty text; a null pointer makes the null string.
    /// `n` times `c`.
    KORD_EMIT astring(unsigned int n, char c) : BasicString<char>(n, c) {}
    /// Zero-terminated text.
    KORD_EMIT astring(const char* text)
        : BasicString<char>(text, kord::detail::to_count(kord::detail::text_length(text))) {}
    /// `n` characters, zeros included.
    KORD_EMIT astring(const char* text, unsigned int n) : BasicString<char>(text, n) {}
    /// [first, last).
    KORD_EMIT astring(const char* first, const char* last)
        : BasicString<char>(first, kord::detail::to_count(last - first)) {}
    // Integers of other types mean counts and positions, alone and beside a pointer nothing, as in the editing members.
    template <class I, kord::detail::if_integers<I> = 0>
    astring(const char* text, I n) : astring(text, kord::detail::to_count(n)) {}
    template <class I, kord::detail::if_integers<I> = 0>
    astring(I n, char c) : astring(kord::detail::to_count(n), c) {}
    template <class I, class J, kord::detail::if_integers<I, J> = 0>
    astring(I n, J c) : astring(kord::detail::to_count(n), static_cast<char>(c)) {}
    template <class I, class J, kord::detail::if_integers<I, J> = 0>
    astring(const BasicString<char>& s, I pos, J n) noexcept
        : astring(s, kord::detail::to_count(pos), kord::detail::to_count(n)) {}
    template <class A, class B, kord::detail::if_mixed<A, B> = 0>
    astring(const BasicString<char>& s, A, B) = delete;
    template <class I, kord::detail::if_integers<I> = 0>
    astring(I) = delete;

    KORD_EMIT ~astring() override {}

    /// Shares the text of `s`.
    KORD_EMIT astring& operator=(const astring& s) noexcept {
        BasicString<char>::operator=(s);
        return *this;
    }
    KORD_EMIT astring& operator=(astring&& s) noexcept {
        BasicString<char>::operator=(static_cast<BasicString<char>&&>(s));
        return *this;
    }
    /// Becomes a copy of zero-terminated text; of a null pointer, empty.
    KORD_EMIT astring& operator=(const char* text) {
        assign(KordCharacterRange<char>(text));
        return *this;
    }
    template <class I, kord::detail::if_integers<I> = 0>
    astring& operator=(I) = delete;

    KORD_EMIT astring& operator+=(const KordCharacterRange<char>& r) {
        append(r);
        return *this;
    }
    KORD_EMIT astring& operator+=(const char* text) {
        append(KordCharacterRange<char>(text));
        return *this;
    }
    KORD_EMIT astring& operator+=(char c) {
        if (BasicStringBody<char>::push(body_, begin_, end_, c)) {
            ++end_;
        } else {
            append(1u, c);
        }
        return *this;
    }

    /// The piece (`pos`, `n`), sharing the block.
    KORD_EMIT astring substr(unsigned int pos, unsigned int n = npos) const noexcept { return astring(*this, pos, n); }

    /// Becomes what the C library's `vsnprintf` makes of a zero-terminated template and any arguments. Nothing checks
    /// them but the compiler's warnings; for checked templates there is `format`. The locale decides the decimal point.
    ///
    /// The template may have the conversions d i o u x X c s p n e E f g G and %%, and stars; the length modifiers hh,
    /// h, l, ll before integers and n, L (as ll) before integers, l and L before reals. With any other conversion or
    /// modifier the string becomes empty and nothing is formatted. A null text is the C library's "(null)".
    ///
    /// The text is written once, into a new block sized beforehand from the template and the arguments; they may be
    /// this string's own text. Throws `os_length_error` if the size is above the limit and `std::bad_alloc`; the string
    /// is then unchanged.
    astring& format_unchecked(const char* fmt, ...) KORD_PRINTF(2, 3);
};

/// UTF-16 text; everything as in `astring`, counted in 16-bit units.
class KORD_API ustring : public BasicString<unsigned short> {
  public:
    /// An empty string that owns a block (capacity 3), built when the library is loaded, after `astring::nullString`.
    static const ustring nullString;
    static const unsigned short* const nullCString;

    KORD_EMIT ustring() noexcept {}

    KORD_EMIT ustring(const ustring& s) noexcept : BasicString<unsigned short>(s) {}
    KORD_EMIT ustring(const BasicString<unsigned short>& s) noexcept : BasicString<unsigned short>(s) {}
    KORD_EMIT ustring(ustring&& s) noexcept
        : BasicString<unsigned short>(static_cast<BasicString<unsigned short>&&>(s)) {}
    KORD_EMIT ustring(const BasicString<unsigned short>& s, unsigned int pos, unsigned int n) noexcept
        : BasicString<unsigned short>(s, pos, n) {}
    KORD_EMIT ustring(const BasicString<unsigned short>& s, const unsigned short* first,
                      const unsigned short* last) noexcept
        : BasicString<unsigned short>(s, first, last) {}
    KORD_EMIT ustring(BasicStringBody<unsigned short>* body, unsigned short* first, unsigned int n) noexcept
        : BasicString<unsigned short>(body, first, n) {}

    KORD_EMIT ustring(unsigned int n, unsigned short c) : BasicString<unsigned short>(n, c) {}
    KORD_EMIT ustring(const unsigned short* text)
        : BasicString<unsigned short>(text, kord::detail::to_count(kord::detail::text_length(text))) {}
    KORD_EMIT ustring(const unsigned short* text, unsigned int n) : BasicString<unsigned short>(text, n) {}
    KORD_EMIT ustring(const unsigned short* first, const unsigned short* last)
        : BasicString<unsigned short>(first, kord::detail::to_count(last - first)) {}
    template <class I, kord::detail::if_integers<I> = 0>
    ustring(const unsigned short* text, I n) : ustring(text, kord::detail::to_count(n)) {}
    template <class I, kord::detail::if_integers<I> = 0>
    ustring(I n, unsigned short c) : ustring(kord::detail::to_count(n), c) {}
    template <class I, class J, kord::detail::if_integers<I, J> = 0>
    ustring(I n, J c) : ustring(kord::detail::to_count(n), static_cast<unsigned short>(c)) {}
    template <class I, class J, kord::detail::if_integers<I, J> = 0>
    ustring(const BasicString<unsigned short>& s, I pos, J n) noexcept
        : ustring(s, kord::detail::to_count(pos), kord::detail::to_count(n)) {}
    template <class A, class B, kord::detail::if_mixed<A, B> = 0>
    ustring(const BasicString<unsigned short>& s, A, B) = delete;
    template <class I, kord::detail::if_integers<I> = 0>
    ustring(I) = delete;

    KORD_EMIT ~ustring() override {}

    KORD_EMIT ustring& operator=(const ustring& s) noexcept {
        BasicString<unsigned short>::operator=(s);
        return *this;
    }
    KORD_EMIT ustring& operator=(ustring&& s) noexcept {
        BasicString<unsigned short>::operator=(static_cast<BasicString<unsigned short>&&>(s));
        return *this;
    }
    KORD_EMIT ustring& operator=(const unsigned short* text) {
        assign(KordCharacterRange<unsigned short>(text));
        return *this;
    }
    template <class I, kord::detail::if_integers<I> = 0>
    ustring& operator=(I) = delete;

    KORD_EMIT ustring& operator+=(const ustring& s) {
        append(s);
        return *this;
    }
    KORD_EMIT ustring& operator+=(const unsigned short* text) {
        append(KordCharacterRange<unsigned short>(text));
        return *this;
    }
    KORD_EMIT ustring& operator+=(unsigned short c) {
        if (BasicStringBody<unsigned short>::push(body_, begin_, end_, c)) {
            ++end_;
        } else {
            append(1u, c);
        }
        return *this;
    }

    KORD_EMIT ustring substr(unsigned int pos, unsigned int n = npos) const noexcept { return ustring(*this, pos, n); }
};

inline void swap(astring& a, astring& b) noexcept {
    a.swap(b);
}
inline void swap(ustring& a, ustring& b) noexcept {
    a.swap(b);
}

#endif
