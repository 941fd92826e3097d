#!/usr/bin/env bash
# Plays the wire scripts for serial links against the DLL under Wine, on a COM port that is a pseudo-terminal.
#
#     serial_under_wine.sh NATIVE_BUILD_DIR WINDOWS_BUILD_DIR [SCRIPT-OR-FOLDER...]    all scripts without one
#
# The runner under Wine is the printer too; the native pty_bridge leads its bytes to the terminal behind the
# port, and the preloaded library gives the terminal modem lines. Exit code 77 when the native build lacks them.
set -euo pipefail

native=$(realpath -m "$1")
windows=$(realpath "$2")
shift 2
scripts=$(cd "$(dirname "$0")" && pwd)
[[ $# -gt 0 ]] || set -- "$scripts"

for needed in "$native/pty_bridge" "$native/libmodem_lines.so"; do
    if [[ ! -e $needed ]]; then
        echo "skipped: $needed is missing; the native release build makes it" >&2
        exit 77
    fi
done

# Wine maps the low numbers to the machine's own ports at every start; this one stays as we set it.
port=COM7
link=${WINEPREFIX:-$HOME/.wine}/dosdevices/com7
export WINEDEBUG=${WINEDEBUG:--all}

# A prefix that does not exist yet is made first, apart from us: Wine's services would hold on to our output.
wine cmd /c exit </dev/null >/dev/null 2>&1

work=$windows/serial_under_wine
rm -rf "$work"
mkdir -p "$work"
mkfifo "$work/output"
trap 'rm -f "$link" "$work/output"' EXIT
MODEM_LINES=$work/modem_lines LD_PRELOAD=$native/libmodem_lines.so \
    wine "$windows/wire_runner.exe" --work "$work/scripts" \
    --serial-name "$port" --modem-lines "$work/modem_lines" "$@" </dev/null >"$work/output" &
runner=$!

# The runner's first line is its TCP port; the bridge makes the terminal and its link before it connects.
exec 3<"$work/output"
read -r word number <&3
number=${number%$'\r'}
if [[ $word != port ]]; then
    echo "the runner said \"$word $number\" where its port was due" >&2
    exit 1
fi
"$native/pty_bridge" "$number" "$link" &
bridge=$!

cat <&3
outcome=0
wait "$runner" || outcome=$?
wait "$bridge" || outcome=1
exit "$outcome"
