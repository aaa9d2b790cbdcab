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
template <class S, class... A> concept Formats =
    requires(S s, const KordCharacterRange<typename S::value_type>& tmpl, A... a) { s.format(tmpl, a...); };
template <class S, class A> concept FormatsAlone = requires(S s, A a) { s.format(a); };

template <class T>
class FormatOverloads : public ::testing::Test {};
TYPED_TEST_SUITE(FormatOverloads, Widths);

TYPED_TEST(FormatOverloads, CompileWhereAnArgumentHoldsEveryValue) {
    using S = String<TypeParam>;
    using Text = const TypeParam*;
    static_assert(Formats<S, int> && Formats<S, unsigned int> && Formats<S, short> && Formats<S, bool> && Formats<S, float> && Formats<S, long> && Formats<S, unsigned long> && Formats<S, double>);
    static_assert(Formats<S, signed char> && Formats<S, unsigned char> && Formats<S, Colour> && Formats<S, std::size_t> && Formats<S, std::ptrdiff_t> && Formats<S, TypeParam> && Formats<S, S> && Formats<S, Literal<TypeParam>>);
    static_assert(Formats<S, long long> == long_long && Formats<S, unsigned long long> == long_long && Formats<S, Huge> == long_long);
    static_assert(!Formats<S, long double> && !Formats<S, Scoped> && !Formats<S, void*> && !Formats<S, char32_t> && !Formats<S, int*>);
    static_assert(Formats<S, char> && Formats<S, char16_t> == (sizeof(TypeParam) == 2) && Formats<S, wchar_t> == (sizeof(TypeParam) == sizeof(wchar_t)));

    static_assert(Formats<S, Text, int> && Formats<S, Text, short> && Formats<S, Text, bool> && Formats<S, Text, float> && Formats<S, Text, long> && Formats<S, S, double> && Formats<S, Text, Colour> && Formats<S, S, Literal<TypeParam>>);
    static_assert(Formats<S, Text, unsigned int> == long_long && Formats<S, Text, long long> == long_long);
    static_assert(!Formats<S, Text, unsigned long> && !Formats<S, Text, unsigned long long> && !Formats<S, Text, std::size_t> && !Formats<S, Text, long double> && !Formats<S, Text, char> && !Formats<S, Text, Scoped>);

    static_assert(Formats<S, int, int> && Formats<S, int, double> && Formats<S, long, float> && Formats<S, double, float> && Formats<S, Colour, bool> && Formats<S, short, long>);
    static_assert(Formats<S, double, int> && Formats<S, float, unsigned int> && Formats<S, double, bool> && Formats<S, double, long> == !long_long && Formats<S, double, unsigned long> == !long_long);
    static_assert(Formats<S, unsigned int, int> == long_long && Formats<S, int, unsigned int> == long_long && Formats<S, long long, double> == long_long);
    static_assert(!Formats<S, unsigned long, int> && !Formats<S, int, unsigned long> && !Formats<S, unsigned long, double> && !Formats<S, double, long long> && !Formats<S, double, long double> && !Formats<S, long double, int>);
    static_assert(!Formats<S, int, Text> && !Formats<S, double, Text> && !Formats<S, int, char> && !Formats<S, char, int> && !Formats<S, char, double> && !Formats<S, char, char> && !Formats<S, char, Text>);
    static_assert(!Formats<S, int, int, int> && !Formats<S, Text, Text, Text> && !Formats<S, Text, int, int> && !Formats<S>);

    static_assert(FormatsAlone<S, int> && FormatsAlone<S, unsigned int> && FormatsAlone<S, short> && FormatsAlone<S, float> && FormatsAlone<S, std::size_t> && FormatsAlone<S, Colour> && FormatsAlone<S, unsigned long long> == long_long);
    static_assert(!FormatsAlone<S, char> && !FormatsAlone<S, long double> && !FormatsAlone<S, Text> && !FormatsAlone<S, S> && !FormatsAlone<S, Scoped> && !FormatsAlone<S, std::nullptr_t>);
    static_assert(!requires(S s) { s.format(0, 0); } && !requires(S s) { s.format(0, 1, 2); } && !requires(S s, Text t) { s.format(t, 0, t); } && !requires(S s, Text t) { s.format(0, t); });

    const auto characters = [](auto c) { return codes(String<TypeParam>().format(make<TypeParam>("%c"), c)); };
    EXPECT_EQ(characters(TypeParam{'x'}) + characters('y') + characters('\xE9'), U"xy\xE9");
    if constexpr (sizeof(TypeParam) == 2) { EXPECT_EQ(characters(u'\x20AC'), U"\x20AC"); }
}

/// The text, or that there is none.
std::string shown(const BasicString<char>& s) {
    return s.data() == nullptr ? "refused" : show(s);
}
template <class... A>
std::string with(const char* tmpl, A... a) {
    return shown(astring().format(tmpl, a...));
}

TEST(FormatArguments, MeanWhatTheySay) {
    const astring name("n");
    const short s = -3;
    const unsigned char u = 200;
    const std::string rows[][2] = {
        {with("%d", 7), "7"}, {with("%u", 7u), "7"}, {with("%d", 7u), "refused"}, {with("%u", 7), "refused"}, {with("%f", 7), "refused"}, {with("%d", s), "-3"}, {with("%d", u), "200"}, {with("%d", true), "1"}, {with("%d", green), "1"},
        {with("%d", INT_MIN), "-2147483648"}, {with("%u", UINT_MAX), "4294967295"}, {with("%x", std::size_t{255}), "ff"}, {with("%f", 2.5f), "2.500000"}, {with("%d", static_cast<signed char>(-1)), "-1"}, {with("%c", 'x'), "x"}, {with("%d", 'x'), "refused"},
        {with("%d/%d", 1, 2), "1/2"}, {with("%d/%d", s, true), "-3/1"}, {with("%d of %f", 3, 0.5), "3 of 0.500000"}, {with("%d of %f", 3, 0.5f), "3 of 0.500000"}, {with("%f %f", 0.5, 3), "0.500000 3.000000"}, {with("%f %f", 0.5f, 3u), "0.500000 3.000000"}, {with("%f %d", 0.5, 3), "refused"}, {with("%f %f", 1.5, INT_MIN), "1.500000 -2147483648"},
        {with("%s=%d", name, 3), "n=3"}, {with("%s=%d", "n", green), "n=1"}, {with("%s=%f", "n", 2.5f), "n=2.500000"}, {with("%s=%s", aliteral("n"), name), "n=n"}, {with("%s", "text"), "text"}, {with("%s", name), "n"}, {with("%s", nullptr), ""}, {with("%s%s", "a", nullptr), "a"},
        // A literal zero is a number in every place.
        {shown(astring().format(0)), "+0"}, {shown(astring().format("%d", 0)), "0"}, {shown(astring().format("%s", 0)), "refused"}, {shown(astring().format("%d %d", 0, 0)), "0 0"}, {shown(astring().format("%d %f", 0, 0.5)), "0 0.500000"}, {shown(astring().format("%f %f", 0.5, 0)), "0.500000 0.000000"},
        {shown(astring().format("%s=%d", "n", 0)), "n=0"}, {shown(astring().format("%s=%s", "n", 0)), "refused"}, {shown(astring().format("%u", 0u)), "0"}, {shown(astring().format("%u", 0ul)), "0"}, {shown(astring().format("%s %d", name, 0)), "n 0"},
        {shown(astring().format(7)), "+7"}, {shown(astring().format(7u)), "7"}, {shown(astring().format(s)), "-3"}, {shown(astring().format(true)), "+1"}, {shown(astring().format(green)), "+1"}, {shown(astring().format(2.5f)), "2.5"}, {shown(astring().format(std::size_t{7})), "7"},
        {shown(astring("%d").format("a%d", 1).append("!")), "a1!"}, {std::string(kordSignatureD) + kordSignatureU + kordSignatureF + kordSignatureC + kordSignatureS, "dufcs"},
        {std::string(kordSignatureDD) + kordSignatureDF + kordSignatureFF + kordSignatureSD + kordSignatureSF + kordSignatureSS, "dddfffsdsfss"},
    };
    for (const auto& row : rows) EXPECT_EQ(row[0], row[1]) << "row " << &row - rows;
    if constexpr (long_long) {
        EXPECT_EQ(with("%d", LLONG_MIN) + with("%x", ~0ull) + with("%s%d", "n", 4294967295u), "-9223372036854775808ffffffffffffffffn4294967295");
        EXPECT_EQ(with("%d %d", 1u, LLONG_MAX) + with("%u", huge), "1 92233720368547758077");
    }
}
// clang-format on

} // namespace
