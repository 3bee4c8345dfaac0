"""What the declarations say, read with clang's own parser: a row for each class, method, function and constant."""

import re
import subprocess
from ctypes import c_int
from pathlib import Path

from clang import cindex

import gate

HEADERS = ["AppKit/AppKit.h", "ServiceManagement/ServiceManagement.h", "Sparkle/Sparkle.h", "dispatch/dispatch.h",
           "os/log.h", "sys/sysctl.h"]
INCLUDE_ATTRIBUTED_TYPES = 0x1000
KINDS = cindex.CursorKind
CLASSES = (KINDS.OBJC_INTERFACE_DECL, KINDS.OBJC_PROTOCOL_DECL)
METHODS = (KINDS.OBJC_INSTANCE_METHOD_DECL, KINDS.OBJC_CLASS_METHOD_DECL)

cindex.conf.lib.clang_Type_getNullability.argtypes = [cindex.Type]
cindex.conf.lib.clang_Type_getNullability.restype = c_int
NULLABILITY = {0: "!", 1: "?", 2: "~"}


def kind_of(cursor):
    """The parser's Python side does not know the kinds of some attributes."""
    try:
        return cursor.kind
    except ValueError:
        return None


def nullability(kind):
    return NULLABILITY.get(cindex.conf.lib.clang_Type_getNullability(kind), "-")


def encoding(cursor):
    """The method's type encoding without the offsets in the frame, which differ from processor to processor."""
    return re.sub(r"(?<!\[)\d+", "", cursor.objc_type_encoding)


def plain(spelling):
    """A type without what says nothing about how it is passed."""
    for word in ("_Nonnull", "_Nullable", "_Null_unspecified", "__strong", "struct "):
        spelling = spelling.replace(word, "")
    spelling = re.sub(r"\s+", " ", spelling)
    return spelling.replace(" *", "*").replace("* ", "*").replace(" ,", ",").strip()


def text_of(cursor):
    return [token.spelling for token in cursor.get_tokens()]


def first_version(cursor):
    found = re.search(r"API_AVAILABLE \( macos \( ([\d.]+) \) \)", " ".join(text_of(cursor)))
    return found.group(1) if found else ""


def variable_value(cursor):
    words = text_of(cursor)
    if "=" in words:
        return "".join(words[words.index("=") + 1:]).rstrip(";")
    return plain(cursor.type.spelling).replace("const ", "")


def signature(cursor):
    arguments = ", ".join(each.type.get_canonical().spelling for each in cursor.get_arguments())
    return plain(f"{cursor.result_type.get_canonical().spelling} ({arguments})")


def parse(sdk, target, declarations):
    text = "".join(f"#import <{header}>\n" for header in HEADERS)
    # The library does not know where the compiler keeps its own headers.
    resources = subprocess.run([gate.COMPILER, "-print-resource-dir"], capture_output=True, text=True, check=True)
    arguments = ["-x", "objective-c++", "-std=c++20", "-fobjc-arc", "-fblocks", "-target", gate.TARGETS[target],
                 "-isysroot", str(sdk), "-isystem", str(sdk / "usr" / "include" / "c++" / "v1"),
                 f"-I{declarations}", "-U__nonnull", "-U__nullable", "-D_GNU_SOURCE",
                 "-resource-dir", resources.stdout.strip()]
    unit = cindex.Index.create().parse("all.mm", args=arguments, unsaved_files=[("all.mm", text)],
                                       options=INCLUDE_ATTRIBUTED_TYPES)
    wrong = [str(each) for each in unit.diagnostics if each.severity >= cindex.Diagnostic.Error]
    if wrong:
        gate.finish(wrong, "")
    return unit.cursor


def read(sdk, target, declarations=gate.DECLARATIONS):
    """All rows: (kind, owner, name) to (type, nullability, first version)."""
    rows = {}
    visit(parse(sdk, target, declarations), Path(declarations).resolve(), rows)
    return rows


def places(sdk):
    """Which folder of headers declares each class, function and constant that a program is linked with."""
    found, folder = {}, gate.DECLARATIONS.resolve()

    def look(parent):
        for cursor in parent.get_children():
            kind, place = kind_of(cursor), cursor.location.file
            if place is None or folder not in Path(place.name).resolve().parents:
                continue
            header = Path(place.name).resolve().relative_to(folder).parts[0]
            if kind in (KINDS.LINKAGE_SPEC, KINDS.UNEXPOSED_DECL):
                look(cursor)
            elif kind == KINDS.OBJC_INTERFACE_DECL:
                found["class", cursor.spelling] = header
            elif kind == KINDS.FUNCTION_DECL and not cursor.is_definition():
                found["function", cursor.spelling] = header
            elif kind == KINDS.VAR_DECL and "=" not in text_of(cursor):
                found["constant", cursor.spelling] = header

    look(parse(sdk, "arm64", gate.DECLARATIONS))
    return found


def visit(parent, folder, rows):
    for cursor in parent.get_children():
        kind, place = kind_of(cursor), cursor.location.file
        if place is None or folder not in Path(place.name).resolve().parents:
            continue
        if kind in (KINDS.LINKAGE_SPEC, KINDS.UNEXPOSED_DECL):
            visit(cursor, folder, rows)
        elif kind in CLASSES:
            visit_class(cursor, rows)
        elif kind == KINDS.FUNCTION_DECL and not cursor.is_definition():
            rows["function", "", cursor.spelling] = (signature(cursor), "", first_version(cursor))
        elif kind == KINDS.VAR_DECL:
            rows["constant", "", cursor.spelling] = (variable_value(cursor), "", first_version(cursor))
        elif kind == KINDS.ENUM_DECL:
            for case in cursor.get_children():
                if kind_of(case) == KINDS.ENUM_CONSTANT_DECL:
                    rows["constant", "", case.spelling] = (str(case.enum_value), "", first_version(case))


def visit_class(cursor, rows):
    members = list(cursor.get_children())
    if kind_of(cursor) == KINDS.OBJC_INTERFACE_DECL:
        parents = [each.spelling for each in members if kind_of(each) == KINDS.OBJC_SUPER_CLASS_REF]
        rows["class", "", cursor.spelling] = ("".join(parents), "", "")
    for method in members:
        if kind_of(method) in METHODS:
            sign = "+" if kind_of(method) == KINDS.OBJC_CLASS_METHOD_DECL else "-"
            kinds = [method.result_type, *(each.type for each in method.get_arguments())]
            value = encoding(method), "".join(map(nullability, kinds)), first_version(method)
            rows["method", cursor.spelling, sign + method.spelling] = value
