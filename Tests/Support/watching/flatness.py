"""Tells a figure that stays from one that grows."""

import statistics

WARMING = 0.2  # the share of a run that is not judged: what is made once is made then


def judged(points):
    """The points (x, y) behind the beginning."""
    first, last = points[0][0], points[-1][0]
    return [point for point in points if point[0] >= first + (last - first) * WARMING]


def slope(points):
    """The median of the slopes between any two points: a few that lie far off do not bend it (Theil and Sen)."""
    slopes = [(y2 - y1) / (x2 - x1)
              for i, (x1, y1) in enumerate(points) for x2, y2 in points[i + 1:] if x2 != x1]
    return statistics.median(slopes) if slopes else 0.0


def growth(points):
    """By how much the figure grew while it was judged, by its slope."""
    points = judged(points)
    return slope(points) * (points[-1][0] - points[0][0])


def halves(points):
    """The medians of both halves of what is judged."""
    values = [y for _, y in judged(points)]
    middle = max(1, len(values) // 2)
    return statistics.median(values[:middle]), statistics.median(values[-middle:])


class Most:
    """What a figure may be at most."""

    def __init__(self, most):
        self.most = most

    def allowed(self, _):
        return "at most %d" % self.most

    def problem(self, name, points):
        """Why that figure is not right; None when it is."""
        worst = max(y for _, y in points)
        return None if worst <= self.most else "%s: %d, and at most %d are needed" % (name, worst, self.most)


class Growth:
    """What a figure may grow by: a fixed part, which covers how much it varies anyway, and a part for each step."""

    def __init__(self, fixed, per_step=0.0):
        self.fixed = fixed
        self.per_step = per_step

    def _most(self, points):
        points = judged(points)
        return self.fixed + self.per_step * (points[-1][0] - points[0][0])

    def allowed(self, points):
        return "growth up to %.0f" % self._most(points)

    def problem(self, name, points):
        """Why that figure is not flat; None when it is."""
        if len(judged(points)) < 4:
            return "%s: too few samples to judge" % name
        grown, allowed = growth(points), self._most(points)
        if grown <= allowed:
            return None
        return "%s grew by %.0f (allowed %.0f)" % (name, grown, allowed)
