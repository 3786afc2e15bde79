#include "WindowTest.h"

#include <fstream>
#include <regex>

namespace vok::test {

namespace {

TEST_F(WindowTest, CommandsReportOnTheirCallbackPages) {
    std::ofstream(tools / "install tool.output")
        << "noise\nInstall info {{\"installed\": 1, \"version\": \"3.2\"}\n";
    startWithFirstPage(command("getbrowsers", "/browsers"));
    server.expect(command("getbrowsers", "/browsers"));
    server.expect("/browsers?" + report("getbrowsers", "type[]=&version[]=&"),
                  pageGoingTo(command("runfirefox", "/never")));
    server.expect(command("runfirefox", "/never"), pageGoingTo(command("Cancel", "/cancelled?step=3")));
    server.expect(command("Cancel", "/cancelled?step=3"));
    server.expect("/cancelled?step=3&" + report("Cancel"), pageGoingTo(command("getstate", "/state")));
    server.expect(command("getstate", "/state"));
    server.expect("/state?" + report("getstate", "productState=Installed&version=3.2"));
    awaitRequests();
    EXPECT_EQ(calls("install tool"),
              (Texts{"[command=print_installed_product_info][agentId=AGENT][targetDir=/opt/target dir]"
                     "[print_info_prefix=Install info {{][print_info_suffix=}]"}));
    closeWindow();
}

TEST_F(WindowTest, ToolsAreNotToldHowTheWindowIsDrawn) {
    std::ofstream(tools / "install tool")
        << "#!/bin/sh\n"
           "env | grep -E '^(GSK_RENDERER|GDK_DEBUG|GDK_DISABLE|WEBKIT_)' ||"
           " echo 'Install info {{\"installed\": 1, \"version\": \"free\"}'\n";
    startWithFirstPage(command("getstate", "/state"));
    server.expect(command("getstate", "/state"));
    server.expect("/state?" + report("getstate", "productState=Installed&version=free"));
    awaitRequests();
}

TEST_F(WindowTest, HideMiniaturisesAndThePageGoesOnAtFullSpeed) {
    startWithFirstPage(command("hide", "/back"));
    server.expect(command("hide", "/back"));
    server.expect("/back?" + report("hide"),
                  {"<!doctype html><script>"
                   "let ticks = 0, begin, timer = setInterval(() => {"
                   "  if (!document.hidden) return;"
                   "  if (!ticks++) begin = Date.now();"
                   "  if (ticks < 40) return;"
                   "  clearInterval(timer);"
                   "  location = Date.now() - begin < 8000 ? '/polled' : '/slow' }, 50)</script>"});
    server.expect("/polled");
    awaitRequests();
    awaitWindow("Iconic");
}

TEST_F(WindowTest, FinishEndsTheProgram) {
    startWithFirstPage(command("finish"));
    server.expect(command("finish"));
    EXPECT_EQ(installer->exitStatus(), 0);
}

TEST_F(WindowTest, InstallAndUninstallStartTheToolWithItsArguments) {
    const auto install = command("Repair&configTemplateUrl=cfg%20%C3%BC.xml&installerUrl=a%2Fb%3Fc%3Dd"
                                 "&reportUrl=r%22%25");
    const auto uninstall = command("UNINSTALL&reportUrl=r%3Fs%3D1");
    startWithFirstPage(install);
    server.expect(install, {"<!doctype html><script>onload = () => fetch('/go').then(() => location = '" +
                            uninstall + "')</script>"});
    server.expect("/go", {.before = [this] { calls("admin tool", 1); }});
    server.expect(uninstall);
    awaitRequests();
    auto started = calls("admin tool", 2);
    for (auto& call : started)
        call = std::regex_replace(call, std::regex("pid=[-0-9A-F]{36}"), "pid=PID");
    const auto common = "[pid=PID][agentId=AGENT][targetDir=/opt/target dir]";
    const auto tool = "[" + (tools / "install tool").string() + "]";
    EXPECT_EQ(started, (Texts{tool + "[command=Repair]" + common + "[configTemplateUrl=cfg%20%C3%BC.xml]" +
                                  "[installerUrl=a/b?c=d][reportUrl=r%22%25]",
                              tool + "[command=uninstall]" + common + "[reportUrl=r?s=1]"}));
}

TEST_F(WindowTest, ARefusedRestartIsShown) {
    setRestart("raise dbus.exceptions.DBusException('Not <b>now</b>.', name='org.example.Refused')");
    startWithFirstPage(command("reboot"));
    server.expect(command("reboot"));
    awaitRequests();
    awaitSheet("Reboot failed.\nNot <b>now</b>.");
    EXPECT_TRUE(installer->isRunning());
}

TEST_F(WindowTest, AnAcceptedRestartEndsTheProgram) {
    const auto asked = sandbox.path() + "/restart";
    setRestart("if args[0]: open('" + asked + "', 'w')");
    startWithFirstPage(command("reboot"));
    server.expect(command("reboot"));
    EXPECT_EQ(installer->exitStatus(), 0);
    EXPECT_TRUE(std::filesystem::exists(asked));
}

TEST_F(WindowTest, SheetsShowTheirTextLiterallyAndOneAfterTheOther) {
    const auto first = command("%3Cb%3E%25d%0A%26amp%3B%00");
    startWithFirstPage(first);
    server.expect(first, pageGoingTo(command("second")));
    server.expect(command("second"), pageGoingTo("/command"));
    server.expect("/command", pageGoingTo("/last"));
    server.expect("/last");
    awaitRequests();
    awaitLog(server.url("/last"));
    for (const auto* failure :
         {"Unsupported command (command = '<b>%d\n&amp;\uFFFD').", "Unsupported command (command = 'second').",
          "Invalid argument (urlQuery is nil)."}) {
        awaitSheet(std::string("Failed to execute command.\n") + failure);
        pressSheetButton();
    }
    awaitNoSheet();
    closeWindow();
}

}  // namespace

}  // namespace vok::test
