// The `format` members: each names the kinds of its arguments and hands them to the engine.
#include "core/draft.h"
#include "format/conversion.h"
#include "format/engine.h"

#include <cstddef>
#include <cstdint>

const char kordSignatureD[2] = "d";
const char kordSignatureU[2] = "u";
const char kordSignatureF[2] = "f";
const char kordSignatureC[2] = "c";
const char kordSignatureS[2] = "s";
const char kordSignatureDD[3] = "dd";
const char kordSignatureDF[3] = "df";
const char kordSignatureFF[3] = "ff";
const char kordSignatureSD[3] = "sd";
const char kordSignatureSF[3] = "sf";
const char kordSignatureSS[3] = "ss";

namespace {

using kord::Argument;

template <class T>
BasicString<T>& format_two(BasicString<T>& target, const KordCharacterRange<T>& tmpl, const char* signature,
                           std::uint64_t lengthSum, const Argument<T>& a, const Argument<T>& b) {
    const Argument<T> list[] = {a, b};
    kord::format_typed(target, tmpl, signature, lengthSum, list);
    return target;
}

// Most templates for one argument are one placeholder and nothing else, mostly a mere "%d" or the like. What kind it
// must be is known when this is compiled, and no record is kept. The three ways are separate functions, so that none
// saves registers for another. `letter` is the signature.

template <char letter, class T>
[[gnu::always_inline]] inline BasicString<T>& format_by(const kord::FormatSpec<T>& spec, BasicString<T>& target,
                                                        std::uint64_t lengthSum, const Argument<T>& argument) {
    const std::uint64_t room = lengthSum + kord::room_for(kord::conversion_of(letter), spec);
    kord::Draft<T> draft(room);
    kord::Output<T> output(draft.first(), static_cast<std::size_t>(room));
    kord::put_argument(output, spec, letter, argument);
    if (spec.width != 0) output.at = kord::pad(draft.first(), output.at, spec);
    draft.move_to(target, output.at);
    return target;
}

template <char letter, class T>
[[gnu::noinline]] BasicString<T>& format_plain(BasicString<T>& target, T conversion, std::uint64_t lengthSum,
                                               Argument<T> argument) {
    constexpr unsigned int none = kord::FormatSpec<T>::none;
    return format_by<letter>({conversion, 0, 0, none, nullptr, nullptr}, target, lengthSum, argument);
}

template <char letter, class T>
[[gnu::noinline]] BasicString<T>& format_any(BasicString<T>& target, const KordCharacterRange<T>& tmpl,
                                             std::uint64_t lengthSum, Argument<T> argument) {
    static constexpr char signature[] = {letter, '\0'};
    kord::format_typed(target, tmpl, signature, lengthSum, &argument);
    return target;
}

template <char letter, class T>
[[gnu::noinline]] BasicString<T>& format_scanned(BasicString<T>& target, const KordCharacterRange<T>& tmpl,
                                                 std::uint64_t lengthSum, Argument<T> argument) {
    const kord::FormatSpec<T> spec = kord::scan_closed(tmpl.begin(), tmpl.end());
    return spec.end == tmpl.end() && !kord::has_star(spec) ? format_by<letter>(spec, target, lengthSum, argument)
                                                           : format_any<letter>(target, tmpl, lengthSum, argument);
}

template <char letter, class T>
[[gnu::always_inline]] inline BasicString<T>& format_one(BasicString<T>& target, const KordCharacterRange<T>& tmpl,
                                                         std::uint64_t lengthSum, const Argument<T>& argument) {
    const T* const begin = tmpl.begin();
    const T* const end = tmpl.end();
    if (end - begin < 2 || *begin != '%' || kord::conversion_of(end[-1]).letter != letter) {
        return format_any<letter>(target, tmpl, lengthSum, argument);
    }
    return end - begin == 2 ? format_plain<letter>(target, begin[1], lengthSum, argument)
                            : format_scanned<letter>(target, tmpl, lengthSum, argument);
}

} // namespace

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a,
                                       const KordCharacterRange<T>& b) {
    return format_two(*this, tmpl, kordSignatureSS, std::uint64_t{a.length()} + b.length(), {a}, {b});
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a, double x) {
    return format_two(*this, tmpl, kordSignatureSF, a.length(), {a}, {x});
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a, long n) {
    return format_two(*this, tmpl, kordSignatureSD, a.length(), {a}, {n});
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, long n, double x) {
    return format_two(*this, tmpl, kordSignatureDF, 0, {n}, {x});
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, double x, double y) {
    return format_two(*this, tmpl, kordSignatureFF, 0, {x}, {y});
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, long n, long m) {
    return format_two(*this, tmpl, kordSignatureDD, 0, {n}, {m});
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a) {
    return format_one<'s'>(*this, tmpl, a.length(), {a});
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, const T* text) {
    return format(tmpl, KordCharacterRange<T>(text));
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, T c) {
    return format_one<'c'>(*this, tmpl, 0, {c});
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, double x) {
    return format_one<'f'>(*this, tmpl, 0, {x});
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, unsigned long n) {
    return format_one<'u'>(*this, tmpl, 0, {n});
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, long n) {
    return format_one<'d'>(*this, tmpl, 0, {n});
}

namespace {

/// Reserved by the forms without a template.
constexpr unsigned int lone_integer_room = sizeof(long) == 4 ? 16 : 20;
constexpr unsigned int lone_real_room = 32;
static_assert(lone_integer_room >= kord::decimal_room && lone_real_room >= kord::real_room);

} // namespace

template <class T>
BasicString<T>& BasicString<T>::format(long n) {
    if (!BasicStringBody<T>::serves(body_, begin_, lone_integer_room)) reserve(lone_integer_room);
    kord::Output<T> output(body_->first(), lone_integer_room);
    output.put_decimal('+', n);
    end_ = output.terminate();
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::format(unsigned long n) {
    if (!BasicStringBody<T>::serves(body_, begin_, lone_integer_room)) reserve(lone_integer_room);
    kord::Output<T> output(body_->first(), lone_integer_room);
    output.put_decimal('\0', n);
    end_ = output.terminate();
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::format(double x) {
    if (!BasicStringBody<T>::serves(body_, begin_, lone_real_room)) reserve(lone_real_room);
    kord::Output<T> output(body_->first(), lone_real_room);
    output.put_real(x, -1, false);
    end_ = output.terminate();
    return *this;
}

template class BasicString<char>;
template class BasicString<unsigned short>;
