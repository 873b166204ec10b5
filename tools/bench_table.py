#!/usr/bin/env python3
"""Prints pixora-bench results as a ratio table.

Reads Google Benchmark JSON (a file, or stdin with "-"), or runs the
benchmark binary itself:

    python3 tools/bench_table.py results.json
    python3 tools/bench_table.py --run build/release/bench/pixora-bench [-- extra args]

Benchmark names have the form "<operation>/<variant>/<width>x<height>",
where the variant is a kind name (CPU, SIMDX, KDSP, GPU, ...), a peer
library ("opencv", "libyuv") or "memcpy". For each operation and size the
table shows the time of every variant and the ratios
    kind1/peer   (below 1: the vector kind beats the peer)
    kind0/kind1  (the vector kind's speed-up over the reference)
    kind/memcpy  (how far each kind is from a plain copy of the same bytes)
"""

import argparse
import json
import os
import subprocess
import sys

KINDS = ["CPU", "SIMDX", "KDSP", "GPU", "ADSP", "CDSP", "MDSP"]
UNIT_TO_US = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}
ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
DEFAULT_BINARY = os.path.join(ROOT, "build", "release", "bench", "pixora-bench")


def load(args):
    if args.run is not None:
        binary = args.run or DEFAULT_BINARY
        cmd = [binary, "--benchmark_format=json"] + args.extra
        out = subprocess.run(cmd, check=True, stdout=subprocess.PIPE).stdout
        return json.loads(out)
    if args.json == "-":
        return json.load(sys.stdin)
    with open(args.json, encoding="utf-8") as f:
        return json.load(f)


def collect(doc):
    """{(op, size): {variant: microseconds}}, in the order of first appearance."""
    rows = {}
    for b in doc.get("benchmarks", []):
        if b.get("run_type") == "aggregate" and b.get("aggregate_name") != "median":
            continue
        parts = b.get("run_name", b["name"]).split("/")
        if len(parts) < 3:
            continue
        op, variant, size = parts[0], parts[1], parts[2]
        us = b["real_time"] * UNIT_TO_US[b.get("time_unit", "ns")]
        rows.setdefault((op, size), {})[variant] = us
    return rows


def ratio(a, b):
    return f"{a / b:.2f}" if a is not None and b else "-"


def fmt_time(us):
    return "-" if us is None else f"{us:.1f}"


def table(rows):
    kinds = [k for k in KINDS if any(k in v for v in rows.values())]
    peers = sorted({p for v in rows.values() for p in v if p not in KINDS and p != "memcpy"})
    head = ["operation", "size"] + [f"{k} us" for k in kinds] + [f"{p} us" for p in peers]
    head += ["memcpy us"]
    head += [f"SIMDX/{p}" for p in peers] + ["CPU/SIMDX"] + [f"{k}/memcpy" for k in kinds]
    lines = [head]
    for (op, size), v in rows.items():
        copy = v.get("memcpy")
        line = [op, size] + [fmt_time(v.get(k)) for k in kinds] + [fmt_time(v.get(p)) for p in peers]
        line += [fmt_time(copy)]
        line += [ratio(v.get("SIMDX"), v.get(p)) for p in peers]
        line += [ratio(v.get("CPU"), v.get("SIMDX"))]
        line += [ratio(v.get(k), copy) for k in kinds]
        lines.append(line)
    return lines


def render(lines):
    """A Markdown table, columns padded so it also reads well in a terminal."""
    widths = [max(len(r[i]) for r in lines) for i in range(len(lines[0]))]
    out = []
    for n, r in enumerate(lines):
        cells = [c.ljust(w) if i < 2 else c.rjust(w) for i, (c, w) in enumerate(zip(r, widths))]
        out.append("| " + " | ".join(cells) + " |")
        if n == 0:
            out.append("|" + "|".join(("-" * (w + 2)) if i < 2 else ("-" * (w + 1) + ":")
                                      for i, w in enumerate(widths)) + "|")
    return "\n".join(out)


def main():
    argv = sys.argv[1:]
    extra = []
    if "--" in argv:  # what follows goes to the benchmark binary
        cut = argv.index("--")
        argv, extra = argv[:cut], argv[cut + 1:]
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    p.add_argument("json", nargs="?", help="benchmark JSON file, or - for stdin")
    p.add_argument("--run", nargs="?", const="", metavar="BINARY",
                   help="run the benchmark binary (default build/release/bench/pixora-bench); "
                        "arguments after -- go to it")
    args = p.parse_args(argv)
    args.extra = extra
    if args.json is None and args.run is None:
        p.error("give a JSON file or --run")
    doc = load(args)
    ctx = doc.get("context", {})
    target = ctx.get("pixora_vector_target")
    if target:
        print(f"vector target: {target}; host: {ctx.get('num_cpus', '?')} CPUs at "
              f"{ctx.get('mhz_per_cpu', '?')} MHz; times are wall-clock microseconds per call")
        print()
    rows = collect(doc)
    if not rows:
        print("no benchmark results found", file=sys.stderr)
        return 1
    print(render(table(rows)))
    return 0


if __name__ == "__main__":
    sys.exit(main())
