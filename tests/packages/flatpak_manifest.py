"""The Flatpak's manifest has the structure that flatpak-builder wants, takes no permission but those listed here, and
pins everything that it fetches."""
import os
import re

# Every permission that is taken, with what it is for; docs/packaging.md explains them.
PERMISSIONS = {
    "--socket=wayland": "the windows on Wayland",
    "--socket=fallback-x11": "the windows where there is only X11",
    "--share=ipc": "shared memory, by which X11 draws",
    "--talk-name=org.kde.StatusNotifierWatcher": "the tray",
    "--talk-name=org.freedesktop.Notifications": "answers about new versions, and failures",
    "--system-talk-name=org.freedesktop.login1": "sleep and wake",
}
TOP_LEVEL = {"id", "runtime", "runtime-version", "sdk", "command", "finish-args", "cleanup", "modules"}
REQUIRED = TOP_LEVEL - {"cleanup"}
RUNTIMES = {"org.kde.Platform": "org.kde.Sdk", "org.freedesktop.Platform": "org.freedesktop.Sdk"}
MODULE = {"name", "buildsystem", "builddir", "config-opts", "sources"}
BUILD_SYSTEMS = {"cmake-ninja", "meson"}
# What a source of each type must have, and may have.
SOURCES = {
    "archive": ({"url", "sha256"}, set()),
    "file": ({"path"}, {"dest-filename"}),
    "dir": ({"path"}, {"skip"}),
}


def has_shape(value, kind):
    return isinstance(value, list) and all(isinstance(part, kind) for part in value)


def source_findings(source, folder):
    kind = source.get("type")
    if kind not in SOURCES:
        yield f"a source of the type {kind}"
        return
    required, optional = SOURCES[kind]
    for key in sorted(required - source.keys()):
        yield f"a source without {key}"
    for key in sorted(source.keys() - required - optional - {"type"}):
        yield f"a source with {key}"
    if kind == "archive":
        if not str(source.get("url", "")).startswith("https://"):
            yield f"fetched without https: {source.get('url')}"
        if not re.fullmatch(r"[0-9a-f]{64}", str(source.get("sha256", ""))):
            yield f"not pinned by a SHA-256: {source.get('url')}"
    elif not os.path.exists(os.path.join(folder, str(source.get("path")))):
        yield f"there is no {source.get('path')}"


def module_findings(module, folder):
    for key in sorted(module.keys() - MODULE):
        yield f"unknown key {key}"
    if module.get("buildsystem") not in BUILD_SYSTEMS:
        yield f"build system {module.get('buildsystem')}"
    if not has_shape(module.get("config-opts", []), str):
        yield "config-opts is no list of texts"
    sources = module.get("sources")
    if not sources or not has_shape(sources, dict):
        yield "no list of sources"
        return
    for source in sources:
        yield from source_findings(source, folder)


def findings(manifest, path, identifier):
    if not isinstance(manifest, dict):
        yield "no manifest"
        return
    for key in sorted(REQUIRED - manifest.keys()):
        yield f"{key} is missing"
    for key in sorted(manifest.keys() - TOP_LEVEL):
        yield f"unknown key {key}"
    if manifest.get("id") != identifier:
        yield f"the identifier is {manifest.get('id')}, the project's {identifier}"
    if os.path.splitext(os.path.basename(path))[0] != identifier:
        yield "the file is not named after the identifier"
    if RUNTIMES.get(manifest.get("runtime")) != manifest.get("sdk"):
        yield f"{manifest.get('sdk')} is not the Sdk of {manifest.get('runtime')}"
    if not isinstance(manifest.get("runtime-version"), str):
        yield "runtime-version is no text"
    if manifest.get("command") != "thermopix":
        yield f"the command is {manifest.get('command')}"
    if not has_shape(manifest.get("cleanup", []), str):
        yield "cleanup is no list of texts"
    if has_shape(manifest.get("finish-args"), str):
        taken = manifest["finish-args"]
        for one in taken:
            if one not in PERMISSIONS:
                yield f"the permission {one} is not among those that are explained"
        yield from (f"the permission {one} is explained and not taken" for one in PERMISSIONS if one not in taken)
        if len(set(taken)) != len(taken):
            yield "a permission is taken twice"
    else:
        yield "finish-args is no list of texts"
    modules = manifest.get("modules")
    if not modules or not has_shape(modules, dict):
        yield "no list of modules"
        return
    names = [module.get("name") for module in modules]
    if len(set(names)) != len(names):
        yield "two modules have one name"
    if names[-1] != "thermopix":
        yield "the last module is not thermopix"
    for module in modules:
        for finding in module_findings(module, os.path.dirname(path)):
            yield f"{module.get('name')}: {finding}"
