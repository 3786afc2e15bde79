"""Windows, keys and pictures of the X display."""

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


def active_window_id():
    return output("xdotool", "getactivewindow")


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
