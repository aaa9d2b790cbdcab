#ifndef KORD_TESTS_DICE_H
#define KORD_TESTS_DICE_H

#include <cstdint>
#include <iterator>
#include <random>

/// Chance that falls the same way in every run.
class Dice {
  public:
    explicit Dice(unsigned int seed) : random_(seed) {}

    /// A number below n.
    unsigned int operator()(std::size_t n) { return static_cast<unsigned int>(random_() % n); }
    std::uint64_t bits() { return std::uint64_t{random_()} << 32 | random_(); }
    template <class C>
    auto pick(const C& all) {
        return all[(*this)(std::size(all))];
    }

  private:
    std::mt19937 random_;
};

#endif
