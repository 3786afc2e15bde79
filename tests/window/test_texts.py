"""The program's own strings, in the language of the pages."""

import pytest

from rig import accessibility, desktop
from rig.page_server import page, script_page
from rig.installer import TITLE
from rig.waiting import wait_for


@pytest.mark.parametrize("code, cancel, ok, keys, answer", [
    ("pt-BR", "Cancelar", "OK", ["Return"], "true"), ("ar-EG", "إلغاء", "موافق", ["Right", "Return"], "false")])
def test_a_question_is_an_alert_dialog_in_the_language_of_the_pages(
        installer, server, code, cancel, ok, keys, answer):
    """The default button is the last: in Arabic, "Cancel" is to its right. GTK 4.14 has a role for alert dialogs."""
    installer.configuration["lang"] = code
    languages = []
    server.expect(installer.first_path().replace("lang=en-GB", f"lang={code}"), script_page(
        "onload = () => setTimeout(() => location = '/' + navigator.language + confirm('<b>Sure</b>?'))"))
    server.expect(f"/{code}{answer}",
                  lambda request: languages.append(request.headers["Accept-Language"]) or page("end"))
    installer.start()
    installer.wait_for_sheet(TITLE, "<b>Sure</b>?", cancel, ok)
    dialogs = [(element.name, element.description)
               for element in accessibility.elements(installer.process.pid) if element.role in ("dialog", "alert")]
    assert dialogs == [(TITLE, "<b>Sure</b>?")]
    for key in keys:
        desktop.press_key(key)
    installer.wait_for_requests()
    assert languages == [code]


def test_the_whole_address_of_a_failed_page_can_be_copied(installer, server):
    installer.start(open_server=False)
    installer.wait_for_log("(Could not connect to 127.0.0.1: Connection refused).")
    assert wait_for(lambda: not desktop.is_blank(TITLE))
    for key in "Tab", "Tab", "Return", "Tab", "ctrl+a", "ctrl+c":  # "Start again", "Details", the address
        desktop.press_key(key)

    pasted = []
    server.expect(installer.first_path(), "<!doctype html><input id=field autofocus>" + script_page(
        "field.onpaste = () => setTimeout(() => fetch('/pasted?' + field.value))"))
    server.answers["/pasted"] = lambda request: pasted.append(request.path) or page("thanks")
    server.open()
    desktop.press_key("F5")
    installer.wait_for_requests()
    assert wait_for(lambda: desktop.press_key("ctrl+v") or pasted)
    assert pasted[0] == f"/pasted?{server.url(installer.first_path())}"
