#include "support/text.h"

namespace {

template <class T>
class Range : public ::testing::Test {};
TYPED_TEST_SUITE(Range, Widths);

TYPED_TEST(Range, OverTextTakesThePositionOnTrustAndMeasuresFromIt) {
    using R = KordCharacterRange<TypeParam>;
    const Units<TypeParam> hello("hello");
    EXPECT_EQ(show(R(hello, 1, R::npos)), "ello");
    EXPECT_EQ(show(R(hello, 1, 2)), "el");
    EXPECT_EQ(R(hello, 0, 0).data(), hello);
    EXPECT_TRUE(R(hello, 0, 0).empty());

    const Units<TypeParam> zeros(std::string_view("ab\0cd", 5));
    EXPECT_EQ(show(R(zeros, 0, 5)), "ab{0}cd");
    EXPECT_EQ(show(R(zeros)), "ab");
    EXPECT_EQ(show(R(zeros, 3)), "cd");

    const R null(nullptr, 3, 5);
    EXPECT_EQ(null.begin(), nullptr);
    EXPECT_EQ(null.end(), nullptr);
    EXPECT_EQ(null.length(), 0u);
}

TYPED_TEST(Range, PiecesAreClampedToTheirSource) {
    using R = KordCharacterRange<TypeParam>;
    const Units<TypeParam> hello("hello");
    const R whole(hello);
    const struct {
        unsigned int pos, len;
        const char* text;
    } rows[] = {{1, 3, "ell"}, {1, R::npos, "ello"}, {1, 10, "ello"},  {0, 5, "hello"}, {4, 0, ""},
                {5, 1, ""},    {7, 1, ""},           {R::npos, 1, ""}, {4, 1, "o"}};
    for (const auto& row : rows)
        EXPECT_EQ(show(R(whole, row.pos, row.len)), row.text) << row.pos << ", " << row.len;
    EXPECT_EQ(R(whole, 7, 1).begin(), whole.end());
    EXPECT_EQ(R(whole, 5, 1).begin(), whole.end());
    EXPECT_EQ(R(R(), 2, 2).begin(), nullptr);
    EXPECT_EQ(whole[1], hello[1]);
    EXPECT_EQ(whole.size(), 5u);
    EXPECT_EQ(R::npos, 0xFFFFFFFFu);
}

TYPED_TEST(Range, ALengthThatNoCountHoldsReadsAsNpos) {
    using R = KordCharacterRange<TypeParam>;
    if constexpr (sizeof(void*) > 4) {
        const auto* const start = reinterpret_cast<const TypeParam*>(std::uintptr_t{4096});
        const Literal<TypeParam> huge(start, start + (std::size_t{1} << 32) + 3);
        EXPECT_EQ(huge.length(), R::npos);
    }
}

TYPED_TEST(Range, LiteralsStoreWhatTheyAreGivenAndMeasureTheRest) {
    using L = Literal<TypeParam>;
    const Units<TypeParam> hello("hello");
    const TypeParam* const text = hello;
    EXPECT_EQ(L().begin(), nullptr);
    EXPECT_EQ(show(L(text + 1, text + 3)), "el");
    EXPECT_EQ(show(L(text)), "hello");
    EXPECT_EQ(show(L(text, 4u)), "hell");
    EXPECT_EQ(show(L(text, 0)), "");
    EXPECT_EQ(show(L(text, std::size_t{2})), "he");
    const Units<TypeParam> empty("");
    EXPECT_EQ(L(empty).begin(), empty);
    EXPECT_TRUE(L(empty).empty());

    L l;
    EXPECT_EQ(show(l.assign(text)), "hello");
    EXPECT_EQ(show(l.assign(text, 2u)), "he");
    EXPECT_EQ(l.assign(text, 0).begin(), text);
    EXPECT_EQ(show(l.assign(text + 4, text + 5)), "o");
    const String<TypeParam> s(text, 3u);
    EXPECT_EQ(l.assign(s).begin(), s.data());
    EXPECT_EQ(l.end(), s.cend());
    EXPECT_EQ(&(l = L(text)), &l);
    EXPECT_EQ(show(L(l)), "hello");

    const TypeParam units[] = {0x41, 0, 0x42};
    EXPECT_EQ(L(units).length(), 1u);
}

TEST(WideRange, AUnitWithAZeroByteDoesNotEndTheText) {
    const unsigned short units[] = {0x2500, 0x0041, 0xFF00, 0x0100, 0};
    EXPECT_EQ(uliteral(units).length(), 4u);
}

} // namespace
