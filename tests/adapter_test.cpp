// The adapters: every form of text, of either width, as text of one width.
#include "support/dice.h"
#include "support/guard.h"
#include "support/model.h"
#include "support/text.h"

#include <type_traits>

namespace {

/// The string that an adapter is.
template <class T>
String<T> held(const String<T>& s) {
    return s;
}

template <class A, class... Integers>
constexpr bool takes_one_of = (std::is_constructible_v<A, Integers> || ...);

template <class T>
class Adapters : public ::testing::Test {};
TYPED_TEST_SUITE(Adapters, Widths);

// clang-format off
TYPED_TEST(Adapters, HoldAStringAndNothingElse) {
    using A = Adapter<TypeParam>;
    static_assert(!std::is_convertible_v<A*, String<TypeParam>*> && std::is_convertible_v<A, String<TypeParam>>);
    static_assert(std::is_nothrow_copy_constructible_v<A> && std::is_nothrow_copy_assignable_v<A>);
    static_assert(std::is_nothrow_constructible_v<A, const BasicString<TypeParam>&>);
    static_assert(!std::is_default_constructible_v<A> && !takes_one_of<A, int, unsigned int, long, std::size_t, char,
                  unsigned short, bool>);
    static_assert(!requires { A(0); } && !requires { A(0, 1u); } && !requires { A(0, 0); });
    static_assert(!requires(A a) { a = 0; });
    static_assert(noexcept(AstringAdapter::Convert(0x20AC)) && noexcept(UstringAdapter::Convert('a')));
}
// clang-format on

TEST(AdapterMapping, IsLatin1UnitByUnit) {
    for (unsigned int u = 0; u != 0x10000; ++u) {
        const unsigned char narrow = AstringAdapter::Convert(static_cast<unsigned short>(u));
        ASSERT_EQ(narrow, u < 0x100 ? u : '?');
        ASSERT_TRUE(u >= 0x100 || UstringAdapter::Convert(static_cast<char>(u)) == u) << u;
    }
}

/// Every form in which an adapter to C copies text of T, each at the end of memory.
template <class C, class T>
void copies_every_form(Dice& below, unsigned int n) {
    using A = Adapter<C>;
    using Range = KordCharacterRange<T>;
    const GuardedText<T> counted(n, false), terminated(n + 1, false);
    T *const text = counted.data(), *const zero_ended = terminated.data();
    for (unsigned int i = 0; i != n; ++i) {
        const unsigned short around[] = {0, 'a', 0x7F, 0x80, 0xFF, 0x100, 0x17F, 0x7FFF, 0x8000, 0xFF41, 0xFFFF};
        const unsigned int u = below(2) == 0 ? below(0x80) : below(3) == 0 ? below(0x10000) : below.pick(around);
        text[i] = static_cast<T>(u);
        zero_ended[i] = text[i] == 0 ? T{'0'} : text[i];
    }
    zero_ended[n] = 0;
    const Range range(text, 0, n), measured(zero_ended);
    const A forms[] = {A(text, n),
                       A(text, std::size_t{n}),
                       A(range),
                       A(Literal<T>(text, n)),
                       A(measured),
                       A(static_cast<const T*>(zero_ended)),
                       A(Literal<T>(zero_ended))};
    for (const A& a : forms) {
        std::u32string expected = codes(&a - forms < 4 ? range : measured);
        for (char32_t& u : expected) u = sizeof(C) == 1 && u > 0xFF ? '?' : u;
        const String<C> s = a;
        ASSERT_EQ(codes(s), expected) << n << " form " << &a - forms;
        ASSERT_EQ(holders(s), 2u); // the adapter and s
        ASSERT_EQ(s.capacity(), Model<C>::capacity_for(n));
        ASSERT_EQ(codes(KordCharacterRange<C>(a.c_str(), 0, n + 1)), expected + U'\0');
    }
}

TYPED_TEST(Adapters, CopyOrConvertEveryFormOfEveryLength) {
    Dice below(1);
    for (unsigned int n = 0; n != 280 && !this->HasFatalFailure(); n += n < 140 ? 1 : 7) {
        copies_every_form<TypeParam, TypeParam>(below, n);
        copies_every_form<TypeParam, OtherWidth<TypeParam>>(below, n);
    }
}

TYPED_TEST(Adapters, ShareBlocksAndReleaseThem) {
    using A = Adapter<TypeParam>;
    using R = KordCharacterRange<TypeParam>;
    const String<TypeParam> s = make<TypeParam>("hello"), t = make<TypeParam>("other");
    {
        const A a(s), copy(a), part(block_of(s), block_of(s)->first() + 2, 3u);
        const String<TypeParam> back = copy;
        EXPECT_EQ(holders(s), 5u);
        EXPECT_EQ(A(static_cast<const BasicString<TypeParam>&>(s)).c_str(), s.data());
        EXPECT_TRUE(copy.c_str() == s.data() && back.cbegin() == s.cbegin() && back.cend() == s.cend());
        EXPECT_TRUE(part.c_str() == s.data() + 2 && held<TypeParam>(part).length() == 3);
    }
    EXPECT_EQ(holders(s), 1u);
    EXPECT_NE(A(static_cast<const R&>(s)).c_str(), s.data()); // a range is copied
    A a(s.substr(1, 3)), only(Units<OtherWidth<TypeParam>>("converted"));
    EXPECT_EQ(holders(s), 2u);
    EXPECT_EQ(show(R(a.c_str())), "ell"); // moves: an 'o' follows the piece
    EXPECT_EQ(holders(s), 1u);
    a = A(s);
    EXPECT_TRUE(&(a = *&a) == &a && holders(s) == 2 && a.c_str() == s.data());
    a = A(t);
    EXPECT_TRUE(holders(s) == 1 && holders(t) == 2);
    a = only = *&only;
    EXPECT_EQ(holders(t), 1u);
    EXPECT_EQ(holders(static_cast<String<TypeParam>>(a)), 3u); // with `only`
    EXPECT_EQ(show(held<TypeParam>(only)), "converted");
}

// clang-format off
TYPED_TEST(Adapters, MakeNoBlockOfNullOnly) {
    using A = Adapter<TypeParam>;
    using U = OtherWidth<TypeParam>;
    TypeParam foreign[] = {'a', 'b', 0};
    EXPECT_EQ(A(nullptr, foreign, 2u).c_str(), foreign);
    const TypeParam zero[] = {0}, *const null = nullptr;
    const U zero_other[] = {0}, *const null_other = nullptr;
    const A nulls[] = {
        A(nullptr), A(nullptr, 3), A(null), A(null, 3u), A(null, 0x200000), A(null_other), A(null_other, 3u),
        A(null_other, 0), A(null_other, 0x200000u), A(nullptr, nullptr, 0), A(Literal<TypeParam>()),
        A(KordCharacterRange<TypeParam>()), A(String<TypeParam>()),
    };
    const A empties[] = {
        A(make<TypeParam>("x").erase()), A(zero), A(zero, 0), A(zero_other), A(zero_other, 0), A(Literal<U>()),
        A(KordCharacterRange<U>()), A(String<U>()), A(KordCharacterRange<TypeParam>(zero)), A(String<TypeParam>(zero)),
    };
    for (const A& a : nulls) {
        EXPECT_TRUE(block_of(held<TypeParam>(a)) == nullptr && held<TypeParam>(a).empty()) << &a - nulls;
        EXPECT_EQ(a.c_str(), String<TypeParam>().c_str()) << &a - nulls;
    }
    for (const A& a : empties) {
        EXPECT_TRUE(block_of(held<TypeParam>(a)) != nullptr && held<TypeParam>(a).empty()) << &a - empties;
        EXPECT_EQ(*a.c_str(), 0) << &a - empties;
    }
}
// clang-format on

TYPED_TEST(Adapters, AreParametersForTextOfEveryKind) {
    const auto f = [](const Adapter<TypeParam>& a) { return show(held<TypeParam>(a)); };
    unsigned short wide[] = {'w', 0, 'a', 0};
    char array[] = "array";
    EXPECT_EQ(f("literal") + f(wide) + f(array) + f(nullptr) + f({wide, 3u}) + f({array, sizeof array}),
              "literalwarrayw{0}aarray{0}");
    EXPECT_EQ(f({"literal", 3}) + f({"literal", 0}) + f(aliteral("l")) + f(KordCharacterRange<char>("range", 1)),
              "litlange");
}

TYPED_TEST(Adapters, RefuseMoreThanTheLimit) {
    using A = Adapter<TypeParam>;
    const auto check = []<class T>(T) {
        const unsigned int limit = 0x100000;
        std::vector<T> units(limit + 2, 'x');
        units.back() = 0;
        const T* const text = units.data();
        EXPECT_THROW(A{text}, os_length_error);
        EXPECT_THROW(A{KordCharacterRange<T>(text)}, os_length_error);
        for (const long long n : {0x100001ll, 0xFFFFFFFFll, -1ll, 0x100000001ll})
            EXPECT_THROW(A(text, n), os_length_error);
        for (const A& a : {A(text + 1), A(text, limit)}) EXPECT_EQ(held<TypeParam>(a).length(), limit);
    };
    check(TypeParam{});
    check(OtherWidth<TypeParam>{});
}

} // namespace
