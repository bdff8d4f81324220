"""Which members the terminal calls with which values, and how it uses the results."""

import unittest
import weakref

from terminal_case import TerminalCase
from window_driver import pane_text, press, type_command


class Recorder:
    """Records each call of an operation as (name, arguments)."""

    LastErrorDescription = ""

    def __init__(self):
        self.calls = []
        self._error = 0

    @property
    def LastError(self):
        return self._error

    @LastError.setter
    def LastError(self, code):
        self.calls.append(("LastError", code))
        self._error = code

    def note(self, *call):
        self.calls.append(call)


class Single(Recorder):
    answer = "Größe 5 µm"

    def OpenDevice(self):
        self.note("OpenDevice")

    def CloseDevice(self):
        self.note("CloseDevice")

    def WriteCommand(self, Command):
        self.note("WriteCommand", Command)

    def Read(self, Binary, Terminator, Count):
        self.note("Read", Binary, Terminator, Count)
        return self.answer, None

    def FlushInQ(self):
        self.note("FlushInQ")
        return 7

    def GetDeviceInfo(self):
        return 100, "127.0.0.1"


class WithAllParameters(Single):
    """A Read that takes all parameters of the contract."""

    def Read(self, Binary, Terminator, Count, Answer, Buffer):
        self.note("Read", Answer == " " * Count, Buffer)
        return "in full", None


class Io:
    def __init__(self, note):
        self.note = note

    def InitializeDevice(self, DevIdx):
        self.note("InitializeDevice", DevIdx)

    def CloseDevice(self, DevIdx):
        self.note("CloseDevice", DevIdx)

    def WriteCommand(self, DevIdx, Command, Terminator, Extra):
        self.note("WriteCommand", DevIdx, Command, Terminator, Extra)

    def Read(self, DevIdx, Binary, Zero, Terminator, Count):
        self.note("Read", DevIdx, Binary, Zero, Terminator, Count)
        return "1.25", None

    def SetIOTimeout(self, DevIdx, Milliseconds):
        self.note("SetIOTimeout", DevIdx, Milliseconds)

    def FlushInQ(self, DevIdx):
        self.note("FlushInQ", DevIdx)

    def GetDeviceProperty(self, DevIdx, Number):
        self.note("GetDeviceProperty", DevIdx, Number)
        return {2: 1, 3: 9600, 4: 1, 5: 8, 6: 1, 8: 12}[Number]


class Indexed(Recorder):
    def __init__(self):
        super().__init__()
        self.IO = Io(self.note)


class SingleDevice(TerminalCase):
    def test_a_command_is_written_and_its_answer_shown(self):
        device = Single()
        self.use(device, 1, lambda: (type_command("MSV?"), self.assertIn("Größe 5 µm", pane_text())))
        self.assertIn(("WriteCommand", "MSV?\n"), device.calls)
        self.assertIn(("Read", 0, 10, 16000), device.calls)

    def test_the_error_is_cleared_before_an_exchange(self):
        device = Single()
        self.use(device, 1, lambda: (device.calls.clear(), type_command("MSV?")))
        self.assertEqual(device.calls[0], ("LastError", 0))

    def test_the_count_of_flushed_bytes_is_shown(self):
        device = Single()
        self.use(device, 1, lambda: self.assertIn("Empfangspuffer gelöscht (7 Bytes)", pane_text()))

    def test_a_device_error_is_shown_with_its_description(self):
        device = Single()

        def script():
            device.WriteCommand = lambda command: setattr(device, "_error", -3)
            device.LastErrorDescription = "Stecker gezogen"
            type_command("MSV?")
            self.assertIn("Stecker gezogen", pane_text())

        self.use(device, 1, script)

    def test_members_are_looked_up_at_each_call(self):
        device = Single()

        def script():
            type_command("MSV?")
            device.Read = lambda binary, terminator, count: ("another", None)
            type_command("MSV?")
            self.assertIn("another", pane_text())

        self.use(device, 1, script)

    def test_a_read_with_all_parameters_gets_them(self):
        device = WithAllParameters()
        self.use(device, 1, lambda: (type_command("MSV?"), self.assertIn("in full", pane_text())))
        self.assertIn(("Read", True, b""), device.calls)

    def test_the_object_may_be_released_inside_its_own_call(self):
        terminal = self.terminal

        class Leaving(Single):
            def WriteCommand(self, Command):
                terminal.InitTerminal(None)

        leaving = [Leaving()]
        gone = weakref.ref(leaving[0])

        def script():
            leaving.clear()
            type_command("MSV?")
            self.assertIsNone(gone())
            self.assertIn("Kein Geräteobjekt übergeben", pane_text())
            self.terminal.InitTerminal(Single())

        self.use(leaving[0], 1, script)

    def test_the_device_is_open_again_after_the_window(self):
        device = Single()

        def script():
            press("TB_CONNECT")
            press("TB_CONNECT")
            device.calls.clear()

        self.use(device, 1, script)
        self.assertIn(("OpenDevice",), device.calls)

    def test_can_unload_once_the_window_has_closed(self):
        self.use(Single(), 1, lambda: self.assertFalse(self.terminal.CanUnload))
        self.assertIs(self.terminal.CanUnload, True)


class IndexedDevice(TerminalCase):
    def test_every_operation_carries_the_index(self):
        device = Indexed()
        self.use(device, 0, lambda: (type_command("MSV?"), self.assertIn("1.25", pane_text())), index=3)
        self.assertEqual(
            device.calls[:6], [("GetDeviceProperty", 3, number) for number in (2, 3, 4, 5, 6, 8)]
        )
        self.assertIn(("FlushInQ", 3), device.calls)
        self.assertIn(("WriteCommand", 3, "MSV?", 10, 0), device.calls)
        self.assertIn(("Read", 3, 0, 0, 10, 16000), device.calls)
        self.assertTrue(any(call[:2] == ("SetIOTimeout", 3) for call in device.calls))


if __name__ == "__main__":
    unittest.main()
