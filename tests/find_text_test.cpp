// Each way of searching for a text by itself, however rarely a search comes to it, against comparing at every place.
#include "text/find_text.h"

#include "support/text.h"

#include <random>

namespace {

template <class T>
class FindText : public ::testing::Test {};
TYPED_TEST_SUITE(FindText, Widths);

template <class Same, class Direction, class T>
const T* plain_find(const T* first, const T* last, const std::vector<T>& wanted) {
    for (; first != last; Direction::drop(first, last, 1)) {
        const T* const at = Direction::next(first, last);
        const auto same = [](T a, T b) { return Same::code(a) == Same::code(b); };
        if (std::equal(wanted.begin(), wanted.end(), at, same)) return at;
    }
    return nullptr;
}

template <class T>
KordCharacterRange<T> range(const std::vector<T>& text) {
    return KordCharacterRange<T>(text.data(), 0, static_cast<unsigned int>(text.size()));
}

template <class Same, class Direction, class T>
void check(const std::vector<T>& text, const std::vector<T>& wanted) {
    using Search = kord::TextSearch<T, Same, Direction>;
    const T* const begin = text.data();
    const T* const end = begin + (text.size() - wanted.size()) + 1;
    const T* const expected = plain_find<Same, Direction>(begin, end, wanted);
    const auto run = [&](const char* name, auto method) {
        Search search(wanted.data(), wanted.size());
        const T* first = begin;
        const T* last = end;
        const bool settled = (search.*method)(first, last);
        const T* found = first == last ? nullptr : Direction::next(first, last);
        if (!settled) found = plain_find<Same, Direction>(first, last, wanted); // what is left must do
        ASSERT_EQ(found, expected) << name << ": " << show(range(text)) << " / " << show(range(wanted));
    };
    run("probe", static_cast<bool (Search::*)(const T*&, const T*&) noexcept>(&Search::probe));
    run("probe again", &Search::probe_again);
    run("grams", &Search::find_by_grams);
    run("two-way", &Search::find_two_way);
    if constexpr (std::is_same_v<Same, kord::Exactly>) run("leap", &Search::leap);
}

TYPED_TEST(FindText, EachMethodFindsWhatComparingDoes) {
    std::mt19937 random(5);
    const auto below = [&](std::size_t n) { return random() % n; };
    const TypeParam pairs[][2] = {
        {'a', 'A'}, {'b', 'B'}, {TypeParam(0x8A), TypeParam(0x9A)}, {TypeParam(0x9F), TypeParam(0xFF)}};
    for (int round = 0; round != 30000; ++round) {
        const std::size_t n = 1 + below(round % 2 == 0 ? 9 : 45), size = n + below(round % 2 == 0 ? 30 : 120);
        const std::size_t kinds = 1 + below(2), from = below(3), period = 1 + below(round % 3 == 0 ? n : 60);
        const bool cases = below(4) == 0;
        const auto pick = [&](std::size_t kind) { return pairs[from + kind][cases ? below(2) : 0]; };
        std::vector<std::size_t> of(size + n); // which kind of character; both texts are cut from it
        for (std::size_t i = 0; i != of.size(); ++i) of[i] = i < period ? below(kinds + 1) % 2 : of[i - period];
        if (below(2) == 0) of[below(size)] ^= 1;
        std::vector<TypeParam> text, wanted;
        for (std::size_t i = 0; i != size; ++i) text.push_back(pick(of[i]));
        const std::size_t start = below(size);
        for (std::size_t i = 0; i != n; ++i) wanted.push_back(pick(of[start + i]));
        if (below(3) == 0) wanted[below(n)] = pick(below(2));
        check<kord::Exactly, kord::Forward>(text, wanted);
        check<kord::Exactly, kord::Backward>(text, wanted);
        check<kord::WithoutCase, kord::Forward>(text, wanted);
        check<kord::WithoutCase, kord::Backward>(text, wanted);
        if (this->HasFatalFailure()) return;
    }
}

} // namespace
