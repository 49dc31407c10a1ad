// What every fuzz target shares: one scratch folder per process that holds
// everything the target writes, with <app>, HOME and the XDG and temporary
// folders pointed into it; quiet sinks; settings kept in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ranvel/platform/database.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::fuzz {

// Called from LLVMFuzzerInitialize. The scratch folder is
// $RANVEL_FUZZ_SCRATCH when set (the bounded runs of the test suite give
// each target its own and look at what is left around it afterwards), else
// a new folder under the temporary folder, removed at exit.
void Init();

const std::string& ScratchDir();
// A path inside the scratch folder; its folders are made.
std::string ScratchPath(const std::string& relative);
// A new database at a scratch path made by the SQL of a source file (a
// database left there by an earlier run is replaced).
std::shared_ptr<Database> ScratchDatabase(const std::string& relative, const std::string& sourceSql);
// The rows of a CSV file of the sources added to a table, as the data tree's
// build reads them.
void LoadRows(Database& db, const std::string& table, const std::string& sourceCsv);
// The shipped catalogue (its three tables) as the scratch <app>'s MUHU.DAT.
std::shared_ptr<Database> ScratchCatalogue();
// Replaces the file at a scratch path with the bytes given; gives its path.
std::string WriteScratchFile(const std::string& relative, const std::uint8_t* data, std::size_t size);
std::string ReadWholeFile(const std::string& path);

// A file of the source tree (the SQL and CSV the data files are built from).
std::string SourceText(const std::string& relative);

// The quiet message sink installed by Init; each input clears it.
HeadlessMessageSink& Messages();
// Installs Init's sinks again (a command may leave its own behind).
void InstallSinks();

// A property of the code under test does not hold: prints what and aborts,
// so that libFuzzer keeps the input as a crash.
[[noreturn]] void Fail(const std::string& what);

// Runs a step that may meet a run-time fault ("Type mismatch", "Overflow",
// "Invalid use of Null"): such a fault ends the command that met it, which
// is the program's answer, not a finding.
template <typename Step>
void Guarded(Step&& step)
{
    try {
        step();
    } catch (const vb::RuntimeError&) {
    }
}

// The input cut at line ends ("\n", a "\r" before it dropped), always at
// least `count` parts: missing ones are empty, and the last takes the rest.
std::vector<std::string> Lines(const std::uint8_t* data, std::size_t size, std::size_t count);

}  // namespace ranvel::fuzz
