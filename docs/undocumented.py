#!/usr/bin/python3
"""Prints the exports declared in folders of headers that the Doxygen XML
output does not describe: missing from it, or with neither a brief nor a
detailed description.  One name a line; nothing when every one is described.

  undocumented.py XML_DIR INCLUDE_DIR...
"""

import pathlib
import re
import sys
import xml.etree.ElementTree as ET

# A declaration starts a line with PXL_API and names the function on it.
DECLARATION = re.compile(r"^PXL_API\b[^(]*?\b([A-Za-z_]\w*)\s*\(", re.M)


def declared(include_dirs):
    names = set()
    for include_dir in include_dirs:
        for header in pathlib.Path(include_dir).glob("*.h"):
            names.update(DECLARATION.findall(header.read_text()))
    return names


def described(xml_dir):
    names = set()
    for path in pathlib.Path(xml_dir).glob("*.xml"):
        if path.name == "index.xml":
            continue
        for member in ET.parse(path).iter("memberdef"):
            if member.get("kind") != "function":
                continue
            text = "".join(
                "".join(member.find(tag).itertext()) if member.find(tag) is not None else ""
                for tag in ("briefdescription", "detaileddescription"))
            if text.strip():
                names.add(member.findtext("name"))
    return names


def main():
    if len(sys.argv) < 3:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    for name in sorted(declared(sys.argv[2:]) - described(sys.argv[1])):
        print(name)
    return 0


if __name__ == "__main__":
    sys.exit(main())
