"""What a screen reader is told about a program, by AT-SPI."""

import collections

import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # the version has to be chosen first

Element = collections.namedtuple("Element", "role name states node")


def elements(process):
    """The elements of all windows of a program; empty when it has none, or when they change meanwhile."""
    try:
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        programs = [desktop.get_child_at_index(index) for index in range(desktop.get_child_count())]
        return [element for program in programs if program and program.get_process_id() == process
                for element in descendants(program)]
    except GLib.Error:
        return []


def descendants(node):
    node.clear_cache()
    for index in range(node.get_child_count()):
        if child := node.get_child_at_index(index):
            states = {state.value_nick for state in child.get_state_set().get_states()}
            yield Element(child.get_role_name(), child.get_name(), states, child)
            yield from descendants(child)


def press(element):
    Atspi.Action.do_action(element.node, 0)
