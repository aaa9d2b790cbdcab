#ifndef KORD_KORD_H
#define KORD_KORD_H

/// Everything.
#include <kord/basic_string.h>
#include <kord/body.h>
#include <kord/chars.h>
#include <kord/convert.h>
#include <kord/errors.h>
#include <kord/format.h>
#include <kord/hash.h>
#include <kord/list.h>
#include <kord/path.h>
#include <kord/range.h>
#include <kord/real.h>
#include <kord/string.h>
#include <kord/version.h>

#endif
