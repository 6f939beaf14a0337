#!/bin/sh
# The shards of a sweep, one after the other on this machine: local.sh FOLDER SHARDS
set -eu
folder=$1 shards=$2 failed=0
for shard in $(seq "$shards"); do
    "$SE_HOST" sweep run "$folder" --shard "$shard" || failed=1
done
exit $failed
