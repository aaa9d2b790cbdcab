#!/usr/bin/env python3
"""Writes languages.txt beside this file: what ships call to a harbour in many languages, some 70 kilobytes of UTF-8.

The scripts take one to four bytes a character and are written from left and from right; some lines are all Latin-1,
most are not. In it are combining marks, emoji that are joined of several, and letters and signs above U+FFFF. Every run
writes the same bytes.
"""

import pathlib
import sys

sys.dont_write_bytecode = True  # leave nothing beside the data but the data
from make_text import Dice

CALLS = {
    "en": ["The pilot boards at {t}; {n} small boats wait at the mole.",
           "The band on the mole plays at {t}: 𝄞 𝅗𝅥 𝅘𝅥 𝅘𝅥𝅮 and again from the start.",
           "Speed 𝑣 = {n} kn, depth 𝑑 ≈ {n} m, dues € {n}, and the café is open."],
    "fr": ["Le pilote monte à bord à {t}, la marée est déjà haute.",
           "Où est amarré le bateau numéro {n} ? Près du vieux môle.",
           "Les sœurs du gardien ont compté {n} bœufs sur le quai."],
    "de": ["Der Lotse kommt um {t} Uhr an Bord, das Wasser läuft noch auf.",
           "Für {n} Fässer Öl ist das Lagerhaus an der großen Schleuse zu klein.",
           "Die Fähre überholt den Schlepper „Möwe“ – um {t} Uhr."],
    "es": ["El muelle número {n} está libre desde las {t}.",
           "¿Cuántas cajas trae el señor Núñez? ¡Más de {n}!"],
    "pt": ["A maré baixa às {t}; são {n} embarcações à espera.", "Não há vento, e o capitão já dorme."],
    "sv": ["Båten går klockan {t} från den norra piren.", "Hamnen är full, {n} segelbåtar får vänta vid ön."],
    "is": ["Það eru {n} skip í höfninni og þokan er þykk.", "Klukkan {t} lægði, og ljósið á bryggjunni sést aftur."],
    "pl": ["Łódź numer {n} wpłynęła do portu o {t}, a żagle były już zwinięte.", "Wiatr słabnie, idzie gęsta mgła."],
    "cs": ["Převozník říká, že řeka u přístavu stoupla o {n} centimetrů.", "Loď číslo {n} odpluje v {t}."],
    "hu": ["A kikötőben {n} hajó áll, erős szél fúj.", "Az őr {t} óta a tűznél ül."],
    "tr": ["İskelede {n} gemi var; ışıklar saat {t} gibi söndü.", "Rüzgâr güneyden esiyor, deniz çok sığ."],
    "vi": ["Tàu số {n} rời bến lúc {t}, sóng rất nhẹ.", "Đèn biển sáng suốt đêm."],
    "el": ["Το πλοίο με αριθμό {n} έφτασε στο λιμάνι στις {t}.",
           "Ο άνεμος δυναμώνει και οι βάρκες μένουν δεμένες."],
    "ru": ["Судно номер {n} вошло в порт в {t}, туман ещё не рассеялся.",
           "На причале разгружают {n} бочек масла и ящики со стеклом."],
    "uk": ["Її човен стоїть біля північного молу.", "Контору зачинено до {t}, ґудзики загубив капітан."],
    "hy": ["Նավը մտավ նավահանգիստ ժամը {t}-ին։"],
    "ka": ["გემი ნავსადგურში {t} საათზე შემოვიდა."],
    "he": ["הספינה נכנסה לנמל בשעה {t}.", "יש {n} סירות ליד המזח והים שקט."],
    "ar": ["وصلت السفينة إلى الميناء في الساعة {t}.", "على الرصيف {n} برميلا من الزيت، والبحر هادئ."],
    "hi": ["जहाज़ {t} बजे बंदरगाह पर पहुँचा।", "आज घाट पर {n} नावें हैं और समुद्र शांत है।"],
    "ta": ["கப்பல் {t} மணிக்கு துறைமுகத்தை அடைந்தது."],
    "th": ["เรือเข้าท่าเวลา {t} น. ทะเลสงบ"],
    "zh": ["第{n}号船于{t}进港,雾还没有散。", "码头上有{n}桶油,货物已经清点完毕。", "燈塔的燈從黃昏亮到天明。"],
    "ja": ["{n}番の船は{t}に港へ入りました。霧がまだ深いです。", "𠮷田さんは桟橋で荷物を{n}個数えました。",
           "ガス灯が{t}に消えました。"],
    "ko": ["{n}번 배가 {t}에 항구로 들어왔습니다.", "바람이 강해서 작은 배들은 방파제 안에 머물렀습니다."],
    "signs": ["⚓ {n} 🚢 {t} 🌊🌊 🐟🐟🐟", "👩‍✈️ 👍🏽 🇮🇸 → 🇯🇵 {n} 📦", "🌫️ … ☀️ {t} 😀", "𐌰𐌱𐌲 𓊝 {n} × 🛢️"],
}


def call(dice):
    """One line: the time, the language, and one to three different sentences of it."""
    language = dice.pick(list(CALLS))
    known = CALLS[language]
    first, count = dice.number(len(known)), 1 + dice.number(min(3, len(known)))
    sentences = [known[(first + i) % len(known)] for i in range(count)]
    times = [f"{dice.number(24):02}:{dice.number(60):02}" for _ in range(2)]
    return f"{times[0]} {language}: " + " ".join(s.format(n=2 + dice.number(900), t=times[1]) for s in sentences)


def main():
    dice = Dice(1907)
    lines = ["WHAT THE SHIPS CALL TO SKERROW HAVEN"]
    while sum(len(line.encode()) + 1 for line in lines) < 72_000:
        lines.append(call(dice))
    pathlib.Path(__file__).with_name("languages.txt").write_bytes("\n".join(lines + [""]).encode("utf-8"))


if __name__ == "__main__":
    main()
