"""The page of the manual: its examples run as they stand, its table of defaults is the one that is used."""
import doctest
import re
import sys
import unittest
from pathlib import Path

import numpy as np

ROOT = Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs/manual/python.md"
sys.path.insert(0, str(ROOT / "tools"))
import python_face  # noqa: E402


class Manual(unittest.TestCase):
    def test_examples(self):
        with np.printoptions(legacy="1.21"):
            results = doctest.testfile(str(PAGE), module_relative=False, optionflags=doctest.NORMALIZE_WHITESPACE)
        self.assertEqual(results.failed, 0)
        self.assertGreater(results.attempted, 30)

    def test_defaults(self):
        rows = re.findall(r"(?m)^\| ([A-Z]+) \| (.+?) \| (.+?) \|$", PAGE.read_text())
        shown = {(argument, None if routines == "all" else tuple(routines.split(", "))): value.replace("&#124;", "|")
                 for argument, routines, value in rows}
        for argument, routines, value, words in python_face.DEFAULTS:
            expected = (words or value.strip("'")).replace("{old}", "Y or C")
            self.assertEqual(shown.pop((argument, routines)), expected)
        self.assertEqual({argument for argument, _ in shown}, {"IPERM", "IVALS"})


if __name__ == "__main__":
    unittest.main()
