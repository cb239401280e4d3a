#!/usr/bin/env python3
"""Writes the declarations module of the Python package from the public header.

The header is run through the C preprocessor (with PXL_API defined empty and
with empty stand-ins for the standard headers, so that only pxl's own
declarations come out) and parsed with pycparser, which comes with cffi.  The
module written holds:

  CDEF       the preprocessed declarations, for cffi's ffi.cdef()
  FUNCTIONS  every function: (name, return type, parameters); a parameter is
             (name, kind, C type of its element, numpy dtype or None, array
             length or 0, const), kind being one of
             'pointer', 'array', 'pointer_array', 'struct', 'scalar', 'other'
  STATUS     status code -> (name, description), from the status enum and
             the comment that follows each of its members
  CONSTANTS  integer macros of the headers (PXL_CPU_* and the like)

Nothing in it is written by hand, so every export the header declares, now
or later, reaches Python.

    gen_bindings.py --cc <C compiler> --include <include dir> --out <file>
"""
import argparse
import os
import pprint
import re
import subprocess
import sys
import tempfile

from pycparser import c_ast, c_parser

# The standard headers pxl's headers may include; their types are known to
# cffi by name, and to pycparser through STD_TYPEDEFS.
STD_HEADERS = ("stdint.h", "stddef.h", "stdbool.h")
STD_TYPES = {
    "int8_t": "int8", "uint8_t": "uint8", "int16_t": "int16", "uint16_t": "uint16",
    "int32_t": "int32", "uint32_t": "uint32", "int64_t": "int64", "uint64_t": "uint64",
    "size_t": "uint64", "ptrdiff_t": "int64", "intptr_t": "int64", "uintptr_t": "uint64",
}
STD_TYPEDEFS = "".join("typedef int %s;\n" % t for t in STD_TYPES) + "typedef int bool;\n"

# C base types that an image element or a scalar may have.
BASE_TYPES = {
    ("char",): "int8", ("signed", "char"): "int8", ("unsigned", "char"): "uint8",
    ("short",): "int16", ("unsigned", "short"): "uint16",
    ("int",): "int32", ("signed", "int"): "int32", ("unsigned", "int"): "uint32",
    ("unsigned",): "uint32", ("long",): "int64", ("unsigned", "long"): "uint64",
    ("long", "long"): "int64", ("unsigned", "long", "long"): "uint64",
    ("float",): "float32", ("double",): "float64",
}


def preprocess(cc, include_dir, header):
    with tempfile.TemporaryDirectory() as stubs:
        for name in STD_HEADERS:
            open(os.path.join(stubs, name), "w").close()
        base = [cc, "-E", "-nostdinc", "-I", stubs, "-I", include_dir, "-DPXL_API="]
        text = subprocess.run(base + ["-P", header], check=True, capture_output=True, text=True).stdout
        macros = subprocess.run(base + ["-dM", header], check=True, capture_output=True,
                                text=True).stdout
    return text, macros


class Types:
    """Resolves typedef names to what they stand for."""

    def __init__(self, ast):
        self.typedefs = {}
        for node in ast.ext:
            if isinstance(node, c_ast.Typedef):
                self.typedefs[node.name] = node.type

    def base(self, type_decl):
        """The dtype of a TypeDecl, 'struct' for a record, or None."""
        t = type_decl.type
        if isinstance(t, c_ast.IdentifierType):
            names = tuple(n for n in t.names if n != "const")
            if len(names) == 1 and names[0] in STD_TYPES:
                return STD_TYPES[names[0]]
            if len(names) == 1 and names[0] in self.typedefs:
                target = self.typedefs[names[0]]
                if isinstance(target, c_ast.TypeDecl):
                    return self.base(target)
                return None
            return BASE_TYPES.get(names)
        if isinstance(t, c_ast.Struct):
            return "struct"
        if isinstance(t, c_ast.Enum):
            return "int32"
        return None


def type_name(type_decl):
    """The C name of a TypeDecl's type, without qualifiers."""
    t = type_decl.type
    if isinstance(t, c_ast.IdentifierType):
        return " ".join(n for n in t.names if n != "const")
    if isinstance(t, c_ast.Struct):
        return "struct " + t.name
    if isinstance(t, c_ast.Enum):
        return "int"
    return None


def constant(node):
    if isinstance(node, c_ast.Constant):
        return int(node.value.rstrip("uUlL"), 0)
    if isinstance(node, c_ast.UnaryOp) and node.op in ("-", "+"):
        value = constant(node.expr)
        return -value if node.op == "-" else value
    raise ValueError("not an integer constant")


def describe_param(param, types):
    """(name, kind, element C type, dtype, length, const) of one parameter."""
    t = param.type
    name = param.name or ""
    if isinstance(t, c_ast.TypeDecl):
        base = types.base(t)
        if base == "struct":
            return (name, "struct", type_name(t), None, 0, False)
        if base is not None:
            return (name, "scalar", type_name(t), base, 0, False)
        if type_name(t) == "void":
            return None  # (void)
        return (name, "other", None, None, 0, False)
    if isinstance(t, c_ast.PtrDecl) and isinstance(t.type, c_ast.TypeDecl):
        inner = t.type
        const = "const" in inner.quals
        base = types.base(inner)
        return (name, "pointer", type_name(inner), None if base == "struct" else base, 0, const)
    if isinstance(t, c_ast.ArrayDecl):
        length = constant(t.dim) if t.dim is not None else 0
        inner = t.type
        if isinstance(inner, c_ast.TypeDecl):
            base = types.base(inner)
            const = "const" in inner.quals
            return (name, "array", type_name(inner), None if base == "struct" else base, length, const)
        if isinstance(inner, c_ast.PtrDecl) and isinstance(inner.type, c_ast.TypeDecl):
            element = inner.type
            const = "const" in element.quals
            return (name, "pointer_array", type_name(element), types.base(element), length, const)
    return (name, "other", None, None, 0, False)


def return_type(decl):
    t = decl.type
    if isinstance(t, c_ast.TypeDecl):
        return type_name(t)
    if isinstance(t, c_ast.PtrDecl) and isinstance(t.type, c_ast.TypeDecl):
        return type_name(t.type) + " *"
    return "other"


def status_texts(include_dir):
    """Status name -> the description in the comment after its enum member."""
    texts = {}
    pattern = re.compile(r"\b(pxlSts\w+)\s*=\s*-?\w+\s*,?\s*/\*\*<\s*(.*?)\s*\*/", re.S)
    pxl_dir = os.path.join(include_dir, "pxl")
    for name in sorted(os.listdir(pxl_dir)):
        if name.endswith(".h"):
            with open(os.path.join(pxl_dir, name)) as f:
                for member, text in pattern.findall(f.read()):
                    texts[member] = " ".join(text.split())
    return texts


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--cc", required=True)
    parser.add_argument("--include", required=True, help="the public include directory")
    parser.add_argument("--header", default="pxl/pxl.h")
    parser.add_argument("--out", required=True)
    args = parser.parse_args()

    header = os.path.join(args.include, args.header)
    text, macros = preprocess(args.cc, args.include, header)
    ast = c_parser.CParser().parse(STD_TYPEDEFS + text, filename=header)
    types = Types(ast)

    functions = []
    status = {}
    texts = status_texts(args.include)
    for node in ast.ext:
        if isinstance(node, c_ast.Decl) and isinstance(node.type, c_ast.FuncDecl):
            params = []
            for p in (node.type.args.params if node.type.args else []):
                described = describe_param(p, types)
                if described is not None:
                    params.append(described)
            functions.append((node.name, return_type(node.type), params))
        enum = None
        if isinstance(node, c_ast.Decl) and isinstance(node.type, c_ast.Enum):
            enum = node.type
        elif isinstance(node, c_ast.Typedef) and isinstance(node.type.type, c_ast.Enum):
            enum = node.type.type
        if enum is not None and enum.values is not None:
            for e in enum.values.enumerators:
                if e.name.startswith("pxlSts"):
                    status[constant(e.value)] = (e.name, texts.get(e.name, ""))

    constants = {}
    for line in macros.splitlines():
        m = re.match(r"#define\s+(PXL_\w+)\s+\(?\s*(-?(?:0x[0-9A-Fa-f]+|\d+))[uUlL]*\s*\)?\s*$", line)
        if m:
            constants[m.group(1)] = int(m.group(2), 0)

    if not functions:
        sys.exit("gen_bindings: no function declared in %s" % header)
    os.makedirs(os.path.dirname(os.path.abspath(args.out)), exist_ok=True)
    tmp = args.out + ".tmp"
    with open(tmp, "w") as f:
        f.write("# Generated by python/gen_bindings.py from %s; do not edit.\n" % args.header)
        f.write("CDEF = %r\n\n" % text)
        f.write("FUNCTIONS = %s\n\n" % pprint.pformat(functions, width=100))
        f.write("STATUS = %s\n\n" % pprint.pformat(status, width=100))
        f.write("CONSTANTS = %s\n" % pprint.pformat(constants, width=100))
    os.replace(tmp, args.out)


if __name__ == "__main__":
    main()
