"""The window, its keys, its menu, and the settings that it follows."""

import contextlib
import pathlib
import re
import subprocess
import threading

import pytest

from rig import accessibility, desktop
from rig.installer import TITLE, WEB_PROCESS
from rig.page_server import page, script_page
from rig.waiting import output, wait_for


def test_keys_zoom_the_page(installer, server, start_with):
    server.expect("/ready")
    changes = []
    for change in "/larger", "/smaller":
        installer.answers[change] = lambda request: changes.append(request.path) or page("")
    start_with(script_page("""
        let width
        onload = () => { width = innerWidth; fetch('/ready') }
        onresize = () => {
            if (innerWidth != width) fetch(innerWidth < width ? '/larger' : '/smaller')
            width = innerWidth }"""))
    installer.wait_for_requests()
    desktop.wait_for_active_window(TITLE)
    for key, change in ("ctrl+plus", "/larger"), ("ctrl+0", "/smaller"), ("ctrl+minus", "/smaller"):
        changes.clear()
        assert desktop.press_until(key, lambda: change in changes), f"{key} has led to {changes}"


def test_without_a_display_the_program_says_so_and_fails(installer):
    del installer.environment["DISPLAY"]
    installer.start()
    assert installer.exit_status() == 1
    installer.wait_for_log("no display could be opened")


@contextlib.contextmanager
def settings_portal(scheme):
    """A settings portal whose preferred colour scheme is `scheme`; returns a function that changes it."""
    name, path, interface = ("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                             "org.freedesktop.portal.Settings")
    def call(method, *arguments):
        command = ["gdbus", "call", "--session", "-d", name, "-o", path, "-m", f"org.freedesktop.DBus.Mock.{method}"]
        subprocess.run([*command, *arguments], check=True, capture_output=True)
    with subprocess.Popen(["/usr/bin/python3", "-m", "dbusmock", "--session", name, path, interface],
                          stdout=subprocess.DEVNULL) as portal:
        try:
            output("gdbus", "wait", "--session", "--timeout", "20", name)
            call("AddMethod", interface, "Read", "ss", "v", f"ret = dbus.UInt32({scheme}, variant_level=1)")
            yield lambda value: call("EmitSignal", interface, "SettingChanged", "ssv",
                                     f"[<'org.freedesktop.appearance'>, <'color-scheme'>, <<uint32 {value}>>]")
        finally:
            portal.terminate()


def test_pages_follow_the_colour_scheme_of_the_desktop(installer, server):
    server.expect(installer.first_path(), script_page("""
        const dark = matchMedia('(prefers-color-scheme: dark)')
        const tell = () => fetch(dark.matches ? '/dark' : '/light')
        dark.onchange = tell
        if (dark.matches) tell()"""))
    server.expect("/dark")
    with settings_portal(scheme=1) as change:
        installer.start()
        installer.wait_for_requests()
        server.expect("/light")
        change(2)
        installer.wait_for_requests()


def test_a_slow_page_shows_its_progress(installer, server, start_with):
    answered = threading.Event()
    start_with(lambda request: answered.wait(60) and page("first"))
    shown = lambda: any(element.role == "progress bar" for element in accessibility.elements(installer.process.pid))
    assert wait_for(shown)
    answered.set()
    installer.wait_for_requests()
    assert wait_for(lambda: not shown())


def test_the_context_menu_offers_the_clipboard_and_reload_and_nothing_that_leaves_the_page(
        installer, server, start_with):
    server.expect("/ready")
    start_with("""<!doctype html>
        <style>body { margin: 0 } a, input { display: block; height: 200px }</style>
        <a href='/x'>Link</a><input><script>onload = () => fetch('/ready')</script>""")
    installer.wait_for_requests()
    installer.wait_for_log(server.url("/first"))
    desktop.wait_for_active_window(TITLE)
    def open_menu(y, *items):
        """Clicks again if the page has missed the click. GTK 4.14 gives a menu's items no names."""
        def opened():
            desktop.press_key("Escape")
            desktop.click(10, y, button=3)
            return wait_for(lambda: installer.menu() in (list(items), [""] * len(items)), 3)
        assert wait_for(opened), f"the menu has {installer.menu()}"
    for y, items in (100, ["Copy Link Location"]), (300, ["Cut", "Copy", "Paste", "Delete", "Select All"]):
        open_menu(y, *items)
        desktop.press_key("Escape")
        assert wait_for(lambda: not installer.menu())
    open_menu(500, "Reload")
    server.expect(installer.first_path())
    accessibility.press(installer.process.pid, "menu item")
    installer.wait_for_requests()


def test_scripts_get_sheets_whose_message_can_be_selected(installer, server, start_with):
    server.expect("/null")
    start_with(script_page(
        "onload = () => setTimeout(() => { alert('Take <b>care</b>.'); location = '/' + prompt('Name?') })"))
    installer.wait_for_sheet(TITLE, "Take <b>care</b>.", "OK")
    message = [element for element in accessibility.elements(installer.process.pid) if "<b>" in element.name]
    assert "focusable" in message[0].states
    installer.press_sheet_button()
    installer.wait_for_requests()


def loads_graphics_driver(process):
    return "libGLESv2" in pathlib.Path(f"/proc/{process}/maps").read_text()


@pytest.mark.parametrize("choice", [{}, {"GSK_RENDERER": "cairo"}], ids=["default", "chosen"])
def test_the_users_choice_of_a_renderer_alone_loads_the_graphics_driver_and_reaches_the_tools(
        installer, server, start, choice):
    installer.environment |= choice
    installer.tool("install tool", "env | grep -E '^(GSK|GDK|WEBKIT)_' >\"$0.environment\"")
    state = installer.command("getstate")
    server.expect(state)
    installer.answers["/back"] = page("back", "/last")
    server.expect("/last")
    start(state)
    installer.wait_for_requests()
    installer.wait_for_log(server.url("/last"))
    loads = lambda: {loads_graphics_driver(process)
                     for process in (installer.process.pid, *installer.processes(WEB_PROCESS))}
    assert wait_for(lambda: (True in loads()) == bool(choice))
    inherited = (installer.tools / "install tool.environment").read_text()
    assert inherited == "".join(f"{name}={value}\n" for name, value in choice.items())


def test_the_inspector_opens_in_developer_mode(installer, server, start_with):
    """It takes the lower half of the window, and so resizes the page."""
    installer.configuration["developerMode"] = "yes"
    server.expect("/ready")
    resized = []
    installer.answers["/resized"] = lambda request: resized.append(request.path) or page("")
    start_with(script_page("onload = () => { fetch('/ready'); "
                                                      "onresize = () => fetch('/resized') }"))
    installer.wait_for_requests()
    desktop.wait_for_active_window(TITLE)
    assert desktop.press_until("F12", lambda: resized)


CONSOLE_PAGE = r"""<!doctype html><title>console</title>
<script>onload = () => fetch('/loaded');
console.log('two\nlines\ud800', {answer: 42}, new TypeError('made'));
const console_ = window.webkit?.messageHandlers?.pageConsole;
console_?.postMessage({toString: 1});
console_?.postMessage('sent \u0000\u001b[2J\u009b');
Promise.reject(new Error('promised'));
const {split} = String.prototype;
String.prototype.split = () => { throw 1 };
console.info('lost');
String.prototype.split = split;
unknownFunction();
</script>
<iframe srcdoc="<script>console.error('framed')</script>"></iframe>"""


@pytest.mark.parametrize("mode", [{"developerMode": "yes"}, {}], ids=["on", "off"])
def test_the_console_of_pages_is_on_standard_output_in_developer_mode_only(installer, server, start_with, mode):
    installer.configuration |= mode
    server.expect("/loaded")
    start_with(CONSOLE_PAGE)
    installer.wait_for_requests()
    if mode:
        installer.wait_for_log("framed")
        installer.wait_for_log("promised")
    desktop.wait_for_active_window(TITLE)
    installer.close_window()
    printed = [re.sub(r"(:\d+):\d+: ", r"\1: ", line) for line in installer.log().split("\n")
               if re.search(r"two|lines|sent|lost|promised|unknownFunction|framed|error:", line)]
    there = server.url("/first")
    assert sorted(printed) == (sorted([
        there + """:3: log: two\\nlines\ufffd {"answer":42} TypeError: made""",
        "sent \ufffd\\u001b[2J\\u009b",
        there + ":7: error: Unhandled rejection: Error: promised",
        there + ":12: error: ReferenceError: Can't find variable: unknownFunction",
        "about:srcdoc:1: error: framed",
    ]) if mode else [])
