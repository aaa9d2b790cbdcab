// The adapters: every form of text, of either width, as text of one width.
#include "support/dice.h"
#include "support/guard.h"
#include "support/model.h"
#include "support/text.h"

#include <kord/convert.h>

#include <numeric>
#include <type_traits>

namespace {

template <class T>
using AdapterTo = std::conditional_t<sizeof(T) == 1, AstringAdapter, UstringAdapter>;
template <class T>
using OtherWidth = std::conditional_t<sizeof(T) == 1, unsigned short, char>;

astring held(const AstringAdapter& a) {
    return a;
}
ustring held(const UstringAdapter& a) {
    return a;
}

// clang-format off
template <class A> concept TakesAnInteger = std::is_constructible_v<A, int> || std::is_constructible_v<A, unsigned int> ||
    std::is_constructible_v<A, long> || std::is_constructible_v<A, std::size_t> || std::is_constructible_v<A, char> ||
    std::is_constructible_v<A, unsigned short> || std::is_constructible_v<A, bool> || requires { A(0); } ||
    requires { A(0, 1u); } || requires { A(0, 0); } || requires(A a) { a = 0; } || std::is_default_constructible_v<A>;
// clang-format on

template <class T>
class Adapter : public ::testing::Test {};
TYPED_TEST_SUITE(Adapter, Widths);

TYPED_TEST(Adapter, HoldsAStringAndNothingElse) {
    using A = AdapterTo<TypeParam>;
    static_assert(sizeof(A) == sizeof(String<TypeParam>) && !std::is_polymorphic_v<A>);
    static_assert(!std::is_convertible_v<A*, String<TypeParam>*> && !TakesAnInteger<A>);
    static_assert(std::is_nothrow_copy_constructible_v<A> && std::is_nothrow_copy_assignable_v<A>);
    static_assert(std::is_nothrow_constructible_v<A, const BasicString<TypeParam>&>);
    static_assert(std::is_convertible_v<A, String<TypeParam>>);
}

/// What a unit becomes in each width.
template <class T>
char32_t mapped(char32_t u) {
    return sizeof(T) == 1 && u > 0xFF ? '?' : u;
}

TEST(AdapterMapping, IsLatin1UnitByUnit) {
    static_assert(noexcept(AstringAdapter::Convert(0x20AC)));
    static_assert(noexcept(UstringAdapter::Convert('a')));
    for (unsigned int u = 0; u != 0x10000; ++u) {
        const char narrow = AstringAdapter::Convert(static_cast<unsigned short>(u));
        ASSERT_EQ(static_cast<unsigned char>(narrow), mapped<char>(u));
        ASSERT_EQ(UstringAdapter::Convert(static_cast<char>(u)), u % 0x100);
    }
    std::vector<unsigned short> units(0x10000);
    std::iota(units.begin(), units.end(), static_cast<unsigned short>(0));
    const std::vector<char> bytes(units.begin(), units.begin() + 0x100);
    const astring narrow = AstringAdapter(units.data(), 0x10000);
    const ustring wide = UstringAdapter(bytes.data(), 0x100);
    ASSERT_EQ(narrow.length(), 0x10000u);
    ASSERT_EQ(wide.length(), 0x100u);
    for (unsigned int u = 0; u != 0x10000; ++u) {
        ASSERT_EQ(static_cast<unsigned char>(narrow[u]), mapped<char>(u));
        ASSERT_EQ(wide[u % 0x100], u % 0x100);
    }
    const unsigned short some[] = {0x41, 0xE9, 0xFF, 0x100, 0x20AC, 0xD83D, 0xDE00, 0};
    EXPECT_STREQ(AstringAdapter(some).c_str(), "A\xE9\xFF????");
    EXPECT_EQ(codes<unsigned short>(ustring(UstringAdapter("A\xE9\xFF"))), U"A\xE9\xFF");
}

/// Every form in which an adapter A copies text of T, each at the end of memory.
template <class A, class S, class T>
void copies_every_form(Dice& below, unsigned int n) {
    using R = KordCharacterRange<T>;
    const GuardedText<T> counted(n, false), terminated(n + 1, false);
    std::u32string expected, measured;
    for (unsigned int i = 0; i != n; ++i) {
        const unsigned short around[] = {0, 'a', 0x7F, 0x80, 0xFF, 0x100, 0x17F, 0x7FFF, 0x8000, 0xFF41, 0xFFFF};
        const unsigned int u = below(2) == 0 ? below(0x80) : below(3) == 0 ? below(0x10000) : below.pick(around);
        counted.data()[i] = static_cast<T>(u);
        terminated.data()[i] = counted.data()[i] == 0 ? T{'0'} : counted.data()[i];
    }
    terminated.data()[n] = 0;
    using Char = typename S::value_type;
    for (const char32_t u : codes(R(counted.data(), 0, n))) expected += mapped<Char>(u);
    for (const char32_t u : codes(R(terminated.data()))) measured += mapped<Char>(u);
    // clang-format off
    const A forms[] = {
        A(counted.data(), n), A(counted.data(), std::size_t{n}), A(R(counted.data(), 0, n)), A(Literal<T>(counted.data(), n)),
        A(R(terminated.data(), 0, n)), A(static_cast<const T*>(terminated.data())), A(Literal<T>(terminated.data())),
    };
    // clang-format on
    for (const A& a : forms) {
        const S s = a;
        ASSERT_EQ(codes(s), &a - forms < 4 ? expected : measured) << n << " form " << &a - forms;
        ASSERT_EQ(holders(s), 2u); // the adapter and s
        ASSERT_EQ(s.capacity(), Model<Char>::capacity_for(n));
        const Char* const text = a.c_str();
        ASSERT_EQ(text[n], 0);
        ASSERT_EQ(codes(KordCharacterRange<Char>(text, 0, n)), codes(s));
    }
}

TYPED_TEST(Adapter, CopiesOrConvertsEveryFormOfEveryLength) {
    using A = AdapterTo<TypeParam>;
    using S = String<TypeParam>;
    Dice below(1);
    for (unsigned int n = 0; n != 280; n += n < 140 ? 1 : 7) {
        copies_every_form<A, S, TypeParam>(below, n);
        copies_every_form<A, S, OtherWidth<TypeParam>>(below, n);
        if (this->HasFatalFailure()) return;
    }
}

TYPED_TEST(Adapter, SharesStringsOfItsWidth) {
    using A = AdapterTo<TypeParam>;
    using S = String<TypeParam>;
    const S s = make<TypeParam>("hello");
    {
        const A a(s), copy(a);
        const BasicString<TypeParam>& base = s;
        EXPECT_EQ(holders(s), 3u);
        EXPECT_EQ(A(base).c_str(), s.data());
        EXPECT_EQ(copy.c_str(), s.data());
        EXPECT_EQ(static_cast<S>(copy).cbegin(), s.cbegin());
        EXPECT_EQ(static_cast<S>(copy).cend(), s.cend());
        const S back = a;
        EXPECT_EQ(holders(s), 4u);
    }
    EXPECT_EQ(holders(s), 1u);
    EXPECT_NE(A(static_cast<const KordCharacterRange<TypeParam>&>(s)).c_str(), s.data()); // a range is copied
    const A piece(s.substr(1, 3));
    EXPECT_EQ(holders(s), 2u);
    EXPECT_EQ(show(KordCharacterRange<TypeParam>(piece.c_str())), "ell"); // moves: an 'o' follows the piece
    EXPECT_EQ(holders(s), 1u);
    EXPECT_EQ(show(s), "hello");
}

TYPED_TEST(Adapter, RefersToABlockAsItIs) {
    using A = AdapterTo<TypeParam>;
    const String<TypeParam> s = make<TypeParam>("hello");
    {
        const A a(block_of(s), block_of(s)->first() + 2, 3u);
        EXPECT_EQ(holders(s), 2u);
        EXPECT_EQ(a.c_str(), s.data() + 2);
        EXPECT_EQ(codes<TypeParam>(held(a)), U"llo");
    }
    EXPECT_EQ(holders(s), 1u);
    TypeParam foreign[] = {'a', 'b', 0};
    const A view(nullptr, foreign, 2u);
    EXPECT_EQ(block_of<TypeParam>(held(view)), nullptr);
    EXPECT_EQ(view.c_str(), foreign);
    EXPECT_EQ(block_of<TypeParam>(held(A(nullptr, nullptr, 0))), nullptr);
}

TYPED_TEST(Adapter, OnlyNullMakesNoBlock) {
    using A = AdapterTo<TypeParam>;
    using U = OtherWidth<TypeParam>;
    const TypeParam* const null = nullptr;
    const U* const null_other = nullptr;
    // clang-format off
    const A nulls[] = {
        A(nullptr), A(nullptr, 3), A(null), A(null, 3u), A(null, 0x200000), A(null_other), A(null_other, 3u), A(null_other, 0),
        A(null_other, 0x200000u), A(make<TypeParam>("x").erase()), A(Literal<TypeParam>()), A(KordCharacterRange<TypeParam>()),
        A(String<TypeParam>()),
    };
    // clang-format on
    for (const A& a : nulls) {
        const bool emptied = &a - nulls == 9; // an emptied string keeps its block, which is shared
        EXPECT_EQ(block_of<TypeParam>(held(a)) != nullptr, emptied) << &a - nulls;
        EXPECT_TRUE(held(a).empty());
        EXPECT_EQ(a.c_str(), String<TypeParam>().c_str()) << &a - nulls;
    }
    const TypeParam zero[] = {0};
    const U zero_other[] = {0};
    // clang-format off
    const A empties[] = {
        A(zero), A(zero, 0), A(zero_other), A(zero_other, 0), A(KordCharacterRange<U>()), A(Literal<U>()), A(String<U>()),
        A(KordCharacterRange<TypeParam>(zero)), A(String<TypeParam>(zero)),
    };
    // clang-format on
    for (const A& a : empties) {
        EXPECT_NE(block_of<TypeParam>(held(a)), nullptr) << &a - empties;
        EXPECT_TRUE(held(a).empty());
        EXPECT_EQ(*a.c_str(), 0);
    }
}

TYPED_TEST(Adapter, IsAParameterForTextOfEveryKind) {
    const auto f = [](const AdapterTo<TypeParam>& a) { return show<TypeParam>(held(a)); };
    const Units<unsigned short> units("units");
    const unsigned short* const wide = units;
    char array[] = "array";
    unsigned short wide_array[] = {'w', 0, 'a', 0};
    EXPECT_EQ(f("literal") + f(wide) + f(array) + f(wide_array) + f(nullptr), "literalunitsarrayw");
    EXPECT_EQ(f({"literal", 3}) + f({wide, 2ul}) + f({wide_array, 3u}) + f({array, sizeof array - 1}),
              "litunw{0}aarray");
    EXPECT_EQ(f(astring("s")) + f(ustring(wide)) + f(aliteral("l")) + f(uliteral(wide, 1)), "sunitslu");
    EXPECT_EQ(f(make<char>("narrow").substr(0, 3)) + f(make<unsigned short>("wide").erase(2)), "narwi");
    EXPECT_EQ(f({"literal", 0}) + f(KordCharacterRange<char>("range", 1)), "ange");
}

TYPED_TEST(Adapter, AssignmentSharesAndReleases) {
    using A = AdapterTo<TypeParam>;
    const String<TypeParam> s = make<TypeParam>("hello"), t = make<TypeParam>("other");
    A a(s);
    A& self = a;
    EXPECT_EQ(&(a = self), &a);
    EXPECT_EQ(holders(s), 2u);
    EXPECT_EQ(a.c_str(), s.data());
    const A b(t);
    EXPECT_EQ(&(a = b), &a);
    EXPECT_EQ(holders(s), 1u);
    EXPECT_EQ(holders(t), 3u);
    a = A(Units<OtherWidth<TypeParam>>("converted"));
    EXPECT_EQ(holders(t), 2u);
    A only(a);
    a = A(nullptr);
    only = only = *&only;
    EXPECT_EQ(show<TypeParam>(held(only)), "converted");
    EXPECT_EQ(holders(static_cast<String<TypeParam>>(only)), 2u);
    EXPECT_EQ(block_of<TypeParam>(held(a)), nullptr);
}

template <class Make>
std::string refusal(Make make) {
    try {
        make();
    } catch (const os_length_error& e) {
        return e.what();
    }
    return "none";
}

TYPED_TEST(Adapter, RefusesMoreThanTheLimit) {
    using A = AdapterTo<TypeParam>;
    using U = OtherWidth<TypeParam>;
    const unsigned int limit = 0x100000;
    std::vector<TypeParam> own(limit + 2, 'x');
    std::vector<U> other(limit + 2, 'x');
    own.back() = 0;
    other.back() = 0;
    const TypeParam* const text = own.data();
    const U* const text_other = other.data();
    const std::string said = "BasicString<T>::reserve(c) with c > 0x100000";
    EXPECT_EQ(refusal([&] { A{text}; }), said);
    EXPECT_EQ(refusal([&] { A{text_other}; }), said);
    EXPECT_EQ(refusal([&] { A(text, limit + 1); }), said);
    EXPECT_EQ(refusal([&] { A(text_other, limit + 1); }), said);
    EXPECT_EQ(refusal([&] { A(KordCharacterRange<TypeParam>(text)); }), said);
    EXPECT_EQ(refusal([&] { A(KordCharacterRange<U>(text_other)); }), said);
    EXPECT_EQ(refusal([&] { A(text_other, -1); }) + refusal([&] { A(text, 0x100000001ull); }), said + said);
    EXPECT_EQ(refusal([&] { A(text, 0xFFFFFFFFu); }) + refusal([&] { A(text_other, 0xFFFFFFFFu); }), said + said);
    const A forms[] = {A(text + 1), A(text_other + 1), A(text, limit), A(text_other, limit)};
    for (const A& a : forms) EXPECT_EQ(codes<TypeParam>(held(a)), std::u32string(limit, 'x'));
}

} // namespace
