"""Closing the window of a page that has a beforeunload handler."""

import pytest

from rig import desktop
from rig.installer import TITLE
from rig.page_server import script_page
from rig.waiting import wait_for

QUESTION = [TITLE, "Leave this page? What you have begun here may be lost.", "Stay", "Leave"]
OBJECTS = "onbeforeunload = event => event.preventDefault(); "


@pytest.fixture
def touch(installer, server):
    """Shows a page with a beforeunload handler, and clicks on it, which runs `script`."""
    def show_and_touch(script=""):
        server.expect(installer.first_path(), script_page(
            f"{OBJECTS} onclick = () => {{ fetch('/touched'); {script} }}"))
        touched = []
        installer.answers["/touched"] = lambda request: touched.append(request.path) or ""
        installer.start()
        desktop.wait_for_active_window(TITLE)
        assert wait_for(lambda: desktop.click() or touched)
    return show_and_touch


@pytest.mark.parametrize("key", ["alt+F4", "ctrl+q"])
def test_a_page_that_objects_closes_only_when_the_user_says_leave(installer, touch, key):
    """Return is "Stay", like Escape."""
    touch()
    window = desktop.active_window_id()
    for answer in "Escape", "Return", "Tab Return":
        assert wait_for(lambda: desktop.active_window_id() == window)
        desktop.press_key(key)
        installer.wait_for_sheet(*QUESTION)
        assert wait_for(lambda: desktop.active_window_id() not in (window, ""))
        for answer_key in answer.split():
            desktop.press_key(answer_key)
        installer.wait_for_no_sheet()
    assert installer.exit_status() == 0


@pytest.mark.parametrize("key", ["alt+F4", "ctrl+w"])
def test_a_page_that_does_not_object_closes_at_the_first_request(installer, server, start_with, key):
    server.expect("/ready")
    start_with(script_page("fetch('/ready')"))
    installer.wait_for_requests()
    desktop.wait_for_active_window(TITLE)
    desktop.press_key(key)
    assert installer.exit_status() == 0


@pytest.mark.parametrize("script", ["while (true);", "location = 'http://127.0.0.1:2/'"], ids=["hangs", "error page"])
def test_a_page_that_cannot_object_any_more_closes(installer, touch, script):
    touch(f"setTimeout(() => {{ {script} }}, 500)")
    if "location" in script:
        installer.wait_for_log("Failed to load 'http://127.0.0.1:2/'")
    installer.close_window()


def test_nothing_but_closing_asks(installer, server, touch):
    """Not a navigation, nor finish, nor a script that closes its window after the user has stayed."""
    finish = installer.command("finish")
    server.expect(finish)
    touch(f"window.close(); setTimeout(() => location = '{finish}', 1000)")
    assert installer.exit_status() == 0
    assert wait_for(lambda: not server.missing())
