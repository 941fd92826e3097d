"""A till for the tests of the page: carries out calls of the library, one JSON line each, and answers with the code.

    till.py LIBRARY        ["itemSale", 1, 0, "Chlieb", 12.5, {"letter": "A"}, 1.0, 12.5, "ks"]
"""
import ctypes
import json
import sys

library = ctypes.CDLL(sys.argv[1])


def argument(value):
    if isinstance(value, dict):
        return ctypes.c_char(value["letter"].encode())
    if isinstance(value, str):
        return value.encode("cp1250")
    return ctypes.c_double(value) if isinstance(value, float) else value


for line in sys.stdin:
    name, *arguments = json.loads(line)
    if name == "getVariable":
        text = ctypes.create_string_buffer(256)
        code = library.getVariable(*map(argument, arguments), text, len(text))
        print(json.dumps([code, text.value.decode("cp1250").strip()]), flush=True)
    else:
        print(json.dumps([getattr(library, name)(*map(argument, arguments)), ""]), file=sys.stdout, flush=True)
