#include "ranvel/platform/gui/animation.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>

namespace ranvel {

namespace {

std::uint32_t U32(const std::string& b, std::size_t at)
{
    if (at + 4 > b.size()) return 0;
    return static_cast<std::uint32_t>(static_cast<unsigned char>(b[at])) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 1])) << 8 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 2])) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 3])) << 24;
}

struct Format {
    std::uint32_t scale = 0, rate = 0;
    std::int32_t width = 0, height = 0;
    int bits = 0;
};

// Walks the chunks between from and to, descending into lists, and hands
// every plain chunk to visit(id, data offset, length).
template <typename Visit>
void Walk(const std::string& b, std::size_t from, std::size_t to, Visit&& visit)
{
    while (from + 8 <= to) {
        std::string id = b.substr(from, 4);
        std::uint32_t len = U32(b, from + 4);
        std::size_t data = from + 8;
        if (data + len > to) break;
        if (id == "LIST" || id == "RIFF") Walk(b, data + 4, data + len, visit);
        else visit(id, data, len);
        from = data + len + (len & 1);
    }
}

}  // namespace

Animation ReadAvi(const std::string& path)
{
    Animation out;
    std::ifstream in(path, std::ios::binary);
    if (!in) return out;
    const std::string b((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (b.size() < 12 || b.compare(0, 4, "RIFF") != 0 || b.compare(8, 4, "AVI ") != 0) return out;

    Format f;
    std::vector<std::pair<std::size_t, std::uint32_t>> frames;
    Walk(b, 0, b.size(), [&](const std::string& id, std::size_t at, std::uint32_t len) {
        if (id == "strh" && len >= 32 && b.compare(at, 4, "vids") == 0) {
            f.scale = U32(b, at + 20);
            f.rate = U32(b, at + 24);
        } else if (id == "strf" && len >= 40 && f.width == 0) {
            f.width = static_cast<std::int32_t>(U32(b, at + 4));
            f.height = static_cast<std::int32_t>(U32(b, at + 8));
            f.bits = static_cast<int>(U32(b, at + 12) >> 16 & 0xFFFF);
        } else if (id == "00db" || id == "00dc") {
            frames.emplace_back(at, len);
        }
    });
    if (f.width <= 0 || f.width > 4096 || f.height == 0 || (f.bits != 24 && f.bits != 32)) return out;
    if (f.rate && f.scale) out.millisecondsPerFrame = static_cast<int>(1000.0 * f.scale / f.rate + 0.5);

    const int w = f.width;
    const int h = f.height < 0 ? -f.height : f.height;
    const int bpp = f.bits / 8;
    const std::size_t stride = (static_cast<std::size_t>(w) * bpp + 3) & ~std::size_t(3);
    for (const auto& [at, len] : frames) {
        if (len < stride * static_cast<std::size_t>(h)) continue;
        QImage img(w, h, QImage::Format_RGB32);
        for (int y = 0; y < h; ++y) {
            // Rows run bottom-up unless the height is negative.
            const int src = f.height > 0 ? h - 1 - y : y;
            const auto* row = reinterpret_cast<const unsigned char*>(b.data() + at + stride * static_cast<std::size_t>(src));
            auto* dst = reinterpret_cast<QRgb*>(img.scanLine(y));
            for (int x = 0; x < w; ++x) dst[x] = qRgb(row[x * bpp + 2], row[x * bpp + 1], row[x * bpp]);
        }
        out.frames.push_back(std::move(img));
    }
    return out;
}

}  // namespace ranvel
