// The classes that are not templates: their inline members are written out here for the binary interface.
#define KORD_EMIT_INLINE
#include <kord/string.h>

static_assert(sizeof(astring) == 4 * sizeof(void*) && sizeof(ustring) == 4 * sizeof(void*));

namespace {
constexpr char no_text[1] = {};
constexpr unsigned short no_units[1] = {};
} // namespace

const char* const astring::nullCString = no_text;
const unsigned short* const ustring::nullCString = no_units;

// Built in this order when the library is loaded, destroyed in the reverse order when it is unloaded. Nothing else in
// the library needs construction.
const astring astring::nullString(0u, '\0');
const ustring ustring::nullString(0u, 0);
