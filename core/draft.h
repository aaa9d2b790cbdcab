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
    using BasicString<T>::adopt;
};

/// A new text for a string, written into a block of its own while the string still has the old one: what is being
/// written may read that. A draft that no string takes over is freed.
template <class T>
class Draft {
  public:
    /// Throws as `reserve` does.
    explicit Draft(std::uint64_t room) : body_(new_body<T>(room)) {}
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft() {
        if (body_ != nullptr) free_body(body_);
    }
    T* first() noexcept { return body_->first(); }
    /// Ends the text before `end` and lets the string take it over.
    void move_to(BasicString<T>& s, T* end) noexcept {
        *end = 0;
        Fields<T>::adopt(s, body_, body_->first(), end);
        body_ = nullptr;
    }

  private:
    BasicStringBody<T>* body_;
};

} // namespace kord

#endif
