"""What a page leaves to the other programs of the desktop: addresses that it cannot load, and files."""

import pytest

from rig.installer import TITLE
from rig.page_server import page, script_page
from test_failures import try_again

FILE_OF_THIS_WINDOW = "This file cannot be opened: the default browser cannot fetch it from outside this window."
NO_PAGE = "(This link is a download and cannot be opened here.)"


def file(content_type, **headers):
    return lambda request: request.answer("%PDF-1.4", Content_Type=content_type, **headers)


FILES = {"unsupported": file("application/x-file"), "pdf": file("application/pdf"),
         "attachment": file("text/html", Content_Disposition='Attachment; filename="a.html"')}
ANY_FILE = pytest.mark.parametrize("answer", FILES.values(), ids=FILES)


@pytest.fixture
def first_page_does(installer, server):
    """Starts with a first page that runs `script`, still lives afterwards, and then navigates to /next."""
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
