"""The mutants that any program has: operators, constants, conditions, statements, results."""
from clang.cindex import CursorKind, TypeKind

from mutant import mutant

OPERATORS = {
    "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",), "!=": ("==",),
    "&&": ("||",), "||": ("&&",), "+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",), "%": ("/",),
    "&": ("|",), "|": ("&",), "^": ("|",), "<<": (">>",), ">>": ("<<",),
    "+=": ("-=",), "-=": ("+=",), "|=": ("&=",), "&=": ("|=",), "^=": ("|=",), "/=": ("*=",), "*=": ("/=",),
}
UNARY = {"!": "", "-": "", "~": "", "++": "--", "--": "++"}
NUMBERS = (TypeKind.INT, TypeKind.UINT, TypeKind.LONG, TypeKind.ULONG, TypeKind.LONGLONG, TypeKind.ULONGLONG,
           TypeKind.UCHAR, TypeKind.SHORT, TypeKind.USHORT)
STATEMENTS = (CursorKind.CALL_EXPR, CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR, CursorKind.UNARY_OPERATOR,
              CursorKind.CXX_THROW_EXPR, CursorKind.UNEXPOSED_EXPR, CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT,
              CursorKind.CXX_STATIC_CAST_EXPR)


def changed_character(text, position):
    """The literal with another character there, or nothing where that would be in the middle of an escape."""
    if "\\" in text or not text.startswith('"') or len(text) < 3:
        return None
    old = text[position]
    new = chr(ord(old) ^ 1) if old.isalnum() and chr(ord(old) ^ 1).isalnum() else "_"
    return text[:position] + new + text[position + 1:]


def operators(node):
    operator = node.cursor.spelling
    overloaded = node.kind == CursorKind.CALL_EXPR and operator.startswith("operator") and len(node.arguments()) == 2
    if node.kind not in (CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR) and not overloaded:
        return
    left, right = node.arguments() if overloaded else (node.children() + [None, None])[:2]
    if left is None or right is None or left.end > right.start:
        return
    text = node.source.text
    written = text[left.end:right.start].strip()
    for other in OPERATORS.get(written, ()):
        yield mutant(node, "expression", f"{left.text} {other} {right.text}", "operator", left.start, right.end)
    if written in ("&&", "||"):
        yield mutant(node, "expression", left.text, "half of a condition")
        yield mutant(node, "expression", right.text, "half of a condition")


def unary_operators(node):
    if node.kind == CursorKind.UNARY_OPERATOR or (node.kind == CursorKind.CALL_EXPR and node.cursor.spelling in ("operator!", "operator++")):
        for written, other in UNARY.items():
            if node.text.startswith(written) and not node.text.startswith(written * 2 if len(written) == 1 else "\0"):
                yield mutant(node, "expression", other + node.text[len(written):], "operator")


def constants(node):
    text = node.text
    if node.kind == CursorKind.INTEGER_LITERAL and text[:1].isdigit():
        yield mutant(node, "expression", f"{text} + 1", "constant")
        if int(text.rstrip("uUlL").replace("'", ""), 0) > 0:
            yield mutant(node, "expression", f"{text} - 1", "constant")
    elif node.kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
        yield mutant(node, "expression", "false" if text == "true" else "true", "constant")
    elif node.kind == CursorKind.CHARACTER_LITERAL:
        yield mutant(node, "expression", f"static_cast<char>({text} ^ 1)", "constant")
    elif node.kind == CursorKind.STRING_LITERAL:
        for position in (1, len(text) - 2):
            changed = changed_character(text, position)
            if changed:
                yield mutant(node, "expression", changed, "text")


def conditions(node):
    if node.kind in (CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.CONDITIONAL_OPERATOR):
        parts = [child for child in node.children() if child.kind != CursorKind.VAR_DECL]
        if not parts or parts[0].kind == CursorKind.DECL_STMT:
            return
        condition = parts[0]
        if condition.end > condition.start and not any(child.kind == CursorKind.VAR_DECL for child in node.children()):
            yield mutant(condition, "expression", f"!({condition.text})", "condition negated")
            if node.kind == CursorKind.IF_STMT:
                yield mutant(condition, "expression", "true", "condition fixed")
                yield mutant(condition, "expression", "false", "condition fixed")


def with_semicolon(node):
    text, end = node.source.text, node.end
    while end < len(text) and text[end].isspace():
        end += 1
    return end + 1 if text[end:end + 1] == ";" else None


def expression_statements(block):
    """Those of a block, each with its end behind the semicolon, or nothing for other statements."""
    return [(child, with_semicolon(child) if child.kind in STATEMENTS else None) for child in block.children()]


def statements(node):
    if node.kind == CursorKind.COMPOUND_STMT:
        for statement, end in expression_statements(node):
            if end:
                yield mutant(statement, "statement", "", "statement removed", end=end)


def results(node):
    if node.kind != CursorKind.RETURN_STMT:
        return
    children = node.children()
    if not children:
        yield mutant(node, "statement", "", "statement removed", end=with_semicolon(node))
        return
    value = children[0]
    kind = value.cursor.type.get_canonical().kind
    if kind == TypeKind.BOOL:
        yield mutant(value, "expression", f"!({value.text})", "result")
    elif kind in NUMBERS:
        yield mutant(value, "expression", f"({value.text}) + 1", "result")
    elif value.text != "{}" and value.cursor.type.get_canonical().spelling.startswith("std::"):
        yield mutant(node, "statement", "return {};", "result", end=with_semicolon(node))


RULES = (operators, unary_operators, constants, conditions, statements, results)
