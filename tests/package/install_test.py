"""Installs the phone's package by dpkg, as on a phone of each version: `install_test.py PACKAGE [unittest arguments]`."""

import plistlib
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PACKAGE = Path(sys.argv.pop(1))

# What stands for the system is a package too.
INSTALLED = """Package: {name}
Status: install ok installed
Maintainer: The phone
Architecture: iphoneos-arm
Version: {version}
Description: What is there before

"""


class Phone:
    """A file tree with the system's version, the model and the loaders in dpkg's records, and nothing else."""

    def __init__(self, root, firmware, model="iphone", preferenceloader="2.2.2"):
        self.root = Path(root)
        self.records = self.root / "var/lib/dpkg"
        for folder in ("info", "updates", "triggers"):
            (self.records / folder).mkdir(parents=True)
        (self.records / "arch").write_text("amd64\niphoneos-arm\n")
        there = {"firmware": firmware, f"cy+model.{model}": "6.1", "mobilesubstrate": "0.9.5000", "preferenceloader": preferenceloader}
        for name in there:
            (self.records / "info" / f"{name}.list").touch()
        (self.records / "status").write_text("".join(INSTALLED.format(name=name, version=there[name]) for name in there))

    def install(self, package=PACKAGE):
        words = ["dpkg", f"--root={self.root}", "--log=/dev/null", "--force-not-root", "--force-script-chrootless", "--install"]
        return subprocess.run([*words, package], capture_output=True, text=True, check=False)

    def files(self):
        return [path for path in self.root.rglob("*") if path.is_file() and self.records not in path.parents]


class Installing(unittest.TestCase):
    def test_unpacks_nothing_on_a_system_that_it_is_not_for(self):
        for firmware in ("6.1.3", "7.0", "7.0.2", "9.0", "9.0.2", "10.2"):
            with self.subTest(firmware), tempfile.TemporaryDirectory() as folder:
                phone = Phone(folder, firmware)
                installation = phone.install()
                self.assertNotEqual(installation.returncode, 0)
                self.assertIn("firmware", installation.stderr)
                self.assertEqual(phone.files(), [])

    def test_unpacks_nothing_on_a_tablet(self):
        with tempfile.TemporaryDirectory() as folder:
            tablet = Phone(folder, "8.1", "ipad")
            installation = tablet.install()
            self.assertNotEqual(installation.returncode, 0)
            self.assertIn("cy+model.iphone", installation.stderr)
            self.assertEqual(tablet.files(), [])

    def test_is_done_on_a_phone_without_a_telephone(self):
        with tempfile.TemporaryDirectory() as folder:
            installation = Phone(folder, "7.1.2", "ipod").install()
            self.assertEqual((installation.returncode, installation.stderr), (0, ""))

    def test_is_done_on_each_system_that_it_is_for(self):
        for firmware in ("7.0.3", "7.0.6", "7.1.2", "8.0", "8.1", "8.4.1"):
            with self.subTest(firmware), tempfile.TemporaryDirectory() as folder:
                phone = Phone(folder, firmware)
                installation = phone.install()
                self.assertEqual((installation.returncode, installation.stderr), (0, ""))
                self.assertIn(phone.root / "Library/MobileSubstrate/DynamicLibraries/Solvane.dylib", phone.files())

    def test_needs_a_preference_loader_that_knows_such_systems(self):
        with tempfile.TemporaryDirectory() as folder:
            installation = Phone(folder, "8.1", preferenceloader="2.2.1").install()
            self.assertNotEqual(installation.returncode, 0)
            self.assertIn("preferenceloader", installation.stderr)

    def test_takes_the_old_page_away_and_keeps_the_name(self):
        with tempfile.TemporaryDirectory() as folder:
            phone = Phone(Path(folder) / "phone", "8.1")
            self.assertEqual(phone.install(old_package(Path(folder))).returncode, 0)
            entry = phone.root / "Library/PreferenceLoader/Preferences/Solvane.plist"
            self.assertIn("items", plistlib.loads(entry.read_bytes()))
            preferences = phone.root / "User/Library/Preferences/org.solvane.Solvane.plist"
            preferences.parent.mkdir(parents=True)
            settings = plistlib.dumps({"Name": "Ana", "Relaunch": True})
            preferences.write_bytes(settings)

            installation = phone.install()
            self.assertEqual((installation.returncode, installation.stderr), (0, ""))
            self.assertEqual(plistlib.loads(entry.read_bytes())["entry"]["bundle"], "Solvane")
            self.assertTrue((phone.root / "Library/PreferenceBundles/Solvane.bundle/Solvane").is_file())
            self.assertNotIn("items", plistlib.loads(entry.read_bytes()))
            self.assertEqual(preferences.read_bytes(), settings)


def old_package(folder):
    """What 0.1.0 was, as far as the Settings go: a page that lists its items, which the preference loader shows."""
    tree = folder / "old"
    page = tree / "Library/PreferenceLoader/Preferences/Solvane.plist"
    for file in (page, tree / "DEBIAN/control"):
        file.parent.mkdir(parents=True)
    page.write_bytes(plistlib.dumps({"entry": {"cell": "PSLinkCell", "label": "Solvane"}, "items": []}))
    (tree / "DEBIAN/control").write_text(
        "Package: org.solvane.solvane\nVersion: 0.1.0\nArchitecture: iphoneos-arm\nMaintainer: The Solvane authors\n"
        "Description: What was before\n"
    )
    package = folder / "old.deb"
    subprocess.run(["dpkg-deb", "--root-owner-group", "--build", tree, package], capture_output=True, check=True)
    return package


if __name__ == "__main__":
    unittest.main()
