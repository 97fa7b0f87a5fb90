#!/usr/bin/env python3
"""Turns a generated catalog into the input of one of the compared libraries.

The comparison benchmarks give our module, GNU gettext, ICU, Boost.Locale and Fluent the same
texts under the same keys. This script reads a catalog written by generate_catalog.py (`key_00000 = 'Text.'`, one
entry a line), keeps its first --count entries and writes them as:

  lt   our localization file, unchanged lines;
  po   a gettext catalog for Russian (msgid = key, msgstr = text), which msgfmt compiles;
  icu  an ICU resource bundle source `ru:table(nofallback)`, which genrb compiles;
  ftl  a Fluent resource, one message a key (Boost.Locale reads the .mo files of po).

A Fluent message id is [A-Za-z][A-Za-z0-9_-]*, narrower than a key, so each key becomes the id
fluent_id() makes: letters, digits and "_" stay, every other character (the "-" too) becomes
"-<hex code point>-", and a key that does not start with a letter is prefixed "x--", which no
other key's id starts with. Ids of different keys always differ, and key_00042 stays key_00042.
The benchmark's script bench/fluent/bench_fluent.mjs maps keys the same way.

--plural adds the entry of the plural benchmark, written the way each library expresses
"Загружено <n> файл/файла/файлов":

  lt   files_loaded = 'Загружено ' + $n + ' ' + {$n: 'файл', 'файла', 'файлов'}
  po   msgid "Loaded %d file" / msgid_plural "Loaded %d files", three Russian forms
  icu  files_loaded, a MessageFormat pattern {n, plural, one{..} few{..} many{..} other{..}}
  ftl  files_loaded, a select expression { NUMBER($n) -> [one] .. [few] .. [many] .. *[other] .. }

Usage: convert_catalog.py --to {lt,po,icu,ftl} [--count N] [--plural] CATALOG --out FILE
"""

import argparse
import re
import sys

ENTRY = re.compile(r"^(\S+) = '((?:[^'\\]|\\.)*)'$")

LT_PLURAL = "files_loaded = 'Загружено ' + $n + ' ' + {$n: 'файл', 'файла', 'файлов'}\n"

# The plural formula of Russian as gettext documents it: one, few, many.
PO_PLURAL_FORMS = (
    "nplurals=3; plural=(n%10==1 && n%100!=11 ? 0 : "
    "n%10>=2 && n%10<=4 && (n%100<10 || n%100>=20) ? 1 : 2);"
)

PO_PLURAL = """
#, c-format
msgid "Loaded %d file"
msgid_plural "Loaded %d files"
msgstr[0] "Загружено %d файл"
msgstr[1] "Загружено %d файла"
msgstr[2] "Загружено %d файлов"
"""

# "other" serves fractions only, which the benchmark never formats; Russian uses the "few"
# form there.
ICU_PLURAL = (
    "{n, plural, one{Загружено # файл} few{Загружено # файла} "
    "many{Загружено # файлов} other{Загружено # файла}}"
)

# Russian's CLDR categories, as Fluent takes them from Intl.PluralRules; "other" again serves
# fractions only.
FTL_PLURAL = """files_loaded =
    { NUMBER($n) ->
        [one] Загружено { $n } файл
        [few] Загружено { $n } файла
        [many] Загружено { $n } файлов
       *[other] Загружено { $n } файла
    }
"""

FLUENT_ID_CHARACTER = re.compile(r"[A-Za-z0-9_]")


def read_entries(path, count):
    entries = []
    with open(path, encoding="utf-8") as catalog:
        for number, line in enumerate(catalog, start=1):
            if len(entries) == count:
                break
            match = ENTRY.match(line.rstrip("\n"))
            if match is None:
                raise SystemExit(f"{path}:{number}: not a generated catalog entry")
            text = re.sub(r"\\(.)", r"\1", match.group(2))
            entries.append((match.group(1), text))
    if len(entries) < count:
        raise SystemExit(f"{path}: holds {len(entries)} entries, {count} asked for")
    return entries


def c_string(text):
    """A double-quoted string for .po and ICU sources, both of which take C escapes."""
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def lt_string(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"


def fluent_id(key):
    """The Fluent message id of `key`: see the module's description."""
    escaped = "".join(c if FLUENT_ID_CHARACTER.fullmatch(c) else f"-{ord(c):x}-" for c in key)
    return escaped if re.match(r"[A-Za-z]", key) else "x--" + escaped


def ftl_pattern(text):
    """The text as a Fluent pattern that formats to exactly that text.

    Plain text is the pattern itself but for braces; text that Fluent would change (leading or
    trailing blanks, which it trims, line ends, control characters) or an empty one becomes a
    single string literal placeable, whose escapes can say any character.
    """
    if text and text == text.strip(" ") and all(c >= " " for c in text):
        return re.sub(r"[{}]", lambda brace: '{"' + brace.group() + '"}', text)
    literal = "".join(
        "\\\\" if c == "\\" else '\\"' if c == '"' else f"\\u{ord(c):04X}" if c < " " else c
        for c in text)
    return '{ "' + literal + '" }'


def write_lt(entries, plural, out):
    for key, text in entries:
        out.write(f"{key} = {lt_string(text)}\n")
    if plural:
        out.write(LT_PLURAL)


def write_po(entries, plural, out):
    out.write('msgid ""\nmsgstr ""\n')
    out.write('"Language: ru\\n"\n')
    out.write('"MIME-Version: 1.0\\n"\n')
    out.write('"Content-Type: text/plain; charset=UTF-8\\n"\n')
    out.write('"Content-Transfer-Encoding: 8bit\\n"\n')
    out.write(f'"Plural-Forms: {PO_PLURAL_FORMS}\\n"\n')
    for key, text in entries:
        out.write(f"\nmsgid {c_string(key)}\nmsgstr {c_string(text)}\n")
    if plural:
        out.write(PO_PLURAL)


def write_icu(entries, plural, out):
    # No fallback: the bundle is opened directly, without the root bundle of the ICU data.
    out.write("ru:table(nofallback) {\n")
    # genrb keeps a table sorted while it reads it and looks for each new key's place from
    # the smallest key on: in ascending order 100,000 keys take minutes, in descending order
    # a fraction of a second. The compiled table is sorted either way.
    for key, text in sorted(entries, reverse=True):
        out.write(f"    {key} {{ {c_string(text)} }}\n")
    if plural:
        out.write(f"    files_loaded {{ {c_string(ICU_PLURAL)} }}\n")
    out.write("}\n")


def write_ftl(entries, plural, out):
    seen = set()
    for key, text in entries:
        identifier = fluent_id(key)
        if identifier in seen:
            raise SystemExit(f"{key}: a second entry with this key")
        seen.add(identifier)
        out.write(f"{identifier} = {ftl_pattern(text)}\n")
    if plural:
        out.write(FTL_PLURAL)


WRITERS = {"lt": write_lt, "po": write_po, "icu": write_icu, "ftl": write_ftl}


def main(argv):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("catalog", help="a catalog written by generate_catalog.py")
    parser.add_argument("--to", required=True, choices=sorted(WRITERS), help="output format")
    parser.add_argument("--count", type=int, help="entries to keep (default: all)")
    parser.add_argument("--plural", action="store_true", help="add the plural entry")
    parser.add_argument("--out", required=True, help="file to write")
    args = parser.parse_args(argv)
    if args.count is not None and args.count < 1:
        parser.error("--count must be at least 1")
    entries = read_entries(args.catalog, args.count if args.count is not None else -1)
    with open(args.out, "w", encoding="utf-8", newline="\n") as out:
        WRITERS[args.to](entries, args.plural, out)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
