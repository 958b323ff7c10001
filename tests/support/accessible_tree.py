"""What a screen reader finds of a program's windows, through the accessibility bus, as one JSON
object.

    accessible_tree.py PROCESS                 all that shows, from each window downwards:
                                               {"objects": […]}
    accessible_tree.py PROCESS press ROLE NAME  presses the first such object: {"done": true}

Each look is a process of its own: the library keeps states and children that it has once seen, and
doesn't always hear of their change.
"""

import json
import sys
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# The library's older names work with every version of it.
warnings.simplefilter("ignore", DeprecationWarning)
found = []


def states_of(node):
    return [state.value_nick for state in node.get_state_set().get_states()]


def text_of(node):
    text = node.get_text_iface()
    return Atspi.Text.get_text(text, 0, -1) if text else ""


def actions_of(node):
    action = node.get_action_iface()
    return [Atspi.Action.get_action_name(action, i)
            for i in range(Atspi.Action.get_n_actions(action))] if action else []


def described(node, states, depth, window):
    place = node.get_component_iface().get_extents(Atspi.CoordType.SCREEN) \
        if node.get_component_iface() else None
    return {"role": node.get_role_name(), "name": node.get_name() or "",
            "description": node.get_description() or "", "states": states, "depth": depth,
            "text": text_of(node), "actions": actions_of(node), "window": window,
            "place": [place.x, place.y, place.width, place.height] if place else [0, 0, 0, 0]}


def walk(node, depth, window, objects):
    try:
        states = states_of(node)
        if depth > 0 and not {"showing", "visible"} <= set(states):
            return
        if depth > 0:
            window = window or node.get_name() or "?"
            objects.append(described(node, states, depth, window))
            found.append(node)
        children = [node.get_child_at_index(i) for i in range(node.get_child_count())]
    except GLib.Error:
        return  # it has gone meanwhile
    for child in children:
        if child:
            walk(child, depth + 1, window, objects)


def tree(process):
    found.clear()
    objects = []
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        try:
            program = desktop.get_child_at_index(index)
            if program and program.get_process_id() == process:
                walk(program, 0, "", objects)
        except GLib.Error:
            continue
    return {"objects": objects}


def press(process, role, name):
    for index, seen in enumerate(tree(process)["objects"]):
        if (seen["role"], seen["name"]) == (role, name) and "Press" in seen["actions"]:
            action = found[index].get_action_iface()
            return {"done": Atspi.Action.do_action(action, seen["actions"].index("Press"))}
    return {"done": False}


PATIENCE = 60000  # milliseconds, for machines that are busy

Atspi.init()
Atspi.set_timeout(PATIENCE, PATIENCE)
process_id = int(sys.argv[1])
print(json.dumps(press(process_id, *sys.argv[3:]) if sys.argv[2:] else tree(process_id)))
