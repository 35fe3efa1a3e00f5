#!/usr/bin/env python3
"""Converts Google Benchmark's results into the data that bench/plots.gnuplot draws.

    plot.py PEERS_JSON SCALING_JSON | gnuplot - bench/plots.gnuplot
"""

import sys

from report import medians, series

PLOTTED = ["arguments/numbers", "arguments/other values", "arguments/test paths", "arguments/one flag",
           "arguments/one value", "expansion/$(NAME)"]


def main(peers, scaling):
    ending = "/--name=value/job"
    times = {name.removesuffix(ending): time / 1000 for name, time in medians(peers).items() if name.endswith(ending)}
    print("$peers << END")
    for name, time in sorted(times.items(), key=lambda item: -item[1]):
        print(f'"{name}" {time:.1f} {int(name == "library")}')
    print("END\n$scaling << END")
    for name in PLOTTED:
        print(f'"{name}"')
        for size, time, *_ in series(scaling)[name]:
            print(size, time)
        print("\n")
    print("END")


main(*sys.argv[1:])
