// Files the user keeps (an exported report, the zip that goes by mail) are
// written whole: the bytes go into a work file beside the target, are
// forced onto the disk, and only then take the target's place in one
// rename. A full disk or any other failure on the way leaves the target as
// it was and no work file behind, and says why in the user's words.
#pragma once

#include <string>

namespace ranvel {

// Why a write failed, from the system's error number: a full disk is said
// so, with the system's own words after it.
std::string WriteFailureReason(int error);

// Every byte into an open file, then onto the disk. False, with the
// reason, when the system refused any of it.
bool WriteAll(int fd, const std::string& bytes, std::string& reason);

// The last step of a whole write: the bytes into the open work file `fd`,
// which is then closed (whatever happens) and renamed over target, taking
// the permissions of a target that was there. False, with the reason, when
// any of it failed; the work file is then gone and the target untouched.
bool PutInPlace(int fd, const std::string& work, const std::string& target, const std::string& bytes,
                std::string& reason);

// The bytes as the new content of target: written into a fresh work file
// in the target's folder and renamed over it. A target that was there
// keeps its permissions; a new one gets `mode` (less the user's mask).
// False, with a sentence naming the file and the reason, when it could not
// be done; the target is then untouched.
bool WriteFileWhole(const std::string& target, const std::string& bytes, unsigned mode, std::string& error);

// Reads a file back through one descriptor, refusing a link, anything but
// a plain file, a file of another owner or one with other names, and
// compares it with the bytes written. False, with the reason, when it is
// not exactly those bytes.
bool SameAsWritten(const std::string& path, const std::string& bytes, std::string& error);

}  // namespace ranvel
