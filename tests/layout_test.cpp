// The layout of what programs hold and share, for 32 and 64 bits: P is a pointer. Nothing here runs.
#include <kord/kord.h>

#include <cstddef>
#include <type_traits>

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // both compilers can tell for single bases

namespace {

constexpr std::size_t P = sizeof(void*);

/// The fields made public.
template <class T>
struct Open : BasicString<T> {
    using BasicString<T>::begin_;
    using BasicString<T>::end_;
    using BasicString<T>::body_;
};

template <class T, class Literal, class String, class Adapter>
constexpr bool check_width() {
    using Range = KordCharacterRange<T>;
    using Body = BasicStringBody<T>;
    static_assert(sizeof(Range) == 3 * P && alignof(Range) == P);
    static_assert(sizeof(Literal) == 3 * P);
    static_assert(sizeof(BasicString<T>) == 4 * P && sizeof(String) == 4 * P && sizeof(Adapter) == 4 * P);
    // The table of virtual operations comes first.
    static_assert(offsetof(Open<T>, begin_) == P && offsetof(Open<T>, end_) == 2 * P);
    static_assert(offsetof(Open<T>, body_) == 3 * P);
    static_assert(std::has_virtual_destructor_v<Range> && std::has_virtual_destructor_v<Literal> &&
                  std::has_virtual_destructor_v<String> && !std::is_polymorphic_v<Adapter>);
    // The characters begin behind the two counts.
    static_assert(sizeof(Body) == 8 && alignof(Body) == 4 && std::is_standard_layout_v<Body>);
    static_assert(offsetof(Body, count) == 0 && offsetof(Body, capacity) == 4);
    static_assert(std::is_same_v<decltype(Range::npos), const unsigned int> && Range::npos == 0xFFFFFFFFu);
    static_assert(std::is_same_v<decltype(BasicString<T>::lengthLimit), const unsigned int> &&
                  BasicString<T>::lengthLimit == 0x100000u);
    using Mode = typename BasicString<T>::t_format_path;
    static_assert(std::is_same_v<std::underlying_type_t<Mode>, int>);
    static_assert(Mode::ellipsis_middle == 0 && Mode::ellipsis_middle_fill == 1 && Mode::ellipsis_end == 2 &&
                  Mode::ellipsis_begin == 3);
    return true;
}
static_assert(check_width<char, aliteral, astring, AstringAdapter>());
static_assert(check_width<unsigned short, uliteral, ustring, UstringAdapter>());

using Path = KordSplitPath;
using Item = Path::Item;
using Node = os_list_node<Item>;
static_assert(offsetof(Item, kind) == 0 && offsetof(Item, begin) == P && offsetof(Item, end) == 2 * P);
static_assert(sizeof(Item) == 3 * P && std::is_same_v<std::underlying_type_t<Path::ItemKind>, int>);
static_assert(Path::Server == 0 && Path::Share == 1 && Path::Mount == 2 && Path::Drive == 3 && Path::Parent == 4 &&
              Path::Directory == 5 && Path::FileName == 6 && Path::Extension == 7);
static_assert(offsetof(Node, next) == 0 && offsetof(Node, prev) == P && offsetof(Node, value) == 2 * P);
static_assert(sizeof(Path::const_iterator) == 2 * P && std::is_same_v<Path::const_iterator::value_type, Item>);
static_assert(sizeof(os_list<Item>) == 4 * P && sizeof(Path) == 9 * P); // the string, the list, a flag
static_assert(sizeof(os_logic_error) == P + 64 && sizeof(os_length_error) == P + 64);
static_assert(std::is_base_of_v<std::exception, os_logic_error> && std::is_base_of_v<os_logic_error, os_length_error>);
static_assert(sizeof kordType == 512 && sizeof kordDigits == 34 && sizeof prevPowerOfTen == 136);

} // namespace
