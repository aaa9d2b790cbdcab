#ifndef KORD_CORE_COPY_H
#define KORD_CORE_COPY_H

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kord {

/// Copies n bytes, `sizeof(Word)` to twice as many, as two words that may overlap.
template <class Word>
[[gnu::always_inline]] inline void copy_two_words(void* to, const void* from, std::size_t n) noexcept {
    Word first, last;
    std::memcpy(&first, from, sizeof(Word));
    std::memcpy(&last, static_cast<const char*>(from) + n - sizeof(Word), sizeof(Word));
    std::memcpy(to, &first, sizeof(Word));
    std::memcpy(static_cast<char*>(to) + n - sizeof(Word), &last, sizeof(Word));
}

/// `memcpy` counted in characters; unlike it, takes null pointers when there is nothing to copy. Short texts, of which
/// there are many, are copied without the call.
template <class T>
[[gnu::always_inline]] inline void copy_characters(T* to, const T* from, std::size_t count) noexcept {
    const std::size_t n = count * sizeof(T);
    if (n > 16) {
        std::memcpy(to, from, n);
    } else if (n >= 8) {
        copy_two_words<std::uint64_t>(to, from, n);
    } else if (n >= 4) {
        copy_two_words<std::uint32_t>(to, from, n);
    } else if (n >= 2) {
        copy_two_words<std::uint16_t>(to, from, n);
    } else if (count != 0) {
        *to = *from;
    }
}

} // namespace kord

#endif
