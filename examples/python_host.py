"""Opens the terminal on a scale simulated in this file; try *IDN?, MSV?, TAR and SLOW?."""

import select
import time

import kolvane


class SimulatedScale:
    LastError, LastErrorDescription = 0, ""

    def __init__(self, terminal):
        self.terminal = terminal
        self.load, self.zero, self.answers = 12.5, 0.0, []

    def OpenDevice(self): pass

    def CloseDevice(self): pass

    def WriteCommand(self, Command):
        command = Command.strip().upper()
        self.load += 0.25
        if command == "TAR":
            self.zero = self.load
        if command == "SLOW?":
            self.wait(3)
        known = {"*IDN?": "Simulated scale", "MSV?": f"{self.load - self.zero:.3f}", "TAR": "0", "SLOW?": "done"}
        self.answers.append(known.get(command, "?"))

    def wait(self, seconds):
        """Waits while the window stays responsive; Esc, stop and closing give up."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if not self.terminal.Wait():
                raise TimeoutError("given up")
            select.select([], [], [], 0.05)  # a real device: its descriptor

    def Read(self, Binary, Terminator, Count):
        answer = self.answers.pop(0) if self.answers else ""
        return answer, answer.encode("cp1252")

    def FlushInQ(self):
        count, self.answers = len("".join(self.answers)), []
        return count

    def GetDeviceInfo(self):
        return 1, 0  # COM1, bus address 0


if __name__ == "__main__":
    with kolvane.MainClass() as terminal:
        terminal.InitTerminal(SimulatedScale(terminal))
        terminal.OpenTerminal(1, 0)
