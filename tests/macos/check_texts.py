"""check_texts.py [LAYER]: the layer says nothing of its own. Texts come from the core; what stands between quotes here
is a name that the system knows, each with its reason."""

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

layer = Path(sys.argv[1]) if len(sys.argv) > 1 else gate.LAYER
problems, used, seen = [], set(), 0
for source in sorted(layer.rglob("*")):
    if source.suffix not in (".h", ".cpp", ".mm"):
        continue
    seen += 1
    for number, line in enumerate(source.read_text().splitlines(), 1):
        if re.match(r"\s*#\s*(include|import)", line):
            continue
        for text in LITERAL.findall(COMMENT.sub("", line)):
            used.add(text)
            if text not in NAMES:
                problems.append(f"{source.name}:{number}: \"{text}\"")
if not seen:
    problems.append(f"no source in {layer}")
if layer == gate.LAYER:
    problems += [f"\"{text}\" is allowed, but nothing says it" for text in NAMES if text not in used]
gate.finish(problems, f"{seen} sources without a text of their own")
