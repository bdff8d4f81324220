"""Finds the positions in a C++ source where one token can be changed, and what it can be changed to."""

import re
from dataclasses import dataclass

_TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>(?:(?<=\n)|\A)[ \t]*\#(?:[^\n\\]|\\.|\\\n)*)
      | (?P<string>(?:u8|u|U|L)?R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|(?:u8|u|U|L)?"(?:[^"\\\n]|\\.)*"(?:_\w+)?)
      | (?P<character>(?:u8|u|U|L)?'(?:[^'\\\n]|\\.)+')
      | (?P<number>(?:0[xXbB][0-9a-fA-F']+|\d[\d']*(?:\.\d*)?(?:[eE][+-]?\d+)?|\.\d+)[a-zA-Z]*)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<operator><=>|<<=|>>=|->|\+\+|--|<<|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|::|\S)
      | (?P<space>\s+)""",
    re.VERBOSE | re.DOTALL,
)

# A binary operator has spaces around it, since the sources are formatted.
_OPERATORS = {
    "<": ["<="], "<=": ["<"], ">": [">="], ">=": [">"], "==": ["!="], "!=": ["=="],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"],
    "+=": ["-="], "-=": ["+="], "&": ["|"], "|": ["&"],
}  # fmt: skip
_STEPS = {"++": "--", "--": "++"}
_WORDS = {"true": "false", "false": "true", "break": "continue", "continue": "break", "min": "max", "max": "min"}
_NO_CALL = {"return", "throw", "delete", "goto", "case", "if", "for", "while", "switch", "do", "else", "catch"}
_DECIMAL = re.compile(r"(\d+)([uUlLzZ]*)")

# Lines that only affect appearance.
_STYLE = re.compile(
    r"setStyleSheet|setContentsMargins|setSpacing|setMargin|setMinimum(Size|Width|Height)|setFixed(Size|Width|Height)|"
    r"setMaximum(Size|Width|Height)|setAlignment|setFrame|setStretch|setIconSize|sizeHint|QPen|QFont|QColor|QPalette|"
    r"setRenderHint|k\w*(Margin|Spacing|Padding|Gap)\b|#[0-9A-Fa-f]{6}|addStretch|addSpacing|setSizePolicy|"
    r"new QLabel|painter\."
)


@dataclass(frozen=True)
class Change:
    """`text[start:end]` becomes `new`."""

    start: int
    end: int
    new: str

    def apply(self, text: str) -> str:
        return text[: self.start] + self.new + text[self.end :]


@dataclass(frozen=True)
class _Token:
    kind: str
    text: str
    start: int
    end: int


def _tokens(text: str) -> list[_Token]:
    """The significant tokens: without white space, comments and directives."""
    found = (_Token(match.lastgroup if match.lastgroup != "mark" else "string", match[0], match.start(), match.end())
             for match in _TOKEN.finditer(text))  # fmt: skip
    return [token for token in found if token.kind not in ("space", "comment", "directive")]


def _between_spaces(text: str, token: _Token) -> bool:
    return text[token.start - 1].isspace() and text[token.end].isspace()


def _closing(tokens: list[_Token], opening: int) -> int:
    """The position at which the bracket at `opening` is closed."""
    depth = 0
    for index in range(opening, len(tokens)):
        depth += tokens[index].text in "([{" and tokens[index].kind == "operator"
        depth -= tokens[index].text in ")]}" and tokens[index].kind == "operator"
        if depth == 0:
            return index
    return len(tokens) - 1


def _statement_end(tokens: list[_Token], first: int) -> int:
    """The semicolon that ends the statement at `first`, or -1 if the enclosing block ends first."""
    index = first
    while index < len(tokens) and tokens[index].text != ";":
        if tokens[index].text in "([{":
            index = _closing(tokens, index)
        elif tokens[index].text == "}":
            return -1
        index += 1
    return index if index < len(tokens) else -1


def _starts_statement(tokens: list[_Token], index: int) -> bool:
    return index > 0 and tokens[index - 1].text in (";", "{", "}", "else")


def _is_call(tokens: list[_Token], first: int, semicolon: int) -> bool:
    """Whether it is `name(...)`, `a.b(...)` or similar: a call for its effect, not a declaration."""
    if semicolon < 2 or tokens[semicolon - 1].text != ")" or tokens[first].kind != "word":
        return False
    index = first
    while index < semicolon and tokens[index].text != "(":
        part = tokens[index]
        if part.kind == "word" and part.text in _NO_CALL:
            return False
        if part.kind != "word" and part.text not in (".", "->", "::", "*", "["):
            return False
        if part.text == "[":
            index = _closing(tokens, index)
        # Two words side by side are a declaration.
        elif part.kind == "word" and tokens[index + 1].kind == "word":
            return False
        index += 1
    return True


def _statement_changes(tokens: list[_Token], index: int) -> list[Change]:
    token = tokens[index]
    if token.text == "return":
        semicolon = _statement_end(tokens, index)
        value = tokens[index + 1 : semicolon]
        plain = len(value) == 1 and (value[0].kind == "number" or value[0].text in ("true", "false", "nullptr"))
        plain = plain or [token.text for token in value] == ["std", "::", "nullopt"]  # the same as {}
        if semicolon < 0 or not value or plain or value[0].text == "{" and len(value) == 2:
            return []
        return [Change(value[0].start, value[-1].end, "{}")]
    if _starts_statement(tokens, index):
        semicolon = _statement_end(tokens, index)
        if semicolon > 0 and _is_call(tokens, index, semicolon):
            return [Change(token.start, tokens[semicolon - 1].end, "")]
    return []


def _token_changes(text: str, tokens: list[_Token], index: int) -> list[Change]:
    token = tokens[index]
    before, after = (tokens[index - 1] if index else token), (tokens[index + 1] if index + 1 < len(tokens) else token)
    new: list[str] = []
    if token.kind == "number":
        decimal = _DECIMAL.fullmatch(token.text)
        new = [f"{int(decimal[1]) + 1}{decimal[2]}"] if decimal else []
    elif token.kind == "word":
        new = [_WORDS[token.text]] if token.text in _WORDS else []
    elif token.text == "!":
        new = [""]
    elif token.text in _STEPS:
        new = [_STEPS[token.text]]
    elif token.text in _OPERATORS and before.text != "operator" and _between_spaces(text, token):
        joins_strings = token.text in "+-" and "string" in (before.kind, after.kind)
        new = [] if joins_strings else _OPERATORS[token.text]
    return [Change(token.start, token.end, each) for each in new]


def _asserted(tokens: list[_Token]) -> list[tuple[int, int]]:
    """Static assertions and mere declarations."""
    return [(token.start, tokens[_statement_end(tokens, index)].end)
            for index, token in enumerate(tokens) if token.text in ("static_assert", "using", "template")]  # fmt: skip


def changes(text: str) -> list[Change]:
    """All changes of one token, in the order of the text."""
    tokens = _tokens(text)
    excluded = _asserted(tokens)
    found = []
    for index, token in enumerate(tokens):
        line = text[text.rfind("\n", 0, token.start) + 1 : text.find("\n", token.end)]
        if _STYLE.search(line) or any(start <= token.start < end for start, end in excluded):
            continue
        found += _token_changes(text, tokens, index) + _statement_changes(tokens, index)
    return found
