#!/usr/bin/env python3
"""Doxygen makes the reference out of the header without a warning, and finds all functions and parameters described.

    doxygen_test.py SOURCE_FOLDER
"""
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

FUNCTIONS = 202


def doxygen(source, header, folder):
    """What Doxygen says about a header; its warnings appear with the HTML only."""
    configuration = (source / "docs/Doxyfile").read_text(encoding="utf-8")
    configuration += f'\nINPUT = "{header}"\nOUTPUT_DIRECTORY = "{folder}"\nGENERATE_XML = YES\n'
    return subprocess.run(["doxygen", "-"], input=configuration, cwd=source, capture_output=True, text=True, check=False)


def described(folder):
    """The functions with a description, and the parameters that none is about."""
    names, undescribed = [], []
    for file in pathlib.Path(folder, "xml").glob("group__*.xml"):
        for function in xml.parse(file).iterfind(".//memberdef[@kind='function']"):
            name = function.findtext("name")
            if "".join(function.find("briefdescription").itertext()).strip():
                names.append(name)
            about = {item.findtext(".//parametername") for item in function.iterfind(".//parameteritem")
                     if "".join(item.find("parameterdescription").itertext()).strip()}
            undescribed += [f"{name} {parameter.text}" for parameter in function.iterfind("param/declname")
                            if parameter.text not in about]
    return names, undescribed


def main():
    source = pathlib.Path(sys.argv[1]).resolve()
    header = source / "api/telvofm.h"
    with tempfile.TemporaryDirectory() as folder:
        said = doxygen(source, header, folder)
        if said.returncode != 0 or said.stderr:
            sys.exit(said.stdout + said.stderr)
        names, undescribed = described(folder)
        if len(names) != FUNCTIONS or len(set(names)) != FUNCTIONS or undescribed:
            sys.exit(f"{len(names)} functions are described, these parameters are not: {undescribed}")

        damaged = pathlib.Path(folder, header.name)
        damaged.write_text(header.read_text(encoding="utf-8").replace(" * @param row ", " * @param line ", 1)
                           .replace("@ref replies", "@ref nothing", 1), encoding="utf-8")
        said = doxygen(source, damaged, folder)
        if said.returncode == 0 or "'line'" not in said.stderr or "'nothing'" not in said.stderr:
            sys.exit(f"Doxygen says of a damaged header only:\n{said.stderr}")
    print(f"{FUNCTIONS} functions in the reference, no warning")


main()
