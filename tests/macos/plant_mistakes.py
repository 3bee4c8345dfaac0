"""plant_mistakes.py BUILD: plants mistakes into copies of the sources, the declarations and the table, one at a time,
and fails unless each is found, by the check that is there for it and for the reason that it was planted for."""

import os
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import gate

gate.skip_without_tools()
build = sys.argv[1]
folder = gate.prepare(build)
LAYER = "platform/macos/"

# In a source: the file, what stands there, what is planted, and a part of what the compiler says.
COMPILED = [
    ("misspelt message", LAYER + "menubar/MacStatusItem.mm", "item_.menu = menu_->menu();",
     "[item_ setMenue:menu_->menu()];", "no visible @interface for 'NSStatusItem' declares the selector 'setMenue:'"),
    ("misspelt @selector", LAYER + "menubar/StandardActions.mm", "@selector(hideOtherApplications:)",
     "@selector(hideOtherApplication:)", "undeclared selector 'hideOtherApplication:'"),
    ("argument of another class", LAYER + "menubar/MacMenu.mm", "[menu_ addItem:makeItem(menu.items[i], i)];",
     "[menu_ addItem:menu_];", "cannot initialize a parameter of type 'NSMenuItem"),
    ("std::string for NSString", LAYER + "settings/MacWindow.mm", "window.title = nsString(description.title);",
     "window.title = description.title;", "no viable conversion from 'const std::string'"),
    ("null where it may not be", LAYER + "application/MacApplication.mm", "[options setObject:icon forKey",
     "[options setObject:nil forKey", "null passed to a callee that requires a non-null argument"),
    ("nullable where it may not be", LAYER + "application/MacApplication.mm", "[options setObject:icon forKey",
     "[options setObject:NSApplication.sharedApplication.applicationIconImage forKey",
     "implicit conversion from nullable pointer"),
    ("read-only property", LAYER + "settings/MacWindow.mm", "window.title = nsString(description.title);",
     "window.visible = YES;", "assignment to readonly property"),
    ("object kept behind ARC's back", LAYER + "system/MacMainLoop.mm", "dispatch_resume(timer);",
     "void* kept = (void*)timer; (void)kept;", "requires a bridged cast"),
    ("missing bridge cast", LAYER + "system/MacThermalState.mm", "return static_cast<int>(",
     "CFStringRef name = (CFStringRef)NSProcessInfo.processInfo.operatingSystemVersionString; (void)name; return static_cast<int>(",
     "requires a bridged cast"),
    ("block of another type", LAYER + "menubar/AppKitCanvas.mm", "drawingHandler:^BOOL(NSRect) {",
     "drawingHandler:^BOOL(NSSize) {", "cannot initialize a parameter of type 'BOOL (^"),
    ("result of another class", LAYER + "menubar/MacMenu.mm", "return [NSMenuItem separatorItem];",
     "return [NSMenu alloc];", "cannot initialize return object of type 'NSMenuItem"),
    ("unguarded call of macOS 14", LAYER + "menubar/MacMenu.mm", "if (@available(macOS 14, *)) {", "{",
     "'sectionHeaderWithTitle:' is only available on macOS 14.0 or newer"),
    ("format of the log", LAYER + "system/MacSystemLog.mm", "%{public}s", "%{public}d", "format specifies type 'int'"),
    ("C++ library newer than the system", "pixels/Ink.cpp", "namespace thermopix {",
     "#include <charconv>\nchar* text(char* to, double value);\n"
     "char* text(char* to, double value) { return std::to_chars(to, to + 9, value).ptr; }\nnamespace thermopix {",
     "unavailable"),
    ("mask into a BOOL", LAYER + "settings/NodeViews.mm", "self.bordered = NO;",
     "self.bordered = static_cast<NSUInteger>(frame.size.width) & 65536;",
     "to 'BOOL'"),
]

# In the declarations, and in the table: what stands there, what is planted, and a part of what the check says.
DECLARED = [
    ("invented method", "AppKit/AppKit.h", "- (void)center;", "- (void)center;\n- (void)centre;",
     "method NSWindow -centre: declared, but no fact"),
    ("result of another type", "AppKit/AppKit.h", "- (BOOL)setActivationPolicy:", "- (void)setActivationPolicy:",
     "declared as v@:q"),
    ("argument of another type", "AppKit/AppKit.h", "statusItemWithLength:(CGFloat)", "statusItemWithLength:(NSInteger)",
     "declared as @@:q"),
    ("null allowed where it is not", "Foundation/Foundation.h", "objectForInfoDictionaryKey:(NSString*)key",
     "objectForInfoDictionaryKey:(nullable NSString*)key", "declared nullability ??"),
    ("value of a constant", "AppKit/AppKit.h", "NSTrackingInVisibleRect = 512", "NSTrackingInVisibleRect = 256",
     "NSTrackingInVisibleRect: declared as 256"),
    ("value of one processor only", "AppKit/AppKit.h", "NSTextAlignmentCenter = 2", "NSTextAlignmentCenter = 1",
     "x86_64: NSTextAlignmentCenter: declared as 1"),
    ("forgotten first version", "AppKit/AppKit.h", " API_AVAILABLE(macos(14.0))", "",
     "declared available from the beginning, in fact from 14.0"),
    ("argument of a function", "dispatch/dispatch.h", "uint64_t interval, uint64_t leeway)",
     "uint64_t interval, uint32_t leeway)", "dispatch_source_set_timer: declared as"),
    ("superclass", "AppKit/AppKit.h", "@interface NSStatusBarButton : NSButton", "@interface NSStatusBarButton : NSView",
     "NSStatusBarButton: declared as NSView"),
]
TABLE = [
    ("row without a source", "\t\tsparkle\n", "\t\t\n", "names no source"),
    ("row that nothing declares", "method\tNSWindow\t-center\t", "method\tNSWindow\t-centre\t",
     "a fact that nothing declares"),
]

# Compiles, and would do nothing or fail on a Mac: found in the objects.
LINKED = [
    ("selector that nobody has", LAYER + "system/MacThermalState.mm", "namespace thermopix {",
     "@protocol Invented\n- (int)heat;\n@end\nint heat(id<Invented> machine);\n"
     "int heat(id<Invented> machine) { return [machine heat]; }\nnamespace thermopix {", "selector heat"),
    ("class that nobody has", LAYER + "system/MacThermalState.mm", "namespace thermopix {",
     "@interface NSThermometer : NSObject\n@end\nid meter(void);\nid meter(void) { return [NSThermometer class]; }\n"
     "namespace thermopix {", "class NSThermometer"),
    ("function that nobody has", LAYER + "system/MacThermalState.mm", "namespace thermopix {",
     "extern \"C\" int NSCurrentHeat(void);\nint heat();\nint heat() { return NSCurrentHeat(); }\nnamespace thermopix {",
     "NSCurrentHeat: no fact"),
    ("misspelt delegate method", LAYER + "settings/MacWindow.mm", "- (void)windowDidMiniaturize:",
     "- (void)windowDidMiniaturise:", "selector windowDidMiniaturise:"),
]


def planted(path, old, new):
    """The text of a file with the mistake in it."""
    text = path.read_text()
    if old not in text:
        raise SystemExit(f"{path}: does not hold what the mistake replaces: {old}")
    return text.replace(old, new, 1)


def write(place, text):
    place.parent.mkdir(parents=True, exist_ok=True)
    place.write_text(text)
    return place


def script(name, *arguments):
    result = subprocess.run([sys.executable, str(gate.HERE / name), *map(str, arguments)], capture_output=True, text=True)
    return result.stdout + result.stderr if result.returncode else None


def compiled(mistake, scratch):
    _, file, old, new, _ = mistake
    source = write(scratch / Path(file).name, planted(gate.SOURCES / file, old, new))
    return gate.check_source(source, folder, "arm64") or gate.check_source(source, folder, "x86_64")


def declared(mistake, scratch):
    _, file, old, new, _ = mistake
    copy = scratch / "declarations"
    shutil.copytree(gate.DECLARATIONS, copy)
    write(copy / file, planted(copy / file, old, new))
    return script("check_declarations.py", build, copy)


def table(mistake, scratch):
    _, old, new, _ = mistake
    copy = write(scratch / "facts.tsv", planted(gate.FACTS, old, new))
    return script("check_declarations.py", build, gate.DECLARATIONS, copy)


def linked(mistake, scratch):
    _, file, old, new, _ = mistake
    source = write(scratch / Path(file).name, planted(gate.SOURCES / file, old, new))
    for target in gate.TARGETS:
        place = scratch / "objects" / target
        shutil.copytree(gate.objects(folder, target), place)
        said = gate.compile_source(source, folder, target, place / (source.name + ".o"))
        if said:
            return f"the compiler refuses it already: {said}"
    return script("check_objects.py", build, scratch / "objects")


def try_one(work):
    check, mistake = work
    with tempfile.TemporaryDirectory() as scratch:
        said = check(mistake, Path(scratch))
    name, reason = mistake[0], mistake[-1]
    if said is None:
        return f"not found: {name}"
    return None if reason in said else f"found for another reason: {name}: {said}"


work = [(compiled, each) for each in COMPILED] + [(declared, each) for each in DECLARED]
work += [(table, each) for each in TABLE] + [(linked, each) for each in LINKED]
with ThreadPoolExecutor(min(2, os.cpu_count() or 1)) as pool:
    problems = [each for each in pool.map(try_one, work) if each]
gate.finish(problems, f"{len(work)} planted mistakes, each found")
