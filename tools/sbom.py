"""What Thermopix is built from, as an SPDX 2.3 document: the [build] packages of packaging/debian-packages.txt, with the
versions and licences that this system's package database has of them."""
import re
import subprocess

HOME = "https://github.com/thermopix/thermopix"
# Debian's names of licences that SPDX calls otherwise; all else must be SPDX's already.
SPDX_NAMES = {
    "Apache-2": "Apache-2.0",
    "BSD-2-clause": "BSD-2-Clause",
    "BSD-3-clause": "BSD-3-Clause",
    "Expat": "MIT",
    "GPL-2": "GPL-2.0-only",
    "GPL-2+": "GPL-2.0-or-later",
    "GPL-3": "GPL-3.0-only",
    "GPL-3+": "GPL-3.0-or-later",
    "LGPL-2+": "LGPL-2.0-or-later",
    "LGPL-2.1": "LGPL-2.1-only",
    "LGPL-2.1+": "LGPL-2.1-or-later",
    "LGPL-3": "LGPL-3.0-only",
    "LGPL-3+": "LGPL-3.0-or-later",
}
SPDX_KNOWN = {*SPDX_NAMES.values(), "ISC", "Zlib"}


def build_packages(package_list):
    """(name, reason) of each package of the group [build]."""
    group, found = None, []
    for line in package_list.splitlines():
        text, _, reason = line.partition("#")
        text = text.strip()
        if text.startswith("["):
            group = text.strip("[] ")
        elif text and group == "build":
            found.append((text, reason.strip()))
    return found


def installed(names):
    """Version and architecture by name; what is not installed is missing."""
    done = subprocess.run(
        ["dpkg-query", "-W", "-f", "${Package} ${db:Status-Status} ${Version} ${Architecture}\\n", *names],
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False)
    rows = (line.split() for line in done.stdout.splitlines())
    return {row[0]: (row[2], row[3]) for row in rows if len(row) == 4 and row[1] == "installed"}


def debian_licence(copyright_text):
    """What a machine-readable copyright file says of "Files: *"; none where it is not so written."""
    for paragraph in re.split(r"\n\s*\n", copyright_text):
        if re.search(r"^Files:\s*\*\s*$", paragraph, re.MULTILINE):
            found = re.search(r"^License:\s*(\S.*?)\s*$", paragraph, re.MULTILINE)
            return found[1] if found else None
    return None


def spdx_licence(debian):
    """The SPDX expression for Debian's; none for one with a part that is not known."""
    words = re.split(r"\s+(and|or)\s+", debian)
    for index in range(0, len(words), 2):
        words[index] = SPDX_NAMES.get(words[index], words[index])
        if words[index] not in SPDX_KNOWN:
            return None
    return " ".join(word.upper() if word in ("and", "or") else word for word in words)


def licence_of(name):
    try:
        with open(f"/usr/share/doc/{name}/copyright", encoding="utf-8", errors="replace") as file:
            return debian_licence(file.read())
    except OSError:
        return None


def spdx_id(name):
    return "SPDXRef-Package-" + re.sub(r"[^A-Za-z0-9.-]", "-", name.replace("+", "plus"))


def package(name, reason, state, licence):
    described = {
        "SPDXID": spdx_id(name),
        "name": name,
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": (spdx_licence(licence) if licence else None) or "NOASSERTION",
        "copyrightText": "NOASSERTION",
        "supplier": "Organization: Debian",
        "summary": reason,
    }
    if licence:
        described["licenseComments"] = f"Debian's words: {licence}"
    if state:
        version, architecture = state
        described["versionInfo"] = version
        described["externalRefs"] = [{
            "referenceCategory": "PACKAGE-MANAGER",
            "referenceType": "purl",
            "referenceLocator": f"pkg:deb/debian/{name.replace('+', '%2B')}@{version.replace('+', '%2B')}"
                                f"?arch={architecture}",
        }]
    else:
        described["comment"] = "not installed where this document was made: its version is not known"
    return described


def document(version, commit, created, package_list, source=None):
    """`source` is the name and the SHA-256 of the source archive, where there is one."""
    own = {
        "SPDXID": "SPDXRef-Thermopix",
        "name": "thermopix",
        "versionInfo": version,
        "downloadLocation": f"git+{HOME}.git@{commit}",
        "filesAnalyzed": False,
        "licenseConcluded": "MIT",
        "licenseDeclared": "MIT",
        "copyrightText": "2026 The Thermopix authors",
        "supplier": "Organization: The Thermopix authors",
        "primaryPackagePurpose": "APPLICATION",
    }
    if source:
        own["packageFileName"] = source[0]
        own["checksums"] = [{"algorithm": "SHA256", "checksumValue": source[1]}]
    rows = build_packages(package_list)
    states = installed([name for name, _ in rows])
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"thermopix-{version}",
        "documentNamespace": f"{HOME}/spdx/thermopix-{version}-{commit}",
        "creationInfo": {
            "created": created.strftime("%Y-%m-%dT%H:%M:%SZ"),
            "creators": ["Organization: The Thermopix authors", "Tool: thermopix-release"],
        },
        "packages": [own, *(package(name, reason, states.get(name), licence_of(name)) for name, reason in rows)],
        "relationships": [
            {"spdxElementId": "SPDXRef-DOCUMENT", "relationshipType": "DESCRIBES",
             "relatedSpdxElement": "SPDXRef-Thermopix"},
            *({"spdxElementId": spdx_id(name),
               "relationshipType": "BUILD_DEPENDENCY_OF" if name.endswith("-dev") else "BUILD_TOOL_OF",
               "relatedSpdxElement": "SPDXRef-Thermopix"} for name, _ in rows),
        ],
    }
