#!/usr/bin/env bash
# Fetches what drives the browser once, in the versions of package-lock.json, and runs a script of this folder with it.
#
#     page_test.sh FOLDER_FOR_THE_PACKAGES BUILD_FOLDER SCRIPT [ARGUMENTS]
set -euo pipefail
here=$(realpath "$(dirname "$0")")
packages=$1
export TELVOFM_BUILD=$2
export TELVOFM_PAGE=$here/../../virtual_printer/web/files
export TELVOFM_DEMO=$here/../../scripts/demo
script=$3
shift 3
"$here/../fetch_npm_packages.sh" "$here" "$packages"
cp "$here"/*.mjs "$here"/till.py "$packages"
export TMPDIR=$packages/work # what it and the browser write on the way
rm -rf "$TMPDIR"
mkdir "$TMPDIR"
exec node "$packages/$script" "$@"
