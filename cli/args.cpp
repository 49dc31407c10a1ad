#include <algorithm>
#include <stdexcept>

#include "commands.h"

namespace ranvel::cli {

Args::Args(std::vector<std::string> args, std::vector<std::string> flags) : args_(std::move(args)), flags_(std::move(flags))
{
}

bool Args::Flag(const std::string& name) const
{
    return std::find(args_.begin(), args_.end(), "--" + name) != args_.end();
}

bool Args::Has(const std::string& name) const { return Flag(name); }

std::string Args::Value(const std::string& name) const
{
    auto it = std::find(args_.begin(), args_.end(), "--" + name);
    if (it == args_.end()) return {};
    if (std::next(it) == args_.end()) throw std::invalid_argument("option --" + name + " needs a value");
    return *std::next(it);
}

void Args::Allow(const std::vector<std::string>& names) const
{
    for (std::size_t i = 0; i < args_.size(); ++i) {
        const std::string& a = args_[i];
        if (a.rfind("--", 0) != 0) throw std::invalid_argument("unexpected argument '" + a + "'");
        std::string n = a.substr(2);
        if (std::find(names.begin(), names.end(), n) == names.end())
            throw std::invalid_argument("unknown option '" + a + "'");
        if (std::find(flags_.begin(), flags_.end(), n) == flags_.end()) ++i;  // skip its value
    }
}

}  // namespace ranvel::cli
