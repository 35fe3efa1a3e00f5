#!/usr/bin/env python3
"""Draws the pictures of docs/performance.md from what Google Benchmark measured.

    plot.py peers JSON SVG      a bar for each parser
    plot.py scaling JSON SVG    the time of a parse over the size of its input
"""

import math
import sys

from report import medians, series

WIDTH = 760
FONT = 'font-family="sans-serif" font-size="13"'
COLOURS = ["#1b6ca8", "#d1495b", "#2e8b57", "#8e6c8a", "#c77d0a", "#3d3d3d"]
PLOTTED = ["arguments/test paths", "arguments/one flag", "arguments/one value", "arguments/other values",
           "arguments/numbers", "expansion/$(NAME)"]


def text(x, y, content, anchor="start", colour="#222"):
    content = content.replace("&", "&amp;").replace("<", "&lt;")
    return f'<text x="{x:.0f}" y="{y:.0f}" text-anchor="{anchor}" fill="{colour}" {FONT}>{content}</text>'


def line(x1, y1, x2, y2, colour="#ddd"):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{colour}"/>'


def write(path, height, parts):
    with open(path, "w", encoding="utf-8") as file:
        file.write(f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
                   f'viewBox="0 0 {WIDTH} {height}">\n<rect width="100%" height="100%" fill="#fff"/>\n')
        file.write("\n".join(parts) + "\n</svg>\n")


def draw_peers(measured, path):
    bars = sorted((time, name.split("/")[0]) for name, time in measured.items() if name.endswith("/joined"))
    left, right, step = 190, 660, 28
    parts = [text(left, 24, "One parse of 25 arguments, microseconds of processor time")]
    for i, (time, name) in enumerate(bars):
        y = 40 + i * step
        length = (right - left) * time / bars[-1][0]
        colour = COLOURS[0] if name == "library" else "#b5b5b5"
        parts += [text(left - 8, y + 15, name, "end"),
                  f'<rect x="{left}" y="{y}" width="{length:.1f}" height="20" fill="{colour}"/>',
                  text(left + length + 6, y + 15, f"{time / 1000:.1f}")]
    write(path, 40 + len(bars) * step + 12, parts)


def draw_scaling(all_runs, path):
    left, right, top, bottom = 80, 540, 40, 420
    plotted = [(name, all_runs[name]) for name in PLOTTED]
    decades_x = math.log10(max(size for _, runs in plotted for size, *_ in runs))
    low = math.floor(math.log10(min(time for _, runs in plotted for _, time, *_ in runs)))
    high = math.ceil(math.log10(max(time for _, runs in plotted for _, time, *_ in runs)))

    def x(size):
        return left + (right - left) * math.log10(size) / decades_x

    def y(time):
        return bottom - (bottom - top) * (math.log10(time) - low) / (high - low)

    parts = [text(left, 24, "Processor time of a parse (of an expansion) over the number of its elements")]
    for exponent in range(low, high + 1):
        label = {0: "1 ns", 3: "1 µs", 6: "1 ms", 9: "1 s"}.get(exponent, "")
        parts += [line(left, y(10.0**exponent), right, y(10.0**exponent)),
                  text(left - 8, y(10.0**exponent) + 4, label, "end")]
    for exponent in range(round(decades_x) + 1):
        parts += [line(x(10**exponent), top, x(10**exponent), bottom),
                  text(x(10**exponent), bottom + 20, f"{10**exponent:,}", "middle")]
    last = sorted(plotted, key=lambda item: -item[1][-1][1])
    for i, (name, runs) in enumerate(last):
        points = " ".join(f"{x(size):.1f},{y(time):.1f}" for size, time, *_ in runs)
        parts += [f'<polyline points="{points}" fill="none" stroke="{COLOURS[i]}" stroke-width="2"/>',
                  line(right + 14, top + 12 + i * 24, right + 34, top + 12 + i * 24, COLOURS[i]),
                  text(right + 40, top + 16 + i * 24, name, colour=COLOURS[i])]
    write(path, bottom + 36, parts)


def main():
    what, source, target = sys.argv[1:]
    if what == "peers":
        draw_peers(medians(source), target)
    else:
        draw_scaling(series(source), target)


if __name__ == "__main__":
    main()
