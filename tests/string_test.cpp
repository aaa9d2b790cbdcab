// Strings beside what the walk covers: construction, sharing as it is seen from outside, limits, buffers, literals.
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
    const Units<TypeParam> text(std::string_view("ab\0cd", 5));
    const TypeParam* const null = nullptr;
    const TypeParam* const units = text;
    for (const S& s : {S(), S(null), S(null, 5u), S(nullptr, 5), S(null, null), S(nullptr, units)}) {
        EXPECT_EQ(s.data(), nullptr);
        EXPECT_EQ(s.capacity(), 0u);
        EXPECT_EQ(*s.c_str(), 0);
    }
    for (const S& s : {make<TypeParam>(""), S(0, 'x'), S(0, 0), S(units, 0), S(units, units), S::nullString}) {
        EXPECT_TRUE(s.empty());
        EXPECT_EQ(s.capacity(), smallest<TypeParam>);
        EXPECT_EQ(s.c_str(), S().c_str());
    }
    EXPECT_EQ(show(S(units)), "ab");
    EXPECT_EQ(show(S(units, 5u)), "ab{0}cd");
    EXPECT_EQ(show(S(units + 1, units + 4)), "b{0}c");
    EXPECT_EQ(show(S(3, 'x')), "xxx");
    EXPECT_EQ(*S::nullCString, 0);
    EXPECT_EQ(holders(S::nullString), 1u);
    EXPECT_THROW(S(0x100001u, 'x'), os_length_error);
    EXPECT_THROW(S(units, 0x100000000ull), os_length_error);
    const S first(units, 5u);
    const S same(block_of(first), block_of(first)->first() + 3, 2);
    EXPECT_EQ(show(same), "cd");
    EXPECT_EQ(holders(first), 2u);
}

TYPED_TEST(Strings, PiecesLieInTheirSourceUntilTheyNeedATerminator) {
    using S = String<TypeParam>;
    const S s = make<TypeParam>("hello"), u = s.substr(1, 3);
    EXPECT_EQ(u.data(), s.data() + 1);
    EXPECT_EQ(u.capacity(), s.capacity());
    EXPECT_EQ(show(KordCharacterRange<TypeParam>(u.c_str())), "ell"); // moves: an 'o' follows the piece
    EXPECT_NE(block_of(u), block_of(s));
    EXPECT_EQ(s.substr(2).c_str(), s.data() + 2); // ends at the terminator: stays
    EXPECT_EQ(s.substr(9).data(), s.cend());
    EXPECT_EQ(show(S(s, s.data() + 3, s.cend())), "lo");
    const Units<TypeParam> text("literal");
    EXPECT_EQ(&u.assign_literal(text), &u);
    EXPECT_EQ(u.c_str(), text);
    EXPECT_EQ(u.assign_literal(nullptr).data(), nullptr);
    S t;
    BasicString<TypeParam>& base = t;
    base = s; // the base class assigns as safely
    const S copy = base;
    EXPECT_EQ(holders(s), 3u);
}

TYPED_TEST(Strings, TextIsAssignedAndAddedEvenItsOwn) {
    String<TypeParam> s;
    s = nullptr;
    EXPECT_EQ(s.capacity(), smallest<TypeParam>);
    s = Units<TypeParam>("abc");
    s = s.data() + 1;
    (s += s.c_str()) += s;
    EXPECT_EQ(show(s), "bcbcbcbc");
    // A source that is nothing but the terminator of a full block: growing would pull it away (a sanitizer sees that).
    String<TypeParam> full(smallest<TypeParam>, 'f');
    full.append(KordCharacterRange<TypeParam>(full.c_str() + full.length(), 0, 1));
    EXPECT_EQ(show(full), std::string(smallest<TypeParam>, 'f') + "{0}");
}

TYPED_TEST(Strings, MovingAndSwappingExchangePointers) {
    using S = String<TypeParam>;
    static_assert(std::is_nothrow_move_constructible_v<S> && std::is_nothrow_move_assignable_v<S> &&
                  std::is_nothrow_copy_constructible_v<S> && std::is_nothrow_copy_assignable_v<S> &&
                  std::is_nothrow_destructible_v<S> && std::is_nothrow_swappable_v<S> &&
                  std::has_virtual_destructor_v<S>);
    S s = make<TypeParam>("hello");
    const void* const block = block_of(s);
    S t(std::move(s)), u = make<TypeParam>("other");
    u = std::move(t);
    EXPECT_EQ(s.data(), nullptr);
    EXPECT_EQ(t.capacity(), 0u);
    S& alias = u;
    u = std::move(alias);
    EXPECT_EQ(block_of(u), block);
    EXPECT_EQ(holders(u), 1u);
}

TYPED_TEST(Strings, LengthsAboveTheLimitAreRefusedAndNothingChanges) {
    using S = String<TypeParam>;
    using R = KordCharacterRange<TypeParam>;
    const S half(0x80001, 'h'), s = make<TypeParam>("hello");
    const std::vector<void (*)(S&, const S&)> rows = {
        [](S& t, const S&) { t.reserve(0x100001); },
        [](S& t, const S&) { t.append(0xFFFFFFFF, 'x'); },
        [](S& t, const S&) { t.append(0xFFFFFFFF - 4, 'x'); },
        [](S& t, const S&) { t.insert(2, 0xFFFFFFFE, 'x'); },
        [](S& t, const S&) { t.get_buffer(0x100001); },
        [](S& t, const S&) { t.release_buffer(0xFFFFFFFE); },
        [](S& t, const S&) { t.append(R(t.data(), 0, 0xFFFFFFFE)); },
        [](S& t, const S&) { t.replace(1, 2, R(t.data(), 0, 0xFFFFFFFE)); },
        [](S& t, const S&) { t.assign(R(t.data(), 0, 0xFFFFFFFE)); },
        [](S& t, const S& h) { (t = h).append(h); },
        [](S& t, const S& h) { (t = h).insert(7, h); },
        [](S& t, const S& h) { (t = h).replace(0, 1, h); },
    };
    for (std::size_t i = 0; i != rows.size(); ++i) {
        S t = s;
        EXPECT_THROW(rows[i](t, half), os_length_error) << i;
        EXPECT_TRUE(block_of(t) == block_of(i < 9 ? s : half) && t.length() == (i < 9 ? s : half).length()) << i;
    }
    EXPECT_EQ(holders(s) + holders(half), 2u);
    std::string said;
    try {
        S().reserve(0x100001);
    } catch (const os_logic_error& e) {
        said = e.what();
    }
    EXPECT_EQ(said, "BasicString<T>::reserve(c) with c > 0x100000");
    S full(0x100000, 'x'); // whose block has a little room left
    EXPECT_THROW(full += TypeParam{'y'}, os_length_error);
    EXPECT_THROW(full.append(S(1, 'y')), os_length_error);
    EXPECT_EQ(full.length(), S::lengthLimit);

    // Foreign text above the limit can be read but not unshared.
    std::vector<TypeParam> units(0x100002, 'f');
    S foreign(nullptr, units.data(), 0x100001);
    EXPECT_THROW(foreign.begin(), os_length_error);
    EXPECT_THROW(foreign.set_at(0, 'x'), os_length_error);
    EXPECT_THROW(foreign.c_str(), os_length_error);
    EXPECT_EQ(foreign.data(), units.data());
}

TEST(Errors, AnErrorKeepsItsOwnCopyOfTheMessageCutAt63) {
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
    s.release_buffer(1);
    EXPECT_EQ(*s.cend(), 0);
    const String<TypeParam> copy = s = make<TypeParam>("hello");
    s.release_buffer(2); // without a buffer, still harmless to the copy
    EXPECT_EQ(show(s) + show(copy), "hehello");
    EXPECT_EQ(*copy.cend(), 0);
}

} // namespace
