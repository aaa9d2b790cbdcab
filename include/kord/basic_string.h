#ifndef KORD_BASIC_STRING_H
#define KORD_BASIC_STRING_H

#include <kord/body.h>
#include <kord/errors.h>
#include <kord/export.h>
#include <kord/format.h>
#include <kord/range.h>

#include <cstddef>

namespace kord::detail {

template <class P>
void exchange(P& a, P& b) noexcept {
    P const old = a;
    a = b;
    b = old;
}

} // namespace kord::detail

/// A counted copy-on-write string: a range whose characters normally lie in a shared block.
///
/// States, which every member keeps:
///  - null: no block, both pointers null. Default-constructed, or moved from.
///  - foreign: no block, aimed at somebody else's text (`assign_literal`), which it never writes or frees.
///  - sole owner: its block has a count of 1 and the text starts at the block's first slot. Characters are written in
///    place.
///  - sharing: the block has other holders, or the text starts later in it. Copied before it is written, except that
///    `replace` stays in a block that nobody else holds.
///  - emptied: both pointers null, with the kept block of a former sole owner (`erase()`), which is not reused.
///
/// Copying and taking pieces share the block and never allocate. A member "unshares" when it makes the string sole
/// owner: it copies the text into a block of its own unless the string has one. Every member that unshares or grows
/// throws `os_length_error` above `lengthLimit` characters and `std::bad_alloc` when the heap refuses, and then the
/// string (but see `format_path`) and all that share its block are unchanged.
///
/// Counts are plain integers: strings that share a block belong to one thread at a time, even for `c_str`.
///
/// Sources (`r`, `text`, iterator pairs) may lie inside the string itself, except where stated. A piece (`pos`, `n`)
/// is always clamped as in `KordCharacterRange`.
template <class T>
class KORD_API BasicString : public KordCharacterRange<T> {
  public:
    using KordCharacterRange<T>::npos;
    using KordCharacterRange<T>::length;
    using iterator = T*;

    /// The most characters a string may own: 1,048,576.
    static const unsigned int lengthLimit = kord::detail::length_limit;

    // --- copying, moving: share or exchange pointers; no allocation -------------------------------------------------

    BasicString(const BasicString<T>& s) noexcept
        : KordCharacterRange<T>(s), body_(BasicStringBody<T>::retain(s.body_)) {}
    BasicString(BasicString<T>&& s) noexcept { swap(s); }
    ~BasicString() override {
        if (body_ == nullptr) return;
        if (body_->count > 1) {
            --body_->count;
        } else {
            release(body_);
        }
    }

    BasicString<T>& operator=(const BasicString<T>& s) noexcept {
        link(s.body_);
        begin_ = s.begin_;
        end_ = s.end_;
        return *this;
    }
    BasicString<T>& operator=(BasicString<T>&& s) noexcept {
        BasicString<T> taken(static_cast<BasicString<T>&&>(s));
        swap(taken);
        return *this;
    }
    /// Exchanges text and block.
    void swap(BasicString<T>& s) noexcept {
        kord::detail::exchange(begin_, s.begin_);
        kord::detail::exchange(end_, s.end_);
        kord::detail::exchange(body_, s.body_);
    }

    // --- the block --------------------------------------------------------------------------------------------------

    /// Makes the string sole owner of a block with room for `c` characters. The text stays, except that foreign text
    /// longer than `c` is cut to `c` characters. A sole owner grows in place (`realloc`) and never shrinks.
    void reserve(unsigned int c);

    /// Characters the whole block has room for, also when the string views only a part of it; 0 without a block.
    unsigned int capacity() const noexcept {
        return body_ == nullptr ? 0 : body_->capacity / static_cast<unsigned int>(sizeof(T));
    }

    /// Writable pointers. They unshare, even if nothing is written; a null string gets a block. To read without that,
    /// go through a const string: `for (char c : std::as_const(s))`, or `cbegin`, `cend`, `data`.
    T* begin() {
        reserve(length());
        return body_->first();
    }
    T* end() {
        reserve(length());
        return body_->first() + (end_ - begin_);
    }
    using KordCharacterRange<T>::begin;
    using KordCharacterRange<T>::end;

    /// Overwrites the character at `pos`; unshares. No effect at or past the end.
    void set_at(unsigned int pos, T ch) {
        if (pos < length()) begin()[pos] = ch;
    }

    /// The text, zero-terminated, valid until the string changes. Looks at the character after the text (foreign text
    /// must have one) and only if that is not zero unshares, const or not, to write the terminator. For an empty
    /// string a constant of the library's, and nothing is allocated or written.
    const T* c_str() const;

    /// Unshares, sets the length to `n` and returns the characters for the caller to write: `n` and a zero. Those past
    /// the old length are indeterminate. Follow with `release_buffer`.
    T* get_buffer(unsigned int n) {
        if (BasicStringBody<T>::serves(body_, begin_, n)) {
            body_->first()[n] = 0;
        } else {
            reserve(n);
        }
        end_ = begin_ + n;
        return body_->first();
    }
    /// Unshares and sets the length to `n`, or with `npos` to the index of the first zero in the text if there is one.
    /// Terminates the text; characters past the old length become zero.
    void release_buffer(unsigned int n);

    /// Aims the string, const or not, at zero-terminated text that outlives it; nothing is copied until a change needs
    /// a block. Lets go of the string's own block first, so the text must not lie in it. Null makes the null string.
    const BasicString<T>& assign_literal(const T* text) const noexcept;

    // --- editing ----------------------------------------------------------------------------------------------------
    // Each allocates once at most. L is the length before the call; sums that no 32 bits hold are refused
    // like any length above the limit.

    /// Adds the characters of `r`.
    BasicString<T>& append(const KordCharacterRange<T>& r);
    /// Adds `n` times `c`.
    BasicString<T>& append(unsigned int n, T c);

    /// Becomes a copy of `r`. (To share the text of another string, use `=` or the forms below.)
    BasicString<T>& assign(const KordCharacterRange<T>& r);
    /// Becomes `n` times `c`.
    BasicString<T>& assign(unsigned int n, T c);
    /// Becomes the piece (`pos`, `n`) of `s`, sharing its block; `s` may be the string itself. No allocation.
    BasicString<T>& assign(const BasicString<T>& s, unsigned int pos, unsigned int n) noexcept;
    /// Becomes [first, last), which must lie in the text of `s`, sharing its block. No allocation.
    BasicString<T>& assign(const BasicString<T>& s, const T* first, const T* last) noexcept;

    /// Empties the string. A block it owns alone stays attached, unused, until the next change; a shared one is let go.
    BasicString<T>& erase() noexcept;
    /// Removes the piece (`pos`, `n`). At the front or at the end only a pointer moves, shared or not; in the middle as
    /// `replace` with nothing.
    BasicString<T>& erase(unsigned int pos, unsigned int n = npos);
    /// The same for [first, last) of the string's own text. Returns where the text after it now starts.
    T* erase(T* first, T* last);
    /// Removes the character at `p`, which must be in [begin, end). Only at the front is this a mere pointer move.
    T* erase(T* p);

    /// Puts `n` times `c` before position `pos`; no effect if `pos` is past L.
    BasicString<T>& insert(unsigned int pos, unsigned int n, T c);
    /// Puts the characters of `r` before position `pos`, in a new block of exactly the final size; no effect if `pos`
    /// is past L. (An empty `r` as in `replace`.)
    BasicString<T>& insert(unsigned int pos, const KordCharacterRange<T>& r);
    /// Puts `c` before `p`, a position in the string's own text, in a new block, and returns where it now stands.
    T* insert(T* p, T c);

    /// Replaces the piece (`pos`, `n`) by one `c`. In place if the string's block is not shared and the text does not
    /// grow; otherwise in a new block of exactly the final size. Past the end this appends, where `insert` does
    /// nothing.
    BasicString<T>& replace(unsigned int pos, unsigned int n, T c);
    /// Replaces the piece (`pos`, `n`) by the piece (`spos`, `slen`) of `r`; in place as above, if `r` lies elsewhere.
    BasicString<T>& replace(unsigned int pos, unsigned int n, const KordCharacterRange<T>& r, unsigned int spos = 0,
                            unsigned int slen = npos);
    /// Replaces [first, last) of the string's own text by zero-terminated text; null stands for none.
    BasicString<T>& replace(T* first, T* last, const T* text);
    /// Replaces [first, last) of the string's own text by [sfirst, slast).
    BasicString<T>& replace(T* first, T* last, const T* sfirst, const T* slast);

    /// Cuts the text to `n` characters, or fills it up to `n` with `c`. Unshares.
    void resize(unsigned int n, T c);

    /// Maps every character with `KordToUpper` or `KordToLower`. Unshares.
    BasicString<T>& make_upper();
    BasicString<T>& make_lower();

    // --- formatting -------------------------------------------------------------------------------------------------
    //
    // A template is text with placeholders: '%', flags, width, precision, conversion. Its placeholders must agree with
    // the arguments in number, order and kind:
    //
    //   %d %i     a signed integer             %f     a real, with 6 decimals or as many as the precision says; from
    //   %u        an unsigned integer                 10^(15 - precision) on 15 significant digits (see `KordFromReal`)
    //   %x %X     the same in hexadecimal      %c     a character
    //   %%        a percent sign               %s     a text, of which the precision is the most that is taken
    //
    // Flags: '-' left-justified, '0' zeros in front, '+' always a sign, ' ' a blank for a plus, '#' "0x" before %x.
    // Length modifiers (h, l, L) change nothing. A template that does not agree, or has a '*', makes the null string;
    // no template can do harm. A placeholder that the template's end cuts off is left out, and so is all from a
    // placeholder on whose conversion is a zero.
    //
    // The text is built in a new block, sized once beforehand, so the template and the texts may be this string or
    // pieces of it; the string lets go of its old block. Throws `os_length_error` if a width or the texts are too long
    // and `std::bad_alloc`; the string is then unchanged. Linear in the lengths of template and result.
    //
    // Numbers of every type count as the `long`, `unsigned long` or `double` that holds all their values (integers
    // narrower than `int`, `bool` and enumerators count as `int`); where none does, the call does not compile. All of
    // a 64-bit `long` is formatted. An integer after a real counts as a real.

    BasicString<T>& format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a,
                           const KordCharacterRange<T>& b);
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a, double x);
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a, long n);
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, long n, double x);
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, double x, double y);
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, long n, long m);
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a);
    /// A zero-terminated text; null stands for an empty one.
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, const T* text);
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, T c);
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, double x);
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, unsigned long n);
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, long n);

    // A number alone, written into the string's own block. Unshares; allocates only if the block is shared or smaller
    // than the room reserved: 16 characters (20 where `long` has 64 bits), 32 for a real.

    /// Decimal, always with a sign: `format(42L)` gives "+42".
    BasicString<T>& format(long n);
    /// Decimal.
    BasicString<T>& format(unsigned long n);
    /// 16 significant digits as of `KordFromReal`, without a plus: "0.1", "2", "1e+20".
    BasicString<T>& format(double x);

    template <class N, kord::detail::if_arguments<kord::detail::alone_t<N>> = 0>
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, N n) {
        return format(tmpl, static_cast<kord::detail::alone_t<N>>(n));
    }
    template <class N, kord::detail::if_arguments<kord::detail::beside_t<N>> = 0>
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a, N n) {
        return format(tmpl, a, static_cast<kord::detail::beside_t<N>>(n));
    }
    template <class N, class M, kord::detail::if_arguments<kord::detail::beside_t<N>, kord::detail::second_t<N, M>> = 0>
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, N n, M m) {
        return format(tmpl, static_cast<kord::detail::beside_t<N>>(n), static_cast<kord::detail::second_t<N, M>>(m));
    }
    template <class N, kord::detail::if_arguments<kord::detail::alone_t<N>> = 0>
    BasicString<T>& format(N n) {
        return format(static_cast<kord::detail::alone_t<N>>(n));
    }
    /// A character of another type that fits, taken by its unsigned code: of `char` and `char16_t` in 16-bit text.
    template <class C, std::enable_if_t<kord::detail::fits_character<C, T>, int> = 0>
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, C c) {
        return format(tmpl, static_cast<T>(static_cast<std::conditional_t<sizeof(C) == 1, unsigned char, T>>(c)));
    }

    template <class N,
              kord::detail::if_no_arguments<kord::detail::is_candidate<N> && !kord::detail::fits_character<N, T>,
                                            kord::detail::alone_t<N>> = 0>
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, N) = delete;
    template <class N, kord::detail::if_no_arguments<kord::detail::is_candidate<N>, kord::detail::beside_t<N>> = 0>
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a, N) = delete;
    template <class N, class M,
              kord::detail::if_no_arguments<kord::detail::is_candidate<N> && kord::detail::is_candidate<M>,
                                            kord::detail::beside_t<N>, kord::detail::second_t<N, M>> = 0>
    BasicString<T>& format(const KordCharacterRange<T>& tmpl, N, M) = delete;
    template <class N, kord::detail::if_no_arguments<kord::detail::is_candidate<N>, kord::detail::alone_t<N>> = 0>
    BasicString<T>& format(N) = delete;

    /// Where `format_path` leaves text out and puts "...".
    enum t_format_path : int {
        ellipsis_middle,      ///< whole folders, between the path's first ones and its last component
        ellipsis_middle_fill, ///< the same, but as much of the folders as has room stays
        ellipsis_end,         ///< at the end
        ellipsis_begin,       ///< at the beginning
    };

    /// Shortens the text to at most `maxLength` characters, if it is longer: a path name whose folders end in a
    /// backslash, or any text. If in the first two modes the last component with "..." does not fit, it is kept alone,
    /// without "..." if it then fits and cut at its end if not; a text without a backslash is cut at its end. Below 4
    /// characters there are only dots. Unshares; a mode that is none of the four changes nothing. Throws as `reserve`
    /// does; except with `ellipsis_end`, the text's beginning may then already be cut off.
    BasicString<T>& format_path(unsigned int maxLength, t_format_path mode);

    // --- the position forms for integers of other types ------------------------------------------------------------
    // A literal 0 would be a null iterator, or ambiguous. It means a position, as every other integer does, and beside
    // a pointer it does not compile. A position or count that 32 bits cannot hold is beyond every text here; elsewhere
    // the caller's compiler narrows it, and can warn of that.

    template <class I, kord::detail::if_integers<I> = 0>
    BasicString<T>& erase(I pos) {
        return erase(kord::detail::to_count(pos), npos);
    }
    template <class I, class J, kord::detail::if_integers<I, J> = 0>
    BasicString<T>& erase(I pos, J n) {
        return erase(kord::detail::to_count(pos), kord::detail::to_count(n));
    }
    /// Puts one `c` before position `pos`.
    template <class I, kord::detail::if_integers<I> = 0>
    BasicString<T>& insert(I pos, T c) {
        return insert(kord::detail::to_count(pos), 1u, c);
    }
    template <class I, class J, kord::detail::if_integers<I, J> = 0>
    BasicString<T>& replace(I pos, J n, T c) {
        return replace(kord::detail::to_count(pos), kord::detail::to_count(n), c);
    }
    template <class I, class J, kord::detail::if_integers<I, J> = 0>
    BasicString<T>& replace(I pos, J n, const T* text, unsigned int spos = 0, unsigned int slen = npos) {
        return replace(kord::detail::to_count(pos), kord::detail::to_count(n), KordCharacterRange<T>(text), spos, slen);
    }
    template <class I, class J, kord::detail::if_integers<I, J> = 0>
    BasicString<T>& replace(I pos, J n, const T* sfirst, const T* slast) {
        const KordCharacterRange<T> target(*this, kord::detail::to_count(pos), kord::detail::to_count(n));
        return replace(const_cast<T*>(target.begin()), const_cast<T*>(target.end()), sfirst, slast);
    }
    template <class I, class J, kord::detail::if_integers<I, J> = 0>
    BasicString<T>& assign(const BasicString<T>& s, I pos, J n) noexcept {
        return assign(s, kord::detail::to_count(pos), kord::detail::to_count(n));
    }

    T* erase(std::nullptr_t) = delete;
    template <class A, class B, kord::detail::if_mixed<A, B> = 0>
    T* erase(A, B) = delete;
    template <class A, class B, class... Source, kord::detail::if_mixed<A, B> = 0>
    BasicString<T>& replace(A, B, Source&&...) = delete;
    template <class I, kord::detail::if_integers<I> = 0>
    BasicString<T>& replace(T*, T*, I) = delete;
    template <class A, class B, kord::detail::if_mixed<A, B> = 0>
    BasicString<T>& assign(const BasicString<T>& s, A, B) = delete;

  protected:
    using KordCharacterRange<T>::begin_;
    using KordCharacterRange<T>::end_;

    BasicString() noexcept {}
    /// Views [first, first + n); takes a reference to `body`, or without one views foreign text.
    BasicString(BasicStringBody<T>* body, T* first, unsigned int n) noexcept : body_(BasicStringBody<T>::retain(body)) {
        begin_ = first;
        end_ = first + n;
    }
    /// A copy of `n` characters, zeros included; the null string if `text` is null.
    BasicString(const T* text, unsigned int n);
    /// `n` times `c`; always in a block.
    BasicString(unsigned int n, T c);
    /// Views [first, last) of the text of `s`, sharing its block.
    BasicString(const BasicString<T>& s, const T* first, const T* last) noexcept
        : body_(BasicStringBody<T>::retain(s.body_)) {
        begin_ = first;
        end_ = last;
    }
    /// Views the piece (`pos`, `n`) of `s`, sharing its block.
    BasicString(const BasicString<T>& s, unsigned int pos, unsigned int n) noexcept
        : KordCharacterRange<T>(s, pos, n), body_(BasicStringBody<T>::retain(s.body_)) {}

    /// Takes a reference to `body` (which may be null), drops the one held and stores `body`; the range stays.
    void link(BasicStringBody<T>* body) noexcept { unlink(BasicStringBody<T>::retain(body)); }
    /// Drops the reference held, freeing the block if it was the last, and stores `body` with the reference that the
    /// caller hands over; the range stays.
    void unlink(BasicStringBody<T>* body) noexcept {
        release(body_);
        body_ = body;
    }

    /// Makes `s` view [begin, end) of `body`, with the reference that the caller hands over, and drops what it held.
    static void adopt(BasicString<T>& s, BasicStringBody<T>* body, const T* begin, const T* end) noexcept {
        if (s.body_ != nullptr) release(s.body_);
        s.body_ = body;
        s.begin_ = begin;
        s.end_ = end;
    }

    /// Gives back a reference to a block, if there is one, and frees the block if it was the last. Not told which
    /// string it is for, so that a string that is only looked at can stay in registers.
    static void release(BasicStringBody<T>* body) noexcept;

    mutable BasicStringBody<T>* body_ = nullptr; // mutable for the same reason as the range's pointers
};

template <class T>
const unsigned int BasicString<T>::lengthLimit;

extern template class BasicString<char>;
extern template class BasicString<unsigned short>;

#endif
