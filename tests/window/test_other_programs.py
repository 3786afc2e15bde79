"""What opens in other programs of the desktop: URLs that the view cannot load, downloads, and pages of hosts that are
not in `pageHosts`."""

import pytest

from rig.installer import TITLE
from rig.page_server import page, redirect, script_page
from test_failures import FILES

FILE_OF_THIS_WINDOW = "This file cannot be opened: the default browser cannot fetch it from outside this window."
NOT_ALLOWED = "This address is not allowed."


@pytest.fixture
def first_page_does(installer, server):
    """Starts with a first page that runs `script`, checks that the page stays, and then navigates to /next."""
    def start(script, body=""):
        server.expect(installer.first_path(), body + script_page(
            f"onload = () => {{ {script}; setTimeout(() => fetch('/browsed').then(() => location = '/next'), 1000) }}"))
        server.expect("/browsed", lambda request: page(str(installer.calls("browser", 1))))
        server.expect("/next")
        installer.start()
        installer.wait_for_requests()
    return start


@pytest.mark.parametrize("scheme", ["mailto", "tel", "x-product"])
def test_an_address_of_another_program_opens_there_and_the_page_stays(installer, first_page_does, scheme):
    handlers = installer.home / ".config/mimeapps.list"
    handlers.write_text(handlers.read_text() + f"x-scheme-handler/{scheme}=browser.desktop\n")
    first_page_does(f"location = '{scheme}:help@example.com'")
    assert installer.calls("browser") == [f"[{scheme}:help@example.com]"]
    installer.close_window()


@pytest.mark.parametrize("answer, script", [
    *((answer, "location = '/file'") for answer in FILES.values()),
    (page("file"), "document.querySelector('a').click()"),
], ids=[*FILES, "download"])
def test_a_file_opens_in_the_default_browser_and_the_page_stays(installer, server, first_page_does, answer, script):
    server.answers["/file"] = answer
    first_page_does(script, "<!doctype html><a download href='/file'>File</a>")
    assert installer.calls("browser") == [f"[{server.url('/file')}]"]


@pytest.fixture
def elsewhere(installer, server):
    """Lists the pages' host and gives the address of a path on another host, which the same server answers."""
    installer.configuration["pageHosts"] = f"setup.example.com {server.url().removeprefix('http://')}"
    return lambda path: server.url(path).replace("127.0.0.1", "localhost")


@pytest.mark.parametrize("script, target", [
    ("document.querySelector('a').click()", ""), ("location = '{}'", ""), ("location = '/redirect'", ""),
    ("open('{}')", "new window"),
], ids=["link", "script", "redirect", "new window"])
def test_a_page_of_another_host_opens_in_the_default_browser_and_runs_nothing(
        installer, server, elsewhere, first_page_does, script, target):
    other = elsewhere("/other")
    if "redirect" in script:
        server.expect("/redirect", redirect(other))
    if not target:
        server.expect("/other", page("other", server.url(installer.command("uninstall", None, reportUrl="r"))))
    first_page_does(script.format(other), f"<!doctype html><a href='{other}'>Other</a>")
    assert installer.calls("browser") == [f"[{other}]"]
    assert installer.calls("admin tool") == []


POST = "document.body.innerHTML += '<form method=post action={}>'; document.querySelector('form').submit()"


@pytest.mark.parametrize("script, answer, message", [
    ("const link = document.createElement('a'); link.href = URL.createObjectURL(new Blob(['a'])); "
     "link.download = 'a'; link.click()", None, FILE_OF_THIS_WINDOW),
    (POST.format("/file"), FILES["pdf"], FILE_OF_THIS_WINDOW),
    (POST, page("other"), NOT_ALLOWED),
], ids=["blob", "form", "form for another host"])
def test_what_only_this_window_can_fetch_is_told_in_a_sheet_and_the_page_stays(
        installer, server, start_with, elsewhere, script, answer, message):
    if answer:
        server.expect("POST /file" if "/file" in script else "POST /other", answer)
    server.expect("/next")
    start_with(script_page(
        f"onload = () => {{ {script.format(elsewhere('/other'))}; setTimeout(() => location = '/next', 2000) }}"))
    installer.wait_for_sheet(TITLE, message, "OK")
    installer.wait_for_requests()
    assert installer.calls("browser") == []


def test_a_command_url_on_another_host_runs_nothing(installer, server, elsewhere, start):
    installer.configuration["commandUrlPrefix"] = elsewhere("/command")
    uninstall = installer.command("uninstall", callback=None, reportUrl="r")
    server.expect(uninstall)
    start(elsewhere(uninstall))
    installer.wait_for_log(f"({NOT_ALLOWED})")
    assert installer.calls("admin tool") == installer.calls("browser") == []


@pytest.mark.parametrize("redirected", [False, True], ids=["direct", "redirected"])
def test_a_callback_to_another_host_leads_to_the_error_page(installer, server, elsewhere, start, redirected):
    """Without a request, which would contain the agent identifier."""
    cancel = installer.command("cancel", callbackUrl=server.url("/back") if redirected else elsewhere("/back"))
    server.expect(cancel)
    if redirected:
        installer.answers["/back"] = redirect(elsewhere("/other"))
        server.expect("/other")
    start(cancel)
    installer.wait_for_log(f"Failed to load '{elsewhere('/other' if redirected else '/back')}")
    assert NOT_ALLOWED in installer.log()
    assert installer.calls("browser") == []


def test_page_hosts_leave_frames_and_listed_callbacks_alone(installer, server, start_with, elsewhere):
    """A command URL in a frame runs nothing."""
    state, cancel = installer.command("getstate", "/wrong"), installer.command("cancel")
    server.expect("/frame")
    server.expect(state)
    server.expect(cancel)
    server.expect("/back?pid=PID&agentId=AGENT&action=cancel&event=finished&result=success&")
    start_with(script_page(f"onload = () => location = '{cancel}'")
               + f"<iframe src='{elsewhere('/frame')}'></iframe><iframe src='{state}'></iframe>")
    installer.wait_for_requests()
    assert installer.calls("browser") == installer.calls("install tool") == []
