#include "text/number.h"

#include <kord/range.h>
#include <kord/real.h>

#include "core/lanes.h"
#include "text/classify.h"

#include <algorithm>
#include <cfloat>
#include <cstdint>
#include <limits>

// Every step of a real number is rounded to `double` and to nothing else.
static_assert(FLT_EVAL_METHOD == 0, "on x86 with 32 bits, compile with -msse2 -mfpmath=sse");
static_assert(std::numeric_limits<double>::is_iec559);

namespace {

// clang-format off
/// 10^16 and up, as the compiler rounds them: correctly, where the run time's pow may be off in the last place.
constexpr double higher_powers[] = {
    1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22, 1e23, 1e24, 1e25, 1e26, 1e27, 1e28, 1e29,
    1e30, 1e31, 1e32, 1e33, 1e34, 1e35, 1e36, 1e37, 1e38, 1e39, 1e40, 1e41, 1e42, 1e43,
    1e44, 1e45, 1e46, 1e47, 1e48, 1e49, 1e50, 1e51, 1e52, 1e53, 1e54, 1e55, 1e56, 1e57,
    1e58, 1e59, 1e60, 1e61, 1e62, 1e63, 1e64, 1e65, 1e66, 1e67, 1e68, 1e69, 1e70, 1e71,
    1e72, 1e73, 1e74, 1e75, 1e76, 1e77, 1e78, 1e79, 1e80, 1e81, 1e82, 1e83, 1e84, 1e85,
    1e86, 1e87, 1e88, 1e89, 1e90, 1e91, 1e92, 1e93, 1e94, 1e95, 1e96, 1e97, 1e98, 1e99,
    1e100, 1e101, 1e102, 1e103, 1e104, 1e105, 1e106, 1e107, 1e108, 1e109, 1e110, 1e111, 1e112, 1e113,
    1e114, 1e115, 1e116, 1e117, 1e118, 1e119, 1e120, 1e121, 1e122, 1e123, 1e124, 1e125, 1e126, 1e127,
    1e128, 1e129, 1e130, 1e131, 1e132, 1e133, 1e134, 1e135, 1e136, 1e137, 1e138, 1e139, 1e140, 1e141,
    1e142, 1e143, 1e144, 1e145, 1e146, 1e147, 1e148, 1e149, 1e150, 1e151, 1e152, 1e153, 1e154, 1e155,
    1e156, 1e157, 1e158, 1e159, 1e160, 1e161, 1e162, 1e163, 1e164, 1e165, 1e166, 1e167, 1e168, 1e169,
    1e170, 1e171, 1e172, 1e173, 1e174, 1e175, 1e176, 1e177, 1e178, 1e179, 1e180, 1e181, 1e182, 1e183,
    1e184, 1e185, 1e186, 1e187, 1e188, 1e189, 1e190, 1e191, 1e192, 1e193, 1e194, 1e195, 1e196, 1e197,
    1e198, 1e199, 1e200, 1e201, 1e202, 1e203, 1e204, 1e205, 1e206, 1e207, 1e208, 1e209, 1e210, 1e211,
    1e212, 1e213, 1e214, 1e215, 1e216, 1e217, 1e218, 1e219, 1e220, 1e221, 1e222, 1e223, 1e224, 1e225,
    1e226, 1e227, 1e228, 1e229, 1e230, 1e231, 1e232, 1e233, 1e234, 1e235, 1e236, 1e237, 1e238, 1e239,
    1e240, 1e241, 1e242, 1e243, 1e244, 1e245, 1e246, 1e247, 1e248, 1e249, 1e250, 1e251, 1e252, 1e253,
    1e254, 1e255, 1e256, 1e257, 1e258, 1e259, 1e260, 1e261, 1e262, 1e263, 1e264, 1e265, 1e266, 1e267,
    1e268, 1e269, 1e270, 1e271, 1e272, 1e273, 1e274, 1e275, 1e276, 1e277, 1e278, 1e279, 1e280, 1e281,
    1e282, 1e283, 1e284, 1e285, 1e286, 1e287, 1e288, 1e289, 1e290, 1e291, 1e292, 1e293, 1e294, 1e295,
    1e296, 1e297, 1e298, 1e299, 1e300, 1e301, 1e302, 1e303, 1e304, 1e305, 1e306, 1e307, 1e308,
};
// clang-format on

constexpr int most_digits = 18;   // that count
constexpr int most_exact = 15;    // that always make an integer a double holds
constexpr int most_decimal = 308; // the exponent of the largest finite double

/// 10^k, correctly rounded: infinite from 10^309 on.
double power_of_ten(std::ptrdiff_t k) noexcept {
    if (k <= 15) return prevPowerOfTen[k + 1];
    return k <= most_decimal ? higher_powers[k - 16] : std::numeric_limits<double>::infinity();
}

/// The digit a character stands for; 16 or more if it is none, which no radix takes.
template <class T>
unsigned int digit_value(T c) noexcept {
    if (!kord::has_flag(c, kordHexDigit)) return 16;
    const unsigned int code = kord::code_of(c);
    return kord::is_digit(c) ? code - '0' : (code | 0x20) - 'a' + 10;
}

/// Passes over a sign; says whether it was a minus.
template <class T>
bool take_sign(const T*& at, const T* last) noexcept {
    if (at == last) return false;
    const bool negative = *at == '-';
    at += negative || *at == '+';
    return negative;
}

/// Digits at the beginning of a text: how many there are, at most eight, and the number they make.
struct Digits {
    unsigned int count;
    std::uint32_t value;
};

constexpr std::uint32_t small_powers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

/// How many of the eight characters in a word, from the lowest on, are digits, in bits; the digits are to be their
/// values.
unsigned int digit_bits(std::uint64_t word) noexcept {
    const std::uint64_t others = (((word & 0x7F7F7F7F7F7F7F7F) + 0x7676767676767676) | word) & 0x8080808080808080;
    return others == 0 ? 64 : static_cast<unsigned int>(__builtin_ctzll(others)) - 7;
}

/// The number that eight digits make: pairs of digits are put together, then pairs of pairs.
std::uint32_t value_of(std::uint64_t word) noexcept {
    word = word * 10 + (word >> 8);
    constexpr std::uint64_t pairs = 0x000000FF000000FF;
    word = (word & pairs) * (100 + (1000000ull << 32)) + (word >> 16 & pairs) * (1 + (10000ull << 32));
    return static_cast<std::uint32_t>(word >> 32);
}

/// The number that the digits in the first `bits` of a word make.
std::uint32_t value_of(std::uint64_t word, unsigned int bits) noexcept {
    const unsigned int half = (64 - bits) / 2;
    return value_of(word << half << half); // zeros in front
}

/// Eight characters as bytes of a word, those that are digits as their values.
template <class T>
std::uint64_t load_digits(const T* first, const T* last) noexcept {
    return kord::load_bytes(first, static_cast<std::size_t>(last - first)) ^ 0x3030303030303030;
}

template <class T>
[[gnu::always_inline]] inline Digits first_digits(const T* first, const T* last) noexcept {
    const std::uint64_t word = load_digits(first, last);
    const unsigned int bits = digit_bits(word);
    return {bits / 8, value_of(word, bits)};
}

template <class T>
const T* skip_digits(const T* at, const T* last) noexcept {
    while (at != last && kord::is_digit(*at)) ++at;
    return at;
}

template <class T>
const T* skip_zeros(const T* at, const T* last) noexcept {
    while (at != last && *at == '0') ++at;
    return at;
}

/// The digits of a real number that count. As many as a double holds whatever they are come together in an integer;
/// with each further one the number is rounded.
class Significand {
  public:
    template <class T>
    [[gnu::always_inline]] const T* take(const T* at, const T* last) noexcept {
        if (count_ >= most_exact) return take_rounding(at, last);
        const T* const end = last - at > most_exact - count_ ? at + (most_exact - count_) : last;
        const T* const start = at;
        if (at != end) {
            const Digits digits = first_digits(at, end);
            digits_ = digits_ * small_powers[digits.count] + digits.value;
            at += digits.count;
        }
        if (at - start == 8) {
            for (; at != end && kord::is_digit(*at); ++at) digits_ = digits_ * 10 + (kord::code_of(*at) - '0');
        }
        count_ += static_cast<int>(at - start);
        return count_ < most_exact || at == last ? at : take_rounding(at, last);
    }
    int count() const noexcept { return count_; }
    double value() const noexcept { return count_ <= most_exact ? as_double(digits_) : rounded_; }

  private:
    static double as_double(std::uint64_t n) noexcept { return static_cast<double>(static_cast<std::int64_t>(n)); }

    template <class T>
    const T* take_rounding(const T* at, const T* last) noexcept {
        if (count_ == most_exact) rounded_ = as_double(digits_);
        for (; at != last && count_ != most_digits && kord::is_digit(*at); ++at, ++count_) {
            rounded_ = rounded_ * 10.0 + static_cast<double>(static_cast<int>(kord::code_of(*at) - '0'));
        }
        return at;
    }

    std::uint64_t digits_ = 0;
    double rounded_ = 0;
    int count_ = 0;
};

/// `value` times 10^scale, where 10^lead is the place of its first digit.
double scaled(double value, std::ptrdiff_t scale, std::ptrdiff_t lead) noexcept {
    if (lead >= most_decimal) return std::numeric_limits<double>::max();
    if (lead < -307) return 0.0;
    return scale >= 0 ? value * power_of_ten(scale) : value / power_of_ten(-scale);
}

/// Whether a text is two to six digits and nothing else, as most numbers are, and then their value: the digits are put
/// in place at once, as no end is looked for.
template <class T>
[[gnu::always_inline]] inline bool take_short(const T* first, const T* last, std::uint32_t& value) noexcept {
    const std::size_t n = static_cast<std::size_t>(last - first);
    if (n - 2 > 4) return false;
    const std::uint64_t word = kord::load_high(first, n) ^ std::uint64_t{0x3030303030303030} << (64 - 8 * n);
    value = value_of(word);
    return (((word + 0x0606060606060606) | word) & 0xF0F0F0F0F0F0F0F0) == 0;
}

/// Inline, as the decimal scan is a short way through it.
template <class T>
[[gnu::always_inline]] inline kord::Scanned<T> scan_unsigned(const T* first, const T* last,
                                                             unsigned int radix) noexcept {
    Digits digits{0, 0};
    if (radix == 10) {
        digits = first_digits(first, last);
        if (digits.count != 8) return {digits.value, first + digits.count};
    }
    constexpr unsigned int most = std::numeric_limits<unsigned int>::max();
    std::uint64_t value = digits.value;
    const T* at = first + digits.count;
    for (; at != last; ++at) {
        const unsigned int digit = digit_value(*at);
        if (digit >= radix) break;
        value = value * radix + digit;
        if (value > most) return {most, first};
    }
    return {static_cast<unsigned int>(value), at};
}

/// A number without a sign in a text of at most eight characters: the separator is taken out of the word that they
/// make, and neither the digits nor the power of ten can be too many.
template <class T>
double scan_short_real(const T* first, const T* last) noexcept {
    std::uint64_t word = load_digits(first, last);
    const unsigned int whole = digit_bits(word);
    unsigned int all = whole;
    if (whole != 64 && first + whole / 8 < last && (first[whole / 8] == '.' || first[whole / 8] == ',')) {
        const std::uint64_t front = (std::uint64_t{1} << whole) - 1;
        word = (word & front) | (word >> 8 & ~front);
        all = digit_bits(word); // with a zero behind the last digit if that makes eight: the quotient is the same
    }
    return static_cast<double>(static_cast<std::int32_t>(value_of(word, all))) / prevPowerOfTen[(all - whole) / 8 + 1];
}

/// A sign or none and decimal digits; saturates.
template <class T>
int KordScanInt(const T* first, const T* last) noexcept {
    const bool negative = take_sign(first, last);
    std::uint32_t short_value;
    if (take_short(first, last, short_value)) [[likely]] {
        return negative ? -static_cast<int>(short_value) : static_cast<int>(short_value);
    }
    const Digits digits = first_digits(first, last);
    std::uint64_t value = digits.value;
    if (digits.count == 8) {
        for (first += 8; first != last && kord::is_digit(*first); ++first) {
            value = value * 10 + (kord::code_of(*first) - '0');
            if (value > std::numeric_limits<int>::max()) {
                return negative ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
            }
        }
    }
    return negative ? -static_cast<int>(value) : static_cast<int>(value);
}

/// A sign or none, decimal digits, and a separator and more digits or neither.
template <class T>
double KordScanReal(const T* first, const T* last) noexcept {
    const bool negative = take_sign(first, last);
    if (last - first <= 8) {
        const double value = scan_short_real(first, last);
        return negative ? -value : value;
    }
    first = skip_zeros(first, last);
    Significand significand;
    const T* const integer = first;
    first = skip_digits(significand.take(first, last), last);
    const std::ptrdiff_t integer_digits = first - integer;
    const int taken = significand.count();
    std::ptrdiff_t zeros = 0;
    if (first != last && (*first == '.' || *first == ',')) {
        ++first;
        if (taken == 0) {
            const T* const fraction = first;
            first = skip_zeros(first, last);
            zeros = first - fraction;
        }
        significand.take(first, last);
    }
    const double value =
        scaled(significand.value(), integer_digits - significand.count() - zeros, integer_digits - zeros - 1);
    return negative ? -value : value;
}

} // namespace

template <class T>
kord::Scanned<T> kord::KordScanUnsigned(const T* first, const T* last, unsigned int radix) noexcept {
    return scan_unsigned(first, last, radix);
}

template kord::Scanned<char> kord::KordScanUnsigned(const char*, const char*, unsigned int) noexcept;
template kord::Scanned<unsigned short> kord::KordScanUnsigned(const unsigned short*, const unsigned short*,
                                                              unsigned int) noexcept;

template <class T>
int KordCharacterRange<T>::as_int() const noexcept {
    return KordScanInt(begin_, end_);
}

template <class T>
unsigned int KordCharacterRange<T>::as_unsigned() const noexcept {
    if (std::uint32_t number; take_short(begin_, end_, number)) return number;
    if (begin_ == end_) return 0;
    const T* digits = nullptr; // hexadecimal
    if (*begin_ == '$') digits = begin_ + 1;
    if (*begin_ == '0' && end_ - begin_ > 1 && (begin_[1] == 'x' || begin_[1] == 'X')) digits = begin_ + 2;
    return digits != nullptr ? kord::KordScanUnsigned(digits, end_, 16).value : scan_unsigned(begin_, end_, 10).value;
}

template <class T>
double KordCharacterRange<T>::as_double() const noexcept {
    return KordScanReal(begin_, end_);
}

template class KordCharacterRange<char>;
template class KordCharacterRange<unsigned short>;
