#ifndef KORD_CORE_DRAFT_H
#define KORD_CORE_DRAFT_H

#include "core/body.h"

#include <kord/basic_string.h>

#include <cstdint>

namespace kord {

/// Sets what a string holds, as one of its members would.
template <class T>
class Fields : BasicString<T> {
  public:
    /// The text becomes [begin, end) in the block, whose reference the caller hands over; the old block is let go.
    static void set(BasicString<T>& s, BasicStringBody<T>* body, const T* begin, const T* end) noexcept {
        BasicStringBody<T>* const old = s.*&Fields::body_;
        s.*& Fields::body_ = body;
        s.*& Fields::begin_ = begin;
        s.*& Fields::end_ = end;
        if (old != nullptr) Fields::release(old);
    }
};

/// A new text for a string, written into a block of its own while the string still has the old one: what is being
/// written may read that. Between the two calls nothing may throw.
template <class T>
class Draft {
  public:
    /// Throws as `reserve` does.
    explicit Draft(std::uint64_t room) : body_(new_body<T>(room)) {}
    T* first() noexcept { return body_->first(); }
    /// Ends the text before `end` and lets the string take it over.
    void move_to(BasicString<T>& s, T* end) noexcept {
        *end = 0;
        Fields<T>::set(s, body_, body_->first(), end);
    }

  private:
    BasicStringBody<T>* body_;
};

} // namespace kord

#endif
