"""What assistive tools are told of a window: role, name and value of each control."""

from keyboard import WHOLE
from screen import Atspi, children, is_enabled, is_shown, role_of

State = Atspi.StateType

CONTROLS = {"button", "toggle button", "text", "password text", "combo box", "check box", "radio button",
            "table", "tree", "list", "spin button", "chart", "image", "link"}


def parts(node):
    yield node
    if role_of(node) not in WHOLE:
        for child in children(node):
            yield from parts(child)


def shown_parts(window):
    return [it for it in parts(window) if is_shown(it)]


def takes_keys(node):
    """A label whose words the mouse can mark is none."""
    return (is_enabled(node) and node.get_state_set().contains(State.FOCUSABLE)
            and role_of(node) != "label")


def has_focus(node):
    return node.get_state_set().contains(State.FOCUSED)


def told(node):
    return f"{role_of(node)} “{node.get_name()}”"


def complaints(window):
    """What a window keeps from the tools, a line each."""
    found = []
    for node in shown_parts(window):
        found += [f"{told(node)}: {it}" for it in lacks(node)]
    return found


def lacks(node):
    role = role_of(node)
    if takes_keys(node):
        if not node.get_name():
            yield "no name"
        if role not in CONTROLS:
            yield "a role that tells nothing"
    if role in VALUES:
        yield from VALUES[role](node)


def field(node):
    if node.get_text_iface() is None:
        yield "no text"


def box(node):
    """It is called by what is chosen; what it is for is its description."""
    if not node.get_description():
        yield "doesn't tell what it is for"
    for inner in children(node):
        if role_of(inner) == "text":
            yield from field(inner)


def number(node):
    value = node.get_value_iface()
    if value is None:
        yield "no value"
    elif not value.get_minimum_value() <= value.get_current_value() <= value.get_maximum_value():
        yield "a value out of its range"


def bar(node):
    if not node.get_name():
        yield "no name"
    yield from number(node)


def table(node):
    grid = node.get_table_iface()
    if grid is None:
        yield "no rows"
        return
    rows, columns = grid.get_n_rows(), grid.get_n_columns()
    if rows == 0:
        if not node.get_description():
            yield "empty, and doesn't tell why"
        return
    for column in range(columns):
        if column > 0 and not grid.get_column_description(column):
            yield f"column {column} has no name"
    for row in sorted({0, rows - 1}):
        for column in range(columns):
            cell = grid.get_accessible_at(row, column)
            if cell is None or cell.get_name() is None:
                yield f"no cell at {row}, {column}"
            elif cell.get_name().endswith("…"):
                yield f"a cut text at {row}, {column}: {cell.get_name()}"


def plot(node):
    if not node.get_name():
        yield "no name"
    if not node.get_description():
        yield "doesn't tell its last day"


VALUES = {"text": field, "combo box": box, "spin button": number, "progress bar": bar,
          "table": table, "chart": plot}
