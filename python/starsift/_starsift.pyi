# The extension module. Numbers go in as texts, and come out as int, or as text if they are no machine
# integers; starsift/__init__.py has the numbers of Python.
from collections.abc import Callable, Mapping, Sequence

Terms = Sequence[tuple[int, str]]

__version__: str

class Error(ValueError): ...

class Violation:
    part: str
    index: int
    name: str
    amount: int | str

class Verdict:
    is_solution: bool
    violations: list[Violation]
    target_values: list[int | str]
    target_norm: int | str
    slack_norm: int | str

class Solution:
    x: list[int | str]
    target_values: list[int | str]
    target_norm: int | str
    slack_norm: int | str
    seconds: int
    parameters: str
    version: str
    def __init__(self, x: Sequence[str], seconds: int, parameters: str, version: str) -> None: ...

class Progress:
    """How far a search is; tree_share is the part of a tree that is done, None without one."""

    seconds: float
    passes: int
    solutions: int
    tree_share: float | None
    nodes: int

class BasisProfile:
    name: str
    lengths: list[float]

class Result:
    end: str
    proof: str
    is_exact_only: bool
    is_steps_only: bool
    is_unbounded: bool
    verdict: str
    solutions: list[Solution]
    count: int
    best: int | str | None
    bound: int | str | None
    nodes: int
    passes: int
    seconds: float
    seed: int

class Problem:
    variable_count: int
    row_count: int
    target_count: int
    def __init__(self, other: Problem = ...) -> None: ...
    @staticmethod
    def from_opt(opt: str) -> Problem: ...
    @staticmethod
    def read(path: str) -> Problem: ...
    def add_variable(self, lower: str, upper: str, name: str, decimals: int) -> int: ...
    def add_equation(self, row: Terms, value: str, name: str) -> int: ...
    def add_congruence(self, row: Terms, value: str, modulus: str, name: str) -> int: ...
    def add_range(self, row: Terms, lower: str, upper: str, name: str) -> int: ...
    def maximise(self, target: Terms) -> int: ...
    def minimise(self, target: Terms) -> int: ...
    def approach(self, target: Terms, value: str) -> int: ...
    def variable_name(self, variable: int) -> str: ...
    def row_name(self, row: int) -> str: ...
    def to_opt(self) -> str: ...
    def from_sol(self, sol: str) -> list[Solution]: ...
    def to_sol(self, solutions: Sequence[Solution]) -> str: ...
    def check(
        self, points: Sequence[Sequence[object]], text: Callable[[object], str]
    ) -> list[Verdict]: ...
    def search(
        self,
        options: Mapping[str, str],
        known: Sequence[Solution],
        is_stopped: Callable[[], bool] | None,
        on_solution: Callable[[Solution], object] | None,
        on_progress: Callable[[Progress], object] | None,
    ) -> Result: ...
    def profile(
        self, options: Mapping[str, str], is_stopped: Callable[[], bool] | None
    ) -> list[BasisProfile]: ...
