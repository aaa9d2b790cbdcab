// A number that would not fit into what was reserved is left out whole, which no template can bring about.
#include "format/field.h"
#include "support/guard.h"
#include "support/text.h"

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
        {"ffffffff", [](Out& out) { out.put_hexadecimal(4294967295UL, kordDigits[0]); }},
        {"-0.3333333333333333", [](Out& out) { out.put_real(-1.0 / 3, -1, false); }},
    };
    for (const auto& [text, put] : rows) {
        for (unsigned int room = 0; room != 36; ++room) {
            const GuardedText<TypeParam> buffer(room, false);
            Out output(buffer.data(), room);
            put(output);
            const auto written = static_cast<unsigned int>(output.at - buffer.data());
            EXPECT_EQ(show(KordCharacterRange<TypeParam>(buffer.data(), 0, written)), room < text.size() ? "" : text);
        }
    }
}

} // namespace
