"""Where a Python exception ends up, and what the component itself raises."""

import subprocess
import sys
import traceback
import unittest

import kolvane
from device_object_test import Indexed, Single
from terminal_case import TerminalCase
from window_driver import pane_text, type_command


class LostDevice(Exception):
    pass


def lost(*arguments):
    raise LostDevice("Gerät verloren")


class WhileOpening(TerminalCase):
    def open(self, device, mode):
        self.terminal.InitTerminal(device)
        self.terminal.OpenTerminal(mode, 0)

    def test_the_device_object_s_exception_reaches_the_caller(self):
        device = Single()
        device.GetDeviceInfo = lost
        with self.assertRaisesRegex(LostDevice, "^Gerät verloren$"):
            self.open(device, 1)

    def test_with_its_traceback(self):
        device = Single()
        device.GetDeviceInfo = lost
        try:
            self.open(device, 1)
        except LostDevice as exception:
            frames = [frame.name for frame in traceback.extract_tb(exception.__traceback__)]
        self.assertEqual(frames[-1], "lost")

    def test_so_does_a_missing_member(self):
        with self.assertRaisesRegex(AttributeError, "IO"):
            self.open(object(), 0)

    def test_a_result_of_another_form_is_named(self):
        device = Single()
        device.GetDeviceInfo = lambda: 100
        with self.assertRaisesRegex(TypeError, "GetDeviceInfo must return a tuple of two values"):
            self.open(device, 1)

    def test_a_value_that_cannot_be_converted_is_an_error(self):
        for kind, text in (([], "Typen unverträglich"), ("x", "Typen unverträglich"), (2**70, "Überlauf")):
            device = Single()
            device.GetDeviceInfo = lambda: (kind, "127.0.0.1")
            with self.assertRaisesRegex(kolvane.Error, text):
                self.open(device, 1)

    def test_so_is_a_missing_object(self):
        with self.assertRaisesRegex(kolvane.Error, "Kein Geräteobjekt übergeben"):
            self.open(None, 1)

    def test_arguments_beyond_16_bits_are_refused(self):
        with self.assertRaises(TypeError):
            self.terminal.OpenTerminal(70000, 0)

    def test_no_display_is_an_exception_of_its_own(self):
        program = "import kolvane; kolvane.MainClass().OpenTerminal(5, 0)"
        for display in ({}, {"DISPLAY": ":4711"}, {"DISPLAY": ":4711", "QT_QPA_PLATFORM": "xcb"}):
            environment = {"PYTHONPATH": ":".join(sys.path), "HOME": "/nonexistent", **display}
            run = subprocess.run([sys.executable, "-c", program], env=environment, capture_output=True, text=True)
            self.assertEqual(run.returncode, 1)
            self.assertIn("NoDisplay", run.stderr)


class InTheSession(TerminalCase):
    def test_an_exception_becomes_a_failed_operation(self):
        device = Single()

        def script():
            device.WriteCommand = lost
            type_command("MSV?")
            self.assertIn("Gerät verloren", pane_text())
            del device.WriteCommand
            type_command("MSV?")
            self.assertIn("Größe", pane_text())

        self.use(device, 1, script)

    def test_one_without_text_is_shown_by_its_name(self):
        device = Indexed()

        def script():
            def silent(*arguments):
                raise KeyError

            device.IO.WriteCommand = silent
            type_command("MSV?")
            self.assertIn("KeyError", pane_text())

        self.use(device, 0, script)


class AtTheEnd(unittest.TestCase):
    def test_a_device_object_may_outlive_the_interpreter(self):
        program = "import kolvane; kolvane.MainClass().InitTerminal(object())"
        run = subprocess.run(
            [sys.executable, "-c", program], env={"PYTHONPATH": ":".join(sys.path)}, capture_output=True, text=True
        )
        self.assertEqual((run.returncode, run.stderr), (0, ""))


if __name__ == "__main__":
    unittest.main()
