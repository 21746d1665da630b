#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks what postal_pass wrote, by other means than the runtime's.

    postal_check.py ken_all.utf8.csv ken_all.tsv
    postal_check.py --job ken_all.utf8.csv OUTPUT

The first form reads the table with Python's csv module, takes away what splitRecord() takes away at the ends
of a field, makes the kana full-width and compares every field. The second does the job of postal_pass itself,
as a Python program would, and prints its time. Half-width punctuation and the voiced U come out of that a
little differently (unicodedata converts them, the runtime does not), so its output is not compared.
"""

import csv
import re
import sys
import time
import unicodedata

KANA_FIELDS = range(3, 6)
CONTROLS = "".join(map(chr, range(0x21)))
ASCII_TO_FULL_WIDTH = {code: code + 0xFEE0 for code in range(0x21, 0x7F)}
# One letter with the mark that belongs to it, if there is one.
HALF_WIDTH_LETTER = re.compile("[ｶ-ﾄﾊ-ﾎ]ﾞ|[ﾊ-ﾎ]ﾟ|[ｦ-ﾝ]")


def trimmed(field):
    """The field without what the runtime's two trims take: white space, then control characters."""
    return field.strip(" \t\n\v\f\r\x85\xa0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006"
                       "\u2007\u2008\u2009\u200a\u2028\u2029\u202f\u205f\u3000").rstrip(CONTROLS)


def full_width(text):
    letters = HALF_WIDTH_LETTER.sub(lambda match: unicodedata.normalize("NFKC", match[0]), text)
    return letters.translate(ASCII_TO_FULL_WIDTH)


def check(table, written):
    records = fields = changed = 0
    with open(table, encoding="utf-8", newline="") as source, \
            open(written, encoding="utf-8", newline="") as copies:
        for record in csv.reader(source):
            # The ends of quoted fields lose blanks only; this table has nothing else there.
            wanted = [trimmed(field) for field in record]
            for index in KANA_FIELDS:
                wanted[index] = full_width(wanted[index])
            copy = copies.readline().rstrip("\r\n").split("\t")
            records += 1
            fields += len(wanted)
            changed += sum(a != b for a, b in zip(wanted, copy)) + abs(len(wanted) - len(copy))
        changed += sum(1 for _ in copies)
    print(f"{records} records, {fields} fields, {changed} changed")
    return changed == 0 and records > 0


def job(table, output):
    start, processor_start = time.perf_counter(), time.process_time()
    with open(table, encoding="utf-8", newline="") as source, \
            open(output, "w", encoding="utf-8", newline="") as sink:
        for record in csv.reader(source):
            fields = [field.strip() for field in record]
            for index in KANA_FIELDS:
                fields[index] = unicodedata.normalize("NFKC", fields[index]).translate(ASCII_TO_FULL_WIDTH)
            sink.write("\t".join(fields) + "\n")
    elapsed, processor = time.perf_counter() - start, time.process_time() - processor_start
    print(f"read, split, converted and written in {elapsed * 1000:.0f} ms (processor: {processor * 1000:.0f} ms)")
    return True


def main(arguments):
    work = check
    if arguments[:1] == ["--job"]:
        work = job
        arguments = arguments[1:]
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    return 0 if work(*arguments) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
