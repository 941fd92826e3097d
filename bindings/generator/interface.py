"""Reads telvofm.h: the exported functions with their types, as every language's raw layer needs them."""
import typing

import clang.cindex

# What each C type of the header is to a caller in another language. A header with another type needs a decision here
# and in each language, so the generator stops at it.
KINDS = {
    "int": "int32",
    "int16_t": "int16",
    "int64_t": "int64",
    "uint32_t": "uint32",
    "double": "double",
    "char": "character",  # one byte, whatever the language calls a character
    "TelvofmBool": "truth",  # one byte, 0 or 1
    "_Bool": "truth",
    "const char *": "text",  # bytes with a NUL at their end
    "char *": "buffer",  # the caller's bytes; their number comes beside them
    "unsigned char *": "buffer",
    "const unsigned char *": "bytes",  # bytes that are read; their number comes beside them
    "const void *": "bytes",
    "unsigned int *": "count",  # one number that the library writes, or null
    "ResultObject *": "object",
    "const ResultObject *": "object",
}
RESULTS = {"void": "nothing", "const char *": "returned text"}  # of the library's own memory, which nobody frees


class UnknownType(Exception):
    pass


class Parameter(typing.NamedTuple):
    name: str
    kind: str


class Function(typing.NamedTuple):
    name: str
    result: str
    parameters: tuple

    def fills_a_buffer(self):
        """Whether it writes into memory of the caller's. One that is too short ends the process, so that the raw layers keep
        these functions apart, and the layers above do not call them."""
        return any(parameter.kind in ("buffer", "count") for parameter in self.parameters)


def kind_of(kinds, spelling, place):
    if spelling not in kinds:
        raise UnknownType(f'{place} is of the C type "{spelling}", which bindings/generator/interface.py does not know; '
                          "say there what it is to other languages, and in each language's file how it is written")
    return kinds[spelling]


def read_functions(header):
    """All functions that the header declares, in its order."""
    unit = clang.cindex.Index.create().parse(str(header), args=["-x", "c", "-std=c11"])
    errors = [str(diagnostic) for diagnostic in unit.diagnostics if diagnostic.severity >= clang.cindex.Diagnostic.Error]
    if errors:
        raise UnknownType(f"{header.name} is no C that libclang can read: {errors[0]}")
    functions = []
    for cursor in unit.cursor.get_children():
        if cursor.kind != clang.cindex.CursorKind.FUNCTION_DECL:
            continue
        if str(cursor.location.file) != str(header):
            continue
        functions.append(Function(
            cursor.spelling,
            kind_of({**KINDS, **RESULTS}, cursor.result_type.spelling, f"what {cursor.spelling} returns"),
            tuple(Parameter(argument.spelling, kind_of(KINDS, argument.type.spelling,
                                                       f"{argument.spelling} of {cursor.spelling}"))
                  for argument in cursor.get_arguments())))
    return functions
