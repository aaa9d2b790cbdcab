#include "support/failing_heap.h"

#include <cstdlib>
#include <cstring>

Heap heap;

// The linker sends every call of malloc, realloc and free in the objects it links to these.
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* old, std::size_t size);
void __real_free(void* block);

void* __wrap_malloc(std::size_t size) {
    void* const block = heap.refuses() ? nullptr : __real_malloc(size);
    if (block == nullptr) return nullptr;
    ++heap.blocks;
    return std::memset(block, 0xA5, size); // so that nobody takes new memory for zeros
}
void* __wrap_realloc(void* old, std::size_t size) {
    return heap.refuses() ? nullptr : __real_realloc(old, size);
}
void __wrap_free(void* block) {
    heap.blocks -= block != nullptr ? 1 : 0;
    __real_free(block);
}
}

void* operator new(std::size_t size) {
    void* const node = heap.refuses() ? nullptr : __real_malloc(size);
    if (node == nullptr) throw std::bad_alloc();
    ++heap.nodes;
    ++heap.made;
    return node;
}
void operator delete(void* node) noexcept {
    heap.nodes -= node != nullptr ? 1 : 0;
    __real_free(node);
}
void operator delete(void* node, std::size_t) noexcept {
    operator delete(node);
}
