// The commands of ranvel-cli. Each takes its own arguments (the command name
// and the global options already removed) and returns the exit code.
#pragma once

#include <string>
#include <vector>

namespace ranvel::cli {

// Options of the form "--name value" and flags "--name"; anything else is a
// positional argument.
class Args {
public:
    Args(std::vector<std::string> args, std::vector<std::string> flags);
    bool Flag(const std::string& name) const;
    // The value of "--name"; empty when absent. A missing value throws.
    std::string Value(const std::string& name) const;
    bool Has(const std::string& name) const;
    // Throws std::invalid_argument for an option that is not in the list.
    void Allow(const std::vector<std::string>& names) const;

private:
    std::vector<std::string> args_;
    std::vector<std::string> flags_;
};

int CmdRecord(const Args& args);
int CmdChart(const Args& args);
int CmdVakya(const Args& args);
int CmdGochara(const Args& args);
int CmdMuhurtha(const Args& args);
int CmdCatalogue(const Args& args);
int CmdCalendar(const Args& args);
int CmdDay(const Args& args);
int CmdZone(const Args& args);

}  // namespace ranvel::cli
