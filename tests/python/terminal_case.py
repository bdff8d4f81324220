"""A terminal window on the test's own device object, with its own settings."""

import os
import tempfile
import unittest

import kolvane
import window_driver


class TerminalCase(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.settings = os.path.join(folder.name, "Kolvane.ini")
        self.terminal = kolvane.MainClass()
        self.terminal.SetOptions(SettingsFile=self.settings)
        self.addCleanup(self.terminal.InitTerminal, None)

    def use(self, device, mode, script, index=0):
        """Opens the terminal on the device, runs script() in its window and closes it."""
        ran = []

        def run():
            script()
            ran.append(True)

        window_driver.use_window(run)
        self.terminal.InitTerminal(device)
        del device
        self.terminal.OpenTerminal(mode, index)
        self.assertTrue(ran, "the script did not come to its end")
