// Any bytes as text of both widths, converted out of and into memory of exactly the size that the rules give.
#include "support/convert_model.h"

#include <kord/convert.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

/// A block that ends with its text, so that the sanitizer sees who looks further.
template <class T>
std::unique_ptr<T[]> block(std::span<const T> text) {
    std::unique_ptr<T[]> copy(new T[text.size()]);
    std::copy(text.begin(), text.end(), copy.get());
    return copy;
}
template <class T>
std::unique_ptr<T[]> room(std::size_t n) {
    return std::unique_ptr<T[]>(new T[n]);
}

void check(bool holds) {
    if (!holds) std::abort();
}
/// After a failure only what was written before it counts.
template <class T>
void check(const T* to, const T* end, std::size_t size, const std::vector<T>& expected, bool failed) {
    check(end == (failed ? nullptr : to + size) && std::equal(expected.begin(), expected.end(), to));
}

void write_ansi(std::span<const unsigned short> text) {
    const auto from = block(text);
    const auto to = room<unsigned char>(text.size());
    const auto bad = std::find_if(text.begin(), text.end(), [](unsigned short u) { return u >= 0xFF; });
    check<unsigned char>(to.get(), KordConvert::ConvertAnsi(from.get(), to.get(), text.size()), text.size(),
                         Utf8(text.begin(), bad), bad != text.end());
}

void write(std::span<const unsigned short> text) {
    const auto from = block(text);
    const Encoded expected(text);
    const std::size_t size = KordConvert::CountUtf8(from.get(), text.size());
    check(size == Encoded::count(text));
    const auto to = room<unsigned char>(size);
    check<unsigned char>(to.get(), KordConvert::ConvertUtf8(from.get(), to.get(), text.size()), size, expected.text,
                         expected.failed);
}

/// `n` units at most.
void read(std::span<const unsigned char> text, std::size_t n) {
    const Decoded all(text);
    const std::size_t size = KordConvert::CountUtf8(block(text).get(), text.size());
    check(size == all.text.size());
    n = std::min(n, size);
    const auto from = block(text.first(all.rooms[n].read));
    const auto to = room<unsigned short>(n);
    const bool fits = all.rooms[n].fits;
    const Utf16 expected(all.text.begin(), all.text.end() - static_cast<std::ptrdiff_t>(size - n + (fits ? 0 : 1)));
    check<unsigned short>(to.get(), KordConvert::ConvertUtf8(from.get(), to.get(), n), n, expected, !fits);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span bytes(data, size);
    read(bytes, size);
    if (size != 0) read(bytes.subspan(1), data[0]);
    Utf16 units(size / 2);
    if (!units.empty()) std::memcpy(units.data(), data, units.size() * 2);
    write(units);
    write_ansi(units);
    write(Decoded(bytes).text);      // mostly well-formed
    read(Encoded(units).text, size); // well-formed
    write_ansi(Utf16(bytes.begin(), bytes.end()));
    return 0;
}
