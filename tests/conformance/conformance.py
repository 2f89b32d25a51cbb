#!/usr/bin/env python3
"""Writes docs/conformance.md: all that the library offers, each with the tests that exercise it.

The rows are found in the sources (_rows.py): exported functions, messages, constants, and the
elements and attributes that the readers know. The tests are found in theirs (_tests.py). A test
exercises

- a function when it names it, itself or through helpers;
- a message when it quotes it, or a part of 12 characters or more that no other message has;
- a constant when it or a helper in its file names it, by the public name or by the library's own,
  an event also by its recorded code;
- an element when one of its texts has it, an attribute when such an element has it. Where both
  file formats have the element, its attributes tell whose it is, what else the text has, and
  what the test loads or saves.

usage: conformance.py SOURCE_DIR           writes the file
       conformance.py SOURCE_DIR --check   fails when it differs or when a row has no test
"""

import re
import sys
from pathlib import Path

sys.dont_write_bytecode = True
import _rows  # noqa: E402
import _tests  # noqa: E402

SHOWN = 3
ENOUGH = 12
INTRODUCTION = """# What the tests exercise

Every exported function, message, constant, element and attribute, each with tests that exercise it:
those that name it themselves first, and among them those that are about little else. This file is
generated from the sources of the library and of its tests by `tests/conformance/conformance.py`;
the test `docs.conformance` fails when it is out of date or when anything here has no test. That a
test is named says that it uses the thing, not that it covers every rule about it.
"""
HEADS = {"Functions": ("Function",), "Messages": ("Message", "Reported by"),
         "Template files": ("Element", "Attribute"), "Scene files": ("Element", "Attribute")}
# What a test must name or quote to have to do with one of the two file formats.
USES = {"scene": {"OviAssetManager_LoadScene", "OviAssetManager_SaveScene", "XMLInstanceListener",
                  "OviInstance_WriteToXML"},
        "template": {"OviTemplateManager_LoadTemplateFile", "OviTemplateManager_SaveTemplateFile",
                     "OviTemplateManager_LoadPackage", "XMLTemplateListener"}}
ROOTS = {"scene": "<assets", "template": "<templates"}
TAG = re.compile(r"<(\w+)((?:[^<>'\"]|'[^']*'|\"[^\"]*\")*)")
# What tells the format of a text in a test that has to do with both.
MARKS = {"scene": re.compile(r"<(assets?|assetRef|implements)\b(?!.*<template)", re.DOTALL),
         "template": re.compile(r"<templates?\b")}
EXAMPLE = "example.host"
CODE = re.compile(r"\b0x[0-9A-Fa-f]+\b")
ATTRIBUTE = re.compile(r"(\w+)\s*=")
QUOTED = re.compile(r"'[^']*'|\"[^\"]*\"")


def formats_of(test):
    """The file formats that a test has to do with."""
    return {form for form, names in USES.items()
            if names & test.all.names or any(ROOTS[form] in text for text in test.all.texts)}


def tags_of(texts, formats):
    """The start tags in the texts: the formats they can belong to, the element, whose case does
    not matter, and the attributes."""
    for text in texts:
        told = {form for form, mark in MARKS.items() if form in formats and mark.search(text)}
        for match in TAG.finditer(text):
            given = set(ATTRIBUTE.findall(QUOTED.sub("", match.group(2))))
            yield told if len(told) == 1 else formats, match.group(1).lower(), given


class Matcher:
    """Tells which rows a test exercises."""

    def __init__(self, rows):
        self.rows = rows
        self.named = {row.name: row for row in rows if row.kind in ("function", "constant")}
        self.named.update({row.alias: row for row in rows if row.alias})
        self.codes = {row.pattern[0].lower(): row for row in rows
                      if row.kind == "constant" and row.pattern}
        self.elements, self.attributes = {}, {}
        for row in (row for row in rows if row.element):
            self.elements.setdefault(row.element.lower(), []).append(row)
            self.attributes.setdefault((row.format, row.element), set()).add(row.name)
        self.messages = {}
        for row in rows:
            if row.kind == "message":
                self.messages.setdefault(row.pattern, []).append(row)
        self.expressions = {pattern: message_expression(pattern) for pattern in self.messages}
        self.parts = self._telling_parts()
        self.memo = {}

    def _telling_parts(self):
        """Parts that stand for a whole message, since no other one has them."""
        parts = {}
        for pattern in self.messages:
            for piece in pattern:
                if piece and len(piece) >= ENOUGH and not any(
                        piece in (other or "") for rest in self.messages if rest != pattern
                        for other in rest):
                    parts[piece] = pattern
        return parts

    def patterns_in(self, text):
        """The messages that a text quotes: of those that begin at one place, the longest."""
        if text not in self.memo:
            found = {}
            for pattern, expression in self.expressions.items():
                for match in expression.finditer(text):
                    size = sum(len(piece or "") for piece in pattern)
                    found.setdefault(match.start(), []).append((size, pattern))
            longest = {max(matches, key=lambda match: match[0])[1] for matches in found.values()}
            longest |= {pattern for part, pattern in self.parts.items() if part in text}
            self.memo[text] = longest
        return self.memo[text]

    def exercised(self, test, words):
        """The rows that these words of a test exercise."""
        formats = formats_of(test)
        return (self._functions(words) | self._constants(test, words) |
                self._messages(words.texts, formats) | self._elements(words.texts, formats))

    def _functions(self, words):
        named = map(self.named.get, words.names)
        return {row for row in named if row and row.kind == "function"}

    def _constants(self, test, words):
        if test.name == EXAMPLE:
            return set()  # it has names for all events, whichever come
        named = map(self.named.get, words.names & test.own.names)
        codes = {code.lower() for text in words.texts for code in CODE.findall(text)}
        return ({row for row in named if row and row.kind == "constant"} |
                {self.codes[code] for code in codes & self.codes.keys()})

    def _messages(self, texts, formats):
        found = set()
        for pattern in {pattern for text in texts for pattern in self.patterns_in(text)}:
            rows = self.messages[pattern]
            shared = len({row.format for row in rows}) > 1
            for row in rows:
                # A scene's test loads its templates too, so a scene's message is taken as one.
                if not row.format or row.format in formats and not (
                        shared and row.format == "template" and "scene" in formats):
                    found.add(row)
        return found

    def _elements(self, texts, formats):
        found = set()
        for possible, element, given in tags_of(texts, formats):
            for row in self.elements.get(element, []):
                known = self.attributes[(row.format, row.element)]
                foreign = given and len(known) > 1 and not known & given
                if row.format in possible and not foreign and (
                        row.kind == "element" or row.name in given):
                    found.add(row)
        return found


def message_expression(pattern):
    """What a text must have to quote a message. What varies does not begin with the quote that a
    message with a quoted name would have there."""
    result = ""
    for index, piece in enumerate(pattern):
        before = pattern[index - 1] if index else None
        if piece is not None:
            result += re.escape(piece)
        else:
            result += "" if (before or "").endswith("'") else "(?!')"
            result += r"[^\n]*?"
    return re.compile(result)


def tests_by_row(rows, tests):
    """For each row the names of its tests, the most specific first."""
    matcher, ranked = Matcher(rows), {row: [] for row in rows}
    for test in tests:
        found = matcher.exercised(test, test.all)
        direct = matcher.exercised(test, test.body)
        for row in found:
            ranked[row].append((row not in direct, len(direct), len(found), test.name))
    return {row: [entry[-1] for entry in sorted(entries)] for row, entries in ranked.items()}


def cell(names):
    shown = ", ".join(f"`{name}`" for name in names[:SHOWN])
    return shown + (f" + {len(names) - SHOWN} more" if len(names) > SHOWN else "")


def document(rows, tests):
    lines, section = [INTRODUCTION], None
    for row in rows:
        if row.section != section:
            section = row.section
            heads = HEADS.get(section, ("Constant", "Value")) + ("Tests",)
            lines += ["", f"## {section}", "", "| " + " | ".join(heads) + " |",
                      "|---" * len(heads) + "|"]
        cells = [text.replace("|", "\\|") for text in row.cells + (cell(tests[row]),)]
        lines.append("| " + " | ".join(cells) + " |")
    return "\n".join(lines).replace("\n\n\n", "\n\n") + "\n"


def check(path, text, rows, tests):
    faults = [f"no test: {row.section}: {' '.join(row.cells)}" for row in rows if not tests[row]]
    if not path.is_file() or path.read_text(encoding="utf-8") != text:
        faults.append(f"{path} is out of date; run tests/conformance/conformance.py .")
    print("\n".join(faults + [f"{len(rows)} rows, {len(faults)} faults"]))
    return 1 if faults else 0


def main():
    if len(sys.argv) < 2 or sys.argv[2:] not in ([], ["--check"]):
        sys.exit(__doc__)
    source = Path(sys.argv[1])
    try:
        rows = list(dict.fromkeys(_rows.all_rows(source)))
    except ValueError as fault:
        sys.exit(str(fault))
    tests = tests_by_row(rows, _tests.all_tests(source))
    path, text = source / "docs/conformance.md", document(rows, tests)
    if "--check" in sys.argv:
        sys.exit(check(path, text, rows, tests))
    path.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
