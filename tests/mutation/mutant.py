"""A mutant: one small mistake in one place of the library."""
import dataclasses
import hashlib
import re


@dataclasses.dataclass
class Mutant:
    file: str
    start: int  # in bytes
    end: int
    form: str  # "expression", "statement", "after" it, "rewritten": how it is woven in; "alone": a build of its own
    text: str  # what stands there instead
    kind: str
    function: str
    original: str
    line: int
    number: int = -1
    key: str = ""

    def describe(self):
        before, after = shortened(self.original), shortened(self.text) or "nothing"
        return f"{self.file}, {self.function}, {self.kind}: `{before}` becomes `{after}`"

    def alone_in(self, source):
        """The text of its file as if somebody had written the mutant there, and no other."""
        text, before = self.text.replace("MUTANT", "true"), source[self.start:self.end]
        written = {"expression": f"({text})", "statement": f"{{ {text} }}", "after": f"{before} {text}"}.get(self.form, text)
        return source[:self.start] + written + source[self.end:]


def shortened(text, most=150):
    text = re.sub(r"\s+", " ", text).strip()
    return text if len(text) <= most else text[:most - 4] + " ..."


def on_one_line(text):
    """Without its comments and line ends, so that lines keep their numbers."""
    return re.sub(r"\s*\n\s*", " ", re.sub(r"//[^\n\"]*\n", "\n", text))


def mutant(node, form, text, kind, start=None, end=None):
    start, end = node.start if start is None else start, node.end if end is None else end
    source = node.source
    return Mutant(source.name, start, end, form, on_one_line(text), kind, node.function.spelling,
                  source.text[start:end], source.text.count("\n", 0, start) + 1)


def numbered(mutants):
    """Without those that come twice or change nothing, in the order of the files, each with a key that a change elsewhere keeps."""
    seen, kept = {}, []
    for one in sorted(mutants, key=lambda one: (one.file, one.start, -one.end, one.kind, one.text)):
        place = (one.file, one.start, one.end, one.form if one.form in ("after", "rewritten") else "", one.text)
        if place in seen or on_one_line(one.original) == one.text:
            continue
        seen[place] = True
        kept.append(one)
    occurrences = {}
    for number, one in enumerate(kept):
        name = "\0".join((one.file, one.function, one.kind, on_one_line(one.original), one.text))
        occurrences[name] = occurrences.get(name, 0) + 1
        one.number = number
        one.key = hashlib.sha1(f"{name}\0{occurrences[name]}".encode("latin-1", "replace")).hexdigest()[:10]
    return kept


def drawn(mutants, count, seed):
    """So many at random: the same ones for a seed, and with them nearly all that were drawn before a change of the sources."""
    return sorted(mutants, key=lambda one: hashlib.sha1(f"{seed} {one.key}".encode()).digest())[:count]
