"""Small changes to C++ source text, found token by token.

Assumes source formatted by clang-format: binary operators are surrounded by spaces;
template brackets, references and unary operators are not, and every controlled statement has braces.
"""

import collections
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

BETWEEN_SPACES = {
    "==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "&": ["|"], "<<": [">>"], ">>": ["<<"],
    "+=": ["="], "-=": ["+="],
}
ANYWHERE = {"!": [""], "++": ["--"], "--": ["++"]}
WORDS = {
    "true": "false", "false": "true", "find": "rfind", "rfind": "find", "front": "back", "begin": "end",
    "rbegin": "begin", "lower_bound": "upper_bound", "min": "max", "find_first_not_of": "find_last_not_of",
}
COMPARISONS = {"==", "!=", "<", "<=", ">", ">="}
OPENING, CLOSING = set("([{"), set(")]}")
# What precedes the brace of a function, a lambda or a controlled block.
BEFORE_BODY = {")", "const", "noexcept", "override", "else", "try", "do"}
NAMES_BEFORE_BODY = {"namespace", "class", "struct", "enum"}
# Not deleted: declarations, because the rest would not compile without them, and "if" and "while", whose conditions are
# changed instead.
KEPT_STATEMENT = re.compile(
    r"(const|static|constexpr|using|enum|struct|class) |(if|while)\b|"
    r"(?!return|throw|delete)\w+(::\w+)*(<.*?>)?[&*]* \w"
)


@dataclasses.dataclass
class Mutant:
    file: str
    start: int
    end: int
    replacement: str
    change: str
    first_line: int
    last_line: int
    line: str

    def apply(self, text):
        return text[: self.start] + self.replacement + text[self.end :]

    def key(self):
        return (self.file, self.line, self.change)

    def __str__(self):
        return f"{self.file}:{self.first_line}: {self.change}\n    {self.line}"


def mutants_of(file, text):
    """All mutants of one source file, in the order of the text."""
    mutants = []
    for start, end, replacement, change in sorted(Changes(text).find(), key=lambda change: change[:2]):
        first, last = (text.count("\n", 0, position) for position in (start, end))
        line = text.splitlines()[first].strip()
        mutants.append(Mutant(file, start, end, replacement, change, first + 1, last + 1, line))
    # Identical changes in identical lines are numbered.
    total, number = collections.Counter(mutant.key() for mutant in mutants), collections.Counter()
    for mutant in mutants:
        key = mutant.key()
        number[key] += 1
        if total[key] > 1:
            mutant.change += f" (number {number[key]})"
    return mutants


def shortened(text):
    text = " ".join(text.split())
    return text if len(text) <= 70 else text[:67] + "..."


class Changes:
    """Finds the changes to a text, each as (start, end, replacement, description)."""

    def __init__(self, text):
        self.text = text
        self.tokens = [match for match in TOKEN.finditer(text) if match.lastgroup not in ("comment", "directive")]
        self.words = [token.group() for token in self.tokens]
        self.partner, stack = {}, []
        for i, word in enumerate(self.words):
            if word in OPENING:
                stack.append(i)
            elif word in CLOSING:
                self.partner[stack.pop()] = i
        self.opening = {closing: opening for opening, closing in self.partner.items()}
        self.changes = []

    def find(self):
        for i, token in enumerate(self.tokens):
            getattr(self, "change_" + token.lastgroup)(i, token.group())
        self.delete_statements_in_bodies(0, len(self.tokens))
        return self.changes

    def source(self, first, last):
        return self.text[self.tokens[first].start() : self.tokens[last].end()]

    def replace(self, first, last, replacement, description=None):
        """Replaces the tokens from first to last, both included."""
        description = description or f"{shortened(self.source(first, last))} -> {shortened(replacement)}"
        self.changes.append((self.tokens[first].start(), self.tokens[last].end(), replacement, description))

    def skip_until(self, i, words):
        """The first token from i on that is one of the words, skipping over bracketed groups."""
        while self.words[i] not in words:
            i = self.partner.get(i, i) + 1
        return i

    # Single tokens.

    def change_operator(self, i, word):
        around = self.text[self.tokens[i].start() - 1] + self.text[self.tokens[i].end()]
        for choice in (BETWEEN_SPACES if around.isspace() else ANYWHERE).get(word, []):
            self.replace(i, i, choice)
        if word == "?":
            self.swap_alternatives(i)
        if word == "{" and not self.is_body(i):
            self.change_list(i)

    def change_word(self, i, word):
        if word in WORDS:
            self.replace(i, i, WORDS[word])
        if word in ("if", "while") and self.words[i + 1] == "(":
            self.change_condition(i)

    def change_number(self, i, word):
        value, form = int(word, 0), "0x{:X}" if word[:2].lower() == "0x" else "{}"
        self.replace(i, i, form.format(value + 1))
        if value > 0:
            self.replace(i, i, form.format(value - 1))

    def change_character(self, i, word):
        if word[1:-1].isdigit():
            self.replace(i, i, f"'{chr(ord(word[1]) - 1)}'")
            self.replace(i, i, f"'{chr(ord(word[1]) + 1)}'")
        else:
            self.replace(i, i, "'~'")

    def change_string(self, i, word):
        content = word[1:-1]
        if self.words[i - 1] == "extern" or not content:
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
        if ";" in self.words[first:last]:
            first = self.words.index(";", first) + 1
        condition = self.source(first, last)
        if sum(word in COMPARISONS for word in self.words[first : last + 1]) != 1:
            self.replace(first, last, f"!({condition})", f"negated: {shortened(condition)}")
        if self.words[i] == "if":
            self.replace(first, last, "true")
            self.replace(first, last, "false")

    def swap_alternatives(self, i):
        """Swaps the two values of a conditional expression."""
        colon = self.skip_until(i + 1, {":"})
        end = self.skip_until(colon + 1, {";", ",", ")", "}"})
        yes, no = self.source(i + 1, colon - 1), self.source(colon + 1, end - 1)
        self.replace(i + 1, end - 1, f"{no} : {yes}", f"swapped: {shortened(yes)} : {shortened(no)}")

    # Lists in braces.

    def is_body(self, brace):
        return brace > 0 and self.words[brace - 1] in BEFORE_BODY

    def change_list(self, brace):
        """Leaves out each element of a list, and swaps neighbours in a table."""
        if self.words[brace - 1] in ("{", ",") or self.words[brace - 2] in NAMES_BEFORE_BODY:
            return
        elements, first = [], brace + 1
        while first < self.partner[brace]:
            end = self.skip_until(first, {",", "}", ";"})
            if self.words[end] == ";" or end == first:
                return
            elements.append((first, end - 1))
            first = end + 1
        if len(elements) < 2:
            return
        for first, last in elements:
            self.replace(first, last + (self.words[last + 1] == ","), "",
                         f"left out: {shortened(self.source(first, last))}")
        if self.words[brace - 1] == "=":
            for (first, last), (next_first, next_last) in zip(elements, elements[1:]):
                left, right = self.source(first, last), self.source(next_first, next_last)
                between = self.text[self.tokens[last].end() : self.tokens[next_first].start()]
                self.replace(first, next_last, right + between + left,
                             f"swapped: {shortened(left)} / {shortened(right)}")

    # Statements.

    def delete_statements_in_bodies(self, first, end):
        """Deletes the statements in every body between the two tokens."""
        i = first
        while i < end:
            if self.words[i] == "{" and self.is_body(i):
                self.delete_statements(i + 1, self.partner[i])
                i = self.partner[i]
            i += 1

    def delete_statements(self, first, end):
        while first < end:
            last = self.end_of_statement(first)
            self.delete_statements_in_bodies(first, last + 1)
            if not KEPT_STATEMENT.match(self.source(first, last)):
                self.replace(first, last, "", f"deleted: {shortened(self.source(first, last))}")
            first = last + 1

    def end_of_statement(self, i):
        """The last token of the statement that begins here."""
        while self.words[i] != ";":
            is_block = self.words[i] == "{" and self.is_body(i) and not self.is_lambda(i)
            i = self.partner.get(i, i)
            if is_block and self.words[i + 1] not in ("else", "catch"):
                return i
            i += 1
        return i

    def is_lambda(self, brace):
        """Whether a body is that of a lambda rather than that of a controlled block."""
        return self.words[brace - 1] == ")" and self.words[self.opening[brace - 1] - 1] == "]"
