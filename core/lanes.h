#ifndef KORD_CORE_LANES_H
#define KORD_CORE_LANES_H

/// 16 bytes of characters worked on at once. This file alone knows the instruction set: SSE2, or without it (or with
/// KORD_SCALAR_LANES) plain loops that do the same. Comparisons give lanes of all ones or all zeros.

#if defined(__SSE2__) && !defined(KORD_SCALAR_LANES)
#include <emmintrin.h>
#define KORD_LANES_SSE2 1
#else
#include <cstring>
#include <type_traits>
#define KORD_LANES_SSE2 0
#endif

namespace kord {

#if KORD_LANES_SSE2

template <class T>
struct Lanes {
    static_assert(sizeof(T) == 1 || sizeof(T) == 2);
    static constexpr unsigned int count = 16 / sizeof(T);

    __m128i v;

    static Lanes load(const T* p) noexcept { return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))}; }
    void store(T* p) const noexcept { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
    static Lanes splat(unsigned int c) noexcept {
        if constexpr (sizeof(T) == 1) return {_mm_set1_epi8(static_cast<char>(c))};
        return {_mm_set1_epi16(static_cast<short>(c))};
    }

    friend Lanes operator&(Lanes a, Lanes b) noexcept { return {_mm_and_si128(a.v, b.v)}; }
    friend Lanes operator|(Lanes a, Lanes b) noexcept { return {_mm_or_si128(a.v, b.v)}; }
    friend Lanes operator^(Lanes a, Lanes b) noexcept { return {_mm_xor_si128(a.v, b.v)}; }
    /// a without the bits of b.
    friend Lanes without(Lanes a, Lanes b) noexcept { return {_mm_andnot_si128(b.v, a.v)}; }
    friend Lanes equal(Lanes a, Lanes b) noexcept {
        if constexpr (sizeof(T) == 1) return {_mm_cmpeq_epi8(a.v, b.v)};
        return {_mm_cmpeq_epi16(a.v, b.v)};
    }
    /// Which codes lie in [low, high]? Codes are unsigned.
    friend Lanes in_range(Lanes a, unsigned int low, unsigned int high) noexcept {
        const __m128i zero = _mm_setzero_si128();
        const __m128i span = splat(high - low).v;
        if constexpr (sizeof(T) == 1) {
            return {_mm_cmpeq_epi8(_mm_subs_epu8(_mm_sub_epi8(a.v, splat(low).v), span), zero)};
        }
        return {_mm_cmpeq_epi16(_mm_subs_epu16(_mm_sub_epi16(a.v, splat(low).v), span), zero)};
    }

    /// Are all codes below 128?
    bool is_ascii() const noexcept {
        if constexpr (sizeof(T) == 1) return _mm_movemask_epi8(v) == 0;
        return equal(*this & splat(0xFF80), splat(0)).mask() == 0xFFFF;
    }
    /// Of a comparison's result: the lanes that hold, as a word for `first_lane` and `last_lane`; 0 for none.
    unsigned int mask() const noexcept { return static_cast<unsigned int>(_mm_movemask_epi8(v)); }
    static unsigned int first_lane(unsigned int mask) noexcept {
        return static_cast<unsigned int>(__builtin_ctz(mask)) / static_cast<unsigned int>(sizeof(T));
    }
    static unsigned int last_lane(unsigned int mask) noexcept {
        return (31u - static_cast<unsigned int>(__builtin_clz(mask))) / static_cast<unsigned int>(sizeof(T));
    }
    /// The lanes of a mask that lie before `lane`, which may be `count`.
    static unsigned int lanes_before(unsigned int mask, unsigned int lane) noexcept {
        return mask & ((1u << lane * sizeof(T)) - 1);
    }
    /// The mask of one lane.
    static unsigned int lane_bit(unsigned int lane) noexcept { return 1u << lane * sizeof(T); }
};

#else

template <class T>
struct Lanes {
    static_assert(sizeof(T) == 1 || sizeof(T) == 2);
    static constexpr unsigned int count = 16 / sizeof(T);
    using Code = std::conditional_t<sizeof(T) == 1, unsigned char, unsigned short>;

    Code v[count];

    static Lanes load(const T* p) noexcept {
        Lanes r;
        std::memcpy(r.v, p, sizeof r.v);
        return r;
    }
    void store(T* p) const noexcept { std::memcpy(p, v, sizeof v); }
    static Lanes splat(unsigned int c) noexcept {
        return each([c](unsigned int) { return c; });
    }

    friend Lanes operator&(Lanes a, Lanes b) noexcept {
        return each([&](unsigned int i) { return a.v[i] & b.v[i]; });
    }
    friend Lanes operator|(Lanes a, Lanes b) noexcept {
        return each([&](unsigned int i) { return a.v[i] | b.v[i]; });
    }
    friend Lanes operator^(Lanes a, Lanes b) noexcept {
        return each([&](unsigned int i) { return a.v[i] ^ b.v[i]; });
    }
    friend Lanes without(Lanes a, Lanes b) noexcept {
        return each([&](unsigned int i) { return a.v[i] & ~b.v[i]; });
    }
    friend Lanes equal(Lanes a, Lanes b) noexcept {
        return each([&](unsigned int i) { return a.v[i] == b.v[i] ? ~0u : 0u; });
    }
    friend Lanes in_range(Lanes a, unsigned int low, unsigned int high) noexcept {
        return each([&](unsigned int i) { return a.v[i] >= low && a.v[i] <= high ? ~0u : 0u; });
    }

    bool is_ascii() const noexcept {
        unsigned int bits = 0;
        for (const Code c : v) bits |= c;
        return bits < 0x80;
    }
    unsigned int mask() const noexcept {
        unsigned int bits = 0;
        for (unsigned int i = 0; i != count; ++i) bits |= (v[i] & 1u) << i;
        return bits;
    }
    static unsigned int first_lane(unsigned int mask) noexcept {
        return static_cast<unsigned int>(__builtin_ctz(mask));
    }
    static unsigned int last_lane(unsigned int mask) noexcept {
        return 31u - static_cast<unsigned int>(__builtin_clz(mask));
    }
    static unsigned int lanes_before(unsigned int mask, unsigned int lane) noexcept {
        return mask & ((1u << lane) - 1);
    }
    static unsigned int lane_bit(unsigned int lane) noexcept { return 1u << lane; }

  private:
    template <class F>
    static Lanes each(F f) noexcept {
        Lanes r;
        for (unsigned int i = 0; i != count; ++i) r.v[i] = static_cast<Code>(f(i));
        return r;
    }
};

#endif

} // namespace kord

#endif
