// A file read whole.

#include "tour.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <stdexcept>

std::string read_file(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    if (!file) throw std::ios_base::failure("cannot open it");
    std::string bytes;
    std::array<char, 0x10000> block;
    do {
        file.read(block.data(), block.size());
        bytes.append(block.data(), static_cast<std::size_t>(file.gcount()));
    } while (file);
    if (file.bad()) throw std::ios_base::failure("cannot read it");
    if (bytes.size() >= aliteral::npos) throw std::length_error("too long, positions have 32 bits");
    return bytes;
}
