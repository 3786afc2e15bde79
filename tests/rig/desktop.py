"""Windows, keys and pictures of the X display."""

import subprocess
import sys
import time

from rig import drag_source
from rig.waiting import output, wait_for


def press_key(key):
    output("xdotool", "key", key)


def press_until(key, condition):
    """Presses a key until `condition` holds, as a new window may miss it; returns whether it does."""
    def pressed():
        press_key(key)
        return wait_for(condition, 2)
    return wait_for(pressed)


def type_text(text):
    output("xdotool", "type", text)


def click(x=450, y=340, button=1):
    """Clicks on the active window, near its middle unless told."""
    output("xdotool", "getactivewindow", "mousemove", "--window", "%1", str(x), str(y), "click", str(button))


def drop(window, x, y, mime_type, data):
    """Drags data from another program to a point of the window, and drops it; returns whether a drag has ended."""
    def move(*arguments):
        output("xdotool", "mousemove", *map(str, arguments))
        time.sleep(0.2)  # GTK and the web view follow the pointer in steps
    with subprocess.Popen([sys.executable, "-B", drag_source.__file__, mime_type, data]) as source:
        try:
            origin = wait_for(lambda: windows(drag_source.TITLE, "--onlyvisible"))[-1]
            output("xdotool", "windowmove", "--sync", origin, "0", "0", "windowactivate", "--sync", origin)
            move("--window", origin, 30, 60)
            output("xdotool", "mousedown", "1")
            for step in range(5):
                move("--window", origin, 40 + 10 * step, 60)
            for step in range(5):
                move("--window", window, x, y + step)
            output("xdotool", "mouseup", "1")
            return wait_for(lambda: source.poll() is not None, 3)
        finally:
            source.kill()
            output("xdotool", "mouseup", "1")


def active_window_id():
    return output("xdotool", "getactivewindow").decode().strip()


def active_window():
    """The name of the window that has the keyboard."""
    return output("xdotool", "getactivewindow", "getwindowname").decode().strip()


def windows(name, *options):
    """The identifiers of the windows of that name."""
    return output("xdotool", "search", *options, "--name", f"^{name}$").decode().split()


def window_state(name):
    """"Normal" or "Iconic"; empty when there is no such window."""
    for window in windows(name):
        if b"window state: " in (state := output("xprop", "-id", window, "WM_STATE")):
            return state.split(b"window state: ")[1].split()[0].decode()
    return ""


def is_blank(name):
    """Whether the middle of the window has only one colour."""
    shown = windows(name, "--onlyvisible")
    content = output("import", "-window", shown[0], "png:-") if shown else b""
    middle = ("-gravity", "center", "-crop", "90%x80%+0+0")
    return output("convert", "png:-", *middle, "-format", "%k", "info:", input=content) in (b"", b"1")


def wait_for_active_window(name):
    assert wait_for(lambda: active_window() == name), f"'{active_window()}' has the keyboard"


def wait_for_window(name, state):
    assert wait_for(lambda: window_state(name) == state), f"the window is {window_state(name) or 'gone'}"
