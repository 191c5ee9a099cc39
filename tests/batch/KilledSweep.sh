#!/bin/sh
# A sweep stopped by SIGTERM after its first case keeps the rows of the cases
# that finished, in the order of the field (a case that had not finished is
# left out), stops its cases and leaves no process or folder.
#   KilledSweep.sh VELK_BATCH WORK
batch=$1
work=$2
rm -rf "$work" && mkdir -p "$work/tmp" || exit 1
TMPDIR="$work/tmp" "$batch" sweep txtBL=100:4000:100 txtNumXElements=160 txtNumYElements=16 \
  --supports fork --moment 1000 --jobs 2 -o "$work/study.csv" 2> "$work/err" &
pid=$!
i=0
until grep -q "case" "$work/err" 2> /dev/null; do
  i=$((i + 1))
  [ $i -gt 300 ] && { echo "no case ended"; kill -KILL $pid; exit 1; }
  sleep 0.05
done
kill -TERM $pid
wait $pid
status=$?
sleep 0.2
rows=$(($(wc -l < "$work/study.csv") - 1))
ordered=$(tail -n +2 "$work/study.csv" | cut -d, -f1 | sort -n -c 2>&1 && echo yes)
left=$(pgrep -f "$work/study.csv" | wc -l)
folders=$(ls -A "$work/tmp" | wc -l)
echo "status $status rows $rows ordered $ordered processes $left folders $folders"
[ $status -eq 143 ] && [ $rows -ge 1 ] && [ $rows -lt 40 ] && [ "$ordered" = yes ] &&
  [ $left -eq 0 ] && [ $folders -eq 0 ]
