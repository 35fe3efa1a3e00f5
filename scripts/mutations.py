"""Small changes to C++ source text, found token by token.

The source is taken to be formatted as clang-format leaves it: binary operators stand between blanks,
template brackets, references and unary operators do not, and every controlled statement has braces.
"""

import dataclasses
import re

TOKEN = re.compile(
    r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^\#[^\n]*)
  | (?P<string>"(?:\\.|[^"\\\n])*")
  | (?P<character>'(?:\\.|[^'\\\n])*')
  | (?P<number>\b(?:0[xX][0-9a-fA-F]+|\d+)\b)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<operator><<=|>>=|\.\.\.|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|::|\S)
    """,
    re.VERBOSE | re.MULTILINE | re.DOTALL,
)

BETWEEN_BLANKS = {
    "==": ["!="],
    "!=": ["=="],
    "<": ["<=", ">="],
    "<=": ["<", ">"],
    ">": [">=", "<="],
    ">=": [">", "<"],
    "&&": ["||"],
    "||": ["&&"],
    "+": ["-"],
    "-": ["+"],
    "*": ["/"],
    "&": ["|"],
    "<<": [">>"],
    ">>": ["<<"],
    "+=": ["="],
    "-=": ["+="],
}
ANYWHERE = {"!": [""], "++": ["--"], "--": ["++"]}
WORDS = {
    "true": "false",
    "false": "true",
    "find": "rfind",
    "rfind": "find",
    "front": "back",
    "begin": "end",
    "rbegin": "begin",
    "lower_bound": "upper_bound",
    "min": "max",
    "find_first_not_of": "find_last_not_of",
}
OPENING = {"(": ")", "[": "]", "{": "}"}
CLOSING = set(OPENING.values())
# What stands before the brace of a function, a lambda or a controlled block.
BEFORE_BODY = {")", "const", "noexcept", "override", "else", "try", "do"}
COMPARISONS = {"==", "!=", "<", "<=", ">", ">="}
NAMES_BEFORE_BODY = {"namespace", "class", "struct", "enum"}
# Without a declaration, the rest would not compile.
DECLARATION = re.compile(
    r"(const|static|constexpr|using|enum|struct|class) |(?!return|throw|delete)\w+(::\w+)*(<.*?>)?[&*]* \w"
)
# Their conditions are changed instead.
NOT_DELETED = {"if", "while"}
ENDS = {"return", "throw"}


@dataclasses.dataclass
class Token:
    kind: str
    text: str
    start: int
    end: int


@dataclasses.dataclass
class Mutant:
    file: str
    start: int
    end: int
    replacement: str
    change: str
    line_number: int
    line: str

    def apply(self, text):
        return text[: self.start] + self.replacement + text[self.end :]

    def key(self):
        return (self.file, self.line, self.change)

    def __str__(self):
        return f"{self.file}:{self.line_number}: {self.change}\n    {self.line}"


def mutants_of(file, text):
    """All mutants of one source file, in the order of the text."""
    mutants = []
    for start, end, replacement, change in Changes(text).find():
        line_start = text.rfind("\n", 0, start) + 1
        line = text[line_start : text.find("\n", start)].strip()
        mutants.append(Mutant(file, start, end, replacement, change, text.count("\n", 0, start) + 1, line))
    mutants.sort(key=lambda mutant: (mutant.start, mutant.end))
    number_equal_ones(mutants)
    return mutants


def number_equal_ones(mutants):
    """Makes changes of the same text in equal lines distinct by their number."""
    groups = {}
    for mutant in mutants:
        groups.setdefault(mutant.key(), []).append(mutant)
    for group in groups.values():
        if len(group) > 1:
            for number, mutant in enumerate(group, 1):
                mutant.change += f" (number {number})"


def shortened(text):
    text = " ".join(text.split())
    return text if len(text) <= 70 else text[:67] + "..."


class Changes:
    """Finds the changes to a text, each as (start, end, replacement, description)."""

    def __init__(self, text):
        self.text = text
        self.tokens = [
            Token(match.lastgroup, match.group(), match.start(), match.end())
            for match in TOKEN.finditer(text)
            if match.lastgroup not in ("comment", "directive")
        ]
        self.partner = self.match_brackets()
        self.changes = []

    def find(self):
        for i, token in enumerate(self.tokens):
            getattr(self, "change_" + token.kind)(i, token)
        self.change_bodies(0, len(self.tokens))
        return self.changes

    def match_brackets(self):
        partner, stack = {}, []
        for i, token in enumerate(self.tokens):
            if token.text in OPENING:
                stack.append(i)
            elif token.text in CLOSING:
                partner[stack.pop()] = i
        return partner

    def source(self, first, last):
        return self.text[self.tokens[first].start : self.tokens[last].end]

    def replace(self, first, last, replacement, description=None):
        """Replaces the tokens from first to last, both included."""
        description = description or f"{shortened(self.source(first, last))} -> {shortened(replacement)}"
        self.changes.append((self.tokens[first].start, self.tokens[last].end, replacement, description))

    # Single tokens.

    def change_operator(self, i, token):
        around = self.text[token.start - 1] + self.text[token.end]
        choices = BETWEEN_BLANKS.get(token.text, []) if around.isspace() else ANYWHERE.get(token.text, [])
        for choice in choices:
            self.replace(i, i, choice)
        if token.text == "?":
            self.swap_alternatives(i)
        if token.text == "{" and not self.is_body(i):
            self.change_list(i)

    def change_word(self, i, token):
        if token.text in WORDS:
            self.replace(i, i, WORDS[token.text])
        if token.text in ("if", "while") and self.tokens[i + 1].text == "(":
            self.change_condition(i)

    def change_number(self, i, token):
        base, form = (16, "0x{:X}") if token.text[:2].lower() == "0x" else (10, "{}")
        value = int(token.text, base)
        self.replace(i, i, form.format(value + 1))
        if value > 0:
            self.replace(i, i, form.format(value - 1))

    def change_character(self, i, token):
        character = token.text[1:-1]
        if character.isdigit():
            self.replace(i, i, f"'{chr(ord(character) - 1)}'")
            self.replace(i, i, f"'{chr(ord(character) + 1)}'")
        else:
            self.replace(i, i, "'~'")

    def change_string(self, i, token):
        content = token.text[1:-1]
        if self.tokens[i - 1].text == "extern" or not content:
            return
        letters = [match.start() for match in re.finditer(r"(?<!\\)\w", content)]
        if letters:
            middle = letters[len(letters) // 2]
            self.replace(i, i, f'"{content[:middle]}Q{content[middle + 1 :]}"')
        if len(content) <= 16 and not content.isidentifier() and "\\" not in content:
            for position in range(len(content)):
                self.replace(i, i, f'"{content[:position]}{content[position + 1 :]}"')

    # Conditions.

    def change_condition(self, i):
        first, last = i + 2, self.partner[i + 1] - 1
        for j in range(first, last + 1):
            if self.tokens[j].text == ";":
                first = j + 1
        condition = self.source(first, last)
        if sum(token.text in COMPARISONS for token in self.tokens[first : last + 1]) != 1:
            self.replace(first, last, f"!({condition})", f"negated: {shortened(condition)}")
        if self.tokens[i].text == "if":
            self.replace(first, last, "true")
            self.replace(first, last, "false")

    def swap_alternatives(self, i):
        """Swaps the two values of a conditional expression."""
        colon = self.skip_until(i + 1, {":"})
        end = self.skip_until(colon + 1, {";", ",", ")", "}"})
        yes, no = self.source(i + 1, colon - 1), self.source(colon + 1, end - 1)
        self.replace(i + 1, end - 1, f"{no} : {yes}", f"swapped: {shortened(yes)} : {shortened(no)}")

    def skip_until(self, i, texts):
        """The first token with one of the texts outside all brackets that open from here on."""
        while self.tokens[i].text not in texts:
            i = self.partner.get(i, i) + 1
        return i

    # Lists in braces.

    def is_body(self, brace):
        return brace > 0 and self.tokens[brace - 1].text in BEFORE_BODY

    def change_list(self, brace):
        """Leaves out each element of a list, and swaps neighbours in a table."""
        if self.tokens[brace - 1].text in ("{", ",") or self.tokens[brace - 2].text in NAMES_BEFORE_BODY:
            return
        elements, first = [], brace + 1
        while first < self.partner[brace]:
            end = self.skip_until(first, {",", "}", ";"})
            if self.tokens[end].text == ";" or end == first:
                return
            elements.append((first, end - 1))
            first = end + 1
        if len(elements) < 2:
            return
        for first, last in elements:
            has_comma = self.tokens[last + 1].text == ","
            element = shortened(self.source(first, last))
            self.replace(first, last + 1 if has_comma else last, "", f"left out: {element}")
        if self.tokens[brace - 1].text == "=":
            for (first, last), (next_first, next_last) in zip(elements, elements[1:]):
                self.swap(first, last, next_first, next_last)

    def swap(self, first, last, next_first, next_last):
        left, right = self.source(first, last), self.source(next_first, next_last)
        between = self.text[self.tokens[last].end : self.tokens[next_first].start]
        if left != right:
            self.replace(first, next_last, right + between + left,
                         f"swapped: {shortened(left)} / {shortened(right)}")

    # Statements.

    def change_bodies(self, first, end):
        """Changes the statements in every body between the two tokens."""
        i = first
        while i < end:
            if self.tokens[i].text == "{" and self.is_body(i):
                self.change_statements(i + 1, self.partner[i])
                i = self.partner[i]
            i += 1

    def change_statements(self, first, end):
        statements = []
        while first < end:
            last = self.end_of_statement(first)
            statements.append((first, last))
            self.change_bodies(first, last + 1)
            first = last + 1
        for (first, last), following in zip(statements, statements[1:] + [None]):
            if self.is_removable(first, last) and self.tokens[first].text not in NOT_DELETED:
                self.replace(first, last, "", f"deleted: {shortened(self.source(first, last))}")
            if following is not None and self.is_removable(first, last) and self.is_removable(*following):
                if self.can_depend(first, last, *following):
                    self.swap(first, last, *following)

    def can_depend(self, first, last, next_first, next_last):
        """Whether the order of two statements can matter: both run, and they have a name in common."""
        ends = self.tokens[first].text in ENDS or self.tokens[next_first].text in ENDS
        return not ends and bool(self.names(first, last) & self.names(next_first, next_last))

    def names(self, first, last):
        return {token.text for token in self.tokens[first : last + 1] if token.kind == "word"} - {"std"}

    def is_removable(self, first, last):
        """Whether the statement is none that others need in order to compile."""
        return not DECLARATION.match(self.source(first, last))

    def end_of_statement(self, i):
        """The last token of the statement that begins here."""
        while True:
            text = self.tokens[i].text
            if text == ";":
                return i
            if text == "{" and self.is_body(i) and not self.belongs_to_expression(i):
                end = self.partner[i]
                if self.tokens[end + 1].text not in ("else", "catch"):
                    return end
                i = end + 1
            else:
                i = self.partner.get(i, i) + 1

    def belongs_to_expression(self, brace):
        """Whether the brace is that of a lambda rather than that of a controlled block."""
        before = self.tokens[brace - 1].text
        if before in ("else", "try", "do"):
            return False
        opening = next(i for i, closing in self.partner.items() if closing == brace - 1)
        return self.tokens[opening - 1].text == "]"
