"""The mutants that a careful reader of this library would think of, wherever its syntax tree has a place for them.
Those that need a thought of their own are in thoughts.toml."""
import re

from clang.cindex import CursorKind, TypeKind

from mutant import mutant
from ordinary import NUMBERS, expression_statements, with_semicolon

LOGGING = ("logCall", "logOutcome", "appendOutcome")
REQUEST = "telvofm::Request"
REFERENCES = (CursorKind.DECL_REF_EXPR, CursorKind.MEMBER_REF_EXPR)


def plain_type(cursor):
    spelling = cursor.type.get_canonical().spelling
    return re.sub(r"^const |[ &]+$| const$", "", spelling)


def named(node, name):
    """The reference with another last name."""
    return re.sub(r"\w+$", name, node.text)


def swapped_arguments(node):
    if node.kind not in (CursorKind.CALL_EXPR, CursorKind.INIT_LIST_EXPR) or node.cursor.spelling.startswith("operator"):
        return
    arguments = node.arguments() if node.kind == CursorKind.CALL_EXPR else node.children()
    if node.cursor.spelling in LOGGING:
        values = [one for one in arguments if one.bare().kind != CursorKind.STRING_LITERAL]
        pairs = list(zip(values, values[1:]))
    else:
        pairs = [(one, next_one) for one, next_one in zip(arguments, arguments[1:])
                 if plain_type(one.bare().cursor) == plain_type(next_one.bare().cursor) and plain_type(one.bare().cursor)]
    text = node.source.text
    whole, form = node, "expression"
    while whole is not None and whole.kind in (CursorKind.INIT_LIST_EXPR, CursorKind.UNEXPOSED_EXPR, CursorKind.CXX_FUNCTIONAL_CAST_EXPR):
        whole = whole.parent
    if whole is None or not whole.kind.is_expression() and whole.kind != CursorKind.RETURN_STMT:
        return
    end = whole.end
    if whole.kind == CursorKind.RETURN_STMT:
        form, end = "statement", with_semicolon(whole)
    for one, other in pairs:
        if one.end <= other.start and one.text != other.text:
            swapped = text[whole.start:one.start] + other.text + text[one.end:other.start] + one.text + text[other.end:end]
            yield mutant(whole, form, swapped, "arguments swapped", end=end)


def siblings_of(declaration):
    """Declarations beside it of the same type, and its place among them."""
    parent = declaration.semantic_parent
    if parent is None:
        return []
    same = [one for one in parent.get_children()
            if one.kind == declaration.kind and one.type.get_canonical().spelling == declaration.type.get_canonical().spelling
            and one.location.file is not None and one.location.file.name == declaration.location.file.name]
    names = list(dict.fromkeys(one.spelling for one in same))
    if declaration.spelling not in names or len(names) < 2:
        return []
    place = names.index(declaration.spelling)
    return list(dict.fromkeys((names[place - 1], names[(place + 1) % len(names)])))


def call_of(node):
    """The call of the function that a reference names."""
    while node is not None and node.kind != CursorKind.CALL_EXPR:
        parent = node.parent
        node = parent if parent is not None and parent.start == node.start else None
    return node


def siblings(node):
    """A neighbouring command code, another field of a structure, another function of the same type."""
    if node.kind not in REFERENCES:
        return
    declaration = node.cursor.referenced
    if declaration is None or declaration.location.file is None or declaration.semantic_parent is None \
            or not declaration.location.file.name.startswith(node.source.top):
        return
    kinds = {CursorKind.ENUM_CONSTANT_DECL: "neighbouring constant", CursorKind.FIELD_DECL: "sibling field",
             CursorKind.FUNCTION_DECL: "sibling called", CursorKind.CXX_METHOD: "sibling called",
             CursorKind.VAR_DECL: "sibling constant"}
    if declaration.kind not in kinds or not re.search(r"\w+$", node.text) or not node.text.endswith(declaration.spelling):
        return
    if declaration.kind == CursorKind.VAR_DECL and (declaration.semantic_parent.kind in (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD)
                                                    or "const" not in declaration.type.spelling):
        return
    whole = call_of(node) if declaration.kind in (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD) else node
    for name in siblings_of(declaration):
        if whole is not None and name != node.function.spelling:
            yield mutant(whole, "expression", named(node, name) + whole.text[node.end - whole.start:], kinds[declaration.kind])


def limits(node):
    """A named constant that is one more or one less."""
    if node.kind != CursorKind.DECL_REF_EXPR or node.cursor.referenced is None:
        return
    declaration = node.cursor.referenced
    if declaration.kind == CursorKind.VAR_DECL and declaration.type.is_const_qualified() \
            and declaration.location.file.name == node.source.path:
        if declaration.type.get_canonical().kind in NUMBERS:
            for change in ("+ 1", "- 1"):
                yield mutant(node, "expression", f"static_cast<std::decay_t<decltype({node.text})>>({node.text} {change})", "limit")
        elif "duration" in declaration.type.get_canonical().spelling:
            for change in ("* 2", "/ 2"):
                yield mutant(node, "expression", f"std::decay_t<decltype({node.text})>({node.text} {change})", "limit")


def fields_of_requests(node):
    """Two fields exchanged, one left out."""
    if node.kind != CursorKind.CALL_EXPR or plain_type(node.cursor) != REQUEST or node.cursor.spelling == "request":
        return
    base = receiver(node)
    if base is None:
        return
    text = node.source.text
    if base.kind == CursorKind.CALL_EXPR or base.kind in REFERENCES:
        yield mutant(node, "expression", base.text, "field left out")
    inner = receiver(base) if base.kind == CursorKind.CALL_EXPR and plain_type(base.cursor) == REQUEST else None
    if inner is not None and base.cursor.spelling != "request":
        yield mutant(node, "expression", inner.text + text[base.end:node.end] + text[inner.end:base.end], "fields exchanged")


def receiver(call):
    children = call.children()
    member = children[0].bare() if children else None
    if member is None or member.kind != CursorKind.MEMBER_REF_EXPR or not member.children():
        return None
    return member.children()[0].bare()


FIELD_KINDS = (  # what a field is written with, and what it may be mistaken for
    (r"\.amount\((.*), (\w+)\)$", ".amountOrZero({0}, {1})"), (r"\.amountOrZero\((.*), (\w+)\)$", ".amount({0}, {1})"),
    (r"\.amount(OrZero)?\((.*), (\w+)\)$", ".amount{0}({1}, {2} + 1)"),
    (r"\.markedAmountOrZero\('.', (.*), (\w+)\)$", ".amountOrZero({0}, {1})"),
    (r"\.fixedText\((.*), (\w+)\)$", ".paddedText({0}, {1})"), (r"\.fixedText\((.*), (\w+)\)$", ".text({0})"),
    (r"\.paddedText\((.*), ([^,]+)\)$", ".text({0})"), (r"\.character\((.*)\)$", ".number({0})"),
    (r"\.number\((.*)\)$", ".number({0} & 0xFF)"), (r"\.number\((.*)\)$", ".amount(Amount(double({0})), 2)"))


def kinds_of_fields(node):
    """A field written in another way; that a text is converted or not is a sibling called."""
    if node.kind != CursorKind.CALL_EXPR or plain_type(node.cursor) != REQUEST:
        return
    base = receiver(node)
    if base is None:
        return
    tail = node.source.text[base.end:node.end]
    for pattern, other in FIELD_KINDS:
        match = re.match(r"\s*" + pattern, tail, re.S)
        if match:
            parts = [part or "" for part in match.groups()]
            yield mutant(node, "expression", base.text + other.format(*parts), "field of another kind")


def truncated_bytes(node):
    if node.kind == CursorKind.CXX_STATIC_CAST_EXPR and node.cursor.type.get_canonical().kind in NUMBERS + (TypeKind.CHAR_S, TypeKind.SCHAR):
        match = re.match(r"(static_cast<.*>)\((.*)\)$", node.text, re.S)
        if match:
            yield mutant(node, "expression", f"{match[1]}(({match[2]}) & 0x7F)", "byte truncated")


def exchanged_statements(node):
    if node.kind != CursorKind.COMPOUND_STMT:
        return
    listed, i = expression_statements(node), 0
    while i + 1 < len(listed):
        (one, end), (other, other_end) = listed[i], listed[i + 1]
        if end and other_end and CursorKind.CXX_THROW_EXPR not in (one.kind, other.kind):
            text = node.source.text
            yield mutant(one, "statement", f"{text[other.start:other_end]} {text[one.start:end]}", "order exchanged", end=other_end)
            i += 1
        i += 1


LOCK = re.compile(r"const std::(scoped|shared)_lock (\w+)\((.*)\);$", re.S)


def locks(node):
    """Not taken, and released behind the next statement."""
    if node.kind != CursorKind.COMPOUND_STMT:
        return
    listed = node.children()
    for declaration, following in zip(listed, listed[1:] + [None]):
        match = LOCK.match(declaration.text) if declaration.kind == CursorKind.DECL_STMT else None
        if not match:
            continue
        kind = "shared" if match[1] == "shared" else "unique"
        yield mutant(declaration, "rewritten", f"std::{kind}_lock {match[2]}({match[3]}, std::defer_lock); "
                                               f"if (!MUTANT) {{ {match[2]}.lock(); }}", "lock not taken")
        if following is not None and following.kind not in (CursorKind.RETURN_STMT,) and following is not listed[-1]:
            end = following.end
            if node.source.text[end:end + 1] == ";":
                end += 1
            yield mutant(following, "after", f"if (MUTANT) {{ {match[2]}.unlock(); }}", "lock released early", end=end)


RULES = (swapped_arguments, siblings, limits, fields_of_requests, kinds_of_fields, truncated_bytes, exchanged_statements, locks)
