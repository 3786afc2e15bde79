#include "commands/ExecuteScript.h"
#include "commands/ProductInfo.h"
#include "commands/RunProcess.h"
#include "support/InstallerTest.h"

#include <Poco/TemporaryFile.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>

namespace vok::test {

/// A copy at `path` of the recording tool, whose calls can be looked at afterwards.
struct RecordingTool {
    explicit RecordingTool(std::string file) : path(std::move(file)) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::filesystem::copy_file(RECORDING_TOOL, path);
    }

    void prints(const std::string& output) const { std::ofstream(path + ".output") << output; }
    bool hasRun() const { return std::filesystem::exists(path + ".arguments"); }

    /// What the tool was started with, its own path first, as "[argument][argument]..."; waits for a call and
    /// forgets it. Empty when none comes for much longer than a start takes.
    std::string takeArguments() const {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!hasRun() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        auto arguments = read(".arguments");
        std::filesystem::remove(path + ".arguments");
        return arguments;
    }

    std::string read(const char* ending) const {
        std::ifstream stream(path + ending);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    const std::string path;
};

TEST(ExecuteScript, RaisesTheStatusOfTheShell) {
    const auto failure = [](std::optional<std::string> script) {
        return failureOf([&] { ExecuteScript(script); });
    };
    EXPECT_EQ(failure("exit 0"), "nothing");
    EXPECT_EQ(failure("exit 3 # %"), "generic: Failed to execute script.\nScript = exit 3 # %\nError = 768");
    EXPECT_EQ(failure("kill -9 $$"), "generic: Failed to execute script.\nScript = kill -9 $$\nError = 9");
    EXPECT_EQ(failure({}), "argument: ExecuteScript: Invalid argument.");
}

/// An installer in a bundle with real tools.
struct ToolsTest : InstallerTest {
    void SetUp() override {
        desktop.bundle = bundle;
        start();
    }

    /// Waits for any child of this process and returns its wait status; -1 when there is none.
    static int waitForChild() {
        int status = 0;
        return waitpid(-1, &status, 0) > 0 ? status : -1;
    }

    const Poco::TemporaryFile directory;
    const std::string bundle = directory.path() + "/Vok Test.app";
    const RecordingTool admin{bundle + "/Contents/MacOS/Tools/admin tool"};
    const RecordingTool tool{bundle + "/Contents/MacOS/Tools/install tool"};
};

using RunProcessTest = ToolsTest;

TEST_F(RunProcessTest, StartsTheProgramWithNothingButItsPath) {
    RunProcess(tool.path.c_str());
    EXPECT_EQ(waitForChild(), 0);
    EXPECT_EQ(tool.takeArguments(), "[" + tool.path + "]");
    EXPECT_EQ(tool.read(".environment"), "");
}

TEST_F(RunProcessTest, ChildThatCannotStartEndsAsIfItHad) {
    RunProcess("/missing/program");
    EXPECT_EQ(waitForChild(), 0);
}

TEST_F(RunProcessTest, RunFirefoxReportsNothingAndLooksForItElsewhere) {
    if (std::filesystem::exists("/Applications/Firefox.app"))
        GTEST_SKIP() << "would start the Firefox of this machine";
    EXPECT_EQ(run("command=RunFirefox&callbackUrl=c"), Events{"open Firefox"});
    EXPECT_EQ(waitForChild(), 0);
}

using InstallCommandTest = ToolsTest;

TEST_F(InstallCommandTest, ParametersReachTheToolEscapedAndThroughTheShell) {
    setenv("HOME", "/home/of somebody", 1);
    const auto started = "[" + admin.path + "][" + tool.path + "]";
    const auto common = "[pid=" + pid() + "][agentId=AGENT][targetDir=/opt/target dir]";
    EXPECT_EQ(run("command=Repair&configTemplateUrl=cfg/template%201.xml&reportUrl=a%20b%22c%60%5C%C3%B6"
                  "&installerUrl=pkg/setup.pkg?lang%3Dde%2520"),
              Events{});
    EXPECT_EQ(admin.takeArguments(), started + "[command=Repair]" + common +
                                         "[configTemplateUrl=cfg/template%201.xml]"
                                         "[installerUrl=pkg/setup.pkg?lang=de%2520]"
                                         "[reportUrl=a%20b%22c%60%5C%C3%B6]");
    EXPECT_EQ(run("command=UNINSTALL&reportUrl=r?$HOME"), Events{});
    EXPECT_EQ(admin.takeArguments(),
              started + "[command=uninstall]" + common + "[reportUrl=r?/home/of somebody]");
}

TEST_F(InstallCommandTest, SingleQuoteBreaksTheLineButAMissingToolIsNotNoticed) {
    const auto sheet = run("command=uninstall&reportUrl=it's").at(0);
    const auto beginning = "Failed to execute script.\nScript = /bin/bash -c '\"" + admin.path + "\" \"";
    EXPECT_TRUE(sheet.starts_with(commandFailed(beginning))) << sheet;
    EXPECT_NE(sheet.find("\"reportUrl=it's\"' &\nError = "), sheet.npos) << sheet;
    std::filesystem::remove(admin.path);
    EXPECT_EQ(run("command=uninstall&reportUrl=r"), Events{});
}

struct ProductInfoTest : ToolsTest {
    /// Runs the tool; returns the result, the flag (-7: not written), the version (-: not written) and the
    /// log.
    std::string probe(std::uint32_t size = 32, bool wantsVersion = true) {
        std::int32_t installed = -7;
        char version[64] = "-";
        const auto code = GetInstalledProductInfo(tool.path.c_str(), "AGENT 1", "/opt/target dir", &installed,
                                                  wantsVersion ? version : nullptr, size);
        auto result = StringWithFormat("%d, %d, %s", code, installed, version);
        for (const auto& line : takeLog())
            result += ", " + line.substr(line.find(' ') + 1);
        return result;
    }
};

struct Answer {
    const char* name;
    std::string output;
    std::string result;
};

struct ProductInfoAnswerTest : ProductInfoTest, testing::WithParamInterface<Answer> {};

TEST_P(ProductInfoAnswerTest, IsDecoded) {
    tool.prints(GetParam().output);
    EXPECT_EQ(probe(), GetParam().result);
}

const std::string info = R"(Install info {{"installed": )";
const std::string length31 = "1.234567890123456789012345678.1";
const std::string noLine = "1, -7, -, Command failed (code = 1).";
const std::string tooSmall = "-1, -7, -, installedVersionBufSize is too small.";

const Answer answers[] = {
    {"Installed", info + R"(1, "version": "3.2.0.118"})", "0, 1, 3.2.0.118"},
    {"SecondBrace", info + "1, \"version\": \"3.2\"}}\n", "0, 1, 3.2"},
    {"TextAround", "{}\n[1] " + info + "1, \"version\": \"3.2\"}\nbye\n", "0, 1, 3.2"},
    {"FirstOfTwoLines", info + "1}\n" + info + "2}\n", "0, 1, unknown"},
    {"Two", info + "2}\n", "0, 2, unknown"},
    {"True", info + "true}\n", "0, 1, unknown"},
    {"NotInstalled", info + "0, \"version\": \"1.0\"}\n", "0, 0, 1.0"},
    {"NoInstalled", "Install info {{\"version\": \"1.0\"}\n", "0, 0, -"},
    {"NumberAsVersion", info + "1, \"version\": 5}\n", "0, 1, 5"},
    {"ThirtyOneCharacters", info + R"(1, "version": ")" + length31 + "\"}\n", "0, 1, " + length31},
    {"ThirtyTwoCharacters", info + R"(1, "version": ")" + length31 + "2\"}\n", tooSmall},
    {"TextAsInstalled", info + "\"1\"}\n", "-1, -7, -, Exception: Value is not convertible to Int."},
    {"EmptyRecord", "Install info {}\n", "-1, -7, -, Failed to parse json ('}\n')."},
    {"OtherCase", "install info {{\"installed\": 1}\n", noLine},
    {"TextAfterRecord", info + "1}.\n", noLine},
    {"NoOutput", "", noLine},
};
INSTANTIATE_TEST_SUITE_P(Outputs, ProductInfoAnswerTest, testing::ValuesIn(answers), rowName);

TEST_F(ProductInfoTest, VersionIsDeliveredOnlyWhereItIsWanted) {
    tool.prints(info + "3, \"version\": \"1.0\"}\n");
    EXPECT_EQ(probe(0), "0, 3, -");
    EXPECT_EQ(probe(32, false), "0, 3, -");
    EXPECT_EQ(probe(3), tooSmall);
    EXPECT_EQ(probe(4), "0, 3, 1.0");
}

TEST_F(ProductInfoTest, RefusesNilWithoutRunningTheTool) {
    std::int32_t installed = 0;
    const auto path = tool.path.c_str();
    EXPECT_EQ(GetInstalledProductInfo(nullptr, "a", "t", &installed, nullptr, 0), -1);
    EXPECT_EQ(GetInstalledProductInfo(path, nullptr, "t", &installed, nullptr, 0), -1);
    EXPECT_EQ(GetInstalledProductInfo(path, "a", nullptr, &installed, nullptr, 0), -1);
    EXPECT_EQ(GetInstalledProductInfo(path, "a", "t", nullptr, nullptr, 0), -1);
    EXPECT_EQ(takeLog(), Events(4, "GetInstalledProductInfo: Invalid argument."));
    EXPECT_FALSE(tool.hasRun());
}

TEST_F(ProductInfoTest, ReadsMuchOutputToItsEnd) {
    std::string output(8'000'000, '\n');
    for (int line = 0; line < 20'000; ++line)  // more than a pipe holds
        output += info + "1}\n";
    tool.prints(output);
    EXPECT_EQ(probe(), "0, 1, unknown");
    std::filesystem::remove(tool.path);
    EXPECT_EQ(probe(), noLine);
}

TEST_F(ProductInfoTest, LeavesTheLimitOfOpenFilesAsItWas) {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    probe();
    getrlimit(RLIMIT_NOFILE, &limit);
    EXPECT_EQ(limit.rlim_cur, limit.rlim_max);
}

TEST_F(ProductInfoTest, GetStateReportsToThePage) {
    const auto state = [&](const std::string& output) {
        tool.prints(output);
        return run("command=GETSTATE&callbackUrl=c").at(0).substr(("load c?" + report("GETSTATE")).size());
    };
    EXPECT_EQ(state(info + "2, \"version\": \"3.2\"}"), "productState=Installed&version=3.2");
    EXPECT_EQ(state(info + "0, \"version\": \"3.2\"}"), "productState=NotInstalled&version=3.2");
    EXPECT_EQ(state("Install info {{}}"), "productState=NotInstalled&version=");
    EXPECT_EQ(state("nothing"), "productState=NotInstalled");
    EXPECT_EQ(tool.takeArguments(),
              "[" + tool.path +
                  "][command=print_installed_product_info][agentId=AGENT][targetDir=/opt/target dir]"
                  "[print_info_prefix=Install info {{][print_info_suffix=}]");
}

}  // namespace vok::test
