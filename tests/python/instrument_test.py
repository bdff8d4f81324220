"""kolvane.Instrument: what is sent and received, as text and bytes, on which threads, and how it fails."""

import array
import asyncio
import concurrent.futures
import os
import pickle
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import unittest

import kolvane
from amplifier import Amplifier
from kolvane import Instrument, InstrumentError


class InstrumentCase(unittest.TestCase):
    def amplifier(self, *arguments):
        amplifier = Amplifier(*arguments)
        self.addCleanup(amplifier.close)
        return amplifier

    def instrument(self, *arguments, **options):
        instrument = Instrument(self.amplifier(*arguments).resource, **options)
        self.addCleanup(instrument.close)
        return instrument

    def status_of(self, call, *arguments):
        with self.assertRaises(InstrumentError) as caught:
            call(*arguments)
        return caught.exception.status


class Exchange(InstrumentCase):
    def test_a_command_and_its_answer(self):
        with Instrument(self.amplifier().resource) as instrument:
            self.assertTrue(instrument.query("*IDN?").startswith("KOLVANE,"))
            instrument.write("ECHO one")
            instrument.write(b"ECHO two")
            self.assertEqual([instrument.read(), instrument.read()], ["one", "two"])
        self.assertFalse(instrument.is_open)
        self.assertEqual(self.status_of(instrument.query, "*IDN?"), -3)

    def test_a_serial_line(self):
        instrument = self.instrument(True, baud=19200, parity="even", data_bits=8, stop_bits=1)
        self.assertEqual(instrument.query("ECHO line"), "line")
        instrument.set_line(115200)
        self.assertEqual(instrument.query("ECHO faster"), "faster")
        for flow in ("xon_xoff", "rts_cts", "none"):
            instrument.set_line(115200, flow=flow)
            self.assertEqual(instrument.query("ECHO held up"), "held up")
        with self.assertRaisesRegex(ValueError, "flow must be one of none, xon_xoff, rts_cts, not 'dtr'"):
            instrument.set_line(115200, flow="dtr")
        self.assertEqual(self.status_of(instrument.read_status_byte), -4)

    def test_all_256_bytes_survive(self):
        everything = "".join(map(chr, range(256))).encode("latin-1")
        instrument = self.instrument(False, "--echo", read_termination="\n\r\n", write_termination="\n")
        text = everything.replace(b"\n", b"").replace(b"\r", b"").decode("cp1252", "kolvane.device")
        self.assertEqual(len(text), 254)
        instrument.read_termination = "\r\n"
        self.assertEqual(instrument.query(text), text)

    def test_characters_beyond_the_encoding_are_not_sent(self):
        instrument = self.instrument()
        with self.assertRaises(UnicodeEncodeError):
            instrument.write("ECHO 5 \N{OHM SIGN}")
        self.assertEqual(instrument.query("ECHO 5 \N{DEGREE SIGN}"), "5 \N{DEGREE SIGN}")

    def test_other_encodings(self):
        instrument = self.instrument(False, "--echo", encoding="UTF-8")
        self.assertEqual(instrument.encoding, "utf-8")
        self.assertEqual(instrument.query("5 \N{OHM SIGN}"), "5 \N{OHM SIGN}")
        # Bytes that are not UTF-8 count as Windows-1252.
        self.assertEqual(instrument.query(b"\xc3\xa4 \xe4 \x80 \x81"), "ä ä € \x81")
        with self.assertRaises(LookupError):
            Instrument("ASRL1::INSTR", encoding="no such")

    def test_terminations(self):
        instrument = self.instrument()
        self.assertEqual((instrument.read_termination, instrument.write_termination), ("\r\n", "\n"))
        instrument.read_termination = None
        self.assertEqual(instrument.query("TERM NONE"), "0")
        self.assertEqual(instrument.query("ECHO to the gap"), "to the gap")
        instrument.read_termination = b";"
        self.assertEqual(instrument.query("ECHO a;"), "a")
        instrument.write_termination = ""
        instrument.write("ECHO whole")
        instrument.write_bytes(bytearray(b";\n"))
        self.assertEqual(instrument.read(), "whole")

    def test_bytes(self):
        instrument = self.instrument()
        instrument.write("RAMP? 300")
        self.assertEqual(instrument.read_bytes(300), bytes(range(256)) + bytes(range(44)))
        instrument.write("ECHO unread")
        instrument.read_bytes(1)
        self.assertGreater(instrument.flush(), 0)
        self.assertEqual(instrument.bytes_waiting, 0)

    def test_blocks(self):
        instrument = self.instrument()
        self.assertEqual(instrument.query_block("HEX? 233134000A0D41"), b"\x00\n\rA")
        self.assertEqual(self.status_of(instrument.query_block, "ECHO ERROR 7"), -62)
        self.assertEqual(instrument.read(), "ERROR 7")

    def test_values(self):
        instrument = self.instrument()
        self.assertEqual(instrument.query_values("ECHO 1.5,-2e3; 7"), [1.5, -2000.0, 7.0])
        self.assertEqual(instrument.query_values("HEX? 23313400010002", "h", big_endian=True), [1, 2])
        single = array.array("f", [0.5, -3.0]).tobytes().hex()
        self.assertEqual(instrument.query_values("HEX? 233138" + single, "f"), [0.5, -3.0])
        with self.assertRaises(ValueError):
            instrument.query_values("ECHO 1,two")
        with self.assertRaises(ValueError):
            instrument.query_values("ECHO #13abc", "h")
        for datatype in ("x", "hh", "z"):
            with self.assertRaisesRegex(ValueError, f"datatype '{datatype}' is not one letter"):
                instrument.query_values("ECHO #13abc", datatype)


class Failures(InstrumentCase):
    def test_a_time_out_keeps_received_bytes(self):
        instrument = self.instrument(timeout=0.2)
        instrument.query("MUTE 1")
        self.assertEqual(self.status_of(instrument.query, "ECHO unheard"), -30)
        instrument.timeout = 5
        self.assertEqual(instrument.query("ECHO heard"), "heard")

    def test_the_text_names_resource_reason_and_status(self):
        amplifier = self.amplifier()
        amplifier.close()
        with self.assertRaises(InstrumentError) as caught:
            Instrument(amplifier.resource)
        self.assertEqual(str(caught.exception), amplifier.resource + ": Verbindung abgelehnt (-22)")
        self.assertIsInstance(caught.exception, kolvane.Error)
        again = pickle.loads(pickle.dumps(caught.exception))
        self.assertEqual((str(again), again.status), (str(caught.exception), -22))

    def test_invalid_arguments(self):
        for arguments in (
            {"resource": "nonsense"},
            {"resource": "OFFLINE"},
            {"resource": "ASRL1::INSTR", "timeout": -1},
            {"resource": "ASRL1::INSTR", "timeout": 1e9},
            {"resource": "ASRL1::INSTR", "parity": "mark"},
            {"resource": "ASRL1::INSTR", "baud": 0},
            {"resource": "ASRL1::INSTR", "data_bits": 9},
            {"resource": "ASRL1::INSTR", "data_bits": 70000},
            {"resource": "ASRL1::INSTR", "baud": 2**40},
        ):
            with self.subTest(arguments), self.assertRaises(ValueError):
                Instrument(**arguments)
        with self.assertRaises(TypeError):
            Instrument("ASRL1::INSTR", rate=9600)
        with self.assertRaisesRegex(TypeError, "resource must be a str, not None"):
            Instrument(None)
        with self.assertRaisesRegex(TypeError, "baud must be a whole number, not '9600'"):
            Instrument("ASRL1::INSTR", baud="9600")
        with self.assertRaisesRegex(TypeError, "timeout must be a number, not '3'"):
            Instrument("ASRL1::INSTR", timeout="3")
        instrument = self.instrument(True)
        for arguments in ({"baud": 0}, {"data_bits": 6}, {"stop_bits": 3}, {"parity": "mark"}, {"flow": "dtr"}):
            with self.subTest(arguments), self.assertRaisesRegex(ValueError, f"{next(iter(arguments))} must be"):
                instrument.set_line(**arguments)

    def test_only_texts_and_bytes_are_sent(self):
        instrument = self.instrument()
        self.assertEqual(instrument.query(bytearray(b"ECHO one")), "one")
        instrument.write_bytes(memoryview(b"ECHO two\n"))
        self.assertEqual(instrument.read(), "two")
        for call in (instrument.write, instrument.write_bytes, instrument.query):
            with self.assertRaisesRegex(TypeError, "bytes-like object is required, not 5"):
                call(5)
        for count in (-1, 2**70):
            with self.assertRaisesRegex(ValueError, "count must be 0 to"):
                instrument.read_bytes(count)
        self.assertEqual(instrument.bytes_waiting, 0)

    def test_a_lost_connection(self):
        instrument = self.instrument(False, "--close-after", "1")
        self.assertEqual(instrument.query("ECHO last"), "last")
        self.assertEqual(self.status_of(instrument.read), -40)


class Settings(InstrumentCase):
    def test_the_time_out_is_in_seconds(self):
        instrument = self.instrument()
        self.assertEqual(instrument.timeout, 3.0)
        for seconds in (0, 0.25, 60, None):
            instrument.timeout = seconds
            self.assertEqual(instrument.timeout, seconds)
        with self.assertRaises(ValueError):
            instrument.timeout = -0.1
        self.assertEqual(instrument.query("ECHO for ever"), "for ever")

    def test_it_names_itself(self):
        instrument = self.instrument()
        self.assertEqual(repr(instrument), f"<kolvane.Instrument {instrument.resource}>")
        instrument.close()
        instrument.close()
        self.assertEqual(repr(instrument), f"<kolvane.Instrument {instrument.resource} (closed)>")


class Threads(InstrumentCase):
    def test_each_instrument_answers_its_own_thread(self):
        resource = self.amplifier(False, "--echo").resource

        def exchange(number):
            with Instrument(resource) as instrument:
                return [instrument.query(f"{number}/{turn}") for turn in range(100)]

        with concurrent.futures.ThreadPoolExecutor(8) as pool:
            for number, answers in enumerate(pool.map(exchange, range(8))):
                self.assertEqual(answers, [f"{number}/{turn}" for turn in range(100)])

    def test_threads_share_an_instrument(self):
        instrument = self.instrument(False, "--echo")
        texts = [str(number) for number in range(200)]
        with concurrent.futures.ThreadPoolExecutor(4) as pool:
            self.assertEqual(list(pool.map(instrument.query, texts)), texts)

    def test_other_threads_continue_while_one_waits_and_may_close(self):
        instrument = self.instrument(timeout=600)
        statuses = []
        waits = threading.Event()

        def wait():
            waits.set()
            try:
                instrument.query("WAIT? 600000")
            except InstrumentError as error:
                statuses.append(error.status)

        thread = threading.Thread(target=wait)
        thread.start()
        waits.wait()
        instrument.close()
        thread.join()
        # Closed while it waited, or before it had sent anything.
        self.assertIn(statuses, ([-60], [-3]))

    def test_a_loop_continues_while_an_executor_waits(self):
        resource = self.amplifier().resource

        async def main():
            loop = asyncio.get_running_loop()
            with Instrument(resource) as instrument, concurrent.futures.ThreadPoolExecutor(1) as pool:
                answer = loop.run_in_executor(pool, instrument.query, "WAIT? 100")
                turns = 0
                while not answer.done():
                    await asyncio.sleep(0)
                    turns += 1
                return await answer, turns

        answer, turns = asyncio.run(main())
        self.assertEqual(answer, "0")
        self.assertGreater(turns, 1)


class Installation(unittest.TestCase):
    """The port library is the file beside libkolvane.so.0."""

    def opening(self, port_library=None):
        with open("/proc/self/maps") as maps:
            library = next(line.split()[-1] for line in maps if "/libkolvane.so" in line)
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(library, os.path.join(folder, "libkolvane.so.0"))
            beside = os.path.join(folder, "libdevlnk.so")
            if port_library:
                os.symlink(port_library, beside)
            result = subprocess.run(
                [sys.executable, "-c", "import kolvane; kolvane.Instrument('TCPIP::127.0.0.1::1::SOCKET')"],
                env=dict(os.environ, LD_LIBRARY_PATH=folder),
                stderr=subprocess.PIPE,
                text=True,
            )
        return result.stderr.splitlines()[-1].replace(beside, "BESIDE")

    def test_without_a_port_library_the_error_names_the_file(self):
        self.assertEqual(
            self.opening(),
            "kolvane.InstrumentError: TCPIP::127.0.0.1::1::SOCKET: BESIDE: cannot open shared object file: "
            "No such file or directory (-4)",
        )

    def test_with_another_library_the_error_names_the_missing_function(self):
        self.assertEqual(
            self.opening(os.environ["KOLVANE_GPIB_STAND_IN"]),
            "kolvane.InstrumentError: TCPIP::127.0.0.1::1::SOCKET: BESIDE: KOLVANE_NewPortSession (-4)",
        )


# Interrupts itself while the instrument is silent, then continues to use it.
INTERRUPTED = """
import os, signal, sys, threading, time
import kolvane

instrument = kolvane.Instrument(sys.argv[1], timeout=600)
instrument.query("MUTE 1")
instrument.write("ECHO kept back")
threading.Timer(0.2, os.kill, (os.getpid(), signal.SIGINT)).start()
try:
    instrument.read()
except KeyboardInterrupt:
    print("interrupted,", instrument.query("ECHO and well"))
"""


class Interrupts(InstrumentCase):
    def test_ctrl_c_gives_up_a_wait(self):
        result = subprocess.run(
            [sys.executable, "-c", INTERRUPTED, self.amplifier().resource], capture_output=True, text=True, timeout=60
        )
        self.assertEqual((result.stdout, result.stderr), ("interrupted, and well\n", ""))

    def test_a_handler_that_does_not_raise_does_not_end_the_wait(self):
        instrument = self.instrument()
        signals = []
        before = signal.signal(signal.SIGUSR1, lambda number, frame: signals.append(number))
        self.addCleanup(signal.signal, signal.SIGUSR1, before)
        timer = threading.Timer(0.1, os.kill, (os.getpid(), signal.SIGUSR1))
        timer.start()
        self.assertEqual(instrument.query("WAIT? 400"), "0")
        self.assertEqual(signals, [signal.SIGUSR1])


if __name__ == "__main__":
    unittest.main()
