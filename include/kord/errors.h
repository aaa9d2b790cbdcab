#ifndef KORD_ERRORS_H
#define KORD_ERRORS_H

#include <kord/export.h>

#include <exception>

/// The base of the library's own exceptions, to catch them by; never thrown itself.
///
/// The library throws two things only: `os_length_error` for a text longer than the limit, and an exception derived
/// from `std::bad_alloc`, saying "bad allocation", when the heap refuses a string's block (for a list's node it is the
/// run time's own `std::bad_alloc`). After either, the string at hand (but see `BasicString::format_path`) and every
/// string that shares its block are exactly as before.
class KORD_TYPE os_logic_error : public std::exception {
  public:
    /// Keeps a copy of the message in the object; past 63 characters it is cut.
    explicit os_logic_error(const char* message) noexcept {
        unsigned int n = 0;
        for (; n + 1 < sizeof message_ && message[n] != '\0'; ++n) message_[n] = message[n];
    }
    os_logic_error(const os_logic_error&) noexcept = default;
    os_logic_error& operator=(const os_logic_error&) noexcept = default;
    ~os_logic_error() override = default;

    /// The message, valid as long as the object.
    const char* what() const noexcept override { return message_; }

  private:
    char message_[64] = {};
};

/// A text was asked to hold more characters than `lengthLimit`; nothing has changed.
class KORD_TYPE os_length_error : public os_logic_error {
  public:
    using os_logic_error::os_logic_error;
};

#endif
