"""What beside_peers.py has measured, as tables in Markdown and as a plot of growth in SVG."""

import math

# Key, title, unit, factor to it.
FIGURES = (
    ("start", "Start all, to the last agent alive", "s", 1),
    ("quit", "End all, to the last agent gone", "s", 1),
    ("restart", "Restart all, without the required pauses", "s", 1),
    ("list", "List the fleet", "ms", 1000),
    ("idle", "Processor time of 30 s of idling", "ms", 1),
    ("memory", "Memory of all that looks after the fleet (PSS)", "MB", 1),
    ("launch", "The program: from its start to the last agent alive", "s", 1),
    ("quit_program", "The program: from SIGTERM to its end", "s", 1),
    ("memory_of_program", "The program alone: memory (PSS)", "MB", 1),
)


def shown(value):
    if value is None:
        return "–"
    return f"{value:.0f}" if value >= 100 else f"{value:.3g}"


def table(results):
    sizes = sorted({figures["agents"] for each in results.values() for figures in each})
    lines = []
    for key, title, unit, factor in FIGURES:
        rows = []
        for name, each in results.items():
            at = {figures["agents"]: figures.get(key) for figures in each}
            if any(value is not None for value in at.values()):
                cells = [shown(at[size] * factor if at.get(size) is not None else None) for size in sizes]
                rows.append(f"| {name} | " + " | ".join(cells) + " |")
        if rows:
            lines += [f"**{title}**, {unit}", "", "| agents | " + " | ".join(map(str, sizes)) + " |",
                      "|---|" + "---|" * len(sizes), *rows, ""]
    return "\n".join(lines)


WIDTH, HEIGHT, MARGIN, KEY = 430, 310, 60, 190  # whatever the letters: fonts differ
COLOURS = ("#c0392b", "#e08e2b", "#7f8c8d", "#2471a3", "#16a085", "#8e44ad", "#2e7d32", "#5d4037")


def _scale(values, low, high):
    first, last = math.log10(min(values)), math.log10(max(values))
    span = (last - first) or 1
    return lambda value: low + (math.log10(value) - first) / span * (high - low)


def _ticks(values):
    first, last = math.floor(math.log10(min(values))), math.ceil(math.log10(max(values)))
    return [10.0 ** power for power in range(first, last + 1)]


def _panel(results, key, title, left):
    points = {name: [(one["agents"], one[key]) for one in each if one.get(key)]
              for name, each in results.items()}
    sizes = sorted({x for line in points.values() for x, _ in line})
    heights = _ticks([y for line in points.values() for _, y in line])
    place_x = _scale(sizes, left + MARGIN, left + WIDTH - 10)
    place_y = _scale(heights, HEIGHT - MARGIN, 34)
    out = [f'<text x="{left + MARGIN}" y="20" font-weight="bold">{title}</text>']
    for y in heights:
        out.append(f'<line x1="{left + MARGIN}" x2="{left + WIDTH - 10}" y1="{place_y(y):.1f}" '
                   f'y2="{place_y(y):.1f}" stroke="#ccc"/>'
                   f'<text x="{left + MARGIN - 6}" y="{place_y(y) + 4:.1f}" text-anchor="end">{y:g} s</text>')
    for x in sizes:
        out.append(f'<text x="{place_x(x):.1f}" y="{HEIGHT - MARGIN + 18}" text-anchor="middle">{x}</text>')
    for (name, line), colour in zip(points.items(), COLOURS):
        width = 3 if name.startswith("Varnhold") else 1.5
        path = " ".join(f"{place_x(x):.1f},{place_y(y):.1f}" for x, y in line)
        out.append(f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="{width}"/>')
        out += [f'<circle cx="{place_x(x):.1f}" cy="{place_y(y):.1f}" r="3" fill="{colour}"/>'
                for x, y in line]
    return out


def plot(results):
    """Both axes are logarithmic: what grows with the fleet and no faster is a line of one slope."""
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{2 * WIDTH + KEY}" height="{HEIGHT}" '
           f'viewBox="0 0 {2 * WIDTH + KEY} {HEIGHT}" font-family="sans-serif" font-size="12">',
           '<rect width="100%" height="100%" fill="white"/>']
    out += _panel(results, "start", "Start all, by number of agents", 0)
    out += _panel(results, "quit", "End all, by number of agents", WIDTH)
    for row, (name, colour) in enumerate(zip(results, COLOURS)):
        y = 44 + 22 * row
        out.append(f'<line x1="{2 * WIDTH + 10}" x2="{2 * WIDTH + 34}" y1="{y}" y2="{y}" stroke="{colour}" '
                   f'stroke-width="3"/><text x="{2 * WIDTH + 42}" y="{y + 4}">{name}</text>')
    return "\n".join([*out, "</svg>", ""])
