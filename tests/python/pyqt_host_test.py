"""A host with its own Qt application."""

import unittest

from PyQt6.QtCore import Qt, QTimer
from PyQt6.QtGui import QAction
from PyQt6.QtTest import QTest
from PyQt6.QtWidgets import QApplication, QComboBox, QLabel, QWidget

import kolvane
from device_object_test import Indexed, Single
from terminal_case import TerminalCase


def setUpModule():
    global application
    application = QApplication(["host"])


def tearDownModule():
    global application
    del application


def terminal_window():
    return next(window for window in QApplication.topLevelWidgets() if window.objectName() == "frmTerminal")


def type_command(text):
    box = terminal_window().findChild(QComboBox, "cmbCommand")
    box.setCurrentText(text)
    QTest.keyClick(box, Qt.Key.Key_Return)


def pane_text():
    return terminal_window().findChild(QWidget, "TermWin").property("plainText")


class PyQtHost(TerminalCase):
    def setUp(self):
        super().setUp()
        self.window = QLabel("host")
        self.window.show()
        self.addCleanup(self.window.close)

    def use(self, device, mode, script, index=0):
        """As in a terminal without an application; the host's own timer runs the script."""
        problems = []

        def run():
            try:
                script()
            except Exception as exception:
                problems.append(exception)
            for window in QApplication.topLevelWidgets():
                if window.objectName() == "frmTerminal":
                    window.close()

        self.terminal.InitTerminal(device)
        QTimer.singleShot(0, run)
        self.terminal.OpenTerminal(mode, index)
        if problems:
            raise problems[0]

    def test_the_terminal_is_a_modal_window_of_the_application(self):
        def script():
            self.assertTrue(terminal_window().isModal())
            self.assertIs(QApplication.activeModalWidget(), terminal_window())
            type_command("MSV?")
            self.assertIn("Größe 5 µm", pane_text())

        self.use(Single(), 1, script)

    def test_it_opens_again_and_the_host_s_window_stays(self):
        device = Indexed()
        for _ in range(3):
            device.calls.clear()
            self.use(device, 0, lambda: type_command("MSV?"), index=3)
            self.assertIn(("WriteCommand", 3, "MSV?", 10, 0), device.calls)
        self.assertTrue(self.window.isVisible())
        self.assertIs(QApplication.instance(), application)

    def test_the_host_s_timers_run_while_the_terminal_is_open(self):
        ticks = []
        timer = QTimer()
        timer.timeout.connect(lambda: ticks.append(1))
        timer.start(0)
        self.use(Single(), 1, lambda: QTest.qWait(20))
        self.assertTrue(ticks)

    def test_the_window_may_be_closed_inside_a_call_of_the_device(self):
        class Closing(Single):
            def WriteCommand(self, Command):
                super().WriteCommand(Command)
                terminal_window().close()

        device = Closing()
        self.use(device, 1, lambda: type_command("MSV?"))
        self.assertIn(("WriteCommand", "MSV?\n"), device.calls)
        self.assertTrue(self.terminal.CanUnload)


if __name__ == "__main__":
    unittest.main()
