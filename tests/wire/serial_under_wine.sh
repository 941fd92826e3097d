#!/usr/bin/env bash
# Runs a program for Windows under Wine with a COM port that is a pseudo-terminal.
#
#     serial_under_wine.sh NATIVE_BUILD_DIR PORT PROGRAM [ARGUMENT...]
#
# The program is the printer too: it gets "--serial-name PORT --modem-lines FILE" in front of the arguments, prints
# "port N", and waits at that TCP port for the printer's end of the line. The native pty_bridge leads the bytes to
# the terminal behind the COM port and notes its settings down in the file that LINE_SETTINGS names; the preloaded
# library gives the terminal the modem lines of FILE. Exit code 77 when the native build lacks them.
set -euo pipefail

native=$(realpath -m "$1")
port=$2
program=$(realpath "$3")
shift 3

for needed in "$native/pty_bridge" "$native/libmodem_lines.so"; do
    if [[ ! -e $needed ]]; then
        echo "skipped: $needed is missing; the native release build makes it" >&2
        exit 77
    fi
done

# Wine maps the low numbers to the machine's own ports at every start; from COM7 on they stay as we set them.
link=${WINEPREFIX:-$HOME/.wine}/dosdevices/${port,,}
export WINEDEBUG=${WINEDEBUG:--all}

# A prefix that does not exist yet is made first, apart from us: Wine's services would hold on to our output.
wine cmd /c exit </dev/null >/dev/null 2>&1

work=$(dirname "$program")/${port,,}_under_wine
rm -rf "$work"
mkdir -p "$work"
mkfifo "$work/output"
trap 'rm -f "$link" "$work/output"' EXIT
export LINE_SETTINGS=$work/line_settings
MODEM_LINES=$work/modem_lines LD_PRELOAD=$native/libmodem_lines.so \
    wine "$program" --serial-name "$port" --modem-lines "$work/modem_lines" "$@" </dev/null >"$work/output" &
program_id=$!

# The program's first line is its TCP port; the bridge makes the terminal and its link before it connects.
exec 3<"$work/output"
read -r word number <&3
number=${number%$'\r'}
if [[ $word != port ]]; then
    echo "the program said \"$word $number\" where its port was due" >&2
    exit 1
fi
"$native/pty_bridge" "$number" "$link" "$LINE_SETTINGS" &
bridge=$!

cat <&3
outcome=0
wait "$program_id" || outcome=$?
wait "$bridge" || outcome=1
exit "$outcome"
