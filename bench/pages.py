"""The pages that the measured programs show, and the moments at which they ask for them."""
import http.server
import pathlib
import threading
import time

PAGES = pathlib.Path(__file__).resolve().parent.parent / "examples" / "demo" / "pages"
TYPES = {".css": "text/css", ".html": "text/html", ".js": "text/javascript"}

# The demo's first page, telling of its load event.
TELL_LOADED = b"<script>addEventListener('load', () => fetch('/loaded'))</script></body>"

# Goes to the command page as soon as it has loaded, again and again; the server hears of the moments before and
# after.
TRIP = b"""<!doctype html><title>Trip</title><script>
fetch('/arrived');
const leave = () => {
    const request = new XMLHttpRequest();
    request.open('GET', '/leaving', false);
    request.send();
    location = '/command?command=cancel&callbackUrl=' + encodeURIComponent(location.origin + '/trip');
};
addEventListener('load', () => setTimeout(leave, 100));
</script>"""


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    disable_nagle_algorithm = True

    def do_GET(self):
        path = self.path.partition("?")[0]
        self.server.note(path)
        file = PAGES / path[1:]
        if path == "/trip":
            self.answer(TRIP)
        elif path in ("/leaving", "/arrived", "/loaded", "/command"):
            self.answer(b"<!doctype html><title>Command</title>")
        elif file.is_file():
            self.answer(file.read_bytes().replace(b"</body>", TELL_LOADED), TYPES[file.suffix])
        else:
            self.answer(b"", status=404)

    def answer(self, body, media_type="text/html", status=200):
        self.send_response(status)
        self.send_header("Content-Type", media_type + "; charset=utf-8")
        self.send_header("Content-Length", str(len(body)))
        self.send_header("Cache-Control", "no-store")
        self._headers_buffer += [b"\r\n", body]
        self.flush_headers()

    def log_message(self, *_):
        pass


class Site(http.server.ThreadingHTTPServer):
    """Listens on 127.0.0.1 until the program ends."""

    def __init__(self):
        super().__init__(("127.0.0.1", 0), Handler)
        self.url = f"http://127.0.0.1:{self.server_port}"
        self.changed = threading.Condition()
        self.moments = []
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def note(self, path):
        with self.changed:
            self.moments.append((path, time.monotonic()))
            self.changed.notify_all()

    def forget(self):
        with self.changed:
            self.moments = []

    def times(self, path, count=1, limit=60):
        """The moments of the first `count` requests for `path`; waits for them."""
        def found():
            return [moment for asked, moment in self.moments if asked == path]
        with self.changed:
            if not self.changed.wait_for(lambda: len(found()) >= count, limit):
                raise TimeoutError(f"{path} was asked for {len(found())} of {count} times within {limit} s")
            return found()[:count]
