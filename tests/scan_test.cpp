// The walk over matches from the back, at every length and place around a block, with faults beside the text.
#include "core/scan.h"

#include "support/guard.h"
#include "support/text.h"

#include <algorithm>

namespace {

template <class T>
class Scan : public ::testing::Test {};
TYPED_TEST_SUITE(Scan, Widths);

TYPED_TEST(Scan, WalksAllMatchesFromTheBack) {
    // 'w' with another byte beside it differs from 'w' in one half of a wide unit only.
    const auto other = static_cast<TypeParam>(sizeof(TypeParam) == 1 ? 'W' : 'x' << 8 | 'w');
    const kord::Is<TypeParam> wanted('w');
    const kord::IsEither<TypeParam> either('v', 'w');
    for (unsigned int n = 1; n != 67; ++n) {
        for (const bool low : {false, true}) {
            const GuardedText<TypeParam> text(n, low);
            TypeParam* const first = text.data();
            TypeParam* const last = first + n;
            for (unsigned int i = 0; i < n; i += 5) first[i] = other;
            EXPECT_EQ((kord::BackwardMatches(static_cast<const TypeParam*>(first), last, wanted).next()), nullptr);
            for (unsigned int i = 0; i != n; ++i) {
                const unsigned int j = std::min(i + i % 19, n - 1); // a second match, or the same
                const TypeParam at_i = first[i], at_j = first[j];
                first[i] = 'v';
                first[j] = 'w';
                kord::BackwardMatches matches(static_cast<const TypeParam*>(first), last, either);
                EXPECT_EQ(matches.next(), first + j) << n;
                EXPECT_EQ(matches.next(), i == j ? nullptr : first + i) << n;
                EXPECT_EQ(matches.next(), nullptr) << n;
                first[j] = at_j;
                first[i] = at_i;
            }
        }
    }
}

} // namespace
