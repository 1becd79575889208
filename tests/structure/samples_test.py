#!/usr/bin/env python3
"""The sample files are what examples/make_samples.py makes.

    samples_test.py SOURCE_DIR ZUNA_CONVERT
"""

import pathlib
import subprocess
import sys
import tempfile


def contents(folder, pattern):
    return {str(path.relative_to(folder)): path.read_bytes() for path in sorted(folder.glob(pattern))}


def main(source, tool):
    examples = pathlib.Path(source) / "examples"
    with tempfile.TemporaryDirectory() as made:
        subprocess.run([sys.executable, str(examples / "make_samples.py"), tool, made], check=True)
        for pattern, least in (("three-tunes*", 5), ("midi/*.mid", 3)):
            expected = contents(pathlib.Path(made), pattern)
            assert len(expected) >= least, f"{pattern}: only {len(expected)} files were made"
            assert contents(examples, pattern) == expected, f"{pattern}: the files in examples/ are others"


main(*sys.argv[1:])
