#!/bin/sh
# Brings a folder up with GNU parallel, in parts that are shared among machines or the processors of this one.
#
#   gnu-parallel.sh PARTS FOLDER OUT [OPTION...]
#   SSHLOGIN=a,b,c gnu-parallel.sh 12 FOLDER OUT
#
# The machines of SSHLOGIN share FOLDER, OUT and the working folder, which gets a report of each part. The same command
# again goes on where it was. ZUNA_KEY_FILE names the key file.
set -eu
parts=$1 folder=$2 out=$3
shift 3
if [ -n "${SSHLOGIN:-}" ]; then
  where="--sshlogin $SSHLOGIN --workdir ."
else
  where=
fi
# shellcheck disable=SC2086 # two options and their values
seq "$parts" | parallel --will-cite --quote --env ZUNA_KEY_FILE $where \
  zuna-convert up "$folder" -r --out-dir "$out" --shard "{}/$parts" -j 1 --report "up-{}.json" --resume -q "$@"
