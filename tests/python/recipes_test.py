"""Runs the recipes of docs/python.md as written, except for the name of the instrument."""

import contextlib
import io
import os
import pathlib
import re
import tempfile
import unittest

from amplifier import Amplifier

DOCUMENT = pathlib.Path(__file__).parents[2] / "docs/python.md"
SOCKET, LINE = "TCPIP::192.168.1.7::5025::SOCKET", "ASRL/dev/ttyUSB0::INSTR"


def programs():
    """The programs between "### Recipes" and "## Threads"."""
    text = DOCUMENT.read_text(encoding="utf-8").split("### Recipes", 1)[1].split("\n## Threads", 1)[0]
    return re.findall(r"```python\n(.*?)```", text, re.DOTALL)


class Recipes(unittest.TestCase):
    EXPECTED = {
        "query_values(\"MSV? 1-3\")": "",
        "no value": "no value: -30\n",
        "back to": "done, back to 3.0\n",
        "BIN?": "100 samples\n",
        "query_block": "b'\\x00\\x01\\x00\\x02'\n[1, 2]\n",
        "flush()": "18 bytes discarded\nin step\n",
        "pool.map": "2 values\n",
        "AsyncInstrument": "['0', '1', '2']\n",
        "STP": "",
        "pyvisa": "hello\n",
    }

    def run_program(self, program):
        """The program's output, run in a new folder."""
        amplifier = Amplifier(LINE in program)
        output = io.StringIO()
        before = os.getcwd()
        with tempfile.TemporaryDirectory() as folder, contextlib.redirect_stdout(output):
            os.chdir(folder)
            try:
                names = {"__name__": "__main__"}
                exec(program.replace(SOCKET, amplifier.resource).replace(LINE, amplifier.resource), names)
                if "manager" in names:
                    names["manager"].close()
                table = pathlib.Path("values.csv")
                self.rows = table.read_text().splitlines() if table.exists() else []
            finally:
                os.chdir(before)
                amplifier.close()
        return output.getvalue()

    def test_there_are_at_least_ten(self):
        self.assertGreaterEqual(len(programs()), 10)
        for word in self.EXPECTED:
            self.assertEqual(sum(word in program for program in programs()), 1, word)

    def test_each_prints_what_it_should(self):
        for program in programs():
            with self.subTest(program):
                output = self.run_program(program)
                for word, expected in self.EXPECTED.items():
                    if word in program:
                        self.assertEqual(output, expected)
                if "values.csv" in program:
                    self.assertEqual(len(self.rows), 5)
                    self.assertRegex(self.rows[0], r"^\d\d:\d\d:\d\d,[-\d.]+,[-\d.]+,[-\d.]+$")
                if LINE in program:
                    self.assertRegex(output, r"^[-\d.]+\n$")


if __name__ == "__main__":
    unittest.main()
