#include "avi.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace ranvel::makedata {

namespace {

// Little-endian writers; RIFF lengths are patched in once a chunk is done.
class Bytes {
public:
    void U32(std::uint32_t v)
    {
        for (int k = 0; k < 4; ++k) out_ += static_cast<char>((v >> (8 * k)) & 0xFF);
    }
    void U16(std::uint16_t v)
    {
        out_ += static_cast<char>(v & 0xFF);
        out_ += static_cast<char>(v >> 8);
    }
    void Four(const char (&cc)[5]) { out_.append(cc, 4); }
    void Raw(const std::string& s) { out_ += s; }

    // Writes the chunk id and a placeholder length; returns where the length
    // stands, for End().
    std::size_t Begin(const char (&id)[5])
    {
        Four(id);
        std::size_t at = out_.size();
        U32(0);
        return at;
    }
    std::size_t BeginList(const char (&kind)[5], const char (&type)[5])
    {
        std::size_t at = Begin(kind);
        Four(type);
        return at;
    }
    void End(std::size_t lengthAt)
    {
        auto len = static_cast<std::uint32_t>(out_.size() - lengthAt - 4);
        for (int k = 0; k < 4; ++k) out_[lengthAt + k] = static_cast<char>((len >> (8 * k)) & 0xFF);
        if (out_.size() % 2) out_ += '\0';  // chunks start on even offsets
    }
    std::size_t Size() const { return out_.size(); }
    std::string Take() { return std::move(out_); }

private:
    std::string out_;
};

// One frame as a bottom-up 24-bit DIB: white ground, a pale ring and a dark
// blue dot on it at the frame's angle, softened at its edge.
std::string Frame(int size, int index, int frames)
{
    const int stride = (size * 3 + 3) & ~3;
    std::string px(static_cast<std::size_t>(stride * size), '\0');
    const double c = (size - 1) / 2.0;
    const double orbit = size * 0.32;
    const double dotRadius = size * 0.13;
    const double angle = 2 * std::numbers::pi * index / frames;
    const double dx = c + orbit * std::sin(angle);
    const double dy = c - orbit * std::cos(angle);  // clockwise from the top
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            double r = 255, g = 255, b = 255;
            double ring = std::abs(std::hypot(x - c, y - c) - orbit);
            if (ring < 1.0) r = g = b = 255 - 40 * (1.0 - ring);
            double d = std::hypot(x - dx, y - dy);
            double cover = std::clamp(dotRadius + 0.5 - d, 0.0, 1.0);
            r = r + (30 - r) * cover;
            g = g + (60 - g) * cover;
            b = b + (150 - b) * cover;
            std::size_t at = static_cast<std::size_t>((size - 1 - y) * stride + x * 3);  // rows bottom-up
            px[at] = static_cast<char>(std::lround(b));
            px[at + 1] = static_cast<char>(std::lround(g));
            px[at + 2] = static_cast<char>(std::lround(r));
        }
    }
    return px;
}

}  // namespace

std::string MakeWaitAnimation(const AnimationShape& shape)
{
    const auto w = static_cast<std::uint32_t>(shape.size);
    const auto frames = static_cast<std::uint32_t>(shape.frames);
    const auto fps = static_cast<std::uint32_t>(shape.framesPerSecond);
    const std::uint32_t frameBytes = ((w * 3 + 3) & ~3u) * w;

    Bytes b;
    std::size_t riff = b.BeginList("RIFF", "AVI ");

    std::size_t hdrl = b.BeginList("LIST", "hdrl");
    std::size_t avih = b.Begin("avih");
    b.U32(1000000 / fps);     // microseconds per frame
    b.U32(frameBytes * fps);  // maximum bytes per second
    b.U32(0);                 // padding granularity
    b.U32(0x10);              // flags: has an index
    b.U32(frames);            // total frames
    b.U32(0);                 // initial frames
    b.U32(1);                 // streams
    b.U32(frameBytes);        // suggested buffer size
    b.U32(w);
    b.U32(w);
    for (int k = 0; k < 4; ++k) b.U32(0);  // reserved
    b.End(avih);

    std::size_t strl = b.BeginList("LIST", "strl");
    std::size_t strh = b.Begin("strh");
    b.Four("vids");
    b.Four("DIB ");
    b.U32(0);           // flags
    b.U16(0);           // priority
    b.U16(0);           // language
    b.U32(0);           // initial frames
    b.U32(1);           // scale
    b.U32(fps);         // rate: rate / scale frames a second
    b.U32(0);           // start
    b.U32(frames);      // length in frames
    b.U32(frameBytes);  // suggested buffer size
    b.U32(0xFFFFFFFF);  // quality: the default
    b.U32(0);           // sample size: varies
    b.U16(0);           // frame rectangle
    b.U16(0);
    b.U16(static_cast<std::uint16_t>(w));
    b.U16(static_cast<std::uint16_t>(w));
    b.End(strh);
    std::size_t strf = b.Begin("strf");
    b.U32(40);  // size of this header
    b.U32(w);
    b.U32(w);   // positive height: rows run bottom-up
    b.U16(1);   // planes
    b.U16(24);  // bits per pixel
    b.U32(0);   // no compression
    b.U32(frameBytes);
    b.U32(0);
    b.U32(0);
    b.U32(0);
    b.U32(0);
    b.End(strf);
    b.End(strl);
    b.End(hdrl);

    std::size_t movi = b.BeginList("LIST", "movi");
    const std::size_t moviData = movi + 4;  // index offsets count from the "movi" type
    std::vector<std::uint32_t> offsets;
    for (std::uint32_t f = 0; f < frames; ++f) {
        offsets.push_back(static_cast<std::uint32_t>(b.Size() - moviData));
        std::size_t chunk = b.Begin("00db");
        b.Raw(Frame(shape.size, static_cast<int>(f), shape.frames));
        b.End(chunk);
    }
    b.End(movi);

    std::size_t idx1 = b.Begin("idx1");
    for (std::uint32_t off : offsets) {
        b.Four("00db");
        b.U32(0x10);  // key frame
        b.U32(off);
        b.U32(frameBytes);
    }
    b.End(idx1);
    b.End(riff);
    return b.Take();
}

}  // namespace ranvel::makedata
