#ifndef KORD_BENCH_LANGUAGES_H
#define KORD_BENCH_LANGUAGES_H

#include "texts.h"

#include <algorithm>
#include <sstream>

/// Texts beyond ASCII, in both widths.
namespace bench {

struct Language {
    std::vector<std::string> words;
    std::string space = " ", comma = ", ", stop = ". ";
};

inline std::vector<std::string> split(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> pieces;
    for (std::string piece; in >> piece;) pieces.push_back(piece);
    return pieces;
}

inline const Language english_words{{words.begin(), words.end()}};
inline const Language chat{{words.begin(), words.end()}, " ", ", ", "! 👍 "};
inline const Language french{
    split("le la de à et été où près déjà mer forêt sœur garçon même après tout son vent port père "
          "fenêtre château hiver bateau lumière fleuve")};
inline const Language german{
    split("der die das und über für schön Größe Straße Fluß Häuser Küste Schiff wenn nicht auch nur "
          "Mädchen zurück später Wetter Brücke")};
inline const Language russian{
    split("и в не на он что с это как по но из у море берег ветер корабль город вечером сказал "
          "человек дорога книга старый письмо никогда погода река")};
inline const Language greek{
    split("και το να της η ο με για θάλασσα άνεμος πλοίο πόλη δρόμος βράδυ άνθρωπος παλιό γράμμα "
          "ποτέ ποτάμι βιβλίο")};
inline const Language japanese{
    split("の は を に が と も で 海 風 船 町 手紙 本 古い 川 橋 天気 夕方 みなと ともだち カメラ "
          "テーブル ニュース 新しい 思い出す 静かな"),
    "", "、", "。"};
inline const Language chinese{
    split("的 了 在 是 我 他 不 海 风 船 城市 晚上 老人 信 书 河流 桥 天气 码头 从来 以后 已经"), "", "，", "。"};
inline const Language korean{
    split("그리고 바다 바람 배 도시 저녁 사람 길 책 오래된 편지 강 다리 날씨 항구 친구는 없다 있다")};
inline const Language emoji{split("😀 😂 😍 🤔 😎 😭 🚀 🌊 🌍 🎉 🔥 👍 🙏 🐙 🍕 🚢"),
                            "", "", ""};

struct Script {
    std::string name;
    std::vector<Language> languages;
};

/// One text in both widths.
struct Passage {
    std::string bytes;
    std::u16string units;
};

inline bool continues(char byte) {
    return (byte & 0xC0) == 0x80;
}

/// `n` bytes of sentences, each in any of the languages; dots where the last character would be cut.
inline std::string sentences(Random& random, const std::vector<Language>& languages, std::size_t n) {
    std::string text;
    while (text.size() < n) {
        const Language& language = languages[random.below(languages.size())];
        for (std::size_t left = 3 + random.below(12); left != 0; --left) {
            const std::string& between = random.below(9) == 0 ? language.comma : language.space;
            text += language.words[random.below(language.words.size())] + (left == 1 ? language.stop : between);
        }
    }
    std::size_t end = n;
    while (continues(text[end])) --end;
    text.resize(end);
    text.resize(n, '.');
    return text;
}

/// The units of well-formed text.
inline std::u16string decode(const std::string& bytes) {
    std::u16string units;
    for (std::size_t i = 0; i != bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[i++]);
        std::uint32_t c = lead < 0x80 ? lead : lead < 0xE0 ? lead & 0x1Fu : lead < 0xF0 ? lead & 0xFu : lead & 7u;
        while (i != bytes.size() && continues(bytes[i])) c = c << 6 | (static_cast<unsigned char>(bytes[i++]) & 0x3Fu);
        if (c >= 0x10000) units += static_cast<char16_t>(0xD7C0 + (c >> 10));
        units += static_cast<char16_t>(c < 0x10000 ? c : 0xDC00 + (c & 0x3FF));
    }
    return units;
}

/// So many texts that a processor does not learn by heart how each one branches: it does learn 64 KiB.
template <class Make>
std::vector<Passage> passages(std::size_t n, Make make) {
    std::vector<Passage> table;
    while (table.size() < std::max<std::size_t>(1, (1u << 18) / n)) table.push_back(make());
    return table;
}

inline std::vector<Passage> utf8_passages(const Script& script, std::size_t n) {
    Random random;
    return passages(n, [&] {
        const std::string bytes = sentences(random, script.languages, n);
        return Passage{bytes, decode(bytes)};
    });
}

/// Latin-1; every third `e` or so has an accent.
inline std::vector<Passage> latin1_passages(const Script& script, std::size_t n) {
    Random random;
    return passages(n, [&] {
        Passage passage{sentences(random, script.languages, n), {}};
        for (char& c : passage.bytes) {
            if (c == 'e' && random.below(3) == 0) c = '\xE9';
            passage.units += static_cast<unsigned char>(c);
        }
        return passage;
    });
}

} // namespace bench

#endif
