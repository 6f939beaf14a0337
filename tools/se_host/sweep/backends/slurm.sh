#!/bin/sh
# The shards of a sweep as job arrays of Slurm: slurm.sh FOLDER SHARDS
# sbatch takes partition, account, time and more from its variables: SBATCH_PARTITION, SBATCH_ACCOUNT, SBATCH_TIMELIMIT.
set -eu
export SE_SWEEP="$1" SE_FIRST=0
shards=$2 name=se_host_sweep_$$ failed=0
largest=$(scontrol show config | sed -n 's/^MaxArraySize *= *//p')
mkdir -p "$SE_SWEEP/logs"
trap 'scancel --name="$name"; exit 1' INT TERM HUP
while [ "$SE_FIRST" -lt "$shards" ]; do
    count=$((shards - SE_FIRST < largest - 1 ? shards - SE_FIRST : largest - 1))
    # shellcheck disable=SC2016
    sbatch --wait --quiet --job-name="$name" --array="1-$count" --output="$SE_SWEEP/logs/%A_%a.txt" --wrap \
        'exec "$SE_HOST" sweep run "$SE_SWEEP" --jobs "$SLURM_CPUS_ON_NODE" --shard $((SE_FIRST + SLURM_ARRAY_TASK_ID))' &
    wait $! || failed=1
    SE_FIRST=$((SE_FIRST + count))
done
exit $failed
