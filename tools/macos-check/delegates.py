#!/usr/bin/python3
"""Finds in Objective-C++ files what the compiler does not warn of.

    delegates.py BUILD_DIRECTORY FILE...

- A method that no interface, superclass or protocol declares: a misspelt optional delegate method looks like that.
- A use of what only GNUstep declares, and a Mac therefore lacks.
"""
import pathlib
import sys

from clang.cindex import Config, CompilationDatabase, CursorKind, Index

Config.set_library_file("/usr/lib/llvm-14/lib/libclang-14.so.1")

METHODS = {CursorKind.OBJC_INSTANCE_METHOD_DECL, CursorKind.OBJC_CLASS_METHOD_DECL}
SCOPES = {CursorKind.TRANSLATION_UNIT, CursorKind.NAMESPACE, CursorKind.LINKAGE_SPEC, CursorKind.UNEXPOSED_DECL}
DECLARATIONS = {CursorKind.OBJC_INTERFACE_DECL, CursorKind.OBJC_PROTOCOL_DECL, CursorKind.OBJC_CATEGORY_DECL}
PARENTS = {CursorKind.OBJC_SUPER_CLASS_REF, CursorKind.OBJC_PROTOCOL_REF}
GNUSTEP_ONLY = ("/GNUstepBase/", "/GNUstepGUI/")


def parse(database, path):
    command = list(database.getCompileCommands(path)[0].arguments)
    first = next(i for i, argument in enumerate(command) if argument.startswith("--target="))
    last = next(i for i, argument in enumerate(command) if argument in ("-o", "-c"))
    unit = Index.create().parse(path, args=["-x", "objective-c++", *command[first:last]])
    errors = [str(diagnostic) for diagnostic in unit.diagnostics if diagnostic.severity >= diagnostic.Error]
    if errors:
        raise SystemExit("\n".join(errors))
    return unit.cursor


def kind(cursor):
    try:
        return cursor.kind
    except ValueError:  # a kind that the Python module of the same version does not know
        return CursorKind.UNEXPOSED_EXPR


def top_level(cursor):
    for child in cursor.get_children():
        yield child
        if kind(child) in SCOPES:
            yield from top_level(child)


def declared_name(cursor):
    """The class or protocol that a declaration is about; a category is about its class."""
    if kind(cursor) != CursorKind.OBJC_CATEGORY_DECL:
        return cursor.spelling
    return next(child.spelling for child in cursor.get_children() if kind(child) == CursorKind.OBJC_CLASS_REF)


def method(cursor):
    return ("+" if kind(cursor) == CursorKind.OBJC_CLASS_METHOD_DECL else "-") + cursor.spelling


def interfaces(unit):
    """For each class and protocol the methods that it declares and the names that it inherits from."""
    found = {}
    for cursor in top_level(unit):
        if kind(cursor) in DECLARATIONS:
            methods, parents = found.setdefault(declared_name(cursor), (set(), set()))
            children = list(cursor.get_children())
            methods.update(method(child) for child in children if kind(child) in METHODS)
            parents.update(child.spelling for child in children if kind(child) in PARENTS)
    return found


def known_methods(name, found):
    names, pending = set(), [name]
    while pending:
        current = pending.pop()
        if current not in names and current in found:
            names.add(current)
            pending.extend(found[current][1])
    return set().union(*(found[current][0] for current in names))


def undeclared_methods(own, found):
    for cursor in own:
        if kind(cursor) == CursorKind.OBJC_IMPLEMENTATION_DECL:
            known = known_methods(cursor.spelling, found)
            for child in cursor.get_children():
                if kind(child) in METHODS and method(child) not in known:
                    yield child, f"'{child.spelling}' is declared nowhere: a misspelt delegate method?"


def gnustep_names(cursor):
    for child in cursor.walk_preorder():
        referenced = child.referenced if kind(child) != CursorKind.UNEXPOSED_EXPR else None
        header = referenced.location.file.name if referenced and referenced.location.file else ""
        if any(part in header for part in GNUSTEP_ONLY):
            yield child, f"'{referenced.spelling}' is declared by GNUstep alone"


def main(build, *files):
    database = CompilationDatabase.fromDirectory(build)
    findings = set()
    for path in (str(pathlib.Path(file).resolve()) for file in files):
        unit = parse(database, path)
        own = [cursor for cursor in top_level(unit)
               if cursor.location.file and cursor.location.file.name == path]
        found = list(undeclared_methods(own, interfaces(unit)))
        for cursor in own:
            found += gnustep_names(cursor)
        findings.update(f"{path}:{cursor.location.line}: {finding}" for cursor, finding in found)
    print("\n".join(sorted(findings)), end="\n" if findings else "")
    return 1 if findings else 0


sys.exit(main(*sys.argv[1:]))
