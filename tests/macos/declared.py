"""What the declarations say, read with clang's own parser: a row for each class, method, function and constant."""

import re
from ctypes import c_int
from pathlib import Path
from typing import NamedTuple

from clang import cindex

import gate

HEADERS = ["AppKit/AppKit.h", "ServiceManagement/ServiceManagement.h", "Sparkle/Sparkle.h", "dispatch/dispatch.h",
           "os/log.h", "sys/sysctl.h"]
INCLUDE_ATTRIBUTED_TYPES = 0x1000
KINDS = cindex.CursorKind
CLASSES = (KINDS.OBJC_INTERFACE_DECL, KINDS.OBJC_PROTOCOL_DECL)
METHODS = {KINDS.OBJC_INSTANCE_METHOD_DECL: "-", KINDS.OBJC_CLASS_METHOD_DECL: "+"}

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
    resources = gate.output(gate.COMPILER, "-print-resource-dir").strip()
    arguments = ["-x", "objective-c++", "-std=c++20", "-fobjc-arc", "-fblocks", "-target", gate.TARGETS[target],
                 "-isysroot", str(sdk), "-isystem", str(sdk / "usr" / "include" / "c++" / "v1"),
                 f"-I{declarations}", "-U__nonnull", "-U__nullable", "-D_GNU_SOURCE",
                 "-resource-dir", resources]
    unit = cindex.Index.create().parse("all.mm", args=arguments, unsaved_files=[("all.mm", text)],
                                       options=INCLUDE_ATTRIBUTED_TYPES)
    wrong = [str(each) for each in unit.diagnostics if each.severity >= cindex.Diagnostic.Error]
    if wrong:
        gate.finish(wrong, "")
    return unit.cursor


def declarations_of(parent, folder):
    """Every declaration of the folder's headers, with its kind and the part of the system that it belongs to."""
    for cursor in parent.get_children():
        kind, file = kind_of(cursor), cursor.location.file
        place = Path(file.name).resolve() if file else Path()
        if folder not in place.parents:
            continue
        if kind in (KINDS.LINKAGE_SPEC, KINDS.UNEXPOSED_DECL):
            yield from declarations_of(cursor, folder)
        else:
            yield cursor, kind, place.relative_to(folder).parts[0]


class Row(NamedTuple):
    """`library` is the part of the system that a program has to be linked with for it, empty for none."""
    type: str
    nullability: str = ""
    first: str = ""
    library: str = ""


def read(sdk, target, declarations=gate.DECLARATIONS):
    """The rows by (kind, owner, name)."""
    rows, folder = {}, Path(declarations).resolve()
    for cursor, kind, part in declarations_of(parse(sdk, target, declarations), folder):
        name = cursor.spelling
        if kind in CLASSES:
            members = [(each, kind_of(each)) for each in cursor.get_children()]
            if kind == KINDS.OBJC_INTERFACE_DECL:
                parents = [each.spelling for each, what in members if what == KINDS.OBJC_SUPER_CLASS_REF]
                rows["class", "", name] = Row("".join(parents), library=part)
            for method, what in members:
                if what in METHODS:
                    rows["method", name, METHODS[what] + method.spelling] = method_row(method)
        elif kind == KINDS.FUNCTION_DECL and not cursor.is_definition():
            rows["function", "", name] = Row(signature(cursor), first=first_version(cursor), library=part)
        elif kind == KINDS.VAR_DECL:
            library = "" if "=" in text_of(cursor) else part
            rows["constant", "", name] = Row(variable_value(cursor), first=first_version(cursor), library=library)
        elif kind == KINDS.ENUM_DECL:
            for case in cursor.get_children():
                if kind_of(case) == KINDS.ENUM_CONSTANT_DECL:
                    rows["constant", "", case.spelling] = Row(str(case.enum_value), first=first_version(case))
    return rows


def method_row(cursor):
    types = [cursor.result_type, *(each.type for each in cursor.get_arguments())]
    return Row(encoding(cursor), "".join(map(nullability, types)), first_version(cursor))
