"""Requests and blocks as they go over the wire, for the scripts that make seeds."""
import functools
import operator


def with_checksum(unit):
    return unit + bytes([functools.reduce(operator.xor, unit)])


def request(command, *fields):
    return with_checksum(b"\x1c\x01" + bytes([command]) + b"".join(field + b"\0" for field in fields) + b"\x04")


def block(data, terminator):
    return with_checksum(b":" + bytes([len(data) - 1]) + data + terminator)
