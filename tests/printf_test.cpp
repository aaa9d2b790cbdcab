// `format_unchecked` beside the C library's own formatter, and what it does not hand on to it.
#include "support/real_model.h"
#include "support/text.h"

#include <kord/errors.h>

#include <climits>

// The templates here are made up, and some are wrong on purpose.
#pragma GCC diagnostic ignored "-Wformat"
#pragma GCC diagnostic ignored "-Wformat-security"
#pragma GCC diagnostic ignored "-Wformat-extra-args"
#pragma GCC diagnostic ignored "-Wformat-zero-length"

namespace {

/// The same text as from the C library, in a block of its own; a copy of what was there before stays.
template <class... A>
void check(const std::string& tmpl, A... arguments) {
    static std::vector<char> buffer(0x100001);
    const int n = std::snprintf(buffer.data(), buffer.size(), tmpl.c_str(), arguments...);
    astring s("before");
    const astring copy = s;
    ASSERT_EQ(&s.format_unchecked(tmpl.c_str(), arguments...), &s);
    ASSERT_EQ(std::string(s.begin(), s.end()), n < 0 ? buffer.data() : std::string(buffer.data(), n)) << tmpl;
    ASSERT_EQ(show(copy), "before");
    ASSERT_EQ(*s.c_str(), s.empty() ? 0 : s.data()[0]);
    ASSERT_TRUE(s.empty() || (holders(s) == 1 && *s.cend() == 0)) << tmpl;
}

TEST(Printf, WritesWhatTheCLibraryWrites) {
    check("%5.2f|%-6s|%08X %% %5%|", 3.14159, "abc", 255);
    check("%*d|%.*f|%.1lf", -5, 42, -3, 2.5, 2.5);
    check("%Lf|%.30Lf|%Lg|%LE|%.2Lf %d", LDBL_MAX, -LDBL_MAX, 0.1L, LDBL_MIN, 1e4000L, 7);
    check("%+.40p|", static_cast<const void*>("p"));
    check("% .34p|", static_cast<const void*>("p"));
    check("%p %40p|", static_cast<void*>(nullptr), static_cast<const void*>("p"));
    check("a%cb%c", 0, 0);
    check("%s%.0d%.0s", "", 0, "abc");
    for (const char* const tmpl : {"abc", "%d, then %", "abc %-5"}) check(tmpl, 5);
    const std::string tmpl = "[%s]";
    EXPECT_EQ(show(astring().format_unchecked(tmpl.c_str(), static_cast<const char*>(nullptr))), "[(null)]");
    int at = -1, end = -1;
    EXPECT_EQ(show(astring().format_unchecked("%d%n|%s%n", 7, &at, "abc", &end)), "7|abc");
    EXPECT_TRUE(at == 1 && end == 5);
    astring s("%s|%.3s|%d"); // template and texts may lie in the string
    const astring copy = s;
    EXPECT_EQ(show(s.format_unchecked(s.c_str(), s.c_str(), copy.c_str() + 1, 5)), "%s|%.3s|%d|s|%|5");
    EXPECT_EQ(show(copy), "%s|%.3s|%d");
}

/// With as many stars' arguments in front as the template has.
template <class V>
void check_stars(Dice& below, const std::string& tmpl, V value) {
    const int width = static_cast<int>(below(40)) - 20, precision = static_cast<int>(below(30)) - 5;
    const std::size_t star = tmpl.find('*'), point = tmpl.find(".*");
    if (star == tmpl.npos) return check(tmpl, value);
    if (star > point || point == tmpl.npos) return check(tmpl, star > point ? precision : width, value);
    check(tmpl, width, precision, value);
}

TEST(Printf, WritesAnyPlaceholderAsTheCLibraryDoes) {
    Dice below(11);
    using std::string_view_literals::operator""sv;
    for (int round = 0; round != 40000 && !HasFatalFailure(); ++round) {
        std::string front = below(2) == 0 ? "a%%%" : "%";
        while (below(2) == 0) front += below.pick("-+ #0"sv);
        const std::string widths[] = {"", "", "*", std::to_string(1 + below(below(20) == 0 ? 900 : 40))};
        const std::string precisions[] = {"", "", ".", ".*", '.' + std::to_string(below(below(20) == 0 ? 900 : 40))};
        front += below.pick(widths) + below.pick(precisions);
        const char integer = below.pick("diouxX"sv), real = below.pick("eEfgG"sv);
        const std::uint64_t bits = below.bits() >> below(64);
        const long long number = static_cast<long long>(below(2) == 0 ? bits : 0 - bits);
        const char* const lengths[] = {"", "h", "hh"};
        switch (below(7)) {
        case 0: check_stars(below, front + 'l' + integer, static_cast<long>(number)); break;
        case 1: check_stars(below, front + "ll" + integer + '|', number); break;
        case 2: check_stars(below, front + real, any_real(below)); break;
        case 3: check_stars(below, front + 'L' + real + " z", static_cast<long double>(any_real(below)) * 3); break;
        case 4: check_stars(below, front + 's', below(3) == 0 ? "" : "abcdefghijkl"); break;
        case 5: check_stars(below, front + 'c', static_cast<int>(number)); break;
        default: check_stars(below, front + below.pick(lengths) + integer, static_cast<int>(number)); break;
        }
    }
}

/// For how many characters room is made: the text in front that first takes a larger block tells.
template <class... A>
unsigned int room(std::string tmpl, A... arguments) {
    const auto capacity = [&] { return astring().format_unchecked(tmpl.c_str(), arguments...).capacity(); };
    const unsigned int most = capacity();
    unsigned int front = 0;
    for (; capacity() == most; ++front) tmpl.insert(0, 1, '.');
    return most + 1 - front;
}

// clang-format off
TEST(Printf, RoomIsMadeOnceBeforehand) {
    int at = 0;
    const struct { unsigned int room, expected; } rows[] = {
        {room("%20d", 1), 20}, {room("%hu", 1), 12}, {room("%o|%i", 1, 1), 25}, {room("%x", 1), 14},
        {room("%X%30x", 1, 1), 44}, {room("%*d", 40, 1), 40}, {room("%90c", 'c'), 90},
        {room("%p", static_cast<void*>(&at)), 32}, {room("%50p", static_cast<void*>(&at)), 50},
        {room("abc%d%%def%n", 1, &at), 19}, {room("%s|%s", "abc", "defghijklm"), 14}, {room("0123456789%"), 10},
        {room("%.30s", ""), 30}, {room("%40.30s", ""), 40}, {room("%.*s", 30, ""), 30},
        {room("%f", 1.5), 26}, {room("%60f", 1.5), 60}, {room("%f", 1e16), 26},
        {room("%f", std::nextafter(1e16, HUGE_VAL)), 318}, {room("%g", 1e-16), 26},
        {room("%G", std::nextafter(1e-16, 0.0)), 318}, {room("%f", 0.0), 26}, {room("%f", HUGE_VAL), 318},
        {room("%.2f", 1.5), 46}, {room("%.30f", 1.5), 57}, {room("%.2f", -1e300), 338}, {room("%.*f", 30, 1.5), 57},
    };
    for (const auto& row : rows) EXPECT_EQ(row.room, row.expected) << "row " << &row - rows;
}

TEST(Printf, WhatItDoesNotKnowIsNotHandedOn) {
    for (const char* const tmpl : {"%I64d", "%a", "%A", "%S", "%C", "%Z", "abc %y", "%d %zu", "%jd", "%td", "%lc",
    "%ls", "%Lc", "%Ls", "%hs", "%hf", "%llg", "%lp", "%5*d", "%.5*d", "%F", "%hld", "%lhd", "%llld", "%hhhd", "%hhlx",
    "%lLd", "%hhlLd", "%99999999999d", "%m", "%\xE4", "%~", ""}) {
        astring s("before");
        const astring copy = s;
        EXPECT_EQ(&s.format_unchecked(tmpl, 1, 2, 3, 4), &s);
        EXPECT_TRUE(s.empty() && s.data() == copy.data() && holders(copy) == 2) << tmpl;
        EXPECT_EQ(show(copy) + show(s.format_unchecked("%d", 1)), "before1");
    }
    int at = -1;
    EXPECT_TRUE(astring("before").format_unchecked("%n", &at).empty() && at == -1); // nothing stored
    EXPECT_EQ(astring().format_unchecked("%y", 1).data(), nullptr);
}
// clang-format on

TEST(Printf, RoomAboveTheLimitIsRefusedAndNothingChanges) {
    const auto refuses = [](const std::string& tmpl, auto... arguments) {
        astring s("before");
        const astring copy = s;
        EXPECT_THROW(s.format_unchecked(tmpl.c_str(), arguments...), os_length_error) << tmpl.substr(0, 30);
        EXPECT_TRUE(s.data() == copy.data() && show(s) == "before" && holders(s) == 2) << tmpl.substr(0, 30);
    };
    for (const char* const tmpl : {"%2000000d", "%1048577x", "a%-1048576d", "%.2000000d", "%2147483648d%2147483648d",
                                   "%4294967295d%c", "%.2147483648d%2147483648x"})
        refuses(tmpl, 1, 1);
    for (const int star : {2000000, INT_MIN}) refuses("%*d", star, 1);
    refuses("%.*f", INT_MAX, 0.5);
    refuses("%.1048577s", "abc");
    const std::string text(0x90000, 't');
    refuses("%s%s", text.c_str(), text.c_str());
    refuses(text + "%s", text.c_str());
    check("%.0d%s%-400000d", 0, text.c_str(), 1);
    check("%1048576d", 1);
    check("%.1048576s", "abc");
}

} // namespace
