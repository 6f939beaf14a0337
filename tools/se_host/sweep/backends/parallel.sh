#!/bin/sh
# The shards of a sweep by GNU parallel: parallel.sh FOLDER SHARDS
# It takes its options from PARALLEL: PARALLEL="--sshloginfile nodes.txt" for machines that share FOLDER and this program.
set -eu
# shellcheck disable=SC2046
exec parallel --will-cite --line-buffer --quote "$SE_HOST" sweep run "$1" --jobs 1 --shard ::: $(seq "$2")
