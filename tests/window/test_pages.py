"""Starting the program, and what its pages may do."""

import pytest

from rig import desktop
from rig.installer import TITLE, kill_group
from rig.page_server import page, script_page
from rig.waiting import wait_for

NO_BUS = "unix:path=/nonexistent"


@pytest.mark.parametrize("way", [
    {"arguments": ["--gapplication-service", "http://127.0.0.1/", "file"]},
    {"DBUS_SESSION_BUS_ADDRESS": NO_BUS, "DBUS_SYSTEM_BUS_ADDRESS": NO_BUS},
    {"CFBundleIdentifier": "none"},
], ids=lambda way: next(iter(way)))
def test_every_start_leads_from_the_splash_page_to_the_first_page(installer, server, way):
    """With arguments, without message buses, with an identifier that D-Bus does not accept."""
    installer.environment |= {name: value for name, value in way.items() if name.startswith("DBUS")}
    installer.identify(**{name: value for name, value in way.items() if name.startswith("CF")})
    server.expect_shown(installer.first_path())
    installer.start(*way.get("arguments", []))
    installer.wait_for_requests()
    installer.close_window()


def test_the_splash_page_gets_the_files_beside_it_and_no_other_page_does(installer, server, start_with):
    installer.splash.write_text(
        "<!doctype html><meta charset=utf-8><title>splash</title><link rel=stylesheet crossorigin href=ä%20b.css>")
    (installer.tools / "ä b.css").write_text(f"html {{ background: url({server.url('/splash')}) }}")
    server.expect("/splash")
    server.expect("/last?1")
    start_with("""<!doctype html><script>
        const link = document.createElement('link')
        link.rel = 'stylesheet'
        link.onload = () => location = '/read'
        link.onerror = () => location = '/last?' + history.length
        link.href = 'vok-start:///%C3%A4%20b.css'
        document.head.append(link)</script>""")
    installer.wait_for_requests()


def test_another_product_opens_a_window_of_its_own(installer, server, start):
    server.expect("/last")
    start("/last")
    installer.wait_for_requests()
    installer.identify(CFBundleIdentifier="org.example.Other")
    server.expect(installer.first_path())
    other = installer.launch()
    try:
        installer.wait_for_requests()
    finally:
        kill_group(other)


@pytest.mark.parametrize("action", [
    "document.querySelector('a').click()",
    "open('/opened?a=b&c')",
    "open('/opened?a=b&c', '', 'width=300')",
    "const opened = open(); opened.location = '/opened?a=b&c'",
], ids=["link", "script", "popup", "address later"])
def test_a_new_window_opens_in_the_default_browser_and_the_page_stays(installer, server, start_with, action):
    server.expect("/browsed", lambda request: page(str(installer.calls("browser", 1))))
    server.expect("/next")
    start_with("<!doctype html><a target=_blank href='/opened?a=b&amp;c'>Link</a>"
               + script_page(f"onload = () => {{ {action}; fetch('/browsed').then(() => location = '/next') }}"))
    installer.wait_for_requests()
    assert installer.calls("browser") == [f"[{server.url('/opened?a=b&c')}]"]
    installer.close_window()


def test_a_window_without_an_address_leaves_the_next_navigation_to_the_page(installer, server, start_with):
    """A page may have 20 windows: those of the previous page and those that had an address do not count."""
    server.expect("/browsed", lambda request: page(str(installer.calls("browser", 1))))
    server.expect("/next", script_page("""
        for (let i = 0; i < 19; ++i) open()
        onload = () => {
            open('/opened')
            fetch('/browsed').then(() => { open('/again'); location = '/last' }) }"""))
    server.expect("/last")
    start_with(script_page("""
        for (let i = 0; i < 19; ++i) open()
        onload = () => { open('about:blank'); location = '/next' }"""))
    installer.wait_for_requests()
    assert installer.calls("browser", 2) == [f"[{server.url('/opened')}]", f"[{server.url('/again')}]"]


def test_a_file_or_link_from_another_program_cannot_be_dropped(installer, server, start_with):
    """WebKitGTK would load it. Text can be dropped, which shows that the drags arrive."""
    heard = []
    server.answers |= {path: lambda request: heard.append(request.path) or "" for path in ("/text", "/alive")}
    start_with("""<!doctype html><style>body { margin: 0 } input { display: block; width: 100%; height: 200px }</style>
        <input oninput="fetch('/text')"><input type=date>
        <script>onkeydown = () => fetch('/alive')</script>""")
    installer.wait_for_log(f"frameUrl = {server.url('/first')}")
    desktop.wait_for_active_window(TITLE)
    window = desktop.active_window_id()
    assert wait_for(lambda: desktop.drop(window, 450, 100, "text/plain;charset=utf-8", "x") and "/text" in heard, 60)
    uninstall = server.url(installer.command("uninstall", callback=None, reportUrl="r"))
    assert wait_for(lambda: desktop.drop(window, 450, 300, "text/uri-list", f"{uninstall}\r\n"))
    desktop.wait_for_active_window(TITLE)
    assert desktop.press_until("n", lambda: "/alive" in heard), f"the page is gone: {installer.log()}"
    assert installer.calls("admin tool") == []
