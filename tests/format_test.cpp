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

/// Turns values into arguments: texts into ranges over exactly their characters.
template <class T>
class Lender {
  public:
    template <class N>
    N operator()(N n) {
        return n;
    }
    T operator()(char32_t c) { return static_cast<T>(c); }
    KordCharacterRange<T> operator()(const std::u32string& text) {
        const std::vector<T>& units = kept_.emplace_back(text.begin(), text.end());
        return KordCharacterRange<T>(units.data(), 0, static_cast<unsigned int>(units.size()));
    }
    const T* pointer(const std::u32string& text) {
        std::vector<T>& units = kept_.emplace_back(text.begin(), text.end());
        units.push_back(0);
        return units.data();
    }

  private:
    std::list<std::vector<T>> kept_;
};

/// What a `format` member does, beside the model: text, block, capacity, and what becomes of a copy.
template <class T>
void check(const std::u32string& text, const std::vector<Value>& values, bool pointer = false) {
    const FormatModel model(text, values);
    Lender<T> lend;
    const KordCharacterRange<T> tmpl = lend(text);
    String<T> s = make<T>("before");
    const String<T> copy = s;
    bool thrown = false;
    try {
        if (pointer) {
            s.format(tmpl, lend.pointer(std::get<std::u32string>(values[0])));
        } else if (values.size() == 1) {
            std::visit([&](const auto& a) { s.format(tmpl, lend(a)); }, values[0]);
        } else {
            const auto call = [&](const auto& a, const auto& b) {
                if constexpr (requires { s.format(tmpl, lend(a), lend(b)); }) s.format(tmpl, lend(a), lend(b));
            };
            std::visit(call, values[0], values[1]);
        }
    } catch (const os_length_error&) {
        thrown = true;
    }
    ASSERT_EQ(thrown, model.too_long) << show(tmpl);
    ASSERT_EQ(show(copy), "before") << show(tmpl);
    ASSERT_EQ(holders(copy), thrown ? 2u : 1u) << show(tmpl);
    if (thrown) {
        ASSERT_EQ(s.data(), copy.data()) << show(tmpl);
        ASSERT_EQ(s.length(), 6u) << show(tmpl);
    } else if (model.refused) {
        ASSERT_EQ(s.data(), nullptr) << show(tmpl) << " gave " << show(s);
        ASSERT_EQ(block_of(s), nullptr) << show(tmpl);
    } else {
        ASSERT_EQ(codes(s), model.text) << show(tmpl) << " gave " << show(s);
        ASSERT_EQ(s.capacity(), Model<T>::capacity_for(model.estimate)) << show(tmpl);
        ASSERT_EQ(holders(s), 1u) << show(tmpl);
        ASSERT_EQ(*s.cend(), 0) << show(tmpl);
    }
}

std::u32string wide(std::string_view text) {
    return {text.begin(), text.end()};
}

template <class T>
class Format : public ::testing::Test {};
TYPED_TEST_SUITE(Format, Widths);

const char* const refused = nullptr;

// clang-format off
TYPED_TEST(Format, WritesWhatThePlaceholdersSay) {
    const Value abc = U"abc", a = U"a", b = U"b", none = U"", minus = U"-a", blank = U" a", x = U'x';
    const unsigned long ff = 255;
    struct Row { std::string_view tmpl; std::vector<Value> values; const char* text; };
    const Row rows[] = {
        {"%d", {42L}, "42"}, {"%+d", {42L}, "+42"}, {"%+d", {0L}, "+0"}, {"% d", {42L}, " 42"}, {"% d", {-42L}, "-42"}, {"%+ d", {42L}, "+42"}, {"%i", {-7L}, "-7"},
        {"%5d", {42L}, "   42"}, {"%-5d", {42L}, "42   "}, {"%05d", {42L}, "00042"}, {"%05d", {-42L}, "-0042"}, {"%+05d", {42L}, "+0042"}, {"% 05d", {42L}, " 0042"}, {"%-05d", {42L}, "42   "},
        {"%d", {-2147483647L - 1}, "-2147483648"}, {"%u", {4294967295UL}, "4294967295"}, {"%.3d", {5L}, "5"}, {"%ld %hd", {7L, 7L}, "7 7"}, {"%Ld", {7L}, "7"}, {"%hhlLd", {7L}, "7"},
        {"%x", {ff}, "ff"}, {"%X", {ff}, "FF"}, {"%#x", {ff}, "0xff"}, {"%#X", {ff}, "0XFF"}, {"%#06x", {ff}, "0x00ff"}, {"%06x", {ff}, "0000ff"}, {"%#6x", {ff}, "  0xff"}, {"%#-6x|", {ff}, "0xff  |"}, {"%#x", {0UL}, "0x0"}, {"%+u", {7UL}, "7"}, {"% u", {7UL}, "7"},
        {"%c", {x}, "x"}, {"%3c", {x}, "  x"}, {"%03c", {U'-'}, "-00"}, {"%s", {abc}, "abc"}, {"%.2s", {abc}, "ab"}, {"%.s", {abc}, ""}, {"%5s", {abc}, "  abc"}, {"%-5s", {abc}, "abc  "}, {"%05s", {abc}, "00abc"},
        {"%05s", {minus}, "-000a"}, {"%05s", {blank}, "000 a"}, {"% 05s", {blank}, " 000a"}, {"% s", {abc}, "abc"}, {"%03s", {none}, "000"}, {"%s", {none}, ""}, {"%3s", {none}, "   "},
        {"%f", {2.5}, "2.500000"}, {"%.2f", {2.675}, "2.68"}, {"%.0f", {0.5}, "1"}, {"%.0f", {-2.5}, "-3"}, {"%+.1f", {2.25}, "+2.3"}, {"% f", {1.0}, " 1.000000"}, {"%f", {1e9}, "1000000000"}, {"%f", {1234567890.5}, "1234567890.5"}, {"%f", {-12345.678}, "-12345.678000"},
        {"%f", {-0.0}, "0.000000"}, {"% .16f", {-0.0}, " -0"}, {"% 06.1f", {1.5}, " 001.5"}, {"% f", {std::nan("")}, "nan"}, {"%+05f", {HUGE_VAL}, "+0inf"}, {"%.4294967295f", {2.5}, "2.500000"},
        {"%d%%", {5L}, "5%"}, {"%%%d%5%", {5L}, "%5%"}, {"%d50%", {5L}, "550"}, {"%d%-9", {5L}, "5"}, {"%s and %s", {a, b}, "a and b"}, {"%s=%f", {Value(U"x"), 2.5}, "x=2.500000"}, {"%d/%f", {3L, 0.5}, "3/0.500000"},
        {"%d%\0%d, rest"sv, {5L}, "5"}, {"%f%", {0.5}, "0.500000"}, {"%s %d|%%", {a, 5L}, "a 5|%"}, {"%f, %.1f", {1.0, 2.0}, "1.000000, 2.0"},
        {"", {5L}, refused}, {"text", {5L}, refused}, {"%d %d", {5L}, refused}, {"%d", {1L, 2L}, refused}, {"%d%%", {1L, 2L}, refused}, {"%s", {a, b}, refused}, {"%f/%d", {3L, 0.5}, refused},
        {"%d", {5.0}, refused}, {"%s", {5L}, refused}, {"%x", {5L}, refused}, {"%u", {5L}, refused}, {"%f", {5L}, refused}, {"%d", {5UL}, refused}, {"%c", {a}, refused}, {"%s", {x}, refused}, {"%e", {5.0}, refused}, {"%g", {5.0}, refused}, {"%o", {5UL}, refused}, {"%p", {5UL}, refused},
        {"%99999999999d", {5L}, refused}, {"%.99999999999d", {5L}, refused}, {"%*d", {5L}, refused}, {"%.*f", {5.0}, refused}, {"%d %*d", {5L, 5L}, refused}, {"%*%%d", {5L}, refused}, {"%d%.*", {5L}, refused}, {"%d%-*\0"sv, {5L}, refused},
    };
    for (const Row& row : rows) {
        const FormatModel model(wide(row.tmpl), row.values);
        ASSERT_EQ(model.refused, row.text == refused) << row.tmpl; // the model is right,
        ASSERT_TRUE(model.refused || model.text == wide(row.text)) << row.tmpl;
        check<TypeParam>(wide(row.tmpl), row.values); // and so is the library
        if (this->HasFatalFailure()) return;
    }
}
// clang-format on

/// Values at the edges of their types, and texts that begin like numbers.
Value any_value(Dice& below, char kind) {
    const unsigned long edges[] = {0, 1, ULONG_MAX, LONG_MAX, 1ul + LONG_MAX, 9, 10, 0xFFFFFFFF, 0x80000000};
    const unsigned long number = below(3) == 0
                                     ? below.pick(edges)
                                     : static_cast<unsigned long>(below.bits()) >> below(sizeof(unsigned long) * 8);
    std::u32string text;
    switch (kind) {
    case 'd': return static_cast<long>(number);
    case 'u': return number;
    case 'f': return any_real(below);
    case 'c': return below.pick(U"x+- 0%\xE9\x12B"sv);
    default:
        for (unsigned int n = below(9) == 0 ? below(200) : below(7); n != 0; --n)
            text += below.pick(U"+- a0%\0\xE9\x12B"sv);
        return text;
    }
}

std::u32string any_number(Dice& below) {
    const char* const far[] = {"4294967295", "4294967296", "99999999999", "2000000"};
    const unsigned int n = below(60);
    return wide(n == 0 ? below.pick(far) : std::to_string(n < 5 ? below(300) : below(13)));
}

std::u32string any_placeholder(Dice& below, std::u32string_view conversions) {
    std::u32string out = U"%";
    while (below(2) == 0) out += below.pick(U" #+-0"sv);
    if (below(2) == 0) out += any_number(below);
    if (below(80) == 0) out += '*';
    if (below(2) == 0) out += below(5) == 0 ? U"." : U"." + any_number(below);
    if (below(80) == 0) out += '*';
    while (below(4) == 0) out += below.pick(U"hlL"sv);
    return below(40) == 0
               ? out
               : out += below.pick(below(30) == 0 ? U"diuxXcfsegopDF 5.\0\x80\xE4\x164\x173"sv : conversions);
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
    const char* const signatures[] = {"d", "u", "f", "c", "s", "p", "dd", "df", "ff", "sd", "sf", "ss"};
    unsigned int rendered = 0;
    for (unsigned int round = 0; round != 30000; ++round) {
        const std::string signature = signatures[round % 12];
        const bool pointer = signature == "p";
        std::vector<Value> values;
        for (const char kind : signature) values.push_back(any_value(below, kind));
        std::u32string tmpl = any_template(below, values);
        const auto fit = [](std::u32string& text) {
            for (char32_t& c : text) c = static_cast<std::make_unsigned_t<TypeParam>>(c);
        };
        fit(tmpl);
        for (Value& value : values) {
            if (auto* const c = std::get_if<char32_t>(&value)) *c = static_cast<std::make_unsigned_t<TypeParam>>(*c);
            if (auto* const text = std::get_if<std::u32string>(&value)) fit(*text);
            if (pointer) value = std::get<std::u32string>(value).c_str(); // ends at its first zero
        }
        check<TypeParam>(tmpl, values, pointer);
        if (this->HasFatalFailure()) return;
        rendered += !FormatModel(tmpl, values).refused;
    }
    EXPECT_GT(rendered, 15000u); // or the rules are hardly tried
}

// clang-format off
TYPED_TEST(Format, RoomAboveTheLimitIsRefusedAndNothingChanges) {
    const Value x = U"x", text = std::u32string(0x90000, 'x');
    struct Row { const char* tmpl; std::vector<Value> values; bool too_long; };
    const Row rows[] = {
        {"%1048576d", {7L}, false}, {"%1048577d", {7L}, true}, {"a%1048576d", {7L}, true}, {"%2000000d", {7L}, true}, {"%-4294967295x", {7UL}, true}, {"%4294967295c", {U'c'}, true},
        {"%4294967295d%4294967295d", {7L, 7L}, true}, {"%2147483648d%2147483648d", {7L, 7L}, true}, {"%4294967295d%1d", {7L, 7L}, true},
        {"%.1048563f", {0.5}, false}, {"%.1048564f", {0.5}, true}, {"%.4294967294f", {0.5}, true}, {"%.4294967283f", {0.5}, true},
        {"%4294967295s", {x}, true}, {"%1048575s", {x}, false}, {"%1048576s", {x}, true}, {"%.1s%.1s", {text, text}, true}, {"%s%d", {text, 7L}, false},
        {"%4294967295%%d", {7L}, false}, {"%d%4294967295", {7L}, false}, {"%4294967295d%d", {7L}, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(FormatModel(wide(row.tmpl), row.values).too_long, row.too_long) << row.tmpl;
        check<TypeParam>(wide(row.tmpl), row.values);
        if (this->HasFatalFailure()) return;
    }
    String<TypeParam> s = make<TypeParam>("%.0s%.0s");
    const KordCharacterRange<TypeParam> endless(s.data(), 0, 0xFFFFFFFE), two(s.data(), 0, 2);
    EXPECT_THROW(s.format(s, endless, two), os_length_error); // 2^32 together
    EXPECT_EQ(show(s), "%.0s%.0s");
}
// clang-format on

TYPED_TEST(Format, TemplateAndTextsMayLieInTheString) {
    using R = KordCharacterRange<TypeParam>;
    String<TypeParam> s = make<TypeParam>("n=%d"), copy = s;
    EXPECT_EQ(show(s.format(s, 5L)) + show(copy), "n=5n=%d");
    s = make<TypeParam>("%s|%4s");
    EXPECT_EQ(show(s.format(s, s, s)), "%s|%4s|%s|%4s");
    s = make<TypeParam>("%s-abc");
    EXPECT_EQ(show(s.format(s.substr(0, 3), s.substr(3))), "abc-");
    s = make<TypeParam>("%s-%s.abc");
    EXPECT_EQ(show(s.format(R(s, 0, 6), R(s, 6), R(s, 7, 2))), "abc-bc.");
    s = make<TypeParam>("%s!%%");
    EXPECT_EQ(show(s.format(s, s.c_str())), "%s!%%!%");
    const BasicString<TypeParam>& self = s.format(make<TypeParam>("[%5s]"), static_cast<const TypeParam*>(nullptr));
    EXPECT_EQ(&self, &s);
    EXPECT_EQ(show(s), "[     ]");
}

TYPED_TEST(Format, NumbersAloneAreWrittenIntoTheStringsOwnBlock) {
    const auto number = [](auto n, const std::u32string& text, unsigned int room) {
        const Units<TypeParam> literal("literal");
        const String<TypeParam> before(100, 'x');
        String<TypeParam> fresh, shared = before, foreign, piece(before, 3, 5), s(100, 'x');
        foreign.assign_literal(literal);
        const auto* const block = block_of(s);
        const unsigned int kept = s.capacity();
        for (auto* const t : {&fresh, &shared, &foreign, &piece, &s}) {
            EXPECT_EQ(&t->format(n), t);
            EXPECT_EQ(codes(*t), text);
            EXPECT_EQ(*t->cend(), 0);
            EXPECT_EQ(holders(*t), 1u);
        }
        EXPECT_EQ(block_of(s), block);
        EXPECT_EQ(s.capacity(), kept);
        EXPECT_EQ(fresh.capacity(), Model<TypeParam>::capacity_for(room));
        EXPECT_EQ(foreign.capacity(), fresh.capacity());
        EXPECT_EQ(codes(before) + codes(KordCharacterRange<TypeParam>(literal)), std::u32string(100, 'x') + U"literal");
    };
    const unsigned int room = sizeof(long) == 8 ? 20 : 16;
    number(42L, U"+42", room);
    number(0L, U"+0", room);
    number(-2147483647L - 1, U"-2147483648", room);
    number(0UL, U"0", room);
    number(4294967295UL, U"4294967295", room);
    number(1.0 / 3, U"0.3333333333333333", 32);
    number(2.0, U"2", 32);
    Dice below(8);
    for (int round = 0; round != 2000; ++round) {
        const Value n = any_value(below, 'd'), u = any_value(below, 'u');
        const double x = any_real(below);
        const std::string text = real_model(x, -1, false);
        number(std::get<long>(n), FormatModel(U"%+d", {n}).text, room);
        number(std::get<unsigned long>(u), FormatModel(U"%u", {u}).text, room);
        number(x, wide(text[0] == '+' ? text.substr(1) : text), 32);
        if (this->HasFailure()) return;
    }
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
