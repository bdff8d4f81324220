"""Other threads of the host go on while the window waits."""

import os
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


if __name__ == "__main__":
    unittest.main()
