#ifndef KORD_TESTS_GUARD_H
#define KORD_TESTS_GUARD_H

#include <cstddef>
#include <cstdlib>

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/mman.h>
#endif

/// A page of memory between two that fault when touched.
class GuardedPage {
  public:
    static constexpr std::size_t size = 4096;

    GuardedPage() : page_(reserve() + size) {
        if (!open(page_)) std::abort();
    }
    ~GuardedPage() { release(page_ - size); }
    GuardedPage(const GuardedPage&) = delete;
    GuardedPage& operator=(const GuardedPage&) = delete;

    char* begin() const { return page_; }
    char* end() const { return page_ + size; }

  private:
#if defined(_WIN32)
    static char* reserve() {
        void* const all = VirtualAlloc(nullptr, 3 * size, MEM_RESERVE, PAGE_NOACCESS);
        if (all == nullptr) std::abort();
        return static_cast<char*>(all);
    }
    static bool open(char* page) {
        return VirtualAlloc(page, size, MEM_COMMIT, PAGE_READWRITE) != nullptr;
    }
    static void release(char* all) {
        VirtualFree(all, 0, MEM_RELEASE);
    }
#else
    static char* reserve() {
        void* const all = mmap(nullptr, 3 * size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (all == MAP_FAILED) std::abort();
        return static_cast<char*>(all);
    }
    static bool open(char* page) {
        return mprotect(page, size, PROT_READ | PROT_WRITE) == 0;
    }
    static void release(char* all) {
        munmap(all, 3 * size);
    }
#endif

    char* page_;
};

/// `n` characters 'g' that touch a guard: the lower one, or the upper one.
template <class T>
class GuardedText {
  public:
    GuardedText(std::size_t n, bool low)
        : data_(reinterpret_cast<T*>(low ? page_.begin() : page_.end() - n * sizeof(T))) {
        for (std::size_t i = 0; i != n; ++i) data_[i] = 'g';
    }
    T* data() const { return data_; }

  private:
    GuardedPage page_;
    T* data_;
};

#endif
