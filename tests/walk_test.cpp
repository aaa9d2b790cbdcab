// A long random walk over strings that share blocks, against the model: text, sharing, place and capacity after every
// step, every step with its allocation refused first.
#include "support/failing_heap.h"
#include "support/model.h"
#include "support/text.h"

#include <kord/chars.h>

#include <map>
#include <random>
#include <set>

namespace {

constexpr unsigned int npos = 0xFFFFFFFFu;

template <class T>
class Walk : public ::testing::Test {
  protected:
    using S = String<T>;
    using M = Model<T>;
    using R = KordCharacterRange<T>;
    static constexpr std::size_t strings = 5;

    struct Step {
        unsigned int kind, pos, n, spos, sn;
        T c;
        std::size_t i, j;
    };

    const long blocks_before = heap::live_blocks();
    S real[strings];
    M model[strings];
    const std::vector<T> foreign = {0x41,        0, static_cast<T>(0x2561), 0x61, static_cast<T>(0xFFFF), 0x7A, 0x20,
                                    0xE9 & 0x7F, 0};
    static constexpr unsigned int kinds = 26;

    /// Carries the step out on the strings. Returns what an iterator form returned, as an offset.
    std::ptrdiff_t do_real(const Step& x) {
        S& s = real[x.i];
        const S& o = real[x.j];
        const R piece(o, x.spos, x.sn);
        const R text(foreign.data(), 0, x.sn % 8);
        const T* const begin = s.cbegin();
        T* const p = const_cast<T*>(begin) + std::min(x.pos, s.length());
        T* const q = p + std::min<std::ptrdiff_t>(x.n, s.cend() - p);
        switch (x.kind) {
        case 0: s.reserve(x.n); break;
        case 1: s.append(piece); break;
        case 2: s.append(text); break;
        case 3: s.append(x.n, x.c); break;
        case 4: s.assign(piece); break;
        case 5: s.assign(x.n, x.c); break;
        case 6: s.assign(o, x.spos, x.sn); break;
        case 7: s = o; break;
        case 8: s.erase(x.pos, x.n); break;
        case 9: return s.erase(p, q) - s.cbegin();
        case 10: return s.empty() ? 0 : s.erase(p - (p == s.cend() ? 1 : 0)) - s.cbegin();
        case 11: s.insert(x.pos, x.n, x.c); break;
        case 12: s.insert(x.pos, piece); break;
        case 13: return s.insert(p, x.c) - s.cbegin();
        case 14: s.replace(x.pos, x.n, x.c); break;
        case 15: s.replace(x.pos, x.n, o, x.spos, x.sn); break;
        case 16: s.replace(p, q, text.begin(), text.end()); break;
        case 17: s.resize(x.n, x.c); break;
        case 18: s.make_upper(); break;
        case 19: s.set_at(x.pos, x.c); break;
        case 20: s.erase(); break;
        case 21: s.assign_literal(foreign.data() + 2); break;
        case 22: s += x.c; break;
        case 23: s = o.substr(x.spos, x.sn); break;
        case 24: {
            T* const buffer = s.get_buffer(x.n + 3);
            std::fill_n(buffer, x.n + 3, x.c);
            s.release_buffer(x.n);
            break;
        }
        case 25: swap(s, real[x.j]); break;
        default: ADD_FAILURE();
        }
        return 0;
    }

    std::ptrdiff_t do_model(const Step& x) {
        M& s = model[x.i];
        const M& o = model[x.j];
        const typename M::Source piece = s.source(o, x.spos, x.sn);
        const typename M::Source text = {{foreign.begin(), foreign.begin() + x.sn % 8}};
        const unsigned int p = std::min(x.pos, s.size());
        switch (x.kind) {
        case 0: s.reserve(x.n); break;
        case 1: s.append(piece); break;
        case 2: s.append(text); break;
        case 3: s.fill(s.size(), x.n, x.c); break;
        case 4: s.assign(piece); break;
        case 5: s.reserve(x.n), s.text.assign(x.n, x.c); break;
        case 6:
        case 23: s.view(M(o), x.spos, x.sn); break;
        case 7: s = M(o); break;
        case 8: s.erase(x.pos, x.n); break;
        case 9:
            if (p == s.size() && p != 0) break; // nothing at the end: the end moves to itself
            if (x.n == 0 && p != 0) {
                s.replace(p, 0, {}); // nothing in the middle: a replacement all the same
            } else {
                s.erase(p, x.n);
            }
            return p;
        case 10: {
            if (s.size() == 0) return 0;
            const unsigned int at = std::min(p, s.size() - 1);
            if (at == 0)
                s.erase(0, 1);
            else
                s.replace(at, 1, {});
            return at;
        }
        case 11: s.fill(x.pos, x.n, x.c); break;
        case 12:
            if (x.pos <= s.size()) s.replace(x.pos, 0, piece);
            break;
        case 13: s.replace(p, 0, {{x.c}}); return p;
        case 14: s.replace(x.pos, x.n, {{x.c}}); break;
        case 15: s.replace(x.pos, x.n, piece); break;
        case 16: s.replace(p, x.n, text); break;
        case 17: s.resize(x.n, x.c); break;
        case 18:
            s.reserve(s.size());
            for (T& c : s.text)
                c = static_cast<T>(KordToUpper(static_cast<std::make_unsigned_t<T>>(c)));
            break;
        case 19:
            if (x.pos < s.size()) s.reserve(s.size()), s.text[x.pos] = x.c;
            break;
        case 20: s.empty(); break;
        case 21: s = {{foreign.begin() + 2, foreign.end() - 1}, nullptr, 0, false}; break;
        case 22: s.fill(s.size(), 1, x.c); break;
        case 24: s.reserve(x.n + 3), s.text.assign(x.n, x.c); break;
        case 25: std::swap(s, model[x.j]); break;
        default: break;
        }
        return x.kind == 9 ? p : 0;
    }

    void compare(const Step& x) {
        std::map<const void*, const void*> blocks; // of the strings, of the model
        std::set<const void*> both;
        for (std::size_t i = 0; i != strings; ++i) {
            const M& m = model[i];
            const S& s = real[i];
            auto* const body = block_of(s);
            ASSERT_EQ(show<T>(s), show(R(m.text.data(), 0, m.size()))) << x.kind;
            ASSERT_EQ(s.capacity(), m.block ? m.block->capacity : 0u) << x.kind;
            ASSERT_EQ(s.data() == nullptr, m.null) << x.kind;
            ASSERT_EQ(holders(s), m.block.use_count()) << x.kind;
            ASSERT_EQ(blocks.emplace(body, m.block.get()).first->second, m.block.get()) << x.kind;
            both.insert(m.block.get());
            if (body == nullptr) continue;
            ASSERT_TRUE(m.null || s.data() - body->first() == m.offset) << x.kind;
            ASSERT_EQ(body->first()[s.capacity()], 0) << x.kind;
        }
        ASSERT_EQ(both.size(), blocks.size());
        both.erase(nullptr);
        ASSERT_EQ(heap::live_blocks() - blocks_before, static_cast<long>(both.size())) << x.kind;
    }

    /// `c_str` alone depends on what lies behind the text: a zero there, and nothing happens.
    void terminate(std::size_t i) {
        if (model[i].size() != 0 && *real[i].cend() != 0) model[i].reserve(model[i].size());
        const T* const text = real[i].c_str();
        ASSERT_EQ(text[real[i].length()], 0);
        ASSERT_TRUE(real[i].empty() || text == real[i].data());
    }

    void step(const Step& x) {
        std::ptrdiff_t returned = 0, expected = 0;
        bool refused = false, long_before = false, long_now = false;
        heap::fail_after(0);
        try {
            returned = do_real(x);
        } catch (const std::bad_alloc&) {
            refused = true;
        } catch (const os_length_error&) {
            long_now = true;
        }
        heap::recover();
        if (refused) {
            compare(x); // as before
            if (this->HasFatalFailure()) return;
            returned = do_real(x);
        }
        try {
            expected = do_model(x);
        } catch (const typename M::TooLong&) {
            long_before = true;
        }
        ASSERT_EQ(long_now, long_before) << x.kind;
        ASSERT_EQ(returned, expected) << x.kind;
        compare(x);
    }
};
TYPED_TEST_SUITE(Walk, Widths);

TYPED_TEST(Walk, StaysWithTheModel) {
    std::mt19937 random(20);
    const auto below = [&](unsigned int n) { return static_cast<unsigned int>(random() % n); };
    const auto count = [&] {
        const unsigned int n = below(40);
        return n == 0 ? npos : n == 1 ? npos - 5 : n < 20 ? n - 2 : below(8);
    };
    for (int round = 0; round != 40000; ++round) {
        typename TestFixture::Step x{below(TestFixture::kinds),
                                     count(),
                                     count(),
                                     count(),
                                     count(),
                                     static_cast<TypeParam>(below(4) == 0 ? 0 : 0xE0 + below(0x3000)),
                                     below(5),
                                     below(5)};
        if (x.kind == 24) x.n = below(20);
        this->step(x);
        if (this->HasFatalFailure()) FAIL() << "in round " << round;
        if (below(4) == 0) this->terminate(x.i);
        this->compare(x);
        if (this->real[x.i].length() > 200) this->real[x.i].erase(), this->model[x.i].empty();
        if (this->HasFatalFailure()) FAIL() << "after round " << round;
    }
}

} // namespace
