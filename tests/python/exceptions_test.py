"""Where Python exceptions arrive, and what the component itself raises."""

import logging
import subprocess
import sys
import traceback
import unittest
import unittest.mock

import kolvane
from device_object_test import Indexed, Single
from terminal_case import TerminalCase
from window_driver import pane_text, press, type_command


class LostDevice(Exception):
    pass


def lost(*arguments):
    raise LostDevice("Gerät verloren")


class WhileOpening(TerminalCase):
    def open(self, device, mode):
        """The caller gets the exception, so it is not logged."""
        self.terminal.InitTerminal(device)
        with self.assertNoLogs("kolvane"):
            self.terminal.OpenTerminal(mode, 0)

    def test_the_device_object_s_exception_reaches_the_caller(self):
        device = Single()
        device.GetDeviceInfo = lost
        with self.assertRaisesRegex(LostDevice, "^Gerät verloren$"):
            self.open(device, 1)

    def test_its_traceback_is_kept(self):
        device = Single()
        device.GetDeviceInfo = lost
        try:
            self.open(device, 1)
        except LostDevice as exception:
            frames = [frame.name for frame in traceback.extract_tb(exception.__traceback__)]
        self.assertEqual(frames[-1], "lost")

    def test_a_missing_member_is_an_attribute_error(self):
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

    def test_a_missing_object_is_an_error(self):
        with self.assertRaisesRegex(kolvane.Error, "Kein Geräteobjekt übergeben"):
            self.open(None, 1)

    def test_arguments_beyond_16_bits_are_refused(self):
        with self.assertRaises(TypeError):
            self.terminal.OpenTerminal(70000, 0)

    def test_no_display_has_its_own_exception(self):
        program = "import kolvane; kolvane.MainClass().OpenTerminal(5, 0)"
        for display in ({}, {"DISPLAY": ":4711"}, {"DISPLAY": ":4711", "QT_QPA_PLATFORM": "xcb"}):
            environment = {"PYTHONPATH": ":".join(sys.path), "HOME": "/nonexistent", **display}
            run = subprocess.run([sys.executable, "-c", program], env=environment, capture_output=True, text=True)
            self.assertEqual(run.returncode, 1)
            self.assertIn("NoDisplay", run.stderr)


class DuringTheSession(TerminalCase):
    def test_an_exception_becomes_a_failed_operation(self):
        device = Single()

        def script():
            device.WriteCommand = lost
            type_command("MSV?")
            self.assertIn("Gerät verloren", pane_text())
            del device.WriteCommand
            type_command("MSV?")
            self.assertIn("Größe", pane_text())

        with self.assertLogs("kolvane"):
            self.use(device, 1, script)

    def test_its_traceback_goes_to_the_log(self):
        device = Single()

        def script():
            device.WriteCommand = lost
            type_command("MSV?")

        with self.assertLogs("kolvane", "ERROR") as log:
            self.use(device, 1, script)
        self.assertEqual(len(log.records), 1)
        self.assertEqual(log.records[0].getMessage(), "WriteCommand failed")
        self.assertIn("LostDevice: Gerät verloren", log.output[0])
        self.assertIn("in lost", log.output[0])

    def test_tracebacks_of_the_io_object_go_to_the_log(self):
        device = Indexed()

        def script():
            device.IO.Read = lambda *arguments: {}[5]
            type_command("MSV?")
            self.assertEqual(pane_text().split("\n")[-1], "5")

        with self.assertLogs("kolvane", "ERROR") as log:
            self.use(device, 0, script)
        self.assertEqual(log.records[0].getMessage(), "IO.Read failed")
        self.assertIn("KeyError: 5", log.output[0])

    def test_a_result_that_does_not_convert_goes_to_the_log(self):
        device = Single()

        def script():
            device.FlushInQ = lambda: "viele"
            press("TB_FLUSH")

        with self.assertLogs("kolvane", "ERROR") as log:
            self.use(device, 1, script)
        self.assertEqual(log.output, ["ERROR:kolvane:FlushInQ failed: Typen unverträglich"])

    def test_a_result_of_another_form_goes_to_the_log(self):
        device = Single()
        text = "Read must return a tuple of two values"

        def script():
            device.Read = lambda *arguments: "12.5"
            type_command("MSV?")
            self.assertEqual(pane_text().split("\n")[-1], text)

        with self.assertLogs("kolvane", "ERROR") as log:
            self.use(device, 1, script)
        self.assertEqual(log.output, ["ERROR:kolvane:Read failed: " + text])

    def test_a_log_that_fails_changes_nothing(self):
        class Broken(logging.Filter):
            def filter(self, record):
                raise OSError("disk full")

        device = Single()

        def script():
            device.WriteCommand = lost
            type_command("MSV?")
            self.assertIn("Gerät verloren", pane_text())

        broken = Broken()
        logging.getLogger("kolvane").addFilter(broken)
        self.addCleanup(logging.getLogger("kolvane").removeFilter, broken)
        with unittest.mock.patch("sys.unraisablehook") as unraisable:
            self.use(device, 1, script)
        self.assertEqual(str(unraisable.call_args[0][0].exc_value), "disk full")

    def test_an_exception_without_text_is_shown_by_its_name(self):
        device = Indexed()

        def script():
            def silent(*arguments):
                raise KeyError

            device.IO.WriteCommand = silent
            type_command("MSV?")
            self.assertIn("KeyError", pane_text())

        with self.assertLogs("kolvane"):
            self.use(device, 0, script)


class OnExit(unittest.TestCase):
    def test_a_device_object_may_outlive_the_interpreter(self):
        program = "import kolvane; kolvane.MainClass().InitTerminal(object())"
        run = subprocess.run(
            [sys.executable, "-c", program], env={"PYTHONPATH": ":".join(sys.path)}, capture_output=True, text=True
        )
        self.assertEqual((run.returncode, run.stderr), (0, ""))


if __name__ == "__main__":
    unittest.main()
