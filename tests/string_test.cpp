// Strings beside what the walk covers: construction, limits, buffers.
#include "support/text.h"

#include <kord/errors.h>

#include <utility>

namespace {

template <class T>
constexpr unsigned int smallest = sizeof(T) == 1 ? 7 : 3; // the capacity of a block for no characters

template <class T>
class Strings : public ::testing::Test {};
TYPED_TEST_SUITE(Strings, Widths);

TYPED_TEST(Strings, ConstructorsEnterTheirStates) {
    using S = String<TypeParam>;
    static_assert(std::is_nothrow_move_constructible_v<S> && std::is_nothrow_move_assignable_v<S> &&
                  std::is_nothrow_copy_constructible_v<S> && std::is_nothrow_copy_assignable_v<S> &&
                  std::is_nothrow_swappable_v<S> && std::has_virtual_destructor_v<S>);
    const Units<TypeParam> units(std::string_view("ab\0cd", 5));
    const TypeParam *const null = nullptr, *const text = units;
    for (const S& s : {S(), S(null), S(null, 5u), S(nullptr, 5), S(null, null), S(nullptr, text)}) {
        EXPECT_TRUE(s.data() == nullptr && s.capacity() == 0);
        EXPECT_EQ(*s.c_str(), 0);
    }
    for (const S& s :
         {make<TypeParam>(""), S(0, 'x'), S(0, 0), S(text, 0), S(text, text), S() = nullptr, S::nullString}) {
        EXPECT_TRUE(s.empty() && s.capacity() == smallest<TypeParam>);
        EXPECT_EQ(s.c_str(), S().c_str());
    }
    EXPECT_EQ(show(S(text)) + show(S(text, 5u)) + show(S(text + 1, text + 4)) + show(S(3, 'x')), "abab{0}cdb{0}cxxx");
    EXPECT_EQ(*S::nullCString + holders(S::nullString), 1u);
    EXPECT_THROW(S(0x100001u, 'x'), os_length_error);
    EXPECT_THROW(S(text, 0x100000000ull), os_length_error);
    const S first(text, 5u), same(block_of(first), block_of(first)->first() + 3, 2);
    EXPECT_EQ(show(same), "cd");
    EXPECT_EQ(holders(first), 2u);
}

TYPED_TEST(Strings, ASourceMayBeTheLastCharacterOfAFullBlockOrItsTerminator) {
    String<TypeParam> full(smallest<TypeParam>, 'f');
    const void* const block = block_of(full);
    full.replace(0, 1, full, smallest<TypeParam> - 1, 1);
    EXPECT_NE(block_of(full), block); // not in place
    // Growing the block would pull the terminator away (a sanitizer sees that).
    full.append(KordCharacterRange<TypeParam>(full.c_str() + full.length(), 0, 1));
    EXPECT_EQ(show(full), std::string(smallest<TypeParam>, 'f') + "{0}");
}

TYPED_TEST(Strings, LengthsAboveTheLimitAreRefusedAndNothingChanges) {
    using S = String<TypeParam>;
    using R = KordCharacterRange<TypeParam>;
    const S half(0x80001, 'h'), s = make<TypeParam>("hello");
    const auto refuses = [&](const S& before, auto edit) {
        S t = before;
        EXPECT_THROW(edit(t), os_length_error);
        return block_of(t) == block_of(before) && t.length() == before.length();
    };
    EXPECT_TRUE(refuses(s, [](S& t) { t.reserve(0x100001); }));
    EXPECT_TRUE(refuses(s, [](S& t) { t.get_buffer(0x100001); }));
    EXPECT_TRUE(refuses(s, [](S& t) { t.release_buffer(0xFFFFFFFE); }));
    EXPECT_TRUE(refuses(s, [](S& t) { t.append(R(t.data(), 0, 0xFFFFFFFE)); }));
    EXPECT_TRUE(refuses(s, [](S& t) { t.replace(1, 2, R(t.data(), 0, 0xFFFFFFFE)); }));
    EXPECT_TRUE(refuses(s, [](S& t) { t.assign(R(t.data(), 0, 0xFFFFFFFE)); }));
    EXPECT_TRUE(refuses(half, [](S& t) { t.append(t); }));
    EXPECT_TRUE(refuses(half, [&half](S& t) { t.insert(7, half); }));
    EXPECT_TRUE(refuses(half, [&half](S& t) { t.replace(0, 1, half); }));
    EXPECT_EQ(holders(s) + holders(half), 2u);
    S full(0x100000, 'x'); // whose block has a little room left
    EXPECT_THROW(full += TypeParam{'y'}, os_length_error);
    EXPECT_THROW(full.append(S(1, 'y')), os_length_error);
    EXPECT_EQ(full.length(), S::lengthLimit);

    // Foreign text above the limit can be read but not unshared.
    std::vector<TypeParam> units(0x100002, 'f');
    S foreign(nullptr, units.data(), 0x100001);
    EXPECT_THROW(foreign.begin(), os_length_error);
    EXPECT_THROW(foreign.c_str(), os_length_error);
    EXPECT_EQ(foreign.data(), units.data());
}

TEST(Errors, AnErrorKeepsItsOwnCopyOfTheMessageCutAt63) {
    try {
        astring().reserve(0x100001);
    } catch (const std::exception& e) {
        EXPECT_STREQ(e.what(), "BasicString<T>::reserve(c) with c > 0x100000");
    }
    EXPECT_THROW(astring().reserve(0x100001), os_logic_error);
    std::string text(63, 'x');
    const os_length_error whole(text.c_str()), copy(whole), cut((text + "y").c_str());
    text.assign(63, 'z');
    EXPECT_EQ(copy.what(), std::string(63, 'x'));
    EXPECT_STREQ(static_cast<const std::exception&>(cut).what(), copy.what());
    EXPECT_NE(copy.what(), whole.what());
}

TYPED_TEST(Strings, BuffersAreReleasedAtTheFirstZeroOrAtALength) {
    String<TypeParam> s;
    TypeParam* const buffer = s.get_buffer(10);
    EXPECT_EQ(buffer[10], 0);
    std::fill_n(buffer, 10, 'x');
    s.release_buffer(s.npos); // no zero in the text
    EXPECT_EQ(s.length(), 10u);
    buffer[3] = 0;
    s.release_buffer(s.npos);
    s.release_buffer(6);
    EXPECT_EQ(show(s), "xxx{0}{0}{0}");
    std::fill_n(s.get_buffer(10), 10, 'x');
    s.get_buffer(3); // cuts, and writes no terminator
    s.release_buffer(4);
    EXPECT_EQ(show(s), "xxx{0}");
    const String<TypeParam> copy = s = make<TypeParam>("hello");
    s.release_buffer(2); // without a buffer, still harmless to the copy
    EXPECT_EQ(show(s) + show(copy), "hehello");
    EXPECT_EQ(*s.cend() + *copy.cend(), 0);
}

} // namespace
