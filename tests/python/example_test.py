"""The example in examples/ answers as its docstring says."""

import unittest

from python_host import SimulatedScale
from terminal_case import TerminalCase
from window_driver import pane_text, type_command


class Example(TerminalCase):
    def test_it_names_itself_weighs_and_sets_zero(self):
        def script():
            for command in ("*IDN?", "MSV?", "TAR", "MSV?"):
                type_command(command)
            for answer in ("Simulated scale", "13.000", "0.250"):
                self.assertIn(answer, pane_text().split("\n"))

        self.use(SimulatedScale(), 1, script)


if __name__ == "__main__":
    unittest.main()
