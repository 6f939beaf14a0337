#!/bin/sh
# The shards of a sweep on this machine: local.sh FOLDER SHARDS
# A backend runs `se_host sweep run FOLDER --shard N` for N from 1 to SHARDS, in any order and on any machine, and ends when
# they have ended. SE_HOST is the path of the program.
set -eu
# shellcheck disable=SC2046
exec "$SE_HOST" sweep run "$1" --shard $(seq "$2")
