"""A row of the table: a figure, its peer or floor of the same run, and the goal."""

import dataclasses
import statistics


@dataclasses.dataclass
class Row:
    """A figure beside its peer. Goal, reach (a better goal) and known are shares of the peer; without a peer, limits of the figure."""

    what: str
    figure: float
    beside: str
    peer: float | None
    goal: float
    reach: float | None = None
    # The lower and the upper quartile of the pairs' shares or differences, if measured in pairs. A goal is missed only if three quarters of
    # the pairs miss it.
    quartiles: tuple[float, float] | None = None
    # The limit that replaces a goal that is known to be missed; docs/performance.md says why. The run fails only beyond this limit.
    known: float | None = None

    @property
    def share(self):
        return self.figure if self.peer is None else self.figure / self.peer

    @property
    def judged(self):
        return self.quartiles[0] if self.quartiles else self.share

    @property
    def is_missed(self):
        return self.judged > self.goal

    @property
    def fails(self):
        return self.judged > max(self.goal, self.known or self.goal)

    @property
    def verdict(self):
        if self.is_missed:
            return "MISSED" if self.fails else "missed, as known"
        return "reached" if self.reach is not None and self.share <= self.reach else "met"

    def cells(self):
        def limit(value):
            return "" if value is None else f"{value:,}" if self.peer is None else f"{value:.1%}"

        peer = "" if self.peer is None else f"{self.peer:,.0f}"
        share = "" if self.peer is None else f"{self.share:.1%}"
        if self.quartiles:
            share += (" ({:,.0f} to {:,.0f})" if self.peer is None else " ({:.1%} to {:.1%})").format(*self.quartiles)
        return [self.what, f"{self.figure:,.0f}", self.beside, peer, share, limit(self.goal), limit(self.reach), self.verdict]

    def record(self):
        return dataclasses.asdict(self) | {"share": self.share, "verdict": self.verdict}


def row_of_pairs(what, beside, pairs, goal, reach=None, known=None):
    figure = statistics.median(own for own, _ in pairs)
    low, share, high = statistics.quantiles(own / peer for own, peer in pairs)
    return Row(what, figure, beside, figure / share, goal, reach, (low, high), known)


def row_of_differences(what, pairs, goal):
    low, difference, high = statistics.quantiles(own - peer for own, peer in pairs)
    return Row(what, difference, "", None, goal, None, (low, high))


def row_of_minima(what, beside, pairs, goal, reach=None, known=None):
    """For figures that other programs can only increase, such as processor time: compares the least of each side."""
    own, peer = (min(side) for side in zip(*pairs))
    return Row(what, own, beside, peer, goal, reach, None, known)
