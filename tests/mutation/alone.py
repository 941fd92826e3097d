"""Mutants of constant expressions, which no switch can turn on: each gets a build of its own, of one file."""
from linked import link_all
from tests_of_library import Runner


def judge_alone(judge, mutant, library, build, work, programs, mutants):
    source = (library.top / mutant.file).read_bytes().decode("latin-1")
    place = work / "alone"
    path = place / "tree" / mutant.file
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(mutant.alone_in(source).encode("latin-1"))
    made = place / "changed.o"
    _, compiled = library.compile(mutant.file, made, path)
    if compiled.returncode:
        raise SystemExit(f"{mutant.describe()} does not compile:\n{compiled.stderr[:2000]}")
    link_all(library, build, place / "linked", programs, {mutant.file: made})
    of_file = {one.number for one in mutants if one.file == mutant.file}
    for test in judge.tests:
        if test.reached & of_file:
            test.reached |= {mutant.number}
    judge.judge(Runner(place / "work", place / "linked"), mutant, mutant.number, Runner(place / "work", work / "linked"))
