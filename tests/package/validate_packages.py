"""Checks packages against their schema: validate_packages.py SCHEMA FOLDER

Prints one line for each fault, at most three a file. Exit status 0 when there is none.
"""
import json
import pathlib
import sys

import jsonschema


def main() -> int:
    schema = json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    packages = sorted(pathlib.Path(sys.argv[2]).glob("*.json"))
    faults = 0
    for package in packages:
        document = json.loads(package.read_text(encoding="utf-8"))
        for _, error in zip(range(3), validator.iter_errors(document)):
            faults += 1
            print(f"{package}: {error.json_path}: {error.message[:300]}")
    print(f"{len(packages)} packages checked, {faults} faults")
    return 1 if faults or not packages else 0


if __name__ == "__main__":
    sys.exit(main())
