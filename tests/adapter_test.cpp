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

template <class A, class... Integers>
constexpr bool takes_one_of = (std::is_constructible_v<A, Integers> || ...);

template <class T>
class Adapter : public ::testing::Test {};
TYPED_TEST_SUITE(Adapter, Widths);

TYPED_TEST(Adapter, HoldsAStringAndNothingElse) {
    using A = AdapterTo<TypeParam>;
    static_assert(sizeof(A) == sizeof(String<TypeParam>) && !std::is_polymorphic_v<A>);
    static_assert(!std::is_convertible_v<A*, String<TypeParam>*> && std::is_convertible_v<A, String<TypeParam>>);
    static_assert(std::is_nothrow_copy_constructible_v<A> && std::is_nothrow_copy_assignable_v<A>);
    static_assert(std::is_nothrow_constructible_v<A, const BasicString<TypeParam>&>);
    static_assert(!takes_one_of<A, int, unsigned int, long, std::size_t, char, unsigned short, bool>);
    // clang-format off
    static_assert(!std::is_default_constructible_v<A> && !requires { A(0); } && !requires { A(0, 1u);
    } && !requires { A(0, 0); } && !requires(A a) { a = 0; });
    static_assert(noexcept(AstringAdapter::Convert(0x20AC)) && noexcept(UstringAdapter::Convert('a')));
    // clang-format on
}

TEST(AdapterMapping, IsLatin1UnitByUnit) {
    std::vector<unsigned short> units(0x10000);
    std::iota(units.begin(), units.end(), static_cast<unsigned short>(0));
    const std::vector<char> bytes(units.begin(), units.begin() + 0x100);
    const astring narrow = AstringAdapter(units.data(), 0x10000);
    const ustring wide = UstringAdapter(bytes.data(), 0x100);
    for (unsigned int u = 0; u != 0x10000; ++u) {
        const unsigned char one = AstringAdapter::Convert(units[u]), among_all = narrow[u];
        ASSERT_TRUE(one == (u < 0x100 ? u : '?') && among_all == one) << u;
        ASSERT_TRUE(u >= 0x100 || (UstringAdapter::Convert(bytes[u]) == u && wide[u] == u)) << u;
    }
}

/// Every form in which an adapter A copies text of T, each at the end of memory.
template <class A, class S, class T>
void copies_every_form(Dice& below, unsigned int n) {
    using Range = KordCharacterRange<T>;
    using Char = typename S::value_type;
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
    // clang-format off
    const A forms[] = {
        A(text, n), A(text, std::size_t{n}), A(range), A(Literal<T>(text, n)), A(measured),
        A(static_cast<const T*>(zero_ended)), A(Literal<T>(zero_ended)),
    };
    // clang-format on
    for (const A& a : forms) {
        std::u32string expected = codes(&a - forms < 4 ? range : measured);
        for (char32_t& u : expected) u = sizeof(Char) == 1 && u > 0xFF ? '?' : u;
        const S s = a;
        ASSERT_EQ(codes(s), expected) << n << " form " << &a - forms;
        ASSERT_EQ(holders(s), 2u); // the adapter and s
        ASSERT_EQ(s.capacity(), Model<Char>::capacity_for(n));
        ASSERT_EQ(codes(KordCharacterRange<Char>(a.c_str(), 0, n + 1)), expected + U'\0');
    }
}

TYPED_TEST(Adapter, CopiesOrConvertsEveryFormOfEveryLength) {
    Dice below(1);
    for (unsigned int n = 0; n != 280 && !this->HasFatalFailure(); n += n < 140 ? 1 : 7) {
        copies_every_form<AdapterTo<TypeParam>, String<TypeParam>, TypeParam>(below, n);
        copies_every_form<AdapterTo<TypeParam>, String<TypeParam>, OtherWidth<TypeParam>>(below, n);
    }
}

TYPED_TEST(Adapter, SharesBlocksAndReleasesThem) {
    using A = AdapterTo<TypeParam>;
    const String<TypeParam> s = make<TypeParam>("hello"), t = make<TypeParam>("other");
    {
        const A a(s), copy(a), part(block_of(s), block_of(s)->first() + 2, 3u);
        const String<TypeParam> back = copy;
        EXPECT_EQ(holders(s), 5u);
        EXPECT_EQ(A(static_cast<const BasicString<TypeParam>&>(s)).c_str(), s.data());
        EXPECT_TRUE(copy.c_str() == s.data() && back.cbegin() == s.cbegin() && back.cend() == s.cend());
        EXPECT_TRUE(part.c_str() == s.data() + 2 && held(part).length() == 3);
    }
    EXPECT_EQ(holders(s), 1u);
    EXPECT_NE(A(static_cast<const KordCharacterRange<TypeParam>&>(s)).c_str(), s.data()); // a range is copied
    A a(s.substr(1, 3)), only(Units<OtherWidth<TypeParam>>("converted"));
    EXPECT_EQ(holders(s), 2u);
    EXPECT_EQ(show(KordCharacterRange<TypeParam>(a.c_str())), "ell"); // moves: an 'o' follows the piece
    EXPECT_TRUE(holders(s) == 1 && show(s) == "hello");
    a = A(s);
    EXPECT_TRUE(&(a = *&a) == &a && holders(s) == 2 && a.c_str() == s.data());
    a = A(t);
    EXPECT_TRUE(holders(s) == 1 && holders(t) == 2);
    a = only = *&only;
    a = A(nullptr);
    EXPECT_TRUE(holders(t) == 1 && block_of<TypeParam>(held(a)) == nullptr);
    EXPECT_EQ(show<TypeParam>(held(only)), "converted");
    EXPECT_EQ(holders(static_cast<String<TypeParam>>(only)), 2u);
}

TYPED_TEST(Adapter, OnlyNullMakesNoBlock) {
    using A = AdapterTo<TypeParam>;
    using U = OtherWidth<TypeParam>;
    TypeParam foreign[] = {'a', 'b', 0};
    const A view(nullptr, foreign, 2u);
    EXPECT_TRUE(block_of<TypeParam>(held(view)) == nullptr && view.c_str() == foreign);
    const Units<TypeParam> own("");
    const Units<U> other("");
    const TypeParam *const zero = own, *const null = nullptr;
    const U *const zero_other = other, *const null_other = nullptr;
    // clang-format off
    const A nulls[] = {
        A(nullptr), A(nullptr, 3), A(null), A(null, 3u), A(null, 0x200000), A(null_other), A(null_other, 3u),
        A(null_other, 0), A(null_other, 0x200000u),
        A(nullptr, nullptr, 0), A(Literal<TypeParam>()), A(KordCharacterRange<TypeParam>()), A(String<TypeParam>()),
    };
    const A empties[] = {
        A(make<TypeParam>("x").erase()), A(zero), A(zero, 0), A(zero_other), A(zero_other, 0),
        A(KordCharacterRange<U>()), A(Literal<U>()), A(String<U>()),
        A(KordCharacterRange<TypeParam>(zero)), A(String<TypeParam>(zero)),
    };
    // clang-format on
    for (const A& a : nulls) {
        EXPECT_TRUE(block_of<TypeParam>(held(a)) == nullptr && held(a).empty()) << &a - nulls;
        EXPECT_EQ(a.c_str(), String<TypeParam>().c_str()) << &a - nulls;
    }
    for (const A& a : empties)
        EXPECT_TRUE(block_of<TypeParam>(held(a)) != nullptr && held(a).empty() && *a.c_str() == 0) << &a - empties;
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

TYPED_TEST(Adapter, RefusesMoreThanTheLimit) {
    using A = AdapterTo<TypeParam>;
    const auto check = []<class T>(T) {
        const unsigned int limit = 0x100000;
        std::vector<T> units(limit + 2, 'x');
        units.back() = 0;
        const T* const text = units.data();
        EXPECT_THROW(A{text}, os_length_error);
        EXPECT_THROW(A{KordCharacterRange<T>(text)}, os_length_error);
        for (const unsigned int n : {limit + 1, 0xFFFFFFFF}) EXPECT_THROW(A(text, n), os_length_error);
        for (const long long n : {-1ll, 0x100000001ll}) EXPECT_THROW(A(text, n), os_length_error);
        for (const A& a : {A(text + 1), A(text, limit)}) EXPECT_EQ(held(a).length(), limit);
    };
    check(TypeParam{});
    check(OtherWidth<TypeParam>{});
}

} // namespace
