#!/usr/bin/env python3
"""Runs each assembler on the same generated program several times, checks
that their binaries agree, and prints a table of median wall time, lines per
second and peak memory. usage: compare.py TRIDENT_ASM LINES RUNS"""
import os
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))


def timed(command, cwd):
    """Wall seconds and peak resident kilobytes of one command (or of the
    slowest step's memory and the summed time of a pipeline of commands).
    The clock is read here, to the microsecond; /usr/bin/time reports the
    memory of the step alone (a child forked from Python would count
    Python's pages too)."""
    seconds, peak = 0.0, 0
    for step in command:
        start = time.perf_counter()
        result = subprocess.run(["/usr/bin/time", "-f", "%M"] + step, cwd=cwd,
                                capture_output=True, text=True)
        seconds += time.perf_counter() - start
        if result.returncode not in (0, 1):
            sys.exit(f"{' '.join(step)} failed:\n{result.stderr}")
        peak = max(peak, int(result.stderr.strip().splitlines()[-1]))
    return seconds, peak


def measure(name, command, cwd, runs):
    samples = [timed(command, cwd) for _ in range(runs)]
    return name, statistics.median(s for s, _ in samples), max(m for _, m in samples)


def main():
    trident, lines, runs = os.path.abspath(sys.argv[1]), int(sys.argv[2]), int(sys.argv[3])
    with tempfile.TemporaryDirectory() as work:
        ours, zilog = os.path.join(work, "prog.asm"), os.path.join(work, "prog.z80")
        subprocess.run([sys.executable, os.path.join(HERE, "generate.py"), str(lines), ours, zilog],
                       check=True)
        with open(zilog) as source:
            gnu = [l for l in source.read().splitlines() if not l.startswith("\torg") and l != "\tend"]
        with open(os.path.join(work, "prog.s"), "w") as out:
            out.write("\n".join(gnu) + "\n")
        count = sum(1 for _ in open(ours))

        contenders = [
            ("trident-asm (listing, HEX, S-record, binary)",
             [[trident, "prog.asm", "--no-z80-warnings", "--quiet", "--listing", "prog.ls", "--hex",
               "prog.hex", "--srec", "prog.mx", "--bin", "trident.bin"]]),
            ("pasmo (binary)", [["pasmo", "--bin", "prog.z80", "pasmo.bin"]]),
            ("GNU as + ld + objcopy (binary)",
             [["z80-unknown-coff-as", "-march=z180", "-o", "prog.o", "prog.s"],
              ["z80-unknown-coff-ld", "-Ttext=0x100", "-o", "prog.out", "prog.o"],
              ["z80-unknown-coff-objcopy", "-O", "binary", "prog.out", "gnu.bin"]]),
        ]
        results = [measure(name, command, work, runs) for name, command in contenders]

        binaries = [open(os.path.join(work, f), "rb").read()
                    for f in ("trident.bin", "pasmo.bin", "gnu.bin")]
        if not (binaries[0] == binaries[1] == binaries[2]):
            sys.exit("the binaries differ")

    ours_time = results[0][1]
    print(f"Program: {count} lines, {len(binaries[0])} bytes of code; median of {runs} runs; "
          "binaries identical.\n")
    print("| Assembler | Median time (s) | Lines per second | Peak memory (MiB) | Time / trident |")
    print("|---|---|---|---|---|")
    for name, seconds, peak in results:
        rate = f"{count / seconds:,.0f}" if seconds > 0 else "-"
        ratio = f"{seconds / ours_time:.2f}" if ours_time > 0 else "-"
        print(f"| {name} | {seconds:.3f} | {rate} | {peak / 1024:.1f} | {ratio} |")


if __name__ == "__main__":
    main()
