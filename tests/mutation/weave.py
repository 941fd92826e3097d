"""Weaves all mutants of a file into it, each behind a switch that is read when the program starts."""

CONDITIONS = ("condition negated", "condition fixed", "half of a condition")


def as_condition(mutants):
    """What both sides of a choice are turned into: without it an optional and a truth would meet in an optional, which is another
    condition than the one that stands there."""
    is_truth = any(one.kind in CONDITIONS or one.kind == "operator" and one.original.startswith("!") for one in mutants)
    return "static_cast<bool>" if is_truth else ""


class Site:
    """Mutants of one place, and the sites inside it."""

    def __init__(self, start, end, form):
        self.start, self.end, self.form = start, end, form
        self.mutants, self.inner = [], []

    def holds(self, other):
        return self.start <= other.start and other.end <= self.end


def sites_of(mutants):
    """Nested sites, and the mutants whose place overlaps another one's without lying inside."""
    order = {"after": 0, "rewritten": 1, "statement": 2, "expression": 3}
    sites = {}
    for one in mutants:
        sites.setdefault((one.start, -one.end, order[one.form]), Site(one.start, one.end, one.form)).mutants.append(one)
    top, open_sites, left_out = [], [], []
    for _, site in sorted(sites.items(), key=lambda item: item[0]):
        while open_sites and open_sites[-1].end <= site.start:
            open_sites.pop()
        if open_sites and not open_sites[-1].holds(site) or any(outer.form == "rewritten" for outer in open_sites):
            left_out.extend(site.mutants)
            continue
        (open_sites[-1].inner if open_sites else top).append(site)
        open_sites.append(site)
    return top, left_out


class Woven:
    """The text of a file with its switches, and where each mutant lies in it."""

    def __init__(self, text, mutants):
        self.source, self.pieces, self.length, self.places = text, [], 0, []
        sites, self.left_out = sites_of(mutants)
        self.add_with(sites, 0, len(text))
        self.text = "".join(self.pieces)

    def add(self, text):
        self.pieces.append(text)
        self.length += len(text)

    def add_with(self, sites, start, end):
        for site in sites:
            self.add(self.source[start:site.start])
            self.add_site(site)
            start = site.end
        self.add(self.source[start:end])

    def add_mutant(self, mutant, text):
        begin = self.length
        self.add(text.replace("MUTANT", f"telvofm_mutant({mutant.number})"))
        self.places.append((begin, self.length, [mutant]))

    def add_site(self, site):
        begin = self.length
        if site.form == "rewritten":
            self.add_mutant(site.mutants[0], site.mutants[0].text)
        elif site.form == "after":
            self.add_with(site.inner, site.start, site.end)
            for one in site.mutants:
                self.add_mutant(one, " " + one.text)
        elif site.form == "statement":
            self.add("{ ")
            for one in site.mutants:
                self.add(f"if (telvofm_mutant({one.number})) {{ ")
                self.add_mutant(one, one.text)
                self.add(" } else ")
            self.add("{ ")
            self.add_with(site.inner, site.start, site.end)
            self.add(" } }")
        else:
            truth = as_condition(site.mutants)
            self.add("(")
            for one in site.mutants:
                self.add(f"telvofm_mutant({one.number}) ? {truth}(")
                self.add_mutant(one, one.text)
                self.add(") : ")
            self.add(f"{truth}(")
            self.add_with(site.inner, site.start, site.end)
            self.add("))")
        self.places.append((begin, self.length, site.mutants))

    def mutants_at(self, line, column):
        """Those of the smallest place that holds this one."""
        lines = self.text.split("\n")
        offset = sum(len(text) + 1 for text in lines[:line - 1]) + column - 1
        holding = [place for place in self.places if place[0] <= offset < place[1]]
        return min(holding, key=lambda place: place[1] - place[0])[2] if holding else []
