// The `format` members: each names the kinds of its arguments and hands them to the engine.
#include "format/engine.h"
#include "format/field.h"

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

template <class T, class... Arguments>
BasicString<T>& format(BasicString<T>& target, const KordCharacterRange<T>& tmpl, const char* signature,
                       std::uint64_t lengthSum, const Arguments&... arguments) {
    static_assert(sizeof...(Arguments) <= kord::most_arguments);
    const Argument<T> list[] = {arguments...};
    kord::format_typed(target, tmpl, signature, lengthSum, list);
    return target;
}

} // namespace

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a,
                                       const KordCharacterRange<T>& b) {
    return ::format(*this, tmpl, kordSignatureSS, std::uint64_t{a.length()} + b.length(), a, b);
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a, double x) {
    return ::format(*this, tmpl, kordSignatureSF, a.length(), a, x);
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a, long n) {
    return ::format(*this, tmpl, kordSignatureSD, a.length(), a, n);
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, long n, double x) {
    return ::format(*this, tmpl, kordSignatureDF, 0, n, x);
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, double x, double y) {
    return ::format(*this, tmpl, kordSignatureFF, 0, x, y);
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, long n, long m) {
    return ::format(*this, tmpl, kordSignatureDD, 0, n, m);
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, const KordCharacterRange<T>& a) {
    return ::format(*this, tmpl, kordSignatureS, a.length(), a);
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, const T* text) {
    return format(tmpl, KordCharacterRange<T>(text));
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, T c) {
    return ::format(*this, tmpl, kordSignatureC, 0, c);
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, double x) {
    return ::format(*this, tmpl, kordSignatureF, 0, x);
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, unsigned long n) {
    return ::format(*this, tmpl, kordSignatureU, 0, n);
}

template <class T>
BasicString<T>& BasicString<T>::format(const KordCharacterRange<T>& tmpl, long n) {
    return ::format(*this, tmpl, kordSignatureD, 0, n);
}

namespace {

/// Reserved by the forms without a template.
constexpr unsigned int lone_integer_room = sizeof(long) == 4 ? 16 : 20;
constexpr unsigned int lone_real_room = 32;

} // namespace

template <class T>
BasicString<T>& BasicString<T>::format(long n) {
    kord::Output<T> output(get_buffer(lone_integer_room), lone_integer_room);
    output.put_decimal('+', n);
    end_ = output.terminate();
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::format(unsigned long n) {
    kord::Output<T> output(get_buffer(lone_integer_room), lone_integer_room);
    output.put_decimal('\0', n);
    end_ = output.terminate();
    return *this;
}

template <class T>
BasicString<T>& BasicString<T>::format(double x) {
    kord::Output<T> output(get_buffer(lone_real_room), lone_real_room);
    output.put_real(x, -1, false);
    end_ = output.terminate();
    return *this;
}

template class BasicString<char>;
template class BasicString<unsigned short>;
