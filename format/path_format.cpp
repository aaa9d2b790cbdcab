#include "core/copy.h"
#include "core/draft.h"

#include <kord/basic_string.h>

namespace {

constexpr unsigned int dots = 3; // of an ellipsis

/// Writes an ellipsis and returns where it ends.
template <class T>
T* put_dots(T* to, unsigned int n = dots) noexcept {
    for (; n != 0; --n) *to++ = '.';
    return to;
}

template <class T>
T* put_piece(T* to, const KordCharacterRange<T>& text, unsigned int pos, unsigned int n) noexcept {
    kord::copy_characters(to, text.begin() + pos, n);
    return to + n;
}

/// A path's start that is kept: up to the last folder before which `excess` characters can go; `last` is the position
/// of the last backslash. 0 if that leaves nothing but the beginning of a network path or one character.
template <class T>
unsigned int kept_start(const KordCharacterRange<T>& path, unsigned int last, unsigned int excess) noexcept {
    if (last <= excess) return 0;
    const unsigned int folder = path.rfind(T{'\\'}, last - excess - 1);
    if (folder == path.npos || folder == 0 || path[folder - 1] == '\\') return 0;
    return folder + 1;
}

} // namespace

template <class T>
BasicString<T>& BasicString<T>::format_path(unsigned int maxLength, t_format_path mode) {
    const unsigned int old = length();
    if (old <= maxLength) return *this;
    if (maxLength <= dots) {
        put_dots(get_buffer(maxLength), maxLength);
        return *this;
    }
    switch (mode) {
    case ellipsis_middle:
    case ellipsis_middle_fill: break;
    case ellipsis_end: put_dots(get_buffer(maxLength) + maxLength - dots); return *this;
    case ellipsis_begin:
        begin_ = end_ - maxLength;
        put_dots(get_buffer(maxLength));
        return *this;
    default: return *this;
    }
    const unsigned int last = this->rfind(T{'\\'});
    if (last == npos) return format_path(maxLength, ellipsis_end);
    const unsigned int component = old - last; // with its backslash
    if (component >= maxLength - 2) {
        begin_ += last + 1;
        return format_path(maxLength, ellipsis_end);
    }
    const unsigned int start = kept_start(*this, last, old - (maxLength - dots));
    const unsigned int room = maxLength - dots - component;
    const unsigned int front = mode == ellipsis_middle_fill && start != 0 ? room : start;
    kord::Draft<T> draft(front + dots + component);
    T* const at = put_dots(put_piece(draft.first(), *this, 0, front));
    draft.move_to(*this, put_piece(at, *this, last, component));
    return *this;
}

template class BasicString<char>;
template class BasicString<unsigned short>;
