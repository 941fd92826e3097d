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
mkdir -p "$packages"
flock "$packages" "$here/../fetch_npm_packages.sh" "$here" "$packages"
own=$packages/${script%.mjs} # others run beside it
rm -rf "$own"
mkdir "$own"
cp "$here"/*.{mjs,py,bmp} "$own"
export TMPDIR=$own/work # what it and the browser write on the way
mkdir "$TMPDIR"
exec node "$own/$script" "$@"
