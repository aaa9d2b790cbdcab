#ifndef KORD_TEXT_NUMBER_H
#define KORD_TEXT_NUMBER_H

namespace kord {

/// A scanned number and the place where scanning stopped.
template <class T>
struct Scanned {
    unsigned int value;
    const T* stop;
};

/// The digits in `radix`, at most 16, from `first` on, at most to `last`; the first character that does not fit, as no
/// unit of 256 or more does, ends them. A number above 4294967295 gives 4294967295 and, as its end was not looked for,
/// `first` as the place.
template <class T>
Scanned<T> KordScanUnsigned(const T* first, const T* last, unsigned int radix) noexcept;

} // namespace kord

#endif
