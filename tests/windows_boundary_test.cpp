// What passes between kord.dll and a program: exceptions by their types, and calls from stacks that are hardly aligned.
#include "support/import_slot.h"

#include <kord/kord.h>

#include <new>

#include <gtest/gtest.h>

namespace {

template <class Exception, class Call>
std::string caught(Call call) {
    try {
        call();
    } catch (const Exception& e) {
        return e.what();
    }
    return "nothing";
}

TEST(Boundary, ALengthErrorIsCaughtByEachOfItsTypes) {
    const auto narrow = [] { astring().reserve(0x100001); };
    const auto wide = [] { ustring().resize(0x100001, 'x'); };
    const std::string text = "BasicString<T>::reserve(c) with c > 0x100000";
    EXPECT_EQ(caught<os_length_error>(narrow), text);
    EXPECT_EQ(caught<os_length_error>(wide), text);
    EXPECT_EQ(caught<os_logic_error>(narrow), text);
    EXPECT_EQ(caught<os_logic_error>(wide), text);
    EXPECT_EQ(caught<std::exception>(narrow), text);
    EXPECT_EQ(caught<std::exception>(wide), text);
}

void* refuse(std::size_t) {
    return nullptr;
}

TEST(Boundary, ARefusedBlockIsCaughtAsABadAllocation) {
    ImportSlot slot(GetModuleHandleA("kord.dll"), "malloc");
    ASSERT_TRUE(slot.found());
    const auto call = [&slot] {
        slot.set(&refuse);
        astring().reserve(1);
    };
    const std::string as_itself = caught<std::bad_alloc>(call), as_its_base = caught<std::exception>(call);
    slot.set(&std::malloc);
    EXPECT_EQ(as_itself, "bad allocation");
    EXPECT_EQ(as_its_base, "bad allocation");
}

TEST(Boundary, StaticObjectsAreTheLibrarysOwn) {
    HMODULE owner = nullptr;
    const auto* const address = reinterpret_cast<const char*>(&astring::nullString);
    ASSERT_TRUE(GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, address, &owner));
    EXPECT_EQ(owner, GetModuleHandleA("kord.dll"));
    EXPECT_EQ(astring::nullString.length(), 0u);
    EXPECT_EQ(*ustring::nullCString, 0);
}

/// Texts long enough for every loop over vectors, and reals.
struct Work {
    const astring text = astring(200u, 'a');
    astring narrow;
    ustring wide;
    bool right = false;
};

void work(Work* on) {
    on->narrow.format("%f", 2.5);
    on->narrow.format("%s=%f", on->text, 0.1);
    on->wide = UstringAdapter(on->text);
    on->wide.make_upper();
    on->right = on->narrow.find("=0.100000") == 200 && on->wide.find_first_not_of('A') == aliteral::npos &&
                on->narrow.compare_nocase(on->text) == 9 && aliteral("0.75").as_double() == 0.75 &&
                KordConvert::CountUtf8(on->wide.data(), on->wide.length()) == 200 &&
                KordSplitPath("c:/a/b.c").RawPathname().length() == 8;
}

/// Calls `work` with the stack so many bytes away from an alignment to 16 bytes.
void work_on_stack(unsigned int bytes, Work* on) {
    asm volatile("movl %%esp, %%ebx\n\t"
                 "andl $-16, %%esp\n\t"
                 "subl %%esi, %%esp\n\t"
                 "pushl %%edi\n\t"
                 "call *%%eax\n\t"
                 "movl %%ebx, %%esp"
                 :
                 : "a"(&work), "S"(bytes), "D"(on)
                 : "ebx", "ecx", "edx", "memory", "cc");
}

TEST(Boundary, CallersMayKeepAnAlignmentToFourBytes) {
    for (unsigned int bytes = 0; bytes != 16; bytes += 4) {
        Work on;
        work_on_stack(bytes, &on);
        EXPECT_TRUE(on.right) << bytes;
    }
}

} // namespace
