#ifndef KORD_FORMAT_REAL_H
#define KORD_FORMAT_REAL_H

#include <cstddef>

namespace kord {

/// Room for every text of a real number, its sign and a terminator.
inline constexpr std::size_t real_room = 32;

/// Writes the text of `KordFromReal`, with a point and without a terminator, and returns where it ends. The buffer has
/// `real_room`.
template <class T>
T* real_text(double value, T* buffer, int precision, bool plus, bool nudge) noexcept;

} // namespace kord

#endif
