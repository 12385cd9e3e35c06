"""Checks what the compiler refuses to do with platform objects: `refusals_test.py CLANG SOURCE-FOLDER`."""

import subprocess
import sys

PROGRAM = """
#include "platform/UIKit/UILabel.hpp"
#include "platform/runtime/Owned.hpp"
#include "platform/runtime/Strong.hpp"

Owned<UILabel> newLabel();
Strong<UIView> slot;

{}
"""

# What may be written, so that the rest is refused for its own fault alone.
ACCEPTED = {
    "a pointer taken from an owner that lives": "CGRect f() { const Owned<UILabel> label = newLabel(); return label->frame(); }",
    "a message to a temporary": "CGRect f() { return newLabel()->frame(); }",
    "an owner of a superclass": "Owned<UIView> f() { return newLabel(); }",
    "a slot of a superclass": "void f() { slot = newLabel(); }",
    "a result that the pool owns": "UIView* f() { return newLabel().autorelease(); }",
    "a getter of a const receiver": "CGRect f(const UIView* view) { return view->frame(); }",
}

REFUSED = {
    "an object on the stack": ("void f() { UILabel label; }", "deleted"),
    "an object of braces": ("void f() { UILabel label{}; }", "deleted"),
    "an object in a variable": ("UIView view;", "deleted"),
    "an object by new": ("UIView* f() { return new UIView; }", "deleted"),
    "a copied object": ("auto f(UILabel* label) { return *label; }", "deleted"),
    "an assigned object": ("void f(UILabel* to, UILabel* from) { *to = *from; }", "deleted"),
    "a destroyed object": ("void f(UILabel* label) { delete label; }", "deleted"),
    "a pointer taken from a temporary owner": ("CGRect f() { UIView* view = newLabel(); return view->frame(); }", "-Wdangling"),
    "a pointer got from a temporary owner": ("CGRect f() { auto* view = newLabel().get(); return view->frame(); }", "-Wdangling"),
    "a result that its owner releases": (
        "UIView* f() { const Owned<UILabel> label = newLabel(); return label; }",
        "-Wreturn-stack-address",
    ),
    "an owner of a subclass": ("Owned<UILabel> f(Owned<UIView> view) { return view; }", "no viable conversion"),
    "an owner as an argument": ("void f() { send<\"addSubview:\">(slot.get(), newLabel()); }", "plain values"),
    "a setter of a const receiver": ("void f(const UIView* view) { view->setHidden(true); }", "const"),
}


def errors_of(clang, root, snippet):
    command = [clang, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Werror", "-Wno-unused", "-I", root, "-x", "c++", "-"]
    program = PROGRAM.format(snippet)
    done = subprocess.run(command, input=program, capture_output=True, text=True, check=False)
    return done.stderr if done.returncode else ""


def main():
    clang, root = sys.argv[1:]
    failures = []
    for name, snippet in ACCEPTED.items():
        errors = errors_of(clang, root, snippet)
        if errors:
            failures.append(f"refused: {name}\n{errors}")
    for name, (snippet, reason) in REFUSED.items():
        errors = errors_of(clang, root, snippet)
        if reason not in errors:
            failures.append(f"not refused for \"{reason}\": {name}\n{errors}")
    for failure in failures:
        print(failure)
    print(f"{len(ACCEPTED) + len(REFUSED)} snippets, {len(failures)} failures")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
