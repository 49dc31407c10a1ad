// The frames of the waiting animation, read from its AVI file: one video
// stream of uncompressed 24- or 32-bit frames.
#pragma once

#include <QImage>
#include <string>
#include <vector>

namespace ranvel {

struct Animation {
    std::vector<QImage> frames;
    int millisecondsPerFrame = 100;
};

// The animation in the file; no frames when the file is missing or is not
// such an AVI.
Animation ReadAvi(const std::string& path);

}  // namespace ranvel
