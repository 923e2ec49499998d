"""Draws docs/pictures/performance.svg: above, how much of each budget is used; below, how
three works grow with the history. It follows the reader's choice of light or dark."""

import math
import re
from xml.sax.saxutils import escape

WIDTH, LEFT, BAR = 860, 400, 24
CHART = {"left": 70, "width": 560, "height": 300}
STYLE = """
    text { font: 13px system-ui, sans-serif; fill: #24292f }
    .ground { fill: #ffffff }
    .title { font-weight: 600; font-size: 15px }
    .share { paint-order: stroke; stroke: #ffffff; stroke-width: 5 }
    .axis { stroke: #8c959f; stroke-width: 1; fill: none }
    .grid { stroke: #8c959f; stroke-opacity: .3 }
    .met { fill: #2da44e } .missed { fill: #d1603d }
    .capture { stroke: #0969da } .load { stroke: #bf8700 } .search { stroke: #8250df }
    .line { stroke-width: 2.2; fill: none } .floor { stroke-dasharray: 4 4; stroke-opacity: .75 }
    @media (prefers-color-scheme: dark) {
      text { fill: #e6edf3 }
      .ground { fill: #0d1117 }
      .share { stroke: #0d1117 }
      .met { fill: #3fb950 } .missed { fill: #f0883e }
      .capture { stroke: #58a6ff } .load { stroke: #e3b341 } .search { stroke: #bc8cff }
    }"""
WORKS = {"captureToDisk": ("capture", "capture"), "load": ("load", "load and repair"),
         "searchToList": ("search", "a key in the search")}


def text(x, y, content, anchor="start", kind=""):
    return f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" class="{kind}">{escape(content)}</text>'


def bars(results, top):
    """One for each budget; 100 % is the line."""
    shown = [result for result in results.values() if "limit" in result]
    shares = [result["measured"] / result["limit"] for result in shown]
    scale = (WIDTH - LEFT - 70) / max(1.25, *(min(share, 2) for share in shares))
    line, bottom = LEFT + scale, top + 16 + len(shown) * BAR
    parts = [text(0, top, "Used of each budget", kind="title"), text(line, top + 8, "100%", "middle"),
             f'<path d="M{line:.1f} {top + 12}V{bottom}" class="axis"/>']
    for row, (result, share) in enumerate(zip(shown, shares)):
        y = top + 16 + row * BAR
        width = min(share, 2) * scale
        kind = "met" if result["met"] else "missed"
        parts += [text(LEFT - 10, y + 15, result["work"], "end"),
                  f'<rect x="{LEFT}" y="{y + 3}" width="{width:.1f}" height="{BAR - 8}" rx="2" class="{kind}"/>',
                  text(LEFT + width + 6, y + 15, f"{share:.0%}", kind="share")]
    return parts, bottom


def points(grid, work, value):
    """By the number of entries, of texts of 1 KB without pictures."""
    found = []
    for name, it in grid.items():
        match = re.fullmatch(rf"{work}/entries:(\d+)/bytes:1000/pictures:0", name)
        if match:
            found.append((int(match[1]), it[value]))
    return sorted(found)


def lines(grid, top):
    left, width, height = CHART["left"], CHART["width"], CHART["height"]
    every = [time for work in WORKS for value in ("measured", "floor") for _, time in points(grid, work, value)]
    low, high = math.floor(math.log10(min(every))), math.ceil(math.log10(max(every)))
    first, last = math.log10(50), math.log10(50_000)

    def place(entries, time):
        return (left + (math.log10(entries) - first) / (last - first) * width,
                top + 20 + (high - math.log10(time)) / (high - low) * height)

    parts = [text(0, top, "Milliseconds by entries of 1 KB; dashed: the floors", kind="title")]
    for power in range(low, high + 1):
        _, y = place(50, 10**power)
        parts += [f'<path d="M{left} {y:.1f}h{width}" class="grid"/>', text(left - 8, y + 4, f"{10.0**power:g}", "end")]
    for entries in (50, 500, 5000, 50_000):
        x, _ = place(entries, 1)
        parts += [f'<path d="M{x:.1f} {top + 20}v{height}" class="grid"/>',
                  text(x, top + height + 38, f"{entries:,}", "middle")]
    for work, (kind, label) in WORKS.items():
        for value, dashes in (("floor", " floor"), ("measured", "")):
            places = [place(*point) for point in points(grid, work, value)]
            if places:
                path = "L".join(f"{x:.1f} {y:.1f}" for x, y in places)
                parts.append(f'<path d="M{path}" class="line {kind}{dashes}"/>')
        if places:
            parts.append(text(places[-1][0] + 10, places[-1][1] + 4, label))
    return parts, top + height + 50


def drawing(results, grid):
    above, bottom = bars(results, 24)
    below, bottom = lines(grid, bottom + 50)
    width, height = WIDTH + 32, bottom + 16
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}">',
        f"<style>{STYLE}\n</style>", '<rect width="100%" height="100%" rx="8" class="ground"/>',
        '<g transform="translate(16 8)">', *above, *below, "</g>", "</svg>", ""])
