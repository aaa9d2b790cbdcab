#include "format/field.h"

#include "text/classify.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

using kord::FormatSpec;

/// How many of a field's first characters stay in front of the padding: a sign, or the prefix of a hexadecimal number,
/// if it is padded with zeros.
template <class T>
std::size_t kept_in_front(const FormatSpec<T>& spec, T first) noexcept {
    if ((spec.flags & kord::flag_zeros) == 0) return 0;
    if (kord::has_flag(first, kordSign) || (first == ' ' && (spec.flags & kord::flag_blank))) return 1;
    return (spec.flags & kord::flag_alternate) && (spec.conversion == 'x' || spec.conversion == 'X') ? 2 : 0;
}

} // namespace

template <class T>
T* kord::pad(T* start, T* end, const FormatSpec<T>& spec) noexcept {
    const auto written = static_cast<std::size_t>(end - start);
    if (written >= spec.width) return end;
    const std::size_t padding = spec.width - written;
    T* gap = end;
    if ((spec.flags & flag_left) == 0 && written != 0) {
        gap = start + std::min(written, kept_in_front(spec, *start));
        std::memmove(gap + padding, gap, static_cast<std::size_t>(end - gap) * sizeof(T));
    }
    std::fill_n(gap, padding, static_cast<T>(spec.flags & flag_zeros ? '0' : ' '));
    return end + padding;
}

template char* kord::pad(char*, char*, const FormatSpec<char>&) noexcept;
template unsigned short* kord::pad(unsigned short*, unsigned short*, const FormatSpec<unsigned short>&) noexcept;
