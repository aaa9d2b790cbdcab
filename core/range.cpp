#include <kord/range.h>

// begin and end follow the table of virtual operations, and nothing else does: other compilers' callers rely on it.
static_assert(sizeof(KordCharacterRange<char>) == 3 * sizeof(void*));
static_assert(sizeof(KordCharacterRange<unsigned short>) == 3 * sizeof(void*));
static_assert(sizeof(aliteral) == sizeof(KordCharacterRange<char>));
static_assert(sizeof(uliteral) == sizeof(KordCharacterRange<unsigned short>));

template class KordCharacterRange<char>;
template class KordCharacterRange<unsigned short>;
