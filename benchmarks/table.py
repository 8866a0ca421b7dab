#!/usr/bin/env python3
"""Makes the tables of docs/performance.md from what benchmarks/real.sh printed:

    benchmarks/table.py results.txt [earlier-results.txt]

A table for each screen, shape and zoom, with the interface thread's milliseconds by number of
blocks: median / worst, or with a second file the medians, then and now.
"""
import sys

COLUMNS = 10


def read(path):
    """{(screen, shape, zoom): {operation: {blocks: (median, worst)}}}"""
    tables, screen = {}, ""
    with open(path, encoding="utf-8") as file:
        for line in file:
            if line.startswith("canvas of"):
                screen = line.split("screen of ")[1].strip()
            words = line.split()
            # The operation's name may have blanks in it.
            if len(words) < COLUMNS - 1 or not words[1].isdigit():
                continue
            shape, blocks, zoom = words[:3]
            operation = " ".join(words[3:-6])
            median, worst = words[-5:-3]
            rows = tables.setdefault((screen, shape, zoom), {})
            rows.setdefault(operation, {})[int(blocks)] = (float(median), float(worst))
    return tables


def number(value):
    return f"{value:.0f}" if value >= 100 else f"{value:.1f}" if value >= 10 else f"{value:.2f}"


def cell(now, earlier):
    if now is None:
        return ""
    if earlier is None:
        return f"{number(now[0])} / {number(now[1])}"
    return f"{number(earlier[0])} → {number(now[0])}"


def main():
    now = read(sys.argv[1])
    earlier = read(sys.argv[2]) if len(sys.argv) > 2 else {}
    for place, rows in now.items():
        sizes = sorted({size for row in rows.values() for size in row})
        print(f"\n{place[1]}, zoom {place[2]}, screen of {place[0]}\n")
        print("| Blocks | " + " | ".join(f"{size:,}" for size in sizes) + " |")
        print("|---" * (len(sizes) + 1) + "|")
        for operation, row in rows.items():
            before = earlier.get(place, {}).get(operation, {})
            print(f"| {operation} | " +
                  " | ".join(cell(row.get(size), before.get(size)) for size in sizes) + " |")


if __name__ == "__main__":
    main()
