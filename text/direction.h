#ifndef KORD_TEXT_DIRECTION_H
#define KORD_TEXT_DIRECTION_H

#include "core/scan.h"
#include "text/same.h"

#include <algorithm>
#include <cstddef>

/// The two directions of a search, so that what is searched for is written once.
///
/// A search narrows a range of places [first, last) until the one it looks for is the next one, or none is left.
/// Forwards the next place is `first`, backwards the one before `last`.
namespace kord {

struct Forward {
    template <class T>
    static const T* next(const T* first, const T*) noexcept {
        return first;
    }
    /// Drops the next n places.
    template <class T>
    static void drop(const T*& first, const T*& last, std::size_t n) noexcept {
        first += std::min(n, static_cast<std::size_t>(last - first));
    }
    /// Drops all but the next n places.
    template <class T>
    static void keep(const T*& first, const T*& last, std::size_t n) noexcept {
        last = first + std::min(n, static_cast<std::size_t>(last - first));
    }
    /// Drops the places that a search of the next ones, now in [first_left, last_left), has dropped.
    template <class T>
    static void follow(const T*& first, const T*&, const T* first_left, const T*) noexcept {
        first = first_left;
    }
    /// Drops the places before the next one that the matcher takes.
    template <class T, class Matcher>
    [[gnu::always_inline]] static void seek(const T*& first, const T*& last, const Matcher& matches) noexcept {
        first = scan_forward(first, last, matches);
    }
    template <class T>
    static void seek_character(const T*& first, const T*& last, T c) noexcept {
        first = scan_character(first, last, c);
    }
    /// Where the n characters from the i-th on lie in a text of `size`, counted in the direction.
    static std::size_t offset(std::size_t, std::size_t i, std::size_t) noexcept { return i; }
    /// How many of n characters two texts have in common before they differ.
    template <class Same, class T>
    static std::size_t common(const T* a, const T* b, std::size_t n) noexcept {
        return same_front<Same>(a, b, n);
    }
};

struct Backward {
    template <class T>
    static const T* next(const T*, const T* last) noexcept {
        return last - 1;
    }
    template <class T>
    static void drop(const T*& first, const T*& last, std::size_t n) noexcept {
        last -= std::min(n, static_cast<std::size_t>(last - first));
    }
    template <class T>
    static void keep(const T*& first, const T*& last, std::size_t n) noexcept {
        first = last - std::min(n, static_cast<std::size_t>(last - first));
    }
    template <class T>
    static void follow(const T*&, const T*& last, const T*, const T* last_left) noexcept {
        last = last_left;
    }
    template <class T, class Matcher>
    [[gnu::always_inline]] static void seek(const T*& first, const T*& last, const Matcher& matches) noexcept {
        last = scan_backward(first, last, matches);
    }
    template <class T>
    static void seek_character(const T*& first, const T*& last, T c) noexcept {
        last = scan_character_backward(first, last, c);
    }
    static std::size_t offset(std::size_t size, std::size_t i, std::size_t n) noexcept { return size - i - n; }
    template <class Same, class T>
    static std::size_t common(const T* a, const T* b, std::size_t n) noexcept {
        return same_back<Same>(a, b, n);
    }
};

} // namespace kord

#endif
