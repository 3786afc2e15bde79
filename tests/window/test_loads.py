"""Loads that need a password, that are cancelled, or that are repeated."""

import base64
import threading
import time

import pytest

from rig import desktop
from rig.installer import TITLE
from rig.page_server import hang_up, page, redirect, script_page
from rig.waiting import wait_for
from test_commands import NOT_INSTALLED
from test_failures import try_again

PASSWORD_REQUIRED = "(The server requires a user name and a password.)"
SIGN_IN = "127.0.0.1 requires a user name and a password."
CREDENTIALS = "Basic " + base64.b64encode(b"user:pass word").decode()


def start_again(installer):
    """Chooses "Start again", the second button of the error page, as soon as it is there."""
    def pressed():
        desktop.press_key("Tab")
        desktop.press_key("Return")
        return wait_for(lambda: not installer.server.missing(), 2)
    desktop.wait_for_active_window(TITLE)
    assert wait_for(pressed)


def late(answer):
    """The answer, after 3 seconds."""
    def wait(request):
        time.sleep(3)
        return answer(request) if callable(answer) else answer
    return wait


def unauthorized(request):
    assert "Authorization" not in request.headers
    request.answer("", 401, WWW_Authenticate='Basic realm="pages"')


def authorized(then):
    def answer(request):
        assert request.headers["Authorization"] == CREDENTIALS
        return page("authorized", then)
    return answer


def wait_for_sign_in(installer, message):
    assert wait_for(lambda: message in installer.sheet()), f"the sheet is {installer.sheet()}"
    desktop.wait_for_active_window("Authentication required")


def sign_in(installer, message=SIGN_IN, password="pass word"):
    wait_for_sign_in(installer, message)
    desktop.type_text("user")
    desktop.press_key("Tab")
    desktop.type_text(password)
    desktop.press_key("Return")


def test_a_first_page_that_needs_a_password_asks_for_it(installer, server, start_with):
    def wrong(request):
        assert request.headers["Authorization"] != CREDENTIALS
        request.answer("", 401, WWW_Authenticate='Basic realm="pages"')
    start_with(unauthorized)
    server.expect(installer.first_path(), wrong)
    sign_in(installer, password="wrong")
    server.expect(installer.first_path(), authorized("/last"))
    server.expect("/last")
    sign_in(installer, f"The user name or the password is incorrect.\n{SIGN_IN}")
    installer.wait_for_requests()


def test_a_command_whose_password_is_refused_runs_when_it_is_given(installer, server, start):
    state = installer.command("getstate")
    server.expect(state, unauthorized)
    start(state)
    wait_for_sign_in(installer, SIGN_IN)
    desktop.press_key("Escape")
    installer.wait_for_log(f"Failed to load '{server.url(state)}' {PASSWORD_REQUIRED}")
    assert installer.calls("install tool") == []
    server.expect(state, unauthorized)
    try_again(installer)
    server.expect(state, authorized(None))
    server.expect(f"/back?{NOT_INSTALLED}", authorized("/last"))
    server.expect("/last")
    sign_in(installer)
    installer.wait_for_requests()
    assert len(installer.calls("install tool")) == 1


def test_a_proxy_that_needs_a_password_asks_for_it(installer, server):
    def refused(request):
        request.answer("", 407, Proxy_Authenticate='Basic realm="proxy"')
    def passed(request):
        assert request.headers["Proxy-Authorization"] == CREDENTIALS
        return page("proxied", "/last")
    installer.configuration["firstInstallationPageUrl"] = "http://pages.test/first"
    installer.environment |= {"http_proxy": server.url(), "no_proxy": ""}
    first = "http://pages.test" + installer.first_path()
    server.expect(first, refused)
    server.expect(first, passed)
    server.expect("http://pages.test/last")
    installer.start()
    sign_in(installer, "The proxy server 127.0.0.1 requires a user name and a password.")
    installer.wait_for_requests()


def test_an_empty_error_at_a_command_url_does_not_offer_the_command_again(installer, server, start):
    uninstall = installer.command("uninstall", callback=None, reportUrl="r")
    server.expect(uninstall, lambda request: request.answer("", 404))
    start(uninstall)
    installer.wait_for_log(f"Failed to load '{server.url(uninstall)}' (The server reported an error: 404 Not Found.).")
    desktop.press_key("F5")
    server.expect_shown(installer.first_path())
    try_again(installer)  # Return is the only button, "Start again"
    assert len(installer.calls("admin tool", 1)) == 1


@pytest.mark.parametrize("begun, answers", [
    ("<meta http-equiv=refresh content=1>", [redirect("/moved")]),
    ("<script>onload = () => location = 'COMMAND'</script>", [redirect("/moved")]),
    ("<script>setTimeout(() => location = 'COMMAND', 1000)</script>", [hang_up, hang_up, redirect("/moved")]),
], ids=["refresh", "at-once", "later"])
def test_what_the_splash_page_begins_ends_with_the_request_for_the_first_page(
        installer, server, start_with, begun, answers):
    """Also after "Start again", and when the first page then fails or redirects."""
    command = installer.command("uninstall", callback=None, reportUrl="r")
    installer.splash.write_text(page("splash") + begun.replace("COMMAND", server.url(command)))
    server.answers["/command"] = page("command")
    start_with(late(answers[0]))
    for failures, answer in enumerate(answers[1:], 1):
        assert wait_for(lambda: installer.log().count(f"Failed to load '{server.url('/first')}") == failures)
        server.expect(installer.first_path(), late(answer))
        start_again(installer)
    server.expect_shown("/moved")
    installer.wait_for_requests()
    assert installer.calls("admin tool") == []


def test_a_script_as_a_callback_never_runs(installer, server, start):
    state = installer.command("getstate", callback=None, callbackUrl=f"javascript:location='{server.url('/script')}'//")
    server.expect(state)
    start(state)
    installer.wait_for_log("(This address is not allowed.).")
    server.expect_shown(installer.first_path())
    try_again(installer)  # Return is the only button, "Start again"


def test_a_callback_page_is_loaded_again_without_its_command(installer, server, start):
    state = installer.command("getstate")
    server.expect(state)
    server.expect(f"/back?{NOT_INSTALLED}")
    start(state)
    installer.wait_for_requests()
    server.expect_shown(f"/back?{NOT_INSTALLED}")
    try_again(installer, "F5")
    assert len(installer.calls("install tool")) == 1


def test_a_page_at_a_command_url_is_not_loaded_again_and_a_form_is_not_sent_again(installer, server, start):
    uninstall = installer.command("uninstall", callback=None, reportUrl="r")
    server.expect(uninstall, "<form method=post action=/form></form>" + script_page("""
        oncontextmenu = () => fetch('/menu')
        onkeydown = event => { if (event.key == 'n') document.forms[0].submit() }"""))
    opened = []
    installer.answers["/menu"] = lambda request: opened.append(request.path) or ""
    server.expect("POST /form")
    start(uninstall)
    assert len(installer.calls("admin tool", 1)) == 1
    desktop.wait_for_active_window(TITLE)
    assert wait_for(lambda: desktop.click(button=3) or opened)
    assert not wait_for(installer.menu, 2)
    for key in "F5", "ctrl+r", "n":
        desktop.press_key(key)
    installer.wait_for_log(f"frameUrl = {server.url('/form')}")
    server.expect("/form")
    try_again(installer, "ctrl+r")
    assert len(installer.calls("admin tool")) == 1


@pytest.mark.parametrize("going", ["location = '/next'", "history.replaceState(0, '', '/next')"])
def test_a_page_at_a_command_url_is_loaded_again_after_a_question_in_developer_mode(installer, server, start, going):
    """Return is "Cancel"; the answer does nothing once the page has gone."""
    installer.configuration["developerMode"] = "yes"
    uninstall = installer.command("uninstall", callback=None, reportUrl="r")
    leave, left = threading.Event(), threading.Event()
    installer.answers["/leave"] = lambda request: leave.wait(60) and ""
    installer.answers["/left"] = lambda request: left.set() or ""
    def expect_command():
        server.expect(uninstall, script_page(
            f"onload = () => fetch('/leave').then(() => {{ {going}; fetch('/left') }})"))
    expect_command()
    start(uninstall)
    desktop.wait_for_active_window(TITLE)
    def ask(key):
        assert desktop.press_until(key, installer.sheet)
        installer.wait_for_sheet(TITLE, "Reload this page? Its command will run again.", "Cancel", "Reload")
    def answer(*keys):
        for key in keys:
            desktop.press_key(key)
        installer.wait_for_no_sheet()
    assert len(installer.calls("admin tool", 1)) == 1
    ask("F5")
    answer("Return")
    ask("ctrl+r")
    expect_command()
    answer("Tab", "Return")
    installer.wait_for_requests()
    assert len(installer.calls("admin tool", 2)) == 2
    ask("F5")
    if "location" in going:
        server.expect("/next")
    leave.set()
    assert left.wait(60)
    if "location" in going:
        installer.wait_for_log(f"frameUrl = {server.url('/next')}")
    answer("Tab", "Return")
    server.expect("/next")
    try_again(installer, "F5")
    assert len(installer.calls("admin tool")) == 2


def test_the_splash_page_is_not_loaded_again(installer, server, start_with):
    server.expect("/last")
    start_with(late(page("first", "/last")))
    installer.wait_for_log("Navigated to splash page.")
    desktop.wait_for_active_window(TITLE)
    desktop.press_key("F5")
    installer.wait_for_requests()


@pytest.mark.parametrize("address", ["http://127.0.0.1:25/mail", "http://0.0.0.0/"])
def test_a_link_to_a_refused_address_is_a_failed_load(installer, server, start_with, address):
    start_with(f"<a href='{address}'>Link</a>"
               "<script>onload = () => { document.links[0].click(); location = '/next' }</script>")
    installer.wait_for_log(f"Failed to load '{address}' (This address is not allowed.).")
    server.expect(installer.first_path())
    start_again(installer)
