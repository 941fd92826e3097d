"""What a shared library exports, read from the file itself: a name, its address, and where the file keeps it."""
import dataclasses
import struct

# Flags of a section that holds code.
ELF_EXECUTABLE = 0x4
PE_EXECUTABLE = 0x20000000


@dataclasses.dataclass
class Export:
    name: str
    address: int
    place: int  # of the address in the file
    size: int   # of the address in bytes


@dataclasses.dataclass
class Library:
    exports: list
    code: list  # begin and end of each section that holds code

    def outside_code(self):
        """The names whose address lies in no code."""
        return [export.name for export in self.exports
                if not any(begin <= export.address < end for begin, end in self.code)]


def text_at(data, place):
    return data[place:data.index(b"\0", place)].decode()


def read_elf(data):
    header_place, = struct.unpack_from("<Q", data, 0x28)
    size, count = struct.unpack_from("<HH", data, 0x3A)
    # name, type, flags, address, offset, size, link, information, alignment, size of an entry
    sections = [struct.unpack_from("<IIQQQQIIQQ", data, header_place + i * size) for i in range(count)]
    code = [(address, address + length) for _, _, flags, address, _, length, *_ in sections if flags & ELF_EXECUTABLE]
    exports = []
    dynamic_symbols = 11
    for _, kind, _, _, offset, length, link, _, _, entry in sections:
        if kind != dynamic_symbols:
            continue
        names = sections[link][4]
        for place in range(offset, offset + length, entry):
            name, _, _, section, address, _ = struct.unpack_from("<IBBHQQ", data, place)
            if section != 0:  # else it is imported
                exports.append(Export(text_at(data, names + name), address, place + 8, 8))
    return Library(exports, code)


def read_pe(data):
    header, = struct.unpack_from("<I", data, 0x3C)
    count, = struct.unpack_from("<H", data, header + 6)
    optional_size, = struct.unpack_from("<H", data, header + 20)
    optional = header + 24
    # size in memory, address, size in the file, offset in the file, and at the end the flags
    sections = [struct.unpack_from("<8xIIII12xI", data, optional + optional_size + i * 40) for i in range(count)]
    code = [(address, address + length) for length, address, _, _, flags in sections if flags & PE_EXECUTABLE]

    def place_of(address):
        for _, begin, length, offset, _ in sections:
            if begin <= address < begin + length:
                return offset + address - begin
        raise ValueError(f"address {address:#x} is in no section")

    directory, = struct.unpack_from("<I", data, optional + 112)
    names_count, functions, names, ordinals = struct.unpack_from("<IIII", data, place_of(directory) + 24)
    exports = []
    for i in range(names_count):
        name, = struct.unpack_from("<I", data, place_of(names) + i * 4)
        ordinal, = struct.unpack_from("<H", data, place_of(ordinals) + i * 2)
        place = place_of(functions) + ordinal * 4
        address, = struct.unpack_from("<I", data, place)
        exports.append(Export(text_at(data, place_of(name)), address, place, 4))
    return Library(exports, code)


def read_library(data):
    return read_elf(data) if data.startswith(b"\x7FELF") else read_pe(data)
