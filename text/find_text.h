#ifndef KORD_TEXT_FIND_TEXT_H
#define KORD_TEXT_FIND_TEXT_H

#include "core/scan.h"
#include "text/same.h"

#include <algorithm>
#include <cstddef>

/// Searching for a text, in both directions, exactly or without case.
///
/// Candidates are the places where the text could begin: [first, last), with the whole length of the text readable
/// behind each. Directions differ in the end they are taken from, so everything below is written once, in steps from
/// the front of the text in the direction of the search.
namespace kord {

struct Forward {
    /// Drops the candidates before the next one that the matcher takes, all if there is none.
    template <class T, class Matcher>
    static void seek(const T*& first, const T*& last, const Matcher& matches) noexcept {
        first = scan_forward(first, last, matches);
    }
    template <class T>
    static void seek_character(const T*& first, const T*& last, T c) noexcept {
        first = scan_character(first, last, c);
    }
    template <class T>
    static const T* candidate(const T* first, const T*) noexcept {
        return first;
    }
    /// Drops the next n candidates.
    template <class T>
    static void drop(const T*& first, const T*& last, std::size_t n) noexcept {
        first += std::min(n, static_cast<std::size_t>(last - first));
    }
    /// Where the n characters from the i-th on lie in a text of `size`.
    static std::size_t offset(std::size_t, std::size_t i, std::size_t) noexcept { return i; }
    /// How many of n characters two texts have in common.
    template <class T, class Same>
    static std::size_t common(const T* a, const T* b, std::size_t n, const Same& same) noexcept {
        return common_front(a, b, n, same);
    }
};

struct Backward {
    template <class T, class Matcher>
    static void seek(const T*& first, const T*& last, const Matcher& matches) noexcept {
        last = scan_backward(first, last, matches);
    }
    template <class T>
    static void seek_character(const T*& first, const T*& last, T c) noexcept {
        last = scan_character_backward(first, last, c);
    }
    template <class T>
    static const T* candidate(const T*, const T* last) noexcept {
        return last - 1;
    }
    template <class T>
    static void drop(const T*& first, const T*& last, std::size_t n) noexcept {
        last -= std::min(n, static_cast<std::size_t>(last - first));
    }
    static std::size_t offset(std::size_t size, std::size_t i, std::size_t n) noexcept { return size - i - n; }
    template <class T, class Same>
    static std::size_t common(const T* a, const T* b, std::size_t n, const Same& same) noexcept {
        return common_back(a, b, n, same);
    }
};

/// A matcher of candidates: three characters of the text are where they should be. Without case a letter and its
/// partner are told apart by nothing but fixed bits, so those are set on both sides; the few others that this lets pass
/// do no harm, as every candidate is compared in full.
template <class T, class Same>
class Probes {
  public:
    Probes(const T* text, std::size_t n) noexcept : text_(text) {
        const T* const other = scan_forward(text, text + n, IsNot<T, Is<T>>(Is<T>(*text)));
        aim(0, 0);
        aim(1, n - 1);
        aim(2, other == text + n ? n / 2 : static_cast<std::size_t>(other - text));
    }
    /// Aims one of the probes at the character at `offset`.
    void aim(unsigned int probe, std::size_t offset) noexcept {
        const unsigned int code = code_of(text_[offset]);
        offset_[probe] = offset;
        bits_[probe] = Lanes<T>::splat(Same::case_bits(code));
        wanted_[probe] = Lanes<T>::splat(code | Same::case_bits(code));
    }
    Lanes<T> operator()(const auto& block) const noexcept {
        return probe(block, 0) & probe(block, 1) & probe(block, 2);
    }

  private:
    Lanes<T> probe(const auto& block, unsigned int i) const noexcept {
        const Lanes<T> x = block.at(offset_[i]);
        if constexpr (std::is_same_v<Same, Exactly>) return equal(x, wanted_[i]);
        return equal(x | bits_[i], wanted_[i]);
    }

    const T* text_;
    std::size_t offset_[3];
    Lanes<T> bits_[3], wanted_[3];
};

/// The search for one text of at least one character.
///
/// Candidates are found by probing and compared from the front. Where that keeps failing, a probe is aimed at the place
/// of the difference, which regular text does not survive; and where it fails again and again, the two-way method of
/// Crochemore and Perrin (1991) goes on, which never looks at a character more than a fixed number of times and needs
/// no memory.
template <class T, class Same, class Direction>
class TextSearch {
  public:
    TextSearch(const T* text, std::size_t n) noexcept : text_(text), n_(n), probes_(text, n) {}

    /// The first candidate, in the direction of the search, where the text is; null if it is at none.
    const T* find(const T* first, const T* last) noexcept {
        std::size_t debt = 0;
        unsigned int aims = 0;
        for (;;) {
            const std::size_t before = static_cast<std::size_t>(last - first);
            Direction::seek(first, last, probes_);
            if (first == last) return nullptr;
            const T* const at = Direction::candidate(first, last);
            const std::size_t same = common(at, 0, n_);
            if (same == n_) return at;
            // A failure costs about as much as passing over 32 characters and those compared.
            debt += 32 + same;
            debt -= std::min(debt, before - static_cast<std::size_t>(last - first));
            Direction::drop(first, last, 1);
            if (debt < patience) continue;
            if (aims == most_aims) return find_two_way(first, last);
            probes_.aim(aims++ % 3, Direction::offset(n_, same, 1));
            debt = 0;
        }
    }

  private:
    static constexpr std::size_t patience = 512;
    static constexpr unsigned int most_aims = 4;

    /// How many characters from the i-th on, of n, are the same at a candidate as in the text.
    std::size_t common(const T* at, std::size_t i, std::size_t n) const noexcept { return common(at, text_, i, i, n); }
    std::size_t common(const T* a, const T* b, std::size_t i, std::size_t j, std::size_t n) const noexcept {
        return Direction::common(a + Direction::offset(n_, i, n), b + Direction::offset(n_, j, n), n, Same());
    }
    int code(std::size_t i) const noexcept { return Same::code(text_[Direction::offset(n_, i, 1)]); }

    /// Where the text is best cut in two: a place where no shorter repetition than the text's own period can lie, and
    /// the period of the second part.
    struct Cut {
        std::size_t at, period;
    };

    /// The greatest of the text's endings, if codes are ordered upwards or downwards.
    Cut greatest_ending(bool upwards) const noexcept {
        Cut best{0, 1};
        for (std::size_t start = 1, same = 0; start + same < n_;) {
            const int a = code(best.at + same), b = code(start + same);
            if (a == b) {
                if (++same == best.period) {
                    start += best.period;
                    same = 0;
                }
            } else if ((b < a) == upwards) {
                start += same + 1;
                same = 0;
                best.period = start - best.at;
            } else {
                best = {start, 1};
                start = best.at + 1;
                same = 0;
            }
        }
        return best;
    }

    const T* find_two_way(const T* first, const T* last) noexcept {
        const Cut up = greatest_ending(true), down = greatest_ending(false);
        Cut cut = up.at > down.at ? up : down;
        // If the first part goes on with the period of the second, it is the period of the text.
        const bool periodic = common(text_, text_, 0, cut.period, cut.at) == cut.at;
        if (!periodic) cut.period = std::max(cut.at, n_ - cut.at) + 1;
        std::size_t known = 0; // characters at the front that the last comparison has shown to be the same
        while (first != last) {
            if (known == 0) {
                Direction::seek(first, last, probes_);
                if (first == last) return nullptr;
            }
            const T* const at = Direction::candidate(first, last);
            const std::size_t from = std::max(cut.at, known);
            const std::size_t same = common(at, from, n_ - from);
            if (same != n_ - from) {
                Direction::drop(first, last, from + same - cut.at + 1);
                known = 0;
                continue;
            }
            if (known >= cut.at || common(at, known, cut.at - known) == cut.at - known) return at;
            Direction::drop(first, last, cut.period);
            known = periodic ? n_ - cut.period : 0;
        }
        return nullptr;
    }

    const T* text_;
    std::size_t n_;
    Probes<T, Same> probes_;
};

/// The first of the candidates, in the given direction, where the n > 0 characters of `text` are; null if it is at
/// none.
template <class Same, class Direction, class T>
const T* find_text(const T* first, const T* last, const T* text, std::size_t n) noexcept {
    if (n == 1 && Same::case_bits(code_of(*text)) == 0) {
        Direction::seek_character(first, last, *text);
        return first == last ? nullptr : Direction::candidate(first, last);
    }
    return TextSearch<T, Same, Direction>(text, n).find(first, last);
}

} // namespace kord

#endif
