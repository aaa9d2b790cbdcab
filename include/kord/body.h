#ifndef KORD_BODY_H
#define KORD_BODY_H

#include <cstddef>

namespace kord::detail {

/// The most characters a string may own.
inline constexpr unsigned int length_limit = 0x100000u;

} // namespace kord::detail

/// The heap block behind a string, shared by every string that counts in it: this header, then the character slots,
/// then one slot for a terminator. From `malloc`; whoever brings the count to zero frees it.
template <class T>
struct BasicStringBody {
    unsigned int count;    ///< strings that hold the block; not atomic
    unsigned int capacity; ///< bytes for characters, the terminator slot not counted

    /// The first character slot.
    T* first() noexcept { return reinterpret_cast<T*>(this + 1); }

    /// Bytes of a block for `c` characters, `c` at most the length limit: header, characters and terminator slot,
    /// rounded up to 16. There is no other growth.
    static constexpr std::size_t block_size(unsigned int c) noexcept {
        return (sizeof(BasicStringBody) + (c + std::size_t{1}) * sizeof(T) + 15) & ~std::size_t{15};
    }
    /// The capacity field of such a block.
    static constexpr unsigned int capacity_for(unsigned int c) noexcept {
        return static_cast<unsigned int>(block_size(c) - sizeof(BasicStringBody) - sizeof(T));
    }
    /// Does the block do for `c` characters? (Every block has a size of the rule, so comparing with `capacity_for(c)`
    /// gives the same answer; this is cheaper.)
    bool fits(std::size_t c) const noexcept { return c * sizeof(T) <= capacity; }
    /// May the one string that starts at `begin` write here? Only if nobody else holds the block and it starts at the
    /// first slot.
    bool owned_from(const T* begin) noexcept { return count <= 1 && begin == first(); }

    /// May the string that starts at `begin` and holds `body`, or none, write `c` characters here as it is?
    static bool serves(BasicStringBody* body, const T* begin, std::size_t c) noexcept {
        return body != nullptr && body->owned_from(begin) && c <= kord::detail::length_limit && body->fits(c);
    }

    /// Takes a reference to a block, if there is one.
    static BasicStringBody* retain(BasicStringBody* body) noexcept {
        if (body != nullptr) ++body->count;
        return body;
    }
    /// Puts `c` and a terminator behind the text [begin, end) of a string with this block, if it may write here and
    /// there is room; says whether it did.
    static bool push(BasicStringBody* body, const T* begin, const T* end, T c) noexcept {
        if (!serves(body, begin, static_cast<std::size_t>(end - begin) + 1)) return false;
        T* const at = const_cast<T*>(end);
        at[0] = c;
        at[1] = T{};
        return true;
    }
};

#endif
