// A number that would not fit into what was reserved is left out whole, which no template can bring about. What is
// written by eights wants that much room.
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
    constexpr unsigned long most = std::numeric_limits<unsigned long>::max();
    const struct {
        std::string text;
        std::size_t room;
        void (*put)(Out&);
    } rows[] = {
        {"7", kord::decimal_room, [](Out& out) { out.put_decimal('\0', 7UL); }},
        {std::to_string(most), kord::decimal_room, [](Out& out) { out.put_decimal('\0', most); }},
        {std::string(2 * sizeof most, 'f'), 2 * sizeof most, [](Out& out) { out.put_hexadecimal(most, 0, 'a'); }},
        {"F", 8, [](Out& out) { out.put_hexadecimal(15, 0, 'A'); }},
        {"-0.3333333333333333", 19, [](Out& out) { out.put_real(-1.0 / 3, -1, false); }},
    };
    for (const auto& [text, least, put] : rows) {
        for (unsigned int room = 0; room != 36; ++room) {
            const GuardedText<TypeParam> buffer(room, false);
            Out output(buffer.data(), room);
            put(output);
            const auto written = static_cast<unsigned int>(output.at - buffer.data());
            EXPECT_EQ(show(KordCharacterRange<TypeParam>(buffer.data(), 0, written)), room < least ? "" : text);
        }
    }
}

/// What putting `number` with a plus writes into the least room.
template <class T, class Number>
std::string put(Number number) {
    const GuardedText<T> buffer(kord::decimal_room, false);
    kord::Output<T> output(buffer.data(), kord::decimal_room);
    output.put_decimal(std::is_signed_v<Number> ? '+' : '\0', number);
    return show(KordCharacterRange<T>(buffer.data(), 0, static_cast<unsigned int>(output.at - buffer.data())));
}

TYPED_TEST(Field, DecimalsOfEveryLengthAreRight) {
    constexpr unsigned long most = std::numeric_limits<unsigned long>::max();
    for (unsigned long step = 1;; step *= 10) {
        for (const unsigned long n : {step - 1, step, step + 1, 9 * (step / 9), most / step}) {
            const auto number = static_cast<long>(n);
            EXPECT_EQ(put<TypeParam>(n), std::to_string(n));
            EXPECT_EQ(put<TypeParam>(number), (number < 0 ? "" : "+") + std::to_string(number));
        }
        if (step > most / 10) break;
    }
}

} // namespace
