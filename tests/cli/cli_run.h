// ranvel-cli run from the tests as a user runs it: a process of its own, its
// output caught in files of the running test's own folder.
#pragma once

#include <gtest/gtest.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

extern char** environ;

namespace cli_run {

namespace fs = std::filesystem;

struct Outcome {
    int code = -1;
    std::string out, err;
};

// A folder of the running test's own below the group's: the tests run side
// by side.
inline fs::path Scratch(const char* group)
{
    const char* tmp = std::getenv("RANVEL_TEST_TMP");
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    fs::path dir = fs::path(tmp ? tmp : fs::temp_directory_path().string()) / group /
                   (std::string(info->test_suite_name()) + "." + info->name());
    fs::create_directories(dir);
    return dir;
}

inline std::string Slurp(const fs::path& p)
{
    std::ifstream in(p, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

// Runs a program (found on PATH when the name has no slash) with the
// environment's entries replaced or added by "NAME=value" entries of env;
// its output goes to files in the folder given.
inline Outcome Spawn(std::vector<std::string> args, const fs::path& folder, const std::vector<std::string>& env = {})
{
    const fs::path out = folder / "stdout", err = folder / "stderr";
    std::vector<std::string> envText;
    for (char** e = environ; *e; ++e) {
        bool replaced = false;
        for (const std::string& set : env) replaced = replaced || std::strncmp(*e, set.c_str(), set.find('=') + 1) == 0;
        if (!replaced) envText.push_back(*e);
    }
    envText.insert(envText.end(), env.begin(), env.end());
    std::vector<char*> argv, envp;
    for (std::string& a : args) argv.push_back(a.data());
    for (std::string& e : envText) envp.push_back(e.data());
    argv.push_back(nullptr);
    envp.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&files, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    pid_t pid = 0;
    Outcome o;
    if (posix_spawnp(&pid, argv[0], &files, nullptr, argv.data(), envp.data()) == 0) {
        int status = 0;
        waitpid(pid, &status, 0);
        o.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    posix_spawn_file_actions_destroy(&files);
    o.out = Slurp(out);
    o.err = Slurp(err);
    return o;
}

// A JSON file in the folder given.
inline std::string WriteJson(const fs::path& folder, const std::string& name, const nlohmann::ordered_json& j)
{
    const fs::path p = folder / name;
    std::ofstream(p) << j.dump();
    return p.string();
}

}  // namespace cli_run
