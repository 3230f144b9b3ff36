// Bitmap files, right ones and wrong ones, and the PNG files made of them.
#include "sim/display/picture.h"

#include "temporary_directory.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <png.h>

using namespace std::string_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

void put(std::string* bytes, size_t at, uint32_t number, int size)
{
    for (int i = 0; i < size; i++)
        (*bytes)[at + static_cast<size_t>(i)] = static_cast<char>(number >> (8 * i));
}

// Where the fields of the headers stand.
enum Field {
    PixelOffset = 10,
    InfoLength = 14,
    Width = 18,
    Height = 22,
    Planes = 26,
    Bits = 28,
    Compression = 30,
    Colours = 46,
    End = 54
};

std::string header(int32_t width, int32_t height, uint32_t bits, uint32_t colours = 0)
{
    std::string bytes(End, '\0');
    bytes[0] = 'B';
    bytes[1] = 'M';
    put(&bytes, PixelOffset, End + colours * 4, 4);
    put(&bytes, InfoLength, 40, 4);
    put(&bytes, Width, static_cast<uint32_t>(width), 4);
    put(&bytes, Height, static_cast<uint32_t>(height), 4);
    put(&bytes, Planes, 1, 2);
    put(&bytes, Bits, bits, 2);
    put(&bytes, Colours, colours, 4);
    return bytes;
}

// Two by two in 24 bits: red and green above, blue and white below; rows are padded to eight bytes.
std::string smallFile()
{
    return header(2, 2, 24) + "\xff\0\0\xff\xff\xff\0\0"s + "\0\0\xff\0\xff\0\0\0"s;
}

std::vector<int> numbers(const sim::Picture& picture)
{
    return {picture.pixels.begin(), picture.pixels.end()};
}

// What is wrong with the file; fails if nothing is.
std::string faultOf(const std::string& bytes)
{
    sim::Picture picture;
    std::string error;
    EXPECT_FALSE(sim::parseBitmap(bytes, &picture, &error));
    EXPECT_EQ(picture.width, 0u);
    EXPECT_TRUE(picture.pixels.empty());
    return error;
}

std::string changed(Field field, uint32_t number, int size)
{
    std::string bytes = smallFile();
    put(&bytes, field, number, size);
    return bytes;
}

} // namespace

TEST(PictureTest, ReadsRowsFromTheBottomAndColoursFromBlueToRed)
{
    sim::Picture picture;
    std::string error;
    ASSERT_TRUE(sim::parseBitmap(smallFile(), &picture, &error)) << error;
    EXPECT_EQ(picture.width, 2u);
    EXPECT_EQ(picture.height, 2u);
    EXPECT_THAT(numbers(picture), ElementsAre(255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255));
}

TEST(PictureTest, ANegativeHeightMeansRowsFromTheTop)
{
    std::string bytes = smallFile();
    put(&bytes, Height, static_cast<uint32_t>(-2), 4);
    sim::Picture picture;
    std::string error;
    ASSERT_TRUE(sim::parseBitmap(bytes, &picture, &error)) << error;
    EXPECT_THAT(numbers(picture), ElementsAre(0, 0, 255, 255, 255, 255, 255, 0, 0, 0, 255, 0));
}

TEST(PictureTest, ReadsThirtyTwoBits)
{
    sim::Picture picture;
    std::string error;
    ASSERT_TRUE(sim::parseBitmap(header(2, 1, 32) + "\1\2\3\0\4\5\6\xff"s, &picture, &error)) << error;
    EXPECT_THAT(numbers(picture), ElementsAre(3, 2, 1, 6, 5, 4));
}

TEST(PictureTest, ReadsAPaletteAndTakesAColourThatItLacksForBlack)
{
    sim::Picture picture;
    std::string error;
    std::string bytes = header(3, 1, 8, 2) + "\1\2\3\0\4\5\6\0"s + "\1\0\2\0"s;
    ASSERT_TRUE(sim::parseBitmap(bytes, &picture, &error)) << error;
    EXPECT_THAT(numbers(picture), ElementsAre(6, 5, 4, 3, 2, 1, 0, 0, 0));
}

TEST(PictureTest, BytesBehindThePixelsAreNoFault)
{
    sim::Picture picture;
    std::string error;
    EXPECT_TRUE(sim::parseBitmap(smallFile() + "more", &picture, &error)) << error;
}

TEST(PictureTest, EveryFileThatIsCutOffIsRefused)
{
    std::string whole = smallFile();
    for (size_t length = 0; length < whole.size(); length++)
        EXPECT_NE(faultOf(whole.substr(0, length)), "") << length;
    EXPECT_EQ(faultOf(""), "the file is too short");
    EXPECT_EQ(faultOf(whole.substr(0, whole.size() - 1)), "pixels are missing");
}

TEST(PictureTest, HeadersThatLieAreRefused)
{
    const struct {
        Field field;
        uint32_t number;
        int size;
        const char* fault;
    } lies[] = {
        {static_cast<Field>(0), 'P', 1, "it is no bitmap file"},
        {PixelOffset, 0, 4, "pixels are missing"},
        {PixelOffset, End - 1, 4, "pixels are missing"},
        {PixelOffset, End + 1, 4, "pixels are missing"},
        {PixelOffset, 0xffffffff, 4, "pixels are missing"},
        {InfoLength, 39, 4, "the length of its header is wrong"},
        {InfoLength, 1000, 4, "the length of its header is wrong"},
        {InfoLength, 0xffffffff, 4, "the length of its header is wrong"},
        {Width, 0, 4, "its sides are wrong"},
        {Width, 0xffffffff, 4, "its sides are wrong"},
        {Width, sim::LargestSide + 1, 4, "its sides are wrong"},
        {Width, sim::LargestSide, 4, "pixels are missing"},
        {Width, 3, 4, "pixels are missing"},
        {Height, 0, 4, "its sides are wrong"},
        {Height, 0x80000000, 4, "its sides are wrong"},
        {Height, sim::LargestSide, 4, "pixels are missing"},
        {Height, 3, 4, "pixels are missing"},
        {Planes, 2, 2, "it is compressed"},
        {Bits, 0, 2, "its number of colours is not known"},
        {Bits, 4, 2, "its number of colours is not known"},
        {Bits, 0xffff, 2, "its number of colours is not known"},
        {Bits, 8, 2, "its palette is wrong"},
        {Compression, 1, 4, "it is compressed"},
    };
    for (const auto& lie : lies)
        EXPECT_EQ(faultOf(changed(lie.field, lie.number, lie.size)), lie.fault)
            << lie.field << " " << lie.number;
}

TEST(PictureTest, PalettesThatLieAreRefused)
{
    for (uint32_t colours : {3u, 257u, 0x40000000u, 0xffffffffu}) {
        std::string bytes = header(1, 1, 8, 2) + std::string(12, '\0');
        put(&bytes, Colours, colours, 4);
        EXPECT_EQ(faultOf(bytes), "its palette is wrong") << colours;
    }
}

// Every byte of the headers with every value: nothing is read outside (the sanitizers watch), and what is
// taken has as many pixels as it tells.
TEST(PictureTest, AnyByteOfTheHeadersMayBeWrong)
{
    for (size_t at = 0; at < End; at++) {
        for (int value = 0; value < 256; value++) {
            std::string bytes = smallFile();
            bytes[at] = static_cast<char>(value);
            sim::Picture picture;
            std::string error;
            if (sim::parseBitmap(bytes, &picture, &error))
                EXPECT_EQ(picture.pixels.size(), size_t(picture.width) * picture.height * 3);
            else
                EXPECT_NE(error, "");
        }
    }
}

TEST(PictureTest, FilesThatAreMissingOrWrongAreToldByName)
{
    TemporaryDirectory directory;
    sim::Picture picture;
    std::string error;
    EXPECT_FALSE(sim::readBitmap(directory.file("none.bmp"), &picture, &error));
    EXPECT_EQ(error, "cannot read " + directory.file("none.bmp") + ": No such file or directory");
    EXPECT_FALSE(sim::readBitmap(directory.name, &picture, &error));
    EXPECT_THAT(error, EndsWith("Is a directory"));
    std::ofstream(directory.file("junk.bmp")) << "junk";
    EXPECT_FALSE(sim::readBitmap(directory.file("junk.bmp"), &picture, &error));
    EXPECT_EQ(error, directory.file("junk.bmp") + ": the file is too short");
}

TEST(PictureTest, WritesEachPixelAsASquare)
{
    TemporaryDirectory directory;
    std::string error;
    std::ofstream(directory.file("small.bmp"), std::ios::binary) << smallFile();
    sim::Picture picture;
    ASSERT_TRUE(sim::readBitmap(directory.file("small.bmp"), &picture, &error)) << error;
    ASSERT_TRUE(sim::writePng(directory.file("large.png"), picture, 3, &error)) << error;

    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&image, directory.file("large.png").c_str()));
    image.format = PNG_FORMAT_RGB;
    ASSERT_EQ(image.width, 6u);
    ASSERT_EQ(image.height, 6u);
    std::vector<uint8_t> pixels(PNG_IMAGE_SIZE(image));
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
    for (uint32_t y = 0; y < 6; y++) {
        for (uint32_t x = 0; x < 6; x++) {
            const uint8_t* expected = picture.at(x / 3, y / 3);
            const uint8_t* written = &pixels[(y * 6 + x) * 3];
            EXPECT_TRUE(std::equal(expected, expected + 3, written)) << x << " " << y;
        }
    }
}

TEST(PictureTest, AFileThatCannotBeWrittenLeavesNothing)
{
    TemporaryDirectory directory;
    sim::Picture picture;
    std::string error;
    ASSERT_TRUE(sim::parseBitmap(smallFile(), &picture, &error));
    EXPECT_FALSE(sim::writePng(directory.file("none/a.png"), picture, 1, &error));
    EXPECT_EQ(error, "cannot write " + directory.file("none/a.png") + ": No such file or directory");
    std::filesystem::create_directory(directory.file("a.png"));
    EXPECT_FALSE(sim::writePng(directory.file("a.png"), picture, 1, &error));
    EXPECT_THAT(error, HasSubstr("Is a directory"));
    EXPECT_FALSE(std::filesystem::exists(directory.file("a.png.part")));
    EXPECT_FALSE(sim::writePng("/dev/full/a.png", picture, 1, &error));
    EXPECT_THAT(error, StartsWith("cannot write "));
}
