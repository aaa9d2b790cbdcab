#ifndef KORD_PATH_H
#define KORD_PATH_H

#include <kord/export.h>
#include <kord/list.h>
#include <kord/range.h>
#include <kord/string.h>

/// A path name by Windows conventions, split into typed items.
///
/// '\\' and '/' both separate items, a colon ends a drive, two leading separators begin a UNC path, "." is the current
/// and ".." the parent directory, dots separate a file name from its extensions; "\MNT\C:" at the start is a mount
/// marker and its drive. Leading white space belongs to no item. Every text splits into some list, perhaps empty.
///
///     for (const KordSplitPath::Item& item : KordSplitPath("C:/src/../lib/kord.tar.gz"))
///         // Drive 'C:', Directory 'lib', FileName 'kord', Extension 'tar', Extension 'gz'
///
/// The items point into the splitter's own copy of the path, which copies of the splitter share: they stay valid as
/// long as any of those copies lives. Shared counts are plain integers, so these belong to one thread at a time.
class KORD_API KordSplitPath {
  public:
    enum ItemKind : int {
        Server = 0,    ///< the first item of a path that starts with two or more separators
        Share = 1,     ///< the second item of such a path
        Mount = 2,     ///< "MNT" at the start of a rooted path, before a drive letter with its colon
        Drive = 3,     ///< the first item up to and including its first colon
        Parent = 4,    ///< a ".." that nothing before it resolves; its text is empty
        Directory = 5, ///< any other item
        FileName = 6,  ///< the last item of a path that does not end in a separator, up to its first dot
        Extension = 7, ///< what follows a dot of the last item, up to the next one; perhaps empty
    };

    /// One item: its kind and its text [begin, end), which is not zero-terminated.
    struct Item {
        ItemKind kind = Directory;
        const char* begin = nullptr;
        const char* end = nullptr;

        Item() noexcept = default;
        Item(ItemKind k, const char* first, const char* last) noexcept : kind(k), begin(first), end(last) {}
        Item(const Item&) noexcept = default;
        Item& operator=(const Item& other) noexcept;
        /// The text as a range; valid as long as the item.
        aliteral text() const noexcept { return aliteral(begin, end); }
    };

    using const_iterator = os_list_const_iterator<Item, int>;

    /// Splits a path. The given string is not changed. Linear in the length. Allocates one block for the private copy
    /// (none for an empty path), a node for each item of the result and one for the list: throws `std::bad_alloc`, and
    /// `os_length_error` for foreign text above the strings' limit.
    KordSplitPath(const astring& path);
    /// Shares the other's text and copies its items, which point to the same characters: allocates their nodes.
    KordSplitPath(const KordSplitPath& other);
    /// The same; unchanged if memory runs out.
    KordSplitPath& operator=(const KordSplitPath& other);
    ~KordSplitPath();

    /// The items in path order.
    const_iterator Begin() const noexcept;
    const_iterator End() const noexcept;
    const_iterator begin() const noexcept { return Begin(); }
    const_iterator end() const noexcept { return End(); }

    /// Does the path start neither with a separator nor with a drive? False for an empty or blank path.
    bool Relative() const noexcept;
    /// The splitter's copy of the path: every '/' is a '\\' in it, leading white space is kept.
    const astring& RawPathname() const noexcept;

  private:
    astring raw_;
    os_list<Item> items_;
    bool relative_ = false;
};

#endif
