#!/usr/bin/python3
"""plot.py: draws what quillBench --json printed: one picture a figure, over the sizes of table.

  quillBench --entries 1k,16k,64k,256k,1M,4M --json > figures.json
  bench/quill/plot.py figures.json FOLDER [FIGURE...]

Writes FOLDER/hit.svg and so on, for all figures or for those named. Needs python3-matplotlib, which
setup.sh installs for this interpreter.
"""

import json
import pathlib
import sys

import matplotlib

matplotlib.use("svg")
from matplotlib import pyplot  # noqa: E402


def lines(figures, name):
    """peer -> [(entries, median, least, most)], smallest table first, peers as they first appear"""
    found = {}
    for figure in figures:
        if figure["figure"] == name:
            passes = figure["passes"]
            point = (figure["entries"], figure["median"], min(passes), max(passes))
            found.setdefault(figure["peer"], []).append(point)
    return {peer: sorted(points) for peer, points in found.items()}


def draw(report, name, path):
    fig, axes = pyplot.subplots(figsize=(7, 4.5))
    for peer, points in lines(report["figures"], name).items():
        entries, medians, least, most = zip(*points)
        (line,) = axes.plot(entries, medians, marker="o", markersize=3, label=peer)
        axes.fill_between(entries, least, most, color=line.get_color(), alpha=0.15, linewidth=0)
    axes.set_xscale("log")
    axes.set_yscale("log")
    axes.set_xlabel("entries")
    axes.set_ylabel("bytes an entry" if name == "B/entry" else "nanoseconds")
    axes.grid(True, which="major", linewidth=0.3)
    axes.legend(fontsize=8, loc="center left", bbox_to_anchor=(1, 0.5), frameon=False)
    setting = report["setting"]
    axes.set_title(f"{name}: median, least and most of all passes\n"
                   f"{setting['cpu']}, {setting['cores']} cores, {setting['compiler']}, "
                   f"{setting['build']}, {setting['commit']}", fontsize=8)
    fig.savefig(path, bbox_inches="tight")
    pyplot.close(fig)


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    report = json.loads(pathlib.Path(arguments[0]).read_text())
    folder = pathlib.Path(arguments[1])
    folder.mkdir(parents=True, exist_ok=True)
    there = list(dict.fromkeys(figure["figure"] for figure in report["figures"]))
    for name in arguments[2:] or there:
        if name not in there:
            sys.exit(f"plot.py: no figure {name}; there are: {', '.join(there)}")
        path = folder / (name.replace("/", " per ").replace(" ", "-") + ".svg")
        draw(report, name, path)
        print(path)


if __name__ == "__main__":
    main(sys.argv[1:])
