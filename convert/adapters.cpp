// The adapters. Where the widths are the same, a string's own constructors do.
#define KORD_EMIT_INLINE
#include "convert/latin1.h"
#include "core/draft.h"

#include <kord/convert.h>

#include <type_traits>

namespace {

/// A string of n characters converted from the other width; always in a block.
template <class String, class T>
String converted(const T* text, unsigned int n) {
    kord::Draft<std::conditional_t<sizeof(T) == 1, unsigned short, char>> draft(n);
    kord::convert(text, n, draft.first());
    String s;
    draft.move_to(s, draft.first() + n);
    return s;
}

/// The same for a pointer, of which null makes the null string.
template <class String, class T>
String converted_text(const T* text, std::size_t n) {
    return text == nullptr ? String() : converted<String>(text, kord::detail::to_count(n));
}

} // namespace

char AstringAdapter::Convert(unsigned short unit) noexcept {
    return kord::narrow(unit);
}

AstringAdapter::AstringAdapter(const KordCharacterRange<char>& range) : string_(range.begin(), range.length()) {}
AstringAdapter::AstringAdapter(const char* text, unsigned int length) : string_(text, length) {}
AstringAdapter::AstringAdapter(const char* text) : string_(text) {}
AstringAdapter::AstringAdapter(const KordCharacterRange<unsigned short>& range)
    : string_(converted<astring>(range.begin(), range.length())) {}
AstringAdapter::AstringAdapter(const unsigned short* text, unsigned int length)
    : string_(converted_text<astring>(text, length)) {}
AstringAdapter::AstringAdapter(const unsigned short* text)
    : string_(converted_text<astring>(text, kord::detail::text_length(text))) {}

unsigned short UstringAdapter::Convert(char c) noexcept {
    return kord::widen(c);
}

UstringAdapter::UstringAdapter(const KordCharacterRange<unsigned short>& range)
    : string_(range.begin(), range.length()) {}
UstringAdapter::UstringAdapter(const unsigned short* text, unsigned int length) : string_(text, length) {}
UstringAdapter::UstringAdapter(const unsigned short* text) : string_(text) {}
UstringAdapter::UstringAdapter(const KordCharacterRange<char>& range)
    : string_(converted<ustring>(range.begin(), range.length())) {}
UstringAdapter::UstringAdapter(const char* text, unsigned int length)
    : string_(converted_text<ustring>(text, length)) {}
UstringAdapter::UstringAdapter(const char* text)
    : string_(converted_text<ustring>(text, kord::detail::text_length(text))) {}
