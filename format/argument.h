#ifndef KORD_FORMAT_ARGUMENT_H
#define KORD_FORMAT_ARGUMENT_H

#include <kord/range.h>

namespace kord {

/// An argument, in the member that its letter of the signature names.
template <class T>
union Argument {
    long d;
    unsigned long u;
    double f;
    T c;
    const KordCharacterRange<T>* s;

    Argument(long n) noexcept : d(n) {}
    Argument(unsigned long n) noexcept : u(n) {}
    Argument(double x) noexcept : f(x) {}
    Argument(T character) noexcept : c(character) {}
    Argument(const KordCharacterRange<T>& text) noexcept : s(&text) {}
};

} // namespace kord

#endif
