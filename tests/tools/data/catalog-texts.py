"""Prints the texts of a translation catalog as the Translate Toolkit reads it: a line per
form of each unit, its source and its translation, so that catalogs of different formats can be
compared. Exits with 3 when the toolkit is not installed."""

import sys

try:
    from translate.storage import factory
except ImportError:
    sys.exit(3)

for unit in factory.getobject(sys.argv[1]).units:
    if unit.isheader():
        continue
    if unit.hasplural():
        sources = [str(text) for text in unit.source.strings]
        targets = [str(text) for text in unit.target.strings]
        for form, target in enumerate(targets):
            print(repr(sources[min(form, 1)]), repr(target))
    else:
        print(repr(str(unit.source)), repr(str(unit.target or "")))
