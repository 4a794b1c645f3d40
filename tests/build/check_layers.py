#!/usr/bin/env python3
"""Checks that the sources of src/ug stand in layers.

The layers are the table in ARCHITECTURE.md. A source and its header are one unit. One unit uses another when one of its
files includes the other's header, and when its object refers to a function or a variable that the other's object
defines. A unit uses its own layer and those below, and no chain of uses leads back to where it began.
"""

import argparse
import pathlib
import re
import subprocess
import sys

TABLE_HEAD = re.compile(r"^\| layer of `src/ug` \|")
TABLE_ROW = re.compile(r"^\| (\w+) \| (.+) \|$")
INCLUDE = re.compile(r'^\s*#\s*include\s*"ug/(\w+)\.h"', re.MULTILINE)


def read_layers(document):
    """The layers from the lowest to the highest, as a dictionary of the units' layers."""
    lines = iter(document.read_text().splitlines())
    for line in lines:
        if TABLE_HEAD.match(line):
            break
    else:
        raise ValueError(f"{document} has no table of the layers of src/ug")
    next(lines)
    layer_of = {}
    names = []
    for line in lines:
        row = TABLE_ROW.match(line)
        if not row:
            break
        for unit in re.findall(r"`(\w+)`", row[2]):
            if unit in layer_of:
                raise ValueError(f"{document} puts {unit} into two layers")
            layer_of[unit] = len(names)
        names.append(row[1])
    return layer_of, names


def uses_by_include(sources):
    uses = {}
    for file in sources:
        for other in INCLUDE.findall(file.read_text()):
            if other != file.stem:
                uses.setdefault((file.stem, other), f'{file.name} includes "ug/{other}.h"')
    return uses


def symbols(nm, path):
    """The names that an object defines for others, and those that it wants from them."""
    listing = subprocess.run([nm, "--format=posix", path], check=True, capture_output=True, text=True).stdout
    defined, wanted = set(), set()
    for line in listing.splitlines():
        name, kind = line.split()[:2]
        if kind == "U":
            wanted.add(name)
        elif kind in "TDBRGSC":
            defined.add(name)
    return defined, wanted


def uses_by_call(nm, objects):
    tables = {pathlib.Path(path).name.split(".")[0]: symbols(nm, path) for path in objects}
    home = {name: unit for unit, (defined, _) in tables.items() for name in defined}
    uses = {}
    for unit, (_, wanted) in tables.items():
        for name in sorted(wanted):
            other = home.get(name)
            if other and other != unit:
                uses.setdefault((unit, other), f"{unit} uses {name} of {other}")
    return uses


def find_circle(uses):
    """One chain of units that leads back to its beginning, or nothing."""
    following = {}
    for unit, other in sorted(uses):
        following.setdefault(unit, []).append(other)
    done, chain = set(), []

    def visit(unit):
        if unit in chain:
            return chain[chain.index(unit) :] + [unit]
        if unit in done:
            return None
        chain.append(unit)
        for other in following.get(unit, []):
            circle = visit(other)
            if circle:
                return circle
        chain.pop()
        done.add(unit)
        return None

    for unit in sorted(following):
        circle = visit(unit)
        if circle:
            return circle
    return None


def faults(document, folder, nm, objects):
    layer_of, names = read_layers(document)
    sources = sorted([*folder.glob("*.cpp"), *folder.glob("*.h")])
    units = {file.stem for file in sources}
    found = [f"{unit} is in no layer of {document}" for unit in sorted(units - layer_of.keys())]
    found += [f"{document} names {unit}, which is not in {folder}" for unit in sorted(layer_of.keys() - units)]

    compiled = {pathlib.Path(path).name.split(".")[0] for path in objects}
    found += [f"{file.name} has no object" for file in sources if file.suffix == ".cpp" and file.stem not in compiled]

    uses = {**uses_by_call(nm, objects), **uses_by_include(sources)}
    for (unit, other), reason in sorted(uses.items()):
        if unit in layer_of and other in layer_of and layer_of[unit] < layer_of[other]:
            found.append(f"{reason}: {names[layer_of[unit]]} must not use {names[layer_of[other]]}")
    circle = find_circle(uses)
    if circle:
        reasons = "; ".join(uses[pair] for pair in zip(circle, circle[1:]))
        found.append(f"circle {' -> '.join(circle)}: {reasons}")
    return found


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("document", type=pathlib.Path, help="the file with the table of the layers")
    parser.add_argument("folder", type=pathlib.Path, help="the folder of the sources")
    parser.add_argument("nm", help="the program that lists an object's symbols")
    parser.add_argument("objects", nargs="+", help="the compiled sources")
    arguments = parser.parse_args()
    try:
        found = faults(arguments.document, arguments.folder, arguments.nm, arguments.objects)
    except (OSError, ValueError, subprocess.CalledProcessError) as error:
        found = [str(error)]
    for fault in found:
        print(fault, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
