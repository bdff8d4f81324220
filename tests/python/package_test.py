"""The package as other tools see it: documentation, version, names, paths, blocks."""

import importlib.metadata
import inspect
import os
import pathlib
import pickle
import traceback
import unittest
import weakref

import kolvane
from device_object_test import Single
from terminal_case import TerminalCase


def public_objects():
    """(name, object) of everything public in the package, methods and properties included."""
    for name in kolvane.__all__:
        thing = getattr(kolvane, name)
        if not (inspect.isclass(thing) or callable(thing)):
            continue
        yield name, thing
        if inspect.isclass(thing):
            for member, value in vars(thing).items():
                if not member.startswith("_") and (callable(value) or isinstance(value, property)):
                    yield f"{name}.{member}", value


class Documentation(unittest.TestCase):
    def test_everything_public_has_a_docstring(self):
        names = [name for name, thing in public_objects()]
        self.assertIn("MainClass.OpenTerminal", names)
        self.assertEqual([name for name, thing in public_objects() if not inspect.getdoc(thing)], [])
        self.assertTrue(kolvane.__doc__)

    def test_help_says_what_an_operation_takes_and_raises(self):
        text = kolvane.MainClass.OpenTerminal.__doc__
        for word in ("OperMode: int", "-> None", "NoDisplay", "main thread"):
            self.assertIn(word, text)


class Version(unittest.TestCase):
    def test_it_is_a_release_number(self):
        self.assertRegex(kolvane.__version__, r"^\d+\.\d+\.\d+$")

    def test_the_metadata_agree(self):
        self.assertEqual(importlib.metadata.version("kolvane"), kolvane.__version__)
        self.assertEqual(importlib.metadata.metadata("kolvane")["Name"], "kolvane")
        self.assertIn("kolvane", importlib.metadata.packages_distributions()["kolvane"])

    def test_there_is_one_set_of_metadata(self):
        self.assertEqual(len(list(importlib.metadata.distributions(name="kolvane"))), 1)


class Names(unittest.TestCase):
    def test_public_classes_are_those_of_the_package(self):
        for name, thing in public_objects():
            if inspect.isclass(thing):
                self.assertEqual((thing.__module__, thing.__qualname__), ("kolvane", name))

    def test_an_error_is_printed_by_its_public_name(self):
        terminal = kolvane.MainClass()
        terminal.InitTerminal(None)
        with self.assertRaises(kolvane.Error) as caught:
            terminal.OpenTerminal(1, 0)
        self.assertEqual(
            traceback.format_exception_only(caught.exception),
            ["kolvane.Error: Kein Geräteobjekt übergeben\n"],
        )

    def test_an_error_can_be_pickled(self):
        error = pickle.loads(pickle.dumps(kolvane.NoDisplay("none")))
        self.assertIsInstance(error, kolvane.Error)
        self.assertIsInstance(error, RuntimeError)


class Paths(TerminalCase):
    def settings_saved_by_window(self, path):
        self.terminal.SetOptions(SettingsFile=path, Folder=pathlib.Path(self.settings).parent)
        self.use(Single(), 1, lambda: None)
        return os.path.exists(self.settings)

    def test_a_path_object(self):
        self.assertTrue(self.settings_saved_by_window(pathlib.Path(self.settings)))

    def test_bytes(self):
        self.assertTrue(self.settings_saved_by_window(os.fsencode(self.settings)))

    def test_any_object_with_fspath(self):
        class Named:
            def __fspath__(inner):
                return self.settings

        self.assertTrue(self.settings_saved_by_window(Named()))

    def test_a_name_that_is_not_utf_8(self):
        self.settings = os.path.join(os.path.dirname(self.settings), os.fsdecode(b"\xff.ini"))
        self.assertTrue(self.settings_saved_by_window(self.settings))

    def test_what_is_not_a_path_is_refused(self):
        with self.assertRaises(TypeError):
            self.terminal.SetOptions(Folder=7)


class Blocks(TerminalCase):
    def test_the_device_object_is_released_at_the_end(self):
        device = Single()
        gone = weakref.ref(device)
        with kolvane.MainClass() as terminal:
            self.assertIsInstance(terminal, kolvane.MainClass)
            terminal.InitTerminal(device)
            del device
            self.assertIsNotNone(gone())
        self.assertIsNone(gone())

    def test_the_device_object_is_released_after_an_exception(self):
        device = Single()
        gone = weakref.ref(device)
        with self.assertRaises(LookupError), kolvane.MainClass() as terminal:
            terminal.InitTerminal(device)
            del device
            raise LookupError
        self.assertIsNone(gone())


if __name__ == "__main__":
    unittest.main()
