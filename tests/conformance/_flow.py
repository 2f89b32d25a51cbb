"""Which texts reach an argument of a function: the messages that a source can report.

A text that is put together becomes a pattern: a tuple of constant texts, of VARIABLE for what only
a run can tell, and of Parameter where the caller decides. Patterns with parameters go on to the
callers until nothing is open, so a message is found however many helpers it passes through.
"""

import re
from dataclasses import dataclass

import _cpp

VARIABLE = None
BARE = r"(?:std::)?(?:string|string_view|move|Text)"


@dataclass(frozen=True)
class Parameter:
    name: str


def tidy(pattern):
    """Puts neighbouring constants together."""
    result = []
    for piece in pattern:
        if isinstance(piece, str) and result and isinstance(result[-1], str):
            result[-1] += piece
        elif piece is not VARIABLE or not result or result[-1] is not VARIABLE:
            result.append(piece)
    return tuple(result)


def is_open(pattern):
    return any(isinstance(piece, Parameter) for piece in pattern)


def has_text(pattern):
    return any(isinstance(piece, str) and piece for piece in pattern)


class Texts:
    """Evaluates text expressions and follows them through the functions of some files."""

    def __init__(self, symbols):
        self.functions = {}
        for symbol in symbols:
            if symbol.kind == "function":
                self.functions.setdefault(symbol.name, []).append(symbol)
        self.memo = {}

    # -- expressions ------------------------------------------------------------------------------

    def evaluate(self, expression, function, bound=None):
        """The patterns that an expression in a function can give."""
        found = [()]
        for term in _cpp.split(expression, "+"):
            values = self._term(term.strip(), function, bound or {})
            found = [left + right for left in found for right in values]
        return sorted({tidy(pattern) for pattern in found}, key=repr)

    def _term(self, term, function, bound):
        term = re.sub(r"\.c_str\(\)$|^\*", "", term)
        chain = re.search(r"\.append\s*\(", term)
        if chain:
            return self._appended(self.evaluate(term[:chain.start()], function, bound),
                                  term[chain.start():], function, bound)
        inner = re.fullmatch(rf"{BARE}\s*([({{].*[)}}])", term, re.DOTALL)
        if inner and _cpp.closing(inner.group(1), 0) == len(inner.group(1)) - 1:
            return self._made(_cpp.arguments(inner.group(1), 0), function, bound)
        if _cpp.LITERAL.fullmatch(term):
            return [(_cpp.text_of(term),)]
        if len(_cpp.split(term, "?")) > 1:
            return self._choice(term, function, bound)
        call = re.match(r"(\w+)\s*\(", term)
        if call and _cpp.closing(term, call.end() - 1) == len(term) - 1:
            return self._call(call.group(1), _cpp.arguments(term, call.end() - 1), function, bound)
        return self._name(term, function, bound)

    def _made(self, given, function, bound):
        """What a text is made of: another text, or a character that stands there once."""
        if len(given) == 2 and given[0] == "1":
            given = given[1:]
        return self.evaluate(given[0], function, bound) if len(given) == 1 else [(VARIABLE,)]

    def _appended(self, found, chain, function, bound):
        """Texts with all that the calls of a chain append to them."""
        at = 0
        while (match := re.compile(r"\s*\.append\s*\(").match(chain, at)):
            values = self._made(_cpp.arguments(chain, match.end() - 1), function, bound)
            found = [left + right for left in found for right in values]
            at = _cpp.closing(chain, match.end() - 1) + 1
        return found

    def _choice(self, term, function, bound):
        branches = _cpp.split(_cpp.split(term, "?")[1], " : ")
        found = [value for branch in branches for value in self.evaluate(branch, function, bound)]
        return found if all(map(has_text, found)) else [(VARIABLE,)]

    def _call(self, name, given, function, bound):
        """A local lambda or a function that only returns a text is looked into."""
        body = re.search(rf"\b{name}\s*=\s*\[[^\]]*\]\s*(\([^)]*\))\s*{{\s*return\s+([^;]*);\s*}}",
                         function.code)
        if body:
            parameters, expression, home = _cpp.names(body.group(1)[1:-1]), body.group(2), function
        else:
            home = next(iter(self.resolve(name, function, False)), None)
            body = home and re.search(r"{\s*return\s+([^;]*);\s*}\s*$", home.code)
            if not body:
                return [(VARIABLE,)]
            parameters, expression = home.parameters, body.group(1)
        values = {parameter: self.evaluate(argument, function, bound)
                  for parameter, argument in zip(parameters, given)}
        found = self.evaluate(expression, home, values)
        return found if all(map(has_text, found)) else [(VARIABLE,)]

    def _name(self, term, function, bound):
        if term in bound:
            return bound[term]
        if term in function.parameters:
            return [(Parameter(term),)]
        table = re.fullmatch(r"(\w+)\.\w+", term)
        loop = table and re.search(rf"\b{table.group(1)}\s*:\s*(\w+)", function.code)
        if loop:
            return self._first_column(loop.group(1), function)
        start = re.search(rf"\b(?:string|auto|char\s*\*)\s+{re.escape(term)}\s*=\s*([^;]*);",
                          function.code)
        return self._variable(term, start.group(1), function, bound) if start else [(VARIABLE,)]

    def _variable(self, name, start, function, bound):
        """The text that a variable begins with, and the one with all that is appended."""
        found = self.evaluate(start, function, bound)
        longer = found
        for chain in re.findall(rf"\b{name}(\.append\([^;]*\))\s*;", function.code):
            longer = self._appended(longer, chain, function, bound)
        return found + [pattern for pattern in longer if pattern not in found]

    def _first_column(self, table, function):
        body = re.search(rf"\b{table}\s*\[\]\s*=\s*{{(.*?)}};", function.code, re.DOTALL)
        rows = re.findall(r'{\s*("\d+")', body.group(1)) if body else []
        return [(_cpp.text_of(row),) for row in rows] or [(VARIABLE,)]

    # -- functions --------------------------------------------------------------------------------

    def resolve(self, name, caller, names_object):
        """The functions that a call can mean: those of the caller's class, or else free ones, or
        else those of the only class that has any. Other calls of objects are not followed."""
        found = self.functions.get(name, [])
        if not names_object:
            for owner in (caller.owner, ""):
                own = [function for function in found if function.owner == owner]
                if own:
                    return own
        return found if len({function.owner for function in found}) == 1 else []

    def called(self):
        """All functions that another one calls, by identity."""
        return {id(callee) for functions in self.functions.values() for function in functions
                for name, _, names_object in _cpp.calls(function.code)
                for callee in self.resolve(name, function, names_object) if callee is not function}

    def reaching(self, function, sink, follow=None):
        """The patterns that the function hands to the sink, itself or through others.

        `sink(name, arguments)` gives the expression that a call reports, or None. With `follow`,
        calls with that argument contribute all that the called function reports.
        """
        key = (id(function), id(sink), follow)
        if key in self.memo:
            return self.memo[key]
        self.memo[key] = set()  # a function that calls itself adds nothing new
        found = set()
        for name, given, names_object in _cpp.calls(function.code):
            expression = sink(name, given)
            if expression is not None:
                found.update(self.evaluate(expression, function))
                continue
            for callee in self.resolve(name, function, names_object):
                for pattern in self.reaching(callee, sink, follow):
                    if is_open(pattern) or (follow and follow in given):
                        found.update(self._bind(pattern, callee, given, function))
        self.memo[key] = found
        return found

    def _bind(self, pattern, callee, given, caller):
        values = dict(zip(callee.parameters, given))
        found = [()]
        for piece in pattern:
            choices = [(piece,)]
            if isinstance(piece, Parameter):
                argument = values.get(piece.name)
                choices = self.evaluate(argument, caller) if argument else [(VARIABLE,)]
            found = [left + right for left in found for right in choices]
        return {tidy(pattern) for pattern in found}
