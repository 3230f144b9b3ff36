// Makes the panel's pictures from their drawings: mkicons DIRECTORY FILE.txt... writes DIRECTORY/FILE.png
// for each.
//
// A drawing is a text. Its first line is the size and, behind a blank, what it shows: "30x24 phone, on".
// Each further line is a row of pixels: '#' white, '+' grey, '.' black, ' ' nothing. A row may end early
// and rows may be missing at the end: what isn't drawn is nothing. Anything else is an error, told with
// file and line, and the program ends with 1.
// A tool of the build: no window, no log.
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <cstdio>

namespace {

const QRgb GREY = qRgb(0x99, 0x99, 0x99); // that of the battery's bar

// The colour of a pixel's character; false for a character that stands for none.
bool colourOf(char character, QRgb& colour)
{
    switch (character) {
    case '#':
        colour = qRgb(255, 255, 255);
        return true;
    case '+':
        colour = GREY;
        return true;
    case '.':
        colour = qRgb(0, 0, 0);
        return true;
    case ' ':
        colour = qRgba(0, 0, 0, 0);
        return true;
    default:
        return false;
    }
}

bool fail(const QString& fileName, int line, const char* why)
{
    std::fprintf(stderr, "%s:%d: %s\n", fileName.toLocal8Bit().constData(), line, why);
    return false;
}

bool drawRow(QImage& image, int y, const QByteArray& row, const QString& fileName)
{
    if (y >= image.height())
        return row.isEmpty() || fail(fileName, y + 2, "more rows than the size tells");
    if (row.size() > image.width())
        return fail(fileName, y + 2, "the row is wider than the size tells");
    for (int x = 0; x < row.size(); x++) {
        QRgb colour;
        if (!colourOf(row.at(x), colour))
            return fail(fileName, y + 2, "a pixel is one of '#', '+', '.' and blank");
        image.setPixel(x, y, colour);
    }
    return true;
}

bool makePicture(const QString& fileName, const QDir& target)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return fail(fileName, 0, "cannot be read");
    const QList<QByteArray> lines = file.readAll().split('\n');
    int width = 0;
    int height = 0;
    if (std::sscanf(lines.at(0).constData(), "%dx%d ", &width, &height) != 2 || width < 1 || width > 256 ||
        height < 1 || height > 64)
        return fail(fileName, 1, "expected the size, as in \"30x24 phone, on\", of at most 256x64");
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(0);
    for (int i = 1; i < lines.size(); i++) {
        if (!drawRow(image, i - 1, lines.at(i), fileName))
            return false;
    }
    const QString picture = target.filePath(QFileInfo(fileName).completeBaseName() + ".png");
    return image.save(picture, "PNG") || fail(picture, 0, "cannot be written");
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: mkicons DIRECTORY FILE.txt...\n");
        return 1;
    }
    const QDir target(QFile::decodeName(argv[1]));
    for (int i = 2; i < argc; i++) {
        if (!makePicture(QFile::decodeName(argv[i]), target))
            return 1;
    }
    return 0;
}
