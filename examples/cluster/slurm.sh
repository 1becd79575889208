#!/bin/sh
# Brings a folder up on the nodes of a Slurm cluster, in as many parts as the array has tasks.
#
#   sbatch --array=1-64 slurm.sh FOLDER OUT [OPTION...]
#
# The nodes share FOLDER, OUT and the working folder, which gets a report of each part. The same command again, or a part
# that is queued again, goes on where it was. ZUNA_KEY_FILE names the key file.
#SBATCH --job-name=zuna
#SBATCH --array=1-64
#SBATCH --cpus-per-task=4
#SBATCH --requeue
set -eu
folder=$1 out=$2
shift 2
exec zuna-convert up "$folder" -r --out-dir "$out" --shard "$SLURM_ARRAY_TASK_ID/$SLURM_ARRAY_TASK_COUNT" \
  -j "$SLURM_CPUS_PER_TASK" --report "up-$SLURM_ARRAY_TASK_ID.json" --resume -q "$@"
