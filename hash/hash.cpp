#include <kord/hash.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

using Word = std::uint32_t;

// ---- where a text ends ---------------------------------------------------------------------------------------------

struct AtZero {
    bool operator()(const char* at) const noexcept { return *at == '\0'; }
};

struct At {
    const char* end;
    bool operator()(const char* at) const noexcept { return at == end; }
};

// ---- how a byte enters a hash --------------------------------------------------------------------------------------

Word plain(char c) noexcept {
    return static_cast<unsigned char>(c);
}

Word sign_extended(char c) noexcept {
    return static_cast<Word>(static_cast<std::int32_t>(static_cast<signed char>(c)));
}

/// Keeps the compiler from adding something else first.
void keep_order(Word& sum) noexcept {
    __asm__("" : "+r"(sum));
}

// ---- the hashes that go byte by byte -------------------------------------------------------------------------------

template <class End>
Word fnv1(const char* at, End is_end) noexcept {
    Word h = 0x811C9DC5;
    for (; !is_end(at); ++at) h = h * 0x01000193 ^ plain(*at);
    return h;
}

template <class End>
Word one_at_a_time(const char* at, End is_end) noexcept {
    Word h = 0;
    for (; !is_end(at); ++at) {
        // (h + byte) * 1025 as two sums side by side; in another order they would wait for each other.
        Word sum = h + sign_extended(*at) * 1025;
        keep_order(sum);
        h = (h << 10) + sum;
        h ^= h >> 6;
    }
    h += h << 3;
    h ^= h >> 11;
    return h + (h << 15);
}

template <class End>
Word shift_add_xor(const char* at, End is_end) noexcept {
    Word h = 0;
    for (; !is_end(at); ++at) h ^= (h << 5) + ((h >> 2) + sign_extended(*at));
    return h;
}

// ---- lookup2 -------------------------------------------------------------------------------------------------------

static_assert(std::endian::native == std::endian::little);

Word load_word(const char* at) noexcept {
    Word word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

/// The three words of the hash.
struct Mixture {
    Word a = 0x9E3779B9, b = 0x9E3779B9, c = 0;

    void mix() noexcept {
        a = (a - b - c) ^ c >> 13;
        b = (b - c - a) ^ a << 8;
        c = (c - a - b) ^ b >> 13;
        a = (a - b - c) ^ c >> 12;
        b = (b - c - a) ^ a << 16;
        c = (c - a - b) ^ b >> 5;
        a = (a - b - c) ^ c >> 3;
        b = (b - c - a) ^ a << 10;
        c = (c - a - b) ^ b >> 15;
    }
};

// ---- the polynomial ------------------------------------------------------------------------------------------------

constexpr Word factor = 613, modulus = 0x40000003;
constexpr std::size_t stride = 8;

/// Powers of the factor, the highest first, down to 1.
struct Powers {
    Word of[stride];
    constexpr Powers() : of{} {
        Word power = 1;
        for (std::size_t i = stride; i-- != 0; power *= factor) of[i] = power;
    }
};
constexpr Powers powers;

} // namespace

unsigned long KordHash::FowlerNollVo(const char* text) noexcept {
    return fnv1(text, AtZero());
}

unsigned long KordHash::FowlerNollVo(const char* begin, const char* end) noexcept {
    return fnv1(begin, At{end});
}

unsigned long KordHash::OneAtATime(const char* text) noexcept {
    return one_at_a_time(text, AtZero());
}

unsigned long KordHash::OneAtATime(const char* begin, const char* end) noexcept {
    return one_at_a_time(begin, At{end});
}

unsigned long KordHash::RamakrishnaZobel(const char* text) noexcept {
    return shift_add_xor(text, AtZero());
}

unsigned long KordHash::RamakrishnaZobel(const char* begin, const char* end) noexcept {
    return shift_add_xor(begin, At{end});
}

unsigned long KordHash::Jenkins(const char* data, unsigned long length) noexcept {
    Mixture m;
    unsigned long left = length;
    for (; left >= 12; left -= 12, data += 12) {
        m.a += load_word(data);
        m.b += load_word(data + 4);
        m.c += load_word(data + 8);
        m.mix();
    }
    char tail[12] = {};
    if (left != 0) std::memcpy(tail, data, left);
    m.a += load_word(tail);
    m.b += load_word(tail + 4);
    m.c += (load_word(tail + 8) << 8) + static_cast<Word>(length); // the lowest byte is the length's
    m.mix();
    return m.c;
}

unsigned long KordHash::Jenkins(const char* begin, const char* end) noexcept {
    return Jenkins(begin, static_cast<unsigned long>(end - begin));
}

unsigned long KordHash::ObjectSpace(const char* data, unsigned long length) noexcept {
    Word h = static_cast<Word>(length);
    // Several bytes go together, as their products do not wait for one another.
    for (; length >= stride; length -= stride, data += stride) {
        Word sum = 0;
        for (std::size_t i = 0; i != stride; ++i) sum += sign_extended(data[i]) * powers.of[i];
        h = h * (powers.of[0] * factor) + sum;
    }
    for (; length != 0; --length, ++data) h = h * factor + sign_extended(*data);
    return h % modulus;
}

unsigned long KordHash::ObjectSpace(const char* begin, const char* end) noexcept {
    return ObjectSpace(begin, static_cast<unsigned long>(end - begin));
}
