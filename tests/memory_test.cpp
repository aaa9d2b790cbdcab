// Memory: what is refused, how much is asked for, and that nothing beside a text is touched. (The walk refuses every
// allocation of every edit.)
#include "support/failing_heap.h"
#include "support/guard.h"
#include "support/text.h"

#include <kord/convert.h>
#include <kord/path.h>

#include <optional>
#include <type_traits>

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

TYPED_TEST(Memory, FormattingAllocatesItsResultAndNothingElse) {
    using S = String<TypeParam>;
    const S one = make<TypeParam>("%5d"), two = make<TypeParam>("%s=%f"), texts = make<TypeParam>("%s and %s");
    const S wrong = make<TypeParam>("%s");
    S percents(3000u, '%');
    percents.append(one);
    const S name = make<TypeParam>("name"), path = make<TypeParam>("c:\\some\\folders\\name");
    S s = make<TypeParam>("old text that has a block of its own");
    const S sharer = s;
    const long before = heap.blocks;
    const auto blocks = [&](auto call) { return heap.fail_each(call, [&] { EXPECT_EQ(show(s), show(sharer)); }); };
    EXPECT_EQ(blocks([&] { S(s).format(one, 7L); }), 1);
    EXPECT_EQ(blocks([&] { S(s).format(two, name, 2.5); }), 1);
    EXPECT_EQ(blocks([&] { S(s).format(texts, name, s); }), 1);
    EXPECT_EQ(blocks([&] { S(s).format(percents, 7L); }), 1);
    EXPECT_EQ(blocks([&] { S(s).format(wrong, 7L); }), 0);
    EXPECT_EQ(blocks([&] { S(s).format(7L).format(7UL).format(-7.5); }), 1); // as large as the old text
    EXPECT_EQ(blocks([&] { S(path).format_path(16, S::ellipsis_middle); }), 1);
    EXPECT_EQ(blocks([&] { S(path).format_path(16, S::ellipsis_begin).format_path(9, S::ellipsis_end); }), 1);
    EXPECT_EQ(blocks([&] { s.format(two, s, 0.5); }), 1);
    EXPECT_EQ(heap.blocks, before + 1);
}

TYPED_TEST(Memory, AnAdapterAllocatesItsCopyOrNothing) {
    using A = std::conditional_t<sizeof(TypeParam) == 1, AstringAdapter, UstringAdapter>;
    using U = std::conditional_t<sizeof(TypeParam) == 1, unsigned short, char>;
    const String<TypeParam> s = make<TypeParam>("a text of this width");
    const String<U> t = make<U>("a text of the other one");
    const Units<TypeParam> own("zero-terminated");
    const Units<U> other("zero-terminated too");
    const long before = heap.blocks;
    const auto blocks = [&](auto call) { return heap.fail_each(call, [&] { EXPECT_EQ(heap.blocks, before); }); };
    EXPECT_EQ(blocks([&] { A(A{s}).c_str(); }) + blocks([&] { A{nullptr}; }), 0);
    EXPECT_EQ(blocks([&] { A(own, 9u); }) + blocks([&] { A(own).c_str(); }), 2);
    EXPECT_EQ(blocks([&] { A{t}; }) + blocks([&] { A(other, 9u); }) + blocks([&] { A(other).c_str(); }), 3);
    EXPECT_EQ(blocks([&] { A{KordCharacterRange<U>()}; }), 1); // room for no characters
    EXPECT_EQ(blocks([&] { A(s.substr(1, 3)).c_str(); }), 1);  // moves to be terminated
    EXPECT_EQ(heap.blocks, before);
}

TEST(PrintfMemory, FormattingAllocatesItsResultOnly) {
    astring s("old");
    EXPECT_EQ(heap.fail_each([&] { s.format_unchecked("%s %d %5.2f", s.c_str(), 7, 2.5); },
                             [&] { EXPECT_EQ(show(s), "old"); }),
              1);
    EXPECT_EQ(show(s), "old 7  2.50");
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
    const S two = make<TypeParam>("%s%%%s");
    for (unsigned int n = 0; n != 70; ++n) {
        for (const bool low : {false, true}) {
            const GuardedText<TypeParam> source(n, low);
            const KordCharacterRange<TypeParam> r(source.data(), 0, n);
            EXPECT_EQ(S(source.data(), n).append(r).insert(n / 2, r).length(), 3 * n);
            EXPECT_EQ(S(source.data(), n).assign(r).replace(0, 1, r).length(), n < 2 ? n : 2 * n - 1);
            EXPECT_EQ(S(nullptr, source.data(), n).make_upper().length(), n);
            EXPECT_EQ(S().format(two, r, r).length(), 2 * n + 1);
            EXPECT_TRUE(S().format(r, 7).empty());
            if (n == 0) continue;
            source.data()[n - 1] = '%'; // a template that ends in the middle of a placeholder
            EXPECT_TRUE(S().format(r, 7).empty());
            source.data()[n - 1] = 0; // measured up to the last character before the guard
            EXPECT_EQ(S(source.data()).length(), n - 1);
        }
    }
}

} // namespace
