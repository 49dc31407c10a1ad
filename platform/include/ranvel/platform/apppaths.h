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

// The files a user changes (the person and place store RECOS.Dat, the
// language table LANGS.Dat, and everything under DATA/INIFILES: GENDAT.INI,
// theme and page-set files) live beside the program when the user may write
// there. In an installation the user may not write to, or one marked as
// installed for every user (a file INSTALLED beside the program), they live in a
// per-user folder ($XDG_DATA_HOME/ranvel, else ~/.local/share/ranvel),
// copied there from the installation the first time they are needed and
// never overwritten afterwards, so no new build or upgrade touches what the
// user saved. Once made for an installation, the per-user folder keeps
// serving it even when the installation can be written again, so the
// user's files are never split between two places. LANGS.Dat holds nothing
// of the user's and follows the installation whenever that copy is newer.
// AppPath resolves these names to wherever they live.
std::string UserDataDir();
// True when the user's files live in the per-user folder.
bool UsesUserDataDir();
// For tests: 1 always uses the per-user folder, 0 never, -1 decides by
// whether the installation can be written (the default).
void SetUserDataMode(int mode);

}  // namespace ranvel
