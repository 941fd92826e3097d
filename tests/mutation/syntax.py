"""The library's files as clang sees them: the expressions and statements of its functions, with their places."""
import pathlib
import re

import clang.cindex
from clang.cindex import CursorKind

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
INSIDE = ("link", "device", "commands", "graphics")
ROOMS = ("api", *INSIDE)
FUNCTIONS = (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR,
             CursorKind.FUNCTION_TEMPLATE, CursorKind.CONVERSION_FUNCTION)
SCOPES = (CursorKind.NAMESPACE, CursorKind.CLASS_DECL, CursorKind.STRUCT_DECL, CursorKind.CLASS_TEMPLATE,
          CursorKind.LINKAGE_SPEC, CursorKind.UNEXPOSED_DECL)
CONSTANT = re.compile(r"\s*(static\s+|inline\s+)*(constexpr|static_assert|consteval)\b")


def own_files(top=TOP):
    """The sources of the library on this platform, and its headers."""
    files = [path for room in ROOMS for path in sorted((top / room).rglob("*"))
             if path.suffix in (".cpp", ".h") and "_win32" not in path.name and path.name != "telvofm.h"]
    return [str(path.relative_to(top)) for path in files]


class Node:
    """An expression or a statement: its cursor, its place in the file, its parent."""

    def __init__(self, cursor, source, parent, function):
        self.cursor, self.source, self.parent, self.function = cursor, source, parent, function
        self.kind = cursor.kind
        self.start, self.end = cursor.extent.start.offset, cursor.extent.end.offset

    @property
    def text(self):
        return self.source.text[self.start:self.end]

    def children(self):
        found = []
        for child in self.cursor.get_children():
            file = child.extent.start.file
            if file is not None and file.name == self.source.path and child.extent.end.offset <= self.end:
                found.append(Node(child, self.source, self, self.function))
        return found

    def bare(self):
        """Without the conversions that nobody has written."""
        node = self
        while node.kind == CursorKind.UNEXPOSED_EXPR:
            inner = [child for child in node.children() if child.start == node.start and child.end == node.end]
            if len(inner) != 1:
                break
            node = inner[0]
        return node

    def arguments(self):
        return [Node(cursor, self.source, self, self.function) for cursor in self.cursor.get_arguments()
                if cursor is not None and cursor.extent.start.file is not None
                and cursor.extent.start.file.name == self.source.path and cursor.extent.end.offset > cursor.extent.start.offset]


class Source:
    def __init__(self, path, name):
        self.path, self.name = path, name
        self.top = path[:-len(name)]
        self.text = pathlib.Path(path).read_bytes().decode("latin-1")  # one character for each byte


def functions_in(cursor, path):
    for child in cursor.get_children():
        if child.location.file is None or child.location.file.name != path:
            continue
        if child.kind in FUNCTIONS and child.is_definition():
            yield child
        elif child.kind in SCOPES:
            yield from functions_in(child, path)


def nodes_of(top, name, unit, path):
    """All nodes of the functions that a file defines, outer ones first."""
    source = Source(path, name)
    for function in functions_in(unit.cursor, path):
        head = source.text[function.extent.start.offset:function.extent.end.offset].split("{")[0]
        if re.search(r"\b(constexpr|consteval)\b", head):
            continue
        pending = [Node(function, source, None, function)]
        while pending:
            node = pending.pop()
            if node.kind == CursorKind.PARM_DECL or CONSTANT.match(node.text):
                continue
            if node.parent is not None:
                yield node
            pending.extend(reversed(node.children()))


def parse(top, name, arguments):
    unit = clang.cindex.Index.create().parse(str(top / name), args=arguments)
    errors = [str(one) for one in unit.diagnostics if one.severity >= clang.cindex.Diagnostic.Error]
    if errors:
        raise SystemExit(f"{name} is nothing that libclang can read: {errors[0]}")
    return unit
