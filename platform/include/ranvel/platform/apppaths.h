// Where the installation lies and how its data paths are found. <app> is the
// folder of the running program unless the command line or the environment
// (RANVEL_APP_DIR) names another. The data tree is written in mixed case
// (MUHU.DAT, LANGS.Dat, RECOS.Dat) and the program names its files in fixed
// spellings, so a path below <app> is matched against the disk without
// regard to case.
#pragma once

#include <string>
#include <string_view>

namespace ranvel {

// The installation folder, without a trailing separator.
std::string AppDir();
// Replaces the installation folder for the rest of the process; an empty
// text goes back to RANVEL_APP_DIR or the program's own folder.
void SetAppDir(const std::string& dir);

// <app> joined with a relative path written with "\" or "/" separators
// ("EPHE\COMMON\MUHU.DAT"). Each part takes the spelling found on disk when
// one matches without regard to case; a part that matches nothing keeps the
// spelling given. An absolute path is returned as it stands.
std::string AppPath(std::string_view relative);

// The same resolution below any existing folder.
std::string ResolvePath(const std::string& base, std::string_view relative);

// True for an existing regular file (or a link to one).
bool FileExists(const std::string& path);

}  // namespace ranvel
