// Every allocation failing in turn: nothing changes, nothing leaks.
#include "support/failing_heap.h"
#include "support/guard.h"
#include "support/text.h"

#include <kord/path.h>

#include <optional>

namespace {

template <class T>
class Memory : public ::testing::Test {};
TYPED_TEST_SUITE(Memory, Widths);

/// What a string is, to compare it with later.
template <class T>
struct State {
    const T* data;
    unsigned int length, capacity, count;
    BasicStringBody<T>* body;

    explicit State(const BasicString<T>& s)
        : data(s.data()), length(s.length()), capacity(s.capacity()), count(holders(s)), body(block_of(s)) {}
    bool operator==(const State&) const = default;
};

TYPED_TEST(Memory, StringsAreUnchangedWhenABlockIsRefused) {
    using S = String<TypeParam>;
    using R = KordCharacterRange<TypeParam>;
    using Edit = void (*)(S&);
    static const TypeParam* const text = lasting<TypeParam>("and more text than fits");
    const std::vector<Edit> edits = {
        [](S& s) { s.reserve(100); },
        [](S& s) { s.begin(); },
        [](S& s) { s.end(); },
        [](S& s) { s.set_at(1, 'x'); },
        [](S& s) { s.c_str(); },
        [](S& s) { s.get_buffer(50); },
        [](S& s) { s.release_buffer(50); },
        [](S& s) { s.append(R(text)); },
        [](S& s) { s.append(s); },
        [](S& s) { s.append(60, 'x'); },
        [](S& s) { s.assign(R(text)); },
        [](S& s) { s.assign(R(s, 1, 2)); },
        [](S& s) { s.assign(60, 'x'); },
        [](S& s) { s.erase(1, 1); },
        [](S& s) { s.insert(1, 30, 'x'); },
        [](S& s) { s.insert(1, R(text)); },
        [](S& s) { s.insert(1, s); },
        [](S& s) { s.insert(const_cast<TypeParam*>(s.cbegin()) + 1, 'x'); },
        [](S& s) { s.erase(const_cast<TypeParam*>(s.cbegin()) + 1); },
        [](S& s) { s.replace(1, 1, 'x'); },
        [](S& s) { s.replace(1, 1, s); },
        [](S& s) { s.replace(1, 1, text); },
        [](S& s) { s.resize(70, 'x'); },
        [](S& s) { s.make_upper(); },
        [](S& s) { s.make_lower(); },
        [](S& s) { s += text; },
        [](S& s) { s += static_cast<TypeParam>('x'); },
        [](S& s) { s = text; },
        [](S& s) { s = S(text, 5u); },
        [](S& s) { s = S(300, 'x'); },
    };
    const long before = heap::live_blocks();
    long refusals = 0;
    for (std::size_t i = 0; i != edits.size(); ++i) {
        for (int kind = 0; kind != 5; ++kind) {
            S s(text, 11u); // fills most of its block
            S holder;
            if (kind == 1) holder = s;                                           // sharing
            if (kind == 2) s.erase(0, 2);                                        // not at the first slot
            if (kind == 3) s.assign_literal(text);                               // foreign
            if (kind == 4) (holder = s).append(1, '.'), s = holder.substr(2, 4); // a piece, followed by no zero
            const State<TypeParam> was(s), held(holder);
            const std::string shown = show(s);
            refusals += heap::fail_each([&] { edits[i](s); },
                                        [&] {
                                            EXPECT_EQ(State<TypeParam>(s), was) << i;
                                            EXPECT_EQ(State<TypeParam>(holder), held) << i;
                                            EXPECT_EQ(show(s), shown) << i;
                                        });
        }
        EXPECT_EQ(heap::live_blocks(), before) << i;
    }
    EXPECT_GT(refusals, 100);
}

TYPED_TEST(Memory, TheRefusalSaysSo) {
    String<TypeParam> s;
    heap::fail_after(0);
    std::string said;
    try {
        s.reserve(1);
    } catch (const std::bad_alloc& e) {
        said = e.what();
    }
    heap::recover();
    EXPECT_EQ(said, "bad allocation");
}

TYPED_TEST(Memory, OneEditAllocatesOneBlockOfTheFinalSize) {
    using S = String<TypeParam>;
    const TypeParam* const longer = lasting<TypeParam>("a longer text than that");
    S s(Units<TypeParam>("abc"));
    const auto refusals = [&](auto edit) { return heap::fail_each(edit, [] {}); };
    EXPECT_EQ(refusals([&] { s.replace(1, 1, longer); }), 1);
    EXPECT_EQ(refusals([&] { s.insert(3, 40, 'x'); }), 1);
    EXPECT_EQ(refusals([&] { s.append(s); }), 1);
    EXPECT_EQ(refusals([&] { s.replace(3, 40, 'y'); }), 0);
    S t;
    EXPECT_EQ(refusals([&] { (t = s).erase(0, 3).erase(5); }), 0);
    EXPECT_EQ(refusals([&] { t.assign(s, 2, 9); }), 0);
    EXPECT_EQ(refusals([&] { t.swap(s); }), 0);
}

TEST(PathMemory, SplittersAreUnchangedAndLeakNothing) {
    const long blocks = heap::live_blocks(), nodes = heap::live_nodes();
    {
        const astring path("//server/share/a/../b/./c.tar.gz");
        std::optional<KordSplitPath> split;
        EXPECT_EQ(heap::fail_each([&] { split.emplace(path); }, [] {}), 8); // text, sentinel and six items
        KordSplitPath target("../x");
        EXPECT_EQ(heap::fail_each([&] { target = *split; },
                                  [&] {
                                      EXPECT_EQ(show(target.RawPathname()), "..\\x");
                                      EXPECT_EQ(target.Begin()->kind, KordSplitPath::Parent);
                                      EXPECT_EQ(std::distance(target.begin(), target.end()), 2);
                                      EXPECT_TRUE(target.Relative());
                                  }),
                  4);
        std::optional<KordSplitPath> copy;
        EXPECT_EQ(heap::fail_each([&] { copy.emplace(target); }, [] {}), 7);
        split.reset();
        EXPECT_EQ(show(copy->Begin()->text()), "server");
    }
    EXPECT_EQ(heap::live_blocks(), blocks);
    EXPECT_EQ(heap::live_nodes(), nodes);
}

TEST(PathMemory, OnlyItemsThatStayGetANode) {
    const struct {
        const char* path;
        long items;
    } rows[] = {{"a/..", 0}, {"a/b/../../c/./d/..", 1}, {"../a/../..", 2}, {"./././x", 1}, {"C:/a/b/../../..", 2}};
    for (const auto& row : rows) {
        const astring path(row.path);
        const long before = heap::nodes_made();
        const KordSplitPath split(path);
        EXPECT_EQ(heap::nodes_made() - before, row.items + 1) << row.path;
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
            S viewing(nullptr, source.data(), n);
            EXPECT_EQ(viewing.make_upper().length(), n);
            if (n == 0) continue;
            source.data()[n - 1] = 0; // measured up to the last character before the guard
            EXPECT_EQ(KordCharacterRange<TypeParam>(source.data()).length(), n - 1);
            EXPECT_EQ(S(source.data()).length(), n - 1);
        }
    }
}

} // namespace
