"""Which values a device object may return."""

import array
import ctypes
import unittest
from decimal import Decimal
from fractions import Fraction

import numpy

import kolvane
from device_object_test import Single
from terminal_case import TerminalCase
from window_driver import pane_text, press, type_command


class Index:
    def __index__(self):
        return 7


class Record(ctypes.Structure):
    _fields_ = [("text", ctypes.c_char * 3)]


class Numbers(TerminalCase):
    def test_everything_that_converts_to_a_number_is_accepted(self):
        values = (
            (Index(), 7),
            (Decimal("12.5"), 12),
            (Fraction(7, 2), 4),
            (ctypes.c_int16(-3), -3),
            (ctypes.c_double(2.0), 2),
            (ctypes.c_bool(True), -1),
            (numpy.int64(70000), 70000),
            (numpy.uint8(200), 200),
            (numpy.float32(1.5), 2),
            (numpy.longdouble(9), 9),
            (numpy.bool_(True), -1),
            (numpy.array(11), 11),
        )
        device = Single()

        def script():
            for value, count in values:
                device.FlushInQ = lambda: value
                press("TB_FLUSH")
                self.assertEqual(pane_text().split("\n")[-1], f"Empfangspuffer gelöscht ({count} Bytes)", repr(value))

        self.use(device, 1, script)

    def test_what_is_not_a_number_is_refused(self):
        for kind in (None, [], object(), 1j, b"1", numpy.array([1, 2]), numpy.datetime64("2026-11-21"), Record()):
            device = Single()
            device.GetDeviceInfo = lambda: (kind, 1)
            self.terminal.InitTerminal(device)
            with self.assertRaisesRegex(kolvane.Error, "Typen unverträglich", msg=repr(kind)):
                self.terminal.OpenTerminal(1, 0)

    def test_an_exception_of_a_conversion_reaches_the_caller(self):
        class Broken:
            def __index__(self):
                raise LookupError("no number today")

        device = Single()
        device.GetDeviceInfo = lambda: (Broken(), 1)
        self.terminal.InitTerminal(device)
        with self.assertRaisesRegex(LookupError, "no number today"):
            self.terminal.OpenTerminal(1, 0)


class TextsAndBytes(TerminalCase):
    def shown(self, *answers):
        """What the pane shows for each of the answers."""
        device = Single()
        lines = []

        def script():
            for answer in answers:
                device.answer = answer
                type_command("MSV?")
                lines.append(pane_text().split("\n")[-1])

        self.use(device, 1, script)
        return lines

    def test_bytes_may_be_in_any_buffer(self):
        answers = (
            b"1.5",
            bytearray(b"1.5"),
            memoryview(b"1.5"),
            array.array("B", b"1.5"),
            numpy.frombuffer(b"1.5", numpy.uint8),
            (ctypes.c_char * 3)(*b"1.5"),
            Record(b"1.5"),
            numpy.bytes_(b"1.5"),
            numpy.str_("1.5"),
        )
        self.assertEqual(self.shown(*answers), ["1.5"] * len(answers))

    def test_one_byte_is_an_array_of_one_element(self):
        self.assertEqual(self.shown(numpy.array([65], numpy.uint8)), ["A"])

    def test_lone_surrogates_are_question_marks(self):
        self.assertEqual(self.shown("1\ud8005", "µ\udcff"), ["1?5", "µ?"])

    def test_lone_surrogates_in_the_text_of_an_exception_are_question_marks(self):
        device = Single()

        def script():
            def fail(command):
                raise OSError("no file \udcff")

            device.WriteCommand = fail
            type_command("MSV?")
            self.assertIn("no file ?", pane_text())

        with self.assertLogs("kolvane"):
            self.use(device, 1, script)


if __name__ == "__main__":
    unittest.main()
