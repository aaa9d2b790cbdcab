// What passes between kord.dll and a program: exceptions by their types, and calls from stacks that are hardly aligned.
#include "support/import_slot.h"

#include <kord/kord.h>

#include <new>

#include <gtest/gtest.h>

namespace {

void* refuse(std::size_t) {
    return nullptr;
}

TEST(Boundary, ARefusedBlockIsCaughtAsABadAllocation) {
    ImportSlot slot(GetModuleHandleA("kord.dll"), "malloc");
    ASSERT_TRUE(slot.found());
    std::string said;
    slot.set(&refuse);
    try {
        astring().reserve(1);
    } catch (const std::bad_alloc& e) {
        said = e.what();
    }
    slot.set(&std::malloc);
    EXPECT_EQ(said, "bad allocation");
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
