#ifndef KORD_TESTS_FAILING_HEAP_H
#define KORD_TESTS_FAILING_HEAP_H

#include <new>

/// The heap under test: what malloc and operator new have given out, and a switch that makes them fail.
struct Heap {
    long blocks = 0; ///< of malloc, not yet given back
    long nodes = 0;  ///< of operator new, not yet given back
    long made = 0;   ///< of operator new, since the start
    long left = -1;  ///< allocations that still succeed; negative for all

    bool refuses() { return left >= 0 && left-- == 0; }

    /// Runs the call over and over, with the first, the second, the third ... allocation failing, until it runs clean.
    /// After each failure `unchanged` is asked. Returns how many failures there were.
    template <class Call, class Unchanged>
    long fail_each(Call call, Unchanged unchanged) {
        for (long n = 0;; ++n) {
            left = n;
            try {
                call();
                left = -1;
                return n;
            } catch (const std::bad_alloc&) {
                left = -1;
                unchanged();
            }
        }
    }
};

extern Heap heap;

#endif
