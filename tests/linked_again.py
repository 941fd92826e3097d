"""Links a test program of a build again, with other objects in front of those that it has."""
import re
import subprocess


def link(command, **more):
    done = subprocess.run(command, capture_output=True, text=True, **more)
    if done.returncode:
        raise SystemExit(done.stderr[:3000])


def link_command(build, program):
    """As ninja would give it, without what stands around it for the shell."""
    listed = subprocess.run(["ninja", "-C", str(build), "-t", "commands", "-s", program], capture_output=True, text=True, check=True)
    return re.sub(r"^: && |&& :$", "", listed.stdout.strip().split("\n")[-1])


def link_again(command, build, target, objects, *options, linker=None):
    """What an object defines is not taken from a library any more; another `linker` takes the place of the command's own."""
    command = re.sub(r" -o \S+", f" -o {target}", command, count=1)
    own, rest = command.split(" ", 1)
    link(" ".join([linker or own, *options, *map(str, objects), rest]), shell=True, cwd=build, executable="/bin/bash")
