"""Reads the open dialog as a screen reader does, by AT-SPI and from a process of its own.

    screen_reader.py LIST       LIST holds a line for every control: role | name | text | numbers, as far as there are

Prints what differs and exits with 1, or uses some of the controls and presses OK.
"""

import sys
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

warnings.simplefilter("ignore", DeprecationWarning)  # other releases know no other names
PATIENCE = 30  # seconds, also for machines that do much else


def wait_for(what, look):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        found = look()
        if found:
            return found
        time.sleep(0.1)
    sys.exit(f"screen_reader: no {what} within {PATIENCE} s")


def children(of):
    each = [of.get_child_at_index(i) for i in range(of.get_child_count())]
    return [child for child in each if child is not None]


def find_dialog():
    for program in children(Atspi.get_desktop(0)):
        for window in children(program):
            if program.get_name() == "morvalis" and window.get_role_name() == "dialog":
                return window
    return None


def line_of(control):
    told = [control.get_role_name(), control.get_name(), control.get_description()]
    value = control.get_value_iface()
    if value is not None:
        told.append(f"{value.get_current_value():g} of {value.get_minimum_value():g}"
                    f" to {value.get_maximum_value():g}")
    if control.get_state_set().contains(Atspi.StateType.CHECKED):
        told.append("checked")
    return " | ".join(part for part in told if part)


def differences(told, expected):
    return [f"- {line}" for line in expected if line not in told] + [
        f"+ {line}" for line in told if line not in expected]


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        expected = file.read().splitlines()
    dialog = wait_for("dialog", find_dialog)
    controls = {}

    def read():
        controls.update({control.get_name(): control for control in children(dialog)})
        return len(controls) >= len(expected)

    wait_for("control more", read)
    told = [line_of(control) for control in controls.values()]
    if differences(told, expected):
        sys.exit("\n".join(["screen_reader: told otherwise:", *differences(told, expected)]))

    def number(name):
        return controls[name].get_value_iface().get_current_value()

    for name, wanted in (("Radius", 60), ("Height", -40), ("Light 1", 90), ("Texture", 7)):
        controls[name].get_value_iface().set_current_value(wanted)
        wait_for(f"{wanted} for {name}", lambda: number(name) == wanted)
    controls["Auto preview"].get_action_iface().do_action(0)
    wait_for("Auto preview off", lambda: controls["Auto preview"].get_description().startswith("off"))
    print("\n".join(told))
    controls["OK"].get_action_iface().do_action(0)


main()
