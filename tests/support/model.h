#ifndef KORD_TESTS_MODEL_H
#define KORD_TESTS_MODEL_H

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

/// The strings' rules once more, told plainly: a text that is always copied, and beside it which block it would be in,
/// where in it, and how large that is. Blocks are counted by `shared_ptr`.
template <class T>
struct Model {
    using Text = std::vector<T>;
    struct TooLong {};
    struct Block {
        unsigned int capacity;
    };

    Text text;
    std::shared_ptr<Block> block;
    unsigned int offset = 0; // of the text in the block
    bool null = true;

    static unsigned int capacity_for(std::uint64_t c) {
        std::uint64_t bytes = 16;
        while (bytes < 8 + (c + 1) * sizeof(T))
            bytes += 16;
        return static_cast<unsigned int>((bytes - 8 - sizeof(T)) / sizeof(T));
    }

    unsigned int size() const { return static_cast<unsigned int>(text.size()); }
    bool sole() const { return block && block.use_count() == 1 && !null && offset == 0; }

    void reserve(std::uint64_t c) {
        if (c > 0x100000) throw TooLong();
        if (sole()) {
            block->capacity = std::max(block->capacity, capacity_for(c));
            return;
        }
        if (!block && c < text.size()) text.resize(c);
        block = std::make_shared<Block>(Block{capacity_for(std::max<std::uint64_t>(c, text.size()))});
        offset = 0;
        null = false;
    }

    Text piece(unsigned int pos, unsigned int n) const {
        pos = std::min(pos, size());
        n = std::min(n, size() - pos);
        return Text(text.begin() + pos, text.begin() + pos + n);
    }
    void view(const Model& s, unsigned int pos, unsigned int n) {
        const unsigned int start = std::min(pos, s.size());
        Model result{s.piece(pos, n), s.block, s.offset + start, s.null};
        *this = result;
    }

    /// A source: its text, and whether it is read from this string's block.
    struct Source {
        Text text;
        bool own = false;
    };
    Source source(const Model& s, unsigned int pos, unsigned int n) const {
        return {s.piece(pos, n),
                block && s.block == block && !s.null && (s.offset + std::min(pos, s.size()) < block->capacity)};
    }

    void append(const Source& r) {
        const std::shared_ptr<Block> hold = r.own ? block : nullptr;
        reserve(std::uint64_t{size()} + r.text.size());
        text.insert(text.end(), r.text.begin(), r.text.end());
    }
    void assign(const Source& r) {
        const std::shared_ptr<Block> hold = r.own ? block : nullptr;
        reserve(r.text.size());
        text = r.text;
    }
    void fill(unsigned int pos, std::uint64_t n, T c) {
        if (pos > size()) return;
        reserve(size() + n);
        text.insert(text.begin() + pos, n, c);
    }
    void resize(unsigned int n, T c) {
        reserve(n);
        text.resize(n, c);
    }
    void replace(unsigned int pos, unsigned int n, const Source& r) {
        pos = std::min(pos, size());
        n = std::min(n, size() - pos);
        const bool in_place = block && block.use_count() == 1 && !null && n >= r.text.size() && !r.own;
        Text result = piece(0, pos);
        result.insert(result.end(), r.text.begin(), r.text.end());
        const Text rest = piece(pos + n, 0xFFFFFFFF);
        result.insert(result.end(), rest.begin(), rest.end());
        if (!in_place) {
            Model fresh;
            fresh.reserve(result.size());
            *this = fresh;
        }
        text = result;
    }
    void erase(unsigned int pos, unsigned int n) {
        if (pos >= size()) return;
        n = std::min(n, size() - pos);
        if (pos == 0) {
            text.erase(text.begin(), text.begin() + n);
            offset += n;
        } else if (pos + n != size()) {
            replace(pos, n, {});
        } else {
            text.resize(pos);
        }
    }
    void empty() {
        if (block.use_count() > 1) block.reset();
        text.clear();
        null = true;
        offset = 0;
    }
};

#endif
