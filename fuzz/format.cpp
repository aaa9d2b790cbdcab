// Any bytes as a template, with arguments out of the same bytes: nothing may break, and the two widths must agree.
#include <kord/kord.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

/// What the first bytes of the input say, as far as they go.
class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

    template <class N>
    N take() {
        N value{};
        const std::size_t n = std::min(sizeof value, static_cast<std::size_t>(end_ - at_));
        if (n != 0) std::memcpy(&value, at_, n);
        at_ += n;
        return value;
    }
    std::vector<std::uint8_t> take_some() {
        const std::size_t n = std::min<std::size_t>(take<std::uint8_t>() % 24, static_cast<std::size_t>(end_ - at_));
        at_ += n;
        return {at_ - n, at_};
    }
    std::vector<std::uint8_t> rest() const { return {at_, end_}; }

  private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
};

struct Case {
    explicit Case(Input input)
        : overload(input.take<std::uint8_t>() % 12), n(input.take<long>()), m(input.take<std::int16_t>()),
          x(input.take<double>()), c(input.take<std::uint8_t>()), a(input.take_some()), b(input.take_some()),
          tmpl(input.rest()) {}

    unsigned int overload;
    long n, m;
    double x;
    std::uint8_t c;
    std::vector<std::uint8_t> a, b, tmpl;
};

template <class T>
class Text {
  public:
    explicit Text(const std::vector<std::uint8_t>& bytes) : units_(bytes.begin(), bytes.end()) {}
    operator KordCharacterRange<T>() const {
        return units_.empty() ? KordCharacterRange<T>()
                              : KordCharacterRange<T>(units_.data(), 0, static_cast<unsigned int>(units_.size()));
    }

  private:
    std::vector<T> units_;
};

template <class T, class String>
void format(String& s, const Case& c) {
    const Text<T> tmpl_text(c.tmpl), a_text(c.a), b_text(c.b);
    const KordCharacterRange<T> tmpl = tmpl_text, a = a_text, b = b_text;
    switch (c.overload) {
    case 0: s.format(tmpl, a, b); break;
    case 1: s.format(tmpl, a, c.x); break;
    case 2: s.format(tmpl, a, c.n); break;
    case 3: s.format(tmpl, c.n, c.x); break;
    case 4: s.format(tmpl, c.x, static_cast<double>(c.m)); break;
    case 5: s.format(tmpl, c.n, c.m); break;
    case 6: s.format(tmpl, a); break;
    case 7: s.format(tmpl, static_cast<T>(c.c)); break;
    case 8: s.format(tmpl, c.x); break;
    case 9: s.format(tmpl, static_cast<unsigned long>(c.n)); break;
    case 10: s.format(tmpl, c.n); break;
    default: s.format(c.x); break;
    }
    if (s.length() > s.capacity() || (!s.empty() && s.c_str()[s.length()] != 0)) std::abort();
}

/// The codes of the result; of one that is refused for its length, that it was.
template <class T, class String>
std::vector<unsigned int> outcome(const Case& c) {
    String s;
    try {
        format<T>(s, c);
    } catch (const os_length_error&) {
        return {0xFFFFFFFF};
    }
    std::vector<unsigned int> codes;
    for (const T unit : static_cast<const String&>(s)) codes.push_back(static_cast<std::make_unsigned_t<T>>(unit));
    return codes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Case c(Input(data, size));
    if (outcome<char, astring>(c) != outcome<unsigned short, ustring>(c)) std::abort();
    return 0;
}
