"""The examples in examples/ answer as described and run as programs."""

import os
import runpy
import unittest
import unittest.mock

import python_asyncio_host
import python_host
from terminal_case import TerminalCase
from window_driver import pane_text, type_command, use_window


class Example(TerminalCase):
    def lines_after(self, module, commands):
        """Runs the example as a program, types the commands in its window and closes it."""
        lines = []

        def script():
            for command in commands:
                type_command(command)
            lines.extend(pane_text().split("\n"))

        self.terminal.SetOptions()
        use_window(script)
        with unittest.mock.patch.dict(os.environ, XDG_CONFIG_HOME=os.path.dirname(self.settings)):
            runpy.run_path(module.__file__, run_name="__main__")
        return lines

    def test_the_scale_names_itself_weighs_and_sets_zero(self):
        lines = self.lines_after(python_host, ["*IDN?", "MSV?", "TAR", "MSV?", "SLOW?"])
        for answer in ("Simulated scale", "13.000", "0.250", "done"):
            self.assertIn(answer, lines)

    def test_the_device_of_a_loop_in_another_thread_answers(self):
        lines = self.lines_after(python_asyncio_host, ["MSV?", "MSV?", "HELP"])
        for answer in ("12.750", "13.000", "?"):
            self.assertIn(answer, lines)


if __name__ == "__main__":
    unittest.main()
