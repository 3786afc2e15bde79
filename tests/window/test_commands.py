"""Commands, from the command URL to what the user, the tools and the callback page see."""

import re
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


def test_commands_report_on_their_callback_pages(installer, server, start):
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
    start(browsers)
    installer.wait_for_requests()
    assert installer.calls("install tool") == [
        "[command=print_installed_product_info][agentId=AGENT][targetDir=/opt/target dir]"
        "[print_info_prefix=Install info {{][print_info_suffix=}]"]


def test_browsers_of_the_desktop_are_named_and_started(installer, server, start):
    installer.environment |= NO_BROWSERS
    for entry, program, version in (("firefox-esr", "fire fox", "Mozilla Firefox 128.3.0esr"),
                                    ("chromium", "chromium", "Chromium 120.0.6099.109 built on Debian 12")):
        installer.tool(program, f"echo '{version}'")
        (installer.home / f".local/share/applications/{entry}.desktop").write_text(
            f'[Desktop Entry]\nType=Application\nName=Browser\nExec="{installer.tools}/{program}" %u\n')
    browsers, firefox = installer.command("getbrowsers", "/browsers"), installer.command("runfirefox", "/never")
    server.expect(browsers)
    server.expect("/browsers?" + report(
        "getbrowsers", "type[0]=chrome&version[0]=120.0.6099.109&type[1]=firefox&version[1]=128.3.0esr&"),
        page("browsers", firefox))
    server.expect(firefox)
    start(browsers)
    installer.wait_for_requests()
    assert installer.calls("fire fox", 2) == ["[--version]", "[]"]


def test_a_browser_that_env_starts_is_asked_for_its_version(installer, server, start):
    """Like a snap. env has its own --version."""
    installer.environment |= NO_BROWSERS
    installer.tool("fire fox", "echo 'Mozilla Firefox 128.0'")
    (installer.home / ".local/share/applications/firefox_firefox.desktop").write_text(
        "[Desktop Entry]\nType=Application\nName=Browser\n"
        f'Exec=env BAMF_DESKTOP_FILE_HINT=/a.desktop "{installer.tools}/fire fox" %u\n')
    browsers = installer.command("getbrowsers", "/browsers")
    server.expect(browsers)
    server.expect("/browsers?" + report("getbrowsers", "type[0]=firefox&version[0]=128.0&"))
    start(browsers)
    installer.wait_for_requests()


def test_a_single_option_prints_and_ends(installer):
    """Without a display."""
    environment = {"PATH": installer.environment["PATH"]}
    version, usage = (subprocess.run([installer.program, option], env=environment, stdout=subprocess.PIPE, text=True,
                                     check=True).stdout for option in ("--version", "--help"))
    assert version == f"{TITLE} 1.2.3\n"
    assert "journalctl -t vok-installer" in usage


def test_tools_do_not_inherit_the_renderer(installer, server, start):
    installer.tool("install tool", "env | grep -E '^(GSK_RENDERER|GDK_DEBUG|GDK_DISABLE|WEBKIT_)' || "
                   """echo 'Install info {{"installed": 1, "version": "free"}'""")
    state = installer.command("getstate")
    server.expect(state)
    server.expect("/back?" + report("getstate", "productState=Installed&version=free"))
    start(state)
    installer.wait_for_requests()


def test_hide_miniaturises_and_the_page_keeps_its_speed(installer, server, start):
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


def test_finish_ends_the_program(installer, server, start):
    finish = installer.command("finish", callback=None)
    server.expect(finish)
    start(finish)
    assert installer.exit_status() == 0


def test_install_commands_start_the_tool_with_its_arguments(installer, server, start):
    repair = installer.command("Repair", configTemplateUrl="cfg%20ü.xml", installerUrl="a/b?c=d", reportUrl="r\"%")
    uninstall = installer.command("UNINSTALL", callback=None, reportUrl="r?s=1")
    server.expect(repair, script_page(f"onload = () => fetch('/go').then(() => location = '{uninstall}')"))
    server.expect("/go", lambda request: installer.calls("admin tool", 1) and page("go"))
    server.expect(uninstall)
    start(repair)
    installer.wait_for_requests()
    common = "[pid=PID][agentId=AGENT][targetDir=/opt/target dir]"
    tool = f"[{installer.tools}/install tool]"
    assert [re.sub("pid=[-0-9A-F]{36}", "pid=PID", call) for call in installer.calls("admin tool", 2)] == [
        f"{tool}[command=Repair]{common}"
        "[configTemplateUrl=cfg%2520%C3%BC.xml][installerUrl=a/b?c=d][reportUrl=r%22%25]",
        f"{tool}[command=uninstall]{common}[reportUrl=r?s=1]"]


def test_a_refused_restart_is_shown(installer, server, start):
    set_restart("raise dbus.exceptions.DBusException('Not <b>now</b>.', name='org.example.Refused')")
    reboot = installer.command("reboot", callback=None)
    server.expect(reboot)
    start(reboot)
    installer.wait_for_sheet("Error", "Reboot failed.\nNot <b>now</b>.", "OK")
    assert installer.is_running()


def test_an_accepted_restart_ends_the_program(installer, server, start):
    asked = installer.directory / "restart"
    set_restart(f"if args[0]: open('{asked}', 'w')")
    reboot = installer.command("reboot", callback=None)
    server.expect(reboot)
    start(reboot)
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
    for message in ("Unsupported command (command = '<b>%d\n&amp;\N{REPLACEMENT CHARACTER}').",
                    "Unsupported command (command = 'second').", "Invalid argument (urlQuery is nil)."):
        installer.wait_for_sheet("Error", f"Failed to execute command.\n{message}", "OK")
        installer.press_sheet_button()
    installer.wait_for_no_sheet()
    installer.close_window()


def test_the_first_page_may_redirect_to_a_command(installer, server):
    state = installer.command("getstate")
    server.expect(installer.first_path(), redirect(state))
    server.expect(state)
    server.expect("/back?" + NOT_INSTALLED)
    installer.start()
    installer.wait_for_requests()
    assert len(installer.calls("install tool")) == 1


def test_a_command_in_a_sub_frame_runs_nothing(installer, server):
    wrong, state = installer.command("getstate", "/wrong"), installer.command("GETSTATE")
    server.expect(installer.first_path(), f"<!doctype html><iframe src='{wrong}'></iframe>{page('first', state)}")
    server.expect(wrong)
    server.expect(state)
    server.expect("/back?" + report("GETSTATE", "productState=NotInstalled"))
    installer.start()
    installer.wait_for_requests()
    assert len(installer.calls("install tool")) == 1
