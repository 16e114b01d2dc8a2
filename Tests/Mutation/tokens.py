"""Cuts C++ into tokens, as far as mutation needs it: comments and directives are left out."""

import re
from dataclasses import dataclass

PATTERN = re.compile(r"""
    (?P<space>\s+)
  | (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<raw>(?:u8|u|U|L)?R"(?P<delimiter>[^()\\\s]{0,16})\(.*?\)(?P=delimiter)")
  | (?P<text>(?:u8|u|U|L)?"(?:\\.|[^"\\\n])*")
  | (?P<char>(?:u8|u|U|L)?'(?:\\.|[^'\\\n])+')
  | (?P<number>\.?\d(?:[eEpP][+-]|'(?=\w)|[\w.])*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<operator><<=|>>=|\.\.\.|->\*|<=>|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|.)
""", re.VERBOSE | re.DOTALL)
DIRECTIVE = re.compile(r"[ \t]*#(?:[^\n\\]|\\.|\\\n)*", re.DOTALL)
TEXT_MACRO = re.compile(r"[ \t]*#define[ \t]+\w+[ \t]+(?=\")")


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


def tokens_of(code):
    """The tokens of a file. Of directives only the texts that macros stand for, each as a statement of its own."""
    found = []
    position = 0
    at_line_start = True
    while position < len(code):
        directive = DIRECTIVE.match(code, position) if at_line_start else None
        if directive:
            found += _tokens_of_directive(code, directive)
            position = directive.end()
            continue
        match = PATTERN.match(code, position)
        position = match.end()
        if match.lastgroup == "space":
            at_line_start = at_line_start or "\n" in match.group()
            continue
        at_line_start = False
        if match.lastgroup != "comment":
            found.append(_token(match))
    return found


def _token(match):
    return Token("text" if match.lastgroup == "raw" else match.lastgroup, match.group(), match.start(), match.end())


def _tokens_of_directive(code, directive):
    macro = TEXT_MACRO.match(code, directive.start(), directive.end())
    if not macro:
        return []
    return [_token(match) for match in PATTERN.finditer(code, macro.end(), directive.end()) if match["text"]]
