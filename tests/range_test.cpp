#include "support/text.h"

namespace {

template <class T>
class Range : public ::testing::Test {};
TYPED_TEST_SUITE(Range, Widths);

TYPED_TEST(Range, PositionsInTextAreTakenOnTrustAndPiecesClamped) {
    using R = KordCharacterRange<TypeParam>;
    const Units<TypeParam> zeros(std::string_view("ab\0cd", 5));
    EXPECT_EQ(show(R(zeros)) + show(R(zeros, 1)) + show(R(zeros, 3, R::npos)) + show(R(zeros, 0, 5)), "abbcdab{0}cd");
    EXPECT_EQ(R(zeros, 0, 0).data(), zeros);
    for (const R& null : {R(), R(nullptr, 3, 5), R(R(), 2, 2)}) EXPECT_TRUE(null.begin() == nullptr && null.empty());
    const R whole(zeros, 0, 5);
    EXPECT_EQ(show(R(whole, 3, 1)) + show(R(whole, 3, R::npos)) + show(R(whole, 3, 10)) + show(R(whole, 4, 0)),
              "ccdcd");
    for (const unsigned int pos : {5u, 7u, R::npos}) EXPECT_EQ(R(whole, pos, 1).begin(), whole.end());
    EXPECT_TRUE(whole[1] == 'b' && whole.size() == 5);
}

TYPED_TEST(Range, LiteralsCountInAnyInteger) {
    using L = Literal<TypeParam>;
    const Units<TypeParam> hello("hello");
    const TypeParam* const text = hello;
    L l;
    EXPECT_TRUE(L(text, 0).empty() && l.assign(text, 0).end() == text);
    EXPECT_EQ(show(L(text, 4)) + show(l.assign(text, 4ull)), "hellhell");
    if constexpr (sizeof(void*) > 4) {
        const std::size_t more = static_cast<std::size_t>(0x100000003ull); // than any count holds
        EXPECT_EQ(L(text, text + more).length(), L::npos);
    }
}

TEST(WideRange, AUnitWithAZeroByteDoesNotEndTheText) {
    EXPECT_EQ(uliteral(exactly<unsigned short>(std::u32string_view(U"\x2500\x41\xFF00\x100", 5)).data()).length(), 4u);
}

} // namespace
