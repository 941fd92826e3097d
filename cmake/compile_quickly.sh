#!/usr/bin/env bash
# What CMake runs instead of GCC for a file that is not shipped: clang, which understands GCC's options.
#
#     compile_quickly.sh CLANG [CCACHE] GCC OPTION...
set -euo pipefail
launcher=() clang=$1
shift
if [[ $1 == */ccache ]]; then
    launcher=("$1")
    shift
fi
shift # GCC
if [[ " $* " == *" -x c++-header "* ]]; then
    rm -f "${@: -3:1}" # what GCC had made of the header in this folder before would be read
fi
exec "${launcher[@]}" "$clang" -Qunused-arguments -Wno-unknown-warning-option -Xclang -fno-pch-timestamp "$@"
