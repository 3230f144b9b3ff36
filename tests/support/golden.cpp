#include "support/golden.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QtTest>

namespace golden {

namespace {

const int FACTOR_OF_PAGE = 2;
const int FACTOR_OF_FAILURE = 3;
const int GAP = 8; // between the pictures of a failure

QImage enlarged(const QImage& picture, int factor)
{
    return picture.scaled(picture.size() * factor, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

// The panel has no colours, so that a picture that has some is told by the difference to itself.
QImage grey(const QImage& picture)
{
    return picture.convertToFormat(QImage::Format_RGB32).convertToFormat(QImage::Format_Grayscale8);
}

QString fullName(const QString& group, const Picture& picture)
{
    return group + "-" + picture.name;
}
QString fileOf(const QString& directory, const QString& name)
{
    return directory + "/" + name + ".png";
}

bool isAccepted(const Places& places, const QString& name)
{
    return places.accepted.contains("all") || places.accepted.contains(name);
}
QString howToAccept(const QString& name)
{
    return "; to accept: tools/accept-pictures " + name;
}

QString write(const QImage& picture, const QString& file)
{
    QDir().mkpath(QFileInfo(file).path());
    return picture.save(file, "PNG", 0) ? QString() : "cannot write " + file;
}

bool shows(const QString& file, const QImage& picture)
{
    const QImage kept(file);
    return !kept.isNull() &&
           kept.convertToFormat(QImage::Format_RGB32) == picture.convertToFormat(QImage::Format_RGB32);
}

// Files that are right already stay untouched.
QString writeUnlessShown(const QImage& picture, const QString& file)
{
    return shows(file, picture) ? QString() : write(picture, file);
}

QString accept(const Places& places, const QString& name, const QImage& picture)
{
    const QString fault = writeUnlessShown(grey(picture), fileOf(places.pictures, name));
    return fault.isEmpty()
               ? writeUnlessShown(enlarged(grey(picture), FACTOR_OF_PAGE), fileOf(places.enlarged, name))
               : fault;
}

// Another version never touches the pictures of the page.
QString acceptOfVersion(const Places& places, const QString& name, const QImage& picture)
{
    const QString file = fileOf(places.ofVersion, name);
    if (!shows(fileOf(places.pictures, name), picture)) {
        return writeUnlessShown(grey(picture), file);
    }
    return !QFile::exists(file) || QFile::remove(file) ? QString() : "cannot remove " + file;
}

QString readText(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString startMark(const QString& group)
{
    return "<!-- pictures: " + group + " -->\n";
}
const char END_MARK[] = "<!-- end of pictures -->\n";

QString sectionOf(const Places& places, const QString& group, const std::vector<Picture>& pictures)
{
    const QString directory = QFileInfo(places.page).dir().relativeFilePath(places.enlarged);
    QString text;
    for (const Picture& picture : pictures) {
        const QString name = fullName(group, picture);
        text += QString("\n![%1](%2)<br>\n%3\n").arg(name, fileOf(directory, name), picture.description);
    }
    return text + "\n";
}

} // namespace

Places placesOfBuild()
{
    const QString source = PROJECT_SOURCE_DIR;
    Places places;
    places.pictures = source + "/tests/golden";
    places.enlarged = source + "/docs/pictures/screens";
    places.page = source + "/docs/screens.md";
    const QString version = QString(qVersion()).section('.', 0, 0);
    if (version != "5") {
        places.ofVersion = places.pictures + "/qt" + version;
    }
    places.failures = PROJECT_BINARY_DIR "/golden-failures";
    places.tests = source + "/tests/screens";
    places.accepted = QString::fromLocal8Bit(qgetenv("LUMENPANEL_ACCEPT")).split(' ', Qt::SkipEmptyParts);
    return places;
}

QImage comparison(const QImage& actual, const QImage& expected)
{
    const QSize size = actual.size().expandedTo(expected.size());
    QImage difference(size, QImage::Format_RGB32);
    difference.fill(Qt::black);
    if (actual.size() == expected.size()) {
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const bool same = actual.pixel(x, y) == expected.pixel(x, y);
                const int dim = qGray(actual.pixel(x, y)) / 4;
                difference.setPixel(x, y, same ? qRgb(dim, dim, dim) : qRgb(255, 0, 0));
            }
        }
    }
    const QSize one = size * FACTOR_OF_FAILURE;
    QImage all(one.width(), 3 * one.height() + 2 * GAP, QImage::Format_RGB32);
    all.fill(Qt::darkBlue);
    QPainter painter(&all);
    int y = 0;
    for (const QImage& picture : {actual, expected, difference}) {
        painter.drawImage(0, y, enlarged(picture, FACTOR_OF_FAILURE));
        y += one.height() + GAP;
    }
    return all;
}

QString checkPicture(const Places& places, const QString& group, const Picture& picture)
{
    const QString name = fullName(group, picture);
    const QString failure = fileOf(places.failures, name);
    const QImage actual = picture.take().convertToFormat(QImage::Format_RGB32);
    if (actual.isNull()) {
        return name + ": the state could not be brought about";
    }
    QFile::remove(failure);
    if (isAccepted(places, name)) {
        const QString fault =
            places.ofVersion.isEmpty() ? accept(places, name, actual) : acceptOfVersion(places, name, actual);
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    const QImage ofPage = QImage(fileOf(places.pictures, name)).convertToFormat(QImage::Format_RGB32);
    const QString second = fileOf(places.ofVersion, name);
    const bool hasSecond = !places.ofVersion.isEmpty() && QFile::exists(second);
    const QImage expected = hasSecond ? QImage(second).convertToFormat(QImage::Format_RGB32) : ofPage;
    if (actual != expected) {
        const QString fault = write(comparison(actual, expected), failure);
        return name + (expected.isNull() ? " has no golden picture" : " differs from its golden picture") +
               (fault.isEmpty() ? "; actual, expected and difference: " + failure : "; " + fault) +
               howToAccept(name);
    }
    if (hasSecond && expected == ofPage) {
        return "a second picture of " + name + " that is no other: " + second + howToAccept(name);
    }
    if (!shows(fileOf(places.enlarged, name), enlarged(ofPage, FACTOR_OF_PAGE))) {
        return "the page's copy of " + name + " is not up to date" + howToAccept(name);
    }
    return QString();
}

QString checkFiles(const Places& places, const QString& group, const std::vector<Picture>& pictures)
{
    QStringList names;
    for (const Picture& picture : pictures) {
        names.append(fullName(group, picture));
    }
    QStringList strays;
    QStringList directories{places.pictures, places.enlarged};
    if (!places.ofVersion.isEmpty()) {
        directories.append(places.ofVersion);
    }
    for (const QString& directory : directories) {
        for (const QFileInfo& file : QDir(directory).entryInfoList(QDir::Files)) {
            const QString itsGroup = file.fileName().section('-', 0, 0);
            const bool itsOwn = itsGroup == group;
            if (itsOwn ? file.suffix() == "png" && names.contains(file.completeBaseName())
                       : QFile::exists(places.tests + "/golden_" + itsGroup + "_test.cpp")) {
                continue;
            }
            if (!itsOwn || !places.accepted.contains("all") || !QFile::remove(file.filePath())) {
                strays.append(file.filePath());
            }
        }
    }
    return strays.isEmpty() ? QString()
                            : "files without a row in a table: " + strays.join(" ") +
                                  "; to remove those of the group " + group + ": tools/accept-pictures";
}

QString checkPage(const Places& places, const QString& group, const std::vector<Picture>& pictures)
{
    const QString page = readText(places.page);
    const QString start = startMark(group);
    const int from = int(page.indexOf(start));
    const int to = from < 0 ? -1 : int(page.indexOf(END_MARK, from));
    if (to < 0) {
        return places.page + " has no place for these pictures: " + start.trimmed() + " and " + END_MARK;
    }
    const int begin = from + int(start.size());
    const QString section = sectionOf(places, group, pictures);
    if (page.mid(begin, to - begin) == section) {
        return QString();
    }
    if (places.accepted.isEmpty()) {
        return places.page + " does not follow the table of " + group +
               "; to write it anew: tools/accept-pictures";
    }
    QFile file(places.page);
    const QByteArray text = (page.left(begin) + section + page.mid(to)).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        return "cannot write " + places.page;
    }
    return QString();
}

GroupTest::GroupTest(const char* group, std::vector<Picture> pictures)
    : m_group(group), m_pictures(std::move(pictures))
{
}

void GroupTest::picture_data()
{
    QTest::addColumn<int>("row");
    for (size_t row = 0; row < m_pictures.size(); ++row) {
        QTest::newRow(qPrintable(m_pictures[row].name)) << int(row);
    }
}

void GroupTest::picture()
{
    QFETCH(int, row);
    const QString fault = checkPicture(placesOfBuild(), m_group, m_pictures[size_t(row)]);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void GroupTest::everyFileHasARow()
{
    const QString fault = checkFiles(placesOfBuild(), m_group, m_pictures);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void GroupTest::pageFollowsTheTable()
{
    const QString fault = checkPage(placesOfBuild(), m_group, m_pictures);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

} // namespace golden
