#ifndef KORD_BENCH_TEXTS_H
#define KORD_BENCH_TEXTS_H

#include <kord/range.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// What the benchmarks that only read text have in common: the texts, the two widths and the timing loop.
namespace bench {

inline constexpr std::size_t npos = std::string::npos;

template <class C>
using View = std::basic_string_view<C>;

/// The character of kord's family for a standard one.
template <class C>
using Unit = std::conditional_t<sizeof(C) == 1, char, unsigned short>;

/// The same numbers in every run.
class Random {
  public:
    /// 0 to n - 1.
    std::size_t below(std::size_t n) {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::size_t>(state_ >> 33) % n;
    }

  private:
    std::uint64_t state_ = 20;
};

/// Frequent words first. None has a 'q', 'x' or 'z', and 'j' is as rare as in English.
inline constexpr std::array words{
    "the",      "of",    "and",    "to",      "in",      "that",   "was",     "he",     "it",     "is",     "for",
    "as",       "with",  "his",    "on",      "be",      "at",     "by",      "had",    "not",    "are",    "but",
    "from",     "or",    "have",   "an",      "they",    "which",  "one",     "you",    "were",   "her",    "all",
    "she",      "there", "would",  "their",   "we",      "him",    "been",    "has",    "when",   "who",    "will",
    "more",     "no",    "if",     "out",     "so",      "said",   "what",    "up",     "its",    "about",  "into",
    "than",     "them",  "can",    "only",    "just",    "other",  "new",     "some",   "could",  "time",   "these",
    "two",      "may",   "then",   "between", "through", "course", "thought", "little", "letter", "window", "answer",
    "thorough", "house", "garden", "morning", "river",   "object",
};

/// `n` characters of sentences, with numbers, commas and capitals.
inline std::string english(std::size_t n) {
    Random random;
    std::string text;
    for (bool capital = true; text.size() < n;) {
        std::string word = words[random.below(random.below(words.size()) + 1)];
        if (random.below(25) == 0) word = std::to_string(random.below(2000));
        if (capital && word[0] >= 'a') word[0] = static_cast<char>(word[0] - 32);
        capital = random.below(14) == 0;
        text += word + (capital ? ". " : random.below(9) == 0 ? ", " : " ");
    }
    text.resize(n);
    return text;
}

template <class C>
std::basic_string<C> widen(const std::string& text) {
    return std::basic_string<C>(text.begin(), text.end());
}

// How a library wants its text; each is made once, outside the loop.

inline constexpr auto as_view = [](auto view) { return view; };
inline constexpr auto as_character = [](auto view) { return view.front(); };
inline constexpr auto as_kord = []<class C>(std::basic_string_view<C> view) {
    return KordCharacterRange<Unit<C>>(reinterpret_cast<const Unit<C>*>(view.data()), 0,
                                       static_cast<unsigned int>(view.size()));
};

/// GROUP/OPERATION/LIBRARY[/SIZE].
template <class C>
std::string row_name(const std::string& operation, const std::string& library, std::size_t n = 0) {
    std::string name = sizeof(C) == 1 ? "8/" : "16/";
    name.append(operation).append("/").append(library);
    if (n != 0) name.append("/").append(std::to_string(n));
    return name;
}

/// Times call() on two texts that the compiler has to believe are other ones each time.
template <class A, class B, class Answer, class Call>
void time(benchmark::State& state, A& a, B& b, const Answer& expected, Call call) {
    if (call() != expected) {
        state.SkipWithError("wrong answer");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(b);
        benchmark::DoNotOptimize(call());
    }
}

} // namespace bench

#endif
