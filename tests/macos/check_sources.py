"""check_sources.py [LAYER]: what the layer's sources promise beside what a compiler sees. Each is in the layer's target,
and nothing else is. They say nothing of their own: texts come from the core, and what stands between quotes here is a
name that the system knows. What is made a delegate, which AppKit does not keep alive, is kept by a member, as the
compiler may let go of a local variable after its last use."""

import re
import sys
from pathlib import Path

import gate

NAMES = {
    "": "no text",
    "XCTestCase": "the class by which a unit-test host is known",
    "%{public}s": "the unified log's format: a text, not redacted",
    "IOHIDEventSystemClientCreate": "function of the HID event system",
    "IOHIDEventSystemClientSetMatching": "function of the HID event system",
    "IOHIDEventSystemClientCopyServices": "function of the HID event system",
    "IOHIDServiceClientCopyProperty": "function of the HID event system",
    "IOHIDServiceClientCopyEvent": "function of the HID event system",
    "IOHIDEventGetFloatValue": "function of the HID event system",
    "hw.model": "system value: the machine's model",
    "machdep.cpu.brand_string": "system value: the processor's name",
    "kern.hv_vmm_present": "system value: 1 in a virtual machine",
    "CFBundleShortVersionString": "key of the bundle's information: its version",
    "CFBundleVersion": "key of the bundle's information: its build",
    "true": "how a toggle says that it is on",
    "false": "how a toggle says that it is off",
    "{} {} {} {} {} {} {} {} {}:{}": "key of a remembered size",
    " {}:{}": "key of a remembered size",
}
LITERAL = re.compile(r'"((?:[^"\\]|\\.)*)"')
COMMENT = re.compile(r"(?<!:)//.*")
INCLUDE = re.compile(r"\s*#\s*(include|import)")

layer = Path(sys.argv[1]) if len(sys.argv) > 1 else gate.LAYER
sources = sorted(path for path in layer.rglob("*") if path.suffix in (".h", ".cpp", ".mm"))
compiled = {str(path.relative_to(layer)) for path in sources if path.suffix != ".h"}
named = set(re.findall(r"[\w/]+\.(?:cpp|mm)", (layer / "CMakeLists.txt").read_text()))
problems = [f"{name}: in no target" for name in sorted(compiled - named)]
problems += [f"{name}: named, but not there" for name in sorted(named - compiled)]

texts, delegates = set(), []
for source in sources:
    for number, line in enumerate(source.read_text().splitlines(), 1):
        place = f"{source.name}:{number}"
        said = [] if INCLUDE.match(line) else LITERAL.findall(COMMENT.sub("", line))
        problems += [f"{place}: \"{text}\" is a text of the layer's own" for text in said if text not in NAMES]
        texts.update(said)
        kept = re.findall(r"\.delegate = (\w+);", line)
        problems += [f"{place}: {value} is no member" for value in kept
                     if value != "nil" and not value.endswith("_") and not value.startswith("_")]
        delegates += kept
problems += [f"\"{text}\" is allowed, but nothing says it" for text in NAMES if text not in texts]
if not delegates:
    problems.append(f"no delegate in {layer}")
gate.finish(problems, f"{len(sources)} sources, {len(delegates)} delegates set")
