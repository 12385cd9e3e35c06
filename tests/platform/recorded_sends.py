#!/usr/bin/env python3
"""Compares every message that platform/ sends, with words of both widths, with what the class tables of real systems declare.

usage: recorded_sends.py SOURCE-FOLDER [FLAG ...]

The flags are those that the phone's library is compiled with. The compiler tells what is sent: it writes every function of the
headers, with the encoding that a checked send compares.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

TRIPLES = {"arm64": "arm64-apple-ios7.0", "armv7": "armv7-apple-ios7.0"}

# Members that are templates are compiled where they are used.
USES = """
void use(NSArray* array, NSSet* set, NSDictionary* dictionary, NSMutableDictionary* mutable_)
{
    array->objectAtIndex(0);
    set->anyObject();
    dictionary->objectForKey(nullptr);
    mutable_->objectForKey(nullptr);
}
"""

# What some of the systems lack, and why it may be sent.
LACKING = {
    ("SBApplicationController", "applicationWithBundleIdentifier:"): "sent where the controller says that it responds to it",
    ("SBApplicationController", "applicationWithDisplayIdentifier:"): "sent where the controller says that it responds to it",
    ("NSMutableArray", "init"): "NSObject's: what a class cluster's hidden subclass has of its own is not in the tables",
    ("NSMutableDictionary", "init"): "NSObject's: what a class cluster's hidden subclass has of its own is not in the tables",
}


def read_table(file):
    """{(class, kind, name): {processor: [encodings, "-" where a table lacks the name]}}"""
    lines = [line for line in file.read_text().splitlines() if not line.startswith("#")]
    processors = [title.split()[1] for title in lines[0].split("\t")[3:]]
    table = {}
    for line in lines[1:]:
        cls, kind, name, *cells = line.split("\t")
        row = table.setdefault((cls, kind, name), {processor: [] for processor in TRIPLES})
        for processor, cell in zip(processors, cells):
            if cell:
                row[processor].append(cell.split(" (")[0])
    return table


def selector_in(symbol):
    """The text that a symbol has as its first template argument."""
    letters = re.search(r"tlA\d+_c((?:Lc\d+E)+)", symbol)
    return "".join(chr(int(code)) for code in re.findall(r"Lc(\d+)E", letters.group(1)))


def functions_in(module):
    """{function: the symbols that it mentions}, and {encoding's symbol: its text}"""
    functions, texts, current = {}, {}, None
    for line in module.splitlines():
        if text := re.match(r'@"?([\w.]*methodEncoding\w*)"? = .*\bc"(.*?)\\00"', line):
            texts[text.group(1)] = text.group(2)
        elif begun := re.match(r'define .*?@"?([\w.]+)"?\(', line):
            current = functions.setdefault(begun.group(1), [])
        elif line == "}":
            current = None
        elif current is not None:
            current += re.findall(r'@"?([\w.]+)"?', line)
    return functions, texts


def demangled(symbols):
    given = subprocess.run(["llvm-cxxfilt-19"], input="\n".join(symbols), capture_output=True, text=True, check=True)
    return dict(zip(symbols, given.stdout.splitlines()))


def sends_in(module):
    """(class, kind, selector, encoding) of each send."""
    functions, texts = functions_in(module)
    is_send = re.compile(r"_*Z\d+(send|sendVariadic)I").match
    names = demangled(sorted({symbol for mentioned in functions.values() for symbol in mentioned if is_send(symbol)}))
    for mentioned in functions.values():
        named = None
        for symbol in mentioned:
            if re.match(r"_*Z10classNamedI", symbol):
                named = selector_in(symbol)
            if not is_send(symbol):
                continue
            check = next(inner for inner in functions[symbol] if re.match(r"_*Z11checkSendToI", inner))
            encoding = texts[next(inner for inner in functions[check] if "methodEncoding" in inner)]
            receiver = re.search(r">\((\w+)", names[symbol]).group(1)
            if receiver == "objc_class":
                yield named, "+", selector_in(symbol), encoding
            else:
                yield receiver, "-", selector_in(symbol), encoding


def compared(encoding):
    """An encoding without what makes no difference to a send: what a pointer points to, the kinds of objects."""
    return re.sub(r"\^[@v#]", "^", re.sub(r"\^\{\w+=\}|@\?", "@", encoding))


def compile_module(sources, triple, flags):
    headers = sorted(header.relative_to(sources) for header in (sources / "platform").rglob("*.hpp"))
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder) / "sends.cpp"
        source.write_text("".join(f'#include "{header}"\n' for header in headers) + USES)
        command = ["clang++-19", f"--target={triple}", *flags, "-DSOLVANE_CHECKED_SENDS", "-O0", "-femit-all-decls", "-S", "-emit-llvm",
                   "-o", "-", source]
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    sources, flags = pathlib.Path(sys.argv[1]), sys.argv[2:]
    table = read_table(sources / "tests/platform/recorded_interface.tsv")
    # A class is recorded whole where its variables are: what else it is sent, no phone answers.
    recorded_whole = {cls for cls, kind, _ in table if kind == "variable"}
    differences = set()
    for processor, triple in TRIPLES.items():
        sends = set(sends_in(compile_module(sources, triple, flags)))
        recorded = [send for send in sends if send[:3] in table]
        print(f"{processor}: {len(sends)} messages, of which {len(recorded)} are recorded")
        if len(recorded) < 150:
            sys.exit("FAILED: that is too few")
        for cls, kind, name, _ in sends - set(recorded):
            if cls in recorded_whole:
                differences.add(f"{kind}[{cls} {name}] is on no phone")
        for cls, kind, name, encoding in recorded:
            for declared in table[cls, kind, name][processor]:
                if declared == "-":
                    if (cls, name) not in LACKING:
                        differences.add(f"{kind}[{cls} {name}] is not on every system")
                elif compared(declared) != compared(encoding):
                    differences.add(f"{kind}[{cls} {name}] is sent as {encoding} to {processor}, recorded is {declared}")
    if differences:
        sys.exit("FAILED:\n" + "\n".join(sorted(differences)))


main()
