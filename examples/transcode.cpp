// A filter from one encoding to another. What is malformed, or what the target cannot represent, ends it with a message
// that names the place; what comes before that is written.
//
//     kord_transcode --to utf8|utf16le|utf16be|latin1 [--from ...] <in >out
//
// The source is UTF-8 unless told otherwise. A byte order mark is a character like others: none is added or removed.

#include "well_formed.h"

#include <kord/convert.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#endif

namespace {

using Bytes = std::vector<unsigned char>;
using Units = std::vector<unsigned short>;

enum class Encoding { utf8, utf16le, utf16be, latin1 };

std::string name_of(Encoding encoding) {
    switch (encoding) {
    case Encoding::utf8: return "utf8";
    case Encoding::utf16le: return "utf16le";
    case Encoding::utf16be: return "utf16be";
    default: return "latin1";
    }
}

std::optional<Encoding> encoding_of(const std::string& name) {
    for (const Encoding e : {Encoding::utf8, Encoding::utf16le, Encoding::utf16be, Encoding::latin1}) {
        if (name == name_of(e)) return e;
    }
    return std::nullopt;
}

[[noreturn]] void fail(unsigned long long position, const std::string& what) {
    throw std::runtime_error("byte " + std::to_string(position) + ": " + what);
}

// ---- every encoding to UTF-16 and back -----------------------------------------------------------------------------

/// The units of all well-formed characters at the beginning of `bytes`; says how many bytes these are.
WellFormed decode(const Bytes& bytes, Encoding from, Units& units) {
    if (from == Encoding::utf8) {
        const WellFormed text = well_formed(bytes.data(), bytes.size());
        const auto count = static_cast<unsigned long>(text.length);
        units.resize(KordConvert::CountUtf8(bytes.data(), count));
        KordConvert::ConvertUtf8(bytes.data(), units.data(), static_cast<unsigned long>(units.size()));
        return text;
    }
    if (from == Encoding::latin1) {
        units.resize(bytes.size());
        std::transform(bytes.begin(), bytes.end(), units.begin(),
                       [](unsigned char b) { return UstringAdapter::Convert(static_cast<char>(b)); });
        return {bytes.size(), true};
    }
    const std::size_t low = from == Encoding::utf16le ? 0 : 1; // where in a unit the low byte stands
    units.resize(bytes.size() / 2);
    for (std::size_t i = 0; i != units.size(); ++i) {
        units[i] = static_cast<unsigned short>(bytes[2 * i + low] | bytes[2 * i + 1 - low] << 8);
    }
    const WellFormed text = well_formed(units.data(), units.size());
    units.resize(text.length);
    return {2 * text.length, text.so_far};
}

/// The bytes of all units up to the first that the encoding cannot represent; says how many units these are.
std::size_t encode(const Units& units, Encoding to, Bytes& bytes) {
    if (to == Encoding::utf8) {
        const auto count = static_cast<unsigned long>(units.size());
        bytes.resize(KordConvert::CountUtf8(units.data(), count));
        KordConvert::ConvertUtf8(units.data(), bytes.data(), count);
        return units.size();
    }
    if (to == Encoding::latin1) {
        const auto end = std::find_if(units.begin(), units.end(), [](unsigned short u) { return u > 0xFF; });
        bytes.resize(static_cast<std::size_t>(end - units.begin()));
        std::transform(units.begin(), end, bytes.begin(),
                       [](unsigned short u) { return static_cast<unsigned char>(AstringAdapter::Convert(u)); });
        return bytes.size();
    }
    const std::size_t low = to == Encoding::utf16le ? 0 : 1;
    bytes.resize(2 * units.size());
    for (std::size_t i = 0; i != units.size(); ++i) {
        bytes[2 * i + low] = static_cast<unsigned char>(units[i] & 0xFF);
        bytes[2 * i + 1 - low] = static_cast<unsigned char>(units[i] >> 8);
    }
    return units.size();
}

/// How many bytes the first `count` units were before they were decoded.
std::size_t bytes_before(const Units& units, std::size_t count, Encoding from) {
    if (from == Encoding::utf8) return KordConvert::CountUtf8(units.data(), static_cast<unsigned long>(count));
    return from == Encoding::latin1 ? count : 2 * count;
}

// ---- from the input to the output ----------------------------------------------------------------------------------

/// Appends some of the input. Says whether there may be more.
bool read(Bytes& bytes) {
    constexpr std::size_t most = 0x10000;
    const std::size_t kept = bytes.size();
    bytes.resize(kept + most);
    bytes.resize(kept + std::fread(bytes.data() + kept, 1, most, stdin));
    if (std::ferror(stdin) != 0) throw std::runtime_error("cannot read the input");
    return bytes.size() == kept + most;
}

void write(const Bytes& bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0) {
        throw std::runtime_error("cannot write the output");
    }
}

void transcode(Encoding from, Encoding to) {
    Bytes in, out;                   // bytes not decoded yet, perhaps only the beginning of a character; bytes to write
    Units units;                     // what is between them
    unsigned long long position = 0; // of `in` in the input
    for (bool more = true; more;) {
        more = read(in);
        const WellFormed text = decode(in, from, units);
        const std::size_t encoded = encode(units, to, out);
        write(out);
        if (encoded != units.size()) {
            fail(position + bytes_before(units, encoded, from), "no character of " + name_of(to));
        }
        position += text.length;
        in.erase(in.begin(), in.begin() + static_cast<std::ptrdiff_t>(text.length));
        if (!text.so_far) fail(position, "malformed " + name_of(from));
    }
    if (!in.empty()) fail(position, "the input ends within a character");
}

} // namespace

int main(int argc, char** argv) {
    std::optional<Encoding> from = Encoding::utf8, to;
    bool understood = argc % 2 == 1;
    for (int i = 1; understood && i != argc; i += 2) {
        const std::string option = argv[i];
        std::optional<Encoding>& encoding = option == "--from" ? from : to;
        encoding = encoding_of(argv[i + 1]);
        understood = encoding && (option == "--from" || option == "--to");
    }
    if (!understood || !to) {
        std::fputs("usage: kord_transcode --to utf8|utf16le|utf16be|latin1 [--from ...] <in >out\n", stderr);
        return 2;
    }
#if defined(_WIN32)
    _setmode(_fileno(stdin), _O_BINARY); // or line ends would be changed, too
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    try {
        transcode(*from, *to);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kord_transcode: %s\n", e.what());
        return 1;
    }
}
