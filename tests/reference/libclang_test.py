#!/usr/bin/env python3
"""The header is the reference of the interface: each of its 202 functions has a comment for programmers, which names
every parameter and says what comes back, and the header and codes.json know the same codes. A program for 32 bits is told so
in one sentence when it is compiled.

    libclang_test.py SOURCE_FOLDER
"""
import json
import pathlib
import re
import sys

import clang.cindex as libclang

FUNCTIONS = 202
TOO_SMALL = ['"TelvoFM is a 64-bit library: compile this program for a 64-bit target"']
TARGETS = {"x86_64-linux-gnu": [], "i686-linux-gnu": TOO_SMALL}


def parsed(header_text, *options):
    return libclang.Index.create().parse(
        "telvofm.h", args=["-x", "c", "-std=c11", *options], unsaved_files=[("telvofm.h", header_text)])


def said_for(target, header_text):
    return [problem.spelling for problem in parsed(header_text, "-ffreestanding", f"--target={target}").diagnostics]


def functions(header_text):
    unit = parsed(header_text)
    for problem in unit.diagnostics:
        sys.exit(f"libclang: {problem}")
    return [cursor for cursor in unit.cursor.get_children()
            if cursor.kind == libclang.CursorKind.FUNCTION_DECL and cursor.location.file.name == "telvofm.h"]


def described(comment):
    """The parameters that the comment says something about."""
    return re.findall(r"^ \* @param (\w+) +\S", comment, re.MULTILINE)


def undocumented(header_text):
    """What the comments lack, one text for each."""
    lacking = []
    for function in functions(header_text):
        name, comment = function.spelling, function.raw_comment or ""
        if not comment.startswith("/**"):
            lacking.append(f"{name} is not documented")
            continue
        parameters = [parameter.spelling for parameter in function.get_arguments()]
        if described(comment) != parameters:
            lacking.append(f"{name} has the parameters {parameters}, its comment {described(comment)}")
        if ("@return" in comment) != (function.result_type.spelling != "void"):
            lacking.append(f"{name} returns {function.result_type.spelling}, its comment says otherwise")
    return lacking


def overlooked(header_text):
    """The damages of the comments that nothing above notices."""
    damages = {
        "a missing parameter": (" * @param row ", " * row "),
        "an empty parameter": (" * @param path  the file, in the encoding", " * @param path\n * the file, in the encoding"),
        "a comment that is none": ("/** Switches the call log off.", "/* Switches the call log off."),
        "a missing result": (" * @return 106, always", " * 106, always"),
    }
    return [name for name, (whole, damaged) in damages.items()
            if whole not in header_text or len(undocumented(header_text.replace(whole, damaged, 1))) != 1]


def codes_of_header(header_text):
    chapter = header_text.split("@defgroup codes", 1)[1].split("@defgroup", 1)[0]
    return set(re.findall(r"^ \* \| (-?\d[^|]*?) \|", chapter, re.MULTILINE))


def codes_of_list(source):
    codes = json.loads((source / "api/codes.json").read_text(encoding="utf-8"))
    return {str(code["code"]) if "code" in code else f"{code['from']} ... {code['to']}" for code in codes}


def main():
    source = pathlib.Path(sys.argv[1])
    header_text = (source / "api/telvofm.h").read_text(encoding="utf-8")
    wrong = undocumented(header_text)
    wrong += [f"{name} was not noticed" for name in overlooked(header_text)]
    if len(functions(header_text)) != FUNCTIONS:
        wrong.append(f"libclang sees {len(functions(header_text))} functions")
    for target, expected in TARGETS.items():
        if said_for(target, header_text) != expected:
            wrong.append(f"for {target} the compiler says {said_for(target, header_text)}")
    if codes_of_header(header_text) != codes_of_list(source):
        wrong.append(f"only in the header or in codes.json: {codes_of_header(header_text) ^ codes_of_list(source)}")
    if wrong:
        sys.exit("\n".join(wrong))
    print(f"{FUNCTIONS} documented functions, no parameter that no text names")


main()
