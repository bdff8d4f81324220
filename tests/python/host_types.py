"""For the type checker only: a host's code fits the types."""

import pathlib

import kolvane
from device_object_test import Indexed, Single
from python_host import SimulatedScale

indexed: kolvane.IndexedHost = Indexed()
single: kolvane.SingleHost = Single()
scale: kolvane.SingleHost = SimulatedScale(kolvane.MainClass())

with kolvane.MainClass() as terminal:
    terminal.SetOptions(Folder=pathlib.Path("/srv/kolvane"), SettingsFile=b"/tmp/Kolvane.ini", CommandList="a.CMD")
    terminal.InitTerminal(single)
    terminal.OpenTerminal(1, 0)
    unloadable: bool = terminal.CanUnload
version: str = kolvane.__version__


def on_line(kind: kolvane.LineKind, line: str) -> None:
    print(kind.value, line)


options = kolvane.RunOptions(connect="OFFLINE", timeout=1.5, send_terminator=b"\r", log=pathlib.Path("a.log"))
status: kolvane.RunStatus = kolvane.run(pathlib.Path("a.CMD"), options, on_line=on_line, stop_requested=lambda: False)
status = kolvane.send(["*IDN?"], connect="OFFLINE", on_line=on_line)
with kolvane.Instrument("ASRL1::INSTR", timeout=None, read_termination=b"\r", baud=9600, parity="odd") as instrument:
    answer: str = instrument.query("MSV?") + instrument.query(b"MSV?")
    block: bytes = instrument.query_block("BIN?") + instrument.read_bytes(3)
    values: "list[float]" = instrument.query_values("CURVE?", "f")
    instrument.timeout = 0.5
    instrument.write_termination = "\r"
try:
    instrument.read()
except kolvane.InstrumentError as error:
    code: int = error.status
resources = [port.resource for port in kolvane.list_ports()]
