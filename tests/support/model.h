#ifndef KORD_TESTS_MODEL_H
#define KORD_TESTS_MODEL_H

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>

/// The strings' rules once more, told plainly: a text that is always copied, and beside it which block it would be in,
/// where in it, and how large that is. Blocks are counted by `shared_ptr`. T gives the width of a character only.
template <class T>
struct Model {
    struct TooLong {};

    std::u32string text;
    std::shared_ptr<unsigned int> block; // its capacity
    std::size_t offset = 0;              // of the text in the block
    bool null = true;

    static unsigned int capacity_for(std::uint64_t c) {
        std::uint64_t bytes = 16;
        while (bytes < 8 + (c + 1) * sizeof(T)) bytes += 16;
        return static_cast<unsigned int>((bytes - 8 - sizeof(T)) / sizeof(T));
    }
    bool alone() const { return block.use_count() == 1 && !null; }
    void reserve(std::uint64_t c) {
        if (c > 0x100000) throw TooLong();
        if (alone() && offset == 0) {
            *block = std::max(*block, capacity_for(c));
            return;
        }
        if (!block && c < text.size()) text.resize(static_cast<std::size_t>(c));
        block = std::make_shared<unsigned int>(capacity_for(std::max<std::uint64_t>(c, text.size())));
        offset = 0;
        null = false;
    }

    /// A source of characters, and whether they are read from this string's block.
    struct Source {
        std::u32string text;
        bool own = false;
    };
    Source source(const Model& s, std::size_t pos, std::size_t n) const {
        pos = std::min(pos, s.text.size());
        return {s.text.substr(pos, n), block && s.block == block && !s.null && s.offset + pos < *block};
    }
    void view(const Model& s, std::size_t pos, std::size_t n) {
        pos = std::min(pos, s.text.size());
        *this = Model{s.text.substr(pos, n), s.block, s.offset + pos, s.null};
    }
    /// Replaces the text from `from` on by copying after reserving: `append` and `assign`.
    void write(std::size_t from, const Source& r) {
        const std::shared_ptr<unsigned int> hold = r.own ? block : nullptr;
        reserve(std::uint64_t{from} + r.text.size());
        text.replace(from, text.npos, r.text);
    }
    void fill(std::size_t pos, std::uint64_t n, char32_t c) {
        if (pos > text.size()) return;
        reserve(text.size() + n);
        text.insert(pos, static_cast<std::size_t>(n), c);
    }
    void resize(std::size_t n, char32_t c) {
        reserve(n);
        text.resize(n, c);
    }
    void replace(std::size_t pos, std::size_t n, const Source& r) {
        pos = std::min(pos, text.size());
        n = std::min(n, text.size() - pos);
        const bool in_place = alone() && n >= r.text.size() && !r.own;
        text.replace(pos, n, r.text);
        if (in_place) return;
        const std::u32string result = text;
        *this = Model();
        reserve(result.size());
        text = result;
    }
    void erase(std::size_t pos, std::size_t n) {
        if (pos >= text.size()) return;
        n = std::min(n, text.size() - pos);
        if (pos != 0 && pos + n != text.size()) return replace(pos, n, {});
        if (pos == 0) offset += n;
        text.erase(pos, n);
    }
    void empty() { *this = Model{{}, block.use_count() > 1 ? nullptr : block, 0, true}; }
};

#endif
