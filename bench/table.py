# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Prints the README's table of speed from one run of every benchmark: each row is SigilDesk beside its baseline, measured
in turns on the same machine.

    table.py BUILD    the folder of a release build
"""

import json
import pathlib
import re
import resource
import statistics
import subprocess
import sys
import tempfile

# What, program, the benchmark of SigilDesk, and the baselines: their names in the table and in the program.
TIMED = [
    ("UTF-8 to CP949, 10,000 characters", "foundation_bench", "toCp949_ours/10000",
     {"`iconv`": "toCp949_iconv/10000", "ICU": "toCp949_icu/10000"}),
    ("CP949 to UTF-8, 10,000 characters", "foundation_bench", "toUtf8_ours/10000",
     {"`iconv`": "toUtf8_iconv/10000", "ICU": "toUtf8_icu/10000"}),
    ("UTF-8 to CP949, a name of 16 bytes", "foundation_bench", "nameToCp949_ours/16", {"ICU": "nameToCp949_icu/16"}),
    ("the same, 64 bytes of ASCII", "foundation_bench", "asciiToCp949_ours/64", {"ICU": "asciiToCp949_icu/64"}),
    ("the same, 1 MB of ASCII", "foundation_bench", "asciiToCp949_ours/1000000", {"ICU": "asciiToCp949_icu/1000000"}),
    ("CP949 to UTF-8, 1 MB of ASCII", "foundation_bench", "asciiToUtf8_ours/1000000",
     {"ICU": "asciiToUtf8_icu/1000000"}),
    ("one lookup in a 400-line language file, key in the middle", "foundation_bench", "lookup_ours/400/50",
     {"`open`, `read` and one `memmem`": "lookup_memmem/400/50"}),
    ("the same, last key", "foundation_bench", "lookup_ours/400/100",
     {"`open`, `read` and one `memmem`": "lookup_memmem/400/100"}),
    ("opening a SEED key, 2,048 rounds of PBKDF1", "keys_bench", "open/seed_pbkdf1", {"the bare rounds": "bareRounds"}),
    ("opening an AES-256 key, 2,048 rounds of PBKDF2", "keys_bench", "open/pbes2_aes256",
     {"OpenSSL's `PKCS8_decrypt`": "opensslDecrypt/pbes2_aes256"}),
    ("`HV_Initalize` and `HV_Finish`, after the first time", "start_bench", "handle",
     {"bare `dlopen` and `dlclose` of the open toolkit": "library"}),
    ("the same, `CLP_Initalize` and `CLP_UnInitalize`", "start_bench", "processor",
     {"bare `dlopen` and `dlclose` of the open toolkit": "library"}),
]
REPETITIONS = 9
COMMAND_RUNS = 41
COMMAND_CERTIFICATES = 100


def amount(seconds):
    for unit, scale in (("s", 1), ("ms", 1e-3), ("µs", 1e-6), ("ns", 1e-9)):
        if seconds >= scale or unit == "ns":
            return f"{seconds / scale:.3g} {unit}"


def row(what, ours, baseline, theirs):
    print(f"| {what} | {amount(ours)} | {amount(theirs)} {baseline} | {ours / theirs:.2f} |", flush=True)


def medians(program, names):
    """CPU seconds of the benchmarks, in turns."""
    wanted = "^(" + "|".join(map(re.escape, names)) + ")$"
    answer = subprocess.run(
        [program, f"--benchmark_filter={wanted}", "--benchmark_format=json", f"--benchmark_repetitions={REPETITIONS}",
         "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.05"],
        check=True, capture_output=True, text=True)
    runs = [run for run in json.loads(answer.stdout)["benchmarks"] if run["run_type"] == "iteration"]
    scale = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3}
    return {name: statistics.median(run["cpu_time"] * scale[run["time_unit"]] for run in runs if run["run_name"] == name)
            for name in names}


def timed_rows(programs):
    for what, program, ours, baselines in TIMED:
        found = medians(programs / program, [ours, *baselines.values()])
        for baseline, name in baselines.items():
            row(what, found[ours], baseline, found[name])


def processor_time(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, check=True, capture_output=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def command_row(what, ours, baseline, theirs):
    runs = [(processor_time(ours), processor_time(theirs)) for _ in range(COMMAND_RUNS)]
    row(what, statistics.median(run[0] for run in runs), baseline, statistics.median(run[1] for run in runs))


def command_rows(programs):
    sigildesk = programs / "sigildesk"
    command_row("the command's start: `sigildesk codes 1008`", [sigildesk, "codes", "1008"], "`openssl errstr 1`",
                ["openssl", "errstr", "1"])
    with tempfile.TemporaryDirectory() as home:
        subprocess.run([programs / "sample-store", "--count", str(COMMAND_CERTIFICATES), "--target", home], check=True,
                       capture_output=True)
        files = sorted(pathlib.Path(home).glob("NPKI/*/USER/*/signCert.der"))
        together = pathlib.Path(home, "all.pem")
        together.write_text("".join(
            subprocess.run(["openssl", "x509", "-inform", "DER", "-in", file], check=True, capture_output=True,
                           text=True).stdout for file in files), encoding="ascii")
        message = pathlib.Path(home, "all.p7b")
        subprocess.run(["openssl", "crl2pkcs7", "-nocrl", "-certfile", together, "-out", message], check=True)
        command_row(f"`sigildesk list` of {len(files)} certificates",
                    [sigildesk, "list", "--json", "--media", home], "`openssl pkcs7 -print_certs` of the same",
                    ["openssl", "pkcs7", "-in", message, "-print_certs", "-text", "-noout"])


def own_rows(program):
    """A program that compares in its own way and prints rows among other lines."""
    answer = subprocess.run([program], check=False, capture_output=True, text=True)
    print("".join(line + "\n" for line in answer.stdout.splitlines() if line.startswith("| ")), end="", flush=True)
    if answer.returncode:
        print(f"{program.name} missed its bound", file=sys.stderr)


def main():
    programs = pathlib.Path(sys.argv[1], "bin")
    print("| what | SigilDesk | baseline | ratio |\n|---|---|---|---|", flush=True)
    timed_rows(programs)
    command_rows(programs)
    for program in "facade_bench", "certlist_bench":
        own_rows(programs / program)


main()
