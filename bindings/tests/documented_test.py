#!/usr/bin/env python3
"""Every public member of the layers in Python, Java, Pascal and C++ has a comment that says what it does."""
import ast
import pathlib
import re
import sys

BINDINGS = pathlib.Path(__file__).resolve().parent.parent


def in_python(text):
    """Classes and functions without a docstring; those of the language itself and of this package need none."""
    def nodes(parent):
        for node in ast.iter_child_nodes(parent):
            if isinstance(node, (ast.ClassDef, ast.FunctionDef)) and not node.name.startswith("_"):
                yield node
                if isinstance(node, ast.ClassDef):
                    yield from nodes(node)
    for node in nodes(ast.parse(text)):
        yield node.name, bool(ast.get_docstring(node))


def in_java(text):
    """Public types and members behind something else than a comment; an annotation may stand between."""
    lines = [line for line in text.splitlines() if not re.match(r"\s*@\w+", line)]
    for before, line in zip(lines, lines[1:]):
        if re.match(r" *public ", line):
            yield line.strip(), before.rstrip().endswith("*/")


def in_pascal(text):
    """What stands in an interface section and not in a private part: classes, methods, properties and routines."""
    is_public, before = True, ""
    for line in text.split("\nimplementation\n")[0].splitlines():
        if line.strip() in ("private", "public"):
            is_public = line.strip() == "public"
        elif line == "  end;":
            is_public = True
        if is_public and re.match(r" *(procedure|function|constructor|destructor|property) |  [TEI]\w+ = ", line):
            yield line.strip(), before.rstrip().endswith("}")
        before = line


def in_cpp(text):
    """What stands in the namespace itself, and in the public part of its classes; constructors and operators speak for themselves.
    The second of two lines that one comment explains stands right under the first."""
    text = re.sub(r"namespace (?:telvofm::)?inside \{.*?\} // namespace (?:telvofm::)?inside", "", text, flags=re.DOTALL)
    is_public, before = True, ""
    for line in text.splitlines():
        if re.match(r"(public|private):", line):
            is_public = line.startswith("public")
        elif re.match(r"\};?$", line):
            is_public = True
        declared = re.match(r"(?:    )?(?:inline|struct|class|enum class|template|Outcome|Result<|Recovery|Receipt|\[\[nodiscard\]\])", line)
        if is_public and declared and not re.search(r"operator|Session::|;$", line):
            yield line.strip(), bool(re.match(r" *(//|template|class \[\[)", before)) or before.endswith(";")
        before = line


def main():
    seen, wrong = 0, []
    for pattern, members in (("python/telvofm/*.py", in_python), ("java/telvofm/*.java", in_java), ("pascal/*.pas", in_pascal),
                             ("cpp/telvofm/*.hpp", in_cpp)):
        files = list(BINDINGS.glob(pattern))
        found = [(f"{file.relative_to(BINDINGS)}: {name}", explained) for file in files
                 for name, explained in members(file.read_text(encoding="utf-8-sig"))]
        if len(found) < 30:
            sys.exit(f"{pattern} has {len(found)} public members only")
        seen += len(found)
        wrong += [name for name, explained in found if not explained]
    if wrong:
        sys.exit("without a comment:\n" + "\n".join(wrong))
    print(f"{seen} public members have a comment")


main()
