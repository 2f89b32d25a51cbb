"""The rows of the table: what the library offers, found in its sources."""

import re
from dataclasses import dataclass

import _cpp
from _flow import VARIABLE, Texts, has_text, is_open

READERS = {"XMLTemplateListener": "template", "XMLInstanceListener": "scene"}
# Which format a source's messages are about; the others' are about both.
ABOUT = {**READERS, "TemplateManager": "template", "OviTemplateManager": "template",
         "AssetManager": "scene"}
FORMATS = {"template": "Template files", "scene": "Scene files"}
ENUMERATOR = re.compile(r"\b(OVI_([A-Z]+)_[A-Z0-9_]+)\s*=\s*(\w+)")
OWN_ENUMERATOR = re.compile(r"\b(k\w+)\s*=\s*(0x[0-9A-Fa-f]+|\d+)\s*[,}]")
NO_MESSAGES = ("<?xml ", "Bounding Volume")  # the other texts of several words
OTHER_PRINTING = re.compile(r"\b(?:puts|putchar|perror|printf)\s*\(|\bstd::(?:cerr|cout|clog)\b")


@dataclass(frozen=True)
class Row:
    """One thing to be tested; `cells` are the columns in front of the tests."""

    kind: str  # "function", "message", "constant", "element", "attribute"
    section: str
    cells: tuple
    name: str = ""
    pattern: tuple = ()
    alias: str = ""  # the library's own name for a constant
    format: str = ""  # "template" or "scene" when only one reader is meant
    element: str = ""


def library_symbols(source):
    """The symbols of all files of the library, and which file each is from."""
    symbols, homes = [], {}
    for path in sorted((source / "src").rglob("*")):
        if path.suffix in (".h", ".cpp"):
            for symbol in _cpp.read(path).symbols:
                symbols.append(symbol)
                homes[id(symbol)] = path.stem
    return symbols, homes


def function_rows(source):
    names = (source / "src/api/exported-symbols.txt").read_text().split()
    return [Row("function", "Functions", (f"`{name}`",), name) for name in names]


# -- messages -------------------------------------------------------------------------------------

def reported(name, given):
    """What a call hands to the error manager or prints: all reporting ends in one of these."""
    if name in ("AddErrorItem", "MakeItem") and len(given) == 4:
        return given[3]
    if name == "fprintf" and given[0] == "stderr":
        return given[1]
    return None


def show(pattern):
    return "".join("…" if piece is VARIABLE else piece for piece in pattern)


def _from_format(pattern):
    """A format of `fprintf` as a pattern."""
    pieces = []
    for piece in pattern:
        for index, part in enumerate(re.split(r"%\w+", piece) if piece else [piece]):
            pieces += ([VARIABLE] if index else []) + [part]
    return tuple(pieces)


def message_rows(symbols, homes):
    texts = Texts(symbols)
    called = texts.called()
    found = {}
    for function in (symbol for symbol in symbols if symbol.kind == "function"):
        if OTHER_PRINTING.search(function.code):
            raise ValueError(f"{function.name} prints in a way that is not known here")
        for pattern in texts.reaching(function, reported):
            if is_open(pattern):
                if id(function) in called:
                    continue  # the callers say what is meant
                pattern = tuple(piece if isinstance(piece, str) else VARIABLE for piece in pattern)
            elif not has_text(pattern):
                raise ValueError(f"{function.name} reports a text that cannot be told")
            if has_text(pattern):
                home = function.owner or homes[id(function)]
                found[(home, _from_format(pattern))] = None
    check_all_told(symbols, homes, found)
    return [Row("message", "Messages", (f"`{show(pattern).strip()}`", home), pattern=pattern,
                format=ABOUT.get(home, ""))
            for home, pattern in sorted(found, key=lambda key: (key[0], show(key[1])))]


def check_all_told(symbols, homes, found):
    """Fails for a text of several words that no message has: it may be one that is reported in a
    way that cannot be followed."""
    told = [piece for _, pattern in found for piece in pattern if piece]
    for symbol in symbols:
        for literal in _cpp.LITERAL.finditer(symbol.code):
            text = _cpp.text_of(literal.group())
            parts = [part.strip() for part in re.split(r"%\w+", text)]
            if " " in text.strip() and not text.startswith(NO_MESSAGES) and not all(
                    any(part in piece for piece in told) for part in parts):
                raise ValueError(f"{homes[id(symbol)]}: who reports '{text}'?")


# -- constants ------------------------------------------------------------------------------------

TITLES = {"EVENT": "Events", "HOST": "Hosts", "CLASS": "Classes"}


def constant_rows(source):
    """The public constants, each with the name that the sources of the library have for it."""
    own = {_plain(name): (name, value) for path in sorted((source / "src").rglob("*.h"))
           for name, value in OWN_ENUMERATOR.findall(_without_comments(path))}
    rows = []
    for header in sorted((source / "include/ovi").glob("*.h")):
        for name, group, value in ENUMERATOR.findall(_without_comments(header)):
            title = TITLES.get(group, "Other constants")
            alias, own_value = own.get(_own_plain(name, group), ("", value))
            if int(own_value, 0) != int(value, 0):
                raise ValueError(f"{name} is {value}, but {alias} is {own_value}")
            rows.append(Row("constant", title, (f"`{name}`", f"`{value}`"), name,
                            pattern=(value,) if group == "EVENT" else (), alias=alias))
    order = list(TITLES.values()) + ["Other constants"]
    return sorted(rows, key=lambda row: order.index(row.section))


def _plain(name):
    return name.replace("_", "").lower()


def _own_plain(name, group):
    """OVI_CLASS_INT_TYPE is kIntTypeClass, the others are like OVI_EVENT_ASSET_ADDED, kAssetAdded;
    both without capitals and underscores."""
    rest = _plain(name[len("OVI_" + group):])
    return "k" + rest + ("class" if group == "CLASS" else "")


def _without_comments(path):
    return _cpp.TOKEN.sub(" ", path.read_text(encoding="utf-8"))


# -- elements and attributes ----------------------------------------------------------------------

def looked_up(name, given):
    """The attribute that a call asks an element for."""
    return given[0] if name == "Find" and len(given) == 1 else None


def format_rows(symbols):
    """Each reader's table of elements, and the attributes that the elements' functions ask for."""
    texts = Texts(symbols)
    rows = []
    for reader, form in READERS.items():
        functions = {symbol.name: symbol for symbol in symbols
                     if symbol.kind == "function" and symbol.owner == reader}
        entries = re.findall(r'{("\d+"),\s*&\w+::(\w+)', functions.get("GetElements", functions["FindElement"]).code)
        if not entries:
            raise ValueError(f"{reader} has no table of elements any more")
        for literal, handler in entries:
            element = _cpp.text_of(literal)
            rows.append(_element_row(form, element))
            asked = texts.reaching(functions[handler], looked_up, "attributes")
            rows += [_attribute_row(form, element, attribute) for attribute in
                     sorted(pattern[0] for pattern in asked if isinstance(pattern[0], str))]
    return rows


def _element_row(form, element):
    return Row("element", FORMATS[form], (f"`<{element}>`", ""), format=form, element=element)


def _attribute_row(form, element, attribute):
    return Row("attribute", FORMATS[form], (f"`<{element}>`", f"`{attribute}`"), attribute,
               format=form, element=element)


def all_rows(source):
    symbols, homes = library_symbols(source)
    return (function_rows(source) + message_rows(symbols, homes) + constant_rows(source) +
            format_rows(symbols))
