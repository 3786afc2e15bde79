"""Commands, from the command URL to what the user, the tools and the callback page see."""

import subprocess

from rig import desktop
from rig.installer import TITLE
from rig.page_server import page, redirect, script_page
from rig.waiting import output


def report(action, result=""):
    """What the report of `action` adds to the callback URL."""
    return f"pid=PID&agentId=AGENT&action={action}&event=finished&result=success&{result}"


# No desktop entries but those in the home directory.
NO_BROWSERS = {"XDG_DATA_DIRS": "/nonexistent", "GSETTINGS_SCHEMA_DIR": "/usr/share/glib-2.0/schemas"}
NOT_INSTALLED = report("getstate", "productState=NotInstalled")


def set_restart(code):
    """Lets the logind service run `code`, in Python, when it is asked for a restart."""
    output("gdbus", "call", "--system", "-d", "org.freedesktop.login1", "-o", "/org/freedesktop/login1", "-m",
           "org.freedesktop.DBus.Mock.AddMethod", "org.freedesktop.login1.Manager", "Reboot", "b", "", code)


def test_commands_report_on_their_callback_pages(installer, server, start_with):
    """The first page redirects to the first of them."""
    installer.environment |= NO_BROWSERS
    installer.tool("install tool", """printf 'noise\\nInstall info {{"installed": 1, "version": "3.2"}\\n'""")
    browsers, cancel = installer.command("getbrowsers", "/browsers"), installer.command("Cancel", "/cancelled?step=3")
    firefox, state = installer.command("runfirefox", "/never"), installer.command("getstate", "/state")
    server.expect(browsers)
    server.expect("/browsers?" + report("getbrowsers", "type[]=&version[]=&"), page("browsers", firefox))
    server.expect(firefox, page("firefox", cancel))
    server.expect(cancel)
    server.expect("/cancelled?step=3&" + report("Cancel"), page("cancelled", state))
    server.expect(state)
    server.expect("/state?" + report("getstate", "productState=Installed&version=3.2"))
    start_with(redirect(browsers))
    installer.wait_for_requests()
    assert installer.calls("install tool") == [
        "[command=print_installed_product_info][agentId=AGENT][targetDir=/opt/target dir]"
        "[print_info_prefix=Install info {{][print_info_suffix=}]"]


def test_browsers_of_the_desktop_are_named_and_started(installer, server, start):
    """Chromium is a snap, whose entry runs env, and Firefox a flatpak; both have a --version of their own."""
    installer.environment |= NO_BROWSERS
    installer.tool("flatpak", "echo 'Mozilla Firefox 128.3.0esr'")
    installer.desktop_entry("org.mozilla.firefox", f'"{installer.tools}/flatpak" run --command=firefox '
                                                   "--file-forwarding org.mozilla.firefox @@u %u @@")
    installer.tool("chromium", "echo 'Chromium 120.0.6099.109 built on Debian 12'")
    installer.desktop_entry("chromium_chromium",
                            f'env BAMF_DESKTOP_FILE_HINT=/a.desktop "{installer.tools}/chromium" %u')
    browsers, firefox = installer.command("getbrowsers", "/browsers"), installer.command("runfirefox", "/never")
    server.expect(browsers)
    server.expect("/browsers?" + report(
        "getbrowsers", "type[0]=chrome&version[0]=120.0.6099.109&type[1]=firefox&version[1]=128.3.0esr&"),
        page("browsers", firefox))
    server.expect(firefox)
    start(browsers)
    installer.wait_for_requests()
    assert installer.calls("flatpak", 2) == [
        "[run][org.mozilla.firefox][--version]",
        "[run][--command=firefox][--file-forwarding][org.mozilla.firefox][@@u][@@]"]


def test_a_single_option_prints_and_ends(installer):
    """Without a display."""
    environment = {"PATH": installer.environment["PATH"]}
    version, usage = (subprocess.run([installer.program, option], env=environment, stdout=subprocess.PIPE, text=True,
                                     check=True).stdout for option in ("--version", "--help"))
    assert version == f"{TITLE} 1.2.3\n"
    assert "journalctl -t vok-installer" in usage


def test_a_hidden_page_keeps_its_speed_and_a_second_start_brings_the_window_back(installer, server, start):
    hide = installer.command("hide")
    server.expect(hide)
    server.expect("/back?" + report("hide"), script_page("""
        let ticks = 0, begin, timer = setInterval(() => {
            if (!document.hidden) return
            if (!ticks++) begin = Date.now()
            if (ticks < 40) return
            clearInterval(timer)
            location = Date.now() - begin < 8000 ? '/polled' : '/slow' }, 50)"""))
    server.expect("/polled")
    start(hide)
    installer.wait_for_requests()
    desktop.wait_for_window(TITLE, "Iconic")
    second = installer.launch()
    assert second.wait(60) == 0
    assert not output("pgrep", "-g", str(second.pid)), "the second start has left a process"
    desktop.wait_for_window(TITLE, "Normal")
    assert installer.is_running()


def test_a_refused_restart_is_shown_and_an_accepted_one_ends_the_program(installer, server, start):
    refused, accepted = (installer.command("reboot", callback=None, number=number) for number in "12")
    asked = installer.directory / "restart"

    def accept(_):
        installer.wait_for_sheet("Error", "Reboot failed.\nNot <b>now</b>.", "OK")
        set_restart(f"if args[0]: open('{asked}', 'w')")
        return ""
    set_restart("raise dbus.exceptions.DBusException('Not <b>now</b>.', name='org.example.Refused')")
    server.expect(refused, script_page(f"onload = () => fetch('/accept').then(() => location = '{accepted}')"))
    server.expect("/accept", accept)
    server.expect(accepted)
    start(refused)
    assert installer.exit_status() == 0
    assert asked.exists()


def test_sheets_show_their_text_literally_and_one_after_the_other(installer, server, start):
    first = installer.command("%3Cb%3E%25d%0A%26amp%3B%00", callback=None)
    second = installer.command("second", callback=None)
    server.expect(first, page("first", second))
    server.expect(second, page("second", "/command"))
    server.expect("/command", page("command", "/last"))
    server.expect("/last")
    start(first)
    installer.wait_for_requests()
    installer.wait_for_log(server.url("/last"))
    desktop.wait_for_active_window("Error")
    for message in ("Unsupported command (command = '<b>%d\n&amp;\N{REPLACEMENT CHARACTER}').",
                    "Unsupported command (command = 'second').", "Invalid argument (urlQuery is nil)."):
        installer.wait_for_sheet("Error", f"Failed to execute command.\n{message}", "OK")
        installer.press_sheet_button()
    installer.wait_for_no_sheet()
    installer.close_window()
