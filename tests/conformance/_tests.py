"""The tests, and what each of them says and calls, found in their sources.

A test says what stands in its body, in the helpers, tables and fixtures of its file that it uses,
and in those of the headers below tests/ that the file includes. A row of a table of values is a
test of its own where the table gives it a name.
"""

import ast
import re
from dataclasses import dataclass, field

import _cpp
from _flow import Texts, VARIABLE

GAP = "\x01"  # stands in a text for what only a run can tell
MACROS = ("TEST", "TEST_F", "TEST_P", "TYPED_TEST")
FIXTURE = ("SetUp", "TearDown")
# Calls with null handles and nothing else exercise no function.
LEFT_OUT = re.compile(r"^(api/CallTable.*\.cpp|compile/.*|exports/.*|conformance/.*)$")
WORD = re.compile(r"\b[A-Za-z_]\w*")


@dataclass
class Words:
    """Identifiers and texts of a piece of code."""

    names: set = field(default_factory=set)
    texts: list = field(default_factory=list)

    def add(self, other):
        self.names |= other.names
        self.texts += other.texts


@dataclass
class Test:
    name: str
    body: Words  # what stands in the test itself
    own: Words  # that, and what its helpers in the same file say
    all: Words  # that, and what its helpers in headers say


class TestFile:
    """One C or C++ file with the headers it includes."""

    def __init__(self, path, root, headers):
        file = _cpp.read(path)
        self.symbols = list(file.symbols)
        self.own = {id(symbol) for symbol in file.symbols}
        for header in _included(file, root, headers):
            self.symbols += header.symbols
        self.by_name = {}
        for symbol in self.symbols:
            self.by_name.setdefault(symbol.name, []).append(symbol)
        self.texts = Texts(self.symbols)
        self.memo = {}

    # -- words ------------------------------------------------------------------------------------

    def words(self, symbol):
        if id(symbol) not in self.memo:
            self.memo[id(symbol)] = self.words_of(symbol.code, symbol)
        return self.memo[id(symbol)]

    def words_of(self, code, symbol):
        return Words(set(WORD.findall(code)), _joined(self._composed(code, symbol)))

    def _composed(self, code, symbol):
        """The code with each call of a function that only puts a text together as that text."""
        found = code
        for match in reversed(list(re.finditer(r"(?<![.>:\w])(\w+)\s*\(", code))):
            targets = self.by_name.get(match.group(1), [])
            if not any("return" in target.code and '"' in target.code for target in targets):
                continue
            end = _cpp.closing(found, match.end() - 1)
            pattern = self.texts.evaluate(found[match.start():end + 1], symbol)[0]
            if pattern != (VARIABLE,):
                found = found[:match.start()] + _cpp.add_text(_text(pattern)) + found[end + 1:]
        return found

    # -- what a test uses -------------------------------------------------------------------------

    def classes(self, suite):
        """The fixture and its bases."""
        found, waiting = set(), [suite]
        while waiting:
            name = waiting.pop()
            if name in found:
                continue
            found.add(name)
            waiting += [base for symbol in self.by_name.get(name, []) if symbol.kind == "class"
                        for base in symbol.bases]
        return found

    def meant(self, name, classes):
        """The symbols that a name means in a test with a fixture of these classes."""
        found = [symbol for symbol in self.by_name.get(name, []) if symbol.kind != "class"]
        members = [symbol for symbol in found if symbol.owner in classes]
        return members or ([] if name in FIXTURE else found)

    def test(self, name, suite, body):
        classes = self.classes(suite)
        own, rest = Words(set(body.names), list(body.texts)), Words()
        waiting = set(body.names) | set(FIXTURE) | classes
        known, reached = set(), set()
        while waiting:
            word = waiting.pop()
            known.add(word)
            for symbol in self.meant(word, classes):
                if id(symbol) in reached or symbol.name in MACROS:
                    continue
                reached.add(id(symbol))
                words = self.words(symbol)
                (own if id(symbol) in self.own else rest).add(words)
                waiting |= words.names - known
        rest.add(own)
        return Test(name, body, own, rest)

    # -- tests ------------------------------------------------------------------------------------

    def tests(self):
        for symbol in self.symbols:
            if symbol.kind != "function" or symbol.name not in MACROS:
                continue
            suite, name = symbol.parameters
            body = self.words(symbol)
            values = list(self._values(suite)) if symbol.name == "TEST_P" else []
            if not values:
                yield self.test(f"{suite}.{name}", suite, body)
            for prefix, case, words in values:
                both = Words(body.names | words.names, body.texts + words.texts)
                yield self.test(f"{prefix}/{suite}.{name}{case}", suite, both)

    def _values(self, suite):
        """What a suite is run with: the name in front, the case's name, and its words."""
        for symbol in self.by_name.get("INSTANTIATE_TEST_SUITE_P", []):
            given = _cpp.arguments(symbol.code, 0)
            if given[1] != suite:
                continue
            entries = self._entries(given[2])
            labels = [_label(entry) if len(given) > 3 else str(index)
                      for index, entry in enumerate(entries)]
            if entries and all(labels):
                for label, entry in zip(labels, entries):
                    yield given[0], "/" + label, self.words_of(entry, symbol)
            else:
                yield given[0], "", self.words_of(given[2], symbol)

    def _entries(self, generator):
        generator = generator.replace("::testing::", "").strip()
        bracket = generator.find("(")
        given = _cpp.arguments(generator, bracket)
        if generator.startswith("Values("):
            return given
        tables = self.by_name.get(given[0], []) if generator.startswith("ValuesIn(") else []
        entries = [entry for table in tables for entry in
                   _cpp.split(table.code[table.code.find("{") + 1:-1], ",")]
        return [entry for entry in entries if entry.strip()]


def _label(entry):
    first = re.match(r'\s*\w*\s*{\s*("\d+")', entry)
    text = _cpp.text_of(first.group(1)) if first else ""
    return text if re.fullmatch(r"\w+", text) else ""


def _text(pattern):
    return "".join(piece if isinstance(piece, str) else GAP for piece in pattern)


def _joined(code):
    """The texts of the code; those that are put together with `+` as one."""
    found, end = [], 0
    for match in _cpp.LITERAL.finditer(code):
        text = _cpp.text_of(match.group())
        gap = re.sub(r"\([^()]*\)|::", "", code[end:match.start()])
        if found and "+" in gap and not re.search(r"[,;{}?:]", gap):
            found[-1] += ("" if re.fullmatch(r"[\s()+]*", gap) else GAP) + text
        else:
            found.append(text)
        end = match.end()
    return found


def _included(file, root, headers):
    """The headers below tests/ that a file includes, directly or not."""
    found, waiting = {}, list(file.includes)
    while waiting:
        path = root / waiting.pop()
        if path in found or not path.is_file():
            continue
        if path not in headers:
            headers[path] = _cpp.read(path)
        found[path] = headers[path]
        waiting += headers[path].includes
    return found.values()


# -- Python ---------------------------------------------------------------------------------------

def _python_text(node):
    """The text of an expression, or None when it is no text."""
    if isinstance(node, ast.Constant) and isinstance(node.value, str):
        return node.value
    if isinstance(node, ast.JoinedStr):
        return "".join(_python_text(part) or GAP for part in node.values)
    if isinstance(node, ast.BinOp) and isinstance(node.op, ast.Add):
        left, right = _python_text(node.left), _python_text(node.right)
        return None if left is None and right is None else (left or GAP) + (right or GAP)
    return None


def _python_words(node):
    words, waiting = Words(), [node]
    while waiting:
        part = waiting.pop()
        text = _python_text(part)
        if text is not None:
            words.texts.append(text)
            continue
        words.names |= {getattr(part, key) for key in ("id", "attr")
                        if isinstance(getattr(part, key, None), str)}
        waiting += ast.iter_child_nodes(part)
    return words


def _python_functions(path):
    tree = ast.parse(path.read_text(encoding="utf-8"))
    for owner in [tree] + [node for node in tree.body if isinstance(node, ast.ClassDef)]:
        for node in owner.body:
            if isinstance(node, ast.FunctionDef):
                yield getattr(owner, "name", ""), node.name, _python_words(node)


def _python_tests(path):
    functions = list(_python_functions(path))
    helpers = {name: words for _, name, words in
               list(_python_functions(path.parent / "_ovi.py")) + functions}
    for suite, name, body in functions:
        if not name.startswith("test_"):
            continue
        own, waiting, known = Words(set(body.names), list(body.texts)), set(body.names), set()
        while waiting:
            word = waiting.pop()
            known.add(word)
            if word in helpers:
                own.add(helpers[word])
                waiting |= helpers[word].names - known
        yield Test(f"{suite}.{name}", body, own, own)


def all_tests(source):
    """Every test of the tree, by name."""
    root, headers, found = source / "tests", {}, []
    for path in sorted(root.rglob("*.cpp")):
        if not LEFT_OUT.match(path.relative_to(root).as_posix()):
            found += TestFile(path, root, headers).tests()
    for path in sorted((root / "cli").glob("[!_]*.py")):
        found += _python_tests(path)
    host = TestFile(source / "examples/host.c", root, headers)
    for main in host.by_name["main"]:
        found.append(host.test("example.host", "", host.words(main)))
    return sorted(found, key=lambda test: test.name)
