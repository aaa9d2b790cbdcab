// Loading and unloading kord.dll, by a program that is not linked with it: what its static objects are and become.
#include "support/import_slot.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Of the blocks that are watched, those that kord.dll has freed.
std::vector<const void*> watched, freed;

void free_and_tell(void* block) {
    if (std::find(watched.begin(), watched.end(), block) != watched.end()) freed.push_back(block);
    std::free(block);
}

/// What a string consists of.
struct Text {
    const void* operations;
    const char *begin, *end;
    const unsigned int* block; // how many strings hold it, and its capacity in bytes
};

class Library {
  public:
    Library() : module_(LoadLibraryA("kord.dll")) {}
    HMODULE module() const { return module_; }
    const Text* text(const char* name) const { return reinterpret_cast<const Text*>(GetProcAddress(module_, name)); }
    bool unload() { return FreeLibrary(std::exchange(module_, nullptr)) && GetModuleHandleA("kord.dll") == nullptr; }

  private:
    HMODULE module_;
};

void expect_empty(const Text* text, unsigned int capacity) {
    ASSERT_NE(text, nullptr);
    ASSERT_NE(text->block, nullptr);
    EXPECT_NE(text->operations, nullptr);
    EXPECT_EQ(text->begin, text->end);
    EXPECT_EQ(text->begin, reinterpret_cast<const char*>(text->block + 2));
    EXPECT_EQ(text->block[0], 1u);
    EXPECT_EQ(text->block[1], capacity);
}

TEST(Load, BuildsTheEmptyStringsAndDestroysEachOnceInReverseOrder) {
    for (int round = 0; round != 3; ++round) {
        Library library;
        ASSERT_NE(library.module(), nullptr);
        const Text* const narrow = library.text("_ZN7astring10nullStringE");
        const Text* const wide = library.text("_ZN7ustring10nullStringE");
        ASSERT_NO_FATAL_FAILURE(expect_empty(narrow, 7));
        ASSERT_NO_FATAL_FAILURE(expect_empty(wide, 6));
        watched = {wide->block, narrow->block};
        freed.clear();
        ImportSlot free_slot(library.module(), "free");
        ASSERT_TRUE(free_slot.found());
        free_slot.set(&free_and_tell);
        ASSERT_TRUE(library.unload());
        EXPECT_EQ(freed, watched);
    }
}

/// What the loader keeps about a module, as far as it matters here.
struct Module {
    LIST_ENTRY in_load_order, others[2];
    HMODULE base;
    DWORD entry, size, names[4];
    DWORD flags;
};
constexpr DWORD not_told_of_threads = 0x40000;

DWORD loader_flags(HMODULE module) {
    void* const function = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "RtlGetCurrentPeb"));
    const char* const process = reinterpret_cast<const char*(WINAPI*)()>(function)();
    const char* const loader = *reinterpret_cast<const char* const*>(process + 0xC);
    const auto* const list = reinterpret_cast<const LIST_ENTRY*>(loader + 0xC);
    for (const LIST_ENTRY* at = list->Flink; at != list; at = at->Flink) {
        const auto* const entry = reinterpret_cast<const Module*>(at);
        if (entry->base == module) return entry->flags;
    }
    return 0;
}

TEST(Load, IsNotToldOfThreads) {
    Library library;
    ASSERT_NE(loader_flags(GetModuleHandleA("kernel32.dll")), 0u);
    EXPECT_NE(loader_flags(library.module()) & not_told_of_threads, 0u);
    EXPECT_TRUE(library.unload());
}

TEST(Load, LeavesWhatIsStillLoadedToTheEndOfTheProgram) {
    ASSERT_NE(Library().module(), nullptr);
}

} // namespace
