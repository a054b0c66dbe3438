# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""The table of scripts/coverage, over a program of a few lines whose coverage can be seen with the eye."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

REPORT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "coverage_report.py"
SOURCE = """\
template <bool loud>
int half(int number)
{
    if constexpr (loud)
        return number;
    if (number > 100)
        return 100;
    while (true)
        if (number < 0 || number % 2 == 0)
            return number / 2;
        else
            ++number;
}

int never(int number)
{
    return number;
}

int main(int count, char**)
{
    if (count > 5)
        return never(count);
    return half<false>(200) - 100 + half<false>(count) - half<true>(count);
}
"""
NOT_RUN = """\
foundation/program.cpp:9: never true at 13: if (number < 0 || number % 2 == 0)
foundation/program.cpp:16: int never(int number)
foundation/program.cpp:17: return number;
foundation/program.cpp:18: }
foundation/program.cpp:22: never true at 9: if (count > 5)
foundation/program.cpp:23: return never(count);
""".splitlines()


class Report(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.folder.name).resolve()
        (cls.root / "foundation").mkdir()
        source = cls.root / "foundation" / "program.cpp"
        source.write_text(SOURCE)
        profile = cls.root / "profraw"

        def run(*command, **more):
            return subprocess.run(command, check=True, cwd=cls.root, stdout=subprocess.PIPE, text=True, **more).stdout

        run("clang++", "-std=c++20", f"-fprofile-instr-generate={profile}", "-fcoverage-mapping", source, "-o", "program")
        run("./program", env={})
        run("llvm-profdata", "merge", "-o", "profile", profile)
        export = run("llvm-cov", "export", "--format=text", "--skip-functions", "--instr-profile=profile", "program")
        (cls.root / "export").write_text(export)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def report(self, exceptions="", floor="100 100"):
        (self.root / "exceptions").write_text(exceptions)
        (self.root / "floors").write_text(f"# of what\nfoundation {floor}\n")
        answer = subprocess.run(
            [sys.executable, "-B", REPORT, "export", "exceptions", "floors", "uncovered", "foundation"],
            capture_output=True, text=True, cwd=self.root)
        self.assertEqual(answer.stderr, "")
        return answer.returncode, answer.stdout, (self.root / "uncovered").read_text().splitlines()

    def test_names_what_never_ran_but_no_constants(self):
        self.assertEqual(self.report()[2], NOT_RUN)

    def test_fails_below_the_floor_of_lines_or_branches(self):
        self.assertIn("of     19  78.94%         6 of      8  75.00%   below 79 and 75", self.report(floor="79 75")[1])
        self.assertEqual([self.report(floor=floor)[0] for floor in ("78 75", "79 75", "78 76")], [0, 1, 1])

    def test_leaves_out_what_is_excepted(self):
        exceptions = """\
# FILE | text | reason
foundation/program.cpp | int never( | nobody calls it
foundation/program.cpp | if (count > 5) | so many arguments
foundation/program.cpp | return never(count); | likewise
foundation/program.cpp | number < 0 | negative
"""
        code, table, uncovered = self.report(exceptions)
        self.assertEqual((code, uncovered), (0, []), table)

    def test_fails_for_an_exception_that_stands_for_nothing(self):
        exceptions = "foundation/program.cpp | return number / 2; | it runs\n"
        code, table, _ = self.report(exceptions, floor="0 0")
        self.assertEqual(code, 1)
        self.assertIn("return number / 2;: stands for nothing", table)
        self.assertEqual(self.report(exceptions.replace("it runs", "by machine: it runs"), floor="0 0")[0], 0)


if __name__ == "__main__":
    unittest.main()
