"""The results as a page: for each deed and command the statuses over all stages, and the last lines."""
import collections
import re

from kinds import ANSWERS

HEADER = """# Hostile engines

Made by `tests/reliability/hostile/hostile_engines.py BIN --all --write docs/reliability/hostile.md`.

{kinds} kinds of engines, each a stage (a call of the engine) and what it does or answers there, with {commands}
commands: {runs} runs, of which {broken} break a rule. The rules: no status 0 or 3 unless the outputs are whole and
right, a documented status, one line at the end that says why, an older output unchanged otherwise, no other files, no
control characters, and no crash whose first frame outside of the system's libraries is ours.

A cell has the exit statuses of the stages that the command reaches, and how many stages gave each; "signal" is a
signal that ends se_host as it ended the engine's process, "crash" one that ends the small host or the program with
libse_host, which have no supervisor. An empty cell: the command does not reach the stage.
"""


def status_text(status):
    if status is None:
        return "hangs"
    if status >= 0:
        return str(status)
    return "signal" if status in (-15, -14) else "crash"


def cell(runs):
    counted = collections.Counter(status_text(run.status) for run in runs if "done" in run.log)
    return ", ".join(f"{status}: {count}" if len(counted) > 1 or count > 1 else status
                     for status, count in sorted(counted.items()))


def table(title, rows, names):
    lines = ["| " + " | ".join([title, *names]) + " |", "|---" * (len(names) + 1) + "|"]
    for label, runs in rows.items():
        cells = [cell([run for run in runs if run.command == name]) for name in names]
        lines.append("| " + " | ".join([label, *cells]) + " |")
    return "\n".join(lines) + "\n"


def last_lines(runs):
    counted = collections.Counter()
    for run in runs:
        lines = run.err.decode(errors="replace").splitlines()
        if run.command not in ("small host", "library") and run.status != 0 and lines:
            # An apostrophe as in "engine's" opens no quotation.
            text = re.sub(r"(?<!\w)'[^']*'", "'...'", re.sub(r"\([^)]*\)", "(...)", lines[-1]))
            counted[text if len(text) < 240 else text[:237] + "..."] += 1
    return "".join(f"| {count} | {text.replace('|', chr(92) + '|')} |\n" for text, count in counted.most_common())


def write_page(path, runs, names):
    deeds, answers = collections.defaultdict(list), collections.defaultdict(list)
    for run in runs:
        stage, deed = run.kind
        if deed in ANSWERS.get(stage, []):
            answers[f"{stage}: {deed}"].append(run)
        else:
            deeds[deed].append(run)
    broken = [run for run in runs if run.complaint]
    text = HEADER.format(kinds=len({run.kind for run in runs}), commands=len(names), runs=len(runs), broken=len(broken))
    text += "\n## What the engine does\n\n" + table("deed", deeds, names)
    text += "\n## What the engine answers\n\n" + table("answer", answers, names)
    text += "\n## Last lines\n\n| runs | line |\n|---|---|\n" + last_lines(runs)
    if broken:
        text += "\n## Runs that break a rule\n\n" + "".join(
            f"- {' '.join(run.kind)} / {run.command}: {run.complaint}\n" for run in broken)
    path.write_text(text)
