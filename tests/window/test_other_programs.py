"""What opens in other programs of the desktop: URLs that the view cannot load, downloads, and pages of hosts that are
not in `pageHosts`."""

import pytest

from rig.installer import TITLE
from rig.page_server import page, redirect, script_page
from test_failures import try_again

FILE_OF_THIS_WINDOW = "This file cannot be opened: the default browser cannot fetch it from outside this window."
NOT_ALLOWED = "This address is not allowed."
NO_PAGE = "(This link is a download and cannot be opened here.)"


def file(content_type, **headers):
    return lambda request: request.answer("%PDF-1.4", Content_Type=content_type, **headers)


FILES = {"unsupported": file("application/x-file"), "pdf": file("application/pdf"),
         "attachment": file("text/html", Content_Disposition='Attachment; filename="a.html"')}
ANY_FILE = pytest.mark.parametrize("answer", FILES.values(), ids=FILES)


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


@ANY_FILE
def test_a_file_opens_in_the_default_browser_and_the_page_stays(installer, server, first_page_does, answer):
    server.expect("/file", answer)
    first_page_does("location = '/file'")
    assert installer.calls("browser") == [f"[{server.url('/file')}]"]


def test_a_link_for_a_download_opens_in_the_default_browser(installer, server, first_page_does):
    installer.answers["/file"] = page("file")
    first_page_does("document.querySelector('a').click()", "<!doctype html><a download href='/file'>File</a>")
    assert installer.calls("browser") == [f"[{server.url('/file')}]"]


@pytest.mark.parametrize("script, requests", [
    ("const link = document.createElement('a'); link.href = URL.createObjectURL(new Blob(['a'])); "
    "link.download = 'a'; link.click()", []),
    ("document.body.innerHTML += '<form method=post action=/file>'; document.querySelector('form').submit()",
     ["POST /file"]),
], ids=["blob", "form"])
def test_a_file_that_only_this_window_can_fetch_is_told_in_a_sheet(installer, server, script, requests):
    server.expect(installer.first_path(), script_page(
        f"onload = () => {{ {script}; setTimeout(() => location = '/next', 2000) }}"))
    for request in requests:
        server.expect(request, FILES["pdf"])
    server.expect("/next")
    installer.start()
    installer.wait_for_sheet(TITLE, FILE_OF_THIS_WINDOW, "OK")
    installer.wait_for_requests()
    assert installer.calls("browser") == []


@ANY_FILE
def test_a_file_that_the_installer_has_asked_for_can_be_tried_again(installer, server, answer):
    server.expect(installer.first_path(), answer)
    installer.start()
    installer.wait_for_log(f"Failed to load '{server.url('/first')}")
    server.expect(installer.first_path())
    try_again(installer)
    assert installer.calls("browser") == []


@ANY_FILE
def test_a_command_url_that_answers_with_a_file_runs_nothing_and_is_not_handed_on(installer, server, start, answer):
    uninstall = installer.command("uninstall", callback=None, reportUrl="r")
    server.expect(uninstall, answer)
    start(uninstall)
    installer.wait_for_log(f"Failed to load '{server.url('/command')}")
    assert installer.calls("admin tool") == installer.calls("browser") == []


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


def test_a_form_for_another_host_is_told_in_a_sheet_and_the_page_stays(installer, server, elsewhere):
    form = f"<!doctype html><form method=post action={elsewhere('/other')}></form>"
    server.expect(installer.first_path(), form + script_page(
        "onload = () => { document.forms[0].submit(); setTimeout(() => location = '/next', 2000) }"))
    server.expect("POST /other")
    server.expect("/next")
    installer.start()
    installer.wait_for_sheet(TITLE, NOT_ALLOWED, "OK")
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


def test_page_hosts_leave_frames_and_listed_callbacks_alone(installer, server, elsewhere):
    cancel = installer.command("cancel")
    server.expect(installer.first_path(), f"<!doctype html><iframe src='{elsewhere('/frame')}'></iframe>"
                  + script_page(f"onload = () => location = '{cancel}'"))
    server.expect("/frame")
    server.expect(cancel)
    server.expect("/back?pid=PID&agentId=AGENT&action=cancel&event=finished&result=success&")
    installer.start()
    installer.wait_for_requests()
    assert installer.calls("browser") == []
