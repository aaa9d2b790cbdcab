#ifndef KORD_TESTS_FAILING_HEAP_H
#define KORD_TESTS_FAILING_HEAP_H

/// The heap under test: what malloc and operator new have given out, and a switch that makes one of them fail.
namespace heap {

/// Blocks and nodes given out and not yet given back.
long live_blocks();
long live_nodes();

/// Nodes given out since the start.
long nodes_made();

/// Lets `n` more allocations of either kind succeed and the one after them fail.
void fail_after(long n);
/// Lets all allocations succeed again.
void recover();

/// Runs the call over and over, with the first, the second, the third ... allocation failing, until it runs clean.
/// After each failure `unchanged` is asked. Returns how many failures there were.
template <class Call, class Unchanged>
long fail_each(Call call, Unchanged unchanged);

} // namespace heap

#include <new>

template <class Call, class Unchanged>
long heap::fail_each(Call call, Unchanged unchanged) {
    for (long n = 0;; ++n) {
        fail_after(n);
        try {
            call();
            recover();
            return n;
        } catch (const std::bad_alloc&) {
            recover();
            unchanged();
        }
    }
}

#endif
