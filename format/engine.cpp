// One walk over the template checks it against the signature and adds up an upper bound of the result; then everything
// is rendered straight into a block with room for that. A template that is nothing but a conversion needs no walk.
#include "format/engine.h"

#include "core/draft.h"
#include "format/field.h"
#include "format/placeholder.h"
#include "format/real.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace {

using kord::Argument;
using kord::FormatSpec;
using kord::Output;

// ---- the conversions -----------------------------------------------------------------------------------------------

enum class Kind : unsigned char { none, signed_integer, unsigned_integer, hexadecimal, character, real, text };

/// What the engine knows of a conversion.
struct Conversion {
    char letter = '\0'; ///< of the signature
    Kind kind = Kind::none;
    unsigned int room = 0; ///< characters reserved for it, if its width is not greater
};

/// A sign and the digits of a `long`, or a prefix and its hexadecimal digits, and one more.
constexpr unsigned int integer_room = sizeof(long) == 4 ? 12 : 21;
constexpr unsigned int usual_precision = 6, most_usual_precision = 19;

/// The conversions, a row for every ASCII character.
struct Conversions {
    Conversion rows[128];
    constexpr Conversions() {
        set('d', {'d', Kind::signed_integer, integer_room});
        set('i', {'d', Kind::signed_integer, integer_room});
        set('u', {'u', Kind::unsigned_integer, integer_room});
        set('x', {'u', Kind::hexadecimal, integer_room});
        set('X', {'u', Kind::hexadecimal, integer_room});
        set('c', {'c', Kind::character, 1});
        set('f', {'f', Kind::real, 13 + most_usual_precision}); // a greater precision adds what it has more
        set('s', {'s', Kind::text, 0});                         // its characters are in the length sum
    }
    constexpr void set(char character, Conversion row) { rows[static_cast<unsigned char>(character)] = row; }
};
constexpr Conversions conversions;

template <class T>
const Conversion& conversion_of(T character) noexcept {
    const unsigned int code = kord::code_of(character);
    return conversions.rows[code < std::size(conversions.rows) ? code : 0];
}

template <class T>
std::uint64_t room_for(const Conversion& conversion, const FormatSpec<T>& spec) noexcept {
    std::uint64_t room = conversion.room;
    if (conversion.kind == Kind::real && spec.precision != spec.none && spec.precision > most_usual_precision) {
        room += spec.precision - most_usual_precision;
    }
    return std::max<std::uint64_t>(room, spec.width);
}

// ---- reading the template ------------------------------------------------------------------------------------------

template <class T>
struct Field {
    FormatSpec<T> spec;
    Kind kind; // none in the end record

    /// Part by part: copied as one, a record would be read before the stores of its parts are through.
    void set(const FormatSpec<T>& from, Kind k) noexcept {
        spec.conversion = from.conversion;
        spec.flags = from.flags;
        spec.width = from.width;
        spec.precision = from.precision;
        spec.begin = from.begin;
        spec.end = from.end;
        kind = k;
    }
};

/// What the walk over a template finds out.
struct Plan {
    std::uint64_t room;    ///< an upper bound of the result's length; no template is long enough to overflow it
    bool percents = false; ///< is there a "%%"?
};

/// Stores a placeholder, or the end record, with the literal text in front of it, which starts at `resume`. Says
/// whether it agrees with a letter of the signature, or its end.
template <class T>
[[gnu::always_inline]] inline bool enter(Field<T>& field, const FormatSpec<T>& spec, const T* resume, char letter,
                                         Plan& plan) noexcept {
    const Conversion& conversion = conversion_of(spec.conversion);
    const bool last = conversion.kind == Kind::none;
    if (conversion.letter != letter || (last && spec.conversion != 0)) return false;
    plan.room += static_cast<std::size_t>(spec.begin - resume);
    if (!last) plan.room += room_for(conversion, spec); // an unfinished placeholder is not padded
    field.set(spec, conversion.kind);
    return true;
}

/// Stores the placeholders that take an argument, and the end record; says whether they agree with the signature.
template <class T>
[[gnu::always_inline]] inline bool read(const KordCharacterRange<T>& tmpl, const char* signature, Field<T>* field,
                                        Plan& plan) noexcept {
    constexpr unsigned int stars = kord::flag_width_star | kord::flag_precision_star;
    const T* resume = tmpl.begin(); // what follows here is literal, "%%" included
    const T* const end = tmpl.end();
    for (const T* at = resume;;) {
        at = kord::find_percent(at, end);
        if (at == end) {
            plan.room += static_cast<std::size_t>(end - resume);
            field->spec.begin = end;
            field->kind = Kind::none;
            return *signature == '\0';
        }
        if (end - at > 1 && conversion_of(at[1]).kind != Kind::none) [[likely]] { // nothing between, as in most
            if (!enter(*field, {at[1], 0, 0, FormatSpec<T>::none, at, at + 2}, resume, *signature, plan)) return false;
            at += 2;
        } else {
            const FormatSpec<T> spec = kord::scan_placeholder(at, end);
            at = spec.end;
            if (spec.flags & stars) return false;
            if (spec.conversion == '%') {
                plan.percents = true;
                ++plan.room;
                continue;
            }
            if (!enter(*field, spec, resume, *signature, plan)) return false;
            if (spec.conversion == 0) return true;
        }
        resume = at;
        ++field;
        ++signature;
    }
}

// ---- rendering -----------------------------------------------------------------------------------------------------

/// Copies the literal text [from, to) with one '%' for every "%%" in it.
template <class T>
[[gnu::noinline]] T* put_with_percents(T* out, const T* from, const T* to) noexcept {
    for (;;) {
        const FormatSpec<T> percent = kord::scan_placeholder(from, to);
        const auto n = static_cast<std::size_t>(percent.begin - from);
        kord::copy_characters(out, from, n);
        out += n;
        if (percent.conversion == 0) return out;
        *out++ = '%';
        from = percent.end;
    }
}

template <class T>
[[gnu::always_inline]] inline void put_signed(Output<T>& out, const FormatSpec<T>& spec, long value) noexcept {
    if (value >= 0 && (spec.flags & kord::flag_blank)) out.put(' ');
    out.put_decimal(spec.flags & kord::flag_plus ? '+' : '\0', value);
}

template <class T>
[[gnu::always_inline]] inline void put_real(Output<T>& out, const FormatSpec<T>& spec, double value) noexcept {
    if ((spec.flags & kord::flag_blank) && value >= 0) out.put(' ');
    out.put_real(value, static_cast<int>(spec.precision == spec.none ? usual_precision : spec.precision),
                 (spec.flags & kord::flag_plus) != 0);
}

template <class T>
[[gnu::always_inline]] inline void put_field(Output<T>& out, const Field<T>& field,
                                             const Argument<T>& argument) noexcept {
    const FormatSpec<T>& spec = field.spec;
    switch (field.kind) {
    case Kind::none: break;
    case Kind::signed_integer: put_signed(out, spec, argument.d); break;
    case Kind::unsigned_integer: out.put_decimal('\0', argument.u); break;
    case Kind::hexadecimal:
        if (spec.flags & kord::flag_alternate) {
            out.put('0');
            out.put(spec.conversion);
        }
        out.put_hexadecimal(argument.u, kordDigits[spec.conversion == 'X']);
        break;
    case Kind::character: out.put(argument.c); break;
    case Kind::real: put_real(out, spec, argument.f); break;
    case Kind::text: out.put(argument.s->begin(), std::min(argument.s->length(), spec.precision)); break;
    }
}

/// Formats by a template that is one plain conversion and nothing else, such as "%d", as most are: nothing is recorded.
/// Says whether this one is.
template <class T>
[[gnu::always_inline]] inline bool format_lone(BasicString<T>& target, const KordCharacterRange<T>& tmpl,
                                               const char* signature, std::uint64_t lengthSum,
                                               const Argument<T>& argument) {
    const T* const at = tmpl.begin();
    if (tmpl.end() - at != 2 || at[0] != '%') return false;
    const Conversion& conversion = conversion_of(at[1]);
    if (conversion.letter != signature[0] || signature[1] != '\0') return false;
    const std::uint64_t room = lengthSum + conversion.room;
    kord::Draft<T> draft(room);
    Output<T> output(draft.first(), static_cast<std::size_t>(room));
    put_field(output, Field<T>{{at[1], 0, 0, FormatSpec<T>::none, at, at + 2}, conversion.kind}, argument);
    draft.move_to(target, output.at);
    return true;
}

} // namespace

template <class T>
void kord::format_typed(BasicString<T>& target, const KordCharacterRange<T>& tmpl, const char* signature,
                        std::uint64_t lengthSum, const Argument<T>* arguments) {
    if (format_lone(target, tmpl, signature, lengthSum, *arguments)) return;
    Field<T> fields[most_arguments + 1];
    Plan plan{lengthSum};
    if (!read(tmpl, signature, fields, plan)) return Fields<T>::adopt(target, nullptr, nullptr, nullptr);
    Draft<T> draft(plan.room);
    Output<T> output(draft.first(), static_cast<std::size_t>(plan.room));
    const T* resume = tmpl.begin();
    for (const Field<T>* field = fields;; ++field) {
        const T* const begin = field->spec.begin;
        if (begin != resume) {
            if (plan.percents) [[unlikely]] {
                output.at = put_with_percents(output.at, resume, begin);
            } else {
                output.put(resume, static_cast<std::size_t>(begin - resume));
            }
        }
        if (field->kind == Kind::none) break;
        T* const start = output.at;
        put_field(output, *field, *arguments++);
        if (field->spec.width != 0) output.at = pad(start, output.at, field->spec);
        resume = field->spec.end;
    }
    draft.move_to(target, output.at);
}

template void kord::format_typed(BasicString<char>&, const KordCharacterRange<char>&, const char*, std::uint64_t,
                                 const Argument<char>*);
template void kord::format_typed(BasicString<unsigned short>&, const KordCharacterRange<unsigned short>&, const char*,
                                 std::uint64_t, const Argument<unsigned short>*);
