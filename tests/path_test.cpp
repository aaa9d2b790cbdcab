#include "support/text.h"

#include <kord/path.h>

#include <algorithm>
#include <random>

namespace {

struct Split {
    std::string items; // "Kind:text" with blanks between
    bool relative;
};

std::string describe(KordSplitPath::ItemKind kind, std::string_view text) {
    static const char* const names[] = {"Server", "Share", "Mount", "Drive", "Parent", "Dir", "File", "Ext"};
    return std::string(names[kind]) + ':' + std::string(text);
}

Split split(const KordSplitPath& path) {
    Split result{"", path.Relative()};
    for (const KordSplitPath::Item& item : path) {
        if (!result.items.empty()) result.items += ' ';
        result.items += describe(item.kind, {item.begin, item.text().length()});
    }
    return result;
}

KordSplitPath split_text(const std::string& text) {
    return KordSplitPath(astring(text.data(), text.size()));
}

TEST(SplitPath, PathsOfEveryKind) {
    const struct {
        const char* path;
        const char* items;
        bool relative;
    } rows[] = {
        // clang-format off
        {"", "", false}, {"   ", "", false}, {"a", "File:a", true},
        {"foo/bar/baz.txt", "Dir:foo Dir:bar File:baz Ext:txt", true}, {"/", "", false}, {"//", "Server:", false},
        {"///a", "Server:a", false}, {"/foo/", "Dir:foo", false}, {"a/b/", "Dir:a Dir:b", true},
        {"C:", "Drive:C:", false}, {"C:/", "Drive:C:", false}, {"C:foo.txt", "Drive:C: File:foo Ext:txt", false},
        {"C:/dir/file.tar.gz", "Drive:C: Dir:dir File:file Ext:tar Ext:gz", false},
        {"foo:bar", "Drive:foo: File:bar", false}, {":", "Drive::", false}, {"/C:/x", "Drive:C: File:x", false},
        {"//server/share/dir/file.txt", "Server:server Share:share Dir:dir File:file Ext:txt", false},
        {"//server", "Server:server", false}, {"//server/", "Server:server Share:", false},
        {"//s.x/h.y", "Server:s.x Share:h.y", false}, {"/MNT/C:/x.txt", "Mount:MNT Drive:C: File:x Ext:txt", false},
        {"/MNT/C:", "Mount:MNT Drive:C:", false}, {"/MNT//c:/", "Mount:MNT Drive:c:", false},
        {"/MNT/\xe9:", "Mount:MNT Drive:\xe9:", false}, {"/mnt/C:", "Dir:mnt File:C:", false},
        {"/MNT/CD:", "Dir:MNT File:CD:", false}, {"/MNT/1:", "Dir:MNT File:1:", false},
        {"/MNT/Cx", "Dir:MNT File:Cx", false}, {"/MNT", "File:MNT", false}, {"/MNT/", "Dir:MNT", false},
        {"/MNTX/C:", "Dir:MNTX File:C:", false}, {"MNT/C:", "Dir:MNT File:C:", true},
        {"//MNT/C:", "Server:MNT Share:C:", false}, {"/MNT/C:/..", "Mount:MNT Drive:C: Parent:", false},
        {".", "File: Ext:", true}, {"..", "Parent:", true}, {"...", "File: Ext: Ext: Ext:", true},
        {".../a", "Dir:... File:a", true}, {"./a", "File:a", true}, {"a/./b", "Dir:a File:b", true},
        {"a/.", "Dir:a File: Ext:", true}, {"a/..", "", true}, {"a/b/..", "Dir:a", true}, {"a/b/../..", "", true},
        {"a/../../b", "Parent: File:b", true}, {"../../a", "Parent: Parent: File:a", true},
        {"C:../x", "Drive:C: Parent: File:x", false}, {"C:./x", "Drive:C: File:x", false},
        {"C:..", "Drive:C: Parent:", false}, {"C:/../x", "Drive:C: Parent: File:x", false},
        {"//srv/share/../x", "Server:srv Share:share Parent: File:x", false}, {"a.", "File:a Ext:", true},
        {".profile", "File: Ext:profile", true}, {"a..b", "File:a Ext: Ext:b", true},
        {"x.y/z", "Dir:x.y File:z", true}, {"a///b", "Dir:a File:b", true}, {"  x/y ", "Dir:x File:y ", true},
        {"\tC:/x", "Drive:C: File:x", false}, {"\xa0/x", "Dir:\xa0 File:x", true},
        // clang-format on
    };
    for (const auto& row : rows) {
        std::string path = row.path;
        for (const char to : {'/', '\\'}) {
            std::replace(path.begin(), path.end(), '/', to);
            const Split result = split(split_text(path));
            EXPECT_EQ(result.items, row.items) << path;
            EXPECT_EQ(result.relative, row.relative) << path;
        }
    }
}

/// The rules one after the other on a plain vector.
Split split_plainly(std::string path) {
    struct Piece {
        KordSplitPath::ItemKind kind;
        std::string text;
    };
    std::replace(path.begin(), path.end(), '/', '\\');
    const std::size_t start = path.find_first_not_of("\t\n\v\f\r ");
    if (start == std::string::npos) return {"", false};
    path.erase(0, start);
    const std::size_t leading = std::min(path.find_first_not_of('\\'), path.size());
    bool relative = false;
    std::vector<Piece> pieces;
    for (std::size_t at = 0; at != path.size();) {
        const std::size_t begin = std::min(path.find_first_not_of('\\', at), path.size());
        at = std::min(path.find('\\', begin), path.size());
        pieces.push_back({KordSplitPath::Directory, path.substr(begin, at - begin)});
    }
    const std::string first = pieces[0].text;
    const std::size_t colon = first.find(':');
    if (leading >= 2) {
        pieces[0].kind = KordSplitPath::Server;
        if (pieces.size() > 1) pieces[1].kind = KordSplitPath::Share;
    } else if (colon != std::string::npos) {
        pieces[0] = {KordSplitPath::Drive, first.substr(0, colon + 1)};
        if (colon + 1 != first.size())
            pieces.insert(pieces.begin() + 1, {KordSplitPath::Directory, first.substr(colon + 1)});
    } else if (leading == 0) {
        relative = true;
    } else if (first == "MNT" && pieces.size() > 1 && pieces[1].text.size() == 2 && pieces[1].text[1] == ':' &&
               std::isalpha(static_cast<unsigned char>(pieces[1].text[0]))) {
        pieces[0].kind = KordSplitPath::Mount;
        pieces[1].kind = KordSplitPath::Drive;
    }
    for (Piece& piece : pieces) {
        if (piece.kind == KordSplitPath::Directory && piece.text == "..") piece = {KordSplitPath::Parent, ""};
    }
    if (pieces.back().kind == KordSplitPath::Directory) {
        const std::string name = pieces.back().text;
        pieces.pop_back();
        if (!name.empty()) {
            std::size_t dot = std::min(name.find('.'), name.size());
            pieces.push_back({KordSplitPath::FileName, name.substr(0, dot)});
            while (dot != name.size()) {
                const std::size_t begin = dot + 1;
                dot = std::min(name.find('.', begin), name.size());
                pieces.push_back({KordSplitPath::Extension, name.substr(begin, dot - begin)});
            }
        }
    }
    std::erase_if(pieces, [](const Piece& p) { return p.kind == KordSplitPath::Directory && p.text == "."; });
    for (std::size_t i = 0; i < pieces.size();) {
        if (i > 0 && pieces[i].kind == KordSplitPath::Parent && pieces[i - 1].kind == KordSplitPath::Directory) {
            pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(i) - 1,
                         pieces.begin() + static_cast<std::ptrdiff_t>(i) + 1);
            --i;
        } else {
            ++i;
        }
    }
    Split result{"", relative};
    for (const Piece& p : pieces) {
        if (!result.items.empty()) result.items += ' ';
        result.items += describe(p.kind, p.text);
    }
    return result;
}

TEST(SplitPath, RandomPathsAgreeWithThePlainRules) {
    static const char* const words[] = {"/", "/",   "/",   "\\", "..", "..", ".",
                                        "a", "b.c", "MNT", "C:", ":",  " ",  "longer than a block"};
    std::mt19937 random(7);
    for (int round = 0; round != 30000; ++round) {
        std::string path;
        for (std::size_t n = random() % 14; n != 0; --n) path += words[random() % std::size(words)];
        const Split expected = split_plainly(path);
        const Split result = split(split_text(path));
        ASSERT_EQ(result.items, expected.items) << path;
        ASSERT_EQ(result.relative, expected.relative) << path;
    }
}

TEST(SplitPath, TheCallersStringIsLeftAlone) {
    const astring path(" a/b\\c");
    const astring shared = path;
    const KordSplitPath result(path);
    EXPECT_EQ(show(path), " a/b\\c");
    EXPECT_EQ(show(result.RawPathname()), " a\\b\\c");
    EXPECT_EQ(holders(path), 2u);
    for (const auto& item : result) {
        EXPECT_GE(item.begin, result.RawPathname().cbegin());
        EXPECT_LE(item.end, result.RawPathname().cend());
    }
    const char* const text = result.RawPathname().data();
    EXPECT_EQ(result.RawPathname().c_str(), text); // so that items stay valid after it
    const KordSplitPath parent(astring("../x"));
    EXPECT_EQ(parent.Begin()->begin, parent.RawPathname().data() + 2);
}

TEST(SplitPath, CopiesShareTheTextAndOutliveTheirSource) {
    auto* const source = new KordSplitPath("C:/dir/file.txt");
    const KordSplitPath copy(*source);
    KordSplitPath assigned("a/much/longer/path/than/the/other");
    assigned = *source;
    const KordSplitPath& alias = assigned;
    assigned = alias;
    EXPECT_EQ(copy.Begin()->begin, source->Begin()->begin);
    EXPECT_EQ(assigned.Begin()->begin, source->Begin()->begin);
    delete source;
    for (const KordSplitPath& path : {copy, assigned}) {
        EXPECT_EQ(split(path).items, "Drive:C: Dir:dir File:file Ext:txt");
        EXPECT_FALSE(path.Relative());
    }
    assigned = KordSplitPath("a/b/c/d/e/f");
    EXPECT_EQ(split(assigned).items, "Dir:a Dir:b Dir:c Dir:d Dir:e File:f");
    EXPECT_TRUE(assigned.Relative());
}

TEST(SplitPath, ATextAboveTheLimitCannotBeCopied) {
    std::vector<char> text(0x100001, 'a');
    const astring foreign(nullptr, text.data(), 0x100001);
    EXPECT_THROW(KordSplitPath{foreign}, os_length_error);
    EXPECT_EQ(split_text(std::string(0x100000, '/')).Begin()->kind, KordSplitPath::Server);
}

} // namespace
