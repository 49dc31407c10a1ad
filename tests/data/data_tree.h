// Where the tests of the data tree find what the build made: the build
// folder is the parent of RANVEL_TEST_TMP, the tree and the tool lie in its
// bin/, and the source folder is the one its CMake cache names.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace ranvel::testing {

inline std::filesystem::path BuildDir()
{
    const char* env = std::getenv("RANVEL_TEST_TMP");
    if (!env || !*env) return {};
    return std::filesystem::weakly_canonical(std::filesystem::path(env) / "..");
}

inline std::filesystem::path BuiltTree()
{
    return BuildDir() / "bin";
}
inline std::filesystem::path Tool()
{
    return BuildDir() / "bin" / "ranvel-makedata";
}

inline std::filesystem::path SourceDir()
{
    std::ifstream cache(BuildDir() / "CMakeCache.txt");
    const std::string key = "CMAKE_HOME_DIRECTORY:INTERNAL=";
    for (std::string line; std::getline(cache, line);)
        if (line.rfind(key, 0) == 0) return line.substr(key.size());
    return {};
}

// A fresh, empty folder for the running test: below RANVEL_TEST_TMP, or
// below the system's temporary folder for a run outside the build.
inline std::filesystem::path DataScratch()
{
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    const char* env = std::getenv("RANVEL_TEST_TMP");
    const std::filesystem::path root =
        env && *env ? std::filesystem::path(env) : std::filesystem::temp_directory_path() / "ranvel-tests";
    auto dir = root / "data" /
               (std::string(info->test_suite_name()) + "." + info->name());
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir;
}

inline std::string Slurp(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

}  // namespace ranvel::testing

// The tree is only there in a build folder; without one there is nothing
// to look at.
#define RANVEL_REQUIRE_BUILD_TREE()                                                          \
    do {                                                                                     \
        if (::ranvel::testing::BuildDir().empty() || ::ranvel::testing::SourceDir().empty()) \
            GTEST_SKIP() << "RANVEL_TEST_TMP does not point into a build folder";            \
    } while (0)
