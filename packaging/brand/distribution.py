"""This computer's package database: names, owners of files, dependencies."""
import functools
import re
import shutil
import subprocess

# Names of well-known programs, which are taken even where this computer's package lists lack them.
WELL_KNOWN = set("""
    ansible apache2 apt audacity bash blender brave-browser chromium code coreutils curl discord docker docker-ce dpkg
    edge emacs evolution firefox gimp git gnome-shell google-chrome inkscape java kodi libreoffice linux mariadb
    microsoft-edge-stable mysql nginx nodejs npm obs-studio opera perl php podman postgresql python python3 qemu rsync
    ruby signal-desktop skypeforlinux slack slack-desktop snapd spotify-client ssh steam sudo systemd teams thunderbird
    vim virtualbox vivaldi-stable vlc wine xorg zoom zsh
""".split())


@functools.cache
def output_of(*command):
    """The command's output; empty when it fails or is not installed."""
    if not shutil.which(command[0]):
        return ""
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False).stdout.decode()


def is_taken(package, maintainer):
    """Whether another package has this name."""
    maintainers = re.findall("^Maintainer: (.*)$", output_of("apt-cache", "show", package), re.MULTILINE)
    return package in WELL_KNOWN or any(other != maintainer for other in maintainers)


def unknown_packages(depends):
    """Those missing from this computer's package lists; none when it has no lists."""
    if not output_of("apt-cache", "show", "libc6", "libc-bin"):
        return []
    return [name for name in names_in(depends) if not output_of("apt-cache", "showpkg", name)]


def names_in(depends):
    """The packages named in the value of a Depends field, alternatives included."""
    return re.findall(r"(?:^|[,|])\s*([a-z0-9][a-z0-9.+-]*)", depends)


def owner_of(program):
    """The installed package that a program is in. /bin may be a link to /usr/bin, and a program one to another."""
    plain = [path.removeprefix("/usr") for path in (str(program), str(program.resolve()))]
    found = output_of("dpkg-query", "--search", *plain, *(f"/usr{path}" for path in plain))
    owners = [re.split("[:,]", line)[0] for line in found.splitlines() if not line.startswith("diversion")]
    return owners[0] if owners else None


@functools.cache
def installed():
    """The packages on this computer, with whether each is essential and what it depends on."""
    lines = output_of("dpkg-query", "--show", "--showformat",
                      r"${Package}\t${Essential}\t${Depends}, ${Pre-Depends}\n").splitlines()
    return {name: (essential == "yes", names_in(depends))
            for name, essential, depends in (line.split("\t") for line in lines)}


def is_brought_by(package, depends):
    """Whether every system with these dependencies has the package."""
    waiting = names_in(depends) + [name for name, (essential, _) in installed().items() if essential]
    seen = set()
    while waiting:
        name = waiting.pop()
        if name == package:
            return True
        if name not in seen:
            seen.add(name)
            waiting += installed().get(name, (False, []))[1]
    return False
