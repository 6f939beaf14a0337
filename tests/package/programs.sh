#!/bin/sh
# The installed program runs, and its man page can be read.
# Usage: programs.sh TREE
set -eu
"$1/bin/se_host" info >/dev/null
groff -mdoc -Tutf8 "$(find "$1" -name se_host.1)" >/dev/null
