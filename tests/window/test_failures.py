"""Pages that cannot be loaded, and processes of the web view that crash."""

import os
import signal

import pytest

from rig import desktop
from rig.installer import WEB_PROCESS
from rig.page_server import hang_up, page, script_page
from rig.waiting import output, wait_for
from test_commands import NOT_INSTALLED

KEEP_MEMORY = "window.kept = new Uint8Array(3e8).fill(1);"
LARGE_PAGE = script_page(f"onload = () => {{ {KEEP_MEMORY} fetch('/large') }}")


def test_a_missing_configuration_is_shown_and_the_program_stays(installer):
    installer.configuration = b"garbage"
    installer.start()
    installer.wait_for_sheet("Error", "Initialization failed.\nFailed to load app config from the "
                             f"'{installer.configuration_file}' file.", "OK")
    desktop.wait_for_active_window("Error")
    installer.press_sheet_button()
    installer.wait_for_no_sheet()
    assert installer.is_running()
    installer.close_window()


def try_again(installer, key="Return"):
    """Chooses "Try again" as soon as it is there."""
    missing = len(installer.server.missing())
    assert desktop.press_until(key, lambda: len(installer.server.missing()) < missing)
    installer.wait_for_requests()


def test_a_missing_splash_page_can_be_tried_again(installer, server):
    kept = installer.splash.rename(installer.tools / "kept.html")
    installer.start()
    installer.wait_for_log("Failed to load 'file://")
    kept.rename(installer.splash)
    server.expect(installer.first_path())
    try_again(installer)


def test_a_first_page_without_content_can_be_tried_again(installer, server):
    server.expect(installer.first_path(), lambda request: request.answer("", 204))
    installer.start()
    installer.wait_for_log("(The server sent no page.).")
    server.expect(installer.first_path(), page("first", "/last"))
    server.expect("/last")
    try_again(installer)


def test_a_first_page_out_of_reach_can_be_tried_again(installer, server):
    installer.start(open_server=False)
    installer.wait_for_log("(Could not connect to 127.0.0.1: Connection refused).")
    server.expect(installer.first_path(), page("first", "/last"))
    server.expect("/last")
    server.open()
    try_again(installer, "F5")


FAILED_LOADS = pytest.mark.parametrize("answer, reason", [
    (hang_up, "Connection terminated unexpectedly"),
    (lambda request: request.answer("file", Content_Type="application/x-file"),
     "Files of type application/x-file cannot be opened here."),
], ids=["hangs-up", "file"])


@FAILED_LOADS
def test_a_command_whose_page_fails_runs_when_it_is_tried_again(installer, server, start, answer, reason):
    state = installer.command("getstate")
    server.expect(state, answer)
    start(state)
    installer.wait_for_log(f"Failed to load '{server.url(state)}' ({reason}).")
    assert installer.calls("install tool") == []
    server.expect(state)
    server.expect(f"/back?{NOT_INSTALLED}", page("back", "/last"))
    server.expect("/last")
    try_again(installer)
    assert len(installer.calls("install tool")) == 1
    installer.close_window()


@FAILED_LOADS
def test_a_callback_page_that_fails_does_not_run_the_command_again(installer, server, start, answer, reason):
    state = installer.command("getstate")
    server.expect(state)
    server.expect(f"/back?{NOT_INSTALLED}", answer)
    start(state)
    installer.wait_for_log(f"({reason}).")
    server.expect(f"/back?{NOT_INSTALLED}", page("back", "/last"))
    server.expect("/last")
    try_again(installer)
    assert len(installer.calls("install tool")) == 1
    installer.close_window()


def kill_web_process(installer):
    """Kills the process that shows the page, and waits for its end."""
    process = installer.processes(WEB_PROCESS)[-1]
    os.kill(process, signal.SIGKILL)
    assert wait_for(lambda: not os.path.exists(f"/proc/{process}"))


def test_a_crash_while_the_first_page_loads_leads_to_it_again(installer, server, start):
    def crash(_):
        kill_web_process(installer)
        installer.wait_for_log("The web content process has ended.")
    server.expect(installer.first_path(), crash)
    server.expect("/last")
    start("/last")
    installer.wait_for_requests()


@pytest.mark.parametrize("command", [None, "uninstall"])
def test_a_crashed_page_leads_to_the_first_page_and_repeats_no_command(installer, server, start, command):
    large = installer.command(command, callback=None, reportUrl="r") if command else "/large-page"
    server.expect(large, LARGE_PAGE)
    server.expect("/large")
    start(large)
    installer.wait_for_requests()
    installer.wait_for_log(server.url("/large-page") if not command else server.url("/command"))
    runs = 1 if command else 0
    assert len(installer.calls("admin tool", runs)) == runs
    server.expect(installer.first_path(), page("first", "/last"))
    server.expect("/last")
    kill_web_process(installer)
    installer.wait_for_requests()
    assert len(installer.calls("admin tool")) == runs
    installer.close_window()
