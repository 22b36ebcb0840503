#!/usr/bin/env python3
"""Generates a realistic 8080/Z80 program of about N lines, twice: once in
Trident's notation (8080 mnemonics with the Z80 additions) and once in Zilog
notation for other assemblers. Both give the same machine code.

The program has equates, labels with forward and backward jumps and calls,
subroutines, data tables, a mix of 8080 and Z80 instructions and comments.
Trident's version also uses a macro; the Zilog version spells its expansion
out, since the other assemblers' macro syntaxes differ.

usage: generate.py LINES OUT_TRIDENT OUT_ZILOG
"""
import random
import sys

REGS = "bcdehla"


class Program:
    def __init__(self):
        self.ours = []
        self.zilog = []

    def both(self, ours, zilog):
        self.ours.append(ours)
        self.zilog.append(zilog)

    def same(self, text):
        self.both(text, text)


def reg(name):
    return "(hl)" if name == "m" else name


PAIR_8080 = {"bc": "b", "de": "d", "hl": "h", "sp": "sp"}


def instruction(p, rnd, block):
    """One instruction, in both notations; returns its size in bytes."""
    kind = rnd.randrange(20)
    r1, r2 = rnd.choice(REGS), rnd.choice(REGS)
    n = rnd.randrange(256)
    if kind < 4:
        p.both(f"\tmov\t{r1},{r2}", f"\tld\t{reg(r1)},{reg(r2)}")
        return 1
    if kind < 7:
        p.both(f"\tmvi\t{r1},{n}\t; load a constant", f"\tld\t{reg(r1)},{n}\t; load a constant")
        return 2
    if kind == 7:
        pair = rnd.choice(["bc", "de", "hl"])
        table = rnd.randrange(block + 1)
        p.both(f"\tlxi\t{PAIR_8080[pair]},table{table}", f"\tld\t{pair},table{table}")
        return 3
    if kind == 8:
        op, zop = rnd.choice([("add", "add a,"), ("sub", "sub "), ("ana", "and "), ("ora", "or "),
                              ("xra", "xor "), ("cmp", "cp ")])
        p.both(f"\t{op}\t{r1}", f"\t{zop}{reg(r1)}")
        return 1
    if kind == 9:
        op, zop = rnd.choice([("adi", "add a,"), ("sui", "sub "), ("ani", "and "), ("ori", "or "),
                              ("cpi", "cp ")])
        p.both(f"\t{op}\t{n}", f"\t{zop}{n}")
        return 2
    if kind == 10:
        op, zop = rnd.choice([("inr", "inc"), ("dcr", "dec")])
        p.both(f"\t{op}\t{r1}", f"\t{zop}\t{reg(r1)}")
        return 1
    if kind == 11:
        op, zop = rnd.choice([("inx", "inc"), ("dcx", "dec")])
        pair = rnd.choice(["bc", "de", "hl"])
        p.both(f"\t{op}\t{PAIR_8080[pair]}", f"\t{zop}\t{pair}")
        return 1
    if kind == 12:
        target = rnd.randrange(max(0, block - 2), block + 3)
        p.both(f"\tcall\tsub{target}\t; forward or backward", f"\tcall\tsub{target}\t; forward or backward")
        return 3
    if kind == 13:
        target = rnd.randrange(max(0, block - 2), block + 3)
        cond = rnd.choice(["nz", "z", "nc", "c"])
        p.both(f"\tj{cond}\tsub{target}", f"\tjp\t{cond},sub{target}")
        return 3
    if kind == 14:
        p.both(f"\tjrnz\tloop{block}", f"\tjr\tnz,loop{block}")
        return 2
    if kind == 15:
        bit = rnd.randrange(8)
        p.both(f"\tbit\t{bit},{r1}", f"\tbit\t{bit},{reg(r1)}")
        return 2
    if kind == 16:
        d = rnd.randrange(-8, 8)
        p.both(f"\tmov\t{r1 if r1 != 'm' else 'a'},{d}(ix)",
               f"\tld\t{r1 if r1 != 'm' else 'a'},(ix{d:+d})")
        return 3
    if kind == 17:
        pair = rnd.choice(["bc", "de", "hl"])
        p.both(f"\tpush\t{PAIR_8080[pair]}", f"\tpush\t{pair}")
        p.both(f"\tpop\t{PAIR_8080[pair]}", f"\tpop\t{pair}")
        return 2
    if kind == 18:
        p.both("\txchg", "\tex\tde,hl")
        return 1
    p.both(f"\tlda\tcount", f"\tld\ta,(count)")
    return 3


def generate(lines, seed=8080):
    rnd = random.Random(seed)
    p = Program()
    p.same("; A generated program for measuring assemblers.")
    p.same("bdos\tequ\t5\t\t; system entry")
    p.same("count\tequ\t0f000h")
    p.same("limit\tequ\tcount+16")
    p.same("")
    # Trident's version gets a macro; the other one its expansion.
    p.ours += ["twice\tmacro\treg", "\tinr\treg", "\tinr\treg", "\tendm"]
    p.same("\torg\t100h")
    p.both("start:\tlxi\tsp,0e000h", "start:\tld\tsp,0e000h")
    size = 4
    block = 0
    while len(p.ours) < lines and size < 64000:
        p.same(f"; ---- block {block} ----")
        p.same(f"sub{block}:")
        p.same(f"loop{block}:")
        for step in range(rnd.randrange(20, 34)):
            # Real programs explain themselves: every instruction has its
            # comment line, and every block a named constant.
            p.same(f"; step {step} of block {block}: keep the registers in order")
            if step == 0:
                p.same(f"k{block}_{step}\tequ\t{rnd.randrange(65536)}\t; a named constant")
            if rnd.randrange(25) == 0:
                r = rnd.choice("bcdea")
                p.ours.append(f"\ttwice\t{r}")
                p.zilog += [f"\tinc\t{r}", f"\tinc\t{r}"]
                size += 2
            else:
                size += instruction(p, rnd, block)
        p.both(f"\tdjnz\tloop{block}", f"\tdjnz\tloop{block}")
        p.both("\tret", "\tret")
        size += 3
        p.same(f"table{block}:")
        values = [rnd.randrange(256) for _ in range(8)]
        p.both("\tdb\t" + ",".join(map(str, values)), "\tdefb\t" + ",".join(map(str, values)))
        p.both(f"\tdw\tsub{block},loop{block}", f"\tdefw\tsub{block},loop{block}")
        p.same("")
        size += 12
        block += 1
    # Calls and jumps may name blocks past the last one: give them a home.
    for missing in range(block, block + 2):
        p.same(f"sub{missing}:")
    p.both("\tend\tstart", "\tend")
    return p


def main():
    lines = int(sys.argv[1])
    program = generate(lines)
    with open(sys.argv[2], "w") as out:
        out.write("\n".join(program.ours) + "\n")
    with open(sys.argv[3], "w") as out:
        out.write("\n".join(program.zilog) + "\n")


if __name__ == "__main__":
    main()
