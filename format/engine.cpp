// One walk over the template checks it against the signature and adds up an upper bound of the result; then everything
// is rendered straight into a block with room for that.
#include "format/engine.h"

#include "core/draft.h"
#include "format/conversion.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

using kord::Argument;
using kord::Conversion;
using kord::conversion_of;
using kord::FormatSpec;
using kord::Output;

// ---- reading the template ------------------------------------------------------------------------------------------

template <class T>
struct Field {
    FormatSpec<T> spec;
    char letter; // of the signature; 0 in the end record

    /// Member by member: a copy in larger words would wait for the smaller stores that have just been made.
    void set(const FormatSpec<T>& from, char l) noexcept {
        spec.conversion = from.conversion;
        spec.flags = from.flags;
        spec.width = from.width;
        spec.precision = from.precision;
        spec.begin = from.begin;
        spec.end = from.end;
        letter = l;
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
    const bool last = letter == '\0';
    if (conversion.letter != letter || (last && spec.conversion != 0)) return false;
    plan.room += static_cast<std::size_t>(spec.begin - resume);
    if (!last) plan.room += kord::room_for(conversion, spec); // an unfinished placeholder is not padded
    field.set(spec, letter);
    return true;
}

/// Stores the placeholders that take an argument, and the end record; says whether they agree with the signature.
template <class T>
[[gnu::always_inline]] inline bool read(const KordCharacterRange<T>& tmpl, const char* signature, Field<T>* field,
                                        Plan& plan) noexcept {
    const T* resume = tmpl.begin(); // what follows here is literal, "%%" included
    const T* const end = tmpl.end();
    for (const T* at = resume;;) {
        at = kord::find_percent(at, end);
        if (at == end) {
            plan.room += static_cast<std::size_t>(end - resume);
            field->spec.begin = end;
            field->letter = '\0';
            return *signature == '\0';
        }
        if (end - at > 1 && conversion_of(at[1]).letter != '\0') [[likely]] { // nothing between, as in most
            if (!enter(*field, {at[1], 0, 0, FormatSpec<T>::none, at, at + 2}, resume, *signature, plan)) return false;
            at += 2;
        } else {
            const FormatSpec<T> spec = kord::scan_placeholder(at, end);
            at = spec.end;
            if (kord::has_star(spec)) return false;
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

} // namespace

template <class T>
void kord::format_typed(BasicString<T>& target, const KordCharacterRange<T>& tmpl, const char* signature,
                        std::uint64_t lengthSum, const Argument<T>* arguments) {
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
        if (field->letter == '\0') break;
        T* const start = output.at;
        kord::put_argument(output, field->spec, field->letter, *arguments++);
        if (field->spec.width != 0) output.at = pad(start, output.at, field->spec);
        resume = field->spec.end;
    }
    draft.move_to(target, output.at);
}

template void kord::format_typed(BasicString<char>&, const KordCharacterRange<char>&, const char*, std::uint64_t,
                                 const Argument<char>*);
template void kord::format_typed(BasicString<unsigned short>&, const KordCharacterRange<unsigned short>&, const char*,
                                 std::uint64_t, const Argument<unsigned short>*);
