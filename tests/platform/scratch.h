// A fresh, empty folder for the running test, below RANVEL_TEST_TMP.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace ranvel::testing {

inline std::filesystem::path ScratchDir()
{
    namespace fs = std::filesystem;
    const char* env = std::getenv("RANVEL_TEST_TMP");
    fs::path root = env && *env ? fs::path(env) : fs::temp_directory_path() / "ranvel-test";
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    fs::path dir = root / "platform" / (std::string(info->test_suite_name()) + "." + info->name());
    fs::remove_all(dir);
    fs::create_directories(dir);
    return dir;
}

inline std::string ReadFile(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

inline void WriteFile(const std::filesystem::path& p, const std::string& text)
{
    std::filesystem::create_directories(p.parent_path());
    std::ofstream(p, std::ios::binary) << text;
}

}  // namespace ranvel::testing
