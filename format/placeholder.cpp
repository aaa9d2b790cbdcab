#include "format/placeholder.h"

#include "text/classify.h"
#include "text/number.h"

#include <limits>

namespace {

/// The flags that the characters from ' ' to '0' stand for.
struct Flags {
    static constexpr unsigned int first = ' ', last = '0';
    unsigned char of[last - first + 1] = {};
    constexpr Flags() {
        of['-' - first] = kord::flag_left;
        of['0' - first] = kord::flag_zeros;
        of['+' - first] = kord::flag_plus;
        of[' ' - first] = kord::flag_blank;
        of['#' - first] = kord::flag_alternate;
    }
};
constexpr Flags flag_table;

/// '-' overrules '0', and '+' overrules ' '.
constexpr unsigned int without_overruled(unsigned int flags) noexcept {
    if (flags & kord::flag_left) flags &= ~static_cast<unsigned int>(kord::flag_zeros);
    if (flags & kord::flag_plus) flags &= ~static_cast<unsigned int>(kord::flag_blank);
    return flags;
}

/// Reads a placeholder from behind its '%' on, part by part. At the end of the template the next character is 0, which
/// is no part but a conversion. If the text is closed by a conversion, the end cannot be reached.
template <class T, bool is_closed>
class Scanner {
  public:
    Scanner(const T* at, const T* end) noexcept : at_(at), end_(end) { look(); }

    T next() const noexcept { return next_; }

    void pass() noexcept {
        ++at_;
        look();
    }
    bool pass(char c) noexcept {
        const bool is_next = next_ == static_cast<T>(c);
        if (is_next) pass();
        return is_next;
    }

    unsigned int flags() noexcept {
        unsigned int flags = 0;
        for (;; pass()) {
            const unsigned int place = kord::code_of(next_) - Flags::first;
            if (place > Flags::last - Flags::first || flag_table.of[place] == 0) break;
            flags |= flag_table.of[place];
        }
        return without_overruled(flags);
    }

    /// Digits, 0 if there are none. A number of more than 32 bits is not passed.
    unsigned int number() noexcept {
        const Scanner start = *this;
        unsigned int value = 0;
        for (unsigned int n = 0; kord::is_digit(next_); ++n, pass()) {
            if (n == std::numeric_limits<unsigned int>::digits10) return start.long_number(*this);
            value = 10 * value + (kord::code_of(next_) - '0');
        }
        return value;
    }

    unsigned int modifiers() noexcept {
        unsigned int flags = 0;
        for (;; pass()) {
            if (next_ == 'h') {
                flags |= kord::flag_short;
            } else if (next_ == 'l' || next_ == 'L') {
                flags |= kord::flag_long;
            } else {
                return flags;
            }
        }
    }

    /// Where the placeholder ends whose conversion is next.
    const T* behind() const noexcept { return !is_closed && at_ == end_ ? at_ : at_ + 1; }

  private:
    /// The number that is next, and where it leaves a scanner.
    unsigned int long_number(Scanner& behind) const noexcept {
        const kord::Scanned<T> number = kord::KordScanUnsigned(at_, end_, 10);
        behind = Scanner(number.stop, end_);
        return number.value;
    }

    void look() noexcept { next_ = !is_closed && at_ == end_ ? T{} : *at_; }

    const T* at_;
    const T* end_;
    T next_;
};

/// The placeholder whose '%' is at `percent`.
template <bool is_closed, class T>
[[gnu::always_inline]] inline kord::FormatSpec<T> scan(const T* percent, const T* end) noexcept {
    Scanner<T, is_closed> scanner(percent + 1, end);
    unsigned int flags = scanner.flags();
    const unsigned int width = scanner.number();
    if (scanner.pass('*')) flags |= kord::flag_width_star;
    unsigned int precision = kord::FormatSpec<T>::none;
    if (scanner.pass('.')) {
        precision = scanner.number();
        if (scanner.pass('*')) flags |= kord::flag_precision_star;
    }
    flags |= scanner.modifiers();
    return {scanner.next(), flags, width, precision, percent, scanner.behind()};
}

} // namespace

template <class T>
kord::FormatSpec<T> kord::scan_placeholder(const T* from, const T* end) noexcept {
    const T* const percent = find_percent(from, end);
    if (percent == end) return {0, 0, 0, 0, end, end};
    return scan<false>(percent, end);
}

template <class T>
kord::FormatSpec<T> kord::scan_closed(const T* percent, const T* end) noexcept {
    return scan<true>(percent, end);
}

template kord::FormatSpec<char> kord::scan_placeholder(const char*, const char*) noexcept;
template kord::FormatSpec<unsigned short> kord::scan_placeholder(const unsigned short*, const unsigned short*) noexcept;
template kord::FormatSpec<char> kord::scan_closed(const char*, const char*) noexcept;
template kord::FormatSpec<unsigned short> kord::scan_closed(const unsigned short*, const unsigned short*) noexcept;
