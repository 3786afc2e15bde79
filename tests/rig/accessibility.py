"""What a screen reader is told about a program, by AT-SPI: accessibility.py PROCESS [press]

Prints the elements of all windows of the program as JSON. When told so, it instead presses the buttons of its sheet and
asks for the sheet until it is gone. The library is used in a process of its own for each look: it does not forget
windows that are gone, and it crashes when its cache is cleared while they change.
"""

import collections
import json
import pathlib
import sys

import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # the version has to be chosen first

from rig.waiting import output  # noqa: E402

RIG_PARENT = pathlib.Path(__file__).resolve().parents[1]
Element = collections.namedtuple("Element", "role name states")


def elements(process):
    """The elements of all windows of a program; empty when it has none."""
    return [Element(*element) for element in json.loads(look(process) or "[]")]


def press_buttons(process):
    look(process, "press")


def look(process, *order):
    return output(sys.executable, "-B", "-m", "rig.accessibility", str(process), *order, cwd=RIG_PARENT)


def descendants(node):
    for index in range(node.get_child_count()):
        if child := node.get_child_at_index(index):
            yield child
            yield from descendants(child)


def described(node):
    return node.get_role_name(), node.get_name(), [state.value_nick for state in node.get_state_set().get_states()]


def press_and_ask(program):
    program.set_cache_mask(Atspi.Cache.NONE)
    sheet = program.get_child_at_index(1)
    for node in descendants(program):
        if node.get_role() == Atspi.Role.PUSH_BUTTON:
            Atspi.Action.do_action(node, 0)
    for _ in range(100_000):
        if not sheet or program.get_child_at_index(1) != sheet:
            break


def main(process, press=None):
    desktop = Atspi.get_desktop(0)
    programs = [desktop.get_child_at_index(index) for index in range(desktop.get_child_count())]
    for program in programs:
        if program and program.get_process_id() == int(process):
            if press:
                press_and_ask(program)
            else:
                print(json.dumps([described(node) for node in descendants(program)]))


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except GLib.Error:
        pass  # a window has gone meanwhile
