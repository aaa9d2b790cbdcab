#ifndef KORD_VERSION_H
#define KORD_VERSION_H

/// The version of these headers, for the preprocessor. While the first number is 0, programs have to be built again
/// when the second one changes; later, when the first one does. See CHANGELOG.md.
#define KORD_VERSION_MAJOR 0
#define KORD_VERSION_MINOR 1
#define KORD_VERSION_PATCH 0

/// The same as one number that can be compared: 1.2.3 is 10203.
#define KORD_VERSION (KORD_VERSION_MAJOR * 10000 + KORD_VERSION_MINOR * 100 + KORD_VERSION_PATCH)

#endif
