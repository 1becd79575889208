"""The tool writes random models with the very bytes that the writers of this folder give.

The program is named by the environment variable ZUNA_CONVERT.
"""

import os
import subprocess
import unittest

import compare
import version1
import version2

TOOL = os.environ["ZUNA_CONVERT"]
MODELS = 8


def tool(data, *arguments):
    """What the tool makes of these bytes."""
    environment = {name: value for name, value in os.environ.items() if name != "ZUNA_KEY_FILE"}
    return subprocess.run([TOOL, *arguments, "--quiet", "-", "-o", "-"], input=data, env=environment, check=True,
                          stdout=subprocess.PIPE, timeout=300).stdout


def write(kind, model, version):
    if version == "2.0":
        return version2.write(kind, model)
    return version1.write(kind, model, tuple(map(int, version.split("."))))


class WritersTest(unittest.TestCase):
    def test_writes_the_same_bytes(self):
        for kind, versions in compare.CURRENT.items():
            source = compare.Source(f"{kind}-1.2", "writers")
            for _ in range(MODELS):
                encrypted = tool(source.file(), "encrypt")
                for version in versions:
                    written = tool(tool(encrypted, "convert", "--to", version), "decrypt")
                    self.assertEqual(written, write(kind, source.model, version), (kind, version))


if __name__ == "__main__":
    unittest.main()
