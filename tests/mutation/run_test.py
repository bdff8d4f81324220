import importlib.machinery
import importlib.util
import io
import os
import pathlib
import tempfile
import types
import unittest
from contextlib import redirect_stdout

from private_tree import PrivateTree, Suite
from token_changes import Change

_FILE = pathlib.Path(__file__).with_name("run")
_LOADER = importlib.machinery.SourceFileLoader("run", str(_FILE))
run = importlib.util.module_from_spec(importlib.util.spec_from_loader("run", _LOADER))
_LOADER.exec_module(run)


class Tree:
    """Replaces the copy of the sources; the verdicts are given in advance, an exception among them is raised."""

    def __init__(self, sources, *verdicts):
        self.sources = sources
        self._verdicts = list(verdicts)

    def verdict(self, _path, _text):
        verdict = self._verdicts.pop(0)
        if isinstance(verdict, BaseException):
            raise verdict
        return verdict


def report_of(count, *verdicts):
    with tempfile.TemporaryDirectory() as folder, redirect_stdout(io.StringIO()):
        sources = pathlib.Path(folder)
        os.makedirs(sources / "src/window")
        (sources / "src/window/a.cpp").write_text("x = 1;\n")
        file = io.StringIO()
        arguments = types.SimpleNamespace(count=count, seed=3, minutes=float("inf"))
        run.run_changes(Tree(sources, *verdicts), [("src/window/a.cpp", Change(4, 5, "2"))] * 9, arguments, run.Report(file))
        return file.getvalue()


class RunTest(unittest.TestCase):
    def test_figures_and_survivors(self):
        report = report_of(2, None, "a_test: A.B", "")
        self.assertIn("found    src/window/a.cpp:1  1  =>  2  (a_test: A.B)\nSURVIVED src/window/a.cpp:1", report)
        self.assertIn("seed 3, 1 drawn again", report)
        self.assertIn("window: found 1 of 2 (50.0 %)\nall: found 1 of 2\n", report)
        self.assertIn("survived: src/window/a.cpp:1\n@@ -1 +1 @@\n-x = 1;\n+x = 2;\n", report)

    def test_ctrl_c_ends_with_the_report(self):
        report = report_of(9, "a_test: A.B", "", KeyboardInterrupt())
        self.assertIn("stopped\n", report)
        self.assertIn("all: found 1 of 2\n", report)
        self.assertIn("survived: src/window/a.cpp:1\n", report)


class PrivateTreeTest(unittest.TestCase):
    def test_ctrl_c_ends_the_programs_that_run(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            os.makedirs(root / "tree/tests/base")
            tree = PrivateTree(root, root, 1, [])
            pressed = Suite("pressed", "base", ("sh", "-c", "kill -INT $PPID; exec sleep 1000"), (), False)
            waiting = Suite("waiting", "base", ("touch", str(root / "started")), (), False)
            with self.assertRaises(KeyboardInterrupt):
                tree.run_unchanged([pressed, waiting])
            self.assertFalse((root / "started").exists())

    def test_programs_that_loop_or_crash_fail(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            os.makedirs(root / "tree/tests/base")
            tree = PrivateTree(root, root, 1, [])
            commands = {"good": "exit 0", "bad": "exit 3", "crash": "kill -ABRT $$", "loop": "kill -XCPU $$",
                        "hangup": "kill -HUP $$"}  # fmt: skip
            suites = [Suite(name, "base", ("sh", "-c", command), (), False) for name, command in commands.items()]
            self.assertEqual(tree.run_unchanged(suites), [("bad", "status 3"), ("crash", "status -6"), ("loop", "time-out"),
                                                          ("hangup", "status -1")])  # fmt: skip


if __name__ == "__main__":
    unittest.main()
