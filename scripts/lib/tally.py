"""Counts what test runs reported and prints it, last "N passed, N failed".

usage: tally.py RUN...

RUN.xml is ctest's report of a run; the folder RUN holds a report of each GoogleTest program, whose
cases are counted one by one. A program that crashed, or whose memory leaked at exit, is a failure
that no case reports. Exit status 1 when anything failed, or nothing ran.
"""

import collections
import pathlib
import sys
import xml.etree.ElementTree as xml


def main(runs):
    passed = failed = 0
    skipped = collections.Counter()
    for run in runs:
        for program in xml.parse(run + ".xml").getroot().iter("testcase"):
            ok = program.get("status") == "run"
            report = pathlib.Path(run, program.get("name") + ".xml")
            cases = failures = 0
            if report.exists():
                for case in xml.parse(report).getroot().iter("testcase"):
                    skip = case.find("skipped")
                    if skip is not None:
                        skipped[skip.get("message").split("\n")[-1]] += 1
                        continue
                    cases += 1
                    failures += case.find("failure") is not None
            elif ok:
                cases = 1
            passed += cases - failures
            failed += failures if failures else not ok
    for reason, count in skipped.items():
        print(f"{count} skipped: {reason}")
    print(f"{passed} passed, {failed} failed")
    return 0 if passed and not failed else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
