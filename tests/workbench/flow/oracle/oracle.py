"""Runs random programs and holds what they do against what the analysis says of them.

usage: oracle.py --checker FLOW_CHAINCHECK [--programs N] [--first SEED] [--runs N] [--keep FOLDER]

Each program is generated from its seed, compiled with GnuCOBOL in its instrumented form and run with different inputs;
the checker then compares the logs of the runs with the chains and conditions of the plain form. Exits with 1 when the
analysis missed anything. --keep leaves the programs that were missed something of in a folder.
"""

import argparse
import concurrent.futures
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile

from programgenerator import ProgramGenerator
from storage import RETURN_CODE

HERE = pathlib.Path(__file__).resolve().parent
# The end of a label returns to the innermost PERFORM only, which is what the analysis follows; intermediate results of
# computations are exact.
DIALECT = ["-std=ibm", "-fno-arithmetic-osvs", "-fno-perform-osvs"]
COMPILE = ["cobc", "-x", *DIALECT, "-fstatic-call", "run.cbl", "runtime.o", "-o", "run"]
SECONDS_FOR_A_RUN = 20
TOTALS = re.compile(r"^checked (\d+) told (\d+) could be (\d+) seen (\d+) misses (\d+)$", re.MULTILINE)


def compile_runtime(folder):
    """Once for all programs: the object file that each is linked with."""
    runtime = folder / "runtime.o"
    subprocess.run(["cc", "-O1", "-c", HERE / "oracleruntime.c", "-o", runtime], check=True)
    return runtime


def write_input(folder, generator):
    records = ["%04d%08d" % (generator.randrange(100), generator.randrange(1000)) for _ in range(generator.randrange(30))]
    (folder / "in.dat").write_text("".join(records))
    for name in ("sorted1.dat", "sorted2.dat"):
        count = generator.randrange(5)
        records = ["%04d%s" % (generator.randrange(100), generator.choice(["abcd", "wxyz"])) for _ in range(count)]
        (folder / name).write_text("".join(records))
    for name in ("rel.dat", "indexed.dat", "indexed.dat.1"):
        (folder / name).unlink(missing_ok=True)
    words = ["".join(generator.choice("ab,c x9") for _ in range(8)) for _ in range(400)]
    numbers = [str(generator.randrange(100)) for _ in range(400)]
    return "\n".join(generator.choice(pair) for pair in zip(words, numbers)) + "\n"


def run_program(folder, seed, run):
    """Runs the program with inputs of its own; the log."""
    generator = random.Random(f"{seed}/{run}")
    keyboard = write_input(folder, generator)
    log = folder / f"log{run}"
    environment = dict(os.environ, FLOW_ORACLE_LOG=str(log))
    try:
        result = subprocess.run(
            ["./run"], cwd=folder, input=keyboard, capture_output=True, text=True, timeout=SECONDS_FOR_A_RUN, env=environment
        )
    except subprocess.TimeoutExpired as late:
        raise RuntimeError(f"seed {seed}: the program does not end") from late
    if result.returncode not in (0, RETURN_CODE) or not log.exists():
        raise RuntimeError(f"seed {seed}: the program ended with {result.returncode}: {result.stderr.strip()}")
    return log


def try_program(seed, arguments, runtime):
    """What the checker says of one program, and the folder that it lies in."""
    folder = runtime.parent / f"program{seed}"
    folder.mkdir()
    shutil.copy(runtime, folder)
    plain, instrumented = ProgramGenerator(seed).generate()
    (folder / "plain.cbl").write_text("\n".join(plain) + "\n")
    (folder / "run.cbl").write_text("\n".join(instrumented) + "\n")
    compiled = subprocess.run(COMPILE, cwd=folder, capture_output=True, text=True)
    if compiled.returncode != 0:
        raise RuntimeError(f"seed {seed}: cobc: {compiled.stderr.strip()}")
    logs = [run_program(folder, seed, run) for run in range(arguments.runs)]
    checked = subprocess.run([arguments.checker, folder / "plain.cbl", *logs], capture_output=True, text=True)
    totals = TOTALS.search(checked.stdout)
    if totals is None:
        raise RuntimeError(f"seed {seed}: the checker ended with {checked.returncode}: {checked.stderr.strip()}")
    return folder, [int(number) for number in totals.groups()], checked.stdout


def finish(seed, result, arguments):
    """The totals of one program; tells its misses."""
    folder, totals, output = result
    if totals[4] > 0:
        print(f"seed {seed}:")
        print(output, flush=True)
        if arguments.keep:
            shutil.copytree(folder, pathlib.Path(arguments.keep) / folder.name, dirs_exist_ok=True)
    shutil.rmtree(folder)
    return totals


def share_unseen(told, seen):
    return 0 if told == 0 else 100 * (told - seen) / told


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--checker", required=True)
    parser.add_argument("--programs", type=int, default=50)
    parser.add_argument("--first", type=int, default=1)
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--keep")
    arguments = parser.parse_args()
    sums = [0] * 5
    broken = 0
    with tempfile.TemporaryDirectory() as scratch, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        runtime = compile_runtime(pathlib.Path(scratch))
        seeds = range(arguments.first, arguments.first + arguments.programs)
        jobs = {pool.submit(try_program, seed, arguments, runtime): seed for seed in seeds}
        for job in concurrent.futures.as_completed(jobs):
            if job.exception() is not None:
                broken += 1
                print(job.exception(), flush=True)
                continue
            totals = finish(jobs[job], job.result(), arguments)
            sums = [one + other for one, other in zip(sums, totals)]
    checked, told, could_be, seen, misses = sums
    print(f"{arguments.programs - broken} programs, {checked} events checked, {misses} missed;", end=" ")
    print(f"{told} pairs of definition and use told, {share_unseen(told, seen):.0f} % of them seen in no run;", end=" ")
    print(f"of {could_be} whose definition has run, {share_unseen(could_be, seen):.0f} %")
    if seen == 0:
        print("nothing was seen, so nothing was checked")
    return 1 if misses > 0 or seen == 0 or broken > 0 else 0


if __name__ == "__main__":
    sys.exit(main())
