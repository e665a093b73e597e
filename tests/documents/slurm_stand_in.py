"""Commands that stand where Slurm's are: a job is played at once, on this machine, one after the other.

They know the options that the program and the guide use. Two jobs wait for ever, one of them somebody else's.
"""

SBATCH = """#!/bin/bash
for word in "$@"; do
  case $word in
    --job-name=*) export SLURM_JOB_NAME=${word#*=} ;;
    --output=*) output=${word#*=} ;;
    --chdir=*) cd "${word#*=}" || exit 1 ;;
    --wrap=*) play=${word#*=} ;;
    --parsable | --requeue | --cpus-per-task=* | --time=*) ;;
    *) echo "sbatch: unrecognized option '$word'" >&2; exit 1 ;;
  esac
done
echo x >> "$HOME/.jobs"
export SLURM_JOB_ID=$(wc -l < "$HOME/.jobs")
sh -c "$play" > "$output" 2>&1 < /dev/null && word=COMPLETED || word=FAILED
echo "$SLURM_JOB_ID $word $SLURM_JOB_NAME None" >> "$HOME/.queue"
echo "$SLURM_JOB_ID"
"""

SQUEUE = """#!/bin/bash
case "$*" in
  "--me --states=all --noheader --format=%i %T %j %r") [ ! -f "$HOME/.queue" ] || cat "$HOME/.queue" ;;
  "--me --noheader --format=%i %j") printf '900 tarvendo-cup-1f3a9c-g9-1\n901 my own tarvendo job\n' ;;
  *) echo "squeue: unrecognized option '$*'" >&2; exit 1 ;;
esac
"""

SCANCEL = """#!/bin/sh
echo "$@" >> "$HOME/.cancelled"
"""

COMMANDS = {"sbatch": SBATCH, "squeue": SQUEUE, "scancel": SCANCEL}
