#!/bin/sh
# Takes the symbols of a library that has just been linked into FILE.debug and says so in the library, where debuggers
# look. One that has been through this already stays as it is: a build runs this again without linking.
#
#     take_symbols_out.sh OBJCOPY OBJDUMP FILE
set -eu
export SOURCE_DATE_EPOCH=0 # into a file for Windows the moment would be written
"$2" -h "$3" | grep -q gnu_debuglink && exit 0
"$1" --only-keep-debug "$3" "$3.debug"
"$1" --strip-all --add-gnu-debuglink="$3.debug" "$3" "$3.stripped"
mv "$3.stripped" "$3"
