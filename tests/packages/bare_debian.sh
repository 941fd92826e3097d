#!/usr/bin/env bash
# Installs the packages into a folder with a bare Debian, by the line of docs/packages.md, and sells there by its other lines and in
# every language as bindings/README.md says: nothing of ours is there but what the packages hold, and nothing of Debian's but what they
# depend on, and compilers.
#
#     bare_debian.sh PACKAGES FOLDER      as root, with the network; FOLDER is made anew, and takes two gigabytes
set -euo pipefail
source=$(realpath "$(dirname "$0")/../..")
packages=$(realpath "$1")
mkdir -p "$2"
folder=$(realpath "$2")

rm -rf --one-file-system "$folder"
debootstrap --variant=minbase bookworm "$folder"
mkdir -p "$folder/root/tests"
cp "$packages"/*.deb "$folder/root"
cp -r "$source/testing" "$folder/root"
cp -r "$source/tests/packages" "$folder/root/tests"
printf 'APT::Get::Assume-Yes "true";\n' >"$folder/etc/apt/apt.conf.d/no-questions"

# Commands in the bare Debian, whose processes end with them. Options go to unshare.
within() {
    local commands=$1
    shift
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        unshare --mount --pid --fork --kill-child --mount-proc="$folder/proc" "$@" \
        bash -euc 'ip link set lo up; exec chroot "$0" bash -euxc "cd /root; $1"' "$folder" "$commands"
}

# The four lines: installing, a printer, building an example, selling with it.
mapfile -t steps < <(sed -n '/^## From a package$/,/^|/s/^    //p' "$source/docs/packages.md")
[[ ${#steps[@]} -eq 4 && ${steps[0]} == "apt-get install "* && ${steps[1]} == *" &" ]]
compilers=$(sed -n 's/^    \(apt-get install .*\)/\1/p' "$source/bindings/README.md")
within "apt-get update
    ${steps[0]}
    telvofm doctor
    $compilers"
# The page's port is that of a network in which nobody else is.
within "${steps[1]}
    ${steps[2]}
    ${steps[3]}
    PYTHONPATH=tests/packages python3 -B -c '
import first_steps, pathlib
first_steps.sell_in_every_language(pathlib.Path(\"/usr\"), pathlib.Path(\"/root\"))'" --net
