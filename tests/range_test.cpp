#include "support/text.h"

namespace {

template <class T>
class Range : public ::testing::Test {};
TYPED_TEST_SUITE(Range, Widths);

TYPED_TEST(Range, OverTextTakesThePositionOnTrustAndMeasuresFromIt) {
    using R = KordCharacterRange<TypeParam>;
    const Units<TypeParam> zeros(std::string_view("ab\0cd", 5));
    EXPECT_EQ(show(R(zeros)), "ab");
    EXPECT_EQ(show(R(zeros, 1)), "b");
    EXPECT_EQ(show(R(zeros, 3, R::npos)), "cd");
    EXPECT_EQ(show(R(zeros, 0, 5)), "ab{0}cd");
    EXPECT_EQ(R(zeros, 0, 0).data(), zeros);
    for (const R& null : {R(), R(nullptr, 3, 5), R(R(), 2, 2)}) {
        EXPECT_EQ(null.begin(), nullptr);
        EXPECT_EQ(null.end(), nullptr);
    }
}

TYPED_TEST(Range, PiecesAreClampedToTheirSource) {
    using R = KordCharacterRange<TypeParam>;
    const Units<TypeParam> hello("hello");
    const R whole(hello);
    EXPECT_EQ(show(R(whole, 1, 3)) + show(R(whole, 1, R::npos)) + show(R(whole, 1, 10)), "ellelloello");
    EXPECT_EQ(show(R(whole, 0, 5)) + show(R(whole, 4, 0)) + show(R(whole, 4, 1)), "helloo");
    for (const unsigned int pos : {5u, 7u, R::npos}) EXPECT_EQ(R(whole, pos, 1).begin(), whole.end());
    EXPECT_EQ(whole[1], 'e');
    EXPECT_EQ(whole.size(), 5u);
}

TYPED_TEST(Range, LiteralsStoreWhatTheyAreGivenAndMeasureTheRest) {
    using L = Literal<TypeParam>;
    const Units<TypeParam> hello("hello");
    const TypeParam* const text = hello;
    const String<TypeParam> s(text, 3u);
    L l;
    EXPECT_EQ(l.begin(), nullptr);
    EXPECT_EQ(show(L(text + 1, text + 3)) + show(l.assign(text + 1, text + 3)), "elel");
    EXPECT_EQ(show(L(text)) + show(l.assign(text)), "hellohello");
    EXPECT_EQ(show(L(text, 4u)) + show(l.assign(text, 4u)), "hellhell");
    EXPECT_EQ(show(L(text, 0)) + show(l.assign(text, 0)), "");
    EXPECT_EQ(l.begin(), text);
    EXPECT_EQ(l.assign(s).end(), s.cend());
    EXPECT_EQ(&(l = L(text)), &l);
    EXPECT_EQ(show(L(l)), "hello");
    if constexpr (sizeof(void*) > 4) {
        const std::size_t more = static_cast<std::size_t>(0x100000003ull); // than any count holds
        EXPECT_EQ(L(text, text + more).length(), L::npos);
    }
}

TEST(WideRange, AUnitWithAZeroByteDoesNotEndTheText) {
    const unsigned short units[] = {0x2500, 0x0041, 0xFF00, 0x0100, 0};
    EXPECT_EQ(uliteral(units).length(), 4u);
}

} // namespace
