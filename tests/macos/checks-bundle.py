#!/usr/bin/env python3
"""What scripts/bundle-mac makes of a build.

    checks-bundle.py SOURCE INFO-PLIST ICON VERSION BUILD-NUMBER
"""

import os
import pathlib
import plistlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE, INFO, ICON, VERSION, BUILD_NUMBER = sys.argv[1:]

# Each writes what it was called with, as seen from the build folder. `otool` tells a library of the system's, and one
# more when there is a file that says so.
STAND_INS = {
    "uname": 'echo "${STAND_IN_SYSTEM:-Darwin}"',
    "otool": 'echo "$2:"; printf "\\t/usr/lib/libSystem.B.dylib (compatibility version 1.0.0)\\n"; '
             'cat "$STAND_INS/foreign" 2>/dev/null || true',
    "macdeployqt": 'echo "macdeployqt $*" >>"$STAND_INS/calls"; mkdir -p "$1/Contents/PlugIns/platforms" '
                   '"$1/Contents/Frameworks/QtCore.framework"; '
                   'touch "$1/Contents/PlugIns/platforms/libqcocoa.dylib"',
    "codesign": 'echo "codesign $*" >>"$STAND_INS/calls"; [ ! -e "$STAND_INS/unsignable" ]',
}


class Bundle(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="corvane bundle's "))
        self.addCleanup(shutil.rmtree, self.folder)
        self.build = self.folder / "build"
        self.build.mkdir()
        self.stand_ins = self.folder / "stand-ins"
        self.stand_ins.mkdir()
        (self.build / "corvane").write_bytes(b"the program")
        (self.build / "libcorvane-app.dylib").write_bytes(b"the module")
        (self.build / "packaging/macos").mkdir(parents=True)
        shutil.copy(INFO, self.build / "packaging/macos/Info.plist")
        self.app = self.build / "Corvane.app"

    def make(self, **environment):
        return subprocess.run([f"{SOURCE}/scripts/bundle-mac", str(self.build)], env={**os.environ, **environment},
                              capture_output=True, text=True, check=False)

    def make_on_mac(self, **environment):
        for name, command in STAND_INS.items():
            file = self.stand_ins / name
            file.write_text(f"#!/bin/sh\n{command}\n", encoding="utf-8")
            file.chmod(0o755)
        path = f"{self.stand_ins}:{os.environ['PATH']}"
        return self.make(PATH=path, STAND_INS=str(self.stand_ins), **environment)

    def calls(self):
        return (self.stand_ins / "calls").read_text(encoding="utf-8").splitlines()

    def files(self):
        return sorted(str(file.relative_to(self.app)) for file in self.app.rglob("*") if file.is_file())

    def info(self):
        with open(self.app / "Contents/Info.plist", "rb") as file:
            return plistlib.load(file)

    def test_is_laid_out_as_macos_wants_it(self):
        result = self.make()
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(self.files(), [
            "Contents/Frameworks/libcorvane-app.dylib",
            "Contents/Info.plist",
            "Contents/MacOS/corvane",
            "Contents/PkgInfo",
            "Contents/Resources/corvane-helper",
            "Contents/Resources/de.lproj/InfoPlist.strings",
            "Contents/Resources/en.lproj/InfoPlist.strings",
        ])
        self.assertEqual((self.app / "Contents/PkgInfo").read_bytes(), b"APPL????")
        self.assertEqual(sorted(file.name for file in self.build.iterdir()),
                         ["Corvane.app", "corvane", "libcorvane-app.dylib", "packaging"], "nothing is left over")

    def test_brings_the_helper_which_is_the_same_program(self):
        self.make()
        for place in ("Contents/MacOS/corvane", "Contents/Resources/corvane-helper"):
            file = self.app / place
            self.assertEqual(file.read_bytes(), b"the program")
            self.assertEqual(file.stat().st_mode & 0o777, 0o755)

    def test_tells_macos_what_it_is(self):
        self.make()
        info = self.info()
        self.assertEqual(info["CFBundleIdentifier"], "de.tavrin.corvane")
        self.assertEqual(info["CFBundlePackageType"], "APPL")
        self.assertEqual(info["LSMinimumSystemVersion"], "13.0")
        self.assertIs(info["LSUIElement"], True)
        self.assertIn("drives", info["NSRemovableVolumesUsageDescription"], "without it no drive could be read")
        self.assertEqual(info["CFBundleLocalizations"], ["de", "en"])
        self.assertTrue((self.app / "Contents/MacOS" / info["CFBundleExecutable"]).is_file())
        for language in info["CFBundleLocalizations"]:
            self.assertTrue((self.app / f"Contents/Resources/{language}.lproj").is_dir())

    def test_has_the_versions_of_the_build(self):
        self.make()
        self.assertEqual(self.info()["CFBundleShortVersionString"], VERSION)
        self.assertEqual(self.info()["CFBundleVersion"], BUILD_NUMBER)

    def test_has_an_icon_in_all_sizes_where_one_was_drawn(self):
        shutil.copy(ICON, self.build / "Corvane.icns")
        self.make()
        icon = (self.app / "Contents/Resources" / (self.info()["CFBundleIconFile"] + ".icns")).read_bytes()
        self.assertEqual(icon[:4], b"icns")
        self.assertEqual(int.from_bytes(icon[4:8], "big"), len(icon))
        pixels, place = [], 8
        while place < len(icon):
            size = int.from_bytes(icon[place + 4:place + 8], "big")
            picture = icon[place + 8:place + size]
            self.assertEqual(picture[:8], b"\x89PNG\r\n\x1a\n")
            pixels.append((int.from_bytes(picture[16:20], "big"), int.from_bytes(picture[20:24], "big")))
            place += size
        self.assertEqual(pixels, [(side, side) for side in (16, 32, 32, 64, 128, 256, 256, 512, 512, 1024)])

    def test_replaces_the_one_before(self):
        self.make()
        (self.app / "Contents/Resources/old").write_text("old", encoding="utf-8")
        (self.build / "corvane").write_bytes(b"a newer program")
        self.assertEqual(self.make().returncode, 0)
        self.assertNotIn("Contents/Resources/old", self.files())
        self.assertEqual((self.app / "Contents/MacOS/corvane").read_bytes(), b"a newer program")

    def test_says_what_is_not_built(self):
        for name in ("corvane", "libcorvane-app.dylib", "packaging/macos/Info.plist"):
            with self.subTest(name):
                content = (self.build / name).read_bytes()
                (self.build / name).unlink()
                result = self.make()
                self.assertEqual(result.returncode, 1)
                self.assertIn(f"there is no {self.build}/{name}", result.stderr)
                self.assertFalse(self.app.exists())
                (self.build / name).write_bytes(content)

    def test_brings_qt_and_is_signed_on_a_mac_from_the_inside_out(self):
        result = self.make_on_mac()
        self.assertEqual(result.returncode, 0, result.stderr)
        deploy, *signatures, verification = self.calls()
        self.assertTrue(deploy.startswith("macdeployqt "), deploy)
        self.assertIn(f"-qmldir={SOURCE}/app/ui", deploy)
        self.assertIn("-executable=", deploy)
        self.assertIn("--verify --deep --strict", verification)
        signed = [pathlib.PurePath(call.split("--sign - ")[1]).name for call in signatures]
        self.assertEqual(signed[-1], "Corvane.app")
        self.assertEqual(sorted(signed[:-1]),
                         ["QtCore.framework", "corvane-helper", "libcorvane-app.dylib", "libqcocoa.dylib"])

    def test_is_signed_by_whom_the_environment_names(self):
        self.make_on_mac(CORVANE_SIGN_IDENTITY="Developer ID Application: Someone")
        self.assertIn("--sign Developer ID Application: Someone ", self.calls()[1])

    def test_takes_qt_from_where_the_environment_says(self):
        result = self.make_on_mac(QT_ROOT="/no/such/qt")
        self.assertEqual(result.returncode, 1)
        self.assertIn("there is no /no/such/qt/bin/macdeployqt", result.stderr)

    def test_refuses_a_helper_that_needs_other_libraries(self):
        (self.stand_ins / "foreign").write_text("\t/opt/homebrew/lib/libfmt.11.dylib (compatibility version 11)\n",
                                                encoding="utf-8")
        result = self.make_on_mac()
        self.assertEqual(result.returncode, 1)
        self.assertIn("/opt/homebrew/lib/libfmt.11.dylib", result.stderr)
        self.assertFalse(self.app.exists())

    def test_keeps_the_old_one_when_the_new_one_cannot_be_signed(self):
        self.assertEqual(self.make_on_mac().returncode, 0)
        before = self.files()
        (self.stand_ins / "unsignable").touch()
        (self.build / "corvane").write_bytes(b"a newer program")
        self.assertNotEqual(self.make_on_mac().returncode, 0)
        self.assertEqual(self.files(), before)
        self.assertEqual((self.app / "Contents/MacOS/corvane").read_bytes(), b"the program")


unittest.main(argv=sys.argv[:1])
