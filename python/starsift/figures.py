"""Figures of reductions and searches, drawn with matplotlib."""

from __future__ import annotations

from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from . import BasisProfile, Result


def _axes(ax):
    if ax is not None:
        return ax
    from matplotlib import pyplot

    return pyplot.subplots()[1]


def draw_profile(bases: list[BasisProfile], ax=None):
    """Draws the lengths of the Gram-Schmidt vectors of each basis, and returns the axes."""
    ax = _axes(ax)
    for basis in bases:
        ax.plot(range(1, len(basis.lengths) + 1), basis.lengths, marker=".", label=basis.name)
    ax.set_xlabel("row of the basis")
    ax.set_ylabel("log10 of the Gram-Schmidt length")
    if bases:
        ax.legend()
    return ax


def draw_search(result: Result, ax=None):
    """Draws the solutions and, if there are any, the nodes of a tree over time; returns the axes."""
    ax = _axes(ax)
    seconds = [0.0] + [moment.seconds for moment in result.history] + [result.seconds]
    solutions = [0] + [moment.solutions for moment in result.history] + [len(result.solutions)]
    nodes = [0] + [moment.nodes for moment in result.history] + [result.nodes]
    lines = ax.step(seconds, solutions, where="post", label="solutions")
    ax.set_xlabel("seconds")
    ax.set_ylabel("solutions")
    ax.set_ylim(0, 1.05 * max(*solutions, 1))
    if any(nodes):
        beside = ax.twinx()
        lines += beside.plot(seconds, nodes, color="tab:orange", label="nodes")
        beside.set_ylabel("nodes")
        beside.set_ylim(bottom=0)
    ax.legend(handles=lines, loc="upper left")
    return ax
