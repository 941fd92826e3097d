#!/usr/bin/env bash
# Fetches the validator of OpenAPI once, in the versions of package-lock.json, runs the tests of the control interface,
# and holds what they asked and were answered against the description.
#
#     description_test.sh FOLDER_FOR_THE_VALIDATOR OPENAPI_FILE PROGRAM_OF_THE_TESTS
set -euo pipefail
here=$(realpath "$(dirname "$0")")
validator=$1
program=$(realpath "$3")
"$here/../../fetch_npm_packages.sh" "$here" "$validator"
cp "$here/description_test.mjs" "$validator"
rm -rf "$validator/exchanges"
mkdir "$validator/exchanges"
(cd "$validator/exchanges" && "$program" --gtest_brief=1)
node "$validator/description_test.mjs" "$2" "$validator/exchanges/control_exchanges"
