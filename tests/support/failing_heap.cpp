#include "support/failing_heap.h"

#include <cstdlib>

namespace {

long blocks = 0;
long nodes = 0;
long made = 0;
long left = -1; // allocations until one fails; negative: never

bool refuse() {
    return left >= 0 && left-- == 0;
}

} // namespace

namespace heap {

long live_blocks() {
    return blocks;
}
long live_nodes() {
    return nodes;
}
long nodes_made() {
    return made;
}
void fail_after(long n) {
    left = n;
}
void recover() {
    left = -1;
}

} // namespace heap

// The linker sends every call of malloc, realloc and free in the objects it links to these.
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* old, std::size_t size);
void __real_free(void* block);

void* __wrap_malloc(std::size_t size) {
    void* const block = refuse() ? nullptr : __real_malloc(size);
    if (block != nullptr) ++blocks;
    return block;
}
void* __wrap_realloc(void* old, std::size_t size) {
    return refuse() ? nullptr : __real_realloc(old, size);
}
void __wrap_free(void* block) {
    if (block != nullptr) --blocks;
    __real_free(block);
}
}

void* operator new(std::size_t size) {
    void* const node = refuse() ? nullptr : __real_malloc(size);
    if (node == nullptr) throw std::bad_alloc();
    ++nodes;
    ++made;
    return node;
}
void operator delete(void* node) noexcept {
    if (node != nullptr) --nodes;
    __real_free(node);
}
void operator delete(void* node, std::size_t) noexcept {
    operator delete(node);
}
