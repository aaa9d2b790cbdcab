#include "format/field.h"
#include "support/text.h"

namespace {

template <class T>
class Field : public ::testing::Test {};
TYPED_TEST_SUITE(Field, Widths);

/// What an output with some room writes, without anything behind that.
template <class T, class Put>
std::string written(std::size_t room, Put put) {
    T buffer[40];
    std::fill_n(buffer, 40, T{'#'});
    kord::Output<T> output(buffer, room);
    put(output);
    EXPECT_LE(output.at - buffer, static_cast<std::ptrdiff_t>(room));
    EXPECT_EQ(std::count(buffer + room, buffer + 40, T{'#'}), static_cast<std::ptrdiff_t>(40 - room));
    return show(KordCharacterRange<T>(buffer, 0, static_cast<unsigned int>(output.at - buffer)));
}

TYPED_TEST(Field, ANumberIsWrittenWholeOrNotAtAll) {
    using Out = kord::Output<TypeParam>;
    const struct {
        const char* text;
        void (*put)(Out&);
    } rows[] = {
        {"7", [](Out& out) { out.put_decimal('\0', 7UL); }},
        {"+0", [](Out& out) { out.put_decimal('+', 0L); }},
        {"-2147483648", [](Out& out) { out.put_decimal('+', -2147483647L - 1); }},
        {"4294967295", [](Out& out) { out.put_decimal('\0', 4294967295UL); }},
        {"ffffffff", [](Out& out) { out.put_hexadecimal(4294967295UL, kordDigits[0]); }},
        {"A", [](Out& out) { out.put_hexadecimal(10, kordDigits[1]); }},
        {"-0.3333333333333333", [](Out& out) { out.put_real(-1.0 / 3, -1, false); }},
        {"+1e+300", [](Out& out) { out.put_real(1e300, 3, true); }},
    };
    for (const auto& row : rows) {
        for (std::size_t room = 0; room != 36; ++room) {
            EXPECT_EQ(written<TypeParam>(room, row.put), room < std::strlen(row.text) ? "" : row.text) << room;
        }
    }
}

} // namespace
