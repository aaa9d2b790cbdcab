#ifndef KORD_TEXT_NUMBER_H
#define KORD_TEXT_NUMBER_H

/// The scanners behind the number members of a range. Each reads from `first` on, at most to `last`, and stops at the
/// first character that does not fit. Units of 256 and more never do.
namespace kord {

/// A scanned number and the place where scanning stopped.
template <class T>
struct Scanned {
    unsigned int value;
    const T* stop;
};

/// Digits in `radix`, at most 16. A number above 4294967295 gives 4294967295 and, as its end was not looked for,
/// `first` as the place.
template <class T>
Scanned<T> KordScanUnsigned(const T* first, const T* last, unsigned int radix) noexcept;

/// A sign or none and decimal digits; saturates.
template <class T>
int KordScanInt(const T* first, const T* last) noexcept;

/// A sign or none, decimal digits, and a separator and more digits or neither.
template <class T>
double KordScanReal(const T* first, const T* last) noexcept;

} // namespace kord

#endif
