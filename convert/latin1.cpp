#include "convert/latin1.h"

#include "core/lanes.h"

#include <kord/convert.h>

#include <cstdint>

namespace {

using Bytes = kord::Lanes<char>;
using Units = kord::Lanes<unsigned short>;

constexpr std::size_t block = Bytes::count;

} // namespace

void kord::convert(const char* from, std::size_t n, unsigned short* to) noexcept {
    if (n < block) {
        for (; n != 0; --n) *to++ = widen(*from++);
        return;
    }
    const auto widen_block = [=](std::size_t at) { store_widened(Bytes::load(from + at), to + at); };
    // A string's units begin in the middle of 16 bytes. The second block begins in the first one where 16 bytes do, as
    // stores that cross cache lines are slow, and the last one in the one before.
    widen_block(0);
    std::size_t at = (-reinterpret_cast<std::uintptr_t>(to) % block) / sizeof *to;
    for (; n - at >= block; at += block) widen_block(at);
    widen_block(n - block);
}

void kord::convert(const unsigned short* from, std::size_t n, char* to) noexcept {
    const Units high = Units::splat(0xFF00), none = Units::splat(0), stand_in = Units::splat(no_byte);
    const auto narrowable = [&](Units units) {
        const Units fits = equal(units & high, none);
        return (units & fits) | without(stand_in, fits);
    };
    for (; n >= block; n -= block, from += block, to += block) {
        narrow(narrowable(Units::load(from)), narrowable(Units::load(from + Units::count))).store(to);
    }
    for (; n != 0; --n) *to++ = narrow(*from++);
}

std::size_t kord::convert_below(unsigned int limit, const unsigned short* from, std::size_t n, char* to) noexcept {
    std::size_t done = 0;
    for (; n - done >= block; done += block) {
        const Units first = Units::load(from + done), last = Units::load(from + done + Units::count);
        if ((in_range(first, limit, 0xFFFF) | in_range(last, limit, 0xFFFF)).mask() != 0) break;
        narrow(first, last).store(to + done);
    }
    for (; done != n && from[done] < limit; ++done) to[done] = narrow(from[done]);
    return done;
}

unsigned char* KordConvert::ConvertAnsi(const unsigned short* source, unsigned char* target,
                                        unsigned long count) noexcept {
    constexpr unsigned int limit = 255; // the last byte itself is not converted
    const std::size_t done = kord::convert_below(limit, source, count, reinterpret_cast<char*>(target));
    return done == count ? target + count : nullptr;
}
