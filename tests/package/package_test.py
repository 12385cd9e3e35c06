"""Checks the phone's package: `package_test.py PACKAGE [unittest arguments]`."""

import io
import plistlib
import re
import stat
import struct
import subprocess
import sys
import tarfile
import unittest
from pathlib import Path

import code_signature
import mach_o
import weak_imports

HERE = Path(__file__).parent
SOURCES = HERE.parents[1]
PACKAGE = Path(sys.argv.pop(1))

LIBRARY = "Library/MobileSubstrate/DynamicLibraries/Solvane.dylib"
FILTER = "Library/MobileSubstrate/DynamicLibraries/Solvane.plist"
ENTRY = "Library/PreferenceLoader/Preferences/Solvane.plist"
BUNDLE = "Library/PreferenceBundles/Solvane.bundle"
PAGE_CODE = f"{BUNDLE}/Solvane"
PAGE_FILES = [f"{BUNDLE}/{name}" for name in ("Info.plist", "Solvane.plist", "Solvane.png", "Solvane@2x.png", "Solvane@3x.png")]
PICTURES = [f"Library/Application Support/Solvane/{name}.png" for name in (
    "Badge", "Badge@2x", "Calendar", "Calendar@2x", "Notification", "Notification@2x",
)]  # fmt: skip

# Every library of an iOS 7 phone that the library is linked with; the loader's framework has the version 0, and of the weather's no
# version is asked for.
LIBRARIES = {
    "/Library/Frameworks/CydiaSubstrate.framework/CydiaSubstrate": 0,
    "/System/Library/Frameworks/CoreFoundation.framework/CoreFoundation": 0x10000,
    "/System/Library/Frameworks/EventKit.framework/EventKit": 0x10000,
    "/System/Library/Frameworks/Foundation.framework/Foundation": 0x10000,
    "/System/Library/Frameworks/UIKit.framework/UIKit": 0x10000,
    "/System/Library/PrivateFrameworks/Weather.framework/Weather": 0,
    "/usr/lib/libSystem.B.dylib": 0x10000,
    "/usr/lib/libc++.1.dylib": 0x10000,
    "/usr/lib/libobjc.A.dylib": 0x10000,
}
WEATHER = "/System/Library/PrivateFrameworks/Weather.framework/Weather"
# And those of them that the page needs.
PAGE_LIBRARIES = {name: version for name, version in LIBRARIES.items() if not re.search("CydiaSubstrate|EventKit|UIKit|Weather", name)}

# In a library's data, what the phone's object runtime reads.
RUNTIME_SECTIONS = ("__objc_imageinfo", "__objc_selrefs", "__cfstring")


def archive_members(data):
    """The members of an ar archive, in order."""
    assert data.startswith(b"!<arch>\n")
    offset = 8
    members = {}
    while offset < len(data):
        header = data[offset : offset + 60]
        size = int(header[48:58])
        members[header[:16].decode().rstrip(" /")] = data[offset + 60 : offset + 60 + size]
        offset += 60 + size + size % 2
    return members


MEMBERS = archive_members(PACKAGE.read_bytes())


def unpacked(member):
    """The entries of a member by their paths, and the contents of the files."""
    with tarfile.open(fileobj=io.BytesIO(MEMBERS[member]), mode="r:gz") as archive:
        entries = {entry.name.removeprefix("./").rstrip("/"): entry for entry in archive.getmembers()}
        contents = {name: archive.extractfile(entry).read() for name, entry in entries.items() if entry.isfile()}
    return entries, contents


ENTRIES, CONTENTS = unpacked("data.tar.gz")


def platform_symbols(table, architecture):
    """The symbols that a slice may take from the phone, with their libraries' file names and versions."""
    for line in (HERE / table).read_text().splitlines():
        if line.startswith("#"):
            continue
        symbol, library, since, *only = line.split()
        if not only or only == [architecture]:
            yield symbol, library, tuple(map(int, since.split(".")))


def file_name(library):
    return library.rsplit("/", 1)[1].removesuffix(".dylib")


class Package(unittest.TestCase):
    def test_has_the_members_that_an_old_dpkg_reads(self):
        self.assertEqual(list(MEMBERS), ["debian-binary", "control.tar.gz", "data.tar.gz"])
        self.assertEqual(MEMBERS["debian-binary"], b"2.0\n")
        for member in ("control.tar.gz", "data.tar.gz"):
            self.assertEqual(MEMBERS[member][:3], b"\x1f\x8b\x08", "gzip")

    def test_holds_these_files_and_no_others(self):
        self.assertEqual(sorted(CONTENTS), sorted([LIBRARY, FILTER, ENTRY, PAGE_CODE, *PAGE_FILES, *PICTURES]))

    def test_belongs_to_root_with_the_right_modes(self):
        for name, entry in ENTRIES.items():
            expected = 0o755 if entry.isdir() or name in (LIBRARY, PAGE_CODE) else 0o644
            self.assertEqual(stat.S_IMODE(entry.mode), expected, name)
            self.assertEqual((entry.uid, entry.gid, entry.uname, entry.gname), (0, 0, "root", "root"), name)

    def test_tells_one_time_for_everything(self):
        self.assertEqual(len({entry.mtime for entry in ENTRIES.values()}), 1)

    def test_has_only_folders_that_a_phone_has(self):
        folders = {name for name, entry in ENTRIES.items() if entry.isdir()}
        parents = {str(parent) for name in CONTENTS for parent in Path(name).parents if str(parent) != "."}
        self.assertEqual(folders - {"", "."}, parents)

    def test_says_what_it_is_and_needs(self):
        _, contents = unpacked("control.tar.gz")
        self.assertEqual(list(contents), ["control"])
        text = contents["control"].decode()
        fields = dict(re.findall(r"^(\S+): (.*)$", text, re.MULTILINE))
        version = re.search(r"project\(Solvane VERSION (\S+)", (SOURCES / "CMakeLists.txt").read_text())[1]
        self.assertEqual(PACKAGE.name, f"Solvane_{version}_iphoneos-arm.deb")
        self.assertEqual(fields["Package"], "org.solvane.solvane")
        self.assertEqual(fields["Version"], version)
        self.assertEqual(fields["Architecture"], "iphoneos-arm")
        self.assertEqual(fields["Pre-Depends"].split(", "), ["firmware (>= 7.0.3)", "firmware (<< 9.0)", "cy+model.iphone | cy+model.ipod"])
        self.assertEqual(fields["Depends"].split(", "), ["mobilesubstrate", "preferenceloader (>= 2.2.2)"])
        for field in ("Name", "Section", "Maintainer", "Description"):
            self.assertTrue(fields[field], field)
        size = sum(len(content) for content in CONTENTS.values())
        self.assertAlmostEqual(int(fields["Installed-Size"]), size / 1024, delta=2)

    def test_is_for_springboard_alone(self):
        self.assertEqual(CONTENTS[FILTER][:8], b"bplist00")
        rules = {"Bundles": ["com.apple.springboard"], "CoreFoundationVersion": [847, 1200]}
        self.assertEqual(plistlib.loads(CONTENTS[FILTER]), {"Filter": rules})

    def test_has_the_pictures_that_the_library_asks_for(self):
        for name in PICTURES:
            self.assertEqual(CONTENTS[name], (SOURCES / "assets/Solvane" / Path(name).name).read_bytes(), name)
            self.assertIn(f"/{name.replace('@2x', '')}".encode(), CONTENTS[LIBRARY])

    def test_has_an_entry_in_the_settings_that_leads_to_the_page(self):
        entry = plistlib.loads(CONTENTS[ENTRY])
        self.assertEqual(list(entry), ["entry"])
        entry = entry["entry"]
        self.assertEqual((entry["cell"], entry["label"], entry["isController"]), ("PSLinkCell", "Solvane", True))
        self.assertEqual(f"Library/PreferenceBundles/{entry['bundle']}.bundle", BUNDLE)
        self.assertIn(f"{BUNDLE}/{entry['icon']}", CONTENTS)
        description = plistlib.loads(CONTENTS[f"{BUNDLE}/Info.plist"])
        self.assertEqual(description["NSPrincipalClass"], entry["detail"])
        self.assertIn(entry["detail"].encode(), CONTENTS[PAGE_CODE])
        self.assertEqual(f"{BUNDLE}/{description['CFBundleExecutable']}", PAGE_CODE)
        self.assertIn(description["CFBundleShortVersionString"], PACKAGE.name)

    def test_has_a_page_with_a_name_and_a_button_that_asks_first(self):
        rows = {row["id"]: row for row in plistlib.loads(CONTENTS[f"{BUNDLE}/Solvane.plist"])["items"] if "id" in row}
        name, button = rows["Name"], rows["Relaunch"]
        self.assertEqual((name["cell"], name["placeholder"], name["autoCaps"], name["noAutoCorrect"]), ("PSEditTextCell", "Pal", "words", True))
        self.assertEqual(button["cell"], "PSButtonCell")
        self.assertEqual(set(button["confirmation"]), {"title", "prompt", "okTitle", "cancelTitle"})
        self.assertIn(button["action"].encode(), CONTENTS[PAGE_CODE])
        for row in rows.values():
            # Nothing is left to the Settings, which may write it later.
            self.assertFalse({"defaults", "PostNotification"} & set(row), row["id"])
            self.assertIn(row.get("key", "").encode(), CONTENTS[PAGE_CODE])
        for text in ("loadSolvaneS", "RespringSV", "/User/Library/Preferences/org.solvane.Solvane.plist"):
            self.assertIn(text.encode(), CONTENTS[LIBRARY])
            self.assertIn(text.encode(), CONTENTS[PAGE_CODE])

    def test_has_the_pages_icon_for_each_screen(self):
        for suffix, side in (("", 29), ("@2x", 58), ("@3x", 87)):
            picture = CONTENTS[f"{BUNDLE}/Solvane{suffix}.png"]
            self.assertEqual(struct.unpack(">II", picture[16:24]), (side, side))

    def test_has_stubs_of_just_the_symbols_that_it_takes(self):
        stubs = {}
        for stub in (SOURCES / "packaging/stubs").glob("*.tbd"):
            text = stub.read_text()
            library = file_name(re.search(r"install-name:\s*(\S+)", text)[1])
            for targets, symbols in re.findall(r"targets:\s*\[([^]]*)\]\s*symbols:\s*\[([^]]*)\]", text):
                for target in ("armv7", "arm64"):
                    if f"{target}-ios" in targets:
                        stubs.setdefault(target, set()).update((symbol, library) for symbol in re.split(r"[\s,]+", symbols.strip()))
        for name in ("armv7", "arm64"):
            taken = {row[:2] for code in (Library, Page) for row in platform_symbols(code.symbols, name)}
            self.assertEqual(stubs[name], taken, name)


class Code:
    """What holds of each file of code: `path` in the package, its `libraries`, the table of the `symbols` that it takes from the
    phone, the names that it `exports`, the `identifier` of its signature, and how many `instructions`, `selectors` and constant `texts` it
    has at the least."""

    @classmethod
    def setUpClass(cls):
        cls.slices = mach_o.slices(CONTENTS[cls.path])
        cls.images = {name: mach_o.Image(data) for name, (data, _, _) in cls.slices.items()}

    def test_is_for_both_processors(self):
        self.assertEqual(list(self.slices), ["armv7", "arm64"])
        for name, (_, alignment, offset) in self.slices.items():
            self.assertEqual(alignment, 14, name)
            self.assertEqual(offset % (1 << 14), 0, name)

    def test_is_a_library_for_ios_7(self):
        for name, image in self.images.items():
            with self.subTest(name):
                self.assertEqual(image.file_type, 6)
                self.assertEqual(image.install_name, f"/{self.path}")
                self.assertEqual(image.minimum_version, (7, 0))
                # No undefined symbols; dynamically linked; each symbol from its own library.
                self.assertEqual(image.flags & 0x85, 0x85)

    def test_is_linked_with_libraries_that_a_phone_has(self):
        for name, image in self.images.items():
            self.assertEqual(dict(image.libraries), self.libraries, name)

    def test_cannot_do_without_any_but_the_weather(self):
        weather = {WEATHER} & set(self.libraries)
        for name, image in self.images.items():
            with self.subTest(name):
                self.assertEqual((weak_imports.libraries(image.data), image.weak_libraries), (weather, weather))
                self.assertEqual((weak_imports.symbols(image.data), image.weak_bindings()), (set(), set()))

    def test_exports_its_names_and_no_others(self):
        for name, image in self.images.items():
            self.assertEqual(set(image.exports()), self.exports, name)

    def test_exports_functions_in_the_state_that_they_run_in(self):
        image = self.images["armv7"]
        code = image.sections["__TEXT", "__text"]
        for name, address in image.exports().items():
            is_code = code["address"] <= address < code["address"] + code["size"]
            self.assertEqual(address & 1, int(is_code), name)

    def test_points_to_functions_in_the_state_that_they_run_in(self):
        image = self.images["armv7"]
        code = image.sections["__TEXT", "__text"]
        constants = image.sections["__DATA", "__const"]
        start = constants["file_offset"]
        words = struct.unpack_from(f"<{constants['size'] // 4}I", image.data, start)
        pointers = [word for word in words if code["address"] <= word < code["address"] + code["size"]]
        self.assertTrue(pointers)
        self.assertEqual([hex(pointer) for pointer in pointers if not pointer & 1], [])

    def test_leaves_its_code_for_the_platforms_in_a_way_that_leads_there(self):
        # ldr ip, [pc, #4]; add pc, pc; bx ip
        self.assertNotIn(bytes.fromhex("dff804c0 ff44 6047"), bytes(self.images["armv7"].data))

    def test_takes_only_what_ios_7_has(self):
        for name, image in self.images.items():
            allowed = {symbol: since for symbol, _, since in platform_symbols(self.symbols, name)}
            self.assertEqual(image.undefined_symbols(), set(allowed), name)
            for symbol, since in allowed.items():
                self.assertLessEqual(since, (7, 0), symbol)

    def test_takes_each_symbol_from_the_library_that_has_it(self):
        for name, image in self.images.items():
            expected = {(symbol, library) for symbol, library, _ in platform_symbols(self.symbols, name)}
            self.assertEqual({(symbol, file_name(library)) for symbol, library in image.bindings()}, expected, name)

    def test_runs_on_the_oldest_processors_that_such_phones_have(self):
        for name in self.slices:
            instructions, unknown = disassembled(name, self.slices[name][0])
            self.assertGreater(instructions, self.instructions, name)
            self.assertEqual(unknown, [], name)

    def test_has_its_selectors_and_constant_texts_as_compilers_write_them(self):
        for name, image in self.images.items():
            with self.subTest(name):
                sections = {section: image.sections["__DATA", section]["size"] for section in RUNTIME_SECTIONS}
                self.assertEqual(sections["__objc_imageinfo"], 8)
                self.assertGreater(sections["__objc_selrefs"], self.selectors * image.word)
                self.assertGreater(sections["__cfstring"], self.texts * 4 * image.word)

    def test_sends_without_a_question(self):
        loaded, questions = selectors_loaded(self.images["arm64"])
        references = self.images["arm64"].sections["__DATA", "__objc_selrefs"]
        # Some are read together with what stands beside them.
        self.assertGreater(len(loaded), 0.95 * references["size"] / 8)
        self.assertEqual(questions, [])

    def test_has_segments_of_whole_pages_that_are_not_both_written_and_run(self):
        for name, image in self.images.items():
            page = 0x4000 if name == "arm64" else 0x1000
            self.assertEqual([segment["name"] for segment in image.segments], ["__TEXT", "__DATA", "__LINKEDIT"])
            self.assertEqual([segment["protection"] for segment in image.segments], [5, 3, 1])
            end = 0
            for segment in image.segments:
                with self.subTest(f"{name} {segment['name']}"):
                    self.assertEqual(segment["address"] % page, 0)
                    self.assertEqual(segment["file_offset"] % page, 0)
                    self.assertEqual(segment["file_offset"], end)
                    self.assertLessEqual(segment["file_size"], segment["size"])
                end = segment["file_offset"] + segment["file_size"]
            self.assertEqual(end, len(image.data), name)

    def test_has_no_local_symbols(self):
        for name, image in self.images.items():
            self.assertEqual(image.local_symbol_count(), 0, name)

    def test_has_a_valid_signature_in_the_form_of_other_extensions(self):
        for name, image in self.images.items():
            with self.subTest(name):
                offset, size = (image.number(mach_o.LC_CODE_SIGNATURE, field) for field in (8, 12))
                self.assertEqual(offset + size, len(image.data))
                code = image.data[:offset]
                blobs = code_signature.read_blobs(image.data[offset:])
                self.assertEqual(list(blobs), [code_signature.CODE_DIRECTORY_SLOT, code_signature.REQUIREMENTS_SLOT])
                self.assertEqual(blobs[code_signature.REQUIREMENTS_SLOT], code_signature.NO_REQUIREMENTS)
                directory = blobs[code_signature.CODE_DIRECTORY_SLOT]
                self.assertEqual(code_signature.check_directory(directory, code, blobs), ("sha1", self.identifier))

    def test_tells_nothing_of_where_it_was_built(self):
        known = re.compile(rb"/(System/Library|Library|User/Library|usr/lib)/[^\0]*\.(framework/\w+|dylib|png|plist|lockbundle/\w+|bundle(/\w+)?)$")
        for path in re.findall(rb"(?<![ -~])/[ -~]{3,}(?=\0)", CONTENTS[self.path]):
            self.assertRegex(path, known)
        for trace in (str(SOURCES).encode(), b".cpp", b".hpp", b"clang", b"/tmp/", b"/home/"):
            self.assertNotIn(trace, CONTENTS[self.path])


class Library(Code, unittest.TestCase):
    path = LIBRARY
    libraries = LIBRARIES
    symbols = "platform_symbols.txt"
    exports = {f"_{name}" for name in (SOURCES / "tests/exported_names.txt").read_text().split()}
    identifier = "org.solvane.Solvane"
    instructions = 5_000
    selectors = 150
    texts = 50

    def test_is_no_larger_than_it_was(self):
        self.assertLessEqual(len(self.images["armv7"].data), 62_000)
        self.assertLessEqual(len(self.images["arm64"].data), 76_000)

    def test_has_two_initialisers_in_order(self):
        for name, image in self.images.items():
            with self.subTest(name):
                first, second = (address & ~1 for address in image.initialisers())
                telling = {"_dlopen", "_objc_autoreleasePoolPush"}
                self.assertEqual(calls_between(name, self.slices[name][0], first, first + 0x120) & telling, telling)
                self.assertEqual(calls_between(name, self.slices[name][0], second, second + 0x80) & telling, {"_objc_autoreleasePoolPush"})


class Page(Code, unittest.TestCase):
    path = PAGE_CODE
    libraries = PAGE_LIBRARIES
    symbols = "page_symbols.txt"
    exports = set()
    identifier = "org.solvane.Solvane.settings"
    instructions = 500
    selectors = 30
    texts = 15

    def test_has_one_initialiser(self):
        for name, image in self.images.items():
            with self.subTest(name):
                (only,) = (address & ~1 for address in image.initialisers())
                self.assertIn("_objc_autoreleasePoolPush", calls_between(name, self.slices[name][0], only, only + 0x80))


# What a slice's code and its stubs are, and the processors of the oldest phones: those of the iPhone 4 and 5s.
TRIPLES = {"armv7": ("thumbv7-apple-ios", "armv7-apple-ios"), "arm64": ("arm64-apple-ios", "arm64-apple-ios")}
# What a call may change.
CHANGED_BY_CALLS = {f"x{number}" for number in range(19)}
PROCESSORS = {"armv7": "cortex-a8", "arm64": "apple-a7"}


def listing(architecture, data, triple, *options):
    return subprocess.run(
        ["llvm-objdump-19", "--disassemble", f"--triple={triple}", f"--mcpu={PROCESSORS[architecture]}", *options, "-"],
        input=data, capture_output=True, check=True,
    ).stdout.decode(errors="replace").splitlines()  # fmt: skip


def disassembled(architecture, data):
    """How many instructions a slice has, and the lines of those that its oldest processor does not know."""
    code_triple, stubs_triple = TRIPLES[architecture]
    # A listing of this kind knows of the constants between the instructions.
    code = [line for line in listing(architecture, data, code_triple, "--macho") if "@ KIND_" not in line]
    stubs = listing(architecture, data, stubs_triple, "--section=__stubs", "--section=__stub_helper")
    return len(code) + len(stubs), [line for line in code + stubs if re.search(r"\t\.(short|long)\b|<unknown>", line)]


def selectors_loaded(image):
    """Of the arm64 slice: the addresses of the references to selectors that its code reads, and the instructions that ask whether
    such a selector is there."""
    references = image.sections["__DATA", "__objc_selrefs"]
    pages = {}
    selectors = set()
    loaded = set()
    questions = []
    for line in listing("arm64", image.data, TRIPLES["arm64"][0], "--section=__text", "--no-show-raw-insn"):
        found = re.match(r"\s*[0-9a-f]+:\s+([a-z.]+)\s*([^,]*)(?:, (.*))?", line)
        if not found:
            continue
        instruction, first, rest = found.groups(default="")
        if instruction in ("cbz", "cbnz", "tbz", "tbnz", "cmp", "tst") and (first in selectors or rest in selectors):
            questions.append(line)
        selectors.discard(first)
        page = pages.pop(first, None)
        if instruction == "adrp":
            pages[first] = int(re.match(r"0x([0-9a-f]+)", rest)[1], 16)
        elif instruction == "ldr":
            by_page = re.fullmatch(r"\[(x\d+)(?:, #0x([0-9a-f]+))?\]", rest)
            near = re.match(r"0x([0-9a-f]+)", rest)
            base = page if by_page and by_page[1] == first else pages.get(by_page[1]) if by_page else None
            address = int(near[1], 16) if near else base + int(by_page[2] or "0", 16) if base is not None else -1
            if 0 <= address - references["address"] < references["size"]:
                loaded.add(address)
                selectors.add(first)
        elif instruction in ("bl", "blr"):
            selectors -= CHANGED_BY_CALLS
    return loaded, questions


def calls_between(architecture, data, first, end):
    """The symbols of other libraries that the code between two addresses calls."""
    calls = set()
    for line in listing(architecture, data, TRIPLES[architecture][0], "--macho"):
        found = re.match(r"\s*([0-9a-f]+):.*symbol stub for: (\S+)", line)
        if found and first <= int(found[1], 16) < end:
            calls.add(found[2])
    return calls


if __name__ == "__main__":
    unittest.main()
