"""The pages that the measured programs show, and the times of their requests."""
import pathlib
import threading
import time

from rig.page_server import PageServer, Request

PAGES = pathlib.Path(__file__).resolve().parent.parent / "examples" / "demo" / "pages"
TYPES = {".css": "text/css", ".html": "text/html", ".js": "text/javascript"}

# The demo's first page, which reports its load event.
TELL_LOADED = b"<script>addEventListener('load', () => fetch('/loaded'))</script></body>"

# The splash page reports when it has been drawn; the page after it waits for that.
TELL_DRAWN = "<script>requestAnimationFrame(() => requestAnimationFrame(() => { new Image().src = '%s' }))</script>"

# Navigates to the command page as soon as it has loaded, repeatedly, and reports the times before and after to the
# server.
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


class KeptConnection(Request):
    protocol_version = "HTTP/1.1"

    def answer(self, body, status=200, **headers):
        super().answer(body, status, Cache_Control="no-store", **headers)


class Site(PageServer):
    """The demo's pages, and the times of their requests."""

    def __init__(self):
        super().__init__()
        self.RequestHandlerClass = KeptConnection
        self.changed = threading.Condition()
        self.moments = []
        self.open()

    def answer_to(self, target):
        path = target.partition("?")[0]
        with self.changed:
            self.moments.append((path, time.monotonic()))
            self.changed.notify_all()
        if path == "/trip":
            return TRIP
        if path == "/after-drawn":
            self.times("/drawn")
        file = PAGES / path[1:]
        if not file.is_file():
            return "<!doctype html><title>Command</title>"
        content = file.read_bytes().replace(b"</body>", TELL_LOADED)
        return lambda request: request.answer(content, Content_Type=TYPES[file.suffix])

    def forget(self):
        with self.changed:
            self.moments = []

    def times(self, path, count=1, limit=60):
        """The times of the first `count` requests for `path`; waits for them."""
        def found():
            return [moment for asked, moment in self.moments if asked == path]
        with self.changed:
            if not self.changed.wait_for(lambda: len(found()) >= count, limit):
                raise TimeoutError(f"{path} was requested {len(found())} of {count} times within {limit} s")
            return found()[:count]
