"""plant_mistakes.py BUILD: plants mistakes into copies of the sources, the declarations and the table, one at a time,
and fails unless each is found, by the check that is there for it and for the reason that it was planted for."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import gate

gate.skip_without_tools()
build = sys.argv[1]
commands = {target: gate.commands(build, target) for target in gate.TARGETS}
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
    ("block of another type", LAYER + "drawing/AppKitCanvas.mm", "drawingHandler:^BOOL(NSRect) {",
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
    ("row without a source", "\tbundled\tsparkle\n", "\tbundled\t\n", "names no source"),
    ("row with one source", "\tinformal\tinterface-builder applications\n", "\tinformal\tinterface-builder\n",
     "names one source alone"),
    ("source that nobody knows", "\txnu ", "\txun ", "names xun, which is no source"),
    ("row without a first version", "\t10.10\tpyobjc", "\t\tpyobjc", "has neither a first version nor a reason"),
    ("reason that nobody knows", "\tbundled\tsparkle\n", "\tsomehow\tsparkle\n", "neither a version nor a reason"),
    ("row that nothing declares", "method\tNSWindow\t-center\t", "method\tNSWindow\t-centre\t",
     "a fact that nothing declares"),
]

# Compiles, and would do nothing or fail on a Mac: found in the objects.
USED = [
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


def compile_planted(mistake, scratch, target, output):
    """What the compiler says of the source with the mistake in it, or None."""
    _, file, old, new, _ = mistake
    copy = write(scratch / target / Path(file).name, planted(gate.SOURCES / file, old, new))
    return gate.compile_copy(commands[target][gate.SOURCES / file], gate.SOURCES / file, copy, output)


def compiled(mistake, scratch):
    return (compile_planted(mistake, scratch, "arm64", scratch / "planted.o")
            or compile_planted(mistake, scratch, "x86_64", scratch / "planted.o"))


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


def objects(mistake, scratch):
    for target in gate.TARGETS:
        place = scratch / "objects" / target
        place.mkdir(parents=True)
        for file in gate.objects(build, target):
            shutil.copy2(file, place)
        said = compile_planted(mistake, scratch, target, place / (Path(mistake[1]).name + ".o"))
        if said:
            return f"the compiler refuses it already: {said}"
    return script("check_objects.py", build, scratch / "objects")


def link_command(target):
    """The command by which the build links the program, without what the shell does around it."""
    said = subprocess.run(["ninja", "-C", str(gate.app_build(build, target)), "-t", "commands",
                           "Thermopix.app/Contents/MacOS/Thermopix"], capture_output=True, text=True, check=True)
    return said.stdout.splitlines()[-1].removeprefix(": && ").removesuffix(" && :")


def relink(target, old, new, output):
    """Links the program by another command, to another place; what the linker says, or None."""
    command = link_command(target)
    if old not in command:
        raise SystemExit(f"the program is not linked with {old}: {command}")
    command = command.replace(old, new, 1).replace("-o Thermopix.app/Contents/MacOS/Thermopix", f"-o {output}")
    return gate.run(["sh", "-c", command], gate.app_build(build, target))


def linked(mistake, scratch):
    _, target, old, new, _ = mistake
    return relink(target, old, new, scratch / "Thermopix")


def linked_with(mistake, scratch):
    """The program is linked with one source more, which has the mistake in it."""
    extra = scratch / "extra.o"
    said = compile_planted(mistake, scratch, "arm64", extra)
    return said or relink("arm64", " -o ", f" {extra} -o ", scratch / "Thermopix")


def bundled(mistake, scratch):
    _, target, plant, _ = mistake
    app = scratch / "Thermopix.app"
    shutil.copytree(gate.app_build(build, target) / "Thermopix.app", app, symlinks=True)
    plant(app / "Contents")
    return script("check_bundle.py", build, target, app)


def in_dictionary(old, new):
    def plant(contents):
        write(contents / "Info.plist", planted(contents / "Info.plist", old, new))
    return plant


def without_rpath(contents):
    said = relink("x86_64", "-Wl,-rpath,@executable_path/../Frameworks", "", contents / "MacOS" / "Thermopix")
    if said:
        raise SystemExit(said)


def pictured(mistake, scratch):
    """The tool that packs the icon is asked to pack another icon set."""
    iconset = scratch / "Thermopix.iconset"
    shutil.copytree(gate.app_build(build, "arm64") / "packaging" / "macos" / "Thermopix.iconset", iconset)
    mistake[1](iconset)
    return gate.run([str(gate.stand_in(build) / "tools" / "iconutil"), "--convert", "icns", "--output",
                     str(scratch / "icns"), str(iconset)])


def described(mistake, scratch):
    _, old, new, _ = mistake
    return script("check_targets.py", write(scratch / "CMakeLists.txt", planted(gate.LAYER / "CMakeLists.txt", old, new)))


def in_text(name):
    """A check of the sources' text, asked of a copy of the layer."""
    def check(mistake, scratch):
        _, file, old, new, _ = mistake
        copy = scratch / "layer"
        shutil.copytree(gate.LAYER, copy)
        write(copy / file, planted(copy / file, old, new))
        return script(name, copy)
    return check


WRITTEN = [("delegate that nobody keeps", "application/MacApplication.mm", "delegate = forwarder_;", "delegate = forwarder;",
            "forwarder is no member")]
SPOKEN = [("text in the layer", "menubar/MacStatusItem.mm", "nsString(label)", "@\"Temperature\"", "\"Temperature\"")]

# The link line names all that the objects use, and nothing that they do not.
frameworks = re.findall(r"-framework (?:-Xlinker )?(\w+)", link_command("x86_64"))
LINKED = [(f"without the framework {name}", "x86_64",
           f"-Xlinker -framework -Xlinker {name}" if name == "Sparkle" else f"-framework {name}", "",
           "undefined symbol") for name in frameworks]
LINKED += [(f"without the library {name}", "arm64", str(gate.stand_in(build) / "homebrew/lib" / f"lib{name}.tbd"), "",
            "undefined symbol") for name in ("fmt", "png16", "utf8proc")]
LINKED.append(("without the layer", "arm64", "src/platform/macos/libthermopix_macos_application.a", "",
               "undefined symbol"))

# Declared by the headers at hand, and not there on a Mac.
FOREIGN = [("function of this machine's C library alone", "base/Fatal.cpp",
            "namespace thermopix {\n\nvoid fatalError(std::string_view message) {",
            "#include <cstring>\nnamespace thermopix {\n\nvoid fatalError(std::string_view message) {\n"
            "    std::fputs(strchrnul(\"\", 0), stderr);", "undefined symbol: strchrnul")]

BUNDLED = [
    ("another identifier", "arm64", in_dictionary("io.github.thermopix", "io.github.thermopics"), "CFBundleIdentifier is"),
    ("shown in the Dock from the start", "arm64", in_dictionary("<key>LSUIElement</key>\n    <true/>", ""), "LSUIElement"),
    ("for a later system", "arm64", in_dictionary("<string>13.0</string>", "<string>14.0</string>"),
     "LSMinimumSystemVersion"),
    ("forgotten substitution", "x86_64", in_dictionary("<string>key</string>", "<string>@KEY@</string>"), "SUPublicEDKey is"),
    ("update keys without updates", "arm64", in_dictionary("</dict>", "<key>SUFeedURL</key><string>x</string></dict>"),
     "SUFeedURL is there"),
    ("no update framework", "x86_64", lambda contents: shutil.rmtree(contents / "Frameworks"), "is not in the bundle"),
    ("nowhere to look for it", "x86_64", without_rpath, "is looked for nowhere"),
    ("the other processor's program", "arm64",
     lambda contents: shutil.copy2(gate.app_build(build, "x86_64") / "Thermopix.app/Contents/MacOS/Thermopix",
                                   contents / "MacOS"), "not made for arm64"),
    ("not signed", "arm64", lambda contents: shutil.rmtree(contents / "_CodeSignature"), "not signed"),
]
PICTURED = [
    ("no picture for the largest icon", lambda iconset: (iconset / "icon_512x512@2x.png").unlink(), "missing"),
    ("picture of another size", lambda iconset: shutil.copy2(iconset / "icon_16x16.png", iconset / "icon_32x32.png"),
     "is no picture of 32 by 32"),
]
DESCRIBED = [("source in no target", "    menubar/MacMenu.mm\n", "", "menubar/MacMenu.mm: in no target"),
             ("source that is not there", "menubar/MacMenu.mm", "menubar/MacMenus.mm", "named, but not there")]


def try_one(work):
    check, mistake = work
    with tempfile.TemporaryDirectory() as scratch:
        said = check(mistake, Path(scratch))
    name, reason = mistake[0], mistake[-1]
    if said is None:
        return f"not found: {name}"
    return None if reason in said else f"found for another reason: {name}: {said}"


work = [(check, mistake) for check, mistakes in (
    (compiled, COMPILED), (declared, DECLARED), (table, TABLE), (objects, USED), (linked, LINKED), (linked_with, FOREIGN), (bundled, BUNDLED),
    (pictured, PICTURED), (described, DESCRIBED),
    (in_text("check_delegates.py"), WRITTEN), (in_text("check_texts.py"), SPOKEN)) for mistake in mistakes]
with ThreadPoolExecutor(min(2, os.cpu_count() or 1)) as pool:
    problems = [each for each in pool.map(try_one, work) if each]
gate.finish(problems, f"{len(work)} planted mistakes, each found")
