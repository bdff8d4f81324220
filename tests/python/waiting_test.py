"""What happens while OpenTerminal waits: other threads, and a list without a user."""

import os
import select
import threading
import unittest

from device_object_test import Single
from terminal_case import TerminalCase


class InterpreterLock(TerminalCase):
    def test_another_thread_can_end_the_wait(self):
        read_end, write_end = os.pipe()
        self.addCleanup(os.close, read_end)
        self.addCleanup(os.close, write_end)
        shown = threading.Event()

        class Device(Single):
            def FlushInQ(self):
                shown.set()
                return 0

        def close():
            shown.wait()
            os.write(write_end, b"x")

        other = threading.Thread(target=close)
        other.start()
        self.terminal.SetOptions(SettingsFile=self.settings, CloseDescriptor=read_end)
        self.terminal.InitTerminal(Device())
        self.terminal.OpenTerminal(1, 0)
        other.join()
        self.assertTrue(self.terminal.CanUnload)


class DeviceObjectCalls(TerminalCase):
    def test_a_wait_is_given_up_when_the_terminal_is_to_close(self):
        read_end, write_end = os.pipe()
        self.addCleanup(os.close, read_end)
        self.addCleanup(os.close, write_end)
        waits = []

        def wait():
            waits.append(self.terminal.Wait())
            return waits[-1]

        class Device(Single):
            def Read(self, Binary, Terminator, Count):
                os.write(write_end, b"x")
                while wait():
                    select.select([], [], [], 0.001)
                raise TimeoutError("given up")

        commands = os.path.join(os.path.dirname(self.settings), "a.CMD")
        with open(commands, "w", newline="") as file:
            file.write("ONE\r\nNEVER\r\n$STOP\r\n")
        device = Device()
        self.terminal.SetOptions(
            SettingsFile=self.settings, CommandList=commands, CloseDescriptor=read_end, PlayAtStart=True
        )
        self.terminal.InitTerminal(device)
        self.terminal.OpenTerminal(1, 0)
        self.assertIs(waits[-1], False)
        self.assertEqual([call for call in device.calls if call[0] == "WriteCommand"], [("WriteCommand", "ONE\n")])
        self.assertTrue(self.terminal.Wait())


class Unattended(TerminalCase):
    def test_a_list_is_played_from_the_start(self):
        read_end, write_end = os.pipe()
        self.addCleanup(os.close, read_end)
        self.addCleanup(os.close, write_end)
        written = []

        class Device(Single):
            def WriteCommand(self, Command):
                written.append(Command)
                if len(written) == 2:
                    os.write(write_end, b"x")

        commands = os.path.join(os.path.dirname(self.settings), "a.CMD")
        with open(commands, "w", newline="") as file:
            file.write("ONE\r\nTWO\r\n$STOP\r\n")
        self.terminal.SetOptions(
            SettingsFile=self.settings, CommandList=commands, CloseDescriptor=read_end, PlayAtStart=True
        )
        self.terminal.InitTerminal(Device())
        self.terminal.OpenTerminal(1, 0)
        self.assertEqual(written, ["ONE\n", "TWO\n"])


if __name__ == "__main__":
    unittest.main()
