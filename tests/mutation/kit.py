"""Compiles a changed copy of the library and runs the tests against it.

The tests are built once and linked to a shared library of the component. A change of a source therefore costs the
compilation of that source and one link; a change of a private header costs every object that includes it, the tests
among them included.
"""
import json
import os
import pathlib
import re
import resource
import shlex
import shutil
import subprocess
import time

# The suites that judge the component, the quick ones first.
ORDER = [
    "unit",
    "search_portable",
    "deliberate",
    "corpus",
    "conversation",
    "laws",
    "wipe",
    "hostile",
    "replay",
    "oom",
    "threads",
]
# Optimised, because the comparison of objects needs it, with the checks of the standard library switched on.
# Everything is visible, because the tests call private members.
LIBRARY_FLAGS = ["-O2", "-g0", "-w", "-fvisibility=default"]
SHARED = "libcommonmedia_mutated.so"
TEST_FLAGS = ["-w"]
MEMORY = 4 << 30
OUTPUT = 64 << 20


class Broken(Exception):
    """The unchanged library does not pass."""


class Outcome:
    def __init__(self, state, by=""):
        self.state = state  # invalid, same, killed, survived
        self.by = by


class Plan:
    """Reads from the build directory how each object is compiled, what it includes and what is linked."""

    def __init__(self, root, build):
        self.root = root
        self.build = build
        self.library = {}  # object -> command
        self.tests = {name: {} for name in ORDER}  # suite -> {object -> command}
        for entry in json.loads((build / "compile_commands.json").read_text()):
            command = shlex.split(entry["command"])
            output = command[command.index("-o") + 1]
            target = re.search(r"/CMakeFiles/(\w+)\.dir/", output).group(1)
            if target == "commonmedia":
                self.library[output] = command
            elif target.removeprefix("test_") in self.tests:
                self.tests[target.removeprefix("test_")][output] = command
        self.includes = self._includes()
        self.links = {name: self._link(f"test_{name}") for name in ORDER}
        self.times = {}

    def _read(self, command):
        return subprocess.run(command, cwd=self.build, check=True, capture_output=True, text=True).stdout

    def _includes(self):
        includes = {}
        output = None
        for line in self._read(["ninja", "-t", "deps"]).splitlines():
            if line and not line.startswith(" "):
                output = line.split(":")[0]
                includes[output] = set()
            elif line.strip():
                includes[output].add(os.path.normpath(os.path.join(self.build, line.strip())))
        return includes

    def _link(self, target):
        lines = self._read(["ninja", "-t", "commands", target]).splitlines()
        command = next(line for line in reversed(lines) if f"-o {target}" in line or f"/{target} " in line)
        command = command.partition("&&")[2].rpartition("&&")[0] if command.startswith(":") else command
        return shlex.split(command)

    def depending(self, objects, path):
        return [name for name in objects if str(path) in self.includes.get(name, ())]


class Bench:
    """A separate copy of the library's tree, so that several mutants can be tried at the same time."""

    def __init__(self, plan, place, like=None):
        self.plan = plan
        self.place = place
        # The objects of all copies are equal if their sources are.
        self.flags = LIBRARY_FLAGS + [f"-ffile-prefix-map={place}={plan.root}"]
        shutil.rmtree(place, ignore_errors=True)
        if like is not None:
            shutil.copytree(like.place, place)
            self.plain, self.probes, self.whole, self.programs = like.plain, like.probes, like.whole, like.programs
            return
        (place / "lib").mkdir(parents=True)
        shutil.copytree(plan.root / "commonmedia", place / "commonmedia")
        self.plain = {}  # object -> its bytes before the change
        for output in plan.library:
            if not self.compile(plan.library, output, self.flags):
                raise Broken(f"{output} does not compile")
            self.plain[output] = self.object(output).read_bytes()
        headers = sorted((place / "commonmedia" / "src").glob("*.h"))
        self.probes = {header.name: self.probe(header.name) for header in headers}
        if None in self.probes.values():
            raise Broken("a private header does not compile by itself")
        self.link_library()
        self.whole = place / SHARED
        shutil.copyfile(place / "lib" / SHARED, self.whole)
        self.programs = {name: place / f"plain_{name}" for name in ORDER}
        for name, program in self.programs.items():
            if not self.link_test(name, program, []):
                raise Broken(f"test_{name} does not link")

    def object(self, output):
        return self.place / "objects" / output

    def here(self, word):
        return word.replace(f"{self.plan.root}/commonmedia", f"{self.place}/commonmedia")

    def compile(self, commands, output, flags):
        target = self.object(output)
        target.parent.mkdir(parents=True, exist_ok=True)
        command = [self.here(word) for word in commands[output]]
        command[command.index("-o") + 1] = str(target)
        return self.quiet(command + flags)

    def quiet(self, command):
        return subprocess.run(command, cwd=self.plan.build, capture_output=True, check=False).returncode == 0

    def probe(self, header):
        """All inline functions of a header as objects, with SSE2 and without; None if one does not compile."""
        source = self.place / "probe.cpp"
        target = self.place / "probe.o"
        source.write_text(f'#include "commonmedia/src/{header}"\n')
        some = next(iter(self.plan.library.values()))
        command = [self.here(word) for word in some]
        command[command.index("-o") + 1] = str(target)
        command[command.index("-c") + 1] = str(source)
        objects = []
        for machine in ([], ["-U__SSE2__"]):
            if not self.quiet(command + self.flags + ["-fkeep-inline-functions", *machine]):
                return None
            objects.append(target.read_bytes())
        return objects

    def link_library(self):
        target = self.place / "lib" / SHARED
        objects = [str(self.object(output)) for output in self.plan.library]
        if not self.quiet(["g++", "-shared", f"-Wl,-soname,{SHARED}", "-o", str(target), *objects, "-lcrypto"]):
            raise Broken("the library does not link")

    def link_test(self, name, program, changed):
        """Links a test program with the shared library in place of the static one."""
        shared = str(self.place / "lib" / SHARED)
        command = [str(self.object(word)) if word in changed else word for word in self.plan.links[name]]
        command = [shared if word == "commonmedia/libcommonmedia.a" else word for word in command]
        command[command.index("-o") + 1] = str(program)
        return self.quiet(command)

    def try_out(self, mutant, text):
        path = self.place / mutant.file
        original = self.plan.root / mutant.file
        path.write_text(mutant.apply(text))
        outputs = self.plan.depending(self.plan.library, original)
        try:
            return self._try_out(mutant, original, outputs)
        finally:
            path.write_text(text)
            for output in outputs:
                self.object(output).write_bytes(self.plain[output])
            shutil.copyfile(self.whole, self.place / "lib" / SHARED)

    def _try_out(self, mutant, original, outputs):
        same = True
        header = mutant.file.endswith(".h")
        if header:
            probe = self.probe(original.name)
            if probe is None:
                return Outcome("invalid")
            same = probe == self.probes[original.name]
            # The header's own tests run first, before a dozen sources are compiled again.
            for name in ORDER:
                if self.plan.depending(self.plan.tests[name], original):
                    outcome = self._ask(name, original)
                    if outcome is not None:
                        return outcome
        for output in outputs:
            if not self.compile(self.plan.library, output, self.flags):
                return Outcome("invalid")
            same = same and self.object(output).read_bytes() == self.plain[output]
        if same:
            return Outcome("same")
        self.link_library()
        for name in ORDER:
            outcome = self._ask(name, original if header else None)
            if outcome is not None:
                return outcome
        return Outcome("survived")

    def _ask(self, name, header):
        """The failure that one test program reports; None if it passes."""
        program = self.program(name, header)
        if program is None:
            return Outcome("invalid")
        failure = self.run(name, program)
        return Outcome("killed", failure) if failure else None

    def program(self, name, header):
        """The test program, compiled again where it includes the header; None if it does not compile."""
        commands = self.plan.tests[name]
        changed = self.plan.depending(commands, header) if header else []
        if not changed:
            return self.programs[name]
        for output in changed:
            if not self.compile(commands, output, TEST_FLAGS):
                return None
        program = self.place / f"test_{name}"
        return program if self.link_test(name, program, changed) else None

    def run(self, name, program, only="*"):
        """The first failure among the tests `only`, or an empty text. A timeout and a crash are failures."""
        seconds = int(10 * self.plan.times.get(name, 60)) + 5

        def limit():
            resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
            resource.setrlimit(resource.RLIMIT_FSIZE, (OUTPUT, OUTPUT))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

        log = self.place / "test.log"
        environment = dict(os.environ, LD_LIBRARY_PATH=str(self.place / "lib"))
        begin = resource.getrusage(resource.RUSAGE_CHILDREN)
        with log.open("wb") as out:
            try:
                status = subprocess.run(
                    [str(program), "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={only}"],
                    cwd=self.plan.build / "tests",
                    stdout=out,
                    stderr=subprocess.STDOUT,
                    stdin=subprocess.DEVNULL,
                    env=environment,
                    timeout=900,  # a test that waits for ever; the machine may be busy
                    preexec_fn=limit,
                    check=False,
                ).returncode
            except subprocess.TimeoutExpired:
                status = -1
        end = resource.getrusage(resource.RUSAGE_CHILDREN)
        self.spent = end.ru_utime + end.ru_stime - begin.ru_utime - begin.ru_stime
        if status == 0:
            return ""
        found = re.search(r"\[  FAILED  \] (\S+?)[, ]", log.read_text(errors="replace"))
        if found:
            return f"{name}: {found.group(1)}"
        return f"{name}: " + (f"ended by signal {-status}" if status < 0 else f"status {status}")

    def check(self):
        """Runs the unchanged tests and stores how long they take."""
        for name in ORDER:
            failure = self.run(name, self.programs[name])
            if failure:
                raise Broken(f"without any change: {failure}; see {self.place / 'test.log'}")
            self.plan.times[name] = self.spent
