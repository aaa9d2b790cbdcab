#include "support/dice.h"
#include "support/guard.h"
#include "support/text.h"

#include <kord/chars.h>
#include <kord/path.h>

#include <algorithm>
#include <optional>

namespace {

struct Split {
    std::string items; // "Kind:text" with blanks between
    bool relative;
    bool operator==(const Split&) const = default;
};

Split split(const KordSplitPath& path) {
    static const char* const names[] = {"Server", "Share", "Mount", "Drive", "Parent", "Dir", "File", "Ext"};
    Split result{"", path.Relative()};
    for (const KordSplitPath::Item& item : path)
        result.items +=
            (result.items.empty() ? "" : " ") + (names[item.kind] + (':' + std::string(item.begin, item.end)));
    return result;
}

/// With faults around the text.
Split split(const std::string& path) {
    const auto n = static_cast<unsigned int>(path.size());
    const GuardedText<char> text(n, n % 2 == 0);
    std::copy(path.begin(), path.end(), text.data());
    return split(KordSplitPath(astring(nullptr, text.data(), n)));
}

TEST(SplitPath, PathsOfEveryKind) {
    // clang-format off
    const struct { const char *path, *items; bool relative; } rows[] = {
        {"", "", false}, {"   ", "", false}, {"a", "File:a", true}, {"/", "", false}, {"//", "Server:", false},
        {"foo/bar/baz.txt", "Dir:foo Dir:bar File:baz Ext:txt", true}, {"/foo/", "Dir:foo", false},
        {"C:/dir/file.tar.gz", "Drive:C: Dir:dir File:file Ext:tar Ext:gz", false},
        {"foo:bar", "Drive:foo: File:bar", false}, {"/C:/x", "Drive:C: File:x", false},
        {"///server/share/dir/file.txt", "Server:server Share:share Dir:dir File:file Ext:txt", false},
        {"/MNT/C:/x.txt", "Mount:MNT Drive:C: File:x Ext:txt", false}, {"/mnt/C:", "Dir:mnt File:C:", false},
        {"...", "File: Ext: Ext: Ext:", true}, {"a/./b", "Dir:a File:b", true}, {"a/.", "Dir:a File: Ext:", true},
        {"a/../../b", "Parent: File:b", true}, {"//srv/share/../x", "Server:srv Share:share Parent: File:x", false},
    };
    // clang-format on
    for (const auto& row : rows) {
        std::string path = row.path;
        EXPECT_EQ(split(path), (Split{row.items, row.relative})) << path;
        std::replace(path.begin(), path.end(), '/', '\\');
        EXPECT_EQ(split(path), (Split{row.items, row.relative})) << path;
    }
}

bool is_letter(char c) {
    return (kordType[static_cast<unsigned char>(c)] & (kordUpper | kordLower)) != 0;
}

/// The rules one after the other, on items written as they are shown.
Split split_plainly(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    path.erase(0, std::min(path.find_first_not_of("\t\n\v\f\r "), path.size()));
    std::vector<std::string> items;
    for (std::size_t at = 0; at != path.size();) {
        const std::size_t begin = std::min(path.find_first_not_of('\\', at), path.size());
        at = std::min(path.find('\\', begin), path.size());
        items.push_back("Dir:" + path.substr(begin, at - begin));
    }
    if (items.empty()) return {"", false};
    const std::size_t leading = std::min(path.find_first_not_of('\\'), path.size());
    const std::string first = items[0].substr(4), second = items.size() > 1 ? items[1].substr(4) : "";
    const std::size_t colon = first.find(':');
    if (leading >= 2) {
        items[0] = "Server:" + first;
        if (items.size() > 1) items[1] = "Share:" + second;
    } else if (colon != first.npos) {
        items[0] = "Drive:" + first.substr(0, colon + 1);
        if (colon + 1 != first.size()) items.insert(items.begin() + 1, "Dir:" + first.substr(colon + 1));
    } else if (leading == 1 && first == "MNT" && second.size() == 2 && is_letter(second[0]) && second[1] == ':') {
        items[0] = "Mount:MNT";
        items[1] = "Drive:" + second;
    }
    std::replace(items.begin(), items.end(), std::string("Dir:.."), std::string("Parent:"));
    if (std::string name = items.back(); name.starts_with("Dir:")) {
        items.pop_back();
        name.replace(0, 3, "File");
        for (std::size_t dot = 0; (dot = name.find('.')) != name.npos; name = "Ext:" + name.substr(dot + 1)) {
            items.push_back(name.substr(0, dot));
        }
        if (name != "File:") items.push_back(name); // nothing after the last separator
    }
    std::erase(items, "Dir:.");
    for (std::size_t i = 1; i < items.size();) {
        if (items[i] == "Parent:" && items[i - 1].starts_with("Dir:")) {
            items.erase(items.begin() + i - 1, items.begin() + i + 1);
            i = std::max<std::size_t>(i - 1, 1);
        } else {
            ++i;
        }
    }
    Split result{"", leading == 0 && colon == first.npos};
    for (const std::string& item : items) result.items += (result.items.empty() ? "" : " ") + item;
    return result;
}

TEST(SplitPath, RandomPathsAgreeWithThePlainRules) {
    static const char* const words[] = {
        "/", "/",   "/",  "\\", "\\",    "..", "..", ".",    "a",  "b.c",
        " ", "MNT", "C:", ":",  "\xE9:", "1:", "Cx", "\xA0", "\t", "longer than a block"};
    static const char* const fronts[] = {"", "", "/MNT/", "\\MNT//", "/mnt/", "/MNX/", "/MNTX/"};
    Dice below(7);
    for (int round = 0; round != 30000; ++round) {
        std::string path = below.pick(fronts);
        for (unsigned int n = below(14); n != 0; --n) path += below.pick(words);
        ASSERT_EQ(split(path), split_plainly(path)) << path;
    }
}

TEST(SplitPath, TheCallersStringIsLeftAlone) {
    const astring path(" a/b\\c"), shared = path;
    const KordSplitPath result(path), parent("../x");
    EXPECT_EQ(show(path) + show(result.RawPathname()), " a/b\\c a\\b\\c");
    EXPECT_EQ(holders(path), 2u);
    const char* const text = result.RawPathname().data();
    for (const auto& item : result) EXPECT_TRUE(item.begin >= text && item.end <= result.RawPathname().cend());
    EXPECT_EQ(result.RawPathname().c_str(), text); // so that items stay valid after it
    EXPECT_EQ(parent.Begin()->begin, parent.RawPathname().data() + 2);
}

TEST(SplitPath, CopiesShareTheTextAndOutliveTheirSource) {
    std::optional<KordSplitPath> source("C:/dir/file.txt");
    const KordSplitPath copy(*source);
    KordSplitPath assigned("a/much/longer/path/than/the/other");
    assigned = *source;
    assigned = static_cast<const KordSplitPath&>(assigned);
    const char* const text = source->Begin()->begin;
    source.reset();
    for (const KordSplitPath& path : {copy, assigned}) {
        EXPECT_EQ(path.Begin()->begin, text);
        EXPECT_EQ(split(path), (Split{"Drive:C: Dir:dir File:file Ext:txt", false}));
    }
    assigned = KordSplitPath("a/b/c/d/e/f");
    EXPECT_EQ(split(assigned), (Split{"Dir:a Dir:b Dir:c Dir:d Dir:e File:f", true}));
}

TEST(SplitPath, ATextAboveTheLimitCannotBeCopied) {
    std::vector<char> text(0x100001, 'a');
    const astring foreign(nullptr, text.data(), 0x100001);
    EXPECT_THROW(KordSplitPath{foreign}, os_length_error);
    EXPECT_EQ(KordSplitPath(astring(0x100000, '/')).Begin()->kind, KordSplitPath::Server);
}

} // namespace
