#include "ranvel/engine/moment_result.h"

#include "ranvel/platform/vbmath.h"

namespace ranvel {

void MomentResult::AddFruct(const std::string& code, double score) { FructElems += code + "-" + vb::CStr(score) + ":"; }

}  // namespace ranvel
