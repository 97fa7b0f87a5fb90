#!/usr/bin/env python3
"""Writes a synthetic localization file for the parser benchmark.

Every entry is one line `key_NNNNN = 'Text.'`: a sentence of English words, capitalised,
ending in ".", 37 to 57 characters long (about 44 UTF-8 bytes on average). About a quarter of
the texts hold one word with one to three characters outside ASCII. The output depends only
on the entry count: a fixed-seed splitmix64 stream makes it reproducible on every machine and
Python version, and text i does not depend on the count, so the 10,000-entry catalog is the
first 10,000 entries of the 100,000-entry one.

Usage: generate_catalog.py [--count N] --out FILE
"""

import argparse
import sys

SEED = 0x4C4F43414C495A45  # fixed: the catalogs must be the same on every run
MIN_LENGTH = 37
MAX_LENGTH = 57
MASK64 = (1 << 64) - 1

WORDS = """
about above account action active add address after again all allow already also always
and another any app apply archive are around as ask at attach available back backup be
before below best between both browser button by cache can cancel change check choose
clear click close cloud code colour column command complete connect contact content copy
could create current data date default delete details device dialog different disk display
do document done download drive each edit email empty enable enter error every example
export file files filter find finish first folder for format from full general get give
go group has have help here hide history home if image import in information install into
is item keep key language last later left less link list load local location lock log
long make manage many menu message more move name need network new next no not now number
of off on once one only open option or order other out over page password paste path
pause permission please preview print private profile progress project public quick read
ready recent record remove rename replace report request reset restart restore result
resume retry right save search select send server set settings share should show sign
size some sort source start status still stop storage sync system tab take task template
text that the then there this time to tool try type under undo update upload use user
using value version view wait was when which while will window with without word work
you your
""".split()

# Each holds one to three characters outside ASCII.
ACCENTED_WORDS = [
    "façade", "café", "naïve", "résumé", "Größe", "Zürich", "jalapeño", "smörgåsbord", "über",
    "Ångström", "piñata", "crème", "Straße", "fiancée", "Möbius", "touché", "déjà", "Köln",
    "Ærø", "doppelgänger", "señor", "garçon", "rôle", "São", "pâté", "Übergröße", "tête-à-tête",
    "10 €", "€20", "£5", "½",
]


class SplitMix64:
    def __init__(self, seed):
        self.state = seed & MASK64

    def next(self):
        self.state = (self.state + 0x9E3779B97F4A7C15) & MASK64
        z = self.state
        z = ((z ^ (z >> 30)) * 0xBF58476D1CE4E5B9) & MASK64
        z = ((z ^ (z >> 27)) * 0x94D049BB133111EB) & MASK64
        return z ^ (z >> 31)

    def below(self, bound):
        return self.next() % bound


def make_text(rng):
    """One sentence of MIN_LENGTH to MAX_LENGTH characters, the final "." included."""
    # Short texts are more common than long ones: the target length is the least of three
    # uniform draws, which puts the mean near 44 characters.
    span = MAX_LENGTH - MIN_LENGTH + 1
    target = MIN_LENGTH + min(rng.below(span), rng.below(span), rng.below(span))
    words = [WORDS[rng.below(len(WORDS))] for _ in range(16)]
    if rng.below(4) == 0:
        words[1 + rng.below(3)] = ACCENTED_WORDS[rng.below(len(ACCENTED_WORDS))]
    text = words[0][0].upper() + words[0][1:]
    for word in words[1:]:
        if len(text) + 1 >= target:
            break
        if len(text) + 1 + len(word) + 1 > MAX_LENGTH:
            continue
        text += " " + word
    while len(text) + 1 < MIN_LENGTH:  # rare: every remaining word was too long
        text += " and"
    return text + "."


def quote(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"


def write_catalog(count, out):
    rng = SplitMix64(SEED)
    width = max(5, len(str(count - 1)))
    for index in range(count):
        out.write(f"key_{index:0{width}d} = {quote(make_text(rng))}\n")


def main(argv):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--count", type=int, default=100000, help="number of entries")
    parser.add_argument("--out", required=True, help="file to write ('-' for standard output)")
    args = parser.parse_args(argv)
    if args.count < 1:
        parser.error("--count must be at least 1")
    if args.out == "-":
        write_catalog(args.count, sys.stdout)
        return 0
    with open(args.out, "w", encoding="utf-8", newline="\n") as out:
        write_catalog(args.count, out)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
