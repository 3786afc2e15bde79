"""Serves a directory of pages on this computer, without caching, and reloads the page shown when a file changes."""
import functools
import http.server
import json
import pathlib
import threading
import urllib.parse

# Reloads a page when the version of the pages changes.
RELOAD = b"""<script>(async () => {
    const version = async () => (await fetch('/preview/version')).text();
    const first = await version();
    setInterval(async () => await version() === first || location.reload(), 500);
})()</script>"""


class Site(http.server.SimpleHTTPRequestHandler):
    """One request. Reports of the install tool are kept as the page kit expects it."""

    reports = {}

    def __init__(self, *arguments, command_path, **options):
        self.command_path = command_path
        super().__init__(*arguments, **options)

    def do_GET(self):
        url = urllib.parse.urlsplit(self.path)
        query = dict(urllib.parse.parse_qsl(url.query, keep_blank_values=True))
        name = url.path.rpartition("/")[2]
        if name == "report":
            count = self.reports.get(query.get("job"), {}).get("reports", 0)
            self.reports[query.get("job")] = query | {"reports": count + 1}
            self.answer(b"", "text/plain")
        elif name == "progress":
            self.answer(json.dumps(self.reports.get(query.get("job"), {})).encode(), "application/json")
        elif url.path == "/preview/version":
            self.answer(str(self.version()).encode(), "text/plain")
        else:
            self.answer_file(url.path)

    def answer_file(self, path):
        """A file, with the script for reloading in a page; not at a command URL, where a reload repeats the command."""
        found = self.translate_path(path)
        if found.endswith((".html", ".htm")) and not path.startswith(self.command_path):
            try:
                with open(found, "rb") as stream:
                    self.answer(stream.read() + RELOAD, "text/html")
                return
            except OSError:
                pass  # becomes the 404 below
        super().do_GET()

    def answer(self, body, kind):
        self.send_response(200)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def version(self):
        return sum(file.stat().st_mtime_ns for file in pathlib.Path(self.directory).rglob("*") if file.is_file())

    def end_headers(self):
        self.send_header("Cache-Control", "no-store")
        super().end_headers()

    def log_message(self, *_):
        pass  # the installer logs each address


def serve(directory, command_path):
    """Serves until the program ends; the host and port that it serves at."""
    handler = functools.partial(Site, directory=str(directory), command_path=command_path)
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return f"127.0.0.1:{server.server_port}"
