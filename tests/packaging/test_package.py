#!/usr/bin/env python3
"""What must hold of the Debian package and of the program installed from it.

    test_package.py --package DEB --debug DDEB --root FOLDER

FOLDER is a scratch root that the package is installed in. scripts/package calls this.
"""

import argparse
import functools
import gzip
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
PROGRAM = "usr/sbin/crash_reporter"
DOCUMENTS = "usr/share/doc/r4-crash-reporter"

# Mode, owner and name of everything in the package.
CONTENTS = """
drwxr-xr-x root/root ./usr/
drwxr-xr-x root/root ./usr/sbin/
-rwxr-xr-x root/root ./usr/sbin/crash_reporter
drwxr-xr-x root/root ./usr/share/
drwxr-xr-x root/root ./usr/share/doc/
drwxr-xr-x root/root ./usr/share/doc/r4-crash-reporter/
-rw-r--r-- root/root ./usr/share/doc/r4-crash-reporter/changelog.gz
-rw-r--r-- root/root ./usr/share/doc/r4-crash-reporter/copyright
drwxr-xr-x root/root ./usr/share/doc/r4-crash-reporter/examples/
-rw-r--r-- root/root ./usr/share/doc/r4-crash-reporter/examples/r4-crash-reporter.tmpfiles
-rw-r--r-- root/root ./usr/share/doc/r4-crash-reporter/examples/r4-crash-reporter@.service
-rwxr-xr-x root/root ./usr/share/doc/r4-crash-reporter/examples/start_crash_reporter
-rw-r--r-- root/root ./usr/share/doc/r4-crash-reporter/formats.md
-rw-r--r-- root/root ./usr/share/doc/r4-crash-reporter/integration.md
-rw-r--r-- root/root ./usr/share/doc/r4-crash-reporter/privacy.md
-rw-r--r-- root/root ./usr/share/doc/r4-crash-reporter/r4-crash-reporter.spdx.json
drwxr-xr-x root/root ./usr/share/doc/r4-crash-reporter/translations/
-rw-r--r-- root/root ./usr/share/doc/r4-crash-reporter/translations/r4_crash_reporter.ts
-rw-r--r-- root/root ./usr/share/doc/r4-crash-reporter/usb-keys.md
drwxr-xr-x root/root ./usr/share/man/
drwxr-xr-x root/root ./usr/share/man/man8/
-rw-r--r-- root/root ./usr/share/man/man8/crash_reporter.8.gz
drwxr-xr-x root/root ./usr/share/r4_crash_reporter/
-rw-r--r-- root/root ./usr/share/r4_crash_reporter/fonts.conf
""".split("\n")[1:-1]

# A display without which the program cannot be used on the appliance or saved from.
PLATFORMS = ("linuxfb", "xcb", "offscreen")

arguments = argparse.Namespace()


def run(*command, **options):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True,
                          timeout=120, **options)


def output_of(*command):
    result = run(*command, env={**os.environ, "LC_ALL": "C.UTF-8"})
    if result.returncode != 0:
        raise AssertionError(f"{command}: {result.stderr}")
    return result.stdout


def installed(path):
    return arguments.root / path


def field(name, package=None):
    return output_of("dpkg-deb", "--field", package or arguments.package, name).strip()


def names_in(dependencies):
    """The package names of a dependency field, alternatives included."""
    return set(re.findall(r"(?:^|[,|])\s*([a-z0-9][a-z0-9+.-]*)", dependencies))


def loaded_by(file):
    return set(re.findall(r"(/\S+) \(0x", output_of("ldd", file)))


@functools.lru_cache(maxsize=None)
def files_of_packages():
    """Every file that dpkg knows, to the package it came with."""
    owners = {}
    for listing in Path("/var/lib/dpkg/info").glob("*.list"):
        package = listing.stem.split(":")[0]
        for line in listing.read_text(encoding="utf-8", errors="replace").splitlines():
            owners[line] = package
    return owners


def owner_of(path):
    for name in (path, os.path.realpath(path), re.sub("^/usr/", "/", path)):
        if name in files_of_packages():
            return files_of_packages()[name]
    raise AssertionError(f"no package owns {path}")


def what_they_bring(packages):
    """The packages that come with these, by their dependencies on this machine."""
    template = "${Package}\t${Status}\t${Depends}, ${Pre-Depends}\t${Provides}\n"
    depends, provided = {}, {}
    for line in output_of("dpkg-query", "-W", "-f", template).splitlines():
        name, status, wanted, provides = line.split("\t")
        if status.endswith(" installed"):
            depends[name] = names_in(wanted)
            for other in names_in(provides):
                provided.setdefault(other, set()).add(name)
    brought, open_ends = set(), set(packages)
    while open_ends:
        name = open_ends.pop()
        for real in {name} & depends.keys() or provided.get(name, set()):
            if real not in brought:
                brought.add(real)
                open_ends |= depends[real]
    return brought


def platform_plugin(platform):
    folder = output_of("/usr/lib/qt5/bin/qmake", "-query", "QT_INSTALL_PLUGINS").strip()
    return f"{folder}/platforms/libq{platform}.so"


class Contents(unittest.TestCase):
    maxDiff = None

    def test_holds_these_files_with_these_modes_and_no_others(self):
        lines = output_of("dpkg-deb", "--contents", arguments.package).splitlines()
        words = [line.split() for line in lines]
        self.assertEqual(sorted(f"{word[0]} {word[1]} {word[5]}" for word in words),
                         sorted(CONTENTS))

    def test_every_date_is_that_of_the_commit(self):
        epoch = int(os.environ["SOURCE_DATE_EPOCH"])
        dates = {int(path.lstat().st_mtime) for path in installed("usr").rglob("*")
                 if path.is_file()}
        self.assertEqual(dates, {epoch})

    def test_runs_nothing_when_it_is_installed_or_removed(self):
        with tempfile.TemporaryDirectory() as folder:
            output_of("dpkg-deb", "--control", arguments.package, folder)
            self.assertEqual(sorted(os.listdir(folder)), ["control", "md5sums"])

    def test_links_between_documents_lead_to_installed_ones(self):
        for document in installed(DOCUMENTS).glob("*.md"):
            for target in re.findall(r"\]\(([^)#]+)", document.read_text()):
                with self.subTest(document=document.name, target=target):
                    self.assertTrue((document.parent / target).exists())


class Program(unittest.TestCase):
    def test_is_hardened(self):
        check = run(PROJECT / "tests/system/check_hardening.sh", installed(PROGRAM))
        self.assertEqual((check.returncode, check.stderr), (0, ""))

    def test_is_stripped_and_its_debug_information_fits(self):
        self.assertIn(", stripped", output_of("file", "--brief", installed(PROGRAM)))
        build_id = re.search("Build ID: (..)(.*)", output_of("readelf", "-n", installed(PROGRAM)))
        path = f"./usr/lib/debug/.build-id/{build_id[1]}/{build_id[2]}.debug"
        self.assertIn(path, output_of("dpkg-deb", "--contents", arguments.debug))

    def test_names_no_folder_of_the_machine_that_built_it(self):
        folder_of_build = f"{PROJECT}/"
        self.assertFalse(folder_of_build.encode() in installed(PROGRAM).read_bytes())
        with tempfile.TemporaryDirectory() as folder:
            output_of("dpkg-deb", "--extract", arguments.debug, folder)
            output_of("dpkg-deb", "--control", arguments.debug, f"{folder}/control")
            self.assertNotIn(folder_of_build, Path(folder, "control/md5sums").read_text())
            for file in Path(folder).rglob("*.debug"):
                self.assertFalse(folder_of_build in output_of("readelf", "--debug-dump=str", file))

    def test_finds_its_fonts_from_where_it_is_installed(self):
        fonts = installed(PROGRAM).parent / "../share/r4_crash_reporter/fonts.conf"
        self.assertTrue(fonts.is_file())
        for folder in re.findall("<dir>(/usr/share/.*)</dir>", fonts.read_text()):
            if "truetype" in folder:
                self.assertIn(folder, output_of("dpkg-query", "-L", "fonts-dejavu-core"))


class Dependencies(unittest.TestCase):
    def setUp(self):
        self.declared = names_in(field("Depends"))

    def test_every_library_that_the_program_names_is_declared(self):
        needed = set(re.findall(r"\(NEEDED\).*\[(.+)\]",
                                output_of("readelf", "-d", installed(PROGRAM))))
        self.assertGreater(len(needed), 5)
        libraries = {path for path in loaded_by(installed(PROGRAM))
                     if os.path.basename(path) in needed}
        self.assertEqual({os.path.basename(path) for path in libraries}, needed)
        self.assertLessEqual({owner_of(path) for path in libraries}, self.declared)

    def test_everything_the_loader_loads_comes_with_them(self):
        owners = {owner_of(path) for path in loaded_by(installed(PROGRAM))}
        self.assertLessEqual(owners, what_they_bring(self.declared))

    def test_the_display_plugins_and_all_they_load_come_with_them(self):
        brought = what_they_bring(self.declared)
        for platform in PLATFORMS:
            plugin = platform_plugin(platform)
            with self.subTest(platform=platform):
                self.assertIn(owner_of(plugin), brought)
                self.assertLessEqual({owner_of(path) for path in loaded_by(plugin)}, brought)

    def test_the_fonts_that_the_screens_fall_back_on_are_declared(self):
        self.assertIn("fonts-dejavu-core", self.declared)

    def test_every_library_is_declared_with_the_version_it_needs(self):
        for dependency in field("Depends").split(","):
            if "fonts-" not in dependency and "libgcc" not in dependency:
                with self.subTest(dependency=dependency):
                    self.assertIn("(>=", dependency)


class Documents(unittest.TestCase):
    def setUp(self):
        self.page = installed("usr/share/man/man8/crash_reporter.8.gz")

    def test_the_manual_page_renders_without_a_warning(self):
        shown = run("man", "--warnings", "--local-file", self.page,
                    env={**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "80"})
        self.assertEqual((shown.returncode, shown.stderr), (0, ""))
        self.assertIn("CRASH_REPORTER(8)", shown.stdout)

    def test_the_manual_page_passes_the_other_formatter(self):
        checked = run("mandoc", "-T", "lint", "-W", "style", self.page)
        self.assertEqual((checked.returncode, checked.stdout), (0, ""))

    def test_the_manual_page_has_the_sections_that_are_looked_for(self):
        text = gzip.decompress(self.page.read_bytes()).decode()
        for section in ("NAME", "SYNOPSIS", "DESCRIPTION", '"EXIT STATUS"', "ENVIRONMENT",
                        "FILES", "SIGNALS"):
            with self.subTest(section=section):
                self.assertIn(section.strip('"'), re.findall(r"(?m)^\.SH (.*)$", text))

    def test_the_bill_of_materials_names_every_library_package(self):
        bill = json.loads(installed(f"{DOCUMENTS}/r4-crash-reporter.spdx.json").read_text())
        self.assertEqual(bill["spdxVersion"], "SPDX-2.3")
        listed = {package["name"]: package for package in bill["packages"]}
        files = loaded_by(installed(PROGRAM))
        for platform in PLATFORMS:
            files |= loaded_by(platform_plugin(platform)) | {platform_plugin(platform)}
        wanted = {owner_of(file) for file in files} | {"fonts-dejavu-core", "r4-crash-reporter"}
        self.assertEqual(set(listed), wanted)
        for name in wanted - {"r4-crash-reporter"}:
            with self.subTest(package=name):
                self.assertEqual(listed[name]["versionInfo"],
                                 output_of("dpkg-query", "-W", "-f", "${Version}\n",
                                           name).splitlines()[0])
                self.assertTrue(Path(listed[name]["licenseComments"].split(":")[0]).exists())

    def test_the_bill_of_materials_refers_to_nothing_it_does_not_list(self):
        bill = json.loads(installed(f"{DOCUMENTS}/r4-crash-reporter.spdx.json").read_text())
        ids = [package["SPDXID"] for package in bill["packages"]]
        self.assertEqual(len(ids), len(set(ids)))
        for relation in bill["relationships"]:
            self.assertIn(relation["relatedSpdxElement"], ids)

    def test_the_bill_of_materials_is_of_this_program(self):
        bill = installed(f"{DOCUMENTS}/r4-crash-reporter.spdx.json").read_text()
        build_id = re.search("Build ID: (.*)", output_of("readelf", "-n", installed(PROGRAM)))
        self.assertIn(build_id[1], bill)

    def test_the_translation_template_holds_every_text_of_the_screens(self):
        template = installed(f"{DOCUMENTS}/translations/r4_crash_reporter.ts")
        contexts = {}
        for context in ElementTree.parse(template).getroot().findall("context"):
            contexts[context.findtext("name")] = {
                message.findtext("source") for message in context.findall("message")}
        for context, text in (
                ("R4CrashReporterApplication", "R4 Error Reporter"),
                ("R4CrashReporterApplication", "Failed to detect a USB disk.  Please ensure "
                                               "your USB disk is correctly inserted."),
                ("CrashReportWidget", "Sorry, something went wrong..."),
                # The screen has no context of its own.
                ("QWidget", "It is now safe to switch off your\n%1 System Controller"),
                ("FileWidget", "Backup")):
            with self.subTest(context=context, text=text):
                self.assertIn(text, contexts[context])
        self.assertNotIn("SafeShutdownWidget", contexts)
        # Everything the sources translate, counted in another way than lupdate's.
        called = set()
        for source in (PROJECT / "software/applications/crash_reporter").glob("*.cpp"):
            called |= set(re.findall(r'\btr\("((?:[^"\\]|\\.)*)"\)', source.read_text()))
        texts = set().union(*contexts.values())
        self.assertGreater(len(called), 15)
        self.assertLessEqual({text.replace("\\n", "\n") for text in called}, texts)


class Supervisor(unittest.TestCase):
    """The sample that starts the reporter, as installed, in the sandbox."""

    sample = f"{DOCUMENTS}/examples/start_crash_reporter"

    def in_sandbox(self, *command):
        with tempfile.TemporaryDirectory() as folder:
            tmp, report = Path(folder, "tmp"), Path(folder, "end.txt")
            tmp.mkdir()
            (tmp / "r4.core").write_bytes(b"dump")
            result = run(PROJECT / "tools/sandbox", "--ro-bind", arguments.root, "--tmp", tmp,
                         "--report", report, "--user-data", self.user_data,
                         "--env", "QT_QPA_PLATFORM=offscreen", "--", *command)
            return result, report.read_text().splitlines()

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.user_data = folder.name

    def played(self, script):
        scenario = PROJECT / "build/release/bin/crash_scenario"
        return self.in_sandbox(scenario, "--dump", "/tmp/r4.core", "--unattended", "--",
                               "sh", "-c", script, "sh")

    def test_the_reporter_it_leaves_behind_saves_and_restarts(self):
        # Given a main application in /user_data with a file open there, ...
        result, end = self.played(
            "(cd /user_data && exec 7>/user_data/journal && "
            f"exec {installed(self.sample)} \"$1\" {installed(PROGRAM)}) && "
            "echo returned && exec sleep 60")
        # then it returned, and what it started ended in a restart with nothing left busy.
        self.assertIn("returned", result.stdout)
        self.assertIn("end=reboot", end, result.stderr)
        self.assertIn("user_data=unmounted", end)
        self.assertTrue(Path(self.user_data, "crash_dumps/Crash Report 0.cdp").exists())

    def test_it_fails_when_the_reporter_ends_without_connecting(self):
        result, end = self.played(f"{installed(self.sample)} \"$1\" /bin/true")
        self.assertEqual(result.returncode, 1)
        self.assertIn("the crash reporter is not connected", result.stderr)
        self.assertIn("end=exit", end)

    def test_it_fails_when_there_is_no_reporter(self):
        result, _ = self.played(f"{installed(self.sample)} \"$1\" /usr/sbin/no_such_reporter")
        self.assertEqual(result.returncode, 1)

    def test_it_leaves_no_file_behind(self):
        result, _ = self.played(f"{installed(self.sample)} \"$1\" /bin/true; ls /run")
        self.assertNotIn("start_crash_reporter", result.stdout)

    def test_the_unit_is_one_that_systemd_understands(self):
        if not run("sh", "-c", "command -v systemd-analyze").stdout:
            self.fail("systemd-analyze is missing: scripts/bootstrap package")
        unit = installed(f"{DOCUMENTS}/examples/r4-crash-reporter@.service")
        checked = run("systemd-analyze", "verify", "--man=no", unit)
        complaints = [line for line in checked.stderr.splitlines()
                      if "start_crash_reporter is not executable" not in line]
        self.assertEqual(complaints, [])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    for name in ("package", "debug", "root"):
        parser.add_argument(f"--{name}", required=True, type=lambda path: Path(path).resolve())
    parser.parse_args(namespace=arguments)
    outcome = unittest.main(argv=[sys.argv[0]], verbosity=2, exit=False).result
    failed = len(outcome.failures) + len(outcome.errors)
    print(f"{outcome.testsRun - failed} passed, {failed} failed")
    sys.exit(failed != 0 or outcome.testsRun == 0)


if __name__ == "__main__":
    main()
