// Hashes: nanoseconds per text. A row is named WIDTH/OPERATION/WHO/SIZE; bench/report.py divides them. Beside kord is
// the same hash byte by byte, as it is published.
//
// Goal, as a ratio within one run: at or ahead of that, and on long texts at the bound that follows from each byte
// waiting for the one before it, if additions, shifts and exclusive-ors take a cycle and a multiplication takes three:
//   fnv1           4 cycles a byte, a multiplication and an exclusive-or
//   lookup2        about 1.66 cycles a byte, 20 for a block of twelve: two for each of the nine steps, two for the
//   words one-at-a-time  4 cycles a byte if the first shifted sum is h * 1025 + c * 1025: shift, add, shift,
//   exclusive-or polynomial     none: bytes can be multiplied by powers of 613 on their own and added up in any order
//   shift-add-xor  4 cycles a byte: shift, two additions, exclusive-or
#include "texts.h"

#include <kord/hash.h>

#include <algorithm>

namespace {

using namespace bench;

using Word = std::uint32_t;

/// A byte as the hashes of signed numbers add it.
Word as_signed(char c) {
    return static_cast<Word>(static_cast<signed char>(c));
}

/// step(h, c) for each byte.
template <class Step>
Word fold(View<char> text, Word h, Step step) {
    for (const char c : text) h = step(h, c);
    return h;
}

struct Fnv1 {
    static constexpr char operation[] = "hash fnv1";
    static constexpr unsigned long (*kord)(const char*, const char*) = KordHash::FowlerNollVo;
    static Word byte_by_byte(View<char> text) {
        return fold(text, 0x811C9DC5, [](Word h, char c) { return h * 0x01000193 ^ static_cast<unsigned char>(c); });
    }
};

/// The three words that lookup2 mixes.
struct Lookup2State {
    Word a = 0x9E3779B9, b = a, c = 0;

    void mix() {
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

/// At most four bytes, the first one lowest.
Word word(View<char> bytes) {
    Word value = 0;
    for (std::size_t i = 0; i != bytes.size(); ++i) value |= Word{static_cast<unsigned char>(bytes[i])} << 8 * i;
    return value;
}

struct Lookup2 {
    static constexpr char operation[] = "hash lookup2";
    static constexpr unsigned long (*kord)(const char*, const char*) = KordHash::Jenkins;
    static Word byte_by_byte(View<char> text) {
        const auto four = [&](std::size_t i) { return word(text.substr(std::min(i, text.size()), 4)); };
        Lookup2State state;
        const std::size_t length = text.size();
        for (; text.size() >= 12; text.remove_prefix(12)) {
            state.a += word(text.substr(0, 4));
            state.b += word(text.substr(4, 4));
            state.c += word(text.substr(8, 4));
            state.mix();
        }
        state.a += four(0);
        state.b += four(4);
        state.c += static_cast<Word>(length) + (four(8) << 8);
        state.mix();
        return state.c;
    }
};

struct OneAtATime {
    static constexpr char operation[] = "hash one-at-a-time";
    static constexpr unsigned long (*kord)(const char*, const char*) = KordHash::OneAtATime;
    static Word byte_by_byte(View<char> text) {
        Word h = fold(text, 0, [](Word hash, char c) {
            hash += as_signed(c);
            hash += hash << 10;
            return hash ^ hash >> 6;
        });
        h += h << 3;
        h ^= h >> 11;
        return h + (h << 15);
    }
};

struct Polynomial {
    static constexpr char operation[] = "hash polynomial";
    static constexpr unsigned long (*kord)(const char*, const char*) = KordHash::ObjectSpace;
    static Word byte_by_byte(View<char> text) {
        const Word h =
            fold(text, static_cast<Word>(text.size()), [](Word hash, char c) { return hash * 613 + as_signed(c); });
        return h % 1073741827;
    }
};

struct ShiftAddXor {
    static constexpr char operation[] = "hash shift-add-xor";
    static constexpr unsigned long (*kord)(const char*, const char*) = KordHash::RamakrishnaZobel;
    static Word byte_by_byte(View<char> text) {
        return fold(text, 0, [](Word h, char c) { return h ^ ((h << 5) + (h >> 2) + as_signed(c)); });
    }
};

template <class Hash>
void add(const std::string& library, Hash hash, const std::string& operation, Word (*expected)(View<char>)) {
    for (const std::size_t n : {16u, 64u, 4096u}) {
        const auto run = [=](benchmark::State& state) {
            std::string own = english(n);
            std::replace(own.begin(), own.end(), 'e', '\xE9'); // so that signs matter
            View<char> text = own;
            time(state, text, text, expected(text), [&] { return hash(text); });
        };
        benchmark::RegisterBenchmark(row_name<char>(operation, library, n).c_str(), run);
    }
}

template <class... Hashes>
void add_all() {
    const auto one = []<class Hash>(Hash) {
        const auto kord = [](View<char> text) { return Hash::kord(text.data(), text.data() + text.size()); };
        add("kord", kord, Hash::operation, Hash::byte_by_byte);
        add(
            "byte by byte", [](View<char> text) { return Hash::byte_by_byte(text); }, Hash::operation,
            Hash::byte_by_byte);
    };
    (one(Hashes()), ...);
}

const bool registered = [] {
    add_all<Fnv1, Lookup2, OneAtATime, Polynomial, ShiftAddXor>();
    return true;
}();

} // namespace
