#ifndef KORD_EXPORT_H
#define KORD_EXPORT_H

/// KORD_API marks a class, function or table of the library's binary interface.
/// Define KORD_STATIC when linking the static library; KORD_BUILDING is for the library's own sources. Every library
/// exports what cmake/kord.def lists: by attributes alone, compilers leave out some inline members and add others.
#if defined(KORD_STATIC) || (defined(_WIN32) && defined(KORD_BUILDING))
#define KORD_API
#elif defined(_WIN32)
#define KORD_API __declspec(dllimport)
#else
#define KORD_API __attribute__((visibility("default")))
#endif

/// KORD_TYPE marks a class that is inline throughout but whose identity crosses the library's boundary: an exception.
#if defined(_WIN32) || defined(KORD_STATIC)
#define KORD_TYPE
#else
#define KORD_TYPE __attribute__((visibility("default")))
#endif

/// KORD_EMIT marks an inline member of a class that is not a template. Such members are part of the binary interface
/// too, so the source file of each such class defines KORD_EMIT_INLINE, which makes the compiler write them out.
#if defined(KORD_EMIT_INLINE)
#define KORD_EMIT __attribute__((used))
#else
#define KORD_EMIT
#endif

/// KORD_PRINTF(f, a) makes the compiler check the arguments from parameter `a` on against the template in parameter
/// `f`; parameter 1 of a member is the object.
#if defined(__MINGW32__) && !defined(__clang__)
#define KORD_PRINTF(f, a) __attribute__((format(gnu_printf, f, a)))
#elif defined(__GNUC__)
#define KORD_PRINTF(f, a) __attribute__((format(printf, f, a)))
#else
#define KORD_PRINTF(f, a)
#endif

#endif
