// A long random walk over strings that share blocks, against the model: text, sharing, place and capacity after every
// step, every step with its allocation refused first.
#include "support/dice.h"
#include "support/failing_heap.h"
#include "support/model.h"
#include "support/text.h"

#include <kord/chars.h>

#include <map>
#include <utility>

namespace {

struct Step {
    unsigned int kind, pos, n, spos, sn, c;
    std::size_t i, j; // the string that changes, and another or the same
};

template <class T>
class Walk : public ::testing::Test {
  protected:
    using R = KordCharacterRange<T>;
    static constexpr unsigned int kinds = 28, strings = 5;

    const long blocks_before = heap.blocks;
    String<T> real[strings];
    Model<T> model[strings];
    const std::vector<T> foreign = {0x41, 0, static_cast<T>(0x2561), 0x61, static_cast<T>(0xFFFF), 0x7A, 0x20, 0};

    /// Carries the step out on the strings. Returns what an iterator form returned, as an offset.
    std::ptrdiff_t do_real(const Step& x) {
        String<T>& s = real[x.i];
        const String<T>& o = real[x.j];
        const T c = static_cast<T>(x.c);
        const R piece(o, x.spos, x.sn);
        const R text(foreign.data(), 0, x.sn % 8);
        T* const p = const_cast<T*>(s.cbegin()) + std::min(x.pos, s.length());
        T* const q = p + std::min(x.n, static_cast<unsigned int>(s.cend() - p));
        switch (x.kind) {
        case 0: s.reserve(x.n); break;
        case 1: s.append(piece); break;
        case 2: s.append(text); break;
        case 3: s.append(x.n, c); break;
        case 4: s.assign(piece); break;
        case 5: s.assign(x.n, c); break;
        case 6: s.assign(o, x.spos, x.sn); break;
        case 7: s = o; break;
        case 8: s.erase(x.pos, x.n); break;
        case 9: return s.erase(p, q) - s.cbegin();
        case 10: return s.empty() ? 0 : s.erase(p == s.cend() ? p - 1 : p) - s.cbegin();
        case 11: s.insert(x.pos, x.n, c); break;
        case 12: s.insert(x.pos, piece); break;
        case 13: return s.insert(p, c) - s.cbegin();
        case 14: s.replace(x.pos, x.n, c); break;
        case 15: s.replace(x.pos, x.n, o, x.spos, x.sn); break;
        case 16: s.replace(p, q, text.begin(), text.end()); break;
        case 17: s.resize(x.n, c); break;
        case 18: x.n % 2 == 0 ? s.make_upper() : s.make_lower(); break;
        case 19: s.set_at(x.pos, c); break;
        case 20: s.erase(); break;
        case 21: s.assign_literal(x.n % 4 == 0 ? nullptr : foreign.data() + 2); break;
        case 22: s += c; break;
        case 23: s = o.substr(x.spos, x.sn); break;
        case 24: std::fill_n(s.get_buffer(x.n % 20 + 3), x.n % 20 + 3, c), s.release_buffer(x.n % 20); break;
        case 25: swap(s, real[x.j]); break;
        case 26: s = std::move(real[x.j]); break;
        case 27: s = String<T>(std::move(real[x.j])); break;
        default: ADD_FAILURE();
        }
        return 0;
    }

    std::ptrdiff_t do_model(const Step& x) {
        Model<T>& s = model[x.i];
        const char32_t c = x.c % (sizeof(T) == 1 ? 0x100 : 0x10000);
        const Model<T> other = x.kind == 6 || x.kind == 7 || x.kind == 23 ? model[x.j] : Model<T>();
        const typename Model<T>::Source piece = s.source(model[x.j], x.spos, x.sn);
        const typename Model<T>::Source text = {codes(R(foreign.data(), 0, x.sn % 8))};
        const std::size_t size = s.text.size();
        std::size_t p = std::min<std::size_t>(x.pos, size);
        switch (x.kind) {
        case 0: s.reserve(x.n); break;
        case 1: s.write(size, piece); break;
        case 2: s.write(size, text); break;
        case 3: s.fill(size, x.n, c); break;
        case 4: s.write(0, piece); break;
        case 5: s.reserve(x.n), s.text.assign(x.n, c); break;
        case 6:
        case 23: s.view(other, x.spos, x.sn); break;
        case 7: s = other; break;
        case 8: s.erase(x.pos, x.n); break;
        case 9: s.erase(p, x.n); return p;
        case 10:
            if (size == 0) return 0;
            p = std::min(p, size - 1);
            p == 0 ? s.erase(0, 1) : s.replace(p, 1, {});
            return p;
        case 11: s.fill(x.pos, x.n, c); break;
        case 12: x.pos <= size ? s.replace(x.pos, 0, piece) : void(); break;
        case 13: s.replace(p, 0, {{c}}); return p;
        case 14: s.replace(x.pos, x.n, {{c}}); break;
        case 15: s.replace(x.pos, x.n, piece); break;
        case 16: s.replace(p, x.n, text); break;
        case 17: s.resize(x.n, c); break;
        case 18:
            s.reserve(size);
            for (char32_t& d : s.text) d = x.n % 2 == 0 ? KordToUpper(d) : KordToLower(d);
            break;
        case 19:
            if (x.pos < size) s.reserve(size), s.text[x.pos] = c;
            break;
        case 20: s.empty(); break;
        case 21: s = x.n % 4 == 0 ? Model<T>() : Model<T>{codes(R(foreign.data() + 2)), nullptr, 0, false}; break;
        case 22: s.fill(size, 1, c); break;
        case 24: s.reserve(x.n % 20 + 3), s.text.assign(x.n % 20, c); break;
        case 25: std::swap(s, model[x.j]); break;
        case 26:
        case 27: s = std::exchange(model[x.j], {}); break;
        default: break;
        }
        return 0;
    }

    void compare() {
        std::map<const void*, const void*> blocks, back; // of the strings and of the model, one to one
        for (std::size_t i = 0; i != strings; ++i) {
            const Model<T>& m = model[i];
            auto* const body = block_of(real[i]);
            ASSERT_EQ(codes(real[i]), m.text);
            ASSERT_EQ(real[i].capacity(), m.block ? *m.block : 0u);
            ASSERT_EQ(real[i].data() == nullptr, m.null);
            ASSERT_EQ(holders(real[i]), m.block.use_count());
            if (body == nullptr) continue;
            ASSERT_EQ(blocks.emplace(body, m.block.get()).first->second, m.block.get());
            ASSERT_EQ(back.emplace(m.block.get(), body).first->second, body);
            ASSERT_TRUE(m.null || real[i].data() - body->first() == static_cast<std::ptrdiff_t>(m.offset));
            ASSERT_EQ(body->first()[real[i].capacity()], 0);
        }
        ASSERT_EQ(heap.blocks - blocks_before, static_cast<long>(blocks.size()));
    }

    void step(const Step& x) {
        std::ptrdiff_t returned = 0, expected = 0;
        bool too_long = false;
        heap.left = 0;
        try {
            returned = do_real(x);
        } catch (const std::bad_alloc&) {
            heap.left = -1;
            compare();     // as before
            heap.left = 1; // no edit needs more
            returned = do_real(x);
        } catch (const os_length_error&) {
            too_long = true;
        }
        heap.left = -1;
        try {
            expected = do_model(x);
            ASSERT_FALSE(too_long);
        } catch (const typename Model<T>::TooLong&) {
            ASSERT_TRUE(too_long);
        }
        ASSERT_EQ(returned, expected);
        compare();
        // What adds or replaces ends in a terminator.
        const bool terminates =
            x.kind == 18 || x.kind == 22 || (x.kind >= 1 && x.kind <= 3) || (x.kind >= 13 && x.kind <= 16);
        ASSERT_TRUE(!terminates || too_long || *real[x.i].cend() == 0);
    }

    /// `c_str` alone depends on what lies behind the text: a zero there, and nothing happens.
    void terminate(std::size_t i) {
        const String<T>& s = real[i];
        if (!s.empty() && *s.cend() != 0) model[i].reserve(s.length());
        ASSERT_EQ(s.c_str()[s.length()], 0);
        compare();
    }
};
TYPED_TEST_SUITE(Walk, Widths);

TYPED_TEST(Walk, StaysWithTheModel) {
    Dice below(20);
    const auto count = [&] {
        const unsigned int n = below(40);
        return n < 2 ? 0xFFFFFFFFu - 5 * n : n < 20 ? n - 2 : below(8);
    };
    std::size_t characters = 0, sharing = 0;
    for (int round = 0; round != 40000; ++round) {
        const Step x{below(this->kinds), count(), count(), count(), count(), below(3) * (0xE0 + below(0x3000)),
                     below(5),           below(5)};
        this->step(x);
        if (below(4) == 0) this->terminate(x.i);
        if (this->HasFatalFailure()) FAIL() << "in round " << round << ", a step of kind " << x.kind;
        characters += this->real[x.i].length();
        sharing += holders(this->real[x.i]) > 1 ? 1 : 0;
        if (this->real[x.i].length() > 200) this->real[x.i].erase(), this->model[x.i].empty();
    }
    EXPECT_GT(characters, 150000u); // or the walk was too easy
    EXPECT_GT(sharing, 3000u);
}

} // namespace
