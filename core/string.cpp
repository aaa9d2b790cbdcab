// The block of a string: reserving and unsharing, terminating, buffers, foreign text.
#include "core/body.h"
#include "core/copy.h"
#include "core/scan.h"

#include <kord/basic_string.h>

#include <algorithm>

template <class T>
BasicString<T>::BasicString(const T* text, unsigned int n) {
    if (text == nullptr) return;
    body_ = kord::new_body<T>(n);
    T* const first = body_->first();
    begin_ = first;
    end_ = first + n;
    kord::copy_characters(first, text, n);
}

template <class T>
BasicString<T>::BasicString(unsigned int n, T c) {
    body_ = kord::new_body<T>(n);
    T* const first = body_->first();
    begin_ = first;
    end_ = first + n;
    std::fill_n(first, n, c);
}

template <class T>
void BasicString<T>::release(BasicStringBody<T>* body) noexcept {
    if (body != nullptr && --body->count == 0) kord::free_body(body);
}

namespace {

/// `reserve` where the string has no block of its own that does: one that is too small, none, or one not its alone.
template <class T>
[[gnu::noinline]] void make_room(BasicString<T>& s, BasicStringBody<T>*& body, const T*& begin, const T*& end,
                                 unsigned int c) {
    if (c > s.lengthLimit) kord::fail_length();
    unsigned int n = s.length();
    if (body != nullptr && body->owned_from(begin)) {
        body = kord::grow_body(body, c);
    } else {
        // Foreign text is cut to what was asked for; a text in a block never is.
        if (body == nullptr) n = std::min(n, c);
        BasicStringBody<T>* const own = kord::new_body<T>(std::max(c, n));
        kord::copy_characters(own->first(), begin, n);
        own->first()[n] = 0; // so that `c_str` never looks at a slot that nobody wrote
        if (body != nullptr && --body->count == 0) kord::free_body(body);
        body = own;
    }
    begin = body->first();
    end = begin + n;
}

} // namespace

template <class T>
void BasicString<T>::reserve(unsigned int c) {
    if (!BasicStringBody<T>::serves(body_, begin_, c)) {
        make_room(*this, body_, begin_, end_, c);
    } else if (c >= length()) {
        body_->first()[c] = 0;
    }
}

namespace {

/// The one character that `c_str` gives for every empty string.
template <class T>
constexpr T empty_text[1] = {};

/// How a const member changes its string, whose fields are mutable for this: only `c_str` and `assign_literal` do.
template <class T>
BasicString<T>& changeable(const BasicString<T>& s) noexcept {
    return const_cast<BasicString<T>&>(s);
}

} // namespace

template <class T>
const T* BasicString<T>::c_str() const {
    if (begin_ == end_) return empty_text<T>;
    if (*end_ != 0) changeable(*this).reserve(length());
    return begin_;
}

template <class T>
void BasicString<T>::release_buffer(unsigned int n) {
    if (n == npos) {
        n = kord::detail::to_count(kord::scan_forward(begin_, end_, kord::Is<T>(0)) - begin_);
    }
    const unsigned int old = length();
    reserve(n);
    T* const text = body_->first();
    if (n > old) std::fill(text + old, text + n, T{});
    text[n] = 0; // `reserve` leaves it out where the text was longer
    end_ = text + n;
}

template <class T>
const BasicString<T>& BasicString<T>::assign_literal(const T* text) const noexcept {
    const T* const end = text + kord::detail::text_length(text);
    BasicString<T>& s = changeable(*this);
    s.unlink(nullptr);
    s.begin_ = text;
    s.end_ = end;
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::erase() noexcept {
    if (body_ != nullptr && body_->count > 1) unlink(nullptr);
    begin_ = end_ = nullptr;
    return *this;
}

template class BasicString<char>;
template class BasicString<unsigned short>;
