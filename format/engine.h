#ifndef KORD_FORMAT_ENGINE_H
#define KORD_FORMAT_ENGINE_H

#include <kord/basic_string.h>

#include <cstdint>

namespace kord {

/// The most arguments that a signature has.
inline constexpr unsigned int most_arguments = 2;

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

/// Renders the template with the arguments that the signature describes and lets the target take over the result, or
/// nothing if they do not agree. `lengthSum` is the length of all texts among the arguments, which may be the target.
template <class T>
void format_typed(BasicString<T>& target, const KordCharacterRange<T>& tmpl, const char* signature,
                  std::uint64_t lengthSum, const Argument<T>* arguments);

} // namespace kord

#endif
