"""The program's windows as assistive tools see them: names, roles, places and who has the focus.

Needs a session bus; the accessibility bus is started over it when first asked for.
"""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


def everything(program):
    """Each visible thing of the program, from the outermost inwards."""
    desktop = Atspi.get_desktop(0)
    waiting = [desktop.get_child_at_index(i) for i in range(desktop.get_child_count())]
    waiting = [each for each in waiting if each and each.get_name() == program]
    while waiting:
        each = waiting.pop(0)
        try:
            each.clear_cache()
            yield each
            waiting += [each.get_child_at_index(i) for i in range(each.get_child_count())]
            waiting = [child for child in waiting if child]
        except GLib.Error:
            continue  # it went away while we looked


def has(each, state):
    return each.get_state_set().contains(state)


def find(program, name, role=None):
    """The first showing thing of that name, and role if one is given. None if there is none."""
    for each in everything(program):
        try:
            if (each.get_name() == name and has(each, Atspi.StateType.SHOWING)
                    and role in (None, each.get_role_name())):
                return each
        except GLib.Error:
            continue
    return None


def focused(program):
    """The innermost thing that has the focus."""
    found = None
    for each in everything(program):
        try:
            if has(each, Atspi.StateType.FOCUSED):
                found = each
        except GLib.Error:
            continue
    return found


def area_of(each):
    """Where it is on the screen; what is scrolled away has a place too, though not one to click at."""
    return each.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
