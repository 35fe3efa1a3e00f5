#!/usr/bin/env python3
"""Prints Google Benchmark's results as tables.

    report.py peers FILE...     medians, and ratios to getopt_long doing the same job
    report.py producer FILE     medians, and ratios to the two platform calls
    report.py scaling FILE      time and memory for each element of growing inputs

Times are processor times. Tables are in Markdown.
"""

import json
import sys


def read(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)["benchmarks"]


def medians(path):
    """The median of each benchmark in nanoseconds, in the order of the file."""
    return {row["run_name"]: row["cpu_time"] for row in read(path) if row.get("aggregate_name") == "median"}


def table(header, rows):
    print("| " + " | ".join(header) + " |")
    print("|---" + "|---:" * (len(header) - 1) + "|")
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print()


FORMS = ("--name=value", "--name value")


def report_peers(path):
    measured = medians(path)
    names = {name.split("/")[0] for name in measured}
    rows = []
    for name in sorted(names, key=lambda name: min(job_times(measured, name).values())):
        row = [name]
        for form in FORMS:
            parse, job = (measured.get(f"{name}/{form}/{what}") for what in ("parse", "job"))
            base = measured[f"getopt_long/{form}/job"]
            row += ["" if time is None else f"{time:.0f}" for time in (parse, job)]
            row.append("" if job is None else f"{job / base:.2f}")
        rows.append(row)
    table(["", *(column for form in FORMS for column in (f"`{form}`: parse, ns", "same job, ns", "x getopt_long"))], rows)


def job_times(measured, name):
    """The times of a parser for the same job as the library's, by form."""
    times = {form: measured.get(f"{name}/{form}/job") for form in FORMS}
    return {form: time for form, time in times.items() if time is not None}


def report_producer(path):
    measured = sorted(medians(path).items(), key=lambda item: item[1])
    base = dict(measured)["dladdr and realpath"]
    table(["", "ns", "x the two calls"], [[name, f"{time:.0f}", f"{time / base:.2f}"] for name, time in measured])


def series(path):
    """The runs of each growing benchmark: (size, nanoseconds, input bytes, peak bytes used).

    The fastest repetition is used: whatever else the machine does can only add to the time.
    """
    fastest = {}
    for row in read(path):
        if row["run_type"] == "iteration":
            name, size = row["run_name"].rsplit("/", 1)
            time = row["cpu_time"] * {"ns": 1, "us": 1e3, "ms": 1e6}[row["time_unit"]]
            runs = fastest.setdefault(name, {})
            if int(size) not in runs or time < runs[int(size)][1]:
                runs[int(size)] = (int(size), time, row["input_bytes"], row["peak_bytes"])
    return {name: [runs[size] for size in sorted(runs)] for name, runs in fastest.items()}


def beyond_fixed_cost(runs):
    """For each input at least 64 times as large as the smallest: its size, and nanoseconds per additional element."""
    smallest, fixed = runs[0][0], runs[0][1]
    return [(size, (time - fixed) / (size - smallest)) for size, time, _, _ in runs if size >= 64 * smallest]


def report_scaling(path):
    errors = {row["run_name"]: row["rms"] for row in read(path) if row.get("aggregate_name") == "RMS"}
    coefficients = {row["run_name"]: row["cpu_coefficient"] for row in read(path) if row.get("aggregate_name") == "BigO"}
    rows = []
    for name, runs in series(path).items():
        slopes = [slope for _, slope in beyond_fixed_cost(runs)]
        memory = max(used / size for _, _, size, used in runs[-3:])
        rows.append([f"`{name}`", f"{runs[0][0]:,} to {runs[-1][0]:,}", f"{runs[0][1]:,.0f}", f"{slopes[0]:.2f}",
                     f"{slopes[-1]:.2f}", f"{max(slopes) / min(slopes):.2f}",
                     f"{coefficients[name]:.2f} N", f"{errors[name]:.0%}", f"{memory:.1f}"])
    table(["input", "sizes", "smallest, ns", "ns/element from", "to", "most/least", "fit, ns", "deviation",
           "memory/input"], rows)


def main():
    report = {"peers": report_peers, "producer": report_producer, "scaling": report_scaling}[sys.argv[1]]
    for path in sys.argv[2:]:
        report(path)


if __name__ == "__main__":
    main()
