// Calls that are easy to write and easy to get wrong: which of them compile, and what they mean.
#include "support/text.h"

#include <utility>

namespace {

// clang-format off
template <class S> concept TakesZeroForText = requires(S s) { s = 0; } || requires(S s) { s.assign(0); } ||
    requires { S(0); } || requires { S(0, 1u, 2u); };
template <class S> concept AddsZero = requires(S s) { s += 0; } || requires(S s) { s.append(0); };
template <class S, class P> concept TakesZeroForAnIterator = requires(S s, P p) { s.erase(p, 0); } ||
    requires(S s, P p) { s.erase(0, p); } || requires(S s, P p) { s.replace(0, p, p); } ||
    requires(S s, P p) { s.replace(p, 0, p, p); } || requires(S s, P p) { s.replace(p, p, 0); } ||
    requires(S s, P p) { s.assign(s, 0, p); } || requires(S s, P p) { S(s, p, 0); } ||
    requires(S s) { s.erase(nullptr); };
template <class S> concept SeeksOrComparesZero = requires(S s) { s.find(0); } || requires(S s) { s.rfind(0); } ||
    requires(S s) { s.find_first_of(0); } || requires(S s) { s.find_last_of('a'); } ||
    requires(S s) { s.compare(0); } || requires(S s) { s.compare(0, 1, 0); } ||
    requires(S s) { s.compare_nocase(0, 1, 0, 1); };
template <class S, class P> concept TakesIterators =
    requires(S s, P p) { s.erase(p, p), s.replace(p, p, p), s.assign(s, p, p), S(s, p, p); };

template <class T>
class Overloads : public ::testing::Test {};
TYPED_TEST_SUITE(Overloads, Widths);

TYPED_TEST(Overloads, ALiteralZeroIsAPositionOrDoesNotCompile) {
    using S = String<TypeParam>;
    static_assert(!TakesZeroForText<S> && !TakesZeroForText<Literal<TypeParam>> && !AddsZero<S>);
    static_assert(!TakesZeroForText<KordCharacterRange<TypeParam>> && !requires(S t) { t = 'c'; });
    static_assert(!TakesZeroForAnIterator<S, TypeParam*> && TakesIterators<S, TypeParam*>);
    static_assert(!SeeksOrComparesZero<S> && !SeeksOrComparesZero<Literal<TypeParam>>);
    const S s = make<TypeParam>("hello");
    const Units<TypeParam> xy("xy");
    const TypeParam* const text = xy;
    const std::pair<S, const char*> rows[] = {
        {S(s).erase(0), ""}, {S(s).erase(2), "he"}, {S(s).erase(-1), "hello"}, {S(s).erase(0, 2), "llo"},
        {S(s).erase(0x100000001ull), "hello"}, {S(s).erase(0, 0), "hello"}, {S(s).erase(std::size_t{1}, 2), "hlo"},
        {S(s).insert(0, 'c'), "chello"}, {S(s).insert(0, text), "xyhello"}, {S(s).insert(0, 2, 'c'), "cchello"},
        {S(s).replace(0, 0, text), "xyhello"}, {S(s).replace(0, 1, text, 1), "yello"},
        {S(s).replace(0u, 1u, text), "xyello"}, {S(s).replace(0, 0, 'c'), "chello"},
        {S(s).replace(0, 5, s, 0, 0), ""}, {S(s).replace(0, 0, text, text + 1), "xhello"},
        {S().assign(s, 0, 0), ""}, {S(s, 0, 0), ""}, {S(0, 'x'), ""}, {S(std::size_t{2}, 'x'), "xx"},
        {S().assign(s, 0, 2), "he"}, {S(s).append(text), "helloxy"},
    };
    for (const auto& [result, expected] : rows) EXPECT_EQ(show(result), expected) << "row of " << expected;
}
// clang-format on

TYPED_TEST(Overloads, ConstantTextIsWalkedWithoutUnsharing) {
    String<TypeParam> s = make<TypeParam>("abc");
    const String<TypeParam> copy = s;
    std::string walked;
    for (const TypeParam c : std::as_const(s)) walked += static_cast<char>(c);
    EXPECT_TRUE(walked == "abc" && holders(s) == 2 && copy.find('b') == 1 && copy.begin() == s.cbegin());
    for (TypeParam& c : s) c = 'x';
    EXPECT_EQ(show(s) + show(copy), "xxxabc");
    EXPECT_EQ(show(s.replace(s.begin(), s.begin() + 2, static_cast<const TypeParam*>(nullptr))), "x");
    EXPECT_EQ(show(s.replace(s.begin(), s.end(), Units<TypeParam>("yz"))), "yz");
}

} // namespace
