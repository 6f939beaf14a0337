#!/bin/sh
# The installed program runs, has its scripts, and its man page can be read.
# Usage: programs.sh TREE
set -eu
"$1/bin/se_host" info >/dev/null
"$1/bin/se_host" sweep run --help | grep -q -- --backend
for backend in local slurm parallel; do test -x "$1/share/libse_wrapper/sweep/$backend.sh"; done
groff -mdoc -Tutf8 "$(find "$1" -name se_host.1)" >/dev/null
