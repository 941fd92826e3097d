#!/usr/bin/env bash
# What GCC runs instead of its linker for Windows (-wrapper): LLVM's, which links a test program in a tenth of a second
# where the other takes ten, because it looks for each symbol's section through the list of all of them.
set -euo pipefail
shift # collect2, which only calls the linker for Windows
arguments=()
while [[ $# -gt 0 ]]; do
    case $1 in
    -plugin) shift ;; # GCC's own plugin, and what follows it
    -plugin-opt=*) ;;
    *) arguments+=("$1") ;;
    esac
    shift
done
exec ld.lld "${arguments[@]}"
