#include <kord/path.h>

#include "core/scan.h"
#include "text/classify.h"

namespace {

using Item = KordSplitPath::Item;
using Items = os_list<Item>;

/// For `transform`: every slash becomes a backslash, which differs from it in fixed bits.
struct SlashToBackslash {
    using L = kord::Lanes<char>;
    L operator()(L x) const noexcept { return x ^ (equal(x, L::splat('/')) & L::splat('/' ^ '\\')); }
    char operator()(char c) const noexcept { return c == '/' ? '\\' : c; }
};

using Separators = kord::IsEither<char>;

Separators separators() noexcept {
    return Separators('/', '\\');
}

const char* find(const char* first, const char* last, char c) noexcept {
    return kord::scan_forward(first, last, kord::Is<char>(c));
}

const char* find_separator(const char* first, const char* last) noexcept {
    return kord::scan_forward(first, last, separators());
}

const char* skip_separators(const char* first, const char* last) noexcept {
    while (first != last && (*first == '/' || *first == '\\')) ++first;
    return first;
}

bool is_current(const char* first, const char* last) noexcept {
    return last - first == 1 && first[0] == '.';
}

bool is_parent(const char* first, const char* last) noexcept {
    return last - first == 2 && first[0] == '.' && first[1] == '.';
}

/// Splits a path of separators and names into items. Only items that stay in the result are ever made. Reads one copy
/// of the path and makes items of another: reading what was just copied would have to wait for it.
class Splitter {
  public:
    Splitter(Items& items, const char* first, const char* last, const char* copy) noexcept
        : items_(items), first_(first), at_(first), last_(last), copy_(copy) {}

    /// Returns whether the path is relative.
    bool split() {
        const bool relative = prefix();
        names();
        return relative;
    }

  private:
    Item item(KordSplitPath::ItemKind kind, const char* first, const char* last) const noexcept {
        return Item(kind, copy_ + (first - first_), copy_ + (last - first_));
    }
    void add(KordSplitPath::ItemKind kind, const char* first, const char* last) {
        items_.insert(items_.end(), item(kind, first, last));
    }
    /// Adds the item that begins here.
    void take(KordSplitPath::ItemKind kind) {
        const char* const end = find_separator(at_, last_);
        add(kind, at_, end);
        at_ = end;
    }

    /// Takes the server and share, mount and drive, or drive. Returns whether the path is relative.
    bool prefix() {
        const char* const start = at_;
        at_ = skip_separators(at_, last_);
        if (at_ - start >= 2) {
            take(KordSplitPath::Server);
            if (at_ == last_) return false;
            at_ = skip_separators(at_, last_);
            take(KordSplitPath::Share);
            return false;
        }
        const char* const end = find_separator(at_, last_);
        const char* const colon = find(at_, end, ':');
        if (colon != end) {
            add(KordSplitPath::Drive, at_, colon + 1);
            at_ = colon + 1;
            return false;
        }
        if (at_ == start) return true;
        mount(end);
        return false;
    }

    /// Takes "MNT", which ends here if it is the first item, and the drive after it.
    void mount(const char* end) {
        if (end - at_ != 3 || at_[0] != 'M' || at_[1] != 'N' || at_[2] != 'T') return;
        const char* const drive = skip_separators(end, last_);
        const char* const drive_end = find_separator(drive, last_);
        if (drive_end - drive != 2 || !kord::has_flag(drive[0], kordUpper | kordLower) || drive[1] != ':') return;
        add(KordSplitPath::Mount, at_, end);
        add(KordSplitPath::Drive, drive, drive_end);
        at_ = drive_end;
    }

    /// Adds the items after the prefix. Walks them from the end, where a directory stays exactly if every ".." met so
    /// far has been used up, and the first one met is the file's name unless a separator follows.
    void names() {
        Items::const_iterator next = items_.end();
        const char* name = nullptr;
        unsigned int parents = 0;
        kord::BackwardMatches<char, Separators> slashes(at_, last_, separators());
        for (const char* end = last_; end != nullptr;) {
            const char* const slash = slashes.next();
            const char* const begin = slash == nullptr ? at_ : slash + 1;
            if (is_parent(begin, end)) {
                ++parents;
            } else if (end == last_ && begin != end) {
                name = begin;
            } else if (begin == end || is_current(begin, end)) {
                // Beside another separator, or standing for nothing.
            } else if (parents != 0) {
                --parents;
            } else {
                next = items_.insert(next, item(KordSplitPath::Directory, begin, end));
            }
            end = slash;
        }
        unresolved(parents, next);
        if (name != nullptr) file_name(name);
    }

    /// Adds, before `next`, the `count` parents that have no directory before them to take back. They come before every
    /// directory that stays.
    void unresolved(unsigned int count, Items::const_iterator next) {
        unsigned int depth = 0;
        for (const char* end = at_; count != 0;) {
            const char* const begin = skip_separators(end, last_);
            end = find_separator(begin, last_);
            if (!is_parent(begin, end)) {
                depth += is_current(begin, end) ? 0u : 1u;
            } else if (depth != 0) {
                --depth;
            } else {
                items_.insert(next, item(KordSplitPath::Parent, end, end));
                --count;
            }
        }
    }

    void file_name(const char* first) {
        const char* dot = find(first, last_, '.');
        add(KordSplitPath::FileName, first, dot);
        while (dot != last_) {
            const char* const begin = dot + 1;
            dot = find(begin, last_, '.');
            add(KordSplitPath::Extension, begin, dot);
        }
    }

    Items& items_;
    const char* const first_;
    const char* at_;
    const char* const last_;
    const char* const copy_;
};

} // namespace

KordSplitPath::KordSplitPath(const astring& path) : raw_(path) {
    if (raw_.empty()) return;
    char* copy = raw_.begin();
    const char* first = path.cbegin();
    for (; first != path.cend() && kord::has_flag(*first, kordSpace); ++first) ++copy;
    if (first == path.cend()) return;
    kord::transform(copy, copy + (path.cend() - first), SlashToBackslash());
    relative_ = Splitter(items_, first, path.cend(), copy).split();
}

KordSplitPath::Item& KordSplitPath::Item::operator=(const Item& other) noexcept = default;

KordSplitPath::KordSplitPath(const KordSplitPath& other) = default;

KordSplitPath& KordSplitPath::operator=(const KordSplitPath& other) {
    items_ = other.items_; // the only step that can fail, and then it changes nothing
    raw_ = other.raw_;
    relative_ = other.relative_;
    return *this;
}

KordSplitPath::~KordSplitPath() = default;

KordSplitPath::const_iterator KordSplitPath::Begin() const noexcept {
    return items_.begin();
}

KordSplitPath::const_iterator KordSplitPath::End() const noexcept {
    return items_.end();
}

bool KordSplitPath::Relative() const noexcept {
    return relative_;
}

const astring& KordSplitPath::RawPathname() const noexcept {
    return raw_;
}
