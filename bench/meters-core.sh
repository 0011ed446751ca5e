#!/bin/bash
# Shows the level bars in a window on a private display, with the player's reports and without, in turn, and prints how
# much of a core each takes. The difference is what the bars cost, with all that the process does to wait and to wake
# up for them.
#
# usage: meters-core.sh METERS_WINDOW [SECONDS] [RUNS]
set -euo pipefail
window=$(realpath -e "$1")
seconds=${2:-20}
runs=${3:-3}

folder=$(mktemp -d)
chmod 700 "$folder"
mkfifo "$folder/number"
Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp -r -noreset 3<> "$folder/number" 2> /dev/null &
display=$!
trap 'kill "$display"; wait "$display" || true; rm -r "$folder"' EXIT
read -r -t 20 number < "$folder/number"  # the display takes a free number and tells which
export DISPLAY=:$number QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=$folder

for ((run = 0; run < runs; ++run)); do
    "$window" still "$seconds"
    "$window" moving "$seconds"
done
