#!/bin/sh
# Runs a test program for Windows. On a busy machine about one start of Wine in a thousand goes wrong in the loader
# of the system's own libraries: it ends at once, before the program has said a word, or some of Wine's libraries are
# missing and the loader says at the end that it is inconsistent. Such a start is made once more. A program that has
# failed without this, or fails again, has failed.
#
#     run_under_wine.sh WINE PROGRAM [ARGUMENT...]
folder=$(dirname "$0")/../build/log
mkdir -p "$folder"
said=$(mktemp "$folder/under-wine.XXXXXX")
complained=$said.errors
trap 'rm -f "$said" "$complained"' EXIT
"$@" >"$said" 2>"$complained"
code=$?
cat "$said"
cat "$complained" >&2
if [ $code -ne 0 ] && { [ ! -s "$said" -a ! -s "$complained" ] || grep -q '^Inconsistency detected by ld.so' "$said" "$complained"; }; then
    echo "run_under_wine: ended with $code and a start that went wrong; once more"
    "$@"
    code=$?
fi
exit $code
