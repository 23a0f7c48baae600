#!/usr/bin/env python3
"""Generates PinyinTable.bin, the constant pinyin lookup table that the
panel's Chinese keyboard searches for candidates.

Source data: the Unihan database as packaged by Debian's `unicode-data`
(/usr/share/unicode/Unihan_*.txt.bz2). See README.md beside this script.

Layout of the output (72,784 bytes = 0x11C50):

  0x0000  421 records of 16 bytes, ascending by syllable, the last one "bd":
            0..6   syllable, lower-case ASCII, NUL-padded
            7..8   start of the run, big-endian, in 2-byte units from the
                   start of the table
            9..10  length of the run, big-endian, in 2-byte units
            11..15 zero
  0x1A50  zero up to 0x2000
  0x2000  the runs, one after the other in record order, each character a
          two-byte GB2312 code written high byte first; then zero up to
          the end of the table.

Run the script with no arguments from anywhere: it writes
src/build/data/PinyinTable.bin of the repository. `--check` compares with
the committed file instead of writing it, `--list` prints every syllable
with its characters for review.
"""

import argparse
import bz2
import collections
import os
import re
import sys
import unicodedata

TABLE_SIZE = 0x11C50
RECORD_SIZE = 16
SYLLABLE_BYTES = 7
RECORD_COUNT = 421           # 420 syllables + "bd"
CHARS_OFFSET = 0x2000        # byte offset of the first character
PUNCTUATION_SYLLABLE = "bd"

UNIHAN_DIR = "/usr/share/unicode"
READINGS_FILE = "Unihan_Readings.txt.bz2"
MAPPINGS_FILE = "Unihan_OtherMappings.txt.bz2"

# Common full-width punctuation of GB2312 rows 1 and 3, most used first.
# U+2015 and U+30FB are how Python's codec names GB2312's dash (A1AA) and
# interpunct (A1A4), the marks written "——" and "·" in Chinese text.
PUNCTUATION = ("，。、；：？！“”‘’（）《》…\u2015\u30fb【】〔〕「」『』〈〉～"
               "．／＠＃％＆＊＋－＝＜＞￥")

REPO_ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
DEFAULT_OUTPUT = os.path.join(REPO_ROOT, "src", "build", "data", "PinyinTable.bin")


def fail(message):
    sys.stderr.write("make_pinyin_table: %s\n" % message)
    sys.exit(1)


def read_unihan(path, fields):
    """Returns ({code point: {field: value}}, unicode version)."""
    data = collections.defaultdict(dict)
    version = None
    with bz2.open(path, "rt", encoding="utf-8") as f:
        for line in f:
            if line.startswith("#"):
                m = re.match(r"# Unicode version: (\S+)", line)
                if m:
                    version = m.group(1)
                continue
            line = line.rstrip("\n")
            if not line:
                continue
            cp, field, value = line.split("\t", 2)
            if field in fields:
                data[int(cp[2:], 16)][field] = value
    return data, version


def toneless(reading):
    """'zhōng' -> 'zhong', 'lüè' -> 'lve', 'ê̄' -> 'e', 'ḿ' -> 'm'."""
    s = unicodedata.normalize("NFD", reading.lower())
    s = s.replace("u\u0308", "v")
    s = "".join(ch for ch in s if not unicodedata.combining(ch))
    if not re.fullmatch(r"[a-z]{1,%d}" % SYLLABLE_BYTES, s):
        fail("unexpected reading %r" % reading)
    return s


def dictionary_readings(value):
    """kXHC1983 / kTGHZ2013: 'page.pos:reading page.pos:reading ...'."""
    return [item.split(":", 1)[1] for item in value.split()]


def corpus_readings(value):
    """kHanyuPinlu: 'reading(count) reading(count) ...'."""
    out = []
    for item in value.split():
        m = re.fullmatch(r"(\S+)\((\d+)\)", item)
        if not m:
            fail("unexpected kHanyuPinlu item %r" % item)
        out.append((m.group(1), int(m.group(2))))
    return out


def gb2312_hanzi(mappings):
    """[(GB2312 code, character)] of the 6,763 hanzi, from kGB0 (row/cell),
    checked against Python's own GB2312 codec."""
    out = []
    for cp, fields in mappings.items():
        rowcell = fields.get("kGB0")
        if rowcell is None:
            continue
        row, cell = int(rowcell[:2]), int(rowcell[2:])
        if not 16 <= row <= 87:
            continue
        code = (row + 0xA0) << 8 | (cell + 0xA0)
        if chr(cp).encode("gb2312") != bytes([code >> 8, code & 0xFF]):
            fail("kGB0 and the codec disagree on U+%04X" % cp)
        out.append((code, chr(cp)))
    out.sort()
    if len(out) != 6763:
        fail("expected 6763 GB2312 hanzi, found %d" % len(out))
    return out


def build(unihan_dir):
    readings, version = read_unihan(
        os.path.join(unihan_dir, READINGS_FILE),
        {"kXHC1983", "kTGHZ2013", "kHanyuPinlu", "kMandarin"})
    mappings, _ = read_unihan(os.path.join(unihan_dir, MAPPINGS_FILE), {"kGB0"})
    hanzi = gb2312_hanzi(mappings)

    # Readings of each GB2312 character: the two modern standard
    # dictionaries (kXHC1983, kTGHZ2013) and the corpus readings of
    # kHanyuPinlu; kMandarin only where none of those has the character
    # (mostly radicals such as 亻 or 氵). The corpus gives counts per
    # reading, summed over tones for the ordering of a run.
    runs = collections.defaultdict(list)      # syllable -> [(count, code)]
    for code, ch in hanzi:
        r = readings.get(ord(ch), {})
        counts = collections.Counter()
        syllables = set()
        for field in ("kXHC1983", "kTGHZ2013"):
            if field in r:
                syllables.update(toneless(x) for x in dictionary_readings(r[field]))
        if "kHanyuPinlu" in r:
            for reading, count in corpus_readings(r["kHanyuPinlu"]):
                s = toneless(reading)
                syllables.add(s)
                counts[s] += count
        if not syllables:
            if "kMandarin" not in r:
                fail("no reading for %s" % ch)
            syllables.update(toneless(x) for x in r["kMandarin"].split())
        for s in syllables:
            runs[s].append((counts[s], code))

    # The inventory: every syllable read for a GB2312 character above, and
    # every syllable of the Xiandai Hanyu Cidian readings (kXHC1983) of any
    # character, so that standard syllables without a GB2312 character
    # (kei, den, ...) still have a record, with an empty run.
    inventory = set(runs)
    for r in readings.values():
        if "kXHC1983" in r:
            inventory.update(toneless(x) for x in dictionary_readings(r["kXHC1983"]))
    syllables = sorted(inventory)
    if len(syllables) != RECORD_COUNT - 1:
        fail("the data gives %d syllables, the table holds %d"
             % (len(syllables), RECORD_COUNT - 1))
    if PUNCTUATION_SYLLABLE in inventory:
        fail("'%s' is a reading in the data" % PUNCTUATION_SYLLABLE)

    # Most frequent first; the rest by GB2312 code, which puts level 1
    # (the 3,755 common characters) before level 2.
    ordered = {s: [code for _, code in sorted(runs.get(s, []), key=lambda e: (-e[0], e[1]))]
               for s in syllables}
    punctuation = []
    for ch in PUNCTUATION:
        b = ch.encode("gb2312")
        if len(b) != 2:
            fail("%r is not a two-byte GB2312 character" % ch)
        punctuation.append(b[0] << 8 | b[1])
    if len(set(punctuation)) != len(punctuation):
        fail("duplicate punctuation")
    ordered[PUNCTUATION_SYLLABLE] = punctuation
    syllables.append(PUNCTUATION_SYLLABLE)

    table = bytearray(TABLE_SIZE)
    start = CHARS_OFFSET // 2
    at = CHARS_OFFSET
    for i, s in enumerate(syllables):
        codes = ordered[s]
        end = at + 2 * len(codes)
        if end > TABLE_SIZE:
            fail("the characters do not fit in the table")
        rec = i * RECORD_SIZE
        table[rec:rec + len(s)] = s.encode("ascii")
        table[rec + 7:rec + 9] = start.to_bytes(2, "big")
        table[rec + 9:rec + 11] = len(codes).to_bytes(2, "big")
        for code in codes:
            table[at:at + 2] = code.to_bytes(2, "big")
            at += 2
        start += len(codes)
    assert len(table) == TABLE_SIZE
    return bytes(table), syllables, ordered, version, at


def main():
    ap = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    ap.add_argument("-o", "--output", default=DEFAULT_OUTPUT)
    ap.add_argument("--unihan-dir", default=UNIHAN_DIR,
                    help="directory of Unihan_*.txt.bz2 (default %(default)s)")
    ap.add_argument("--check", action="store_true",
                    help="compare with OUTPUT instead of writing it")
    ap.add_argument("--list", action="store_true",
                    help="print every syllable with its characters")
    args = ap.parse_args()

    table, syllables, ordered, version, used = build(args.unihan_dir)
    if args.list:
        for s in syllables:
            text = "".join(bytes([c >> 8, c & 0xFF]).decode("gb2312") for c in ordered[s])
            print("%-7s %4d %s" % (s, len(ordered[s]), text))
    chars = sum(len(v) for v in ordered.values())
    empty = [s for s in syllables if not ordered[s]]
    sys.stderr.write(
        "Unihan %s: %d syllables + %s, %d characters, bytes used %d of %d; "
        "empty runs: %s\n" % (version, len(syllables) - 1, PUNCTUATION_SYLLABLE,
                              chars, used, TABLE_SIZE, " ".join(empty)))
    if args.check:
        try:
            with open(args.output, "rb") as f:
                old = f.read()
        except OSError as e:
            fail(str(e))
        if old != table:
            fail("%s differs from the generated table" % args.output)
        sys.stderr.write("%s is up to date\n" % args.output)
        return
    os.makedirs(os.path.dirname(os.path.abspath(args.output)), exist_ok=True)
    with open(args.output, "wb") as f:
        f.write(table)
    sys.stderr.write("wrote %s\n" % args.output)


if __name__ == "__main__":
    main()
