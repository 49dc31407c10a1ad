// The animation of the progress dialog: a dot going round a faint ring, as
// an uncompressed RIFF AVI (24-bit frames, one video stream, an index), so
// that any player that can show an AVI at all can show it.
#pragma once

#include <string>

namespace ranvel::makedata {

struct AnimationShape {
    int size = 32;    // width and height in pixels
    int frames = 12;  // one turn of the dot
    int framesPerSecond = 12;
};

// The whole file, byte for byte; the same shape always gives the same bytes.
std::string MakeWaitAnimation(const AnimationShape& shape = {});

}  // namespace ranvel::makedata
