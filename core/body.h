#ifndef KORD_CORE_BODY_H
#define KORD_CORE_BODY_H

#include "core/copy.h"
#include "core/fail.h"

#include <kord/body.h>

#include <cstdint>
#include <cstdlib>

/// Making, growing and freeing string blocks: the only callers of `malloc`, `realloc` and `free`.
namespace kord {

static_assert(sizeof(BasicStringBody<char>) == 8 && sizeof(BasicStringBody<unsigned short>) == 8);
static_assert(BasicStringBody<char>::block_size(7) == 16 && BasicStringBody<char>::block_size(8) == 32);
static_assert(BasicStringBody<unsigned short>::block_size(3) == 16 &&
              BasicStringBody<unsigned short>::block_size(4) == 32);
static_assert(BasicStringBody<char>::capacity_for(detail::length_limit) == 1048583);
static_assert(BasicStringBody<unsigned short>::capacity_for(detail::length_limit) == 2097158);

/// Records that the block has the size for `c` characters, and terminates it there and at its last slot.
template <class T>
void set_size(BasicStringBody<T>* body, unsigned int c) noexcept {
    body->capacity = BasicStringBody<T>::capacity_for(c);
    body->first()[body->capacity / sizeof(T)] = 0;
    body->first()[c] = 0;
}

/// A block for `room` characters with a count of 1. Its slots are indeterminate but for the two terminators.
template <class T>
BasicStringBody<T>* new_body(std::uint64_t room) {
    if (room > detail::length_limit) fail_length();
    const auto c = static_cast<unsigned int>(room);
    auto* const body = static_cast<BasicStringBody<T>*>(std::malloc(BasicStringBody<T>::block_size(c)));
    if (body == nullptr) fail_memory();
    body->count = 1;
    set_size(body, c);
    return body;
}

/// The same block, perhaps elsewhere, with room for `c` characters. Only for a block with one holder.
template <class T>
BasicStringBody<T>* grow_body(BasicStringBody<T>* body, unsigned int c) {
    body = static_cast<BasicStringBody<T>*>(std::realloc(body, BasicStringBody<T>::block_size(c)));
    if (body == nullptr) fail_memory();
    set_size(body, c);
    return body;
}

template <class T>
void free_body(BasicStringBody<T>* body) noexcept {
    std::free(body);
}

} // namespace kord

#endif
