// Typed templates: the documented examples, and any template with any arguments against the rules told plainly.
#include "support/format_model.h"
#include "support/model.h"
#include "support/text.h"

#include <kord/real.h>

#include <climits>
#include <clocale>
#include <list>

namespace {

using Value = FormatModel::Value;
using std::string_view_literals::operator""sv;

/// What a `format` member does, beside the model: text, block, capacity, and what becomes of a copy.
template <class T>
void check(const std::u32string& text, const std::vector<Value>& values, bool pointer = false) {
    const FormatModel model(text, values);
    std::list<std::vector<T>> kept; // texts of their own, so that no character behind one is read unnoticed
    const auto lend = [&kept](const auto& value) {
        if constexpr (requires { value.size(); }) {
            return range_of(kept.emplace_back(exactly<T>(value)));
        } else if constexpr (std::is_same_v<decltype(value), const char32_t&>) {
            return static_cast<T>(value);
        } else {
            return value;
        }
    };
    const KordCharacterRange<T> tmpl = lend(text);
    String<T> s = make<T>("before");
    const String<T> copy = s;
    const auto call = [&](const auto&... a) {
        if constexpr (requires { s.format(tmpl, lend(a)...); }) s.format(tmpl, lend(a)...);
    };
    try {
        if (pointer) {
            s.format(tmpl, lend(std::get<std::u32string>(values[0]) + U'\0').begin());
        } else if (values.size() == 1) {
            std::visit(call, values[0]);
        } else {
            std::visit(call, values[0], values[1]);
        }
        ASSERT_FALSE(model.too_long) << show(tmpl);
        ASSERT_EQ(codes(s), model.refused ? U"" : model.text) << show(tmpl);
        ASSERT_EQ(holders(s), model.refused ? 0u : 1u) << show(tmpl);
        ASSERT_EQ(s.capacity(), model.refused ? 0 : Model<T>::capacity_for(model.estimate)) << show(tmpl);
        ASSERT_TRUE(model.refused ? s.data() == nullptr : *s.cend() == 0) << show(tmpl);
    } catch (const os_length_error&) {
        ASSERT_TRUE(model.too_long && s.data() == copy.data() && s.length() == 6) << show(tmpl);
    }
    ASSERT_TRUE(show(copy) == "before" && holders(copy) == (model.too_long ? 2 : 1)) << show(tmpl);
}

std::u32string wide(std::string_view text) {
    return {text.begin(), text.end()};
}

template <class T>
class Format : public ::testing::Test {};
TYPED_TEST_SUITE(Format, Widths);

const char* const refused = nullptr;
const char* const too_long = "too long";

// clang-format off
TYPED_TEST(Format, WritesWhatThePlaceholdersSay) {
    const Value a = U"a", abc = U"abc", ff = 255UL, text(std::in_place_type<std::u32string>, 0x90000, U'x');
    const struct { std::string_view tmpl; std::vector<Value> values; const char* text; } rows[] = {
        {"%+d", {0L}, "+0"}, {"% d", {42L}, " 42"}, {"%-5d", {42L}, "42   "}, {"%05d", {-42L}, "-0042"},
        {"%d", {-2147483647L - 1}, "-2147483648"}, {"%.3d", {5L}, "5"}, {"%hhlLd", {7L}, "7"}, {"%+u", {7UL}, "7"},
        {"%X", {ff}, "FF"}, {"%#06x", {ff}, "0x00ff"}, {"%03c", {U'-'}, "-00"}, {"%.2s", {abc}, "ab"},
        {"%05s", {U"-a"}, "-000a"}, {"%f", {2.5}, "2.500000"}, {"%.2f", {2.675}, "2.68"}, {"%f", {1e9}, "1000000000"},
        {"%f", {-0.0}, "0.000000"}, {"% 06.1f", {1.5}, " 001.5"}, {"%.4294967295f", {2.5}, "2.500000"},
        {"%%%d%5%", {5L}, "%5%"}, {"%d%-9", {5L}, "5"}, {"%d%\0%d, rest"sv, {5L}, "5"},
        {"%s=%f", {a, 2.5}, "a=2.500000"}, {"%4294967295%%d", {7L}, "%7"}, {"%d%4294967295", {7L}, "7"},
        {"dd", {5L}, refused}, {"%d %d", {5L}, refused}, {"%d", {1L, 2L}, refused}, {"%d", {5UL}, refused},
        {"%e", {5.0}, refused}, {"%99999999999d", {5L}, refused}, {"%.99999999999d", {5L}, refused},
        {"%*d", {5L}, refused}, {"%*%%d", {5L}, refused}, {"%4294967295d%d", {7L}, refused},
        {"%1048577d", {7L}, too_long}, {"a%1048576d", {7L}, too_long}, {"%-4294967295x", {7UL}, too_long},
        {"%4294967295d%4294967295d", {7L, 7L}, too_long}, {"%2147483648d%2147483648d", {7L, 7L}, too_long},
        {"%.1048564f", {0.5}, too_long}, {"%.1048563f", {0.5}, "0.5"}, {"%.4294967283f", {0.5}, too_long},
        {"%1048576s", {a}, too_long}, {"%.1s%.1s", {text, text}, too_long}, {"%.1s%d", {text, 7L}, "x7"},
    };
    for (const auto& row : rows) {
        const FormatModel model(wide(row.tmpl), row.values);
        ASSERT_TRUE(model.refused == (row.text == refused) && model.too_long == (row.text == too_long)) << row.tmpl;
        // the model is right,
        ASSERT_TRUE(model.refused || model.too_long || model.text == wide(row.text)) << row.tmpl;
        check<TypeParam>(wide(row.tmpl), row.values); // and so is the library
        if (this->HasFatalFailure()) return;
    }
    check<TypeParam>(U"%1048576d", {7L});
    check<TypeParam>(U"%1048575s", {a});
    String<TypeParam> s = make<TypeParam>("%.0s%.0s");
    const KordCharacterRange<TypeParam> endless(s.data(), 0, 0xFFFFFFFE), two(s.data(), 0, 2);
    EXPECT_THROW(s.format(s, endless, two), os_length_error); // 2^32 together
    EXPECT_EQ(show(s), "%.0s%.0s");
}
// clang-format on

/// Values at the edges of their types, and texts that begin like numbers.
Value any_value(Dice& below, char kind, char32_t most) {
    const unsigned long edges[] = {0, 1, ULONG_MAX, LONG_MAX, 1ul + LONG_MAX, 9, 10, 0xFFFFFFFF, 0x80000000};
    const unsigned int shift = below(sizeof(unsigned long) * 8);
    const unsigned long number = below(3) == 0 ? below.pick(edges) : static_cast<unsigned long>(below.bits()) >> shift;
    std::u32string text;
    for (unsigned int n = below(9) == 0 ? below(200) : below(7); n != 0; --n)
        text += most & below.pick(U"+- a0%\0\xE9\x12B"sv);
    switch (kind) {
    case 'd': return static_cast<long>(number);
    case 'u': return number;
    case 'f': return any_real(below);
    case 'c': return static_cast<char32_t>(most & below.pick(U"x+- 0%\xE9\x12B"sv));
    case 'p': return text.c_str(); // ends at its first zero
    default: return text;
    }
}

std::u32string any_placeholder(Dice& below, std::u32string_view conversions) {
    const auto number = [&below] {
        const char* const far[] = {"4294967295", "4294967296", "99999999999", "2000000"};
        return wide(below(60) == 0 ? below.pick(far) : std::to_string(below(below(12) == 0 ? 300 : 13)));
    };
    std::u32string out = U"%";
    while (below(2) == 0) out += below.pick(U" #+-0"sv);
    if (below(2) == 0) out += number();
    if (below(80) == 0) out += '*';
    if (below(2) == 0) out += below(5) == 0 ? U"." : U'.' + number();
    if (below(80) == 0) out += '*';
    while (below(4) == 0) out += below.pick(U"hlL"sv);
    if (below(30) == 0) conversions = U"diuxXcfsegopDF 5.\0\x80\xE4\x164\x173"sv;
    return below(40) == 0 ? out : out += below.pick(conversions);
}

std::u32string any_template(Dice& below, const std::vector<Value>& values) {
    std::u32string out;
    for (auto value = values.begin();;) {
        while (below(3) != 0) out += below.pick(U"ab +-05.\\\0\xA5\x125\x164"sv);
        if (below(6) == 0) {
            out += any_placeholder(below, U"%");
        } else if (value == values.end()) {
            return below(12) != 0 ? out : out + any_placeholder(below, U"\0di"sv);
        } else {
            out += any_placeholder(below, FormatModel::conversions[value->index()]);
            if (below(25) != 0) ++value;
        }
    }
}

TYPED_TEST(Format, AnyTemplateWithAnyArgumentsFollowsTheRules) {
    Dice below(7);
    const std::string_view signatures[] = {"d", "u", "f", "c", "s", "p", "dd", "df", "ff", "sd", "sf", "ss"};
    const char32_t most = sizeof(TypeParam) == 1 ? 0xFF : 0xFFFF;
    unsigned int rendered = 0;
    for (unsigned int round = 0; round != 30000 && !this->HasFatalFailure(); ++round) {
        const std::string_view signature = signatures[round % 12];
        std::vector<Value> values;
        for (const char kind : signature) values.push_back(any_value(below, kind, most));
        std::u32string tmpl = any_template(below, values);
        for (char32_t& c : tmpl) c &= most;
        check<TypeParam>(tmpl, values, signature == "p");
        rendered += !FormatModel(tmpl, values).refused;
    }
    EXPECT_GT(rendered, 15000u); // or the rules are hardly tried
}

TYPED_TEST(Format, TemplateAndTextsMayLieInTheString) {
    using R = KordCharacterRange<TypeParam>;
    String<TypeParam> s = make<TypeParam>("n=%d"), copy = s;
    EXPECT_EQ(show(s.format(s, 5L)) + show(copy), "n=5n=%d");
    s = make<TypeParam>("%s|%4s");
    EXPECT_EQ(show(s.format(s, s, s)), "%s|%4s|%s|%4s");
    s = make<TypeParam>("%s-%s.abc");
    EXPECT_EQ(show(s.format(R(s, 0, 6), R(s, 6), R(s, 7, 2))), "abc-bc.");
    s = make<TypeParam>("%s!%%");
    EXPECT_EQ(show(s.format(s, s.c_str())), "%s!%%!%");
    EXPECT_EQ(&s.format(make<TypeParam>("[%5s]"), static_cast<const TypeParam*>(nullptr)), &s);
    EXPECT_EQ(show(s), "[     ]");
}

TYPED_TEST(Format, NumbersAloneAreWrittenIntoTheStringsOwnBlock) {
    const Units<TypeParam> literal("literal");
    const String<TypeParam> before(100, 'x');
    const auto number = [&](auto n, const std::u32string& text, unsigned int room) {
        String<TypeParam> fresh, shared = before, foreign, piece(before, 3, 5), own(100, 'x');
        foreign.assign_literal(literal);
        const auto* const block = block_of(own);
        for (auto* const t : {&fresh, &shared, &foreign, &piece, &own}) {
            EXPECT_EQ(&t->format(n), t);
            EXPECT_EQ(codes(*t), text);
            EXPECT_TRUE(*t->cend() == 0 && holders(*t) == 1);
        }
        EXPECT_TRUE(block_of(own) == block && own.capacity() == before.capacity());
        for (auto* const t : {&fresh, &foreign}) EXPECT_EQ(t->capacity(), Model<TypeParam>::capacity_for(room));
    };
    const unsigned int room = sizeof(long) == 8 ? 20 : 16;
    Dice below(8);
    for (int round = 0; round != 2000 && !this->HasFailure(); ++round) {
        const Value n = any_value(below, 'd', 0), u = any_value(below, 'u', 0);
        const double x = any_real(below);
        const std::string text = real_model(x, -1, false);
        number(std::get<long>(n), FormatModel(U"%+d", {n}).text, room);
        number(std::get<unsigned long>(u), FormatModel(U"%u", {u}).text, room);
        number(x, wide(text.substr(text[0] == '+')), 32);
    }
    EXPECT_EQ(show(before), std::string(100, 'x'));
}

TEST(FormatLocale, TheDecimalPointIsNoMatterOfTheLocale) {
    for (const char* const name : {"de_DE.UTF-8", "fr_FR.UTF-8", "nl_NL.UTF-8", "ru_RU.UTF-8", "German", "French"}) {
        if (std::setlocale(LC_ALL, name) == nullptr) continue;
        std::string text = show(astring().format("%.1f", 2.5)) + show(astring().format(0.5));
        char buffer[32];
        text += KordFromReal(1e20, buffer, 2, true, true, true);
        std::setlocale(LC_ALL, "C");
        EXPECT_EQ(text, "2.50.5+1e+20") << name;
    }
}

} // namespace
