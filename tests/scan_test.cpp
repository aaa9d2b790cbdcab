// The loops against their plain twins, at every length and place around a block, with faults beside the text.
#include "core/scan.h"

#include "core/lanes.h"
#include "support/guard.h"
#include "support/text.h"

#include <algorithm>

namespace {

template <class T>
class Scan : public ::testing::Test {};
TYPED_TEST_SUITE(Scan, Widths);

TYPED_TEST(Scan, FindsWhatThePlainLoopsFind) {
    // 'G' with another byte differs from 'g' in one half of a wide unit only.
    const auto other = static_cast<TypeParam>(sizeof(TypeParam) == 1 ? 'G' : 'x' << 8 | 'w');
    const kord::Is<TypeParam> wanted('w');
    for (unsigned int n = 0; n != 67; ++n) {
        for (const bool low : {false, true}) {
            const GuardedText<TypeParam> text(n, low);
            TypeParam* const first = text.data();
            TypeParam* const last = first + n;
            for (unsigned int i = 0; i != n; ++i) {
                if (i % 5 == 1) first[i] = other;
            }
            EXPECT_EQ(kord::scan_forward<TypeParam>(first, last, wanted), last);
            EXPECT_EQ(kord::scan_backward<TypeParam>(first, last, wanted), last);
            for (unsigned int i = 0; i != n; ++i) {
                for (const unsigned int step : {1u, 9u}) {
                    const TypeParam was = first[i], after = first[std::min(i + step, n - 1)];
                    first[i] = first[std::min(i + step, n - 1)] = 'w';
                    EXPECT_EQ(kord::scan_forward<TypeParam>(first, last, wanted), first + i) << n;
                    EXPECT_EQ(kord::scan_backward<TypeParam>(first, last, wanted), first + std::min(i + step, n - 1))
                        << n;
                    first[std::min(i + step, n - 1)] = after;
                    first[i] = was;
                }
            }
        }
    }
}

TYPED_TEST(Scan, LanesCompareCodesAsUnsigned) {
    using L = kord::Lanes<TypeParam>;
    const unsigned int top = sizeof(TypeParam) == 1 ? 0xFF : 0xFFFF;
    for (const unsigned int low : {0u, 1u, 0x7Fu, 0x80u, top - 1, top}) {
        for (const unsigned int high : {low, low + (top - low) / 2, top}) {
            for (const unsigned int c :
                 {0u, 1u, 0x7Eu, 0x7Fu, 0x80u, 0x81u, 0xFFu, top / 2, top / 2 + 1, top - 1, top}) {
                const bool in = c >= low && c <= high;
                EXPECT_EQ(in_range(L::splat(c), low, high).mask() != 0, in) << c << " in " << low << ".." << high;
                EXPECT_EQ(equal(L::splat(c), L::splat(low)).mask() != 0, c == low);
            }
        }
    }
    std::vector<TypeParam> text(L::count, 0x7F);
    EXPECT_TRUE(L::load(text.data()).is_ascii());
    for (unsigned int i = 0; i != L::count; ++i) {
        text[i] = static_cast<TypeParam>(sizeof(TypeParam) == 1 ? 0x80 : 0x100 << (i % 8));
        EXPECT_FALSE(L::load(text.data()).is_ascii()) << i;
        text[i] = 0x7F;
    }
}

} // namespace
