#include <kord/list.h>

#include <gtest/gtest.h>

#include <new>
#include <vector>

namespace {

using List = os_list<int>;
using Values = std::vector<int>;

List make(const Values& values) {
    List list;
    for (const int v : values) list.insert(list.end(), v);
    return list;
}

Values values(const List& list) {
    Values forward(list.begin(), list.end()), backward;
    for (auto p = list.end(); p != list.begin();) backward.insert(backward.begin(), *--p);
    EXPECT_EQ(forward, backward);
    EXPECT_EQ(forward.size(), list.size());
    return forward;
}

TEST(List, InsertsBeforeAndErasesAtAPosition) {
    static_assert(std::bidirectional_iterator<List::const_iterator>);
    List list = make({2, 3});
    const auto two = list.begin();
    EXPECT_EQ(*list.insert(two, 1), 1);
    EXPECT_EQ(values(list), (Values{1, 2, 3}));
    auto walk = list.begin();
    EXPECT_EQ(*walk++, 1);
    EXPECT_EQ(*walk--, 2);
    EXPECT_EQ(*list.erase(two), 3);
    list.erase(list.erase(walk));
    EXPECT_EQ(values(list), Values());
    EXPECT_TRUE(list.empty() && list.begin() == list.end());
}

TEST(List, AssignsOverWhatIsThereThenAppendsOrErases) {
    const List three = make({1, 2, 3});
    for (const Values& old : {Values{}, Values{9}, Values{9, 9, 9}, Values{9, 9, 9, 9, 9}}) {
        List target = make(old);
        const auto first = target.begin();
        target = three;
        EXPECT_EQ(values(target), (Values{1, 2, 3}));
        EXPECT_TRUE(old.empty() || target.begin() == first); // the same node, overwritten
        List copy(target);
        copy.erase(copy.begin());
        EXPECT_EQ(values(target = static_cast<const List&>(target)), (Values{1, 2, 3}));
        EXPECT_EQ(values(copy), (Values{2, 3}));
    }
}

/// Hands out nodes and remembers how many are out and for whom.
struct Pool final : os_list_allocator {
    int out = 0;
    const void* list = nullptr;

    void* allocate(std::size_t size, unsigned int count, const void* asking) override {
        ++out;
        list = asking;
        return ::operator new(count == 1 ? size : 0);
    }
    void deallocate(void* node) noexcept override {
        --out;
        ::operator delete(node);
    }
};

TEST(List, TakesItsNodesFromItsAllocator) {
    Pool pool;
    {
        List list(List::allocator_handle{&pool, nullptr});
        list.insert(list.end(), 1);
        EXPECT_EQ(pool.list, &list);
        List copy(list);
        EXPECT_EQ(pool.out, 4); // a copy has the allocator of its source
        copy = make({5, 6, 7});
        EXPECT_EQ(pool.out, 6); // and an assigned list keeps its own
    }
    EXPECT_EQ(pool.out, 0);
}

} // namespace
