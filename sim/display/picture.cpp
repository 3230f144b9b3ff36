// Bitmap files in, PNG files out. All numbers of a bitmap's header are little-endian; each is checked against
// the file before it is used.
#include "sim/display/picture.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <png.h>
#include <unistd.h>

namespace sim {

namespace {

constexpr size_t FileHeader = 14;   // type, size, reserved, offset of the pixels
constexpr size_t SmallestInfo = 40; // the oldest header that has 32-bit sides
constexpr size_t LargestFile = 1 << 27;
constexpr uint32_t Uncompressed = 0;

class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes(bytes) {}

    uint8_t byte(size_t at) const { return static_cast<uint8_t>(bytes[at]); }
    uint32_t number16(size_t at) const { return byte(at) | uint32_t(byte(at + 1)) << 8; }
    uint32_t number32(size_t at) const { return number16(at) | number16(at + 2) << 16; }
    size_t size() const { return bytes.size(); }

private:
    std::string_view bytes;
};

struct Layout {
    uint32_t width = 0;
    uint32_t height = 0;
    bool fromTop = false;
    uint32_t bits = 0;  // of a pixel
    size_t palette = 0; // where it begins, and
    size_t colours = 0; // how many it has
    size_t pixels = 0;  // where they begin
    size_t row = 0;     // bytes of one, padded to four
};

// What is wrong with the header, or null.
const char* readLayout(const Reader& file, Layout* layout)
{
    if (file.size() < FileHeader + SmallestInfo)
        return "the file is too short";
    if (file.byte(0) != 'B' || file.byte(1) != 'M')
        return "it is no bitmap file";
    uint32_t info = file.number32(14);
    if (info < SmallestInfo || info > file.size() - FileHeader)
        return "the length of its header is wrong";
    if (file.number16(26) != 1 || file.number32(30) != Uncompressed)
        return "it is compressed";
    int64_t height = static_cast<int32_t>(file.number32(22));
    layout->fromTop = height < 0;
    layout->width = file.number32(18);
    layout->height = static_cast<uint32_t>(height < 0 ? -height : height);
    if (layout->width < 1 || layout->width > LargestSide || layout->height < 1 ||
        layout->height > LargestSide)
        return "its sides are wrong";
    layout->bits = file.number16(28);
    if (layout->bits != 8 && layout->bits != 24 && layout->bits != 32)
        return "its number of colours is not known";
    layout->pixels = file.number32(10);
    layout->row = (size_t(layout->width) * layout->bits + 31) / 32 * 4;
    if (layout->pixels < FileHeader + info || layout->pixels > file.size() ||
        layout->row * layout->height > file.size() - layout->pixels)
        return "pixels are missing";
    if (layout->bits == 8) {
        uint32_t colours = file.number32(46);
        layout->colours = colours == 0 ? 256 : colours;
        layout->palette = FileHeader + info;
        if (layout->colours > 256 || layout->colours * 4 > layout->pixels - layout->palette)
            return "its palette is wrong";
    }
    return nullptr;
}

// Where the blue, green and red of a pixel stand; 0 for a colour that the palette lacks.
size_t colourAt(const Reader& file, const Layout& layout, uint32_t x, uint32_t y)
{
    size_t row = layout.pixels + layout.row * (layout.fromTop ? y : layout.height - 1 - y);
    if (layout.bits != 8)
        return row + size_t(x) * (layout.bits / 8);
    uint8_t index = file.byte(row + x);
    return index < layout.colours ? layout.palette + size_t(index) * 4 : 0;
}

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

std::string systemError(const std::string& what, const std::string& file)
{
    return "cannot " + what + " " + file + ": " + strerror(errno);
}

// One row of the picture, each pixel so many times.
std::vector<uint8_t> widened(const Picture& picture, uint32_t y, unsigned scale)
{
    std::vector<uint8_t> row;
    row.reserve(size_t(picture.width) * scale * 3);
    for (uint32_t x = 0; x < picture.width; x++) {
        const uint8_t* pixel = picture.at(x, y);
        for (unsigned i = 0; i < scale; i++)
            row.insert(row.end(), pixel, pixel + 3);
    }
    return row;
}

// Whether the file now holds it. The library jumps back on a failure, so nothing here has a destructor.
bool encode(FILE* file, uint32_t width, const std::vector<std::vector<uint8_t>>& rows, unsigned scale)
{
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_init_io(png, file);
    png_set_IHDR(png, info, width, static_cast<png_uint_32>(rows.size() * scale), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (size_t y = 0; y < rows.size(); y++) {
        for (unsigned i = 0; i < scale; i++)
            png_write_row(png, rows[y].data());
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return true;
}

} // namespace

bool parseBitmap(std::string_view bytes, Picture* picture, std::string* error)
{
    *picture = Picture();
    Reader file(bytes);
    Layout layout;
    if (const char* fault = readLayout(file, &layout)) {
        *error = fault;
        return false;
    }
    picture->width = layout.width;
    picture->height = layout.height;
    picture->pixels.resize(size_t(layout.width) * layout.height * 3);
    uint8_t* target = picture->pixels.data();
    for (uint32_t y = 0; y < layout.height; y++) {
        for (uint32_t x = 0; x < layout.width; x++, target += 3) {
            size_t at = colourAt(file, layout, x, y);
            for (size_t part = 0; part < 3; part++)
                target[part] = at == 0 ? 0 : file.byte(at + 2 - part);
        }
    }
    return true;
}

bool readBitmap(const std::string& name, Picture* picture, std::string* error)
{
    File file(fopen(name.c_str(), "rbe"), fclose);
    std::string bytes;
    char part[65536];
    size_t count;
    while (file && bytes.size() <= LargestFile && (count = fread(part, 1, sizeof part, file.get())) > 0)
        bytes.append(part, count);
    if (!file || ferror(file.get())) {
        *error = systemError("read", name);
        return false;
    }
    if (parseBitmap(bytes, picture, error))
        return true;
    *error = name + ": " + *error;
    return false;
}

bool writePng(const std::string& name, const Picture& picture, unsigned scale, std::string* error)
{
    std::string unfinished = name + ".part";
    FILE* file = fopen(unfinished.c_str(), "wbe");
    if (!file) {
        *error = systemError("write", name);
        return false;
    }
    std::vector<std::vector<uint8_t>> rows;
    for (uint32_t y = 0; y < picture.height; y++)
        rows.push_back(widened(picture, y, scale));
    errno = 0;
    bool written = encode(file, picture.width * scale, rows, scale);
    written = fclose(file) == 0 && written;
    if (written && rename(unfinished.c_str(), name.c_str()) == 0)
        return true;
    *error = systemError("write", name);
    unlink(unfinished.c_str());
    return false;
}

} // namespace sim
