"""The page kit, the first product of the docs and the preview, in the real window."""

import json
import pathlib
import re
import signal
import subprocess
import urllib.parse

import pytest

from rig import desktop
from rig.page_server import script_page
from rig.waiting import wait_for

SOURCE = pathlib.Path(__file__).resolve().parents[2]
KIT = SOURCE / "examples/demo/pages/kit"


@pytest.fixture
def notes(installer, server):
    """The notes of the pages, which are served beside the kit; the tool's reports are kept."""
    noted, reports = [], {}

    def query(request):
        return dict(urllib.parse.parse_qsl(urllib.parse.urlsplit(request.path).query, keep_blank_values=True))

    def note(request):
        noted.append(json.loads(urllib.parse.unquote(request.path.partition("?")[2])))
        return ""

    def report(request):
        reports[query(request)["job"]] = query(request)
        return ""

    def progress(request):
        request.answer(json.dumps(reports.get(query(request)["job"], {})), Content_Type="application/json")

    installer.answers |= {"/kit/command.html": (KIT / "command.html").read_text(), "/note": note, "/kit/report": report,
                          "/kit/installer.js": lambda request: request.answer(
                              (KIT / "installer.js").read_text(), Content_Type="text/javascript"),
                          "/kit/progress": progress}
    installer.configuration["commandUrlPrefix"] = server.url("/kit/command.html")
    installer.environment["no_proxy"] = "*"
    return noted


def kit_page(script):
    """A page that loads the kit and runs `script`, in which note(...) records a note."""
    return ("<!doctype html><meta charset='utf-8'><script src='/kit/installer.js'></script>"
            "<script>const note = value => fetch('/note?' + encodeURIComponent(JSON.stringify(value)));"
            f"</script>{script_page(script)}")


def test_values_come_back_as_they_were_and_what_was_told_is_kept(installer, notes):
    """An answer comes to the page that asked unless it names another."""
    installer.answers["/first"] = kit_page(
        "if (!installer.answered) installer.run('cancel'); else installer.run('GetState',"
        " {callbackUrl: installer.address('/back?x=1', {note: 'a&b=ü% +#', none: undefined})})")
    installer.answers["/back"] = kit_page(
        "note([installer.answered, installer.received.note, installer.received.x, 'none' in installer.received,"
        " installer.received.productState, installer.told.lang, installer.told.os.startsWith('Mac OS '),"
        " installer.told.src, installer.ownAddress('https://elsewhere.example/x')])")
    installer.start()
    assert wait_for(lambda: notes)
    assert notes == [["getstate", "a&b=ü% +#", "1", False, "NotInstalled", "en-GB", True, "a b",
                      installer.server.url("/kit/")]]


REPORT = """
for pair; do [[ $pair != reportUrl=* ]] || url=${pair#*=}; done
report() { curl --silent --get "$url" --data-urlencode "event=$1" --data-urlencode "message=$2"; }
"""


def test_the_tool_is_followed_to_its_end(installer, notes):
    installer.answers["/first"] = kit_page(
        "installer.startTool('install', {nextUrl: '/next?mine=1', configTemplateUrl: 'c?x=1', installerUrl: '/i'})")
    installer.answers["/next"] = kit_page(
        "note(installer.received.mine);"
        "installer.follow(installer.received.job, (report, state) => note([report.message, state]), 2)")
    installer.tool("admin tool", f'{REPORT} report progress "Größe & +"; sleep 6; report finished "done"')
    installer.start()
    assert wait_for(lambda: ["done", "finished"] in notes, 60)
    assert notes == ["1", ["Größe & +", "working"], ["Größe & +", "silent"], ["done", "finished"]]
    call = installer.calls("admin tool", 1)[0]
    assert f"[configTemplateUrl={installer.server.url('/c?x=1')}][installerUrl={installer.server.url('/i')}]" in call


def test_an_address_with_shell_characters_is_refused(installer, notes):
    installer.answers["/first"] = kit_page(
        "try { installer.startTool('install', {nextUrl: 'n', installerUrl: '/$(id)', configTemplateUrl: '/c'}) }"
        "catch (error) { note(error.message) }")
    installer.start()
    assert wait_for(lambda: notes)
    assert "must consist of letters" in notes[0]
    assert not installer.calls("admin tool")


def test_a_command_without_an_answer_leaves_a_way_back(installer, notes):
    installer.answers["/first"] = kit_page("installer.run('runfirefox', {patience: '1', backUrl: '/home'})")
    installer.answers["/home"] = kit_page("note('back')")
    installer.start()

    def went_back():
        desktop.press_key("Tab")
        desktop.press_key("Tab")
        desktop.press_key("Return")
        return wait_for(lambda: notes, 3)
    assert wait_for(went_back, 60)


@pytest.fixture
def first_product(tmp_path):
    """The pages and the configuration in docs/first-product.md; an installation ends at `seen.html`."""
    text = (SOURCE / "docs/first-product.md").read_text()
    files = dict(re.findall(r"`([\w.-]+)`[^\n]*\n\n```\w+\n(.*?)```", text, re.DOTALL))
    site, tools = tmp_path / "site", tmp_path / "product/Tools"
    site.mkdir()
    tools.mkdir(parents=True)
    (tools / "installer_config.plist").write_text(files["installer_config.plist"])
    for name in ("installer.js", "command.html"):
        (site / name).write_bytes((KIT / name).read_bytes())
    (site / "start.html").write_text(files["start.html"] + "<script>install.hidden || install.click()</script>")
    (site / "progress.html").write_text(files["progress.html"] + """<script>
        new MutationObserver(() => back.hidden || location.replace('seen.html?' + encodeURIComponent(text.textContent)))
            .observe(document.body, {subtree: true, attributes: true, childList: true})</script>""")
    (site / "seen.html").write_text("<p>Seen.")
    return tmp_path


@pytest.fixture
def preview(installer, first_product):
    """Starts the preview in a state; returns a function that waits for a string in its log of page URLs."""
    started = []

    def start(state):
        log = first_product / "log"
        with log.open("wb") as stream:
            started.append(subprocess.Popen(
                [SOURCE / "scripts/preview", first_product / "product", state, "--pages", first_product / "site",
                 "--bundle", installer.bundle], env=installer.environment, stdout=stream, stderr=stream))
        return lambda text: wait_for(lambda: text in log.read_text(), 60)
    yield start
    for process in started:
        process.send_signal(signal.SIGTERM)
        assert process.wait(30) == 143


@pytest.mark.parametrize("state, page", {
    "not-installed": "seen.html?install%20is%20done%20(simulated).",
    "failing": "seen.html?The%20disk%20is%20full%20(simulated).",
}.items())
def test_the_first_product_meets_each_state(preview, state, page):
    assert preview(state)(page)


def test_a_changed_page_is_shown_at_once(preview, first_product):
    shows = preview("installed=3.1")
    assert shows("productState=Installed&version=3.1")
    (first_product / "site/start.html").write_text("<script>onload = () => location = 'seen.html?changed'</script>")
    assert shows("seen.html?changed")
