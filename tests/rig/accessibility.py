"""What a screen reader gets from a program by AT-SPI: accessibility.py PROCESS [ROLE]

Prints the elements of all windows of the program as JSON, without those of its page. With a role, it instead presses
the elements of that role and asks for the sheet, if one is open, until it is gone. The library is used in a process of
its own for each look: it does not forget windows that are gone, and it crashes when its cache is cleared while they
change.
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
Element = collections.namedtuple("Element", "role name states description")


def elements(process):
    """The elements of all windows of a program, without those of its page; empty when it has none."""
    return [Element(*element) for element in json.loads(look(process) or "[]")]


def press(process, role):
    """Presses the elements of a role, such as "push button"."""
    look(process, role)


def look(process, *role):
    return output(sys.executable, "-B", "-m", "rig.accessibility", str(process), *role, cwd=RIG_PARENT)


def descendants(node, process):
    """The elements below `node`, without those of the page: its process answers nothing while a question is open."""
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child and child.get_process_id() == process:
            yield child
            yield from descendants(child, process)


def described(node):
    states = [state.value_nick for state in node.get_state_set().get_states()]
    return node.get_role_name(), node.get_name(), states, node.get_description()


def press_and_ask(program, role):
    program.set_cache_mask(Atspi.Cache.NONE)
    sheet = program.get_child_at_index(1)
    for node in descendants(program, program.get_process_id()):
        if node.get_role_name() == role:
            Atspi.Action.do_action(node, 0)
    if sheet and sheet.get_state_set().contains(Atspi.StateType.MODAL):
        for _ in range(100_000):
            if program.get_child_at_index(1) != sheet:
                break


def main(process, role=None):
    desktop = Atspi.get_desktop(0)
    programs = [desktop.get_child_at_index(index) for index in range(desktop.get_child_count())]
    for program in programs:
        if program and program.get_process_id() == int(process):
            if role:
                press_and_ask(program, role)
            else:
                print(json.dumps([described(node) for node in descendants(program, int(process))]))


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except GLib.Error:
        pass  # a window has closed meanwhile
