"""Finds what can be changed in a C++ file: operators, constants, conditions and statements, one at a time.

Works on tokens and on the layout that the formatter gives (a binary operator stands between spaces), not on a syntax tree.
What it takes wrongly for something else does not compile, and is counted as that.
"""

import re
from dataclasses import dataclass

from tokens import tokens_of

BINARY = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "+": "-", "-": "+", "*": "/", "/": "*",
          "%": "*", "&&": "||", "||": "&&", "&": "|", "|": "&", "<<": ">>", ">>": "<<", "+=": "-=", "-=": "+="}
UNARY = {"++": "--", "--": "++", "!": ""}
CONTROLS = {"if", "for", "while", "switch", "catch"}
NO_EXPRESSION = CONTROLS | {"do", "else", "try", "case", "default", "using", "typedef", "static", "const", "constexpr",
                            "auto", "goto", "static_assert", "throw", "struct", "class", "enum", "union", "namespace",
                            "template", "friend", "extern", "public", "private", "protected", "asm", "co_return"}
BEFORE_BODY = {"const", "noexcept", "override", "final", "mutable", "else", "do", "try"}
# Hints of how much memory will be needed: what a program does is the same without them.
HINTS = {"reserve", "shrink_to_fit"}
# What a function without a value returns anyway when it is mutated.
EMPTY_VALUES = ({"{", "}"}, {"nullptr"}, {"std", "::", "nullopt"}, {"false"}, {"0"}, {'""'})
PAIRS = {"(": ")", "[": "]", "{": "}"}


@dataclass(frozen=True)
class Mutant:
    kind: str
    start: int
    end: int
    after: str

    def apply(self, code):
        return code[:self.start] + self.after + code[self.end:]


def mutants_of(code):
    """All mutants of a file in the order of their places, each once."""
    found = _Finder(code).find()
    unique = {(mutant.start, mutant.end, mutant.after): mutant for mutant in reversed(found)}
    return sorted(unique.values(), key=lambda mutant: (mutant.start, mutant.end, mutant.after))


def line_of(code, position):
    return code.count("\n", 0, position) + 1


def entity_of(header, position):
    """The name of the constant, macro or function of a header that a place belongs to, where nobody knows it but by this
    name: who does not say it is made of the same code whatever stands there. A function's name has a parenthesis behind it.
    Nothing when that is not certain, as with the first values of members, which constructors put in unsaid."""
    header = COMMENT.sub(lambda match: " " * len(match.group()), header)
    start = header.rfind("\n", 0, position) + 1
    while start > 0 and header[start] != "#" and not BOUNDARY.search(_last_line(header[:start - 1])):
        start = header.rfind("\n", 0, start - 1) + 1
    match = DECLARED.match(header[start:header.find("\n", position)])
    if not match:
        return None
    name = match["macro"] or match["constant"] or match["function"]
    if match["function"]:
        mentions = re.findall(rf"(?<=::){name}\b|\b{name}\(", header)
    else:
        mentions = re.findall(rf"\b{name}\b", header)
    if len(mentions) != 1:
        return None
    return name + "(" if match["function"] and "constexpr" not in match.group() else name


COMMENT = re.compile(r"//[^\n]*")
# The end of a line behind which something new begins.
BOUNDARY = re.compile(r"[;{}:,)]$|^#|^$")
DECLARED = re.compile(r"#define (?P<macro>\w+) |(?![^;{]*\b(?:virtual|override|operator)\b)"
                      r"(?:(?:[^=(#]*?\bconstexpr\b[^=(#]*?|\s*)(?P<constant>\b\w+) =\s|[^=(#]*?(?P<function>\b\w+)\()",
                      re.DOTALL)


def _last_line(text):
    return text[text.rfind("\n") + 1:].strip()


class _Scope:
    """A pair of braces, and the beginning of the statement that is being read in it. `resumes`: it lies within one of the
    scope around it, which goes on behind it."""

    def __init__(self, kind, resumes=False):
        self.kind = kind
        self.resumes = resumes
        self.start = None


class _Finder:
    def __init__(self, code):
        self.code = code
        self.tokens = tokens_of(code)
        self.partners = self._partners()
        self.mutants = []

    def find(self):
        self._walk()
        skipped = self._skipped()
        for index, token in enumerate(self.tokens):
            if index not in skipped:
                self._mutate_constant(index, token)
                self._mutate_operator(index, token)
        return [mutant for mutant in self.mutants if self.code[mutant.start:mutant.end] != mutant.after]

    # Places

    def _text(self, index):
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ""

    def _texts(self, first, end):
        return [token.text for token in self.tokens[first:end]]

    def _partners(self):
        partners, open_ones = {}, []
        for index, token in enumerate(self.tokens):
            if token.kind != "operator":
                continue
            if token.text in PAIRS:
                open_ones.append(index)
            elif token.text in PAIRS.values() and open_ones:
                partners[index] = open_ones.pop()
                partners[partners[index]] = index
        return partners

    def _skipped(self):
        """What is no code that runs, or makes no difference by construction."""
        skipped = set()
        for index, token in enumerate(self.tokens):
            following = self._text(index + 1)
            if token.text == "static_assert" or (token.text in HINTS and following == "("):
                skipped.update(range(index, self.partners.get(index + 1, index) + 1))
            elif token.text == "[" and following == "[":
                skipped.update(range(index, self.partners.get(index, index) + 1))
            elif token.text == "extern" or token.text == "operator":
                skipped.add(index + 1)
            elif token.text == "=" and following == "0" and self._text(index + 2) == ";":
                if self._text(index - 1) in {")", "const", "noexcept", "override"}:
                    skipped.add(index + 1)
        return skipped

    def _add(self, kind, first, last, after):
        self.mutants.append(Mutant(kind, self.tokens[first].start, self.tokens[last].end, after))

    # Constants and operators

    def _mutate_constant(self, index, token):
        after = None
        if token.kind == "number":
            after = _changed_number(token.text)
        elif token.kind == "text":
            opening = re.match(r'\w*?(?:R"[^(]*\(|")', token.text).end()
            after = token.text[:opening] + "~" + token.text[opening:]
        elif token.kind == "char":
            opening = token.text.index("'") + 1
            after = token.text[:opening] + ("y" if token.text[opening:-1] == "x" else "x") + "'"
        elif token.text in ("true", "false"):
            after = "false" if token.text == "true" else "true"
        if after is not None:
            self._add("constant", index, index, after)

    def _mutate_operator(self, index, token):
        if token.kind != "operator":
            return
        before, behind = self.code[token.start - 1:token.start], self.code[token.end:token.end + 1]
        if token.text in BINARY and before.isspace() and behind.isspace() and self._text(index - 1) != "template":
            self._add("operator", index, index, BINARY[token.text])
        elif token.text in UNARY and self._text(index - 1) != "operator":
            self._add("operator", index, index, UNARY[token.text])
        elif token.text == "?":
            first = self._ternary_start(index)
            for value in ("true", "false"):
                self._add("condition", first, index - 1, value)

    def _ternary_start(self, question):
        """Where the condition before a question mark begins."""
        index = question - 1
        while index >= 0:
            text = self.tokens[index].text
            if text in PAIRS.values() and index in self.partners:
                index = self.partners[index] - 1
                continue
            if text in PAIRS or text in {"=", "return", ",", ";", "<<", "?", ":", "+=", "}"}:
                break
            index -= 1
        return index + 1

    # Conditions and statements

    def _walk(self):
        scopes = [_Scope("outside")]
        index = 0
        while index < len(self.tokens):
            index = self._step(scopes, index)

    def _step(self, scopes, index):
        scope, text = scopes[-1], self._text(index)
        if text == "{" and self.tokens[index].kind == "operator":
            scopes.append(self._opened(scope, index))
            return index + 1
        if text == "}" and len(scopes) > 1:
            if not scopes.pop().resumes:
                scopes[-1].start = None
            return index + 1
        if scope.start is None:
            scope.start = index
        if scope.kind != "code":
            if text == ";":
                scope.start = None
            return index + 1
        return self._step_in_code(scope, index, text)

    def _step_in_code(self, scope, index, text):
        if text in {"else", "do"} and index == scope.start:
            scope.start = None
        elif text in CONTROLS and index == scope.start:
            return self._control(scope, index, text)
        elif text == ":" and self._text(scope.start) in {"case", "default"}:
            scope.start = None
        elif text == ";" and self._is_whole(scope.start, index):
            self._mutate_statement(scope.start, index)
            scope.start = None
        return index + 1

    def _is_whole(self, first, end):
        """Whether a statement ends here, not just a part of it in parentheses."""
        return all(self.partners.get(index, -1) <= end for index in range(first, end) if self._text(index) in PAIRS)

    def _opened(self, outer, index):
        """What kind of braces open here."""
        previous = self._text(index - 1)
        start = index if outer.start is None else outer.start
        header = self._texts(start, index)
        if outer.kind != "code" and header:
            if header[0] in {"namespace", "extern"}:
                return _Scope("outside")
            if "enum" in header and "(" not in header:
                return _Scope("list", resumes=True)
            if {"class", "struct", "union"} & set(header[:4]) and "(" not in header and "=" not in header:
                return _Scope("outside")
        if outer.kind == "code" and (not header or header[0] in {"try", "else", "do"}):
            return _Scope("code")
        is_lambda = self._is_lambda(index)
        if previous in {")", "]"} | BEFORE_BODY or is_lambda or self._ends_with_return_type(header):
            return _Scope("code", resumes=is_lambda)
        if previous == "}" and "(" in header and outer.kind == "outside":
            return _Scope("code")
        return _Scope("list", resumes=True)

    def _is_lambda(self, index):
        """Whether the braces that open here are a lambda's body."""
        index -= 1
        steps = 0
        while self._text(index) not in {")", "]"}:
            if self._text(index) in {";", "{", "}", "=", ",", "("} or steps == 8:
                return False
            index, steps = index - 1, steps + 1
        if self._text(index) == ")":
            index = self.partners.get(index, 0) - 1
        return self._text(index) == "]" and self._text(self.partners.get(index, 0) - 1) not in {")", "]"} and not (
            self.tokens[self.partners[index] - 1].kind == "name" and self._text(self.partners[index] - 1) != "return")

    @staticmethod
    def _ends_with_return_type(header):
        if "->" not in header:
            return False
        arrow = len(header) - 1 - header[::-1].index("->")
        return arrow > 0 and header[arrow - 1] == ")" and not {"(", ")", "=", ";"} & set(header[arrow + 1:])

    def _control(self, scope, index, text):
        """A control and its parentheses; what follows is a statement of its own."""
        opening = index + 1
        if self._text(opening) == "constexpr":
            opening += 1
        closing = self.partners.get(opening)
        if self._text(opening) != "(" or closing is None:
            return index + 1
        if opening == index + 1:
            self._mutate_condition(text, opening + 1, closing)
        # A lambda between the parentheses has statements too.
        inner = _Scope("code")
        inner.start = opening
        scopes = [inner]
        place = opening + 1
        while place < closing:
            if len(scopes) == 1 and self._text(place) != "{":
                place += 1
                continue
            place = self._step(scopes, place)
        scope.start = None
        return closing + 1

    def _mutate_condition(self, control, first, closing):
        semicolons = [index for index in range(first, closing) if self._text(index) == ";" and self._depth(first, index) == 0]
        if control == "for":
            if len(semicolons) == 2 and semicolons[1] > semicolons[0] + 1:
                self._add("condition", semicolons[0] + 1, semicolons[1] - 1, "false")
            return
        if control not in {"if", "while"}:
            return
        start = semicolons[-1] + 1 if semicolons else first
        values = ("true", "false") if control == "if" else ("false",)
        for value in values:
            if self._is_declaration(start, closing):
                self._add("condition", closing, closing, "; " + value + ")") if control == "if" else None
            else:
                self._add("condition", start, closing - 1, value)

    def _depth(self, first, index):
        return sum(1 for place in range(first, index) if self._text(place) in PAIRS and self.partners.get(place, -1) > index)

    def _is_declaration(self, first, end):
        """Two names side by side before a call or an assignment, or a word that only declarations begin with."""
        if self._text(first) in {"const", "auto", "static", "constexpr"}:
            return True
        previous = None
        for token in self.tokens[first:end]:
            if token.text in {"(", "=", "{", "[", ";", "+=", "-=", ".", "->"}:
                return False
            if token.kind == "name" and previous and (previous.kind == "name" or previous.text in {">", "&", "*", ">>"}):
                return previous is not self.tokens[first] or previous.kind == "name"
            previous = token
        return False

    def _mutate_statement(self, first, end):
        """The statement from `first` to the semicolon at `end` is left out, or returns nothing."""
        word = self._text(first)
        if first == end:
            return
        if word == "return":
            value = self._texts(first + 1, end)
            if value and set(value) not in EMPTY_VALUES:
                self._add("statement", first, end, "return {};")
        elif word in {"break", "continue"} and end == first + 1:
            self._add("statement", first, end, ";")
        elif word not in NO_EXPRESSION and word != "delete" and not self._is_declaration(first, end):
            if not HINTS & set(self._texts(first, end)):
                self._add("statement", first, end, ";")


def _changed_number(text):
    match = re.fullmatch(r"(0[xX][0-9a-fA-F']+|0[bB][01']+|[\d']*\.?[\d']+(?:[eE][-+]?\d+)?|\d+\.)([uUlLzZfF]*)", text)
    if not match:
        return None
    digits, suffix = match.group(1).replace("'", ""), match.group(2)
    if digits[:2].lower() == "0x":
        return hex(int(digits, 16) + 1) + suffix
    if digits[:2].lower() == "0b":
        return bin(int(digits, 2) + 1) + suffix
    if re.search(r"[.eE]", digits):
        return repr(float(digits) + 1) + suffix
    value = int(digits, 8) if re.fullmatch(r"0[0-7]+", digits) else int(digits)
    return ("0" if value == 1 else str(value + 1)) + suffix
