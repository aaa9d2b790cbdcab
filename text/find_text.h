#ifndef KORD_TEXT_FIND_TEXT_H
#define KORD_TEXT_FIND_TEXT_H

#include <kord/range.h>

#include "core/scan.h"
#include "text/direction.h"
#include "text/same.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

/// Searching for a text, in both directions, exactly or without case.
///
/// The places are those where the text could begin, all of it being readable behind each. Several methods take turns,
/// each with the same outcome as comparing at every place; the next one is tried where the one before fails too often:
///  - Probing: two characters of the text are looked for by lanes, and where both are, the rest is compared. Costs next
///    to nothing to begin with and is fast wherever texts are not made of few characters in a few patterns.
///  - Leaping, in long 8-bit texts: the C library's search for the first character alone, if that is a rare one.
///  - Grams: eight characters at the far end of a place say how far it is to the next place where they fit.
///  - Probing again with more probes, one of them where the last comparison has failed.
///  - The two-way method of Crochemore and Perrin (1991), which looks at a character a fixed number of times at most,
///    whatever the texts are, with a few variables beside them. Here it compares and seeks by lanes.
namespace kord {

/// Weighs what failed comparisons cost against the places passed, in characters.
class Patience {
  public:
    /// After a failure that had `same` characters in common, and `passed` places since the last one: is it too much?
    bool ends(std::size_t same, std::size_t passed) noexcept {
        debt_ += cost + same;
        debt_ -= std::min(debt_, passed);
        return debt_ >= most;
    }

  private:
    // A failure costs a call and a block begun anew, in which some dozens of characters could have been passed. A few
    // in a row are borne.
    static constexpr std::size_t cost = 32, most = 128;

    std::size_t debt_ = 0;
};

/// A matcher of places: N characters of the text are where they should be. Without case a letter and its partner are
/// told apart by nothing but fixed bits, so those are set on both sides; the few others that this lets pass do no harm,
/// as every place is compared in full.
template <class T, class Same, unsigned int N>
class Probes {
  public:
    /// Spreads the probes over the text, the first at its first character and the last at its last.
    Probes(const T* text, std::size_t n) noexcept {
        for (unsigned int i = 0; i != N; ++i) aim(i, text, (n - 1) * i / (N - 1));
    }
    /// Aims one of the probes at the character at `offset`.
    void aim(unsigned int probe, const T* text, std::size_t offset) noexcept {
        const unsigned int code = code_of(text[offset]);
        offset_[probe] = offset;
        bits_[probe] = Lanes<T>::splat(Same::case_bits(code));
        wanted_[probe] = Lanes<T>::splat(code | Same::case_bits(code));
    }
    [[gnu::always_inline]] Lanes<T> operator()(const auto& block) const noexcept {
        Lanes<T> found = probe(block, 0);
        for (unsigned int i = 1; i != N; ++i) found = found & probe(block, i);
        return found;
    }

  private:
    [[gnu::always_inline]] Lanes<T> probe(const auto& block, unsigned int i) const noexcept {
        const Lanes<T> x = block.at(offset_[i]);
        if constexpr (std::is_same_v<Same, Exactly>) return equal(x, wanted_[i]);
        return equal(x | bits_[i], wanted_[i]);
    }

    std::size_t offset_[N];
    Lanes<T> bits_[N], wanted_[N];
};

/// The search for one text, of n > 0 characters. Its methods narrow [first, last) as a direction does; they return
/// whether that is the end of the search, with the text at the next place if one is left.
template <class T, class Same, class Direction>
class TextSearch {
  public:
    TextSearch(const T* text, std::size_t n) noexcept : text_(text), n_(n) {}

    /// Is the text at this place?
    bool is_at(const T* place) noexcept {
        differed_ = common(place, 0, n_);
        return differed_ == n_;
    }

    /// How many characters were the same at the last place compared?
    std::size_t differed() const noexcept { return differed_; }

    bool probe(const T*& first, const T*& last, Patience patience = Patience()) noexcept {
        return probe(first, last, Probes<T, Same, 2>(text_, n_), patience);
    }
    /// With more probes, one of them where the text last differed: regular texts do not survive that.
    bool probe_again(const T*& first, const T*& last) noexcept {
        MoreProbes probes(text_, n_);
        probes.aim(1, text_, Direction::offset(n_, differed_, 1));
        return probe(first, last, probes, Patience());
    }

    /// Looks for the first character only, by the C library's search, as long as that leaps far.
    bool leap(const T*& first, const T*& last) noexcept {
        constexpr std::size_t cost = 96; // places that probing passes in the time of a leap, beside those of a failure
        for (Patience patience;;) {
            const T* const old_first = first;
            const T* const old_last = last;
            Direction::seek_character(first, last, *text_);
            if (first == last) return true;
            const T* const at = Direction::next(first, last);
            if (at[n_ - 1] != text_[n_ - 1]) {
                differed_ = 0;
            } else if (is_at(at)) {
                return true;
            }
            Direction::drop(first, last, 1);
            if (patience.ends(cost + differed_, passed(first - old_first, old_last - last))) return false;
        }
    }

    bool find_by_grams(const T*& first, const T*& last) noexcept {
        if (n_ < 2 * gram) return false;
        constexpr std::size_t most = 255; // places that an entry can say
        const std::size_t end = n_ - gram;
        // Where one character fills the last gram and goes on before it, every failure would leap by a single place.
        if (common(text_, text_, end - 1, end, gram) == gram) return false;
        unsigned char leaps[256];
        std::memset(leaps, static_cast<int>(std::min(most, end + 1)), sizeof leaps);
        for (std::size_t i = end - std::min(most, end); i != end; ++i) {
            leaps[hash(text_ + Direction::offset(n_, i, gram))] = static_cast<unsigned char>(end - i);
        }
        unsigned char& last_gram = leaps[hash(text_ + Direction::offset(n_, end, gram))];
        const unsigned char leap_after_failure = last_gram;
        last_gram = 0;
        Patience patience;
        while (first != last) {
            const T* const at = Direction::next(first, last);
            std::size_t leap = leaps[hash(at + Direction::offset(n_, end, gram))];
            if (leap == 0) {
                if (is_at(at)) return true;
                leap = leap_after_failure;
                if (patience.ends(differed_, leap)) return false;
            }
            if (leap >= static_cast<std::size_t>(last - first)) break;
            Direction::drop(first, last, leap);
        }
        last = first;
        return true;
    }

    bool find_two_way(const T*& first, const T*& last) noexcept {
        const Cut up = greatest_ending(true), down = greatest_ending(false);
        Cut cut = up.at > down.at ? up : down;
        // If the first part goes on with the period of the second, it is the period of the text.
        const bool periodic = common(text_, text_, 0, cut.period, cut.at) == cut.at;
        if (!periodic) cut.period = std::max(cut.at, n_ - cut.at) + 1;
        MoreProbes probes(text_, n_);
        probes.aim(1, text_, Direction::offset(n_, cut.at, 1));
        std::size_t known = 0; // characters at the front that the last comparison has shown to be the same
        bool seek = true;      // false as long as comparisons get far, so that the next place is worth one at once
        while (first != last) {
            if (known == 0 && seek) {
                seek_places(first, last, probes);
                if (first == last) return true;
            }
            const T* const at = Direction::next(first, last);
            const std::size_t from = std::max(cut.at, known);
            const std::size_t same = common(at, from, n_ - from);
            if (same != n_ - from) {
                if (seek) probes.aim(2, text_, Direction::offset(n_, from + same, 1));
                seek = same < gram;
                Direction::drop(first, last, from + same - cut.at + 1);
                known = 0;
                continue;
            }
            if (known >= cut.at) return true;
            const std::size_t same_before = common(at, known, cut.at - known);
            if (known + same_before == cut.at) return true;
            probes.aim(2, text_, Direction::offset(n_, known + same_before, 1));
            seek = true;
            Direction::drop(first, last, cut.period);
            known = periodic ? n_ - cut.period : 0;
        }
        return true;
    }

  private:
    static constexpr std::size_t gram = 8;

    using MoreProbes = Probes<T, Same, 4>;
    template <class Matcher>
    [[gnu::noinline]] static void seek_places(const T*& first, const T*& last, const Matcher& probes) noexcept {
        // Many probes are not worth the code that loads a part of a block: the last few places may as well be compared.
        constexpr std::ptrdiff_t few = std::is_same_v<Matcher, MoreProbes> ? Lanes<T>::count : 0;
        if (last - first < few) return;
        Direction::seek(first, last, probes);
    }

    template <class Matcher>
    bool probe(const T*& first, const T*& last, const Matcher& probes, Patience patience) noexcept {
        for (;;) {
            const T* const old_first = first;
            const T* const old_last = last;
            seek_places(first, last, probes);
            if (first == last) return true;
            if (is_at(Direction::next(first, last))) return true;
            Direction::drop(first, last, 1);
            if (patience.ends(differed_, passed(first - old_first, old_last - last))) return false;
        }
    }

    /// How many places have gone from either end.
    static std::size_t passed(std::ptrdiff_t at_first, std::ptrdiff_t at_last) noexcept {
        return static_cast<std::size_t>(at_first + at_last);
    }
    /// How many characters from the i-th on, of n, are the same at a place as in the text.
    std::size_t common(const T* at, std::size_t i, std::size_t n) const noexcept { return common(at, text_, i, i, n); }
    std::size_t common(const T* a, const T* b, std::size_t i, std::size_t j, std::size_t n) const noexcept {
        return Direction::template common<Same>(a + Direction::offset(n_, i, n), b + Direction::offset(n_, j, n), n);
    }
    int code(std::size_t i) const noexcept { return Same::code(text_[Direction::offset(n_, i, 1)]); }

    /// A number below 256 for a gram, by multiplication; the same for grams that count as the same.
    static std::size_t hash(const T* p) noexcept {
        // The bits in which the two forms of a letter may differ, of all characters.
        constexpr std::uint64_t lane_bits = sizeof(T) == 1 ? 0x7070707070707070 : 0x0070007000700070;
        constexpr std::uint64_t ignored = std::is_same_v<Same, Exactly> ? 0 : lane_bits;
        std::uint64_t sum = (load_word<std::uint64_t>(p) | ignored) * 0x9E3779B97F4A7C15;
        if constexpr (sizeof(T) == 2) sum += (load_word<std::uint64_t>(p + 4) | ignored) * 0xC2B2AE3D27D4EB4F;
        return static_cast<std::size_t>(sum >> 56);
    }

    /// Where the text is best cut in two: no repetition around that place is shorter than the period of the text, and
    /// the period of the second part.
    struct Cut {
        std::size_t at, period;
    };

    /// The greatest of the text's endings, if codes are ordered upwards or downwards.
    Cut greatest_ending(bool upwards) const noexcept {
        Cut best{0, 1};
        for (std::size_t start = 1; start < n_;) {
            const std::size_t same = common(text_, text_, best.at, start, n_ - start);
            if (start + same == n_) break;
            if ((code(start + same) < code(best.at + same)) == upwards) {
                start += same + 1;
                best.period = start - best.at;
            } else {
                best = {start + same - same % best.period, 1};
                start = best.at + 1;
            }
        }
        return best;
    }

    const T* text_;
    std::size_t n_;
    std::size_t differed_ = 0; // how many characters were the same at the last place compared
};

/// The place that a search has narrowed [first, last) to, counted from `begin`.
template <class Direction, class T>
unsigned int place_found(const T* first, const T* last, const T* begin) noexcept {
    return first == last ? KordCharacterRange<T>::npos
                         : static_cast<unsigned int>(Direction::next(first, last) - begin);
}

/// What is left to do where probing has failed.
template <class T, class Same, class Direction>
[[gnu::noinline]] unsigned int find_hard_text(TextSearch<T, Same, Direction> search, const T* first, const T* last,
                                              const T* begin) noexcept {
    if (!search.find_by_grams(first, last) && !search.probe_again(first, last)) search.find_two_way(first, last);
    return place_found<Direction>(first, last, begin);
}

/// `find_text` where the text is probably at the next place.
template <class Same, class Direction, class T>
[[gnu::noinline]] unsigned int find_text_from(const T* first, const T* last, const T* text, std::size_t n,
                                              const T* begin) noexcept {
    TextSearch<T, Same, Direction> search(text, n);
    if (!search.is_at(Direction::next(first, last))) {
        Direction::drop(first, last, 1);
        Patience patience;
        if (patience.ends(search.differed(), 1) || !search.probe(first, last, patience)) {
            return find_hard_text(search, first, last, begin);
        }
    }
    return place_found<Direction>(first, last, begin);
}

/// Finds the n > 0 characters of `text` at the first of the places [first, last), in the given direction: how far that
/// is behind `begin`, or `npos`.
template <class Same, class Direction, class T>
[[gnu::noinline]] unsigned int find_text(const T* first, const T* last, const T* text, std::size_t n,
                                         const T* begin) noexcept {
    if constexpr (std::is_same_v<Same, Exactly>) {
        // This keeps nothing across a call, which makes it short as long as the probes find nothing.
        Direction::seek(first, last, Probes<T, Same, 2>(text, n));
        if (first == last) return KordCharacterRange<T>::npos;
        return find_text_from<Same, Direction>(first, last, text, n, begin);
    } else {
        TextSearch<T, Same, Direction> search(text, n);
        if (!search.probe(first, last)) return find_hard_text(search, first, last, begin);
        return place_found<Direction>(first, last, begin);
    }
}

/// The same in a long text, where the first character of the text may be a rare one: probes near by, then leaps as long
/// as the leaps are long, then probes the rest.
template <class Same, class Direction, class T>
[[gnu::noinline]] unsigned int find_in_long_text(const T* first, const T* last, const T* text, std::size_t n,
                                                 const T* begin) noexcept {
    TextSearch<T, Same, Direction> search(text, n);
    const T* near_first = first;
    const T* near_last = last;
    constexpr std::size_t near_by = 256; // too near for a leap to pay
    Direction::keep(near_first, near_last, near_by);
    if (!search.probe(near_first, near_last)) return find_hard_text(search, first, last, begin);
    if (near_first != near_last) return place_found<Direction>(near_first, near_last, begin);
    Direction::drop(first, last, near_by);
    if (!search.leap(first, last)) return find_text<Same, Direction>(first, last, text, n, begin);
    return place_found<Direction>(first, last, begin);
}

} // namespace kord

#endif
