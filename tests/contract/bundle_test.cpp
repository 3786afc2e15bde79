#include "contract/Backend.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vok::test {

TEST(BundleTest, IsTheDirectoryAroundTheProgram) {
    const auto path = backend().bundle.bundlePath();
    EXPECT_TRUE(path.starts_with('/')) << path;
    EXPECT_TRUE(path.ends_with("/Contract Tests.app")) << path;
    EXPECT_TRUE(std::filesystem::exists(path + "/Contents/MacOS/contract_tests"));
}

TEST(BundleTest, HasTheInformationDictionaryOfItsFile) {
    const auto info = backend().bundle.infoDictionary();
    EXPECT_EQ(info.at("CFBundleDisplayName"), "Contract Tests");
    EXPECT_EQ(info.at("CFBundleVersion"), "1.2.3");
}

}  // namespace vok::test
