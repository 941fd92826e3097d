"""Proves that a mutant is none: a compiler that optimises makes the very same code with it and without it, so that nobody can ever
tell them apart."""
import pathlib
import subprocess
import tempfile

# As the library is shipped, without what a debugger reads; then by another compiler.
AS_SHIPPED = ("-std=c++20", "-DNDEBUG", "-DTELVOFM_BUILDING", "-D_FORTIFY_SOURCE=2", "-fPIC", "-fvisibility=hidden",
              "-fvisibility-inlines-hidden", "-ffunction-sections", "-fdata-sections", "-fstack-protector-strong", "-fno-plt", "-w")
COMPILERS = (("g++", "-O2", "-fvect-cost-model=dynamic", "-frandom-seed=mutant"), ("clang++", "-O2", "-fno-addrsig"))


MOST_READERS = 8  # of a header: to compile all of a hundred would take longer than all tests


class SameCode:
    def __init__(self, top, files, folder):
        self.top, self.folder = top, folder
        self.texts = {file: (top / file).read_bytes().decode("latin-1") for file in files}
        self.originals = {}

    def readers(self, file):
        """The sources that a file is part of."""
        readers, before = {file}, 0
        while len(readers) > before:
            before = len(readers)
            readers |= {one for one, text in self.texts.items() if any(f'#include "{read}"' in text for read in readers)}
        return sorted(one for one in readers if one.endswith(".cpp"))

    def code(self, compiler, source, changed):
        """The object file of a source while some files have another text, or nothing when the compiler refuses it."""
        with tempfile.TemporaryDirectory(dir=self.folder) as folder:
            for file, text in {source: self.texts[source], **changed}.items():
                path = pathlib.Path(folder, file)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_bytes(text.encode("latin-1"))
            made = pathlib.Path(folder, "made.o")
            done = subprocess.run([*compiler, *AS_SHIPPED, "-I.", f"-I{self.top}", "-c", source, "-o", made.name],
                                  cwd=folder, capture_output=True)
            return None if done.returncode else made.read_bytes()

    def original(self, compiler, source):
        if (compiler, source) not in self.originals:
            self.originals[compiler, source] = self.code(compiler, source, {})
        return self.originals[compiler, source]

    def proves_equal(self, mutant):
        """By one compiler for all sources that the mutant is in; none of them is a proof of nothing, and too many are not asked."""
        changed, sources = {mutant.file: mutant.alone_in(self.texts[mutant.file])}, self.readers(mutant.file)
        return 0 < len(sources) <= MOST_READERS and any(
            all(self.original(compiler, source) is not None
                and self.code(compiler, source, changed) == self.original(compiler, source) for source in sources)
            for compiler in COMPILERS)
