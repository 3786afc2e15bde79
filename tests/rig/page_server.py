"""The page server: prepared answers, and a record of unexpected requests."""

import collections
import contextlib
import http.server
import re
import threading
import traceback
import urllib.parse

PID = re.compile(r"(?<=pid=)[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}")


def page(title, then=None):
    """A page that shows `title` and, once it has loaded, navigates to the URL `then`."""
    script = f"onload = () => location = '{then}'" if then else ""
    return script_page(script, title)


def script_page(script, title="page"):
    """A page that runs `script`."""
    return (f"<!doctype html><title>{title}</title><h1 style='text-align: center; margin: 40vh 0'>{title}</h1>"
            f"<script>{script}</script>")


def redirect(url):
    return lambda request: request.answer("", 302, Location=url)


def hang_up(_):
    """Closes the connection without an answer."""


class PageServer(http.server.ThreadingHTTPServer):
    """Serves 127.0.0.1. An answer is a page, or a function of the request that returns a page, or None after it has
    answered by itself.

    `expect` prepares one request with its whole query, in which the random "pid" of a run reads PID. `answers` are
    for any number of requests, by path. Any other request gets an ordinary page and is one of the `faults`.
    """

    daemon_threads = True

    def __init__(self):
        super().__init__(("127.0.0.1", 0), Request, bind_and_activate=False)
        self.server_bind()
        self.answers = {}
        self.expected = collections.defaultdict(collections.deque)
        self.errors = []
        self.lock = threading.Lock()
        self.thread = threading.Thread(target=self.serve_forever, daemon=True)

    def open(self):
        """Starts listening; until then, connections are refused."""
        self.server_activate()
        self.thread.start()

    def close(self):
        if self.thread.is_alive():
            self.shutdown()
        self.server_close()

    def url(self, path=""):
        return f"http://127.0.0.1:{self.server_port}{path}"

    def expect(self, path, answer=None):
        """Expects one more request for `path`; several are answered in the order in which they are expected."""
        with self.lock:
            self.expected[path].append(answer or page(path.partition("?")[0]))

    def expect_shown(self, path):
        """Expects one more request for `path`. Its page then loads /last, which is expected too."""
        self.expect(path, page(path.partition("?")[0], "/last"))
        self.expect("/last")

    def missing(self):
        """The paths of the expected requests that have not come yet."""
        with self.lock:
            return [path for path, answers in self.expected.items() for _ in answers]

    def faults(self):
        """A line for each request that has not come, was not expected or whose answer failed."""
        return [*self.errors, *(f"missing: {path}" for path in self.missing())]

    def answer_to(self, target):
        target = PID.sub("PID", target)
        path = urllib.parse.urlsplit(target).path
        with self.lock:
            if self.expected[target]:
                return self.expected[target].popleft()
            if path not in self.answers:
                self.errors.append(f"not expected: {target}")
            return self.answers.get(path, page(path))

    def handle_error(self, *_):
        self.errors.append(traceback.format_exc())


class Request(http.server.BaseHTTPRequestHandler):
    disable_nagle_algorithm = True
    wbufsize = -1  # sends each answer at once

    def do_GET(self):
        answer = self.server.answer_to(self.path)
        if callable(answer):
            answer = answer(self)
        if answer is not None:
            self.answer(answer)

    def do_POST(self):
        """Expected as "POST" and the path."""
        self.rfile.read(int(self.headers["Content-Length"]))
        self.path = f"POST {self.path}"
        self.do_GET()

    def answer(self, body, status=200, **headers):
        """Sends a whole answer; a "_" in a header's name stands for "-"."""
        content = body if isinstance(body, bytes) else body.encode()
        self.send_response(status)
        defaults = {"Content_Type": "text/html; charset=utf-8", "Content_Length": len(content)}
        for name, value in (defaults | headers).items():
            self.send_header(name.replace("_", "-"), str(value))
        self.end_headers()
        self.wfile.write(content)

    def handle(self):
        with contextlib.suppress(ConnectionError):  # the client has hung up
            super().handle()

    def log_message(self, *_):
        pass
