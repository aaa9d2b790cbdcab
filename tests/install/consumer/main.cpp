// Prints the version of kord's headers, by kord, if the library it was linked with works and throws what it promises.
#include <kord/kord.h>

#include <cstdio>

static bool refuses_beyond_limit() {
    try {
        astring().resize(astring::lengthLimit + 1, 'x');
    } catch (const os_length_error& error) {
        return aliteral(error.what()).find("> 0x100000") != aliteral::npos;
    }
    return false;
}

int main() {
    ustring number;
    number.format(KORD_VERSION);
    astring version(AstringAdapter{number});
    if (!refuses_beyond_limit() || version.as_int() != KORD_VERSION) return 1;
    version.format("%d.%d", KORD_VERSION_MAJOR, KORD_VERSION_MINOR).append(astring().format(".%d", KORD_VERSION_PATCH));
    std::puts(version.c_str());
    return 0;
}
