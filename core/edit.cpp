// Editing. A text is written by reserving its length, setting the end and writing; or by the replacement core.
#include "core/body.h"
#include "core/case.h"
#include "core/copy.h"
#include "core/scan.h"

#include <kord/basic_string.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

/// The sum of two counts, or if 32 bits do not hold it one that every limit refuses.
constexpr unsigned int sum(std::size_t a, std::size_t b, std::size_t c = 0) noexcept {
    return kord::detail::to_count(std::uint64_t{a} + b + c);
}

/// How far into the block's characters a pointer reaches, in bytes; more than any capacity if it points elsewhere.
template <class T>
std::uintptr_t distance_into(BasicStringBody<T>* body, const T* p) noexcept {
    return reinterpret_cast<std::uintptr_t>(p) - reinterpret_cast<std::uintptr_t>(body->first());
}

/// Does a source that begins at `first` lie inside the block?
template <class T>
bool lies_in(BasicStringBody<T>* body, const T* first) noexcept {
    return body != nullptr && distance_into(body, first) < body->capacity;
}

/// Would the source go with the block? One that lies inside does, and one that is nothing but the terminator.
template <class T>
bool goes_with(BasicStringBody<T>* body, const T* first, std::size_t n) noexcept {
    return lies_in(body, first) || (body != nullptr && n != 0 && distance_into(body, first) == body->capacity);
}

/// A pointer into the string's own text as the editing forms take and return it.
template <class T>
T* place(const T* p) noexcept {
    return const_cast<T*>(p);
}

} // namespace

// A source in the string's own block gets a second reference to it for as long as it is needed: `reserve` then copies
// the text instead of growing the block under the source.

template <class T>
BasicString<T>& BasicString<T>::append(const KordCharacterRange<T>& r) {
    // The range may be this very string: read it before anything moves.
    const T* const source = r.begin();
    const std::size_t k = static_cast<std::size_t>(r.end() - source);
    const std::size_t n = static_cast<std::size_t>(end_ - begin_);
    const unsigned int m = sum(n, k);
    const bool own = goes_with(body_, source, k);
    if (!own && BasicStringBody<T>::serves(body_, begin_, m)) {
        // Most appends need nothing but the copy.
        T* const at = body_->first() + n;
        at[k] = 0;
        end_ = at + k;
        kord::copy_characters(at, source, k);
        return *this;
    }
    BasicString<T> hold;
    if (own) hold.link(body_);
    kord::copy_characters(get_buffer(m) + n, source, k);
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::append(unsigned int n, T c) {
    const unsigned int old = length();
    T* const at = get_buffer(sum(old, n)) + old;
    if (n == 1) {
        *at = c; // what `+=` asks for when a block is full
    } else {
        std::fill_n(at, n, c);
    }
    return *this;
}

// Where `assign` cannot write in place it starts from an empty string with the room that unsharing the old text would
// have made, so that no character is copied only to be overwritten. The old text lasts until the end, as the source may
// be it.

template <class T>
BasicString<T>& BasicString<T>::assign(const KordCharacterRange<T>& r) {
    const T* const source = r.begin();
    const unsigned int k = r.length();
    BasicString<T> other;
    if (body_ == nullptr || !body_->owned_from(begin_) || goes_with(body_, source, k)) {
        other.reserve(body_ == nullptr ? k : std::max(k, length()));
        swap(other);
    }
    kord::copy_characters(get_buffer(k), source, k);
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::assign(unsigned int n, T c) {
    BasicString<T> other;
    if (body_ != nullptr && !body_->owned_from(begin_)) {
        other.reserve(std::max(n, length()));
        swap(other);
    }
    std::fill_n(get_buffer(n), n, c);
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::assign(const BasicString<T>& s, unsigned int pos, unsigned int n) noexcept {
    const KordCharacterRange<T> piece(s, pos, n);
    return assign(s, piece.begin(), piece.end());
}

template <class T>
BasicString<T>& BasicString<T>::assign(const BasicString<T>& s, const T* first, const T* last) noexcept {
    link(s.body_);
    begin_ = first;
    end_ = last;
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::erase(unsigned int pos, unsigned int n) {
    const KordCharacterRange<T> piece(*this, pos, n);
    if (pos < length()) erase(place(piece.begin()), place(piece.end()));
    return *this;
}

template <class T>
T* BasicString<T>::erase(T* first, T* last) {
    const std::ptrdiff_t offset = first - begin_;
    if (first == begin_) {
        begin_ = last;
    } else if (last != end_) {
        replace(first, last, nullptr, nullptr);
    } else {
        end_ = first;
    }
    return place(begin_) + offset;
}

template <class T>
T* BasicString<T>::erase(T* p) {
    const std::ptrdiff_t offset = p - begin_;
    if (p == begin_) {
        ++begin_;
    } else {
        replace(p, p + 1, nullptr, nullptr);
    }
    return place(begin_) + offset;
}

template <class T>
BasicString<T>& BasicString<T>::insert(unsigned int pos, unsigned int n, T c) {
    const unsigned int old = length();
    if (pos > old) return *this;
    T* const at = get_buffer(sum(old, n)) + pos;
    std::memmove(at + n, at, (old - pos) * sizeof(T));
    std::fill_n(at, n, c);
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::insert(unsigned int pos, const KordCharacterRange<T>& r) {
    return pos > length() ? *this : replace(pos, 0u, r);
}

template <class T>
T* BasicString<T>::insert(T* p, T c) {
    const std::ptrdiff_t offset = p - begin_;
    replace(p, p, &c, &c + 1);
    return place(begin_) + offset;
}

template <class T>
BasicString<T>& BasicString<T>::replace(unsigned int pos, unsigned int n, T c) {
    return replace(pos, n, KordCharacterRange<T>(&c, 0, 1));
}

template <class T>
BasicString<T>& BasicString<T>::replace(unsigned int pos, unsigned int n, const KordCharacterRange<T>& r,
                                        unsigned int spos, unsigned int slen) {
    const KordCharacterRange<T> target(*this, pos, n);
    const KordCharacterRange<T> source(r, spos, slen);
    return replace(place(target.begin()), place(target.end()), source.begin(), source.end());
}

template <class T>
BasicString<T>& BasicString<T>::replace(T* first, T* last, const T* text) {
    return replace(first, last, text, text + kord::detail::text_length(text));
}

// The replacement core.
template <class T>
BasicString<T>& BasicString<T>::replace(T* first, T* last, const T* sfirst, const T* slast) {
    const std::size_t removed = static_cast<std::size_t>(last - first);
    const std::size_t added = static_cast<std::size_t>(slast - sfirst);
    const std::size_t after = static_cast<std::size_t>(end_ - last);
    // An emptied string holds a block but no place in it.
    const bool in_place =
        body_ != nullptr && body_->count == 1 && first != nullptr && removed >= added && !lies_in(body_, sfirst);
    if (in_place) {
        kord::copy_characters(first, sfirst, added);
        std::memmove(first + added, last, after * sizeof(T));
        first[added + after] = 0;
        end_ = first + added + after;
        return *this;
    }
    BasicString<T> result;
    const std::size_t before = static_cast<std::size_t>(first - begin_);
    T* const at = result.get_buffer(sum(before, added, after));
    kord::copy_characters(at, begin_, before);
    kord::copy_characters(at + before, sfirst, added);
    kord::copy_characters(at + before + added, last, after);
    swap(result);
    return *this;
}

template <class T>
void BasicString<T>::resize(unsigned int n, T c) {
    const unsigned int old = length();
    T* const text = get_buffer(n);
    if (n > old) std::fill(text + old, text + n, c);
}

template <class T>
BasicString<T>& BasicString<T>::make_upper() {
    T* const first = begin();
    kord::transform(first, first + length(), kord::ToUpper<T>());
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::make_lower() {
    T* const first = begin();
    kord::transform(first, first + length(), kord::ToLower<T>());
    return *this;
}

template class BasicString<char>;
template class BasicString<unsigned short>;
