#!/usr/bin/env python3
"""Prints Google Benchmark results with the ratio of each benchmark to its baseline.

A benchmark "X/args" is paired with "X_Baseline/args" from the same run. Medians of the
repetitions are used when present, so that one noisy repetition does not decide.
"""
import json
import sys


def main(path):
    with open(path) as f:
        data = json.load(f)
    rows = {}
    for b in data["benchmarks"]:
        if b.get("run_type") == "aggregate" and b.get("aggregate_name") != "median":
            continue
        name = b.get("run_name", b["name"])
        rows[name] = b
    print(f"{'benchmark':58} {'time/iter':>14} {'items/s':>14} {'ratio':>8}")
    for name, b in rows.items():
        first, _, rest = name.partition("/")
        if first.endswith("_Baseline"):
            continue
        base_name = first + "_Baseline" + ("/" + rest if rest else "")
        t = b["real_time"]
        unit = b["time_unit"]
        ips = b.get("items_per_second")
        ips_text = f"{ips:14.4g}" if ips else " " * 14
        ratio = ""
        if base_name in rows:
            ratio = f"{t / rows[base_name]['real_time']:8.2f}"
        print(f"{name:58} {t:11.4g} {unit:2} {ips_text} {ratio:>8}")
        if base_name in rows:
            bb = rows[base_name]
            bips = bb.get("items_per_second")
            bips_text = f"{bips:14.4g}" if bips else " " * 14
            print(f"{'  ' + base_name:58} {bb['real_time']:11.4g} {bb['time_unit']:2} {bips_text} {'1.00':>8}")


if __name__ == "__main__":
    for p in sys.argv[1:]:
        main(p)
