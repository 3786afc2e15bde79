"""Mistakes in the addresses of a product's configuration."""
import ipaddress
import re

DEFAULT_PORTS = {"http": 80, "https": 443}
THIS_COMPUTER = ("127.0.0.1", "localhost")

# The ports that the Fetch standard forbids, and the web view with it.
BLOCKED_PORTS = {
    1, 7, 9, 11, 13, 15, 17, 19, 20, 21, 22, 23, 25, 37, 42, 43, 53, 69, 77, 79, 87, 95, 101, 102, 103, 104, 109, 110,
    111, 113, 115, 117, 119, 123, 135, 137, 139, 143, 161, 179, 389, 427, 465, 512, 513, 514, 515, 526, 530, 531, 532,
    540, 548, 554, 556, 563, 587, 601, 636, 989, 990, 993, 995, 1719, 1720, 1723, 2049, 3659, 4045, 4190, 5060, 5061,
    6000, 6566, 6665, 6666, 6667, 6668, 6669, 6679, 6697, 10080,
}


def is_host(host):
    """Whether this is a DNS name or an IPv4 address as the web view writes it."""
    labels = host.split(".")
    if re.fullmatch(r"\d+|0x[0-9a-f]*", labels[-1]):
        try:
            return str(ipaddress.IPv4Address(host)) == host
        except ValueError:
            return False
    return len(host) <= 253 and all(re.fullmatch(r"[a-z0-9]([a-z0-9-]{0,61}[a-z0-9])?", label) for label in labels)


def split_url(url):
    """Scheme, host with port, and the rest; None when it is no http or https URL."""
    match = re.fullmatch(r"(https?)://([^/?#]*)(.*)", url, re.DOTALL)
    return match.groups() if match else None


def url_sentences(value):
    """Commands are found by comparing addresses, so these must be in the form in which the web view writes them."""
    parts = split_url(value)
    if not parts:
        yield "must be an address that begins with https://"
        return
    scheme, netloc, rest = parts
    host = netloc.partition(":")[0]
    if scheme == "http" and host not in THIS_COMPUTER:
        yield "must use https: whoever can change its pages on the network can run commands on the user's computer"
    if "@" in netloc:
        yield "must not contain a user name"
    else:
        yield from netloc_sentences(netloc, DEFAULT_PORTS[scheme])
    path = re.split("[?#]", rest)[0]
    if path != rest:
        yield "must not contain a query or a fragment"
    if not re.fullmatch(r"[A-Za-z0-9/._~!()*,;:@&=+-]*", path):
        yield "must have a path without blanks, escapes and other special characters"
    if {".", ".."} & set(path.split("/")):
        yield "must not contain . or .. as a part of its path"


def netloc_sentences(netloc, *default_ports):
    host, colon, port = netloc.partition(":")
    if host != host.lower():
        yield "must have its host in lower-case letters"
    elif not is_host(host):
        yield f"needs a host name such as setup.example.com, and '{host}' is none"
    if not colon:
        return
    if not re.fullmatch(r"[1-9]\d{0,4}", port, re.ASCII) or int(port) > 65535:
        yield f"has the port '{port}', which must be a number from 1 to 65535"
    elif int(port) in default_ports:
        yield f"must leave out the port {port}, as the web view does"
    elif int(port) in BLOCKED_PORTS:
        yield f"uses the port {port}, which the web view refuses"


def page_sentences(value):
    yield from url_sentences(value)
    if re.fullmatch(r"https?://[^/]+", value):
        yield "must have a path, at least /"


def prefix_sentences(value):
    yield from url_sentences(value)
    if re.fullmatch(r"https?://[^/]*", value):
        yield (f"must have a path after the host: every address that begins with it is a command, "
               f"also '{value}.example.net'")
    elif re.fullmatch(r"https?://[^/]*/+", value):
        yield "must have a path of its own after the host: every page of the host would be a command"


def host_list_sentences(value):
    """pageHosts: exact names, with a port where it is not the scheme's own."""
    hosts = value.split(" ")
    for host in sorted(filter(None, hosts)):
        if "*" in host or "/" in host:
            yield f"contains '{host}', but must hold exact host names without scheme, path and *"
        else:
            yield from (f"contains '{host}', which {sentence}" for sentence in netloc_sentences(host, 80, 443))
    if not any(hosts):
        yield "names no host"


def hosts_of(values):
    """Host, with its port if there is one, of the addresses that the configuration gives to these keys."""
    parts = [split_url(values.get(key, "")) for key in ("firstInstallationPageUrl", "commandUrlPrefix")]
    return [part[1] if part else None for part in parts]


def uncovered_sentences(values):
    """Both addresses must be of pages that the window shows."""
    listed = values.get("pageHosts", "").split(" ")
    for key, host in zip(("firstInstallationPageUrl", "commandUrlPrefix"), hosts_of(values)):
        if "pageHosts" in values and host and host not in listed:
            yield f"pageHosts lacks '{host}', the host of {key}"


def notes_on_hosts(values):
    page, prefix = hosts_of(values)
    if page != prefix:
        yield f"commandUrlPrefix is on another host than the first page: '{prefix}' and '{page}' can both run commands"
    if "pageHosts" not in values:
        hosts = " ".join(dict.fromkeys((page, prefix)))
        yield (f"pageHosts is missing, so every page that the user reaches in the window can run commands; "
               f"'{hosts}' keeps other hosts out")
    for host in dict.fromkeys(values.get("pageHosts", "").split()):
        if host not in (page, prefix):
            yield f"pageHosts lets the pages of '{host}' run commands, too"
