#!/usr/bin/env python3
"""Print src/platform/portable/code_page_936_table.inc.

The double-byte pairs of code page 936, a row for each lead byte, and the pairs that GB18030 has besides
them. Python's "gbk" has exactly the pairs of code page 936 that map both ways, except for the euro sign at
0x80; the user-defined areas are in neither.
"""
import unicodedata

LEADS = range(0x81, 0xFF)
TRAILS = [t for t in range(0x40, 0xFF) if t != 0x7F]
USER_DEFINED = range(0xE000, 0xE766)
NONE = " "  # no pair stands for a blank


def decode(lead, trail, codec):
    pair = bytes([lead, trail])
    try:
        text = pair.decode(codec)
    except UnicodeDecodeError:
        return None
    return text if len(text) == 1 and text.encode(codec) == pair else None


def literal(c):
    # Written as its number: what a reader could not see, and what an editor could normalise away.
    plain = c.isprintable() and not c.isspace() and unicodedata.normalize("NFC", c) == c
    return c if c == NONE or plain else f"\\u{ord(c):04X}"


def main():
    print("// Made by scripts/make_code_page_936.py; do not edit.")
    print("// clang-format off")
    print()
    print("// For lead bytes from 0x81 on: the characters of the trail bytes 0x40 to 0x7E and 0x80 to 0xFE,")
    print("// a blank where there is none.")
    print("constexpr std::u16string_view kRows936[] = {")
    known = set()
    for lead in LEADS:
        row = [decode(lead, trail, "gbk") or NONE for trail in TRAILS]
        known |= {c for c in row if c != NONE}
        print(f'    u"{"".join(map(literal, "".join(row).rstrip(NONE)))}",')
    print("};")
    print()
    print("// Double-byte pairs of GB18030 alone: character and code.")
    print("constexpr SPair kPairs18030[] = {")
    for lead in LEADS:
        for trail in TRAILS:
            c = decode(lead, trail, "gb18030")
            if c and c not in known and ord(c) not in USER_DEFINED:
                print(f"    {{0x{ord(c):04X}, 0x{lead:02X}{trail:02X}}},")
    print("};")


main()
