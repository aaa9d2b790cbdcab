#ifndef KORD_FORMAT_H
#define KORD_FORMAT_H

#include <kord/export.h>

#include <type_traits>

/// The signatures of the `format` members that take a template: a letter for each argument, 'd' for a `long`, 'u' for
/// an `unsigned long`, 'f' for a `double`, 'c' for a character and 's' for a text. Zero-terminated, for both widths.
extern KORD_API const char kordSignatureD[2];
extern KORD_API const char kordSignatureU[2];
extern KORD_API const char kordSignatureF[2];
extern KORD_API const char kordSignatureC[2];
extern KORD_API const char kordSignatureS[2];
extern KORD_API const char kordSignatureDD[3];
extern KORD_API const char kordSignatureDF[3];
extern KORD_API const char kordSignatureFF[3];
extern KORD_API const char kordSignatureSD[3];
extern KORD_API const char kordSignatureSF[3];
extern KORD_API const char kordSignatureSS[3];

/// How numbers of any type become arguments of `format`: as the `long`, `unsigned long` or `double` that holds all
/// values of their type. Where none does there is no such call.
namespace kord::detail {

#ifdef __cpp_char8_t
using Byte8 = char8_t;
#else
using Byte8 = char;
#endif

template <class N>
inline constexpr bool is_character =
    std::is_same_v<N, char> || std::is_same_v<N, wchar_t> || std::is_same_v<N, Byte8> || std::is_same_v<N, char16_t> ||
    std::is_same_v<N, char32_t>;

/// Numbers have an arithmetic type, or are enumerators that convert to one; characters are none.
template <class N>
inline constexpr bool is_number =
    !is_character<N> && (std::is_arithmetic_v<N> || (std::is_enum_v<N> && std::is_convertible_v<N, long>));

/// Does an integer type hold every value of another that is signed as it is, or is unsigned?
template <class To, class From>
inline constexpr bool holds = sizeof(From) < sizeof(To) ||
                              (sizeof(From) == sizeof(To) && std::is_signed_v<From> == std::is_signed_v<To>);

/// The types of a number as an argument; void for none.
template <class N, bool number = is_number<N>>
struct NumberArgument {
    using alone = void;  ///< as the only argument
    using beside = void; ///< beside another, where there are no unsigned ones
    using real = void;   ///< in the place of a real
};
template <class N>
struct NumberArgument<N, true> {
    using P = decltype(+N()); // what is narrower than `int` becomes `int`, an enumerator its integer
    using I = std::conditional_t<std::is_unsigned_v<P>, unsigned long, long>;
    using F = std::conditional_t<sizeof(P) <= sizeof(double), double, void>;
    static constexpr bool floats = std::is_floating_point_v<P>;
    using alone = std::conditional_t<floats, F, std::conditional_t<holds<I, P>, I, void>>;
    using beside = std::conditional_t<floats, F, std::conditional_t<holds<long, P>, long, void>>;
    using real = std::conditional_t<floats, F, std::conditional_t<sizeof(P) <= 4, double, void>>;
};

template <class N>
using alone_t = typename NumberArgument<N>::alone;
template <class N>
using beside_t = typename NumberArgument<N>::beside;
/// The second of two numbers. No signature has an integer behind a real: it then counts as a real.
template <class A, class B>
using second_t = std::conditional_t<std::is_same_v<beside_t<A>, double>, typename NumberArgument<B>::real, beside_t<B>>;

/// Enables an overload for numbers, given their types as arguments; and one that is deleted for numbers without such a
/// type, and for characters.
template <class... As>
using if_arguments = std::enable_if_t<!(std::is_void_v<As> || ...), int>;
template <bool candidates, class... As>
using if_no_arguments = std::enable_if_t<candidates && (std::is_void_v<As> || ...), int>;
template <class N>
inline constexpr bool is_candidate = is_character<N> || is_number<N>;

/// Is `C` another type for characters of the width of `T`, or narrower?
template <class C, class T>
inline constexpr bool fits_character = is_character<C> && !std::is_same_v<C, T> && sizeof(C) <= sizeof(T);

} // namespace kord::detail

#endif
