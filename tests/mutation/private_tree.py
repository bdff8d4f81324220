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
import threading
import time
from dataclasses import dataclass

# Tests that do not depend on the behaviour of the sources, or build them a second time.
_EXCLUDED = re.compile(r"packages\.|Manual\.|Soak\.|OnX\.|Python\.(types|stubs|hosts|on_an)|Mutation\.|.*_NOT_BUILT")
_UNCHANGED_SECONDS = 300  # limit for an unchanged program
_SLOWER = 8  # limit for a changed program: this many times the unchanged program's time
_AT_LEAST = 45.0  # seconds, for the shortest programs
_QUICK = 3.0  # seconds; programs that take longer unchanged are built and run last
_PROCESSOR_SECONDS = 10  # limit of processor time, which ends loops early: this, plus
_PROCESSOR_SLOWER = 4  # this many times the unchanged program's time
_ADDRESS_SPACE = 12 << 30
_FILE_SIZE = 2 << 40  # a test makes a sparse file of 1 TiB


@dataclass(frozen=True)
class Suite:
    """One GoogleTest program, or one test of another kind."""

    name: str
    folder: str
    command: tuple
    environment: tuple
    is_google: bool


class PrivateTree:
    """Never changes the checkout, except its folder in build/."""

    def __init__(self, root, folder, jobs, programs):
        """`programs`: those that are built and run; all if empty."""
        self._programs = programs
        self._root = root
        self._jobs = jobs
        self._build_folder = folder / "tree/build/release"
        self._home = folder / "home"
        self.sources = folder / "tree"
        self._suites = []
        self._seconds = {}
        self._inputs = {}
        self._running = set()
        self._stopped = False
        self._lock = threading.Lock()

    def prepare(self):
        """Copies the files that git does not ignore, builds them and runs all tests. Leaves out programs that fail; exits
        if the build fails, or more than a fifth of the programs."""
        self._copy()
        print("building the unchanged sources", flush=True)
        # With the options of ./check, so that the compiler cache has most of it.
        options = ["-DKOLVANE_TESTS=ON", "-DKOLVANE_BENCHMARKS=OFF"]
        if shutil.which("mold"):
            options += ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=mold", "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=mold"]
        subprocess.run(["cmake", "--preset", "release", *options], cwd=self.sources, check=True, stdout=subprocess.DEVNULL)
        self._require(self._build(), "the unchanged sources cannot be built")
        self._suites = self._find_suites()
        print(f"running the unchanged sources' tests, {len(self._suites)} programs", flush=True)
        failures = self.run_unchanged(self._suites)
        for name, test in failures:
            print(f"left out, fails unchanged: {name}: {test}", flush=True)
        excluded = {name for name, _ in failures}
        self._suites = [suite for suite in self._suites if suite.name not in excluded]
        self._require(len(failures) <= len(self._suites) // 4, "the tests of the unchanged sources fail")
        self._inputs = {suite.name: self._inputs_of(suite) for suite in self._suites if suite.is_google}

    def verdict(self, path, text):
        """The test that finds `text` at `path`; "" if none does, None if it does not compile."""
        file = self.sources / path
        unchanged = file.read_text()
        try:
            file.write_text(text)
            for suites in self._stages(path):
                if not self._build(suites):
                    return None
                if found := self._first_failure(suites):
                    return found
            return ""
        finally:
            file.write_text(unchanged)

    def _require(self, holds, what):
        if not holds:
            sys.exit(f"tests/mutation/run: {what}")

    def _copy(self):
        """Unchanged files keep their time, so that nothing is rebuilt needlessly."""
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

    def _build(self, suites=()):
        """Builds what `suites` need; everything if there are none, or if one of them is not a GoogleTest program."""
        targets = [suite.name for suite in suites] if suites and all(suite.is_google for suite in suites) else self._programs
        environment = dict(os.environ, CCACHE_BASEDIR=str(self.sources), CCACHE_NOHASHDIR="1")
        # Objects of changed sources are never needed again.
        if self._suites:
            environment["CCACHE_READONLY"] = "1"
        with open(self._build_folder / "build.log", "wb") as log:
            command = ["ninja", "-C", self._build_folder, f"-j{self._jobs}", *targets]
            return subprocess.run(command, env=environment, stdout=log, stderr=log, check=False).returncode == 0

    def _inputs_of(self, suite):
        listed = subprocess.run(["ninja", "-C", self._build_folder, "-t", "inputs", suite.name], check=True, capture_output=True,
                                text=True).stdout  # fmt: skip
        sources = str(self.sources) + "/"
        return {line.removeprefix(sources) for line in listed.splitlines() if line.startswith(sources)}

    def _stages(self, path):
        """The suites that contain `path`, in the order in which they are built and run: first those of its own folder,
        then the quick ones, then the rest."""
        folder = path.split("/")[1]
        stages = [[], [], []]
        for suite in sorted(self._suites, key=lambda suite: self._seconds[suite.name]):
            if suite.is_google and path not in self._inputs[suite.name]:
                continue
            is_quick = suite.is_google and self._seconds[suite.name] < _QUICK
            stages[0 if suite.folder == folder else 1 if is_quick else 2].append(suite)
        return [stage for stage in stages if stage]

    def _find_suites(self):
        listed = subprocess.run(["ctest", "--test-dir", self._build_folder, "--show-only=json-v1"], check=True,
                                capture_output=True, env=self._environment(), text=True).stdout  # fmt: skip
        found = collections.OrderedDict()
        for test in json.loads(listed)["tests"]:
            if "command" not in test or _EXCLUDED.match(test["name"]):
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
        """The name of the first test that fails, "" if none does."""
        command = list(suite.command)
        if suite.is_google:
            command += ["--gtest_fail_fast", "--gtest_brief=1"] + ([f"--gtest_filter={only}"] if only else [])
        with tempfile.TemporaryFile() as output:
            process = self._start(suite, command, output)
            if not process:
                return ""
            try:
                status = process.wait(seconds)
            except subprocess.TimeoutExpired:
                status = None
            _end_group(process)
            process.wait()
            self._running.discard(process)
            output.seek(0)
            return self._failed_test(status, output.read().decode("utf-8", "replace"))

    def _start(self, suite, command, output):
        """None after Ctrl+C."""
        processor_seconds = int(_PROCESSOR_SECONDS + _PROCESSOR_SLOWER * self._seconds.get(suite.name, _UNCHANGED_SECONDS))
        with self._lock:
            if self._stopped:
                return None
            process = subprocess.Popen(command, env=self._environment(suite), cwd=self._working_folder(suite), stdout=output,
                                       stderr=output, stdin=subprocess.DEVNULL, start_new_session=True,
                                       preexec_fn=lambda: _limit(processor_seconds))  # fmt: skip
            self._running.add(process)
            return process

    def _stop(self):
        with self._lock:
            self._stopped = True
            for process in self._running:
                _end_group(process)

    def _working_folder(self, suite):
        return self._build_folder / "tests" / suite.folder if suite.is_google else self.sources / "tests" / suite.folder

    @staticmethod
    def _failed_test(status, output):
        if status == 0:
            return ""
        if status in (None, -signal.SIGXCPU):
            return "time-out"
        failed = re.search(r"^\[  FAILED  \] ([\w./]+)", output, re.MULTILINE)
        unittest = re.search(r"^(?:FAIL|ERROR): (\w+)", output, re.MULTILINE)
        named = failed or unittest
        return named[1] if named else f"status {status}"

    def run_unchanged(self, suites):
        """The tests that fail with the unchanged sources, as (suite, test)."""
        failures = []

        def run(suite):
            started = time.monotonic()
            failed = self._run(suite, _UNCHANGED_SECONDS) and self._run(suite, _UNCHANGED_SECONDS)
            self._seconds[suite.name] = time.monotonic() - started
            if failed:
                failures.append((suite.name, failed))

        self._for_each(suites, run)
        return failures

    def _first_failure(self, suites):
        found = []

        def run(suite):
            if not found and (failed := self._confirmed(suite)):
                found.append(f"{suite.name}: {failed}")

        self._for_each(suites, run)
        return found[0] if found else ""

    def _for_each(self, suites, run):
        """As many at a time as there are jobs. Ctrl+C ends the running programs, and waiting ones are not started."""
        with concurrent.futures.ThreadPoolExecutor(self._jobs) as pool:
            try:
                list(pool.map(run, suites))
            except KeyboardInterrupt:
                self._stop()
                raise

    def _confirmed(self, suite):
        """A failure counts if the same test fails again, alone or with the others; a hang or a crash counts at once."""
        seconds = max(_AT_LEAST, _SLOWER * self._seconds[suite.name])
        failed = self._run(suite, seconds)
        if not failed or failed == "time-out" or failed.startswith("status"):
            return failed
        again = suite.is_google and self._run(suite, seconds, failed) or self._run(suite, seconds)
        return failed if again == failed else ""


def _limit(processor_seconds):
    resource.setrlimit(resource.RLIMIT_CPU, (processor_seconds, processor_seconds + 5))
    resource.setrlimit(resource.RLIMIT_AS, (_ADDRESS_SPACE, _ADDRESS_SPACE))
    resource.setrlimit(resource.RLIMIT_FSIZE, (_FILE_SIZE, _FILE_SIZE))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    # A background shell job ignores these signals, and the tests send them.
    for number in (signal.SIGHUP, signal.SIGINT, signal.SIGQUIT):
        signal.signal(number, signal.SIG_DFL)


def _end_group(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
