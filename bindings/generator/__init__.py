"""The generator of the bindings: what it reads, and one file for each language that it writes."""
