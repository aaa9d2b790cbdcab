#ifndef KORD_CORE_LANES_H
#define KORD_CORE_LANES_H

/// 16 bytes of characters worked on at once. This file alone knows the instruction set: SSE2, or without it (or with
/// KORD_SCALAR_LANES) plain loops that do the same. Comparisons give lanes of all ones or all zeros.

#if defined(__SSE2__) && !defined(KORD_SCALAR_LANES)
#include <tmmintrin.h>
#define KORD_LANES_SSE2 1
#else
#define KORD_LANES_SSE2 0
#endif

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace kord {

/// A set of the codes 0 to 255, a bit each: a code's low half is the row, its high half the bit in it.
struct CodeSet {
    alignas(16) std::uint16_t rows[16] = {};

    void add(unsigned int code) noexcept {
        rows[code & 15] = static_cast<std::uint16_t>(rows[code & 15] | 1u << (code >> 4));
    }
    bool has(unsigned int code) const noexcept { return (rows[code & 15] >> (code >> 4) & 1) != 0; }
};

static_assert(std::endian::native == std::endian::little, "words are taken apart with the first character lowest");

/// The bytes of a word in memory.
template <class Word>
Word load_word(const void* p) noexcept {
    Word w;
    std::memcpy(&w, p, sizeof w);
    return w;
}

/// The n < 8 / sizeof(T) characters from p on as the low bytes of a word that is zero above, the first one lowest.
/// Nothing else is read: a few loads that overlap, and few branches, as lengths are hard to foretell.
template <class T>
[[gnu::always_inline]] inline std::uint64_t load_few(const T* p, std::size_t n) noexcept {
    const char* const first = reinterpret_cast<const char*>(p);
    const std::size_t bytes = n * sizeof(T);
    const auto place = [first]<class Word>(Word, std::size_t i) {
        return std::uint64_t{load_word<Word>(first + i)} << 8 * i;
    };
    if (bytes - 2 <= 4) {
        constexpr std::uint16_t two = 0;
        return place(two, 0) | place(two, (bytes - 2) / 2) | place(two, bytes - 2);
    }
    if (bytes == 7) return place(std::uint32_t{}, 0) | place(std::uint32_t{}, 3);
    return bytes == 0 ? 0 : place(std::uint8_t{}, 0);
}

/// Two characters as the low bytes of a word; with a unit of 256 or more among them, as a word of ones.
template <class T>
std::uint64_t load_pair(const T* p) noexcept {
    if constexpr (sizeof(T) == 1) {
        return load_word<std::uint16_t>(p);
    } else {
        const std::uint32_t units = load_word<std::uint32_t>(p);
        return (units & 0xFF00FF00) == 0 ? (units | units >> 8) & 0xFFFF : ~std::uint64_t{0};
    }
}

/// The two to six characters from p on as the high bytes of a word that is zero below, the last one highest. A unit of
/// 256 or more makes them, or those from it on, bytes of ones.
template <class T>
std::uint64_t load_high(const T* p, std::size_t n) noexcept {
    const std::size_t middle = (n - 2) / 2;
    return load_pair(p + (n - 2)) << 48 | (load_pair(p) | load_pair(p + middle) << 8 * middle) << (64 - 8 * n);
}

#if KORD_LANES_SSE2

/// Marks a function that may only run where `has_shuffles` says so, with all it calls made part of it.
#define KORD_SHUFFLES __attribute__((target("ssse3"), flatten))

inline bool has_shuffles() noexcept {
#ifdef KORD_NO_SHUFFLES // to test what processors without them run
    return false;
#else
    return __builtin_cpu_supports("ssse3");
#endif
}

template <class T>
struct Lanes {
    static_assert(sizeof(T) == 1 || sizeof(T) == 2);
    static constexpr unsigned int count = 16 / sizeof(T);

    __m128i v;

    static Lanes load(const T* p) noexcept { return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))}; }
    /// The n < count characters from p on and zeros behind them. Nothing else is read.
    [[gnu::always_inline]] static Lanes load_partial(const T* p, std::size_t n) noexcept {
        const std::size_t bytes = n * sizeof(T);
        if (bytes < 8) return {_mm_set_epi64x(0, static_cast<long long>(load_few(p, n)))};
        const std::uint64_t end = load_word<std::uint64_t>(reinterpret_cast<const char*>(p) + bytes - 8);
        return {_mm_set_epi64x(static_cast<long long>(end >> 1 >> (127 - 8 * bytes)),
                               static_cast<long long>(load_word<std::uint64_t>(p)))};
    }
    /// The first eight units as bytes, the first one lowest. A unit of 256 or more becomes 0 or 255.
    std::uint64_t first_bytes() const noexcept {
        std::uint64_t word;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(&word), _mm_packus_epi16(v, v));
        return word;
    }
    void store(T* p) const noexcept { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
    static Lanes splat(unsigned int c) noexcept {
        if constexpr (sizeof(T) == 1) return {_mm_set1_epi8(static_cast<char>(c))};
        return {_mm_set1_epi16(static_cast<short>(c))};
    }
    /// The i-th of the lowest four characters of a word in all lanes.
    template <int i>
    static Lanes splat_of(std::uint64_t word) noexcept {
        const __m128i few = _mm_set_epi64x(0, static_cast<long long>(word));
        const __m128i pairs = sizeof(T) == 1 ? _mm_unpacklo_epi8(few, few) : few;
        return {_mm_shuffle_epi32(_mm_unpacklo_epi16(pairs, pairs), i * 0x55)};
    }

    friend Lanes operator&(Lanes a, Lanes b) noexcept { return {_mm_and_si128(a.v, b.v)}; }
    friend Lanes operator|(Lanes a, Lanes b) noexcept { return {_mm_or_si128(a.v, b.v)}; }
    friend Lanes operator^(Lanes a, Lanes b) noexcept { return {_mm_xor_si128(a.v, b.v)}; }
    /// a without the bits of b.
    friend Lanes without(Lanes a, Lanes b) noexcept { return {_mm_andnot_si128(b.v, a.v)}; }
    /// The lanes whose codes the predicate takes, asked one by one.
    template <class Predicate>
    static Lanes where(Lanes a, const Predicate& takes) noexcept {
        T c[count];
        a.store(c);
        for (T& x : c) x = static_cast<T>(takes(x) ? ~0u : 0u);
        return load(c);
    }
    friend Lanes equal(Lanes a, Lanes b) noexcept {
        if constexpr (sizeof(T) == 1) return {_mm_cmpeq_epi8(a.v, b.v)};
        return {_mm_cmpeq_epi16(a.v, b.v)};
    }
    /// Which codes lie in [low, high]? Codes are unsigned, the comparison is not: the range is moved to its least
    /// value.
    friend Lanes in_range(Lanes a, unsigned int low, unsigned int high) noexcept {
        constexpr unsigned int least = sizeof(T) == 1 ? 0x80 : 0x8000;
        if constexpr (sizeof(T) == 1) {
            return {_mm_cmplt_epi8(_mm_sub_epi8(a.v, splat(low - least).v), splat(high - low + 1 + least).v)};
        }
        return {_mm_cmplt_epi16(_mm_sub_epi16(a.v, splat(low - least).v), splat(high - low + 1 + least).v)};
    }
    /// Which codes are below the limit, which is not 0?
    friend Lanes below(Lanes a, unsigned int limit) noexcept {
        if constexpr (sizeof(T) == 1) return {_mm_cmpeq_epi8(_mm_subs_epu8(a.v, splat(limit - 1).v), splat(0).v)};
        return {_mm_cmpeq_epi16(_mm_subs_epu16(a.v, splat(limit - 1).v), splat(0).v)};
    }

    /// Which codes are in the set? Codes of 256 and more are in none.
    __attribute__((target("ssse3"))) friend Lanes in_set(Lanes a, const CodeSet& set) noexcept {
        const __m128i* const rows = reinterpret_cast<const __m128i*>(set.rows);
        const __m128i front = _mm_load_si128(rows), back = _mm_load_si128(rows + 1), byte = _mm_set1_epi16(0xFF);
        const __m128i low = _mm_packus_epi16(_mm_and_si128(front, byte), _mm_and_si128(back, byte));
        const __m128i high = _mm_packus_epi16(_mm_srli_epi16(front, 8), _mm_srli_epi16(back, 8));
        const __m128i bits = _mm_set1_epi64x(static_cast<long long>(0x8040201008040201u));
        // A shuffle gives 0 where the top bit of the index is set: each code finds its row in the half it has a bit in.
        const __m128i top = _mm_set1_epi16(static_cast<short>(0x8080u));
        const __m128i row = _mm_or_si128(_mm_shuffle_epi8(low, a.v), _mm_shuffle_epi8(high, _mm_xor_si128(a.v, top)));
        const __m128i bit = _mm_shuffle_epi8(bits, _mm_and_si128(_mm_srli_epi16(a.v, 4), _mm_set1_epi8(15)));
        const __m128i found = _mm_cmpeq_epi8(_mm_and_si128(row, bit), bit);
        if constexpr (sizeof(T) == 1) return {found};
        const __m128i upper = _mm_set1_epi16(static_cast<short>(0xFF00));
        const __m128i both = _mm_or_si128(_mm_and_si128(upper, a.v), _mm_andnot_si128(upper, found));
        return {_mm_cmpeq_epi16(both, _mm_set1_epi16(0xFF))};
    }

    friend Lanes operator+(Lanes a, Lanes b) noexcept {
        if constexpr (sizeof(T) == 1) return {_mm_add_epi8(a.v, b.v)};
        return {_mm_add_epi16(a.v, b.v)};
    }
    /// All codes shifted by n bits.
    template <int n>
    static Lanes shift_left(Lanes a) noexcept {
        static_assert(sizeof(T) == 2);
        return {_mm_slli_epi16(a.v, n)};
    }
    template <int n>
    static Lanes shift_right(Lanes a) noexcept {
        static_assert(sizeof(T) == 2);
        return {_mm_srli_epi16(a.v, n)};
    }
    /// The first, or the last, four of each, in turn.
    static Lanes interleave_first(Lanes a, Lanes b) noexcept {
        static_assert(sizeof(T) == 2);
        return {_mm_unpacklo_epi16(a.v, b.v)};
    }
    static Lanes interleave_last(Lanes a, Lanes b) noexcept {
        static_assert(sizeof(T) == 2);
        return {_mm_unpackhi_epi16(a.v, b.v)};
    }
    /// The bytes of `a` at 16 given places, 0 for a place of 128 or more.
    __attribute__((target("ssse3"))) static Lanes shuffle(Lanes a, const unsigned char* places) noexcept {
        return {_mm_shuffle_epi8(a.v, _mm_loadu_si128(reinterpret_cast<const __m128i*>(places)))};
    }
    /// Stores the first 8, or 12, bytes.
    void store_8(void* p) const noexcept { _mm_storel_epi64(static_cast<__m128i*>(p), v); }
    void store_12(void* p) const noexcept {
        store_8(p);
        const int end = _mm_cvtsi128_si32(_mm_srli_si128(v, 8));
        std::memcpy(static_cast<char*>(p) + 8, &end, sizeof end);
    }

    /// The mask of the bytes whose top bit is set.
    unsigned int top_bits() const noexcept {
        static_assert(sizeof(T) == 1);
        return mask();
    }
    /// Are all codes below 128?
    bool is_ascii() const noexcept {
        if constexpr (sizeof(T) == 1) return _mm_movemask_epi8(v) == 0;
        // From 128 on, this much more sets a unit's top bit.
        return (_mm_movemask_epi8(_mm_adds_epu16(v, splat(0x7F80).v)) & 0xAAAA) == 0;
    }
    /// Of a comparison's result: the lanes that hold, as a word for `first_lane` and `last_lane`; 0 for none.
    unsigned int mask() const noexcept { return static_cast<unsigned int>(_mm_movemask_epi8(v)); }
    /// The same with one bit a lane, the first one lowest.
    unsigned int bits() const noexcept {
        if constexpr (sizeof(T) == 1) return mask();
        return static_cast<unsigned int>(_mm_movemask_epi8(_mm_packs_epi16(v, _mm_setzero_si128())));
    }
    /// The mask of all lanes.
    static constexpr unsigned int all = 0xFFFF;
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
};

/// The same 16 bytes as lanes of another width.
template <class U, class T>
Lanes<U> lanes_as(Lanes<T> a) noexcept {
    return {a.v};
}

/// The first, or the last, eight bytes as units.
inline Lanes<unsigned short> widen_first(Lanes<char> a) noexcept {
    return {_mm_unpacklo_epi8(a.v, _mm_setzero_si128())};
}
inline Lanes<unsigned short> widen_last(Lanes<char> a) noexcept {
    return {_mm_unpackhi_epi8(a.v, _mm_setzero_si128())};
}
/// Units below 256 as bytes, those of `a` first.
inline Lanes<char> narrow(Lanes<unsigned short> a, Lanes<unsigned short> b) noexcept {
    return {_mm_packus_epi16(a.v, b.v)};
}

#else

#define KORD_SHUFFLES

inline bool has_shuffles() noexcept {
    return true;
}

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
    static Lanes load_partial(const T* p, std::size_t n) noexcept {
        Lanes r = splat(0);
        if (n != 0) std::memcpy(r.v, p, n * sizeof(T));
        return r;
    }
    std::uint64_t first_bytes() const noexcept {
        std::uint64_t word = 0;
        for (unsigned int i = 0; i != 8; ++i) word |= std::uint64_t{v[i] < 256 ? v[i] : 255u} << 8 * i;
        return word;
    }
    void store(T* p) const noexcept { std::memcpy(p, v, sizeof v); }
    static Lanes splat(unsigned int c) noexcept {
        return each([c](unsigned int) { return c; });
    }
    template <int i>
    static Lanes splat_of(std::uint64_t word) noexcept {
        return splat(static_cast<Code>(word >> 8 * sizeof(T) * i));
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
    template <class Predicate>
    static Lanes where(Lanes a, const Predicate& takes) noexcept {
        return each([&](unsigned int i) { return takes(static_cast<T>(a.v[i])) ? ~0u : 0u; });
    }
    friend Lanes equal(Lanes a, Lanes b) noexcept {
        return each([&](unsigned int i) { return a.v[i] == b.v[i] ? ~0u : 0u; });
    }
    friend Lanes in_range(Lanes a, unsigned int low, unsigned int high) noexcept {
        return each([&](unsigned int i) { return a.v[i] >= low && a.v[i] <= high ? ~0u : 0u; });
    }
    friend Lanes below(Lanes a, unsigned int limit) noexcept {
        return each([&](unsigned int i) { return a.v[i] < limit ? ~0u : 0u; });
    }
    friend Lanes in_set(Lanes a, const CodeSet& set) noexcept {
        return each([&](unsigned int i) { return a.v[i] < 256 && set.has(a.v[i]) ? ~0u : 0u; });
    }

    friend Lanes operator+(Lanes a, Lanes b) noexcept {
        return each([&](unsigned int i) { return a.v[i] + b.v[i]; });
    }
    template <int n>
    static Lanes shift_left(Lanes a) noexcept {
        return each([&](unsigned int i) { return a.v[i] << n; });
    }
    template <int n>
    static Lanes shift_right(Lanes a) noexcept {
        return each([&](unsigned int i) { return a.v[i] >> n; });
    }
    static Lanes interleave_first(Lanes a, Lanes b) noexcept {
        return each([&](unsigned int i) { return i % 2 == 0 ? a.v[i / 2] : b.v[i / 2]; });
    }
    static Lanes interleave_last(Lanes a, Lanes b) noexcept {
        return each([&](unsigned int i) { return (i % 2 == 0 ? a : b).v[(count + i) / 2]; });
    }
    static Lanes shuffle(Lanes a, const unsigned char* places) noexcept {
        static_assert(sizeof(T) == 1);
        return each([&](unsigned int i) { return places[i] < 128 ? a.v[places[i] % 16] : 0; });
    }
    void store_8(void* p) const noexcept { std::memcpy(p, v, 8); }
    void store_12(void* p) const noexcept { std::memcpy(p, v, 12); }

    unsigned int top_bits() const noexcept {
        static_assert(sizeof(T) == 1);
        unsigned int bits = 0;
        for (unsigned int i = 0; i != count; ++i) bits |= static_cast<unsigned int>(v[i]) >> 7 << i;
        return bits;
    }
    bool is_ascii() const noexcept {
        unsigned int bits = 0;
        for (const Code c : v) bits |= c;
        return bits < 0x80;
    }
    static constexpr unsigned int all = (1u << count) - 1;
    unsigned int mask() const noexcept {
        unsigned int bits = 0;
        for (unsigned int i = 0; i != count; ++i) bits |= (v[i] & 1u) << i;
        return bits;
    }
    unsigned int bits() const noexcept { return mask(); }
    static unsigned int first_lane(unsigned int mask) noexcept {
        return static_cast<unsigned int>(__builtin_ctz(mask));
    }
    static unsigned int last_lane(unsigned int mask) noexcept {
        return 31u - static_cast<unsigned int>(__builtin_clz(mask));
    }
    static unsigned int lanes_before(unsigned int mask, unsigned int lane) noexcept {
        return mask & ((1u << lane) - 1);
    }

  private:
    template <class F>
    static Lanes each(F f) noexcept {
        Lanes r;
        for (unsigned int i = 0; i != count; ++i) r.v[i] = static_cast<Code>(f(i));
        return r;
    }
};

template <class U, class T>
Lanes<U> lanes_as(Lanes<T> a) noexcept {
    return std::bit_cast<Lanes<U>>(a);
}

inline Lanes<unsigned short> widen_first(Lanes<char> a) noexcept {
    Lanes<unsigned short> r;
    for (unsigned int i = 0; i != 8; ++i) r.v[i] = a.v[i];
    return r;
}
inline Lanes<unsigned short> widen_last(Lanes<char> a) noexcept {
    Lanes<unsigned short> r;
    for (unsigned int i = 0; i != 8; ++i) r.v[i] = a.v[8 + i];
    return r;
}
inline Lanes<char> narrow(Lanes<unsigned short> a, Lanes<unsigned short> b) noexcept {
    Lanes<char> r;
    for (unsigned int i = 0; i != 16; ++i) r.v[i] = static_cast<unsigned char>(i < 8 ? a.v[i] : b.v[i - 8]);
    return r;
}

#endif

/// Stores 16 bytes as units.
inline void store_widened(Lanes<char> bytes, unsigned short* to) noexcept {
    widen_first(bytes).store(to);
    widen_last(bytes).store(to + Lanes<unsigned short>::count);
}

/// The n characters from p on, at most eight, as bytes, the first one lowest and zeros behind the last. Codes of 256
/// and more become 0 or 255.
template <class T>
std::uint64_t load_bytes(const T* p, std::size_t n) noexcept {
    if constexpr (sizeof(T) == 1)
        return n < 8 ? load_few(p, n) : load_word<std::uint64_t>(p);
    else
        return (n < 8 ? Lanes<T>::load_partial(p, n) : Lanes<T>::load(p)).first_bytes();
}

} // namespace kord

#endif
