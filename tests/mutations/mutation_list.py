"""The list of named bugs: reading it, and applying one of them to a tree.

A list is a text file of blocks, which empty lines separate; a line that begins with # is a comment.

    mutation: bypass-row
    file: webrtc_common/se_wrapper/engine/process_block.cpp
    - constexpr std::size_t kBypassRow = 5;
    + constexpr std::size_t kBypassRow = 4;
    tests: ^ProcessBlock\\.

The text after "- " occurs exactly once in the file; "+ " is the replacement (no such line: nothing). Several lines
of either kind are one text. `tests` is a regular expression over the names that `ctest -N` prints: at least one of these
tests has to fail. `explained`, in place of `tests`, says why no test can see the bug. `needs` names a flag of /proc/cpuinfo: on
a processor without it the code with the bug does not run, so the bug is not tried.
"""
import dataclasses
import pathlib
import re


class ListError(Exception):
    """An error in the list, and its place: one line."""


@dataclasses.dataclass
class Mutation:
    name: str
    place: str  # in the list, "file:line"
    file: str = ""
    find: str = ""
    replace: str = ""
    tests: str = ""
    explained: str = ""
    needs: str = ""

    def applied_to(self, text):
        """The file's text with the bug in it."""
        count = text.count(self.find)
        if count != 1:
            raise ListError(f"{self.place}: mutation {self.name} no longer applies: its text occurs {count} times in "
                            f"{self.file}; adapt the lines that begin with '-'")
        return text.replace(self.find, self.replace)


def read_list(path, name=None):
    """The mutations of one file. Raises ListError."""
    label = name or path.name
    mutations, removed, added = [], [], []

    def finish():
        if not mutations or not removed and not added:
            return
        mutations[-1].find, mutations[-1].replace = "\n".join(removed), "\n".join(added)
        removed.clear()
        added.clear()

    for number, line in enumerate(path.read_text().splitlines(), 1):
        place = f"{label}:{number}"
        key, _, value = line.partition(":")
        if line.startswith("#") or not line.strip():
            continue
        if key == "mutation":
            finish()
            mutations.append(Mutation(value.strip(), place))
        elif not mutations:
            raise ListError(f"{place}: a block begins with 'mutation: NAME'")
        elif line[:2] in ("- ", "-"):
            if added:
                raise ListError(f"{place}: a mutation changes one text: lines with '-' come before those with '+'")
            removed.append(line[2:])
        elif line[:2] in ("+ ", "+"):
            added.append(line[2:])
        elif key in ("file", "tests", "explained", "needs"):
            setattr(mutations[-1], key, value.strip())
        else:
            raise ListError(f"{place}: not understood: {line}")
    finish()
    return mutations


def read_lists(folder):
    """All mutations of all lists of a folder. Raises ListError."""
    mutations = [m for path in sorted(folder.glob("*.txt")) for m in read_list(path)]
    seen = set()
    for m in mutations:
        if m.name in seen:
            raise ListError(f"{m.place}: there is another mutation named {m.name}; give this one a name of its own")
        seen.add(m.name)
        if not m.file or not m.find or m.find == m.replace:
            raise ListError(f"{m.place}: mutation {m.name} needs a file, a text to find and another to put there")
        if bool(m.tests) == bool(m.explained):
            raise ListError(f"{m.place}: mutation {m.name} needs either 'tests' or 'explained'")
        try:
            re.compile(m.tests)
        except re.error as error:
            raise ListError(f"{m.place}: mutation {m.name}: 'tests' is not a regular expression: {error}") from error
    if not mutations:
        raise ListError(f"no mutations in {folder}")
    return mutations


def problems(mutations, root):
    """One line for each mutation whose text does not occur exactly once in its file."""
    for m in mutations:
        file = pathlib.Path(root) / m.file
        if not file.is_file():
            yield f"{m.place}: mutation {m.name}: there is no file {m.file}; adapt its path"
            continue
        try:
            m.applied_to(file.read_text())
        except ListError as error:
            yield str(error)
