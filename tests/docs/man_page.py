#!/usr/bin/env python3
"""The man page and the help texts name the same commands, files, options and exit statuses, and the page renders
without a warning.

Usage: man_page.py PAGE SE_HOST. A command's section of the page has its usage as title, and its options as list
items. Options of several commands have a section of their own; the sections that take them name it with .Sx.
Prints every difference; exit code 1 if there is one.
"""
import pathlib
import re
import subprocess
import sys

HELP_OPTION = re.compile(r"^  (?:-\w,)?(--[\w-]+)(?: (?!Excludes:|Needs:)([^\s=]+))?", re.MULTILINE)
HELP_USAGE = re.compile(r"^Usage: (.*)$", re.MULTILINE)
HELP_COMMANDS = re.compile(r"^Subcommands:\n((?:  .*\n)+)", re.MULTILINE)
PAGE_SECTION = re.compile(r"^\.Ss (.*)\n((?:(?!\.Ss |\.Sh ).*\n)*)", re.MULTILINE)
PAGE_OPTION = re.compile(r"^\.It Fl (-[\w-]+)(?: Ar ([^\s=]+))?", re.MULTILINE)
PAGE_REFERENCE = re.compile(r"^\.Sx (.*?)(?: [.,])?$", re.MULTILINE)
HELP_STATUS = re.compile(r"^  (\d)  (.*)$", re.MULTILINE)
PAGE_STATUS = re.compile(r"^\.It (\d)\n((?:(?!\.It|\.El).*\n)*)", re.MULTILINE)


def statuses_in_help(program):
    text = subprocess.run([program, "--help"], capture_output=True, text=True, check=True).stdout
    return dict(HELP_STATUS.findall(text[text.index("Exit status:"):]))


def statuses_in_page(text):
    text = text[text.index(".Sh EXIT STATUS"):].replace(r"\-", "-")
    plain = {status: " ".join(body.replace(".Fl -", "--").split()).rstrip(" .")
             for status, body in PAGE_STATUS.findall(text)}
    return {status: meaning[0].lower() + meaning[1:] for status, meaning in plain.items()}


def in_help(program, *command):
    """Options by usage, of a command and of those below it. --help itself is left out."""
    text = subprocess.run([program, *command, "--help"], capture_output=True, text=True, check=True).stdout
    usage = HELP_USAGE.search(text).group(1).replace(" [OPTIONS]", "")
    found = {usage: set(HELP_OPTION.findall(text)) - {("--help", "")}}
    listed = HELP_COMMANDS.search(text)
    for line in re.findall(r"^  (?! ).*", listed.group(1), re.MULTILINE) if listed else []:
        found.update(in_help(program, *command, line.split()[0]))
    return found


def in_page(text):
    text = text.replace(r"\-", "-")
    sections = dict(PAGE_SECTION.findall(text))
    own = {title: {("-" + flag, value) for flag, value in PAGE_OPTION.findall(body)}
           for title, body in sections.items()}
    return {title: own[title].union(*(own[name] for name in PAGE_REFERENCE.findall(body)))
            for title, body in sections.items() if title.startswith("se_host")}


def differences(helps, page):
    for usage in helps.keys() - page.keys():
        yield f"no section '{usage}' in the page"
    for usage in page.keys() - helps.keys():
        yield f"section '{usage}' of the page is no usage of a command"
    for usage in helps.keys() & page.keys():
        for option in helps[usage] - page[usage]:
            yield f"{usage}: {' '.join(option)} is not in the page"
        for option in page[usage] - helps[usage]:
            yield f"{usage}: {' '.join(option)} is in the page alone"


if __name__ == "__main__":
    path, host = sys.argv[1:]
    text = pathlib.Path(path).read_text()
    broken = sorted(differences(in_help(host), in_page(text)))
    if statuses_in_help(host) != statuses_in_page(text):
        broken.append(f"exit statuses: {statuses_in_help(host)} in the help, {statuses_in_page(text)} in the page")
    groff = subprocess.run(["groff", "-mdoc", "-Tutf8", "-ww", path], capture_output=True, text=True, check=True)
    broken += groff.stderr.splitlines()
    print("\n".join(broken) if broken else "page and help texts agree")
    sys.exit(1 if broken else 0)
