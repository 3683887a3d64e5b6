#include "IconFile.h"

namespace qx::icons {
namespace {

constexpr int fileHeaderSize = 6, entrySize = 16, imageHeaderSize = 40, bitsPerPixel = 32;

/// Little endian, as the whole file.
void put(std::string& to, int bytes, std::size_t value) {
    for (int i = 0; i < bytes; ++i) to += static_cast<char>(value >> (8 * i) & 0xFF);
}

void putHeader(std::string& to, int size) {
    put(to, 4, imageHeaderSize);
    put(to, 4, static_cast<std::size_t>(size));
    put(to, 4, static_cast<std::size_t>(2 * size)); // colours and mask, one above the other
    put(to, 2, 1);
    put(to, 2, bitsPerPixel);
    to.append(imageHeaderSize - 16, '\0');
}

void putColours(std::string& to, const Canvas& image) {
    for (int y = image.size(); y-- > 0;)
        for (int x = 0; x < image.size(); ++x) {
            const Pixel pixel = image.at(x, y);
            for (const std::uint8_t channel : {pixel.blue, pixel.green, pixel.red, pixel.alpha})
                put(to, 1, channel);
        }
}

/// One bit per pixel, set where the background shows; rows are filled up to 32 bits.
void putMask(std::string& to, const Canvas& image) {
    for (int y = image.size(); y-- > 0;) {
        std::uint32_t row = 0;
        for (int x = 0; x < image.size(); ++x)
            row |= static_cast<std::uint32_t>(image.at(x, y).alpha < 128) << (31 - x);
        for (int byte = 4; byte-- > 0;) put(to, 1, row >> (8 * byte));
    }
}

std::string imageBytes(const Canvas& image) {
    std::string bytes;
    putHeader(bytes, image.size());
    putColours(bytes, image);
    putMask(bytes, image);
    return bytes;
}

void putEntry(std::string& to, int size, std::size_t length, std::size_t offset) {
    put(to, 1, static_cast<std::size_t>(size));
    put(to, 1, static_cast<std::size_t>(size));
    put(to, 2, 0); // no palette
    put(to, 2, 1);
    put(to, 2, bitsPerPixel);
    put(to, 4, length);
    put(to, 4, offset);
}

} // namespace

std::string iconFile(const std::vector<Canvas>& images) {
    std::string file, body;
    put(file, 2, 0);
    put(file, 2, 1);
    put(file, 2, images.size());
    const std::size_t bodyOffset = fileHeaderSize + entrySize * images.size();
    for (const Canvas& image : images) {
        const std::string bytes = imageBytes(image);
        putEntry(file, image.size(), bytes.size(), bodyOffset + body.size());
        body += bytes;
    }
    return file + body;
}

} // namespace qx::icons
