"""The mutation script on a project of one function and one test: its report for each kind of bug."""
import contextlib
import importlib.machinery
import importlib.util
import io
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import unittest.mock

sys.dont_write_bytecode = True
HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
from mutation_list import ListError, Mutation, problems, read_lists
from scratch_copy import ScratchCopy


def load_script():
    loader = importlib.machinery.SourceFileLoader("mutations_run", str(HERE / "run"))
    spec = importlib.util.spec_from_loader(loader.name, loader)
    module = importlib.util.module_from_spec(spec)
    loader.exec_module(module)
    return module


SCRIPT = load_script()
PROJECT = {
    "CMakeLists.txt": """cmake_minimum_required(VERSION 3.25)
project(small LANGUAGES CXX)
enable_testing()
add_library(sum SHARED sum.cpp)
add_executable(sum_test sum_test.cpp)
target_link_libraries(sum_test PRIVATE sum)
add_test(NAME Sum.Adds COMMAND sum_test)
""",
    "sum.cpp": "int sum(int a, int b) {\n    if (a > 1000) return 0;\n    return a + b;\n}\n",
    "sum_test.cpp": "int sum(int, int);\nint main() { return sum(1, 2) == 3 ? 0 : 1; }\n",
}
CAUGHT = "mutation: minus\nfile: sum.cpp\n- a + b\n+ a - b\ntests: ^Sum\n"
SURVIVES = "mutation: limit\nfile: sum.cpp\n- a > 1000\n+ a > 1001\ntests: ^Sum\n"
MOVED = "mutation: moved\nfile: sum.cpp\n- a * b\n+ a\ntests: ^Sum\n"
TWICE = "mutation: twice\nfile: sum.cpp\n- return\n+ throw\ntests: ^Sum\n"
BROKEN = "mutation: broken\nfile: sum.cpp\n- a + b\n+ a +\ntests: ^Sum\n"
UNTESTED = "mutation: untested\nfile: sum.cpp\n- a + b\n+ a - b\ntests: ^Product\n"


def write(folder, files):
    for name, text in files.items():
        (folder / name).parent.mkdir(parents=True, exist_ok=True)
        (folder / name).write_text(text)


class Lists(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def read(self, text):
        write(self.root, {"list/a.txt": text})
        return read_lists(self.root / "list")

    def problems(self, text):
        write(self.root, PROJECT)
        return list(problems(self.read(text), self.root))

    def test_texts_keep_their_indentation_and_lines(self):
        mutation = self.read("mutation: two\nfile: f\n- a\n-     b\n+     c\n+\n+ d\ntests: x\n")[0]
        self.assertEqual((mutation.find, mutation.replace), ("a\n    b", "    c\n\nd"))

    def test_a_bug_may_need_a_feature_of_the_processor(self):
        self.assertEqual(self.read(CAUGHT + "needs: avx512bw\n")[0].needs, "avx512bw")

    def test_a_text_that_stands_once_applies(self):
        self.assertEqual(self.problems(CAUGHT), [])

    def test_a_text_that_is_gone_is_reported_by_name_and_place(self):
        self.assertRegex(self.problems(MOVED)[0], r"^a\.txt:1: mutation moved no longer applies: .* 0 times in sum.cpp")

    def test_a_text_that_stands_twice_is_reported(self):
        self.assertRegex(self.problems(TWICE)[0], r"mutation twice no longer applies: .* 2 times in sum.cpp")

    def test_a_file_that_is_gone_is_reported(self):
        self.assertRegex(self.problems(CAUGHT.replace("sum.cpp", "add.cpp"))[0], "there is no file add.cpp")

    def test_mistakes_in_a_list_are_refused(self):
        for text, message in ((CAUGHT + "\n" + CAUGHT, "another mutation named minus"),
                              ("mutation: x\nfile: f\n- a\n+ b\n", "either 'tests' or 'explained'"),
                              ("mutation: x\n- a\n+ b\ntests: t\n", "needs a file"),
                              ("mutation: x\nfile: f\n- a\n+ b\ntests: (\n", "not a regular expression"),
                              ("mutation: x\nfile: f\n- a\n+ b\n- c\ntests: t\n", "changes one text"),
                              ("file: f\n", "begins with 'mutation"),
                              ("mutation: x\nfiles: f\n", "not understood: files: f"),
                              ("", "no mutations")):
            with self.subTest(message), self.assertRaisesRegex(ListError, message):
                self.read(text)


class Order(unittest.TestCase):
    def names(self, turn):
        mutations = [Mutation(name, "", file) for name, file in (("1", "b.h"), ("2", "a.cpp"), ("3", "b.h"), ("4", "b.cpp"))]
        return "".join(m.name for m in SCRIPT.in_order_of_trial(mutations, turn))

    def test_bugs_of_a_file_follow_each_other_and_headers_come_last(self):
        self.assertEqual(self.names(0), "2413")

    def test_every_turn_begins_at_another_place(self):
        self.assertEqual([self.names(turn) for turn in (1, 2, 5)], ["4132", "1324", "4132"])


@unittest.skipUnless(shutil.which("git") and shutil.which("ninja"), "needs git and ninja")
class Runs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.root = pathlib.Path(folder.name) / "project"
        write(cls.root, PROJECT)
        subprocess.run(["git", "init", "--quiet", cls.root], check=True)
        cls.copy = ScratchCopy(cls.root, pathlib.Path(folder.name) / "1", 1, ["-G", "Ninja"], ["all"])
        cls.copy.prepare()

    def run_list(self, text):
        write(self.root.parent, {"list/a.txt": text})
        said = []
        survivors = SCRIPT.run_all(read_lists(self.root.parent / "list"), [self.copy], said.append).survivors
        self.assertEqual((self.copy.source / "sum.cpp").read_text(), PROJECT["sum.cpp"], "the copy is as it was")
        return survivors, "\n".join(said)

    def test_a_bug_that_a_test_sees_is_caught_by_that_test(self):
        survivors, said = self.run_list(CAUGHT)
        self.assertEqual(survivors, [])
        self.assertIn("caught by Sum.Adds", said)

    def test_a_bug_that_no_test_sees_is_named(self):
        survivors, said = self.run_list(SURVIVES + "\n" + CAUGHT)
        self.assertEqual(survivors, ["limit"])
        self.assertRegex(said, r"limit \(\d+ s\): SURVIVED .*write a test.*sum.cpp.*explained")

    def test_a_text_that_no_longer_applies_is_not_caught(self):
        survivors, said = self.run_list(MOVED)
        self.assertEqual(survivors, ["moved"])
        self.assertIn("no longer applies", said)

    def test_a_bug_that_does_not_compile_is_a_mistake_of_the_list(self):
        survivors, said = self.run_list(BROKEN)
        self.assertEqual(survivors, ["broken"])
        self.assertIn("does not compile", said)

    def test_tests_that_do_not_exist_are_a_mistake_of_the_list(self):
        survivors, said = self.run_list(UNTESTED)
        self.assertEqual(survivors, ["untested"])
        self.assertIn("no test is named ^Product", said)

    def test_without_time_left_none_is_tried_and_each_is_named(self):
        write(self.root.parent, {"list/a.txt": SURVIVES + "\n" + CAUGHT})
        result = SCRIPT.run_all(read_lists(self.root.parent / "list"), [self.copy], self.fail, seconds=0)
        self.assertEqual((result.survivors, result.untried), ([], ["limit", "minus"]))

    def test_an_edit_of_the_tree_reaches_the_copy(self):
        write(self.root, {"sum.cpp": PROJECT["sum.cpp"].replace("1000", "1")})
        self.copy.prepare()
        self.assertIn("a > 1)", (self.copy.source / "sum.cpp").read_text())
        write(self.root, PROJECT)
        self.copy.prepare()


class CommandLine(unittest.TestCase):
    def say(self, *arguments):
        out = io.StringIO()
        with contextlib.redirect_stdout(out), contextlib.redirect_stderr(out):
            code = SCRIPT.main(arguments)
        return code, out.getvalue()

    def test_lists_a_part_of_the_mutations(self):
        code, out = self.say("--list", "--only", "process_block")
        self.assertEqual(code, 0)
        self.assertIn("bypass-row  webrtc_common/se_wrapper/engine/process_block.cpp  ", out)
        halves = [self.say("--list", "--shard", shard)[1].splitlines() for shard in ("1/2", "2/2")]
        self.assertEqual(sorted(sum(halves, [])), sorted(self.say("--list")[1].splitlines()))

    def test_a_bug_in_code_that_this_processor_cannot_run_is_not_tried(self):
        with unittest.mock.patch.object(SCRIPT, "processor_flags", return_value={"avx2"}):
            self.assertEqual(self.say("--only", "^pairs-of-wide-lanes-shifted-backwards$"),
                             (2, "tests/mutations/run: nothing to run; see --list\n"))

    def test_refuses_a_selection_of_nothing(self):
        self.assertEqual(self.say("--only", "no-such-mutation")[0], 2)


if __name__ == "__main__":
    unittest.main()
