// How golden pictures are compared, refused and accepted: with files and tables of the test's own.
#include "support/golden.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace golden;

namespace {

QImage plain(int level, int width = 256)
{
    QImage image(width, 64, QImage::Format_RGB32);
    image.fill(qRgb(level, level, level));
    return image;
}

void writeText(const QString& name, const QByteArray& text)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), qint64(text.size()));
}

QByteArray readText(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const char EMPTY_PAGE[] = "# Screens\n\n<!-- pictures: one -->\n<!-- end of pictures -->\n\nMore.\n";

} // namespace

class GoldenPicturesTest : public QObject {
    Q_OBJECT

private slots:
    void init();

    void acceptedPictureIsKept();
    void samePictureIsNotWrittenAnew();
    void differentPictureFails_data();
    void differentPictureFails();
    void missingPictureFails();
    void stateThatFailsIsNotAccepted();
    void onlyTheNamedOneIsAccepted();
    void colourIsADifference();
    void staleCopyOfThePageFails();
    void otherVersionHasASecondPicture();
    void secondPictureMustBeAnother();
    void secondPictureWithoutARowFails();
    void comparisonShowsAllThree();
    void fileWithoutARowFails();
    void fileWithoutARowIsRemoved();
    void fileOfNoTestFails();
    void pageFollowsTheTable();
    void pageWithoutAPlaceFails();
    void acceptsWhatTheVariableNames();

private:
    Picture picture(int level, int width = 256) const
    {
        return {"plain", "A plain one.", [=] { return plain(level, width); }};
    }
    QString golden() const { return m_places.pictures + "/one-plain.png"; }
    QString second() const { return m_places.ofVersion + "/one-plain.png"; }
    QString failure() const { return m_places.failures + "/one-plain.png"; }
    void accept(const Picture& which)
    {
        m_places.accepted = QStringList{"all"};
        QCOMPARE(checkPicture(m_places, "one", which), QString());
        m_places.accepted.clear();
    }

    QScopedPointer<QTemporaryDir> m_directory;
    Places m_places;
};

void GoldenPicturesTest::init()
{
    m_directory.reset(new QTemporaryDir);
    const QString path = m_directory->path();
    m_places = Places();
    m_places.pictures = path + "/golden";
    m_places.enlarged = path + "/docs/pictures";
    m_places.page = path + "/docs/screens.md";
    m_places.failures = path + "/failures";
    m_places.tests = path + "/tests";
    for (const char* directory : {"golden", "docs/pictures", "tests"}) {
        QVERIFY(QDir(path).mkpath(directory));
    }
    writeText(m_places.page, EMPTY_PAGE);
    writeText(m_places.tests + "/golden_one_test.cpp", "");
    writeText(m_places.tests + "/golden_two_test.cpp", "");
}

void GoldenPicturesTest::acceptedPictureIsKept()
{
    accept(picture(100));
    const QImage kept(golden());
    QCOMPARE(kept.size(), QSize(256, 64));
    QCOMPARE(kept.depth(), 8);
    QCOMPARE(kept.pixel(7, 7), qRgb(100, 100, 100));
    const QImage enlarged(m_places.enlarged + "/one-plain.png");
    QCOMPARE(enlarged.size(), QSize(512, 128));
    QCOMPARE(enlarged.pixel(511, 127), qRgb(100, 100, 100));
    QCOMPARE(checkPicture(m_places, "one", picture(100)), QString());
}

void GoldenPicturesTest::samePictureIsNotWrittenAnew()
{
    accept(picture(100));
    // The same pixels in another file: nothing to accept.
    QVERIFY(plain(100).save(golden()));
    const QByteArray before = readText(golden());
    accept(picture(100));
    QCOMPARE(readText(golden()), before);
}

void GoldenPicturesTest::differentPictureFails_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("width");
    QTest::newRow("a shade") << 101 << 256;
    QTest::newRow("a column less") << 100 << 255;
}

void GoldenPicturesTest::differentPictureFails()
{
    QFETCH(int, level);
    QFETCH(int, width);
    accept(picture(100));
    const QByteArray before = readText(golden());
    const QString fault = checkPicture(m_places, "one", picture(level, width));
    QCOMPARE(fault, "one-plain differs from its golden picture; actual, expected and difference: " +
                        failure() + "; to accept: tools/accept-pictures one-plain");
    QVERIFY(!QImage(failure()).isNull());
    QCOMPARE(readText(golden()), before);
    // The failure's picture goes with the failure.
    QCOMPARE(checkPicture(m_places, "one", picture(100)), QString());
    QVERIFY(!QFile::exists(failure()));
}

void GoldenPicturesTest::missingPictureFails()
{
    const QString fault = checkPicture(m_places, "one", picture(100));
    QVERIFY2(fault.startsWith("one-plain has no golden picture; "), qPrintable(fault));
    QVERIFY(!QFile::exists(golden()));
}

void GoldenPicturesTest::stateThatFailsIsNotAccepted()
{
    m_places.accepted = QStringList{"all"};
    const Picture none{"plain", "", [] { return QImage(); }};
    QCOMPARE(checkPicture(m_places, "one", none), QString("one-plain: the state could not be brought about"));
    QVERIFY(!QFile::exists(golden()));
}

void GoldenPicturesTest::onlyTheNamedOneIsAccepted()
{
    accept(picture(100));
    m_places.accepted = QStringList{"one-other"};
    QVERIFY(!checkPicture(m_places, "one", picture(200)).isEmpty());
    m_places.accepted = QStringList{"one-other", "one-plain"};
    QCOMPARE(checkPicture(m_places, "one", picture(200)), QString());
    QCOMPARE(QImage(golden()).pixel(0, 0), qRgb(200, 200, 200));
}

void GoldenPicturesTest::colourIsADifference()
{
    const Picture red{"plain", "", [] {
                          QImage image = plain(0);
                          image.setPixel(3, 3, qRgb(255, 0, 0));
                          return image;
                      }};
    m_places.accepted = QStringList{"all"};
    QVERIFY(!checkPicture(m_places, "one", red).isEmpty());
}

void GoldenPicturesTest::staleCopyOfThePageFails()
{
    accept(picture(100));
    QVERIFY(plain(99).scaled(512, 128).save(m_places.enlarged + "/one-plain.png"));
    QVERIFY(checkPicture(m_places, "one", picture(100)).contains("not up to date"));
    QVERIFY(QFile::remove(m_places.enlarged + "/one-plain.png"));
    QVERIFY(checkPicture(m_places, "one", picture(100)).contains("not up to date"));
}

// What another version of Qt draws otherwise is kept beside, and what the page shows stays.
void GoldenPicturesTest::otherVersionHasASecondPicture()
{
    accept(picture(100));
    const QByteArray before = readText(golden());
    m_places.ofVersion = m_places.pictures + "/qt6";
    QCOMPARE(checkPicture(m_places, "one", picture(100)), QString());
    QVERIFY(checkPicture(m_places, "one", picture(101)).contains("differs from its golden picture"));
    accept(picture(101));
    QCOMPARE(checkPicture(m_places, "one", picture(101)), QString());
    QVERIFY(checkPicture(m_places, "one", picture(100)).contains("differs from its golden picture"));
    QCOMPARE(QImage(second()).pixel(7, 7), qRgb(101, 101, 101));
    QCOMPARE(readText(golden()), before);
    m_places.ofVersion.clear();
    QCOMPARE(checkPicture(m_places, "one", picture(100)), QString());
}

void GoldenPicturesTest::secondPictureMustBeAnother()
{
    accept(picture(100));
    m_places.ofVersion = m_places.pictures + "/qt6";
    accept(picture(100));
    QVERIFY(!QFile::exists(second()));
    QVERIFY(QDir().mkpath(m_places.ofVersion));
    QVERIFY(plain(100).save(second()));
    QVERIFY(checkPicture(m_places, "one", picture(100)).contains("that is no other"));
    accept(picture(100));
    QVERIFY(!QFile::exists(second()));
}

void GoldenPicturesTest::secondPictureWithoutARowFails()
{
    accept(picture(100));
    m_places.ofVersion = m_places.pictures + "/qt6";
    QVERIFY(QDir().mkpath(m_places.ofVersion));
    QVERIFY(plain(1).save(m_places.ofVersion + "/one-stray.png"));
    QVERIFY(checkFiles(m_places, "one", {picture(100)}).contains("qt6/one-stray.png"));
}

void GoldenPicturesTest::comparisonShowsAllThree()
{
    QImage actual = plain(100);
    actual.setPixel(10, 20, qRgb(255, 255, 255));
    const QImage all = comparison(actual, plain(100));
    QCOMPARE(all.size(), QSize(768, 3 * 192 + 16));
    QCOMPARE(all.pixel(31, 61), qRgb(255, 255, 255));
    QCOMPARE(all.pixel(31, 200 + 61), qRgb(100, 100, 100));
    QCOMPARE(all.pixel(31, 400 + 61), qRgb(255, 0, 0));
    QCOMPARE(all.pixel(40, 400 + 61), qRgb(25, 25, 25));
}

void GoldenPicturesTest::fileWithoutARowFails()
{
    accept(picture(100));
    QCOMPARE(checkFiles(m_places, "one", {picture(100)}), QString());
    QVERIFY(plain(1).save(m_places.pictures + "/one-stray.png"));
    QVERIFY(checkFiles(m_places, "one", {picture(100)}).contains("one-stray.png"));
    QCOMPARE(checkFiles(m_places, "two", {}), QString());
    QVERIFY(checkFiles(m_places, "one", {}).contains("one-plain.png"));
}

void GoldenPicturesTest::fileWithoutARowIsRemoved()
{
    QVERIFY(plain(1).save(m_places.enlarged + "/one-stray.png"));
    m_places.accepted = QStringList{"one-plain"};
    QVERIFY(!checkFiles(m_places, "one", {picture(100)}).isEmpty());
    m_places.accepted = QStringList{"all"};
    QCOMPARE(checkFiles(m_places, "one", {picture(100)}), QString());
    QVERIFY(!QFile::exists(m_places.enlarged + "/one-stray.png"));
}

void GoldenPicturesTest::fileOfNoTestFails()
{
    QVERIFY(plain(1).save(m_places.pictures + "/three-plain.png"));
    m_places.accepted = QStringList{"all"};
    QVERIFY(checkFiles(m_places, "one", {}).contains("three-plain.png"));
    QVERIFY(QFile::exists(m_places.pictures + "/three-plain.png"));
}

void GoldenPicturesTest::pageFollowsTheTable()
{
    QVERIFY(checkPage(m_places, "one", {picture(1)}).contains("does not follow"));
    QCOMPARE(readText(m_places.page), QByteArray(EMPTY_PAGE));
    m_places.accepted = QStringList{"one-plain"};
    QCOMPARE(checkPage(m_places, "one", {picture(1)}), QString());
    QCOMPARE(readText(m_places.page),
             QByteArray("# Screens\n\n<!-- pictures: one -->\n\n![one-plain](pictures/one-plain.png)<br>\n"
                        "A plain one.\n\n<!-- end of pictures -->\n\nMore.\n"));
    m_places.accepted.clear();
    QCOMPARE(checkPage(m_places, "one", {picture(1)}), QString());
}

void GoldenPicturesTest::pageWithoutAPlaceFails()
{
    m_places.accepted = QStringList{"all"};
    QVERIFY(checkPage(m_places, "two", {picture(1)}).contains("<!-- pictures: two -->"));
    QCOMPARE(readText(m_places.page), QByteArray(EMPTY_PAGE));
}

void GoldenPicturesTest::acceptsWhatTheVariableNames()
{
    const QByteArray before = qgetenv("LUMENPANEL_ACCEPT");
    qputenv("LUMENPANEL_ACCEPT", " one-a  two-b ");
    const QStringList two = placesOfBuild().accepted;
    qunsetenv("LUMENPANEL_ACCEPT");
    const QStringList none = placesOfBuild().accepted;
    qputenv("LUMENPANEL_ACCEPT", before);
    QCOMPARE(two, (QStringList{"one-a", "two-b"}));
    QVERIFY(none.isEmpty());
}

QTEST_MAIN(GoldenPicturesTest)
#include "goldenpictures_test.moc"
