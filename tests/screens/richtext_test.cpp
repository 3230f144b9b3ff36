// Rich text made harmless, alone and on the popup screen: names that strangers chose must not make the panel
// read files, nor break the arithmetic of the swinging text.
#include "screens/popupfixture.h"

#include "common/richtext.h"

#include <QImage>

using namespace windowfixture;

class RichTextTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetForPopups(); }

    void unchanged_data();
    void unchanged();
    void cleaned_data();
    void cleaned();
    void pictureOfAFileIsNotRead();
    void endlessFileIsNotRead_data();
    void endlessFileIsNotRead();
    void sameCleanedTextIsNoChange();
    void heightBeyondAllWidgets();
};

void RichTextTest::unchanged_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("words") << "<html>words &amp; <b>more</b><br>";
    QTest::newRow("capitals") << "<html><B>words</B>";
    QTest::newRow("picture without a source") << "<html><img width=\"1\" height=\"53\">";
    QTest::newRow("bare value") << "<html><font color=#ff0000 size=+1>words</font><hr />";
    QTest::newRow("other letters") << QString::fromUtf8("<html>\320\226\344\270\255");
}

void RichTextTest::unchanged()
{
    QFETCH(QString, text);
    QCOMPARE(harmlessRichText(text), text);
}

void RichTextTest::cleaned_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");
    QTest::newRow("source") << "<html>a<img src=/dev/zero>b"
                            << "<html>ab";
    QTest::newRow("source behind a good one") << "a<img width=1 src='x'>b"
                                              << "ab";
    QTest::newRow("other name of a source") << "a<img source=\"x\">b"
                                            << "ab";
    QTest::newRow("capitals") << "a<IMG SRC=x>b"
                              << "ab";
    QTest::newRow("background") << "<body background=\"x\">b"
                                << "b";
    QTest::newRow("style") << "<p style=\"background-image:url(x)\">b"
                           << "b";
    QTest::newRow("style with an entity") << "<p style=\"background-image:ur&#108;(x)\">b"
                                          << "b";
    QTest::newRow("style sheet") << "<style>@import url(x);</style>b"
                                 << "@import url(x);b";
    QTest::newRow("link") << "<link rel=stylesheet href=\"x\">b"
                          << "b";
    QTest::newRow("table") << "<table><tr><td>b</table>"
                           << "b";
    QTest::newRow("list") << "<ul><li>b</ul>"
                          << "b";
    QTest::newRow("comment") << "<!-- <img src=x> -->b"
                             << " -->b";
    QTest::newRow("tag without an end") << "a<img src=x"
                                        << "a";
    QTest::newRow("tag in a tag") << "a<img <img src=x>b"
                                  << "ab";
    QTest::newRow("good tag without an end") << "a<b"
                                             << "a";
    QTest::newRow("quotation mark without an end") << "<img width=\"1>b"
                                                   << "b";
    QTest::newRow("end in a value") << "<img width=\">\" src=x>b"
                                    << "\" src=x>b";
    QTest::newRow("long value") << "<img width=12345678901234567>b"
                                << "b";
    QTest::newRow("line feed for a blank") << "<img\nwidth=1>b"
                                           << "b";
    QTest::newRow("zero in a tag") << QString("<img") + QChar(0) + " src=x>b"
                                   << "b";
    QTest::newRow("other letter in a value") << QString::fromUtf8("<font color=\303\251>b") << "b";
    QTest::newRow("other sign in a value") << "<font color=re_d>b"
                                           << "b";
    QTest::newRow("instruction") << "<?xml version=\"1.0\"?>b"
                                 << "b";
    QTest::newRow("smaller than") << "1 < 2 <3"
                                  << "1 &lt; 2 &lt;3";
    QTest::newRow("at the end") << "<"
                                << "&lt;";
    QTest::newRow("two") << "<<b>"
                         << "&lt;<b>";
}

void RichTextTest::cleaned()
{
    QFETCH(QString, text);
    QFETCH(QString, result);
    QCOMPARE(harmlessRichText(text), result);
    QCOMPARE(harmlessRichText(result), result);
}

void RichTextTest::pictureOfAFileIsNotRead()
{
    QTemporaryDir directory;
    const QString file = directory.filePath("picture.png");
    QImage picture(10, 200, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QVERIFY(picture.save(file));
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 0, "<html>words<img src=\"" + file + "\">");
    QCOMPARE(f.text()->text(), QString("<html>words"));
    QCOMPARE(f.text()->height(), 52); // with the picture it would be 200 and more
    QCOMPARE(f.list(), QString("A"));
}

void RichTextTest::endlessFileIsNotRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("picture") << "<html><img src=/dev/zero>";
    QTest::newRow("background") << "<html><body background=\"/dev/zero\">x";
    QTest::newRow("style sheet") << "<html><link rel=stylesheet type=\"text/css\" href=\"/dev/zero\">";
    QTest::newRow("style") << "<html><p style=\"background-image:url(/dev/zero)\">x";
}

// Without the cleaning the process dies here, of all its memory.
void RichTextTest::endlessFileIsNotRead()
{
    QFETCH(QString, text);
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 0, text);
    QImage image(256, 64, QImage::Format_RGB32);
    f.screen->render(&image);
    QVERIFY(!f.text()->text().contains("/dev/zero"));
}

void RichTextTest::sameCleanedTextIsNoChange()
{
    PopupFixture f;
    const popup_event_t popup = popupOf(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 0, "<html><img src=x>words");
    f.screen->addEvent(popup);
    QVERIFY(!f.screen->updatePopupButtonsAndText(popup));
}

void RichTextTest::heightBeyondAllWidgets()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 0, "<html><img width=\"1\" height=\"2000000000\">");
    QCOMPARE(f.text()->height(), QWIDGETSIZE_MAX);
    QCOMPARE(f.animation()->duration(), (QWIDGETSIZE_MAX - 48) * 125);
}

int main(int argc, char** argv)
{
    return windowfixture::run<RichTextTest>(argc, argv);
}

#include "richtext_test.moc"
