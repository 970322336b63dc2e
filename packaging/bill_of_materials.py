#!/usr/bin/env python3
"""Writes what the crash reporter is made of and runs on, as an SPDX 2.3 document.

The program's libraries are those the loader would load; with them come the plugins of Qt
that the appliance needs and the fonts. Facts are dpkg's, of this machine: the document
belongs to the package that is built here. Equal inputs give equal bytes; the date is
SOURCE_DATE_EPOCH.
"""

import argparse
import hashlib
import json
import os
import re
import subprocess
import sys
from datetime import datetime, timezone
from pathlib import Path

PROGRAM_ID = "SPDXRef-r4-crash-reporter"

# Loaded by name while the program runs, so that the loader does not know them.
PLATFORM_PLUGINS = ("libqlinuxfb.so", "libqxcb.so", "libqoffscreen.so")
FONT_PACKAGE = "fonts-dejavu-core"


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True,
                          env={**os.environ, "LC_ALL": "C"}).stdout


def loaded_libraries(file):
    """Absolute paths of everything the loader would load for a program or library."""
    listing = output_of("ldd", file)
    if "not found" in listing:
        sys.exit(f"bill_of_materials: {file} lacks a library:\n{listing}")
    return set(re.findall(r"(/\S+) \(0x", listing))


def needed_names(file):
    """The libraries that a program names itself."""
    return set(re.findall(r"\(NEEDED\).*\[(.+)\]", output_of("readelf", "-d", file)))


def owners_of(paths):
    """The package that each file came with; dpkg knows a file by one of its names."""
    names = {path: [path, os.path.realpath(path), re.sub("^/usr/", "/", path)] for path in paths}
    asked = sorted({name for others in names.values() for name in others})
    # Fails when one name is unknown, and answers for the others all the same.
    answer = subprocess.run(["dpkg-query", "-S", *asked], capture_output=True, text=True).stdout
    known = {}
    for line in answer.splitlines():
        package, name = line.split(": ", 1)
        known[name] = package.split(", ")[0]
    owners = {path: next((known[name] for name in others if name in known), None)
              for path, others in names.items()}
    if None in owners.values():
        sys.exit(f"bill_of_materials: no package owns {[p for p in owners if not owners[p]]}")
    return owners


def platform_plugins():
    folder = Path(output_of("/usr/lib/qt5/bin/qmake", "-query", "QT_INSTALL_PLUGINS").strip())
    return [str(folder / "platforms" / name) for name in PLATFORM_PLUGINS]


def packages_of(program):
    """Package names to how the program comes to them."""
    direct = needed_names(program)
    libraries = loaded_libraries(program)
    plugins = set(platform_plugins())
    plugins = plugins.union(*(loaded_libraries(plugin) for plugin in plugins))
    owners = owners_of(libraries | plugins)
    # The closest use is the one that is said: it comes last.
    uses = {FONT_PACKAGE: "fonts"}
    uses.update({owners[file]: "used by a display plugin" for file in plugins})
    uses.update({owners[file]: "linked by a library" for file in libraries})
    uses.update({owners[file]: "linked" for file in libraries
                 if os.path.basename(file) in direct})
    return uses


def facts_of(package):
    fields = ("Package", "Version", "Architecture", "Maintainer", "Homepage",
              "source:Package", "source:Version")
    template = "\t".join("${%s}" % field for field in fields)
    values = output_of("dpkg-query", "-W", "-f", template, package).split("\t")
    return dict(zip(fields, values))


def licences_of(name):
    """Short names of the licences, where the package's copyright file is one that says them."""
    file = Path("/usr/share/doc") / name / "copyright"
    text = file.read_text(encoding="utf-8", errors="replace") if file.exists() else ""
    if "copyright-format" not in text:
        return []
    return sorted({word.strip() for word in re.findall(r"(?m)^License:[ \t]*(\S.*)$", text)})


def library_entry(package, how):
    facts = facts_of(package)
    name = facts["Package"]
    licences = licences_of(name)
    said = f": {'; '.join(licences)}" if licences else ""
    return {
        "SPDXID": "SPDXRef-" + re.sub("[^A-Za-z0-9.-]", "-", name),
        "name": name,
        "versionInfo": facts["Version"],
        "supplier": "Organization: Debian",
        "originator": "Person: " + facts["Maintainer"],
        "downloadLocation": "NOASSERTION",
        "homepage": facts["Homepage"] or "NOASSERTION",
        "filesAnalyzed": False,
        "sourceInfo": f"built from the source package {facts['source:Package']} "
                      f"{facts['source:Version']}",
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": "NOASSERTION",
        "licenseComments": f"/usr/share/doc/{name}/copyright{said}",
        "copyrightText": "NOASSERTION",
        "comment": how,
        "externalRefs": [{
            "referenceCategory": "PACKAGE-MANAGER",
            "referenceType": "purl",
            "referenceLocator": "pkg:deb/debian/{}@{}?arch={}&distro=debian-12".format(
                name.replace("+", "%2B"), facts["Version"].replace("+", "%2B"),
                facts["Architecture"]),
        }],
    }


def program_entry(program, version):
    build_id = re.search(r"Build ID: (\w+)", output_of("readelf", "-n", program))
    if not build_id:
        sys.exit(f"bill_of_materials: {program} has no build id")
    return {
        "SPDXID": PROGRAM_ID,
        "name": "r4-crash-reporter",
        "versionInfo": version,
        "supplier": "Organization: Tovask",
        "downloadLocation": "NOASSERTION",
        "filesAnalyzed": False,
        "licenseConcluded": "NOASSERTION",
        "licenseDeclared": "NOASSERTION",
        "licenseComments": "proprietary to the maker of the appliance",
        "copyrightText": "NOASSERTION",
        # Stripping changes the file's bytes, but not this.
        "comment": f"GNU build id of crash_reporter: {build_id.group(1)}",
    }


def document(program, version):
    packages = [library_entry(package, how) for package, how in packages_of(program).items()]
    packages.sort(key=lambda package: package["name"])
    entries = [program_entry(program, version), *packages]
    relations = [{"spdxElementId": "SPDXRef-DOCUMENT", "relationshipType": "DESCRIBES",
                  "relatedSpdxElement": PROGRAM_ID}]
    relations += [{"spdxElementId": PROGRAM_ID,
                   "relationshipType": "DYNAMIC_LINK" if package["comment"] == "linked"
                                       else "DEPENDS_ON",
                   "relatedSpdxElement": package["SPDXID"]} for package in packages]
    made = datetime.fromtimestamp(int(os.environ["SOURCE_DATE_EPOCH"]), timezone.utc)
    # A namespace of its own for every content, as the format asks.
    content = hashlib.sha256(json.dumps(entries, sort_keys=True).encode()).hexdigest()
    return {
        "spdxVersion": "SPDX-2.3",
        "dataLicense": "CC0-1.0",
        "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"r4-crash-reporter-{version}",
        "documentNamespace": f"https://tovask.example/spdx/r4-crash-reporter-{version}-{content}",
        "creationInfo": {"created": made.strftime("%Y-%m-%dT%H:%M:%SZ"),
                         "creators": ["Organization: Tovask", "Tool: bill_of_materials.py"]},
        "packages": entries,
        "relationships": relations,
    }


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", required=True)
    parser.add_argument("--version", required=True)
    parser.add_argument("--output", required=True, type=Path)
    arguments = parser.parse_args()
    if "SOURCE_DATE_EPOCH" not in os.environ:
        sys.exit("bill_of_materials: set SOURCE_DATE_EPOCH: the document carries its date")
    text = json.dumps(document(arguments.program, arguments.version), indent=2) + "\n"
    arguments.output.parent.mkdir(parents=True, exist_ok=True)
    arguments.output.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
