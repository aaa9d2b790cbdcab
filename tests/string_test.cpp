#include "support/text.h"

#include <utility>

namespace {

template <class T>
constexpr unsigned int smallest = sizeof(T) == 1 ? 7 : 3; // the capacity of a block for no characters

template <class T>
class Strings : public ::testing::Test {};
TYPED_TEST_SUITE(Strings, Widths);

TYPED_TEST(Strings, BlocksHaveTheSizeOfTheRule) {
    using S = String<TypeParam>;
    const struct {
        unsigned int c, narrow, wide;
    } rows[] = {{0, 7, 3},   {3, 7, 3},    {4, 7, 11},      {7, 7, 11},
                {8, 23, 11}, {24, 39, 27}, {100, 103, 107}, {0x100000, 1048583, 1048579}};
    for (const auto& row : rows) {
        S s;
        s.reserve(row.c);
        EXPECT_EQ(s.capacity(), sizeof(TypeParam) == 1 ? row.narrow : row.wide) << row.c;
        EXPECT_EQ(S(row.c, 'x').capacity(), s.capacity()) << row.c;
        EXPECT_EQ(block_of(s)->capacity, s.capacity() * sizeof(TypeParam));
    }
    EXPECT_EQ(S::lengthLimit, 0x100000u);
}

TYPED_TEST(Strings, ConstructorsEnterTheirStates) {
    using S = String<TypeParam>;
    const Units<TypeParam> text(std::string_view("ab\0cd", 5));
    const TypeParam* const null = nullptr;
    const TypeParam* const units = text;
    for (const S& s : {S(), S(null), S(null, 5u), S(nullptr, 5), S(null, null), S(nullptr, units)}) {
        EXPECT_EQ(s.data(), nullptr);
        EXPECT_EQ(s.capacity(), 0u);
        EXPECT_NE(s.c_str(), nullptr);
        EXPECT_EQ(*s.c_str(), 0);
    }
    for (const S& s : {S(Units<TypeParam>("")), S(0u, 'x'), S(0, 0), S(units, 0), S(units, units), S::nullString}) {
        EXPECT_TRUE(s.empty());
        EXPECT_EQ(s.capacity(), smallest<TypeParam>);
        EXPECT_EQ(s.c_str(), S().c_str());
    }
    EXPECT_EQ(show(S(units)), "ab");
    EXPECT_EQ(show(S(units, 5u)), "ab{0}cd");
    EXPECT_EQ(show(S(units, std::size_t{4})), "ab{0}c");
    EXPECT_EQ(show(S(units + 1, units + 4)), "b{0}c");
    EXPECT_EQ(show(S(3, 'x')), "xxx");
    EXPECT_EQ(*S::nullCString, 0);
    EXPECT_EQ(holders(S::nullString), 1u);
    EXPECT_THROW(S(0x100001u, 'x'), os_length_error);
    EXPECT_THROW(S(units, std::size_t{0x100000000}), os_length_error);

    TypeParam own[] = {'x', 'y', 0};
    const S foreign(static_cast<BasicStringBody<TypeParam>*>(nullptr), own, 2);
    EXPECT_EQ(foreign.c_str(), own);
    const S first(units, 5u);
    const S same(block_of(first), block_of(first)->first() + 3, 2);
    EXPECT_EQ(show(same), "cd");
    EXPECT_EQ(holders(first), 2u);
}

TYPED_TEST(Strings, CopiesAndPiecesShareUntilOneIsWritten) {
    using S = String<TypeParam>;
    const S s = make<TypeParam>("hello");
    S t(s);
    const S u = s.substr(1, 3);
    EXPECT_EQ(holders(s), 3u);
    EXPECT_EQ(u.data(), s.data() + 1);
    EXPECT_EQ(u.capacity(), s.capacity());
    const void* const block = block_of(s);
    EXPECT_EQ(show(KordCharacterRange<TypeParam>(u.c_str())), "ell"); // moves: an 'o' follows the piece
    EXPECT_NE(block_of(u), block);
    EXPECT_EQ(holders(s), 2u);
    t.set_at(0, 'j');
    EXPECT_EQ(show(t), "jello");
    EXPECT_EQ(show(s), "hello");
    EXPECT_EQ(holders(s), 1u);
    EXPECT_EQ(block_of(s), block);

    EXPECT_EQ(s.substr(2).c_str(), s.data() + 2); // ends at the terminator
    for (const unsigned int pos : {5u, 9u, S::npos})
        EXPECT_EQ(s.substr(pos, 1).data(), s.cend());
    EXPECT_EQ(show(S(s, 1, 2)), "el");
    EXPECT_EQ(show(S(s, s.data() + 3, s.cend())), "lo");
    const BasicString<TypeParam>& base = s;
    const S converted = base;
    EXPECT_EQ(block_of(converted), block);
}

TYPED_TEST(Strings, AssignmentTakesTheNewReferenceFirst) {
    using S = String<TypeParam>;
    S s = make<TypeParam>("hello");
    const S& alias = s;
    s = alias;
    EXPECT_EQ(holders(s), 1u);
    S t;
    t = s;
    t = s.substr(1, 2);
    EXPECT_EQ(show(t), "el");
    EXPECT_EQ(holders(s), 2u);
    BasicString<TypeParam>& base = t;
    base = s; // the base class assigns as safely
    EXPECT_EQ(holders(s), 2u);
    EXPECT_EQ(show(t), "hello");

    s = static_cast<const TypeParam*>(nullptr);
    EXPECT_TRUE(s.empty());
    EXPECT_EQ(show(t), "hello");
    S null;
    null = nullptr;
    EXPECT_EQ(null.capacity(), smallest<TypeParam>);
    null = Units<TypeParam>("abc");
    EXPECT_EQ(show(null), "abc");
    null = null.data() + 1; // text of its own
    EXPECT_EQ(show(null), "bc");
    null += null.c_str();
    EXPECT_EQ(show(null), "bcbc");
    (null += null) += null;
    EXPECT_EQ(show(null), "bcbcbcbcbcbcbcbc");
}

TYPED_TEST(Strings, MovingAndSwappingExchangePointers) {
    using S = String<TypeParam>;
    S s = make<TypeParam>("hello");
    const void* const block = block_of(s);
    S t(std::move(s));
    EXPECT_EQ(s.data(), nullptr);
    EXPECT_EQ(s.capacity(), 0u);
    EXPECT_EQ(block_of(t), block);
    EXPECT_EQ(holders(t), 1u);
    S u = make<TypeParam>("other");
    u = std::move(t);
    EXPECT_EQ(t.data(), nullptr);
    EXPECT_EQ(block_of(u), block);
    S& alias = u;
    u = std::move(alias);
    EXPECT_EQ(show(u), "hello");
    swap(s, u);
    EXPECT_EQ(show(s), "hello");
    EXPECT_EQ(u.data(), nullptr);
    static_assert(std::is_nothrow_move_constructible_v<S> && std::is_nothrow_move_assignable_v<S> &&
                  std::is_nothrow_copy_constructible_v<S> && std::is_nothrow_copy_assignable_v<S> &&
                  std::is_nothrow_destructible_v<S>&& noexcept(s.swap(u)) && std::has_virtual_destructor_v<S>);
}

TYPED_TEST(Strings, AppendingSingleCharactersIsAppend) {
    using S = String<TypeParam>;
    S s, t;
    for (unsigned int i = 0; i != 100; ++i) {
        const S shared = i % 10 == 0 ? s : S();
        s += static_cast<TypeParam>('a' + i % 26);
        t.append(1, static_cast<TypeParam>('a' + i % 26));
        ASSERT_EQ(show(s), show(t));
        ASSERT_EQ(s.capacity(), t.capacity());
        ASSERT_EQ(*s.cend(), 0);
    }
    S full(0x100000, 'x');
    EXPECT_GT(full.capacity(), 0x100000u);
    EXPECT_THROW(full += TypeParam{'y'}, os_length_error);
    EXPECT_EQ(full.length(), 0x100000u);
}

TYPED_TEST(Strings, LengthsAboveTheLimitAreRefusedAndNothingChanges) {
    using S = String<TypeParam>;
    using R = KordCharacterRange<TypeParam>;
    const S half(0x80001, 'h');
    S s = make<TypeParam>("hello");
    S shared = s;
    const std::vector<void (*)(S&, const S&)> rows = {
        [](S& t, const S&) { t.reserve(0x100001); },
        [](S& t, const S&) { t.append(0xFFFFFFFF, 'x'); },
        [](S& t, const S&) { t.append(0xFFFFFFFF - 4, 'x'); },
        [](S& t, const S&) { t.insert(2, 0xFFFFFFFE, 'x'); },
        [](S& t, const S&) { t.assign(0x100001, 'x'); },
        [](S& t, const S&) { t.resize(0xFFFFFFFF, 'x'); },
        [](S& t, const S&) { t.get_buffer(0x100001); },
        [](S& t, const S&) { t.release_buffer(0xFFFFFFFE); },
        [](S& t, const S& h) { (t = h).append(h); },
        [](S& t, const S& h) { (t = h).insert(7, h); },
        [](S& t, const S& h) { (t = h).replace(0, 1, h); },
        [](S& t, const S&) { t.append(R(t.data(), 0, 0xFFFFFFFE)); },
        [](S& t, const S&) { t.replace(1, 2, R(t.data(), 0, 0xFFFFFFFE)); },
        [](S& t, const S&) { t.assign(R(t.data(), 0, 0xFFFFFFFE)); },
    };
    for (std::size_t i = 0; i != rows.size(); ++i) {
        S t = s;
        EXPECT_THROW(rows[i](t, half), os_length_error) << i;
        EXPECT_EQ(block_of(t), block_of(i >= 8 && i <= 10 ? half : s)) << i;
        EXPECT_EQ(t.length(), i >= 8 && i <= 10 ? half.length() : 5u) << i;
    }
    EXPECT_EQ(holders(s), 2u);
    EXPECT_EQ(holders(half), 1u);

    // Foreign text above the limit can be read but not unshared.
    const std::vector<TypeParam> units(0x100002, 'f');
    S foreign(nullptr, const_cast<TypeParam*>(units.data()), 0x100001);
    EXPECT_THROW(foreign.begin(), os_length_error);
    EXPECT_THROW(foreign.set_at(0, 'x'), os_length_error);
    EXPECT_THROW(foreign.c_str(), os_length_error);
    EXPECT_THROW(foreign.make_upper(), os_length_error);
    EXPECT_EQ(foreign.data(), units.data());
    EXPECT_EQ(foreign.length(), 0x100001u);
}

TYPED_TEST(Strings, ReserveShortensForeignTextOnly) {
    using S = String<TypeParam>;
    S foreign;
    foreign.assign_literal(lasting<TypeParam>("hello"));
    S sole = make<TypeParam>("hello"), shared = sole, other = shared;
    foreign.reserve(2);
    EXPECT_EQ(show(foreign), "he");
    shared.reserve(2);
    EXPECT_EQ(show(shared), "hello");
    EXPECT_NE(block_of(shared), block_of(other));
    sole = S();
    const TypeParam* const text = other.data();
    other.reserve(2);
    EXPECT_EQ(show(other), "hello");
    EXPECT_EQ(other.data(), text);
    S null;
    EXPECT_NE(null.begin(), nullptr);
    EXPECT_EQ(null.capacity(), smallest<TypeParam>);
}

TYPED_TEST(Strings, BuffersAreReleasedAtTheFirstZeroOrAtALength) {
    using S = String<TypeParam>;
    S s;
    TypeParam* buffer = s.get_buffer(10);
    for (const char c : {'a', 'b', 'c', '\0'})
        *buffer++ = static_cast<TypeParam>(c);
    s.release_buffer(S::npos);
    EXPECT_EQ(show(s), "abc");

    S t;
    buffer = t.get_buffer(3);
    std::fill(buffer, buffer + 3, 'x');
    t.release_buffer(S::npos);
    EXPECT_EQ(show(t), "xxx"); // no zero in the text
    t.release_buffer(5);
    EXPECT_EQ(show(t), "xxx{0}{0}");
    t.release_buffer(1);
    EXPECT_EQ(show(t), "x");
    EXPECT_EQ(t.c_str()[1], 0);

    S shared = make<TypeParam>("hello");
    const S copy = shared;
    shared.release_buffer(2); // without a buffer, still harmless to the copy
    EXPECT_EQ(show(shared), "he");
    EXPECT_EQ(show(copy), "hello");
    EXPECT_EQ(*copy.cend(), 0);
}

TYPED_TEST(Strings, LiteralsAreViewedUntilAChangeNeedsABlock) {
    using S = String<TypeParam>;
    const TypeParam* const text = lasting<TypeParam>("hello");
    const S s = make<TypeParam>("old");
    const S old = s;
    EXPECT_EQ(&s.assign_literal(text), &s);
    EXPECT_EQ(holders(old), 1u);
    EXPECT_EQ(s.c_str(), text);
    EXPECT_EQ(s.capacity(), 0u);
    const S piece = s.substr(0, 2);
    EXPECT_EQ(show(KordCharacterRange<TypeParam>(piece.c_str())), "he");
    EXPECT_EQ(piece.capacity(), smallest<TypeParam>);
    S changed = s;
    changed.set_at(0, 'j');
    EXPECT_EQ(show(changed), "jello");
    EXPECT_EQ(show(s), "hello");
    s.assign_literal(nullptr);
    EXPECT_EQ(s.data(), nullptr);
}

TYPED_TEST(Strings, ErasingMovesPointersAtTheEndsOnly) {
    using S = String<TypeParam>;
    S s = make<TypeParam>("hello");
    const void* const block = block_of(s);
    s.erase(0, 2);
    EXPECT_EQ(show(s), "llo");
    EXPECT_EQ(block_of(s), block);
    s.append(1, '!');
    EXPECT_EQ(show(s), "llo!");
    EXPECT_NE(block_of(s), block); // it no longer started at the first slot

    S t = make<TypeParam>("hello");
    const S before = t;
    EXPECT_EQ(show(t.erase(3, S::npos)), "hel");
    EXPECT_EQ(show(t.erase(5, 1)), "hel");
    EXPECT_EQ(holders(before), 2u);
    EXPECT_EQ(show(KordCharacterRange<TypeParam>(t.c_str())), "hel");
    EXPECT_EQ(show(before), "hello");

    S sole = make<TypeParam>("hello");
    const unsigned int capacity = sole.capacity();
    sole.erase();
    EXPECT_EQ(sole.data(), nullptr);
    EXPECT_EQ(sole.capacity(), capacity);
    S emptied = sole; // shares the kept block
    emptied.insert(0, KordCharacterRange<TypeParam>());
    sole.insert(0, KordCharacterRange<TypeParam>());
    EXPECT_NE(block_of(sole), block_of(emptied));
    EXPECT_TRUE(sole.empty());
    S lone = make<TypeParam>("hello");
    lone.erase().replace(0, 0, lone); // nothing by nothing, where there is a block and no place in it
    EXPECT_TRUE(lone.empty());
    S copy = before;
    EXPECT_EQ(copy.erase().capacity(), 0u);
    EXPECT_EQ(show(before), "hello");
}

TYPED_TEST(Strings, AReplacementStaysInPlaceWhereItCan) {
    using S = String<TypeParam>;
    S s = make<TypeParam>("abc");
    const void* const block = block_of(s);
    EXPECT_EQ(show(s.replace(1, 1, 'x')), "axc");
    EXPECT_EQ(block_of(s), block);
    const S other = s;
    s.replace(1, 1, 'y');
    EXPECT_EQ(show(s), "ayc");
    EXPECT_EQ(show(other), "axc");
    EXPECT_EQ(block_of(other), block);
    EXPECT_EQ(show(s.replace(10, 3, 'z')), "aycz"); // past the end: appends
    EXPECT_EQ(show(s.insert(9, 2, 'z')), "aycz");   // past the end: nothing
    EXPECT_EQ(show(s.insert(4, 2, '.')), "aycz..");

    S own = make<TypeParam>("abcdef");
    TypeParam* const p = own.begin();
    EXPECT_EQ(show(own.replace(p + 2, p + 5, p + 1, p + 3)), "abbcf");
    EXPECT_EQ(show(own.replace(1, 2, Units<TypeParam>("xyz"), 1, 1)), "aycf");
    EXPECT_EQ(show(own.replace(own.begin(), own.begin() + 1, static_cast<const TypeParam*>(nullptr))), "ycf");

    // A source that is nothing but the terminator of a full block: growing would pull it away.
    S full(smallest<TypeParam>, 'f');
    full.append(KordCharacterRange<TypeParam>(full.c_str() + full.length(), 0, 1));
    EXPECT_EQ(show(full), std::string(smallest<TypeParam>, 'f') + "{0}");
}

} // namespace
