#!/bin/sh
# Runs a test program for Windows. On a busy machine about one start of Wine in a thousand ends at once, before the
# program has said a word: it is started once more. A program that has said something, or is silent again, has failed.
#
#     run_under_wine.sh WINE PROGRAM [ARGUMENT...]
folder=$(dirname "$0")/../build/log
mkdir -p "$folder"
said=$(mktemp "$folder/under-wine.XXXXXX")
trap 'rm -f "$said"' EXIT
"$@" >"$said" 2>&1
code=$?
cat "$said"
if [ $code -ne 0 ] && [ ! -s "$said" ]; then
    echo "run_under_wine: ended with $code and without a word; once more"
    "$@"
    code=$?
fi
exit $code
