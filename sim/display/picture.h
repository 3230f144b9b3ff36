// Pictures of the display: reads the bitmap files that it writes, and writes PNG files of them, enlarged.
//
// Any thread. Blocks on the files, which are small.
#ifndef SIM_DISPLAY_PICTURE_H
#define SIM_DISPLAY_PICTURE_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct Picture {
    uint32_t width = 0; // in pixels, both
    uint32_t height = 0;
    std::vector<uint8_t> pixels; // red, green, blue of each, row by row from the top left

    const uint8_t* at(uint32_t x, uint32_t y) const { return &pixels[(size_t(y) * width + x) * 3]; }
};

// Takes a bitmap file apart: uncompressed, 8 bits with a palette, 24 or 32, up to LargestSide pixels each
// way, rows from the bottom or from the top. What stands behind its data is no fault. False with *error, and
// nothing in *picture, if it is another kind or does not hold what its header tells.
bool parseBitmap(std::string_view file, Picture* picture, std::string* error);
constexpr uint32_t LargestSide = 4096;

// Reads such a file.
bool readBitmap(const std::string& file, Picture* picture, std::string* error);

// Writes it as a PNG in which each pixel is a square of so many (at least 1). The file is there whole or not
// at all: one that was there before is replaced at the end. False with *error.
bool writePng(const std::string& file, const Picture& picture, unsigned scale, std::string* error);

} // namespace sim

#endif
