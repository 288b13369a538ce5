#!/usr/bin/env python3
"""The steps of scripts/first-run-on-mac and its report, with stand-ins for a Mac and its tools.

    checks-first-run.py SOURCE
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(sys.argv[1])

TEMPERATURES = """=== Safety-Sensoren (CPU-Kerne + GPU) ===
  Tp09   83.5°C   [CPU]
→ Heißester Safety-Sensor: Tp09 = 83.5°C → Kurve fordert 50%, kritisch=nein
"""
KEYS = """FNum: size=1 type=ui8  attrs=0x80  bytes=[02]  2
Tp09: size=4 type=flt  attrs=0x84  bytes=[00 00 a7 42]  83.50
BMSN: size=8 type=ch8* attrs=0x80  bytes=[53 45 43 52 45 54 31 32]  "SECRET12"
"""

# `$MAC/failing` names targets and programs that fail, one a line.
STAND_INS = {
    "uname": '[ "$1" = -m ] && echo arm64 || echo Darwin',
    "xcode-select": "echo /Library/Developer/CommandLineTools",
    "xcrun": '[ "$1" = clang ] && echo "Apple clang version 15.0.0" || echo 14.2',
    "sysctl": '[ "$2" = hw.model ] && echo Mac14,9 || echo "Apple M2 Pro"',
    "sw_vers": '[ "$1" = -productVersion ] && echo 14.2.1 || echo 23C71',
    "id": '[ "$1" = -F ] && echo "Ada Lovelace" || echo adal',
    "hostname": "echo Adas-MacBook.local",
    "brew": 'grep -qx "$3" "$MAC/not-installed" 2>/dev/null || echo "$MAC/brew/$3"',
    "ninja": "true",
    "git": '[ "$1" = rev-parse ] && echo abc1234',
    "cmake": """
case "$1" in
--version) echo "cmake version 3.28.1" ;;
-S) echo "cmake $*" >>"$MAC/calls" ;;
--build)
    target=$4
    echo "compiling $target in $HOME for adal on Adas-MacBook"
    grep -qx "$target" "$MAC/failing" 2>/dev/null && { echo "error: no such thing"; exit 2; }
    case "$target" in
    corvane) cp "$MAC/corvane" "$2/corvane" ;;
    corvane-app) mkdir -p "$2/packaging/macos"; touch "$2/libcorvane-app.dylib" "$2/packaging/macos/Info.plist" ;;
    corvane-sdk-asserts) ;;
    xpc-probe) mkdir -p "$2/tests/macos"; cp "$MAC/program" "$2/tests/macos/xpc-probe" ;;
    *) mkdir -p "$2/tests/x"; cp "$MAC/program" "$2/tests/x/$target" ;;
    esac ;;
esac""",
    "otool": "true",
    "codesign": "true",
    "open": 'echo "open $*" >>"$MAC/calls"',
    "sleep": "true",
    "pgrep": '! grep -qx application "$MAC/failing" 2>/dev/null',
}

PROGRAM = """
name=$(basename "$0")
echo "$name has run"
! grep -qx "run-$name" "$MAC/failing" 2>/dev/null
"""

STEPS = ["tools", "machine", "configuration", "constants and layouts of the SDK", "helper and diagnostics",
         "application", "portable tests", "sensors", "keys of the SMC", "XPC", "bundle", "application runs"]


def write_program(file, text):
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(f"#!/bin/sh\n{text}\n", encoding="utf-8")
    file.chmod(0o755)


class FirstRun(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="corvane first run "))
        self.addCleanup(shutil.rmtree, self.folder)
        self.source = self.folder / "source"
        (self.source / "scripts").mkdir(parents=True)
        for script in ("first-run-on-mac", "bundle-mac"):
            shutil.copy(SOURCE / "scripts" / script, self.source / "scripts" / script)
        shutil.copytree(SOURCE / "packaging/macos", self.source / "packaging/macos")
        (self.source / "tests").mkdir()
        shutil.copy(SOURCE / "tests/portable-tests", self.source / "tests/portable-tests")
        self.mac = self.folder / "mac"
        for name, text in STAND_INS.items():
            write_program(self.mac / "bin" / name, text)
        for name, text in {"macdeployqt": "true", "qmake": "echo 6.8.1"}.items():
            write_program(self.mac / "brew/qt/bin" / name, text)
        write_program(self.mac / "program", PROGRAM)
        self.home = self.folder / "home"
        self.home.mkdir()
        self.set_diagnostics(TEMPERATURES, KEYS)

    def set_diagnostics(self, temperatures, keys):
        (self.mac / "temperatures").write_text(temperatures, encoding="utf-8")
        (self.mac / "keys").write_text(keys, encoding="utf-8")
        write_program(self.mac / "corvane",
                      f"case $1 in --temps) cat '{self.mac}/temperatures' ;; --dumpkeys) cat '{self.mac}/keys' ;; "
                      "*) exit 9 ;; esac")

    def let_fail(self, *what):
        (self.mac / "failing").write_text("\n".join(what) + "\n", encoding="utf-8")

    def run_first(self, **environment):
        path = f"{self.mac / 'bin'}:{os.environ['PATH']}"
        return subprocess.run([self.source / "scripts/first-run-on-mac"], stdin=subprocess.DEVNULL,
                              env={**os.environ, "PATH": path, "MAC": str(self.mac), "HOME": str(self.home),
                                   **environment},
                              capture_output=True, text=True, check=False)

    def report(self):
        return (self.source / "build/mac/first-run-report.txt").read_text(encoding="utf-8")

    def results(self):
        lines = [line[3:] for line in self.report().splitlines() if line.startswith("== ") and ": " in line]
        return dict(line.split(": ", 1) for line in lines)

    def calls(self):
        return (self.mac / "calls").read_text(encoding="utf-8").splitlines()

    def test_takes_every_step(self):
        result = self.run_first()
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertEqual(self.results(), {step: "ok" for step in STEPS})
        self.assertIn("The report: build/mac/first-run-report.txt", result.stdout)

    def test_takes_no_tests_for_a_failure(self):
        (self.source / "tests/portable-tests").unlink()
        self.run_first()
        self.assertEqual(self.results(), {step: "ok" for step in STEPS} | {"portable tests": "failed (1)"})

    def test_builds_for_the_oldest_mac_with_what_homebrew_has(self):
        self.run_first()
        configuration = self.calls()[0]
        for part in ("CMAKE_OSX_ARCHITECTURES=arm64", "CMAKE_OSX_DEPLOYMENT_TARGET=13.0",
                     f"CMAKE_PREFIX_PATH={self.mac}/brew/qt;{self.mac}/brew/fmt;{self.mac}/brew/googletest"):
            self.assertIn(part, configuration)

    def test_opens_the_application_that_it_has_made(self):
        self.run_first()
        self.assertIn("open build/mac/Corvane.app", self.calls())
        self.assertTrue((self.source / "build/mac/Corvane.app/Contents/MacOS/corvane").is_file())

    def test_reports_versions_and_the_model(self):
        self.run_first()
        for text in ("Mac14,9, Apple M2 Pro", "14.2.1 (23C71)", "Apple clang version 15.0.0", "cmake version 3.28.1",
                     "Qt        6.8.1", "abc1234"):
            self.assertIn(text, self.report())

    def test_reports_readings_of_fans_and_sensors_but_no_other_values(self):
        self.run_first()
        report = self.report()
        self.assertIn("Tp09   83.5°C", report)
        self.assertIn("FNum: size=1 type=ui8  attrs=0x80  bytes=[02]  2", report)
        self.assertIn("BMSN: size=8 type=ch8* attrs=0x80", report)
        self.assertNotIn("SECRET12", report)
        self.assertNotIn("53 45 43", report)

    def test_tells_nothing_of_its_user(self):
        self.let_fail("corvane-app")
        self.run_first()
        report = self.report()
        for name in ("adal", "Ada Lovelace", "Adas-MacBook", str(self.home)):
            self.assertNotIn(name, report)
        self.assertIn("compiling corvane-app in ~ for (user) on (this Mac)", report)

    def test_says_that_nobody_was_there_to_ask(self):
        self.run_first()
        self.assertIn("not asked: Is there a gauge in the menu bar?", self.report())

    def test_goes_on_after_what_fails(self):
        self.let_fail("corvane-app", "run-smc-tests", "run-xpc-probe")
        result = self.run_first()
        self.assertEqual(result.returncode, 1)
        expected = {step: "ok" for step in STEPS}
        expected["application"] = "failed (2)"
        expected["portable tests"] = "failed (1)"
        expected["XPC"] = "failed (1)"
        expected["bundle"] = expected["application runs"] = "skipped"
        self.assertEqual(self.results(), expected)
        self.assertIn("error: no such thing", self.report())
        self.assertIn("smc-tests: fails", self.report())
        self.assertIn("core-tests: passes", self.report())

    def test_probes_nothing_without_the_program(self):
        self.let_fail("corvane")
        self.assertEqual(self.run_first().returncode, 1)
        results = self.results()
        self.assertEqual(results["helper and diagnostics"], "failed (2)")
        for step in ("sensors", "keys of the SMC", "bundle", "application runs"):
            self.assertEqual(results[step], "skipped")

    def test_takes_an_answer_without_a_sensor_for_a_failure(self):
        self.set_diagnostics("csmc_open failed: -536870174\n", "csmc_open failed: -536870174\n")
        self.assertEqual(self.run_first().returncode, 1)
        self.assertEqual(self.results()["sensors"], "failed (1)")
        self.assertEqual(self.results()["keys of the SMC"], "failed (1)")
        self.assertIn("csmc_open failed: -536870174", self.report())

    def test_notices_an_application_that_ends_at_once(self):
        self.let_fail("application")
        self.assertEqual(self.run_first().returncode, 1)
        self.assertEqual(self.results()["application runs"], "failed (1)")
        self.assertNotIn("not asked", self.report())

    def test_names_all_that_is_missing(self):
        (self.mac / "not-installed").write_text("qt\nfmt\ngoogletest\n", encoding="utf-8")
        write_program(self.mac / "bin/xcode-select", "exit 2")
        result = self.run_first()
        self.assertEqual(result.returncode, 1)
        for text in ("xcode-select --install", "brew install qt, or set QT_ROOT", "brew install fmt",
                     "brew install googletest"):
            self.assertIn(text, result.stdout)
        self.assertEqual(list(self.results()), ["tools"])

    def test_takes_qt_from_where_the_environment_says(self):
        (self.mac / "not-installed").write_text("qt\n", encoding="utf-8")
        result = self.run_first(QT_ROOT=str(self.mac / "brew/qt"))
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)

    def test_is_for_macs_with_apple_silicon(self):
        write_program(self.mac / "bin/uname", '[ "$1" = -m ] && echo x86_64 || echo Linux')
        result = self.run_first()
        self.assertEqual(result.returncode, 1)
        self.assertIn("This is no Mac with Apple silicon: Linux on x86_64.", result.stdout)
        self.assertEqual(self.results(), {"tools": "failed (1)"})


unittest.main(argv=sys.argv[:1])
