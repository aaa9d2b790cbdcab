#include "support/text.h"

#include <kord/errors.h>

#include <new>

namespace {

constexpr const char* message = "BasicString<T>::reserve(c) with c > 0x100000";

template <class E, class T>
std::string caught() {
    String<T> s(Units<T>("abc"));
    try {
        s.reserve(0x100001);
    } catch (const E& e) {
        return e.what();
    }
    return "nothing";
}

TEST(Errors, ALengthErrorIsCaughtAsEachOfItsBases) {
    EXPECT_EQ((caught<os_length_error, char>()), message);
    EXPECT_EQ((caught<os_length_error, unsigned short>()), message);
    EXPECT_EQ((caught<os_logic_error, char>()), message);
    EXPECT_EQ((caught<std::exception, unsigned short>()), message);
}

TEST(Errors, AnErrorKeepsItsOwnCopyOfTheMessage) {
    std::string text(70, 'x');
    const os_length_error cut(text.c_str());
    text.assign(70, 'y');
    EXPECT_EQ(cut.what(), std::string(63, 'x'));
    const os_length_error copy(cut);
    EXPECT_EQ(copy.what(), std::string(63, 'x'));
    EXPECT_NE(copy.what(), cut.what());
    EXPECT_STREQ(os_logic_error("").what(), "");
    EXPECT_EQ(os_logic_error(std::string(63, 'z').c_str()).what(), std::string(63, 'z'));
}

} // namespace
