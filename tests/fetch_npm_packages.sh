#!/usr/bin/env bash
# Fetches the packages of a package-lock.json from npm, in its versions, once: a folder that has them is left alone.
#
#     fetch_npm_packages.sh FOLDER_OF_THE_LOCK_FILE FOLDER_FOR_THE_PACKAGES
set -euo pipefail
lock=$(realpath "$1")
packages=$2
mkdir -p "$packages"
if ! cmp --silent "$lock/package-lock.json" "$packages/whole"; then
    cp "$lock/package.json" "$lock/package-lock.json" "$packages"
    (cd "$packages" && npm ci --ignore-scripts --no-audit --no-fund) ||
        { echo "cannot fetch the packages of $lock from npm; check the network and run again" >&2; exit 1; }
    cp "$lock/package-lock.json" "$packages/whole"
fi
