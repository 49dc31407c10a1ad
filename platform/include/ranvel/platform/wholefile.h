// Writing a file whole: the content goes to a work file beside the target,
// is forced onto the disk and moved over the target, so that a reader never
// meets half a file and a failure leaves the file there before as it was.
#pragma once

#include <string>
#include <string_view>

namespace ranvel {

// Throws vb::RuntimeError naming the file and the system's reason. With
// MakeFolders the target's folder is made when missing.
void WriteWholeFile(const std::string& Path, std::string_view Content, bool MakeFolders = false);

}  // namespace ranvel
