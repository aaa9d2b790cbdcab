// Memory: what is refused, how much is asked for, and that nothing beside a text is touched. (The walk refuses every
// allocation of every edit.)
#include "support/failing_heap.h"
#include "support/guard.h"
#include "support/text.h"

#include <kord/path.h>

#include <optional>

namespace {

template <class T>
class Memory : public ::testing::Test {
  protected:
    const long blocks = heap.blocks, nodes = heap.nodes;
    void TearDown() override { EXPECT_TRUE(heap.blocks == blocks && heap.nodes == nodes); }
};
TYPED_TEST_SUITE(Memory, Widths);
using PathMemory = Memory<void>;

constexpr auto nothing = [] {};

TYPED_TEST(Memory, ARefusedBlockIsABadAllocation) {
    using S = String<TypeParam>;
    const Units<TypeParam> text("text");
    std::string said;
    heap.left = 0;
    try {
        S().reserve(1);
    } catch (const std::bad_alloc& e) {
        said = e.what();
    }
    EXPECT_EQ(said, "bad allocation");
    EXPECT_EQ(heap.fail_each([&] { S(text, 4u); }, nothing) + heap.fail_each([&] { S(300u, 'x'); }, nothing), 2);
}

TYPED_TEST(Memory, FormattingAllocatesItsResultAndNothingElse) {
    using S = String<TypeParam>;
    const S one = make<TypeParam>("%5d"), texts = make<TypeParam>("%s and %s"), wrong = make<TypeParam>("%s");
    const S path = make<TypeParam>("c:\\some\\folders\\name");
    S s = make<TypeParam>("old text that has a block of its own"), percents(3000u, '%');
    percents.append(one);
    const S sharer = s;
    const auto allocations = [&](auto call) { return heap.fail_each(call, [&] { EXPECT_EQ(show(s), show(sharer)); }); };
    EXPECT_EQ(allocations([&] { S(s).format(wrong, 7L); }), 0);
    EXPECT_EQ(allocations([&] { S(s).format(one, 7L); }), 1);
    EXPECT_EQ(allocations([&] { S(s).format(percents, 7L); }), 1);
    EXPECT_EQ(allocations([&] { S(s).format(7L).format(7UL).format(-7.5); }), 1); // as large as the old text
    EXPECT_EQ(allocations([&] { S(path).format_path(16, S::ellipsis_middle); }), 1);
    EXPECT_EQ(allocations([&] { S(path).format_path(16, S::ellipsis_begin).format_path(9, S::ellipsis_end); }), 1);
    EXPECT_EQ(allocations([&] { s.format(texts, path, s); }), 1);
    if constexpr (sizeof(TypeParam) == 1) {
        s = sharer;
        EXPECT_EQ(allocations([&] { s.format_unchecked("%s %d %5.2f", "", 7, 2.5); }), 1);
        EXPECT_EQ(show(s), " 7  2.50");
    }
}

TYPED_TEST(Memory, AnAdapterAllocatesItsCopyOrNothing) {
    using A = Adapter<TypeParam>;
    using U = OtherWidth<TypeParam>;
    const String<TypeParam> s = make<TypeParam>("a text of this width");
    const String<U> t = make<U>("a text of the other one");
    const Units<TypeParam> own("zero-terminated");
    const Units<U> other("zero-terminated too");
    const auto allocations = [](auto... calls) { return (0 + ... + heap.fail_each(calls, nothing)); };
    EXPECT_EQ(allocations([&] { A(A{s}).c_str(); }, [] { A{nullptr}; }), 0);
    EXPECT_EQ(allocations([&] { A(own, 9u); }, [&] { A(own).c_str(); }, [&] { A(s.substr(1, 3)).c_str(); }), 3);
    EXPECT_EQ(allocations([&] { A{t}; }, [&] { A(other, 9u); }, [&] { A(other).c_str(); }), 3);
    EXPECT_EQ(allocations([] { A{KordCharacterRange<U>()}; }), 1); // room for no characters
}

TEST_F(PathMemory, SplittersAreUnchangedAndLeakNothing) {
    const astring path("//server/share/a/../b/./c.tar.gz");
    std::optional<KordSplitPath> split, copy;
    EXPECT_EQ(heap.fail_each([&] { split.emplace(path); }, nothing), 8); // text, sentinel and six items
    KordSplitPath target("../x");
    const auto unchanged = [&] {
        EXPECT_EQ(show(target.RawPathname()), "..\\x");
        EXPECT_EQ(target.Begin()->kind, KordSplitPath::Parent);
        EXPECT_EQ(std::distance(target.begin(), target.end()), 2);
        EXPECT_TRUE(target.Relative());
    };
    EXPECT_EQ(heap.fail_each([&] { target = *split; }, unchanged), 4);
    EXPECT_EQ(heap.fail_each([&] { copy.emplace(target); }, nothing), 7);
    split.reset();
    EXPECT_EQ(show(copy->Begin()->text()), "server");
}

TEST_F(PathMemory, OnlyItemsThatStayGetANode) {
    for (const char* const path : {"a/b/../../c/./d/../", "./././x", "../a/.././", "a/../b/../../"}) {
        const long made = heap.made;
        const KordSplitPath split(path);
        EXPECT_EQ(std::distance(split.begin(), split.end()), 1) << path;
        EXPECT_EQ(heap.made - made, 2) << path;
    }
}

TYPED_TEST(Memory, NothingIsReadOrWrittenBesideAText) {
    using S = String<TypeParam>;
    const S two = make<TypeParam>("%s%%%s");
    for (unsigned int n = 0; n != 70; ++n) {
        for (const bool low : {false, true}) {
            const GuardedText<TypeParam> source(n, low);
            TypeParam* const text = source.data();
            const KordCharacterRange<TypeParam> r(text, 0, n);
            EXPECT_EQ(S(text, n).append(r).insert(n / 2, r).length(), 3 * n);
            EXPECT_EQ(S(text, n).assign(r).replace(0, 1, r).length(), n < 2 ? n : 2 * n - 1);
            EXPECT_EQ(S(nullptr, text, n).make_upper().length(), n);
            EXPECT_EQ(S().format(two, r, r).length(), 2 * n + 1);
            EXPECT_TRUE(S().format(r, 7).empty());
            if (n == 0) continue;
            text[n - 1] = '%'; // a template that ends in the middle of a placeholder
            EXPECT_TRUE(S().format(r, 7).empty());
            text[n - 1] = 0; // measured up to the last character before the guard
            EXPECT_EQ(S(text).length(), n - 1);
        }
    }
}

} // namespace
