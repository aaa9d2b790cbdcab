#include "core/fail.h"

#include <kord/errors.h>

#include <new>

namespace kord {
namespace {

/// `std::bad_alloc` takes no text of its own, and what its `what` says differs between run times.
class BadAllocation final : public std::bad_alloc {
  public:
    const char* what() const noexcept override { return "bad allocation"; }
};

} // namespace

void fail_length() {
    throw os_length_error("BasicString<T>::reserve(c) with c > 0x100000");
}

void fail_memory() {
    throw BadAllocation();
}

} // namespace kord
