"""A light reader of C and C++: enough to know functions, tables and texts, not a compiler.

Text and character literals are taken out of the code first and stand in it as `"number"`, so that
brackets and commas inside them disturb nobody; `text_of` gives them back.
"""

import re
from dataclasses import dataclass, field

TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"\((?P<raw>.*?)\)"|"(?P<text>(?:[^"\\\n]|\\.)*)"'
    r"|(?<![0-9A-Za-z_])'(?P<char>(?:[^'\\\n]|\\.)+)'", re.DOTALL)
LITERAL = re.compile(r'"(\d+)"')
NEIGHBOURS = re.compile(r'"(\d+)"\s*"(\d+)"')
ESCAPE = re.compile(r"\\(x[0-9A-Fa-f]+|[0-7]{1,3}|.)", re.DOTALL)
ESCAPED = {"n": "\n", "t": "\t", "r": "\r", "a": "\a", "b": "\b", "v": "\v", "f": "\f"}
INCLUDE = re.compile(r'^[ \t]*#\s*include\s+"([^"]+)"', re.MULTILINE)
DEFINE = re.compile(r"^[ \t]*#\s*define\s+(\w+)\(([^)]*)\)((?:[^\n]*\\\n)*[^\n]*)$", re.MULTILINE)
DIRECTIVE = re.compile(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*$", re.MULTILINE)
CALL = re.compile(r"(\.|->|::)?\s*\b(\w+)\s*\(")
NO_CALLS = {"if", "for", "while", "switch", "return", "sizeof", "catch", "defined"}

_texts = []


@dataclass
class Symbol:
    """A function, a table or variable (no parameters), or a class (with its bases)."""

    kind: str  # "function", "data", "class"
    name: str
    owner: str  # the class around it, or ""
    code: str
    parameters: list = field(default_factory=list)
    bases: list = field(default_factory=list)


@dataclass
class File:
    includes: list
    symbols: list


def add_text(text):
    _texts.append(text)
    return f'"{len(_texts) - 1}"'


def text_of(literal):
    """The text of one literal, given as it stands in the code."""
    return _texts[int(literal.strip().strip('"'))]


def _unescape(match):
    code = match.group(1)
    if code[0] == "x":
        return chr(int(code[1:], 16) & 0xFF)
    if code[0] in "01234567":
        return chr(int(code, 8) & 0xFF)
    return ESCAPED.get(code, code)


def _mask(match):
    if match.group("raw") is not None:
        return add_text(match.group("raw"))
    for kind in ("text", "char"):
        if match.group(kind) is not None:
            return add_text(ESCAPE.sub(_unescape, match.group(kind)))
    return " "


def _join_neighbours(code):
    def join(match):
        return add_text(_texts[int(match.group(1))] + _texts[int(match.group(2))])

    count = 1
    while count:
        code, count = NEIGHBOURS.subn(join, code)
    return code


def read(path):
    """The includes and symbols of a file."""
    raw = path.read_text(encoding="utf-8", errors="replace")
    includes = INCLUDE.findall(raw)
    code = TOKEN.sub(_mask, raw)
    symbols = [Symbol("function", name, "", body.replace("\\\n", " "), names(parameters))
               for name, parameters, body in DEFINE.findall(code)]
    symbols += _symbols(_join_neighbours(DIRECTIVE.sub("", code)), "")
    return File(includes, symbols)


def closing(code, at):
    """The place of the bracket that closes the one at `at`."""
    depth = 0
    for match in re.compile(r"[()\[\]{}]").finditer(code, at):
        depth += 1 if match.group() in "([{" else -1
        if depth == 0:
            return match.start()
    return len(code)


def split(code, separator):
    """Splits at separators outside all brackets."""
    parts, start, at = [], 0, 0
    while at < len(code):
        if code[at] in "([{":
            at = closing(code, at)
        elif code.startswith(separator, at):
            parts.append(code[start:at])
            start = at + len(separator)
        at += 1
    return parts + [code[start:]]


def arguments(code, bracket):
    """The arguments of the call whose opening bracket is at `bracket`."""
    inner = code[bracket + 1:closing(code, bracket)]
    return [part.strip() for part in split(inner, ",")] if inner.strip() else []


def calls(code):
    """Every call in the code, nested ones too: name, arguments, and whether it names an object."""
    for match in CALL.finditer(code):
        if match.group(2) not in NO_CALLS:
            yield match.group(2), arguments(code, match.end() - 1), bool(match.group(1))


def names(parameters):
    """The names of the parameters of a function's head."""
    found = [re.findall(r"\w+", part.split("=")[0]) for part in split(parameters, ",")]
    return [words[-1] if words else "" for words in found]


def _declarations(code):
    """Heads and blocks at one level; the block is "" for what ends with a semicolon."""
    start = at = 0
    while at < len(code):
        if code[at] in "([":
            at = closing(code, at)
        elif code[at] == ";":
            yield code[start:at], ""
            start = at + 1
        elif code[at] == "{":
            head, first = code[start:at], at
            at = closing(code, at)
            while re.match(r"\s*[{,]", code[at + 1:at + 200]):  # behind a constructor's members
                at = closing(code, code.find("{", at + 1))
            yield head, code[first:at + 1]
            start = at + 1
        at += 1


def _symbols(code, owner):
    found = []
    for head, block in _declarations(code):
        head = re.sub(r"\b(public|protected|private)\s*:|^\s*template\s*<[^{]*?>(?=\s)", " ",
                      head).strip()
        klass = re.match(r"(?:typedef\s+)?(?:class|struct|union)\s+(\w+)([^()=]*)$", head)
        if block and re.match(r'(inline\s+)?namespace\b|extern\s+"', head):
            found += _symbols(block[1:-1], "")
        elif block and klass:
            bases = [base for base in re.findall(r"\w+", klass.group(2))]
            found.append(Symbol("class", klass.group(1), owner, "", [], bases))
            found += _symbols(block[1:-1], klass.group(1))
        else:
            found += _symbol(head, block, owner)
    return found


def _symbol(head, block, owner):
    alias = re.match(r"using\s+(\w+)\s*=\s*(\w+)$", head)
    if alias:
        return [Symbol("class", alias.group(1), owner, "", [], [alias.group(2)])]
    bracket = head.find("(")
    if bracket > 0 and "=" not in head[:bracket]:
        name = re.search(r"(?:(\w+)\s*::\s*)?(~?\w+)\s*$", head[:bracket])
        end = closing(head, bracket)
        if name and (block or name.group(2).startswith("INSTANTIATE")
                     or name.group(2).endswith("_SUITE")):
            return [Symbol("function", name.group(2), name.group(1) or owner,
                           head[bracket:] + block, names(head[bracket + 1:end]))]
        return []
    name = re.search(r"(\w+)\s*(?:\[[^\]]*\]\s*)*$", head.split("=")[0])
    if name and (block or "=" in head) and not head.startswith("enum"):
        return [Symbol("data", name.group(1), owner, head + block)]
    return []
