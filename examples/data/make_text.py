#!/usr/bin/env python3
"""Writes ledger.txt beside this file: the log and accounts of a harbour that never was, some 300 kilobytes of ASCII.

Each day has a heading, prose wrapped at 88 columns and a table of vessels. In it are words in capitals, lines that
differ only in case, integers with and without a sign, decimals with point and with comma, hexadecimal numbers after
0x and after $, and some too large for 32 bits. Every run writes the same bytes.
"""

import datetime
import pathlib
import textwrap

SHIPS = ["Patient Gull", "Brown Otter", "Nine Lanterns", "Widow's Thrift", "Salt Parson", "Quiet Margit",
         "Late Arrival", "Second Helping", "Grey Bonnet", "Copper Wren"]
PEOPLE = ["Anselm Pyke", "Hedda Rookwater", "Ida Quillon", "Bram Osterlee", "Tobit Marl", "Old Verrin", "Sunniva Dack"]
PLACES = ["Skerrow Haven", "the North Mole", "Tarn Point", "the Ropewalk", "Ousel Bank", "the Customs Stair"]
GOODS = ["herring", "lamp oil", "slate", "barley", "tarred rope", "sea coal", "pine boards", "window glass"]
SENTENCES = [
    "The {ship} came in on the {tide} tide with {n} barrels of {goods} and lay at {place} until noon.",
    "{who} took soundings off {place}: {d} fathoms at low water, {e} at high, which is {s} against last year.",
    "The harbour master {who} ordered the bell at {place} rung every {n} minutes while the fog stood.",
    "NOTICE TO ALL MASTERS: no vessel is to anchor between {place} and the lock before the dredger has passed.",
    "Of the {goods} landed from the {ship} some {n} sacks were found wet; {who} has the list, and the harbour pays.",
    "Wind {wind}, glass at {glass} and falling; the small boats stayed within the mole.",
    "{who} says the {ship} owes {d} crowns for mooring, her master says {e}, and both were shown the book.",
    "The lamp at {place} burned from dusk to dawn and took {e} measures of oil.",
    "A {goods} cart went through the planking at {place}, for the third time, and {who} was sent for nails.",
    "HARBOUR DUES are to be paid at the Customs Stair before sailing; the {ship} has been told twice.",
    "Signal {hex} was seen from {place} at dusk and answered with {dollar}, as the code book asks.",
    "The tide gauge stands at {big} turns since it was built, if {who} has counted right.",
    "The debt of the old board stands at -{big} farthings in the hand of {who}, and nobody asks for it.",
    "Nothing came in, nothing went out, and {who} painted the door of the harbour office.",
    "The Harbour Board met; {who} spoke for a new crane at {n} crowns, the treasurer against it, and none was bought.",
]
REMARKS = ["No vessel entered.", "Watch kept as usual.", "Balance carried forward.", "All lamps lit."]


class Dice:
    """Numbers that look random and are the same everywhere, whichever Python runs this."""

    def __init__(self, seed):
        self.state = seed

    def number(self, below):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 33) % below

    def pick(self, things):
        return things[self.number(len(things))]

    def decimal(self, separator):
        return f"{self.number(400)}{separator}{self.number(100):02}"


def sentence(dice):
    return dice.pick(SENTENCES).format(
        ship=dice.pick(SHIPS), who=dice.pick(PEOPLE), place=dice.pick(PLACES),
        goods=dice.pick(GOODS), tide=dice.pick(["morning", "evening", "spring", "neap"]),
        n=2 + dice.number(90), s=f"{dice.number(41) - 20:+}", d=dice.decimal("."), e=dice.decimal(","),
        wind=dice.pick(["SW by W", "NE", "N, hard", "E, light"]), glass=f"{960 + dice.number(80)}.{dice.number(10)}",
        hex=f"0x{dice.number(65536):X}", dollar=f"${dice.number(256):02x}", big=3_000_000_000 + dice.number(2**31))


def table(dice):
    """The vessels of a day: permit, name, tons, change in draught, dues, paid, and their call sign."""
    yield f"{'permit':>6}  {'VESSEL':<15}{'tons':>6}{'change':>8}{'dues':>10}{'paid':>10}  sign"
    for _ in range(2 + dice.number(6)):
        sign = dice.pick(["0x{:04X}", "${:x}"]).format(dice.number(65536))
        yield (f"{dice.number(100000):>6}  {dice.pick(SHIPS):<15}{20 + dice.number(400):>6}{dice.number(61) - 30:>+8}"
               f"{dice.decimal('.'):>10}{dice.decimal(','):>10}  {sign}")


def day(date, dice):
    yield from ("", f"{date.isoformat()}  LOG OF THE DAY", "")
    for _ in range(1 + dice.number(3)):
        yield from textwrap.wrap(" ".join(sentence(dice) for _ in range(2 + dice.number(5))), 88)
        yield ""
    yield from table(dice)
    remark = dice.pick(REMARKS)
    yield remark.upper() if dice.number(4) == 0 else remark


def main():
    dice = Dice(1871)
    date = datetime.date(1871, 1, 1)
    lines = ["THE LEDGER OF SKERROW HAVEN", "being the log and the accounts of its harbour, kept from day to day"]
    while sum(map(len, lines)) < 300_000:
        lines += day(date, dice)
        date += datetime.timedelta(days=1)
    lines += ["", "Here the book is full; the next begins with the arrival of a barquentine nobody expected."]
    pathlib.Path(__file__).with_name("ledger.txt").write_bytes("\n".join(lines + [""]).encode("ascii"))


if __name__ == "__main__":
    main()
