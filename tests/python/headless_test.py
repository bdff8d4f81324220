"""Command lists and commands without a window: what reaches the caller, and how a run ends."""

import asyncio
import base64
import contextlib
import json
import os
import pathlib
import pickle
import signal
import socketserver
import subprocess
import sys
import tempfile
import threading
import unittest
import unittest.mock

import kolvane
from kolvane import LineKind, RunOptions, RunStatus


class Echo(socketserver.StreamRequestHandler):
    """An instrument that echoes each command in capitals; HUSH gets no answer, and ASK calls the server's `ask`."""

    def handle(self):
        for line in self.rfile:
            self.server.received.append(line)
            command = line.strip()
            if command == b"ASK":
                self.server.ask()
            if command != b"HUSH":
                self.wfile.write(command.upper() + b"\r\n")


class HeadlessCase(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.lines = []

    def on_line(self, kind, line):
        self.lines.append((kind, line))

    def instrument(self):
        """The resource of an instrument that exists until the end of the test."""
        self.server = socketserver.ThreadingTCPServer(("127.0.0.1", 0), Echo)
        self.server.daemon_threads = True
        self.server.received = []
        thread = threading.Thread(target=self.server.serve_forever, args=[0.01])
        thread.start()
        self.addCleanup(self.server.server_close)
        self.addCleanup(thread.join)
        self.addCleanup(self.server.shutdown)
        return "TCPIP::127.0.0.1::%d::SOCKET" % self.server.server_address[1]

    def list_file(self, *rows):
        path = self.folder / "a.CMD"
        path.write_bytes("".join(row + "\r\n" for row in rows).encode("cp1252"))
        return path


class Lines(HeadlessCase):
    def test_each_is_passed_with_its_kind(self):
        status = kolvane.send(
            "msv?", connect=self.instrument(), on_line=self.on_line, show_commands=True, show_times=True, verbose=True
        )
        self.assertIs(status, RunStatus.DONE)
        self.assertEqual(
            [kind for kind, line in self.lines],
            [LineKind.NOTICE, LineKind.COMMAND, LineKind.ANSWER, LineKind.TIME, LineKind.NOTICE],
        )
        self.assertEqual([line for kind, line in self.lines][1:3], ["msv?", "MSV?"])
        self.assertRegex(self.lines[3][1], r"^\(dt = .* ms\)$")

    def test_a_list_passes_its_lines(self):
        path = self.list_file("' zweimal", "$REPEAT 1", "größe 5 µm", "$ENDREPEAT")
        status = kolvane.run(path, connect=self.instrument(), on_line=self.on_line)
        self.assertIs(status, RunStatus.DONE)
        # The instrument handles bytes, and upper() does not change those beyond ASCII.
        self.assertEqual(self.lines, [("answer", "GRößE 5 µM")] * 2)

    def test_a_time_out_is_an_error_instead_of_the_answer(self):
        status = kolvane.send(["HUSH", "a"], connect=self.instrument(), on_line=self.on_line, timeout=0.05)
        self.assertIs(status, RunStatus.ANSWER_FAILED)
        self.assertEqual([kind for kind, line in self.lines], [LineKind.ERROR, LineKind.ANSWER])

    def test_a_message_is_an_error_line(self):
        status = kolvane.run(self.list_file("a", "$NOSUCH"), connect="OFFLINE", on_line=self.on_line)
        self.assertIs(status, RunStatus.STOPPED)
        self.assertEqual(self.lines[1:], [("error", "Fehler in Befehlsliste (Zeile 2): Unbekannter $ Befehl")])

    def test_without_a_function_they_are_printed(self):
        program = "import kolvane, sys; sys.exit(kolvane.send(['', 'x'], connect=sys.argv[1]))"
        run = subprocess.run([sys.executable, "-c", program, self.instrument()], capture_output=True, text=True)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "\nX\n", ""))

    def test_with_a_function_nothing_is_printed(self):
        program = """
import kolvane, sys
sys.exit(kolvane.send("x", connect=sys.argv[1], verbose=True, on_line=lambda kind, line: None))
"""
        for resource, status in ((self.instrument(), RunStatus.DONE), ("NOWHERE", RunStatus.USAGE)):
            run = subprocess.run([sys.executable, "-c", program, resource], capture_output=True, text=True)
            self.assertEqual((run.returncode, run.stdout, run.stderr), (status, "", ""))


class Options(HeadlessCase):
    def test_they_may_be_kept_and_changed(self):
        options = RunOptions(connect=self.instrument(), show_commands=True)
        kolvane.send("a", options, on_line=self.on_line)
        kolvane.send("b", options, on_line=self.on_line, show_commands=False)
        self.assertEqual([line for kind, line in self.lines], ["a", "A", "B"])

    def test_terminators_are_texts_or_bytes(self):
        for terminator in ("\r\n", b"\r\n"):
            kolvane.send("a", connect=self.instrument(), on_line=self.on_line, send_terminator=terminator)
            self.assertEqual(self.server.received, [b"a\r\n"])

    def test_a_count_ends_an_answer(self):
        kolvane.send("abcdef", connect=self.instrument(), on_line=self.on_line, count=4)
        self.assertEqual(self.lines, [("answer", "ABCD"), ("error", "4 Bytes warten")])

    def test_a_log_takes_the_lines(self):
        log = self.folder / "run.log"
        kolvane.send("a", connect=self.instrument(), on_line=self.on_line, log=log)
        self.assertIn(b"A\r\n", log.read_bytes())

    def test_every_option_reaches_the_run(self):
        """Each is checked by its effect if it is visible, otherwise by being accepted."""
        status = kolvane.send(
            "a", connect=self.instrument(), on_line=self.on_line, settings_file=self.folder / "no.ini",
            folder=os.fsencode(self.folder), baud=9600, parity="odd", data_bits=7, stop_bits=2, timeout=1,
            receive_mode="auto", binary=True, receive_terminator="",
        )  # fmt: skip
        self.assertIs(status, RunStatus.DONE)
        self.assertEqual(self.lines, [("answer", "<41><0D><0A>")])

    def test_records_are_answers(self):
        options = {"connect": self.instrument(), "on_line": self.on_line}
        kolvane.send("1,2.5", format="csv", fields=3, **options)
        kolvane.send("x", format="json", **options)
        self.assertEqual([kind for kind, line in self.lines], [LineKind.ANSWER] * 3)
        self.assertEqual(self.lines[0][1], "time,command,field1,field2,field3")
        self.assertRegex(self.lines[1][1], '^.*,"1,2.5",1,2.5,$')
        self.assertEqual(json.loads(self.lines[2][1])["answer"], "X")

    def test_passes_follow_one_another(self):
        options = {"connect": self.instrument(), "on_line": self.on_line}
        kolvane.send(["a", "b"], repeat=2, every=0.001, **options)
        kolvane.run(self.list_file("c"), repeat=2, **options)
        self.assertEqual([line for kind, line in self.lines], ["A", "B", "A", "B", "C", "C"])

    def test_a_stop_ends_the_wait_for_the_next_pass(self):
        status = kolvane.send(
            "a", every=1e6, connect=self.instrument(), on_line=self.on_line, stop_requested=lambda: bool(self.lines)
        )
        self.assertIs(status, RunStatus.STOPPED)

    def test_options_of_the_exchange_are_applied(self):
        options = {"connect": self.instrument(), "on_line": self.on_line, "timeout": 0.05}
        kolvane.send(["HUSH", "a?"], queries_only=True, flush=True, reconnect=True, **options)
        kolvane.send("STP", device_words=False, **options)
        kolvane.send("#15abcde", blocks=True, **options)
        kolvane.send("µ", utf8=True, **options)
        self.assertEqual([line for kind, line in self.lines], ["A?", "STP", "#15ABCDE", "µ"])
        self.assertEqual(self.server.received[-1], "µ\n".encode())

    def test_failed_answers_need_no_line(self):
        program = "import kolvane, sys; kolvane.send('HUSH', connect=sys.argv[1], timeout=0.05, error_lines=False)"
        run = subprocess.run([sys.executable, "-c", program, self.instrument()], capture_output=True, text=True)
        self.assertEqual(run.stdout, "")
        self.assertRegex(run.stderr, "-30")

    def test_the_lines_of_the_log_start_with_time_stamps(self):
        log = self.folder / "run.log"
        kolvane.send("a", connect=self.instrument(), on_line=self.on_line, log=log, timestamps=True)
        self.assertRegex(log.read_text(), r"(?m)^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} A$")

    def test_a_transcript_takes_all_bytes(self):
        path = self.folder / "t.jsonl"
        kolvane.send("a", connect=self.instrument(), on_line=self.on_line, transcript=path, transcript_times=False)
        lines = [json.loads(line) for line in path.read_text().splitlines()]
        self.assertEqual(
            [(line["way"], base64.b64decode(line["bytes"])) for line in lines],
            [("open", b""), ("out", b"a\n"), ("in", b"A\r\n"), ("close", b"")],
        )

    def test_what_the_program_would_refuse_is_a_value_error(self):
        refused = (
            {"baud": 0},
            {"parity": "mark"},
            {"data_bits": 9},
            {"stop_bits": 0},
            {"timeout": -1},
            {"timeout": float("nan")},
            {"receive_mode": "gap"},
            {"count": 1026},
            {"receive_terminator": "ab"},
            {"send_terminator": "Ω"},
            {"binary": True, "receive_mode": "terminator"},
            {"count": 1, "receive_mode": "auto"},
            {"format": "xml"},
            {"format": None},
            {"fields": 0, "format": "csv"},
            {"fields": 1},
            {"repeat": 0},
            {"every": 0},
        )
        for options in refused:
            with self.assertRaises(ValueError, msg=options):
                kolvane.send("a", connect="OFFLINE", on_line=self.on_line, **options)
        self.assertEqual(self.lines, [])

    def test_an_unknown_option_is_named(self):
        with self.assertRaisesRegex(TypeError, "bauds"):
            kolvane.send("a", bauds=9600)

    def test_a_value_of_a_wrong_type_is_named(self):
        for name, value in (
            ("baud", 9600.5),
            ("count", 1.5),
            ("repeat", "2"),
            ("connect", None),
            ("timeout", "2"),
            ("every", b"2"),
            ("log", 5),
            ("send_terminator", 5),
        ):
            with self.assertRaisesRegex(TypeError, f"{name} must be a"):
                kolvane.send("a", on_line=self.on_line, **{"connect": "OFFLINE", name: value})
        for command in (b"a", 5, None):
            with self.assertRaisesRegex(TypeError, "a command must be a str"):
                kolvane.send(["b", command], connect="OFFLINE", on_line=self.on_line)
        self.assertEqual(self.lines, [])

    def test_a_path_with_a_null_byte_is_refused(self):
        for call in (
            lambda: kolvane.run("a\0b", connect="OFFLINE"),
            lambda: kolvane.send("a", connect="OFFLINE", transcript=self.folder / "a\0b"),
            lambda: kolvane.send("a", connect="OFFLINE", log=self.folder / "a\0b"),
        ):
            with self.assertRaisesRegex(ValueError, "(command_list|transcript|log): embedded null byte in the path"):
                call()
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_any_true_value_requests_a_stop(self):
        for value, status in ((["reason"], RunStatus.STOPPED), ([], RunStatus.DONE), (None, RunStatus.DONE)):
            stopped = kolvane.send("a", connect="OFFLINE", on_line=self.on_line, stop_requested=lambda v=value: v)
            self.assertIs(stopped, status)

    def test_several_commands_are_a_list(self):
        with self.assertRaisesRegex(TypeError, "options must be RunOptions, not 'b'; several commands are a list"):
            kolvane.send("a", "b")
        with self.assertRaisesRegex(TypeError, "options must be RunOptions"):
            kolvane.run("a.CMD", RunOptions)

    def test_a_list_that_cannot_be_read(self):
        self.assertIs(kolvane.run(self.folder / "none.CMD", connect="OFFLINE", on_line=self.on_line), RunStatus.USAGE)
        self.assertRegex(self.lines[0][1], "none.CMD")

    def test_no_connection(self):
        status = kolvane.send("a", connect="TCPIP::127.0.0.1::1::SOCKET", on_line=self.on_line)
        self.assertIs(status, RunStatus.NOT_CONNECTED)
        self.assertEqual([kind for kind, line in self.lines], [LineKind.ERROR])

    def test_kinds_and_statuses_can_be_pickled(self):
        for value in (LineKind.TIME, RunStatus.STOPPED, RunOptions(baud=300), kolvane.Port("a", "b", "c")):
            self.assertEqual(pickle.loads(pickle.dumps(value)), value)


class Ends(HeadlessCase):
    class Alarm(Exception):
        pass

    @contextlib.contextmanager
    def alarm_after(self, seconds):
        """Within the block a signal's handler raises Alarm after `seconds`."""

        def ring(number, frame):
            raise self.Alarm

        before = signal.signal(signal.SIGALRM, ring)
        signal.setitimer(signal.ITIMER_REAL, seconds)
        try:
            yield
        finally:
            signal.setitimer(signal.ITIMER_REAL, 0)
            signal.signal(signal.SIGALRM, before)

    def test_by_request_of_the_caller(self):
        status = kolvane.send(
            ["a", "b", "c"],
            connect=self.instrument(),
            on_line=self.on_line,
            stop_requested=lambda: len(self.server.received) == 2,
        )
        self.assertIs(status, RunStatus.STOPPED)
        self.assertEqual(self.lines[:2], [("answer", "A"), ("answer", "B")])
        self.assertEqual(self.server.received, [b"a\n", b"b\n"])

    def test_by_an_exception_of_on_line(self):
        def fail(kind, line):
            self.on_line(kind, line)
            raise LookupError(line)

        with self.assertRaisesRegex(LookupError, "^A$"):
            kolvane.send(["a", "b"], connect=self.instrument(), on_line=fail)
        self.assertEqual(self.lines, [("answer", "A")])
        self.assertEqual(self.server.received, [b"a\n"])

    def test_by_an_exception_of_stop_requested(self):
        def fail():
            raise LookupError

        with self.assertRaises(LookupError):
            kolvane.send("a", connect=self.instrument(), on_line=self.on_line, stop_requested=fail)

    def test_by_a_signal_whose_handler_raises(self):
        endless = self.list_file("$SILENT ON", "$REPEAT 32767", "$DELAY 1", "$ENDREPEAT")
        with self.assertRaises(self.Alarm), self.alarm_after(0.02):
            kolvane.run(endless, connect="OFFLINE")

    def test_by_a_signal_during_a_wait(self):
        resource = self.instrument()
        with self.assertRaises(self.Alarm), self.alarm_after(0.2):
            kolvane.send(["HUSH", "b"], connect=resource, timeout=600, on_line=self.on_line)
        self.assertEqual(self.server.received, [b"HUSH\n"])

    def test_another_run_may_follow(self):
        with self.assertRaises(LookupError):
            kolvane.send("a", connect="OFFLINE", stop_requested=unittest.mock.Mock(side_effect=LookupError))
        self.assertIs(kolvane.send("a", connect="OFFLINE", on_line=self.on_line), RunStatus.DONE)


class Threads(HeadlessCase):
    def test_a_run_in_another_thread_does_not_block_the_loop(self):
        async def answered_by_the_loop():
            resource = self.instrument()
            loop, asked, may_answer = asyncio.get_running_loop(), asyncio.Event(), threading.Event()
            self.server.ask = lambda: (loop.call_soon_threadsafe(asked.set), may_answer.wait())
            run = asyncio.create_task(asyncio.to_thread(kolvane.send, "ASK", connect=resource, on_line=self.on_line))
            await asked.wait()
            may_answer.set()
            return await run

        self.assertIs(asyncio.run(answered_by_the_loop()), RunStatus.DONE)
        self.assertEqual(self.lines, [("answer", "ASK")])

    def test_one_run_at_a_time(self):
        refusals = []

        def again(kind, line):
            with self.assertRaisesRegex(kolvane.Error, "one at a time") as caught:
                kolvane.send("b", connect="OFFLINE")
            refusals.append(caught.exception)

        self.assertIs(kolvane.send("a", connect="OFFLINE", on_line=again), RunStatus.DONE)
        self.assertEqual(len(refusals), 1)


class Ports(HeadlessCase):
    def test_each_has_a_resource_a_node_and_a_description(self):
        (self.folder / "class/ppdev/parport1").mkdir(parents=True)
        settings = {"KOLVANE_SYSFS": str(self.folder), "KOLVANE_LPT2": "/dev/parport1", "KOLVANE_GPIB_LIBRARY": "/nowhere"}
        with unittest.mock.patch.dict(os.environ, settings):
            ports = kolvane.list_ports()
        self.assertEqual(ports, [kolvane.Port("LPT2", "/dev/parport1", "parallel port")])
        self.assertEqual(ports[0].resource, "LPT2")


if __name__ == "__main__":
    unittest.main()
