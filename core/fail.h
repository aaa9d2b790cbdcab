#ifndef KORD_CORE_FAIL_H
#define KORD_CORE_FAIL_H

namespace kord {

/// The only two ways in which the library fails; errors.cpp holds the only `throw`s.
[[noreturn]] void fail_length();
[[noreturn]] void fail_memory();

} // namespace kord

#endif
