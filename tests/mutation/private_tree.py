"""A copy of the sources that may be changed, its build, and its tests."""

import collections
import concurrent.futures
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass

# What says nothing about the behaviour of the sources, or builds them a second time.
_LEFT_OUT = re.compile(r"Packages\.|Manual\.|Soak\.|OnX\.|Python\.(types|stubs|hosts|on_an)|Mutation\.|.*_NOT_BUILT")
_SLOWER = 6  # a changed program may take so many times what the unchanged one took
_AT_LEAST = 20.0  # seconds, for the shortest programs
_ADDRESS_SPACE = 12 << 30
_FILE_SIZE = 2 << 40  # a test makes a sparse file of 1 TiB


@dataclass(frozen=True)
class Suite:
    """One program with tests, or one test that is no program of GoogleTest's."""

    name: str
    folder: str
    command: tuple
    environment: tuple
    is_google: bool


class PrivateTree:
    """Never touches the checkout, but its folder in build/."""

    def __init__(self, root, folder, jobs, programs):
        """`programs`: those that are built and run; all where there is none."""
        self._programs = programs
        self._root = root
        self._jobs = jobs
        self._build_folder = folder / "tree/build/release"
        self._home = folder / "home"
        self.sources = folder / "tree"
        self._suites = []
        self._allowed = {}

    def prepare(self):
        """Copies what git knows, builds it and runs all tests; ends the program where they fail."""
        self._copy()
        print("building the unchanged sources", flush=True)
        # As ./check builds, so that the compiler cache has most of it.
        options = ["-DKOLVANE_TESTS=ON", "-DKOLVANE_BENCHMARKS=OFF"]
        if shutil.which("mold"):
            options += ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=mold", "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=mold"]
        subprocess.run(["cmake", "--preset", "release", *options], cwd=self.sources, check=True, stdout=subprocess.DEVNULL)
        self._need(self._build(), "the unchanged sources cannot be built")
        self._suites = self._find_suites()
        print(f"running the unchanged sources' tests, {len(self._suites)} programs", flush=True)
        failures = self._run_unchanged()
        for name, test in failures:
            print(f"left out, fails unchanged: {name}: {test}", flush=True)
        left_out = {name for name, _ in failures}
        self._suites = [suite for suite in self._suites if suite.name not in left_out]
        self._need(len(failures) <= len(self._suites) // 4, "the tests of the unchanged sources fail")

    def verdict(self, path, text):
        """Which test finds `text` at `path`; "" where none does, None where it does not compile."""
        file = self.sources / path
        unchanged = file.read_text()
        try:
            file.write_text(text)
            if not self._build():
                return None
            return self._first_failure(path)
        finally:
            file.write_text(unchanged)

    def _need(self, holds, what):
        if not holds:
            sys.exit(f"tests/mutation/run: {what}")

    def _copy(self):
        """Files that are the same keep their time, so that nothing is built in vain."""
        names = subprocess.run(["git", "ls-files", "-z", "-co", "--exclude-standard"], cwd=self._root, check=True,
                               capture_output=True, text=True).stdout.split("\0")  # fmt: skip
        kept = {name for name in names if name and (self._root / name).is_file()}
        for name in sorted(kept):
            source, target = self._root / name, self.sources / name
            if not target.is_file() or target.read_bytes() != source.read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)
        for file in [file for file in self.sources.rglob("*") if file.is_file()]:
            name = str(file.relative_to(self.sources))
            if name not in kept and not name.startswith("build/"):
                file.unlink()

    def _build(self):
        environment = dict(os.environ, CCACHE_BASEDIR=str(self.sources), CCACHE_NOHASHDIR="1")
        # What is compiled once and never again is not worth keeping.
        if self._suites:
            environment["CCACHE_READONLY"] = "1"
        with open(self._build_folder / "build.log", "wb") as log:
            command = ["ninja", "-C", self._build_folder, f"-j{self._jobs}", *self._programs]
            return subprocess.run(command, env=environment, stdout=log, stderr=log, check=False).returncode == 0

    def _find_suites(self):
        listed = subprocess.run(["ctest", "--test-dir", self._build_folder, "--show-only=json-v1"], check=True,
                                capture_output=True, env=self._environment(), text=True).stdout  # fmt: skip
        found = collections.OrderedDict()
        for test in json.loads(listed)["tests"]:
            if "command" not in test or _LEFT_OUT.match(test["name"]):
                continue
            command = test["command"]
            is_google = any(word.startswith("--gtest_filter=") for word in command)
            properties = {item["name"]: item["value"] for item in test.get("properties", [])}
            name = pathlib.Path(command[0]).name if is_google else test["name"]
            if self._programs and name not in self._programs:
                continue
            found.setdefault(name, Suite(name, self._folder_of(name, properties), (command[0],) if is_google else tuple(command),
                                         tuple(properties.get("ENVIRONMENT", [])), is_google))  # fmt: skip
        return list(found.values())

    def _folder_of(self, name, properties):
        for folder in sorted((self._build_folder / "tests").glob(f"*/CMakeFiles/{name}.dir")):
            return folder.parts[-3]
        return pathlib.Path(properties.get("WORKING_DIRECTORY", "")).name

    def _environment(self, suite=None):
        home = str(self._home)
        os.makedirs(home, exist_ok=True)
        own = {"HOME": home, "XDG_RUNTIME_DIR": "/tmp", "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8"}
        kept = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "WAYLAND_DISPLAY")
                and not name.startswith(("XDG_", "KOLVANE_"))}  # fmt: skip
        return kept | own | dict(entry.split("=", 1) for entry in (suite.environment if suite else ()))

    def _run(self, suite, seconds, only=None):
        """The name of the first test that fails, "" where none does."""
        command = list(suite.command)
        if suite.is_google:
            command += ["--gtest_fail_fast", "--gtest_brief=1"] + ([f"--gtest_filter={only}"] if only else [])
        with tempfile.TemporaryFile() as output:
            process = subprocess.Popen(command, env=self._environment(suite), cwd=self._working_folder(suite), stdout=output,
                                       stderr=output, stdin=subprocess.DEVNULL, start_new_session=True,
                                       preexec_fn=_limit)  # fmt: skip
            try:
                status = process.wait(seconds)
            except subprocess.TimeoutExpired:
                status = None
            _end_group(process)
            output.seek(0)
            return self._failed_test(status, output.read().decode("utf-8", "replace"))

    def _working_folder(self, suite):
        return self._build_folder / "tests" / suite.folder if suite.is_google else self.sources / "tests" / suite.folder

    @staticmethod
    def _failed_test(status, output):
        if status == 0:
            return ""
        if status is None:
            return "time-out"
        failed = re.search(r"^\[  FAILED  \] ([\w./]+)", output, re.MULTILINE)
        unittest = re.search(r"^(?:FAIL|ERROR): (\w+)", output, re.MULTILINE)
        named = failed or unittest
        return named[1] if named else f"status {status}"

    def _run_unchanged(self):
        failures = []

        def take(suite):
            begun = time.monotonic()
            failed = self._run(suite, 300)
            self._allowed[suite.name] = max(_AT_LEAST, _SLOWER * (time.monotonic() - begun))
            if failed:
                failures.append((suite.name, failed))

        with concurrent.futures.ThreadPoolExecutor(self._jobs) as pool:
            list(pool.map(take, self._suites))
        return failures

    def _first_failure(self, path):
        folder = path.split("/")[1]
        # The quick ones first; those of the changed folder before all others.
        ordered = sorted(self._suites, key=lambda suite: (suite.folder != folder, self._allowed[suite.name]))
        found = []

        def take(suite):
            if not found and (failed := self._confirmed(suite)):
                found.append(f"{suite.name}: {failed}")

        with concurrent.futures.ThreadPoolExecutor(self._jobs) as pool:
            list(pool.map(take, ordered))
        return found[0] if found else ""

    def _confirmed(self, suite):
        """A failure counts when the test fails again, by itself or once more among the others; a hang, or the end of the
        program, counts at once."""
        seconds = self._allowed[suite.name]
        failed = self._run(suite, seconds)
        if not failed or failed == "time-out" or failed.startswith("status"):
            return failed
        return suite.is_google and self._run(suite, seconds, failed) or self._run(suite, seconds)


def _limit():
    resource.setrlimit(resource.RLIMIT_AS, (_ADDRESS_SPACE, _ADDRESS_SPACE))
    resource.setrlimit(resource.RLIMIT_FSIZE, (_FILE_SIZE, _FILE_SIZE))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def _end_group(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()
