// Calls of `format` as they are written: which of them compile, and what the numbers count as.
#include "support/text.h"

#include <climits>
#include <cstddef>

namespace {

enum Colour { red, green };
enum Huge : unsigned long long { huge = 7 };
enum class Scoped { one };

constexpr bool long_long = sizeof(long) == sizeof(long long); // does a `long` hold every `long long`?

// clang-format off
template <class S, class... A> concept Formats = requires(S s, const KordCharacterRange<typename S::value_type>& tmpl,
A... a) { s.format(tmpl, a...); };
template <class S, class A> concept FormatsAlone = requires(S s, A a) { s.format(a); };

/// How many of the types compile as the last argument, behind one of another type, and alone.
template <class S, class... A> constexpr int last = (0 + ... + Formats<S, A>);
template <class S, class First, class... A> constexpr int second = (0 + ... + Formats<S, First, A>);
template <class S, class... A> constexpr int alone = (0 + ... + FormatsAlone<S, A>);

template <class T>
class FormatOverloads : public ::testing::Test {};
TYPED_TEST_SUITE(FormatOverloads, Widths);

TYPED_TEST(FormatOverloads, CompileWhereAnArgumentHoldsEveryValue) {
    using S = String<TypeParam>;
    using Text = const TypeParam*;
    using U = unsigned int;
    using Long = unsigned long;
    using LongLong = unsigned long long;
    static_assert(last<S, int, U, short, bool, float, long, Long, double, signed char, unsigned char, char, Colour,
    std::size_t, std::ptrdiff_t, TypeParam, S, Literal<TypeParam>> == 17);
    static_assert(last<S, long long, LongLong, Huge> == 3 * long_long && last<S, long double, Scoped, void*, char32_t,
    int*> == 0);
    static_assert(Formats<S, char16_t> == (sizeof(TypeParam) == 2) && Formats<S,
    wchar_t> == (sizeof(TypeParam) == sizeof(wchar_t)) && !Formats<S>);
    static_assert(second<S, Text, int, short, bool, float, long, Colour> == 6 && second<S, S, double,
    Literal<TypeParam>> == 2 && second<S, Text, U, long long> == 2 * long_long);
    static_assert(second<S, Text, Long, LongLong, std::size_t, long double, char, Scoped> == 0);
    static_assert(second<S, int, int, double> == 2 && second<S, double, float, int, bool> == 3 && Formats<S, long,
    float> && Formats<S, Colour, bool> && Formats<S, short, long> && Formats<S, float, U>);
    static_assert(second<S, double, long, Long> == 2 * !long_long && Formats<S, U, int> == long_long && Formats<S, int,
    U> == long_long && Formats<S, long long, double> == long_long);
    static_assert(second<S, int, Long, Text, char> == 0 && second<S, Long, int, double> == 0 && second<S, double,
    long long, long double, Text> == 0 && second<S, char, int, double, char, Text> == 0 && !Formats<S, long double,
    int>);
    static_assert(!Formats<S, int, int, int> && !Formats<S, Text, Text, Text> && !Formats<S, Text, int, int>);
    static_assert(alone<S, int, U, short, float, std::size_t, Colour> == 6 && FormatsAlone<S,
    LongLong> == long_long && alone<S, char, long double, Text, S, Scoped, std::nullptr_t> == 0);
    static_assert(!requires(S s) { s.format(0, 0); } && !requires(S s) { s.format(0, 1, 2);
    } && !requires(S s, Text t) { s.format(t, 0, t); } && !requires(S s, Text t) { s.format(0, t); });

    const auto characters = [](auto c) { return codes(String<TypeParam>().format(make<TypeParam>("%c"), c)); };
    EXPECT_EQ(characters(TypeParam{'x'}) + characters('y') + characters('\xE9'), U"xy\xE9");
    if constexpr (sizeof(TypeParam) == 2) { EXPECT_EQ(characters(u'\x20AC'), U"\x20AC"); }
}

std::string shown(const BasicString<char>& s) {
    return s.data() == nullptr ? "refused" : show(s);
}
template <class... A>
std::string with(A... a) {
    return shown(astring().format(a...));
}

TEST(FormatArguments, MeanWhatTheySay) {
    const astring name("n");
    const short s = -3;
    const auto f = [] { return astring(); };
    const std::string rows[][2] = {
        {with("%u", 7u), "7"}, {with("%d", 7u), "refused"}, {with("%u", 7), "refused"}, {with("%f", 7), "refused"},
        {with("%d", s), "-3"}, {with("%d", static_cast<unsigned char>(200)), "200"}, {with("%d", true), "1"},
        {with("%d", green), "1"}, {with("%u", UINT_MAX), "4294967295"}, {with("%x", std::size_t{255}), "ff"},
        {with("%f", 2.5f), "2.500000"}, {with("%c", 'x'), "x"}, {with("%d", 'x'), "refused"},
        {with("%d/%d", s, true), "-3/1"}, {with("%d of %f", 3, 0.5f), "3 of 0.500000"},
        {with("%f %f", 0.5f, 3u), "0.500000 3.000000"}, {with("%f %d", 0.5, 3), "refused"},
        {with("%s=%d", name, 3), "n=3"}, {with("%s=%d", "n", green), "n=1"}, {with("%s=%f", "n", 2.5f), "n=2.500000"},
        {with("%s=%s", aliteral("n"), name), "n=n"}, {with("%s", "text"), "text"}, {with("%s", nullptr), ""},
        {with("%s%s", "a", nullptr), "a"}, {with(7), "+7"}, {with(7u), "7"}, {with(s), "-3"}, {with(true), "+1"},
        {with(green), "+1"}, {with(2.5f), "2.5"}, {with(std::size_t{7}), "7"},
        // A literal zero is a number in every place.
        {shown(f().format(0)), "+0"}, {shown(f().format("%d", 0)), "0"}, {shown(f().format("%s", 0)), "refused"},
        {shown(f().format("%s=%s", "n", 0)), "refused"}, {shown(f().format("%d %d", 0, 0)), "0 0"},
        {shown(f().format("%d %f", 0, 0.5)), "0 0.500000"}, {shown(f().format("%f %f", 0.5, 0)), "0.500000 0.000000"},
        {shown(f().format("%s=%d", "n", 0)), "n=0"}, {shown(f().format("%u", 0ul)), "0"},
        {std::string(kordSignatureD) + kordSignatureU + kordSignatureF + kordSignatureC + kordSignatureS +
         kordSignatureDD + kordSignatureDF + kordSignatureFF + kordSignatureSD + kordSignatureSF + kordSignatureSS,
         "dufcsdddfffsdsfss"},
    };
    for (const auto& row : rows) EXPECT_EQ(row[0], row[1]) << "row " << &row - rows;
    if constexpr (long_long) {
        EXPECT_EQ(with("%d", LLONG_MIN) + with("%s%d", "n", UINT_MAX), "-9223372036854775808n4294967295");
        EXPECT_EQ(with("%d %d", 1u, LLONG_MAX) + with("%u", huge), "1 92233720368547758077");
    }
}
// clang-format on

} // namespace
