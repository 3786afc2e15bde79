"""Pages that cannot be loaded, and processes of the web view that crash."""

import os
import signal

import pytest

from rig import desktop
from rig.installer import WEB_PROCESS
from rig.page_server import hang_up, script_page
from rig.waiting import wait_for
from test_commands import NOT_INSTALLED

KEEP_MEMORY = "window.kept = new Uint8Array(3e8).fill(1);"
LARGE_PAGE = script_page(f"onload = () => {{ {KEEP_MEMORY} fetch('/large') }}")


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


def file(content_type, **headers):
    return lambda request: request.answer("%PDF-1.4", Content_Type=content_type, **headers)


FILES = {"unsupported": file("application/x-file"), "pdf": file("application/pdf"),
         "attachment": file("text/html", Content_Disposition='Attachment; filename="a.html"')}


DOWNLOAD = "This link is a download and cannot be opened here."


@pytest.mark.parametrize("answer, reason", [
    (hang_up, "Connection terminated unexpectedly"),
    (FILES["unsupported"], "Files of type application/x-file cannot be opened here."),
    (FILES["pdf"], DOWNLOAD), (FILES["attachment"], DOWNLOAD),
], ids=["hangs up", *FILES])
def test_pages_that_fail_are_tried_again_and_the_command_runs_once(installer, server, start, answer, reason):
    """Nothing opens in the default browser, which would repeat a command."""
    state, back = installer.command("getstate"), f"/back?{NOT_INSTALLED}"
    server.expect(state, answer)
    start(state)
    installer.wait_for_log(f"Failed to load '{server.url(state)}' ({reason}).")
    assert installer.calls("install tool") == []
    server.expect(state)
    server.expect(back, answer)
    try_again(installer)
    assert wait_for(lambda: installer.log().count(f"({reason}).") == 2)
    server.expect_shown(back)
    try_again(installer)
    assert len(installer.calls("install tool")) == 1
    assert installer.calls("browser") == []
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
    server.expect_shown(installer.first_path())
    kill_web_process(installer)
    installer.wait_for_requests()
    assert len(installer.calls("admin tool")) == runs
    installer.close_window()
