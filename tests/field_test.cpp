// A number that would not fit into what was reserved is left out whole, which no template can bring about. Hexadecimal
// ones are written by eight characters at least.
#include "format/field.h"
#include "support/guard.h"
#include "support/text.h"

#include <limits>
#include <type_traits>

namespace {

template <class T>
class Field : public ::testing::Test {};
TYPED_TEST_SUITE(Field, Widths);

TYPED_TEST(Field, ANumberIsWrittenWholeOrNotAtAll) {
    using Out = kord::Output<TypeParam>;
    const std::pair<std::string, void (*)(Out&)> rows[] = {
        {"7", [](Out& out) { out.put_decimal('\0', 7UL); }},
        {"-2147483648", [](Out& out) { out.put_decimal('+', -2147483647L - 1); }},
        {"4294967295", [](Out& out) { out.put_decimal('\0', 4294967295UL); }},
        {"ffffffff", [](Out& out) { out.put_hexadecimal(4294967295UL, 0, kordDigits[0]); }},
        {"f", [](Out& out) { out.put_hexadecimal(15, 0, kordDigits[0]); }},
        {"-0.3333333333333333", [](Out& out) { out.put_real(-1.0 / 3, -1, false); }},
    };
    for (const auto& [text, put] : rows) {
        for (unsigned int room = 0; room != 36; ++room) {
            const GuardedText<TypeParam> buffer(room, false);
            Out output(buffer.data(), room);
            put(output);
            const auto written = static_cast<unsigned int>(output.at - buffer.data());
            const bool fits = room >= (text == "f" ? 8 : text.size());
            EXPECT_EQ(show(KordCharacterRange<TypeParam>(buffer.data(), 0, written)), fits ? text : "");
        }
    }
}

/// What putting `number` with a plus writes into so much room.
template <class T, class Number>
std::string put(unsigned int room, Number number) {
    const GuardedText<T> buffer(room, false);
    kord::Output<T> output(buffer.data(), room);
    output.put_decimal(std::is_signed_v<Number> ? '+' : '\0', number);
    return show(KordCharacterRange<T>(buffer.data(), 0, static_cast<unsigned int>(output.at - buffer.data())));
}

TYPED_TEST(Field, DecimalsOfEveryLengthAreRight) {
    constexpr unsigned long most = std::numeric_limits<unsigned long>::max();
    for (unsigned long step = 1;; step *= 10) {
        for (const unsigned long n : {step - 1, step, step + 1, 9 * (step / 9), most / step}) {
            const std::string digits = std::to_string(n);
            const auto length = static_cast<unsigned int>(digits.size());
            const auto number = static_cast<long>(n);
            const std::string text = (number < 0 ? "" : "+") + std::to_string(number);
            for (const unsigned int room : {0u, 1u, 30u}) {
                EXPECT_EQ(put<TypeParam>(length + room, n), digits);
                EXPECT_EQ(put<TypeParam>(static_cast<unsigned int>(text.size()) + room, number), text);
            }
            EXPECT_EQ(put<TypeParam>(length - 1, n), "");
        }
        if (step > most / 10) break;
    }
}

} // namespace
