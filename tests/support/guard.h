#ifndef KORD_TESTS_GUARD_H
#define KORD_TESTS_GUARD_H

#include <cstddef>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

/// A page of memory between two that fault when touched.
class GuardedPage {
  public:
    static constexpr std::size_t size = 4096;

    GuardedPage() {
        void* const all = mmap(nullptr, 3 * size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        page_ = static_cast<char*>(all) + size;
        if (all == MAP_FAILED || mprotect(page_, size, PROT_READ | PROT_WRITE) != 0) std::abort();
    }
    ~GuardedPage() { munmap(page_ - size, 3 * size); }
    GuardedPage(const GuardedPage&) = delete;
    GuardedPage& operator=(const GuardedPage&) = delete;

    char* begin() const { return page_; }
    char* end() const { return page_ + size; }

  private:
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
