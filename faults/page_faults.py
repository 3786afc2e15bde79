"""Faults of the web view's processes, of the page server and of the pages."""

import ssl
import subprocess
import time

from rig import desktop
from rig.installer import NETWORK_PROCESS, WEB_PROCESS
from rig.page_server import page
from rig.waiting import wait_for
from table import fault


# Processes of the web view

# A page whose process has more memory than any other, and that then asks for "/lost".
large = page("large") + "<script>onload = () => { window.kept = new Uint8Array(2e8).fill(1); fetch('/lost') }</script>"


@fault("web process killed on every page",
       "sheet: The page cannot be displayed. Close the installer and start it again.")
def _(it):
    it.answers |= {"/first": large, "/lost": lambda request: it.kill_largest(WEB_PROCESS)}
    it.start()


@fault("network process killed during a load", "error page: WebKit encountered an internal error")
def _(it):
    it.answers["/first"] = lambda request: it.kill_largest(NETWORK_PROCESS)
    it.start()


@fault("network process killed between two pages", "page next")
def _(it):
    it.answers["/first"] = page("first") + """<script>
        onload = () => fetch('/lost').catch(() => location = '/next')</script>"""
    it.answers["/lost"] = lambda request: it.kill_largest(NETWORK_PROCESS)
    it.start()


# Page server

def half(request):
    """The first half of a page, and no more."""
    request.send_response(200)
    request.send_header("Content-Type", "text/html")
    request.send_header("Content-Length", "100000")
    request.end_headers()
    request.wfile.write(page("half").encode())


@fault("page server disconnects in mid-page", "page first")
def _(it):
    it.answers["/first"] = half
    it.start()


@fault("page server disconnects in mid-page of a command URL", "page command; admin tool ran 1×")
def _(it):
    it.first("uninstall", reportUrl="r")
    it.answers["/command"] = half
    it.start()


@fault("first page answers 500 with a page", "page first")
def _(it):
    it.answers["/first"] = lambda request: request.answer(page("sorry"), 500)
    it.start()


@fault("first page answers 500 without a body",
       "error page: The server reported an error: 500 Internal Server Error.")
def _(it):
    it.answers["/first"] = lambda request: request.answer("", 500)
    it.start()


@fault("first page answers 404 without a body or its length",
       "error page: The server reported an error: 404 Not Found.")
def _(it):
    def answer(request):
        request.send_response(404)
        request.end_headers()
    it.answers["/first"] = answer
    it.start()


@fault("command URL answers 500 with a page", "page back; install tool ran 1×")
def _(it):
    it.first("getstate")
    it.answers["/command"] = lambda request: request.answer(page("sorry"), 500)
    it.start()


@fault("command URL answers 500 without a body", "page back; install tool ran 1×")
def _(it):
    it.first("getstate")
    it.answers["/command"] = lambda request: request.answer("", 500)
    it.start()


@fault("first page's host cannot be resolved",
       "error page: Error resolving “pages.invalid”: Name or service not known")
def _(it):
    it.configuration["firstInstallationPageUrl"] = "http://pages.invalid/first"
    it.start()


@fault("first page's server accepts but never answers", "error page: The server does not answer.", seconds=90)
def _(it):
    it.answers["/first"] = lambda request: time.sleep(3600)
    it.start()


@fault("page after a command never answers, and is tried again", "page silent; admin tool ran 1×", seconds=90)
def _(it):
    it.first("uninstall", callback=None, reportUrl="r")
    it.answers["/command"] = page("command", "/silent")
    def silent(_):
        it.answers["/silent"] = page("silent")
        time.sleep(3600)
    it.answers["/silent"] = silent
    it.start()
    wait_for(lambda: "The server does not answer." in it.log(), 80)
    desktop.press_key("F5")


@fault("first page redirects endlessly", "error page: Load cannot follow more than 20 redirections")
def _(it):
    it.answers["/first"] = lambda request: request.answer("", 302, Location=f"/first?{time.monotonic()}")
    it.start()


@fault("first page answers 204", "error page: The server sent no page.")
def _(it):
    it.answers["/first"] = lambda request: request.answer("", 204)
    it.start()


@fault("first page is an attachment", "error page: This link is a download and cannot be opened here.")
def _(it):
    it.answers["/first"] = lambda request: request.answer("file", Content_Disposition="attachment; filename=a.html")
    it.start()


@fault("first page's URL has a restricted port", "error page: This address is not allowed.")
def _(it):
    it.configuration["firstInstallationPageUrl"] = "http://127.0.0.1:25/first"
    it.start()


@fault("first page's URL is invalid", "error page: The URL can’t be shown")
def _(it):
    it.configuration["firstInstallationPageUrl"] = "no address"
    it.start()


@fault("first page's URL is a script", "error page: This address is not allowed.")
def _(it):
    it.configuration["firstInstallationPageUrl"] = "javascript:1"
    it.start()


@fault("first page's certificate is not trusted", "error page: The server's certificate is not trusted.")
def _(it):
    certificate = it.directory / "certificate"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=127.0.0.1",
                    "-keyout", certificate, "-out", certificate], check=True, capture_output=True)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate)
    it.server.socket = context.wrap_socket(it.server.socket, server_side=True)
    it.configuration["firstInstallationPageUrl"] = it.server.url("/first").replace("http", "https")
    it.start()


# What pages cannot do

def refused(name, script, outcome="page refused"):
    """A first page that tries something, and goes to /got when that succeeds."""
    @fault(name, outcome)
    def _(it):
        it.answers["/first"] = page("first") + f"""<script>
            const got = () => location = '/got', refused = () => location = '/refused'
            onload = () => {{ {script.replace("LOCAL", f"file://{it.tools}")} }}</script>"""
        (it.tools / "picture.svg").write_text("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>")
        it.start()


refused("page fetches a local file", "fetch('LOCAL/splash.html').then(got, refused)")
refused("page shows a local picture", """
    const picture = new Image; picture.onload = got; picture.onerror = refused; picture.src = 'LOCAL/picture.svg'""")
refused("page navigates to a local file", "location = 'LOCAL/splash.html'", "page first")
refused("page asks for the location", """
    navigator.geolocation.getCurrentPosition(
        got, error => error.code == error.PERMISSION_DENIED ? refused() : got())""")
refused("page closes the window", "window.close(); setTimeout(refused, 1000)")


@fault("callback page is a local one that fetches another", "page refused")
def _(it):
    (it.tools / "page.html").write_text(f"""<script>fetch('splash.html').then(
        () => location = '{it.server.url()}/got', () => location = '{it.server.url()}/refused')</script>""")
    it.first("cancel", callbackUrl=f"file://{it.tools}/page.html")
    it.start()
