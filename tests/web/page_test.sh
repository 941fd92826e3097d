#!/usr/bin/env bash
# Fetches what drives the browser once, in the versions of package-lock.json, and runs a script of this folder with it.
#
#     page_test.sh FOLDER_FOR_THE_PACKAGES BUILD_FOLDER SCRIPT [ARGUMENTS]
set -euo pipefail
here=$(realpath "$(dirname "$0")")
packages=$1
export TELVOFM_BUILD=$2
export TELVOFM_PAGE=$here/../../virtual_printer/web/files
script=$3
shift 3
mkdir -p "$packages"
if ! cmp --silent "$here/package-lock.json" "$packages/whole"; then
    cp "$here/package.json" "$here/package-lock.json" "$packages"
    (cd "$packages" && npm ci --ignore-scripts --no-audit --no-fund) ||
        { echo "cannot fetch playwright-core; check the network and run again" >&2; exit 1; }
    cp "$here/package-lock.json" "$packages/whole"
fi
cp "$here"/*.mjs "$here"/till.py "$packages"
exec node "$packages/$script" "$@"
