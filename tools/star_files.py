"""Reads problem and solution files for star-check, independently of the program.

Numbers become Fractions or the two float infinities. What ends the program with a report raises
Unusable here.
"""

import functools
import math
import re
import sys
from dataclasses import dataclass, field
from fractions import Fraction

sys.set_int_max_str_digits(0)  # stars may have numbers of any length
INF = math.inf
BLANKS = " \t\r\n"
TRIMMED = " \t\n\r\f\v"


class Unusable(Exception):
    """The input ends the command with a report, so that there is no result to check."""


def integer(text):
    """Base by prefix: a leading zero means octal, 0x and 0b do not occur in these files."""
    if not re.fullmatch(r"-?(0[0-7]*|[1-9][0-9]*)", text):
        raise Unusable(f"no integer: {text[:40]!r}")
    return int(text, 8 if text.lstrip("-").startswith("0") else 10)


def plain_number(token):
    """Value of a token without exponent: integer, fraction, decimal, mixed form or infinity.

    A decimal or mixed form is an integer part and a tail that is a number again. The tails are
    walked in a loop, as a token may be long, and joined from the last one backwards.
    """
    heads, at = [], 0
    while True:
        sign = -1 if token.startswith("-", at) else 1
        at += token.startswith(("+", "-"), at)
        found = re.compile(r"[,./:]").search(token, at)
        if at == len(token) or (not found and token[at] == "-" and integer(token[at:])):
            raise Unusable("no number")
        if not found or found[0] == "/":
            break
        head = integer(token[at : found.start()])
        if head < 0:
            raise Unusable("stray sign")
        at = re.compile("0*").match(token, found.end()).end()
        heads.append((sign, head, found[0], at - found.end()))
    if found:
        denominator = integer(token[found.end() :])
        if denominator == 0:
            raise Unusable("division by zero")
        value = sign * Fraction(integer(token[at : found.start()]), denominator)
    else:
        value = sign * (INF if token.startswith("inf", at) else Fraction(integer(token[at:])))
    for sign, head, separator, zeros in reversed(heads):
        if separator == ":":
            if zeros or not 0 <= value < 1:
                raise Unusable("malformed mixed form")
            value = sign * (head + value)
        else:  # only the integer part of the tail counts; that of an infinity is 1
            digits = "1" if abs(value) == INF else str(math.floor(abs(value))).rstrip("0") or "0"
            value = sign * (head + Fraction(int(digits), 10 ** (len(digits) + zeros)))
    return value


@functools.lru_cache(maxsize=1024)
def number(token):
    """Value of a token, which may end in a power of ten. Most files repeat few."""
    mantissa, letter, exponent = token.replace("E", "e").partition("e")
    value = plain_number(mantissa)
    if not letter:
        return value
    sign = -1 if exponent.startswith("-") else 1
    exponent = exponent[exponent[:1] in ("+", "-") :].lstrip("0")
    power = sign * number(exponent) if exponent else Fraction(0)
    if abs(power) > 100000 or power.denominator != 1:
        raise Unusable("exponent")
    return value * Fraction(10) ** int(power)


class Reader:
    """Walks over a text; number_letters are those that a number may hold, no letters of inf."""

    def __init__(self, text, number_letters=""):
        self.text, self.at = text, 0
        # A stroke belongs to the number unless it opens a comment.
        self.token = re.compile(rf"(?:(?!//|/\*)[0-9+,./:\-{number_letters}])*")

    def sees(self, text):
        return self.text.startswith(text, self.at)

    def take(self, text):
        found = self.sees(text)
        self.at += len(text) if found else 0
        return found

    def skip(self, comments=True, end=None):
        """White space, and comments that end before `end` (anywhere when it is None)."""
        blanks = BLANKS if end is None else " \t\r"
        while self.at < len(self.text):
            closing = -1
            if self.text[self.at] in blanks:
                closing = self.at + 1
            elif comments and self.sees("//"):
                closing = self.line_end()
            elif comments and self.sees("/*"):
                closing = self.text.find("*/", self.at + 2) + 2
                if closing < 2 and end is None:
                    raise Unusable("comment is not closed")
            if closing <= self.at or (end is not None and closing > end):
                return
            self.at = closing

    def number(self):
        """(token, value)"""
        self.skip()
        token = self.token.match(self.text, self.at)[0]
        self.at += len(token)
        if self.take("inf"):
            token += "inf"
        elif self.take("i"):
            self.take("n")
        return token, number(token)

    def vector(self):
        """Pairs (token, value); none where no bracket stands."""
        entries = []
        self.skip()
        if not self.take("["):
            return entries
        self.skip()
        while not self.take("]"):
            minus = self.take("-")
            if self.sees("i"):
                if not self.take("inf"):
                    raise Unusable("vector: bad infinity")
                token, value = "inf", INF
            else:
                token, value = self.number()
            entries.append(("-" * minus + token, -value if minus else value))
            self.skip()
        return entries

    def values(self):
        return [value for _, value in self.vector()]

    def matrix(self):
        rows = []
        self.skip()
        if not self.take("["):
            return rows
        self.skip()
        while not self.take("]"):
            if not self.sees("["):
                raise Unusable("matrix: a row is due")
            rows.append(self.values())
            self.skip()
        width = max(map(len, rows), default=0)
        return [row + [Fraction(0)] * (width - len(row)) for row in rows] if width else []

    def rest_of_line(self):
        start, self.at = self.at, self.line_end()
        return self.text[start : self.at]

    def line_end(self):
        end = self.text.find("\n", self.at)
        return len(self.text) if end < 0 else end


class Problem:
    def __init__(self, text):
        reader = Reader(text)
        self.goals = reader.values()
        reader.skip()
        if reader.take("="):
            reader.values()  # thresholds have no part in the check
        self.targets = reader.matrix()
        self.equations, self.right_sides = reader.matrix(), reader.values()
        self.moduli = reader.values()
        self.rows, self.row_low, self.row_high = reader.matrix(), reader.values(), reader.values()
        reader.values()  # decimals of the variables
        self.low, self.high = reader.values(), reader.values()


@dataclass
class Star:
    x: list = field(default_factory=list)
    target_norm: tuple = ("0", Fraction(0))
    values: list = field(default_factory=list)
    slack_norm: tuple = ("0", Fraction(0))
    time: int = -1
    parameters: str = ""
    version: str = ""

    def key(self):
        return tuple(value for _, value in self.x), self.parameters

    def rank(self):
        return self.target_norm[1], self.slack_norm[1], self.time == -1, self.time


def bar(reader, comments=False):
    """Takes a separator; where there is none nothing is taken."""
    start = reader.at
    reader.skip(comments)
    found = reader.take("|")
    reader.at = reader.at if found else start
    return found


def read_star(reader):
    """The next record; a malformed one has an empty vector."""
    star = Star(reader.vector())
    if not bar(reader):
        if not star.x:
            raise Unusable("text that is no star")
        return star
    star.target_norm = reader.number()
    bar(reader)
    star.values = reader.vector()
    bar(reader)
    star.slack_norm = reader.number()
    bar(reader)
    reader.skip()
    token = re.compile(r"[^ \t\r\n|]*").match(reader.text, reader.at)[0]
    reader.at += len(token)
    # int() of many digits takes the square of their number.
    if not re.fullmatch(r"[+-]?0*[0-9]{1,19}", token) or not -(2**63) <= int(token) < 2**63:
        reader.rest_of_line()
        return Star()
    star.time = max(int(token), -1)
    bar(reader, comments=True)
    reader.skip(end=reader.line_end())
    texts = reader.rest_of_line().split("|")
    texts = texts[:-1] if texts[-1] == "" else texts
    star.parameters = texts[0].strip(TRIMMED) if texts else ""
    star.version = texts[1].strip(TRIMMED) if len(texts) == 2 else ""
    return star


def read_stars(text):
    reader = Reader(text, "eE")
    stars = []
    reader.skip()
    while reader.at < len(text):
        star = read_star(reader)
        stars += [star] if star.x else []
        reader.skip()
    return stars
