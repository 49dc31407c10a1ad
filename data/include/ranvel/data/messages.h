// The numbered messages that are held with the program rather than in the
// language databases, asked for by number.
#pragma once

#include <string>

namespace ranvel {

// The text of message n; an unknown number gives "".
std::string Msg(int n);

}  // namespace ranvel
