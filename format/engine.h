#ifndef KORD_FORMAT_ENGINE_H
#define KORD_FORMAT_ENGINE_H

#include "format/argument.h"

#include <kord/basic_string.h>

#include <cstdint>

namespace kord {

/// The most arguments that a signature has.
inline constexpr unsigned int most_arguments = 2;

/// Renders the template with the arguments that the signature describes and lets the target take over the result, or
/// nothing if they do not agree. `lengthSum` is the length of all texts among the arguments, which may be the target.
template <class T>
void format_typed(BasicString<T>& target, const KordCharacterRange<T>& tmpl, const char* signature,
                  std::uint64_t lengthSum, const Argument<T>* arguments);

} // namespace kord

#endif
