// Uses every exported name at least once, as programs would and with their compilers' settings; a test sees to it that
// none is left out. Returns 0 if what the calls say is what they should.
#include <kord/kord.h>

#include <cstdio>
#include <initializer_list>
#include <typeinfo>

namespace {

int faults = 0;

void expect(bool holds, int line = __builtin_LINE()) {
    if (holds) return;
    std::printf("line %d does not hold\n", line);
    ++faults;
}

/// Everything that there is in two widths.
template <class T, class U, class Literal, class String, class Adapter>
struct Width {
    using Range = KordCharacterRange<T>;
    using Base = BasicString<T>;
    static constexpr T abc[] = {'a', 'b', 'c', 0};
    static constexpr U other_abc[] = {'a', 'b', 'c', 0};

    /// ASCII text of any width.
    static String text(const char* ascii) { return Adapter(ascii); }
    static bool is(const Range& r, const char* ascii) { return r.compare(text(ascii)) == 0; }

    static void literals() {
        Literal null, pair(abc, abc + 1), whole(abc), counted(abc, 2u), copy(whole);
        expect(null.empty() && is(pair, "a") && is(whole, "abc") && is(counted, "ab") && is(copy, "abc"));
        null = counted;
        pair.assign(whole);
        whole.assign(abc + 1);
        counted.assign(abc, abc + 3);
        copy.assign(abc, 1u);
        expect(is(null, "ab") && is(pair, "abc") && is(whole, "bc") && is(counted, "abc") && is(copy, "a"));
    }

    static void ranges() {
        const T s[] = {'a', 'B', '1', 'a', 0};
        const Range r(s, 0u, 4u), piece(r, 1u, 2u), a(s, 0u, 1u), null;
        expect(r.length() == 4 && r.size() == 4 && !r.empty() && null.empty() && r[1] == 'B');
        expect(r.data() == s && r.begin() == r.cbegin() && r.end() == r.cend() && typeid(r) == typeid(Range));
        expect(r.compare(T('a')) == 3 && r.compare(s) == 0 && r.compare(a) == 3);
        expect(r.compare(0u, 1u, s, 1u) == 0 && r.compare(3u, 1u, r, 0u, 1u) == 0);
        expect(r.compare_nocase(T('A')) == 3 && r.compare_nocase(s) == 0 && r.compare_nocase(r) == 0);
        expect(r.compare_nocase(0u, 1u, s, 1u) == 0 && r.compare_nocase(3u, 1u, r, 0u, 1u) == 0);
        expect(r.find(T('1')) == 2 && r.find(s) == 0 && r.find(piece) == 1 && r.find_nocase(piece) == 1);
        expect(r.rfind(T('a')) == 3 && r.rfind(s) == 0 && r.rfind(piece) == 1 && r.rfind_nocase(piece) == 1);
        expect(r.find_first_of(piece) == 1 && r.find_first_not_of(a) == 1 && r.find_first_not_of(T('a')) == 1);
        expect(r.find_last_of(piece) == 2 && r.find_last_not_of(a) == 2 && r.find_last_not_of(T('a')) == 2);
        Range cut(r);
        cut.remove_trailing(T('a'));
        const unsigned int* const npos = &Range::npos;
        expect(cut.length() == 3 && cut.find(T('z')) == *npos);
        expect(text("-7").as_int() == -7 && text("0x1F").as_unsigned() == 31 && text("2.5").as_double() == 2.5);
    }

    static void strings() {
        const String null, whole(abc), counted(abc, 2u), pair(abc, abc + 1), filled(2u, T('x'));
        const Base& base = whole;
        const String copy(whole), shared(base), piece(base, 1u, 1u), part(base, base.cbegin(), base.cend());
        expect(null.empty() && is(whole, "abc") && is(counted, "ab") && is(pair, "a") && is(filled, "xx"));
        expect(is(copy, "abc") && is(shared, "abc") && is(piece, "b") && is(part, "abc"));
        String s(text("x")), moved(static_cast<String&&>(s));
        s = whole;
        s += abc;
        s += whole;
        s += T('d');
        expect(is(moved, "x") && is(s, "abcabcabcd") && is(s.substr(3u, 2u), "ab"));
        moved = abc;
        s = static_cast<String&&>(moved);
        expect(is(s, "abc") && String::nullString.empty() && *String::nullCString == 0);
    }

    static void editing() {
        const Range bc(abc + 1, 0u, 2u);
        String string(abc), other;
        Base& s = string;
        expect(is(s.append(bc).append(2u, T('x')).insert(0u, bc).insert(1u, 2u, T('y')), "byycabcbcxx"));
        s.erase(s.begin(), s.begin() + 4);
        s.erase(s.end() - 1);
        s.insert(s.begin(), T('z'));
        expect(is(s.erase(4u, 2u), "zabcx"));
        s.replace(0u, 1u, T('y')).replace(1u, 1u, bc, 1u, 1u).replace(s.begin(), s.begin() + 1, abc);
        s.replace(s.begin(), s.begin() + 3, abc, abc + 1).resize(3u, T('-'));
        s.set_at(1u, T('Q'));
        expect(is(s.make_upper(), "AQB") && is(s.make_lower(), "aqb"));
        s.reserve(100u);
        s.get_buffer(2u)[1] = T('k');
        s.release_buffer(2u);
        expect(is(s, "ak") && s.c_str() == s.cbegin() && s.capacity() >= 100);
        other.assign(2u, T('o')).assign(bc).assign(s, 1u, 1u).swap(s);
        expect(is(s, "k") && is(other, "ak"));
        s.assign(other, other.cbegin(), other.cbegin() + 1);
        expect(is(s, "a") && is(s.assign_literal(abc), "abc") && s.erase().empty());
    }

    /// The class that is caught must be the library's.
    static void exceptions() {
        const unsigned int* const limit = &Base::lengthLimit;
        try {
            String().reserve(*limit + 1);
            expect(false);
        } catch (const os_length_error& error) {
            expect(error.what()[0] == 'B');
        } catch (...) {
            expect(false);
        }
    }

    static void formatting() {
        const Range a(abc, 0u, 1u);
        const auto t = text;
        Base&& s = t("abcdefgh");
        expect(is(s.format_path(6u, Base::ellipsis_end), "abc..."));
        expect(is(s.format(t("%s%s"), a, a), "aa") && is(s.format(t("%s%d"), a, -1L), "a-1"));
        expect(is(s.format(t("%s%.1f"), a, 0.5), "a0.5") && is(s.format(t("%d%d"), 1L, 2L), "12"));
        expect(is(s.format(t("%d%.1f"), 1L, 0.5), "10.5") && is(s.format(t("%.0f%.0f"), 1.0, 2.0), "12"));
        expect(is(s.format(t("%s"), a), "a") && is(s.format(t("%s"), abc), "abc"));
        expect(is(s.format(t("%c"), abc[1]), "b") && is(s.format(t("%.0f"), 2.0), "2"));
        expect(is(s.format(t("%d"), -3L), "-3") && is(s.format(t("%u"), 3UL), "3"));
        expect(is(s.format(-3L), "-3") && is(s.format(3UL), "3") && is(s.format(0.1), "0.1"));
    }

    static void adapters() {
        const Base& base = text("s");
        const Adapter whole(abc), counted(abc, 2u), range(Range(abc, 1u, 2u)), shared(base), copy(whole);
        const Adapter other(other_abc), start(other_abc, 2u), piece(KordCharacterRange<U>(other_abc, 1u, 2u));
        const auto holds = [](const Adapter& x, const char* ascii) { return is(String(x), ascii); };
        expect(holds(whole, "abc") && holds(counted, "ab") && holds(range, "bc") && holds(shared, "s"));
        expect(holds(other, "abc") && holds(start, "ab") && holds(piece, "bc") && holds(copy, "abc"));
        Adapter assigned(base);
        assigned = piece;
        expect(assigned.c_str()[0] == 'b' && Adapter::Convert(other_abc[0]) == 'a');
    }

    /// What classes derived from a string use, and what takes their blocks.
    struct Derived : Base {
        using Base::Base;
        Derived() = default;

        static void use() {
            const Derived null, owner(abc, 3u), filled(2u, T('x'));
            T* const first = owner.body_->first();
            const Derived view(owner.body_, first, 3u), part(owner, first, first + 1), piece(owner, 1u, 1u);
            expect(null.empty() && is(filled, "xx") && is(view, "abc") && is(part, "a") && is(piece, "b"));
            Derived s(view);
            s.unlink(nullptr);
            s.link(owner.body_);
            Base::release(BasicStringBody<T>::retain(owner.body_));
            Base::adopt(s, BasicStringBody<T>::retain(owner.body_), first, first + 2);
            const String string(owner.body_, first, 1u);
            const Adapter adapter(owner.body_, first, 2u);
            expect(is(s, "ab") && is(string, "a") && is(adapter.c_str(), "ab") && typeid(s) != typeid(Base));
        }
    };

    static void use() {
        for (auto* part : {literals, ranges, strings, editing, exceptions, formatting, adapters, Derived::use}) part();
    }
};
using Narrow = Width<char, unsigned short, aliteral, astring, AstringAdapter>;
using Wide = Width<unsigned short, char, uliteral, ustring, UstringAdapter>;

void tables() {
    const char* const signatures[] = {kordSignatureD,  kordSignatureU,  kordSignatureF,  kordSignatureC,
                                      kordSignatureS,  kordSignatureDD, kordSignatureDF, kordSignatureFF,
                                      kordSignatureSD, kordSignatureSF, kordSignatureSS};
    expect(signatures[0][0] == 'd' && signatures[10][1] == 's');
    expect(kordType[65] == (kordUpper | kordHexDigit) && kordDigits[1][15] == 'F' && prevPowerOfTen[1] == 1);
    char buffer[32];
    expect(Narrow::is(KordFromReal(0.5, buffer, 1, false, true, false), "0.5"));
    expect(KordToLower('A') == 'a' && KordToUpper('a') == 'A' && Narrow::is(astring().format_unchecked("%d", 7), "7"));
}

void conversions_and_hashes() {
    const unsigned short units[] = {'a', 0xE9};
    unsigned short back[2];
    unsigned char bytes[3];
    expect(KordConvert::ConvertAnsi(units, bytes, 2) == bytes + 2);
    expect(KordConvert::CountUtf8(units, 2) == 3 && KordConvert::ConvertUtf8(units, bytes, 2) == bytes + 3);
    expect(KordConvert::CountUtf8(bytes, 3) == 2 && KordConvert::ConvertUtf8(bytes, back, 2) == back + 2);
    const char* const x = Narrow::abc;
    expect(KordHash::FowlerNollVo(x) == KordHash::FowlerNollVo(x, x + 3));
    expect(KordHash::Jenkins(x, 3UL) == KordHash::Jenkins(x, x + 3));
    expect(KordHash::OneAtATime(x) == KordHash::OneAtATime(x, x + 3));
    expect(KordHash::ObjectSpace(x, 3UL) == KordHash::ObjectSpace(x, x + 3));
    expect(KordHash::RamakrishnaZobel(x) == KordHash::RamakrishnaZobel(x, x + 3));
}

void paths() {
    KordSplitPath path("/a/b.c"), copy(path);
    path = copy;
    KordSplitPath::Item last;
    for (KordSplitPath::const_iterator at = path.Begin(); at != path.End(); ++at) last = *at;
    expect(Narrow::is(last.text(), "c") && !path.Relative() && Narrow::is(path.RawPathname(), "\\a\\b.c"));
}

} // namespace

int main() {
    Narrow::use();
    Wide::use();
    tables();
    conversions_and_hashes();
    paths();
    return faults == 0 ? 0 : 1;
}
