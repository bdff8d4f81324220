"""Which thread may open the terminal. Each program is a separate process, since it might crash."""

import os
import subprocess
import sys
import tempfile
import unittest

# Set higher by hand to look for a program that only sometimes ends wrongly.
RUNS = int(os.environ.get("KOLVANE_THREAD_RUNS", "4"))

# The terminal closes at once if it opens a window.
PROGRAM = """
import os, sys, threading
import kolvane

read_end, write_end = os.pipe()
os.write(write_end, b"x")

def open_terminal():
    with kolvane.MainClass() as terminal:
        terminal.SetOptions(SettingsFile=sys.argv[1] + "/Kolvane.ini", CloseDescriptor=read_end)
        terminal.OpenTerminal(5, 0)

def refused():
    try:
        open_terminal()
    except kolvane.Error as error:
        return str(error)

def in_a_thread(function):
    results = []
    thread = threading.Thread(target=lambda: results.append(function()))
    thread.start()
    thread.join()
    return results[0]
"""


class Threads(unittest.TestCase):
    def output(self, program):
        with tempfile.TemporaryDirectory() as folder:
            run = subprocess.run(
                [sys.executable, "-c", PROGRAM + program, folder], capture_output=True, text=True, timeout=60
            )
        self.assertEqual(run.returncode, 0, run.stderr)
        return run.stdout

    def test_a_second_thread_is_refused_by_name(self):
        self.assertRegex(self.output("print(in_a_thread(refused))"), "(?i)thread")

    def test_a_second_thread_is_refused_beside_a_host_s_application(self):
        program = """
from PyQt6.QtWidgets import QApplication
application = QApplication([])
print(in_a_thread(refused))
open_terminal()
print("opened")
"""
        refusal, opened = self.output(program).splitlines()
        self.assertRegex(refusal, "(?i)thread")
        self.assertEqual(opened, "opened")

    def test_the_main_thread_may_open_it_after_a_refusal(self):
        self.assertEqual(self.output("in_a_thread(refused)\nopen_terminal()\nprint('opened')"), "opened\n")

    def test_a_worker_that_tries_again_and_again_does_no_harm(self):
        for _ in range(RUNS):
            self.assertEqual(self.output("print(in_a_thread(lambda: [refused() for _ in range(3)]).count(None))"), "0\n")


if __name__ == "__main__":
    unittest.main()
