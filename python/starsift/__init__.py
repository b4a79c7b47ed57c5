"""Exact checks of solutions of integer linear problems, and searches for them.

Numbers go in as ``int`` of any size, ``fractions.Fraction``, ``decimal.Decimal``, integers of numpy, or
text such as ``"1/3"``, ``"0.1"`` and ``"inf"``; they come out as ``int`` or ``Fraction``, and as
``math.inf`` for a bound without end. A ``float`` goes in at its exact value, with a warning once.

>>> problem = Problem(lower=[0] * 4, upper=[40] * 4, Ag=[[12, 17, 23, 31]], bg=[1000], maximise=[3, 5, 7, 9])
>>> result = problem.search()
>>> result.solutions[0].x, result.best, result.proof
([1, 4, 40, 0], -303, 'optimum')
>>> problem.check([[0, 1, 36, 6]])[0].violations
[Violation(part='row', index=0, name='g1', amount=31)]
"""

from __future__ import annotations

import html
import itertools
import math
import numbers
import operator
import os
import sys
import warnings
from collections.abc import Callable, Iterable, Mapping, Sequence
from dataclasses import dataclass, field
from decimal import Decimal
from fractions import Fraction
from typing import Any, Protocol, Union

from . import _starsift, figures
from ._starsift import Error, Progress, __version__

__all__ = [
    "BasisProfile", "Error", "FloatWarning", "Problem", "Progress", "Result", "Solution", "Verdict", "Violation",
    "__version__", "read",
]

Error.__module__ = Progress.__module__ = __name__

Exact = Union[int, Fraction]
Number = Union[int, Fraction, Decimal, float, str]


class _Event(Protocol):
    """What ends a search from outside: an Event of threading, multiprocessing or asyncio, or the like."""

    def is_set(self) -> bool: ...


class FloatWarning(UserWarning):
    """A float was taken at its exact value, which is seldom the decimal that was written."""


def _text(value: Any) -> str:
    """The text of a number.

    >>> _text(10**30), _text(Fraction(-7, 2)), _text(Decimal("0.10")), _text("1/3"), _text(-math.inf)
    ('1000000000000000000000000000000', '-7/2', '0.10', '1/3', '-inf')
    """
    if isinstance(value, str):
        return value
    if isinstance(value, bool) or type(value).__name__ in ("bool_", "bool"):
        raise TypeError("a truth value is not a number")
    try:
        return _digits(operator.index(value))
    except TypeError:
        pass
    if isinstance(value, numbers.Rational):
        return f"{_digits(int(value.numerator))}/{_digits(int(value.denominator))}"
    if not isinstance(value, (Decimal, numbers.Real)):
        raise TypeError(f"not an exact number: {value!r}")
    if _is_nan(value):
        raise Error("nan is not a number")
    if value in (math.inf, -math.inf):
        return "inf" if value > 0 else "-inf"
    return str(value) if isinstance(value, Decimal) else _float_text(value)


def _is_nan(value: Decimal | numbers.Real) -> bool:
    return value.is_nan() if isinstance(value, Decimal) else value != value


def _float_text(value: numbers.Real) -> str:
    """Of a float of any width: one that is wider than that of Python tells its ratio itself."""
    given = value if hasattr(value, "as_integer_ratio") else float(value)
    if given != value:
        raise TypeError(f"not an exact number: {value!r}")
    numerator, denominator = given.as_integer_ratio()
    _warn_of_floats()
    return f"{_digits(numerator)}/{_digits(denominator)}"


#: Python refuses to read or write longer integers as text, but Decimal doesn't.
_SHORT_DIGITS = 600


def _digits(value: int) -> str:
    return str(value) if value.bit_length() < 3 * _SHORT_DIGITS else format(Decimal(value), "f")


def _integer(text: str) -> int:
    return int(text) if len(text) < _SHORT_DIGITS else int(Decimal(text))


_has_warned = False


def _warn_of_floats() -> None:
    global _has_warned
    if not _has_warned:
        warnings.warn(
            "a float is taken at its exact value: 0.1 is not 1/10; write Fraction, Decimal or text",
            FloatWarning, stacklevel=_frames_inside(),
        )
        # Where the warning is an error, each float is one.
        _has_warned = True


def _frames_inside() -> int:
    """The level of the first frame outside this module, as warn() counts for its caller."""
    level, frame = 1, sys._getframe(1)
    while frame.f_back is not None and frame.f_globals.get("__name__") == __name__:
        level, frame = level + 1, frame.f_back
    return level


def _list(values: Iterable) -> list:
    """The entries of a row or point. A text has some too, but isn't meant so."""
    if isinstance(values, (str, bytes)):
        raise TypeError(f"a list of numbers, not the text {values!r}")
    if isinstance(values, numbers.Number):
        raise TypeError(f"a list of numbers, not {values!r} alone")
    return values.tolist() if _holds_integers(values) else list(values)


def _holds_integers(values: Any) -> bool:
    """Whether it is an array of numpy that gives integers of Python at once, not one by one."""
    kind = getattr(getattr(values, "dtype", None), "kind", "")
    return kind in ("i", "u") and getattr(values, "ndim", 0) > 0


def _rows(name: str, matrix: Iterable) -> list:
    rows = _list(matrix)
    if any(isinstance(row, numbers.Number) for row in rows):
        raise TypeError(f"{name} is a list of rows, not of numbers: {name}=[[1, 2]] has one row")
    return rows


def _whole(what: str, value: Any) -> int:
    """An integer of any type.

    >>> _whole("seconds", 1.5)
    Traceback (most recent call last):
    ...
    TypeError: seconds: an integer, not 1.5
    """
    try:
        return operator.index(value)
    except TypeError:
        raise TypeError(f"{what}: an integer, not {value!r}") from None


def _index(kind: str, value: Any) -> int:
    """An index that the library can look at: it says of those that are too large what they are in."""
    index = _whole(f"the index of a {kind}", value)
    if not 0 <= index <= sys.maxsize:
        raise Error(f"there is no {kind} {index}")
    return index


def _seconds(limit: Any) -> int:
    """A limit in whole seconds, none of which is cut off.

    >>> _seconds(60), _seconds(0.5), _seconds(Fraction(7, 2))
    (60, 1, 4)
    """
    if isinstance(limit, bool) or not isinstance(limit, (Decimal, numbers.Real)):
        raise TypeError(f"time is a number of seconds, not {limit!r}")
    if _is_nan(limit) or not 0 <= limit < math.inf:
        raise Error(f"time is a finite number of seconds from 0 on, not {limit}")
    return math.ceil(limit)


def _stopped(stop: Any) -> Callable[[], bool] | None:
    """The question whether to stop.

    >>> _stopped(True)
    Traceback (most recent call last):
    ...
    TypeError: stop is an event with is_set(), not True
    """
    if stop is None:
        return None
    if not callable(getattr(stop, "is_set", None)):
        raise TypeError(f"stop is an event with is_set(), not {stop!r}")
    return lambda: bool(stop.is_set())


def _name(value: Any) -> str:
    if not isinstance(value, str):
        raise TypeError(f"a name is a text, not {value!r}")
    return value


def _number(text: int | str) -> Any:
    """An int, a Fraction, or an infinity, of what the extension module gives.

    >>> _number("-12"), _number("7/2"), _number("inf")
    (-12, Fraction(7, 2), inf)
    """
    if isinstance(text, int):
        return text
    if text.endswith("inf"):
        return math.inf if text == "inf" else -math.inf
    if "/" in text:
        return Fraction(*map(_integer, text.split("/")))
    return _integer(text)


def _numbers(texts: Iterable[int | str]) -> list:
    return [_number(text) for text in texts]


@dataclass(frozen=True)
class Violation:
    """What a point breaks: a "row", "lower bound", "upper bound" or "step", and by how much."""

    part: str
    index: int
    name: str
    amount: Exact


@dataclass(frozen=True)
class Verdict:
    """The exact judgement of a point.

    ``is_solution`` says whether rows and bounds hold as starsift sees it: equations within 1e-9, and
    congruences if the value isn't short of a multiple, all else exactly. ``violations`` has steps too,
    the largest amount first. Values and norms are those of a solution.
    """

    is_solution: bool
    violations: list[Violation]
    target_values: list[Exact]
    target_norm: Exact
    slack_norm: Exact

    @property
    def is_right(self) -> bool:
        """Nothing is broken, not even a step."""
        return not self.violations


@dataclass(frozen=True)
class Solution:
    """A point and what is known of it: one record of a .sol file."""

    x: list[Exact]
    target_values: list[Exact] = field(default_factory=list)
    target_norm: Exact = 0
    slack_norm: Exact = 0
    #: Seconds from the start of the search until it was found; -1 if that isn't known.
    seconds: int = -1
    parameters: str = ""
    version: str = ""


@dataclass(frozen=True)
class BasisProfile:
    """A basis of the complete search: "before" any reduction, after "LLL" or "blocks of 20".

    ``lengths`` are logarithms to base 10 of the lengths of its Gram-Schmidt vectors, in the scaling in
    which the box of the variables and rows is a cube of side 1.
    """

    name: str
    lengths: list[float]


class _History:
    """Moments of a search, at most 1,000 at equal distances however long it takes."""

    LIMIT = 1000

    def __init__(self) -> None:
        self.moments: list[Progress] = []
        self._stride = 1
        self._calls = 0

    def add(self, moment: Progress) -> None:
        self._calls += 1
        if self._calls % self._stride:
            return
        self.moments.append(moment)
        if len(self.moments) == self.LIMIT:
            del self.moments[::2]
            self._stride *= 2


@dataclass(frozen=True)
class Result:
    """What a search has found and proved.

    ``end`` is "goal", "passes", "time", "fruitless", "stopped", "decided" or "overflow", ``proof`` is
    "none", "infeasible", "all found" or "optimum", and ``verdict`` says it in words. With
    ``is_exact_only`` there may be solutions that hold within the tolerance of an equation only, with
    ``is_steps_only`` solutions between the steps of variables that have decimals. In a notebook a
    result shows its solutions as a table.
    """

    end: str
    proof: str
    verdict: str
    #: Each point once, the best first.
    solutions: list[Solution]
    #: All solutions there are, if proof is "all found".
    count: int
    #: The least target norm found, and one that no solution falls below; None if unknown.
    best: Exact | None
    bound: Exact | None
    is_exact_only: bool
    is_steps_only: bool
    is_unbounded: bool
    nodes: int
    passes: int
    seconds: float
    seed: int
    #: Some moments of the search, at most 1,000.
    history: list[Progress] = field(default_factory=list, repr=False)

    def plot(self, ax=None):
        """Solutions and nodes over time as a figure; needs matplotlib.

        Drawn into the axes given, else into those of a new figure; returns them.
        """
        return figures.draw_search(self, ax)

    def to_pandas(self):
        """A DataFrame with a row for each solution; needs pandas."""
        import pandas

        return pandas.DataFrame([_row(solution) for solution in self.solutions], dtype=object)

    #: Rows of the table in a notebook.
    _TABLE_ROWS = 100

    def _repr_html_(self) -> str:
        rows = [_row(solution) for solution in self.solutions[: self._TABLE_ROWS]]
        head = "".join(f"<th>{name}</th>" for name in (rows[0] if rows else ()))
        body = "".join(
            "<tr>" + "".join(f"<td>{html.escape(str(value))}</td>" for value in row.values()) + "</tr>"
            for row in rows
        )
        more = len(self.solutions) - len(rows)
        end = f"<p>and {more} more</p>" if more else ""
        return f"<p>{html.escape(self.verdict)}</p><table><tr>{head}</tr>{body}</table>{end}"


def _row(solution: Solution) -> dict:
    row: dict = {"target norm": solution.target_norm, "slack norm": solution.slack_norm}
    row.update({f"x{j}": value for j, value in enumerate(solution.x, 1)})
    return row


def _solution(given: _starsift.Solution) -> Solution:
    return Solution(
        _numbers(given.x), _numbers(given.target_values), _number(given.target_norm),
        _number(given.slack_norm), given.seconds, given.parameters, given.version,
    )


def _verdict(given: _starsift.Verdict) -> Verdict:
    return Verdict(
        given.is_solution,
        [Violation(v.part, v.index, v.name, _number(v.amount)) for v in given.violations],
        _numbers(given.target_values), _number(given.target_norm), _number(given.slack_norm),
    )


def _given(solutions: Iterable[Solution]) -> list[_starsift.Solution]:
    return [_record(solution) for solution in solutions]


def _record(solution: Solution) -> _starsift.Solution:
    if not isinstance(solution, Solution):
        raise TypeError(f"a Solution, not {solution!r}")
    return _starsift.Solution(
        [_text(value) for value in _list(solution.x)], _whole("seconds", solution.seconds),
        solution.parameters, solution.version,
    )


def _result(given: _starsift.Result, history: list[Progress]) -> Result:
    return Result(
        end=given.end, proof=given.proof, verdict=given.verdict,
        solutions=[_solution(solution) for solution in given.solutions], count=given.count,
        best=None if given.best is None else _number(given.best),
        bound=None if given.bound is None else _number(given.bound),
        is_exact_only=given.is_exact_only, is_steps_only=given.is_steps_only,
        is_unbounded=given.is_unbounded, nodes=given.nodes,
        passes=given.passes, seconds=given.seconds, seed=given.seed, history=history,
    )


def _option(value: Any) -> str:
    return str(int(value)) if isinstance(value, bool) else _text(value)


def _options(options: Mapping[str, Any]) -> dict[str, str]:
    return {name: _option(value) for name, value in options.items()}


class Problem:
    """A problem: variables, rows that must hold, and targets.

    Built from matrices, whose names are those of .opt files: ``Ag x = bg`` (congruent modulo ``qg``, 0
    for a plain equation), ``lu <= Au x <= ru``, ``lower <= x <= upper`` in steps of ``10**-decimals``,
    and one row to ``maximise`` or ``minimise``; and then, or instead, variable by variable and row by
    row. A row is a sequence with one coefficient for each variable, or a mapping of indices, from 0
    on, to coefficients. What is added gets an index from 0 on, which is returned.

    >>> problem = Problem()
    >>> tea, rice = problem.add_variable(0, 9, name="tea"), problem.add_variable(0, 9)
    >>> problem.add_equation([2, Fraction(1, 2)], 5, name="weight")
    0
    >>> problem.add_range({rice: 1}, upper=4)
    1
    >>> problem.variable_name(1), problem.row_name(1)
    ('x2', 'u1')
    >>> [solution.x for solution in problem.search(sol=0).solutions]
    [[2, 2]]
    >>> problem.add_equation([1, 2, 3], 4)
    Traceback (most recent call last):
    ...
    starsift.Error: 3 coefficients for 2 variables
    """

    def __init__(
        self, *, lower: Iterable[Number] = (), upper: Iterable[Number] = (),
        decimals: Iterable[int] | None = None, names: Iterable[str] | None = None,
        Ag: Iterable = (), bg: Iterable[Number] = (), qg: Iterable[Number] | None = None,
        Au: Iterable = (), lu: Iterable[Number] = (), ru: Iterable[Number] = (),
        maximise: Any = None, minimise: Any = None,
    ) -> None:
        self._inner = _starsift.Problem()
        lower, upper = _list(lower), _list(upper)
        places = itertools.repeat(0) if decimals is None else _list(decimals)
        called = itertools.repeat("") if names is None else list(names)
        for bounds in _together(lower=lower, upper=upper, names=called, decimals=places):
            self.add_variable(bounds[0], bounds[1], name=bounds[2], decimals=bounds[3])
        moduli = itertools.repeat(0) if qg is None else _list(qg)
        for row, value, modulus in _together(Ag=_rows("Ag", Ag), bg=_list(bg), qg=moduli):
            if _is_zero(modulus):
                self.add_equation(row, value)
            else:
                self.add_congruence(row, value, modulus)
        for row, least, most in _together(Au=_rows("Au", Au), lu=_list(lu), ru=_list(ru)):
            self.add_range(row, least, most)
        if maximise is not None:
            self.maximise(maximise)
        if minimise is not None:
            self.minimise(minimise)

    @staticmethod
    def from_opt(text: str) -> Problem:
        """The problem of the text of a .opt file."""
        problem = Problem()
        problem._inner = _starsift.Problem.from_opt(text)
        return problem

    def to_opt(self) -> str:
        """The text of a .opt file, which has no names."""
        return self._inner.to_opt()

    def add_variable(
        self, lower: Number = 0, upper: Number = math.inf, *, name: str = "", decimals: int = 0
    ) -> int:
        """Adds a variable with its bounds, in steps of 10**-decimals."""
        return self._inner.add_variable(_text(lower), _text(upper), _name(name), _whole("decimals", decimals))

    def add_equation(self, row: Any, value: Number, *, name: str = "") -> int:
        """Adds ``row x = value``."""
        return self._inner.add_equation(self._terms(row), _text(value), _name(name))

    def add_congruence(self, row: Any, value: Number, modulus: Number, *, name: str = "") -> int:
        """Adds ``row x = value`` modulo ``modulus``."""
        return self._inner.add_congruence(self._terms(row), _text(value), _text(modulus), _name(name))

    def add_range(
        self, row: Any, lower: Number = -math.inf, upper: Number = math.inf, *, name: str = ""
    ) -> int:
        """Adds ``lower <= row x <= upper``; one of them may be infinite."""
        return self._inner.add_range(self._terms(row), _text(lower), _text(upper), _name(name))

    def maximise(self, target: Any) -> int:
        """Adds a target that should be large."""
        return self._inner.maximise(self._terms(target))

    def minimise(self, target: Any) -> int:
        """Adds a target that should be small."""
        return self._inner.minimise(self._terms(target))

    def approach(self, target: Any, value: Number) -> int:
        """Adds a target that should come close to a value."""
        return self._inner.approach(self._terms(target), _text(value))

    @property
    def variable_count(self) -> int:
        """Number of variables."""
        return self._inner.variable_count

    @property
    def row_count(self) -> int:
        """Number of equations, congruences and ranges."""
        return self._inner.row_count

    @property
    def target_count(self) -> int:
        """Number of targets."""
        return self._inner.target_count

    def variable_name(self, variable: int) -> str:
        """The name given, or x1, x2, ..."""
        return self._inner.variable_name(_index("variable", variable))

    def row_name(self, row: int) -> str:
        """The name given, or g1, g2, ... for equations and congruences, u1, u2, ... for ranges."""
        return self._inner.row_name(_index("row", row))

    def check(self, points: Iterable[Iterable[Number]]) -> list[Verdict]:
        """The exact verdict on each point.

        >>> problem = Problem(lower=[0], upper=[5], Au=[[2]], lu=[3], ru=[7])
        >>> [verdict.is_right for verdict in problem.check([[1], [2], ["5/2"]])]
        [False, True, False]
        """
        given = [point if isinstance(point, (list, tuple)) else _list(point) for point in points]
        return [_verdict(verdict) for verdict in self._inner.check(given, _text)]

    def search(
        self, *, time: float | Fraction | Decimal | None = None,
        known: Iterable[Solution] = (),
        on_solution: Callable[[Solution], object] | None = None,
        on_progress: Callable[[Progress], object] | None = None,
        stop: _Event | None = None, **options: Any,
    ) -> Result:
        """Searches for solutions, as the command starseek does.

        Options have the names of the command: ``sol=0`` asks for all solutions, ``sol=5`` for five;
        without it the best is looked for if there is a target. ``time`` is a limit in
        seconds, rounded up to whole ones; 0 is none.
        ``known`` are solutions of an earlier search or of a file: the right ones are among those of
        the result, and a best one is looked for among the better ones.
        ``on_solution`` is called for each new solution, ``on_progress`` some times a second; an
        exception of theirs ends the search. Ctrl-C ends a search of the main thread with what it
        has, also in these calls, and ``stop`` one of any thread: an Event, which is looked at as often as
        ``on_progress`` is called. Other threads of the interpreter run meanwhile, and may search too.

        >>> problem = Problem(lower=[0], upper=[999], Ag=[[1], [1], [1]], bg=[2, 3, 2], qg=[3, 5, 7])
        >>> result = problem.search(sol=0, time=60)
        >>> sorted(solution.x[0] for solution in result.solutions)
        [23, 128, 233, 338, 443, 548, 653, 758, 863, 968]
        >>> result.proof
        'all found'
        """
        if time is not None:
            options["rtime"] = _seconds(time)
        told = None if on_solution is None else lambda solution: on_solution(_solution(solution))
        history = _History()

        def watch(moment: Progress) -> None:
            history.add(moment)
            if on_progress is not None:
                on_progress(moment)

        result = self._inner.search(_options(options), _given(known), _stopped(stop), told, watch)
        return _result(result, history.moments)

    def profile(self, *, stop: _Event | None = None, **options: Any) -> list[BasisProfile]:
        """What reductions make of the basis of the complete search, with options as of search().

        ``beta`` says up to which size blocks are reduced. Empty if there is no lattice in a finite
        box. Ctrl-C and ``stop`` end it with the bases there are.

        >>> problem = Problem(lower=[0] * 4, upper=[40] * 4, Ag=[[12, 17, 23, 31]], bg=[1000])
        >>> [(basis.name, len(basis.lengths)) for basis in problem.profile()]
        [('before', 3), ('LLL', 3), ('blocks of 3', 3)]
        """
        bases = self._inner.profile(_options(options), _stopped(stop))
        return [BasisProfile(basis.name, basis.lengths) for basis in bases]

    def plot_profile(self, ax=None, **options: Any):
        """The bases of profile() as a figure; needs matplotlib.

        Drawn into the axes given, else into those of a new figure; returns them.
        """
        return figures.draw_profile(self.profile(**options), ax)

    def from_sol(self, text: str) -> list[Solution]:
        """The records of the text of a .sol file, right or wrong."""
        return [_solution(solution) for solution in self._inner.from_sol(text)]

    def to_sol(self, solutions: Iterable[Solution]) -> str:
        """The text that starsift would leave in the file: wrong and double ones are dropped.

        >>> problem = Problem(lower=[0, 0], upper=[5, 5], Ag=[[1, 2]], bg=[7])
        >>> problem.to_sol([Solution([3, 2]), Solution([1, 1]), Solution([3, 2])])
        '[ 3 2 ] | 0 | [ ] | 0 | -1 | \\n'
        """
        return self._inner.to_sol(_given(solutions))

    def __copy__(self) -> Problem:
        copy = Problem()
        copy._inner = _starsift.Problem(self._inner)
        return copy

    def __deepcopy__(self, _memo: dict) -> Problem:
        return self.__copy__()

    def __repr__(self) -> str:
        return (
            f"<starsift.Problem: {self.variable_count} variables, {self.row_count} rows, "
            f"{self.target_count} targets>"
        )

    def _terms(self, row: Any) -> list[tuple[int, str]]:
        if isinstance(row, Mapping):
            return [(_index("variable", j), _text(value)) for j, value in row.items()]
        values = _list(row)
        if len(values) != self.variable_count:
            raise Error(f"{len(values)} coefficients for {self.variable_count} variables")
        return [(j, _text(value)) for j, value in enumerate(values)]


def _is_zero(value: Any) -> bool:
    """Whether it is the number 0. Of what is no number, or infinite, the library says so.

    >>> _is_zero(Decimal("0.0")), _is_zero("0/3"), _is_zero("inf"), _is_zero("1/0")
    (True, True, False, False)
    """
    try:
        return Fraction(_text(value)) == 0
    except (ValueError, ZeroDivisionError):
        return False


def _together(**columns: Iterable) -> Iterable[tuple]:
    """Columns that aren't lists repeat what holds where none is given."""
    lengths = {name: len(column) for name, column in columns.items() if isinstance(column, list)}
    if len(set(lengths.values())) > 1:
        told = ", ".join(f"{name} {length}" for name, length in lengths.items())
        raise Error(f"lists of different lengths: {told}")
    return zip(*columns.values())


def read(path: str | os.PathLike) -> Problem:
    """The problem of a .opt file.

    >>> read("missing.opt")
    Traceback (most recent call last):
    ...
    starsift.Error: Could not read opt file: missing.opt
    """
    problem = Problem()
    problem._inner = _starsift.Problem.read(os.fspath(path))
    return problem
