// Memory: what is refused, how much is asked for, and that nothing beside a text is touched. (The walk refuses every
// allocation of every edit.)
#include "support/failing_heap.h"
#include "support/guard.h"
#include "support/text.h"

#include <kord/path.h>

#include <optional>

namespace {

template <class T>
class Memory : public ::testing::Test {};
TYPED_TEST_SUITE(Memory, Widths);

TYPED_TEST(Memory, ARefusedBlockIsABadAllocation) {
    const Units<TypeParam> text("text");
    String<TypeParam> s;
    std::string said;
    heap.left = 0;
    try {
        s.reserve(1);
    } catch (const std::bad_alloc& e) {
        said = e.what();
    }
    heap.left = -1;
    EXPECT_EQ(said, "bad allocation");
    const long before = heap.blocks;
    EXPECT_EQ(heap.fail_each([&] { String<TypeParam>(text, 4u); }, [] {}), 1);
    EXPECT_EQ(heap.fail_each([&] { String<TypeParam>(300u, 'x'); }, [] {}), 1);
    EXPECT_EQ(heap.blocks, before);
}

TYPED_TEST(Memory, AnEditAllocatesOneBlockOrNone) {
    const Units<TypeParam> longer("a longer text than that");
    String<TypeParam> s = make<TypeParam>("abc"), t;
    const auto blocks = [](auto edit) { return heap.fail_each(edit, [] {}); };
    EXPECT_EQ(blocks([&] { s.replace(1, 1, longer); }), 1);
    EXPECT_EQ(blocks([&] { s.insert(3, 40, 'x'); }), 1);
    EXPECT_EQ(blocks([&] { s.append(s); }), 1);
    EXPECT_EQ(blocks([&] { s.replace(3, 40, 'y'); }), 0);
    EXPECT_EQ(blocks([&] { (t = s).erase(0, 3).erase(5); }), 0);
    EXPECT_EQ(blocks([&] { t.assign(s, 2, 9).assign(s.substr(3), 0, 2); }), 0);
}

TEST(PathMemory, SplittersAreUnchangedAndLeakNothing) {
    const long blocks = heap.blocks, nodes = heap.nodes;
    {
        const astring path("//server/share/a/../b/./c.tar.gz");
        std::optional<KordSplitPath> split, copy;
        EXPECT_EQ(heap.fail_each([&] { split.emplace(path); }, [] {}), 8); // text, sentinel and six items
        KordSplitPath target("../x");
        const auto unchanged = [&] {
            EXPECT_EQ(show(target.RawPathname()), "..\\x");
            EXPECT_EQ(target.Begin()->kind, KordSplitPath::Parent);
            EXPECT_EQ(std::distance(target.begin(), target.end()), 2);
            EXPECT_TRUE(target.Relative());
        };
        EXPECT_EQ(heap.fail_each([&] { target = *split; }, unchanged), 4);
        EXPECT_EQ(heap.fail_each([&] { copy.emplace(target); }, [] {}), 7);
        split.reset();
        EXPECT_EQ(show(copy->Begin()->text()), "server");
    }
    EXPECT_EQ(heap.blocks, blocks);
    EXPECT_EQ(heap.nodes, nodes);
}

TEST(PathMemory, OnlyItemsThatStayGetANode) {
    for (const char* const path : {"a/b/../../c/./d/../", "./././x", "../a/.././", "a/../b/../../"}) {
        const astring text(path);
        const long before = heap.made;
        const KordSplitPath split(text);
        EXPECT_EQ(std::distance(split.begin(), split.end()), 1) << path;
        EXPECT_EQ(heap.made - before, 2) << path;
    }
}

TYPED_TEST(Memory, NothingIsReadOrWrittenBesideAText) {
    using S = String<TypeParam>;
    for (unsigned int n = 0; n != 70; ++n) {
        for (const bool low : {false, true}) {
            const GuardedText<TypeParam> source(n, low);
            const KordCharacterRange<TypeParam> r(source.data(), 0, n);
            EXPECT_EQ(S(source.data(), n).append(r).insert(n / 2, r).length(), 3 * n);
            EXPECT_EQ(S(source.data(), n).assign(r).replace(0, 1, r).length(), n < 2 ? n : 2 * n - 1);
            EXPECT_EQ(S(nullptr, source.data(), n).make_upper().length(), n);
            if (n == 0) continue;
            source.data()[n - 1] = 0; // measured up to the last character before the guard
            EXPECT_EQ(S(source.data()).length(), n - 1);
        }
    }
}

} // namespace
