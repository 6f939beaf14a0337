"""A copy of the tree with its own build, in which bugs are planted and tests run."""
import json
import os
import re
import shutil
import signal
import subprocess

# An edit of a library relinks that library alone. -O2: below it gcc leaves the upper halves of vector registers in use.
OPTIONS = ["-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG",
           "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DSE_WRAPPER_WERROR=OFF", "-DSE_WRAPPER_BUILD_BENCHES=OFF"]
TARGETS = ["tests/common/all", "tests/webrtc_common/all", "tests/host/all", "tests/pipewire/all",
           "audio_path", "measures_test", "se_sweep_test", "sweep_report_test"]
TEST_SECONDS = 30  # for the tests of one bug; the bug may make them hang


class CommandFailed(Exception):
    """A command that must succeed has failed; the text is its output."""


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace", **options)


def must_run(command, **options):
    result = run(command, **options)
    if result.returncode != 0:
        raise CommandFailed(f"{' '.join(map(str, command))}\n{result.stdout}")
    return result.stdout


class ScratchCopy:
    """The files that git knows, as they are in `root` now, in `folder`/source; the build in `folder`/build."""

    def __init__(self, root, folder, cores, options=OPTIONS, targets=TARGETS):
        self.root, self.source, self.build_folder = root, folder / "source", folder / "build"
        self.cores, self.options, self.targets = cores, options, targets
        self.tests = {}  # name -> the build's files that the test runs

    def prepare(self):
        """Copies, configures, builds with all cores, as copies are prepared one after the other. Raises CommandFailed."""
        self._copy()
        must_run(["cmake", "-S", self.source, "-B", self.build_folder, *self.options, *self._compiler_cache()],
                 env=self._environment())
        self.build(self.targets, os.cpu_count() or 1)
        listed = json.loads(must_run(["ctest", "--test-dir", self.build_folder, "--show-only=json-v1"]))
        inside = str(self.build_folder) + os.sep
        for test in listed["tests"]:
            # A test without a command belongs to a program that is not built here.
            files = [word[len(inside):] for word in test.get("command", []) if word.startswith(inside)]
            if files and all((self.build_folder / file).exists() for file in files):
                self.tests[test["name"]] = files

    def names(self, regex):
        return [name for name in self.tests if re.search(regex, name)]

    def build(self, targets, cores):
        must_run(["ninja", "-C", self.build_folder, f"-j{cores}", *targets], env=self._environment())

    def failed(self, regex, seconds=TEST_SECONDS):
        """Builds what the tests run, runs them until one fails and returns its name, or None. Raises CommandFailed."""
        self.build(sorted({file for name in self.names(regex) for file in self.tests[name]}), self.cores)
        # A test's own time limit is minutes, so all of them are cut here.
        tests = subprocess.Popen(["ctest", "--test-dir", self.build_folder, "-R", regex, "--stop-on-failure",
                                  "--no-tests=error", f"-j{self.cores}"], stdout=subprocess.PIPE,
                                 stderr=subprocess.STDOUT, text=True, errors="replace", start_new_session=True)
        try:
            output = tests.communicate(timeout=seconds)[0]
        except subprocess.TimeoutExpired:
            return f"the time limit of {seconds} s"
        finally:
            if tests.poll() is None:
                os.killpg(tests.pid, signal.SIGKILL)
                tests.wait()
        if tests.returncode == 0:
            return None
        failures = output.partition("The following tests FAILED:")[2]
        found = re.search(r"^\s*\d+ - (\S+).* \(", failures, re.MULTILINE)
        return found.group(1) if found else output

    def _copy(self):
        """Writes only files that differ, so that a second run builds only those."""
        listed = must_run(["git", "-C", self.root, "ls-files", "-z", "--cached", "--others", "--exclude-standard"])
        files = {name for name in listed.split("\0") if name and (self.root / name).is_file()}
        for name in files:
            source, copy = self.root / name, self.source / name
            if copy.is_file() and copy.read_bytes() == source.read_bytes():
                continue
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, copy)
            shutil.copymode(source, copy)
        for copy in [path for path in self.source.rglob("*") if path.is_file()]:
            if copy.relative_to(self.source).as_posix() not in files:
                copy.unlink()

    def _compiler_cache(self):
        if shutil.which("ccache") is None:
            return []
        return ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache", "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON"]

    def _environment(self):
        """Copies in different folders share their objects in the compiler cache."""
        return {**os.environ, "CCACHE_BASEDIR": str(self.source.parent), "CCACHE_NOHASHDIR": "1"}
