// Calls that are easy to write and easy to get wrong: which of them compile, and what they mean.
#include "support/text.h"

#include <utility>

namespace {

template <class S>
concept AssignsZero = requires(S s) {
    s = 0;
};
template <class S>
concept AssignsACharacter = requires(S s) {
    s = 'c';
};
template <class S>
concept AddsZero = requires(S s) {
    s += 0;
};
template <class S>
concept AppendsZero = requires(S s) {
    s.append(0);
};
template <class S>
concept IsMadeFromZero = requires {
    S(0, 1u, 2u);
};

template <class T>
class Overloads : public ::testing::Test {};
TYPED_TEST_SUITE(Overloads, Widths);

TYPED_TEST(Overloads, ALiteralZeroIsAPositionOrDoesNotCompile) {
    using S = String<TypeParam>;
    static_assert(!AssignsZero<S> && !AssignsACharacter<S> && !AddsZero<S> && !AppendsZero<S>);
    static_assert(!IsMadeFromZero<KordCharacterRange<TypeParam>>);

    S s(Units<TypeParam>("hello"));
    const unsigned long long huge = 0x100000001;
    const Units<TypeParam> xy("xy");
    const TypeParam* const text = xy;
    EXPECT_EQ(show(S(s).erase(0)), "");
    EXPECT_EQ(show(S(s).erase(2)), "he");
    EXPECT_EQ(show(S(s).erase(huge)), "hello"); // not position 1
    EXPECT_EQ(show(S(s).erase(0, 2)), "llo");
    EXPECT_EQ(show(S(s).erase(0, 0)), "hello");
    EXPECT_EQ(show(S(s).erase(std::size_t{1}, 2)), "hlo");
    EXPECT_EQ(show(S(s).erase(-1)), "hello");
    EXPECT_EQ(show(S(s).insert(0, 'c')), "chello");
    EXPECT_EQ(show(S(s).insert(0, text)), "xyhello");
    EXPECT_EQ(show(S(s).insert(0, 2, 'c')), "cchello");
    EXPECT_EQ(show(S(s).replace(0, 0, text)), "xyhello");
    EXPECT_EQ(show(S(s).replace(0, 1, text, 1)), "yello");
    EXPECT_EQ(show(S(s).replace(0u, 1u, text)), "xyello");
    EXPECT_EQ(show(S(s).replace(0, 0, 'c')), "chello");
    EXPECT_EQ(show(S(s).replace(0, 5, s, 0, 0)), "");
    EXPECT_EQ(show(S().assign(s, 0, 0)), "");
    EXPECT_EQ(show(S().assign(s, 0, 2)), "he");
    EXPECT_EQ(show(S().append(text).append(2, 'c')), "xycc");
}

TYPED_TEST(Overloads, IteratorFormsReturnWhereTheyAre) {
    String<TypeParam> s(Units<TypeParam>("hello"));
    const String<TypeParam> shared = s;
    TypeParam* p = s.insert(s.begin() + 1, 'x'); // moves to a new block
    EXPECT_EQ(p, s.cbegin() + 1);
    p = s.erase(p);
    EXPECT_EQ(show(KordCharacterRange<TypeParam>(p)), "ello");
    p = s.erase(p, p + 2);
    EXPECT_EQ(p, s.cbegin() + 1);
    EXPECT_EQ(show(s), "hlo");
    p = s.erase(s.begin());
    EXPECT_EQ(p, s.cbegin());
    EXPECT_EQ(show(s), "lo");
    EXPECT_EQ(show(shared), "hello");
}

TYPED_TEST(Overloads, ConstantTextIsWalkedWithoutUnsharing) {
    String<TypeParam> s(Units<TypeParam>("abc"));
    const String<TypeParam> copy = s;
    unsigned int n = 0;
    for (const TypeParam c : copy)
        n += static_cast<unsigned int>(c);
    for (const TypeParam c : std::as_const(s))
        n += static_cast<unsigned int>(c);
    for (const TypeParam c : Literal<TypeParam>(copy.cbegin(), copy.cend()))
        n += static_cast<unsigned int>(c);
    EXPECT_EQ(n, 3 * ('a' + 'b' + 'c'));
    EXPECT_EQ(holders(s), 2u);
    for (TypeParam& c : s)
        c = 'x';
    EXPECT_EQ(show(s), "xxx");
    EXPECT_EQ(show(copy), "abc");
}

TEST(NarrowOverloads, AStringOfBytesAddsAnyRange) {
    astring s("a");
    (s += aliteral("bc")) += "d";
    s += 'e';
    EXPECT_EQ(show(s), "abcde");
    EXPECT_EQ(show(s.append("fg").insert(1, "--").replace(0, 1, "A")), "A--bcdefg");
}

} // namespace
