// What the popup screen looks like: its layout, the text with its font and place, the swing of a text that is
// too high, scrolling by hand, and the buttons.
#include "screens/pictures.h"
#include "screens/popupfixture.h"

#include "model/event_texts.h"
#include "support/death.h"
#include "support/failingnew.h"

#include <QLayout>
#include <QRegularExpression>
#include <QTranslator>

using namespace windowfixture;

namespace {

const int OLD_MS = 1000; // beyond the grace
const char FIVE_LINES[] = "First\nSecond\nThird\nFourth\nFifth";

// Answers each text with itself in brackets.
class Brackets : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return qstrcmp(context, "Shared_translations") == 0 ? QString("[%1]").arg(text) : QString(text);
    }
};

// A text whose label is this high; the frame's height stands for all that are lower.
QString textOfHeight(const PopupFixture& f, int height)
{
    for (int picture = 1; picture <= height; ++picture) {
        const QString text = QString("<html><img width=\"1\" height=\"%1\">").arg(picture);
        f.screen->updatePopupButtonsAndText(popupOf(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, text));
        if (f.text()->height() == height) {
            return text;
        }
    }
    return QString();
}

// What is not black, in pixels of the window.
QRect inkOf(PopupFixture& f, const QRect& area = QRect(0, 0, 256, 64))
{
    const QImage picture = qtcompat::grabWidget(&f.window).toImage();
    QRect ink;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (QColor(picture.pixel(x, y)) != QColor(Qt::black)) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}

} // namespace

class ScreenPopupTextTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetForPopups(); }

    // Layout
    void layoutWithButtons();
    void layoutWithoutButtons();
    void construction();
    void buttonsByKind_data();
    void buttonsByKind();
    void buttonsAreInvisibleInTheGrace();
    void nothingLeavesThePanel_data();
    void nothingLeavesThePanel();

    // Text
    void richOrPlain_data();
    void richOrPlain();
    void plainTextShowsItsMarks();
    void font_data();
    void font();
    void changedOrNot();
    void wideTextIsWrapped();
    void failureCausesAreShownInFull();

    // Swing
    void heightAndDuration_data();
    void heightAndDuration();
    void fiftyTwoStandsStill();
    void textThatFitsStandsInTheMiddle_data();
    void textThatFitsStandsInTheMiddle();
    void threeLinesFit();
    void swingTurnsAtEachEnd();
    void swingEndsWithThePopup();
    void swingStartsAnewWithEachLookAtTheList();
    void anotherTextStopsTheSwing();

    // By hand
    void firstPressOnlyStops_data();
    void firstPressOnlyStops();
    void scrollingByHand();
    void scrollingByKind_data();
    void scrollingByKind();
    void textThatFitsIsNotScrolled();

    // Language
    void retranslationWrapsTheButtonsAgain();
    void languageChangeReachesTheButtons();
    void retranslationOfAnEmptyList();
    void withoutMemoryTheProcessEnds();
};

// --- Layout ------------------------------------------------------------------------------------------------

// The row of buttons is as high as its font, and what it needs beyond 12 pixels lies over the frame's end.
void ScreenPopupTextTest::layoutWithButtons()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK_OR_CANCEL, 0, OLD_MS);
    QTest::qWait(1); // the layout is done in the event loop
    QCOMPARE(f.frame()->geometry(), QRect(10, 0, 246, 52));
    const QLabel* const ok = f.label("pOkLabel");
    const QLabel* const cancel = f.label("pCancelLabel");
    QCOMPARE(cancel->x(), 10);
    QCOMPARE(ok->x() + ok->width(), 246);
    for (const QLabel* label : {ok, cancel}) {
        QCOMPARE(label->height(), label->sizeHint().height());
        QCOMPARE(label->y() + label->height(), 64);
    }
}

void ScreenPopupTextTest::layoutWithoutButtons()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER, 0, OLD_MS);
    QTest::qWait(1);
    QCOMPARE(f.frame()->geometry(), QRect(10, 6, 246, 52)); // in the middle of the screen
}

void ScreenPopupTextTest::construction()
{
    PopupFixture f;
    const QLayout* const column = f.screen->layout();
    QCOMPARE(column->contentsMargins(), QMargins(10, 0, 0, 0));
    QCOMPARE(column->spacing(), 0);
    QCOMPARE(column->count(), 4); // stretch, frame, stretch, row
    QVERIFY(column->itemAt(0)->spacerItem());
    QCOMPARE(column->itemAt(1)->widget(), f.frame());
    QVERIFY(column->itemAt(2)->spacerItem());
    const QLayout* const row = column->itemAt(3)->layout();
    QVERIFY(row);
    QCOMPARE(row->contentsMargins(), QMargins(0, 0, 10, 0));
    QCOMPARE(row->spacing(), 0);
    QCOMPARE(row->count(), 3);
    QCOMPARE(row->itemAt(0)->widget(), f.label("pCancelLabel"));
    QVERIFY(row->itemAt(1)->spacerItem());
    QCOMPARE(row->itemAt(2)->widget(), f.label("pOkLabel"));
    QCOMPARE(f.frame()->minimumHeight(), 52);
    QCOMPARE(f.frame()->maximumHeight(), 52);
    QCOMPARE(f.text()->parentWidget(), f.frame());
    QCOMPARE(f.text()->minimumWidth(), 246);
    QCOMPARE(f.text()->maximumWidth(), 246);
    QVERIFY(f.text()->wordWrap());
    QCOMPARE(f.animation()->targetObject(), f.text());
    QCOMPARE(f.animation()->propertyName(), QByteArray("pos"));
    QCOMPARE(f.autoClose()->parent(), f.screen);
}

void ScreenPopupTextTest::buttonsByKind_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<bool>("cancel");
    QTest::newRow("AUTO") << 0 << false << false;
    QTest::newRow("OK") << 1 << true << false;
    QTest::newRow("AUTO_OR_OK") << 2 << true << false;
    QTest::newRow("CANCEL") << 3 << false << true;
    QTest::newRow("OK_OR_CANCEL") << 4 << true << true;
    QTest::newRow("ANY_KEY") << 5 << false << false;
    QTest::newRow("NOT_BY_USER") << 6 << false << false;
}

void ScreenPopupTextTest::buttonsByKind()
{
    QFETCH(int, kind);
    PopupFixture f;
    const auto closeHandling = static_cast<POPUP_CLOSE_HANDLING_ENUM>(kind);
    f.add(A, EVENT_WARNING, closeHandling, kind == 0 || kind == 2 ? 60000 : 0, OLD_MS);
    QTEST(f.okShown(), "ok");
    QTEST(f.cancelShown(), "cancel");
    QCOMPARE(f.label("pOkLabel")->text(), QString("<font color=\"white\">OK</font>"));
    QCOMPARE(f.label("pCancelLabel")->text(), QString("<font color=\"white\">Cancel</font>"));
    QTest::qWait(1);
    QTEST(!inkOf(f, f.label("pOkLabel")->geometry() & QRect(128, 52, 128, 12)).isNull(), "ok");
    QTEST(!inkOf(f, QRect(0, 52, 128, 12)).isNull(), "cancel");
}

void ScreenPopupTextTest::buttonsAreInvisibleInTheGrace()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK_OR_CANCEL, 0, -60000);
    QVERIFY(f.okShown());
    QVERIFY(f.cancelShown());
    QCOMPARE(f.label("pOkLabel")->text(), QString("<font color=\"black\">OK</font>"));
    QCOMPARE(f.label("pCancelLabel")->text(), QString("<font color=\"black\">Cancel</font>"));
    QTest::qWait(1);
    QVERIFY(inkOf(f, QRect(0, 48, 256, 16)).isNull());
    f.screen->handleHideButtonsTimeout();
    QCOMPARE(f.colour(), QString("white"));
    QVERIFY(!inkOf(f, QRect(0, 48, 256, 16)).isNull());
}

void ScreenPopupTextTest::nothingLeavesThePanel_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<int>("kind");
    for (int language = LANG_ENGLISH; language <= LANG_JAPANESE; ++language) {
        for (int kind = POPUP_CLOSE_AUTO; kind <= POPUP_CLOSE_NOT_BY_USER; ++kind) {
            QTest::newRow(qPrintable(QString("language %1, kind %2").arg(language).arg(kind)))
                << language << kind;
        }
    }
}

void ScreenPopupTextTest::nothingLeavesThePanel()
{
    QFETCH(int, language);
    QFETCH(int, kind);
    model()->setLanguage(static_cast<LANG_ENUM>(language));
    QCoreApplication::sendPostedEvents();
    PopupFixture f;
    f.add(A, EVENT_WARNING, static_cast<POPUP_CLOSE_HANDLING_ENUM>(kind),
          kind == POPUP_CLOSE_AUTO || kind == POPUP_CLOSE_AUTO_OR_OK ? 60000 : 0, OLD_MS,
          "A text that needs two lines on the panel, as most do");
    QTest::qWait(1);
    const QRect panel(0, 0, 256, 64);
    const QRect textInFrame = f.text()->geometry();
    QVERIFY(QRect(QPoint(0, 0), f.frame()->size()).contains(textInFrame));
    QVERIFY(panel.contains(f.frame()->geometry()));
    for (const char* name : {"pOkLabel", "pCancelLabel"}) {
        const QLabel* const label = f.label(name);
        if (!label->isHidden()) {
            QVERIFY(panel.contains(label->geometry()));
            QVERIFY(label->width() >= label->sizeHint().width());
            QVERIFY(label->height() >= label->sizeHint().height());
        }
    }
    QVERIFY(!f.label("pOkLabel")->geometry().intersects(f.label("pCancelLabel")->geometry()) ||
            !f.okShown() || !f.cancelShown());
    model()->setLanguage(LANG_ENGLISH);
}

// --- Text --------------------------------------------------------------------------------------------------

void ScreenPopupTextTest::richOrPlain_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("rich");
    QTest::newRow("plain") << "words" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("at the head") << "<html>words" << true;
    QTest::newRow("anywhere") << "some <b>words<html>" << true;
    QTest::newRow("capitals") << "<HTML>words" << false;
    QTest::newRow("other marks") << "<b>words</b>" << false;
}

void ScreenPopupTextTest::richOrPlain()
{
    QFETCH(QString, text);
    PopupFixture f;
    f.screen->updatePopupButtonsAndText(popupOf(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, text));
    QTEST(f.text()->textFormat() == Qt::RichText, "rich");
    QCOMPARE(f.text()->textFormat() == Qt::PlainText, f.text()->textFormat() != Qt::RichText);
    QCOMPARE(f.text()->text(), text);
}

void ScreenPopupTextTest::plainTextShowsItsMarks()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER, 0, OLD_MS, "words");
    const int words = inkOf(f).width();
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER, 0, OLD_MS, "<b>words</b>");
    QVERIFY(inkOf(f).width() > words + 20);
}

void ScreenPopupTextTest::font_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("family");
    const QString cyrillic = QString::fromUtf8("\u0421\u0432\u044f\u0437\u044c");
    QTest::newRow("English, Latin") << int(LANG_ENGLISH) << "Link"
                                    << "helvetica";
    QTest::newRow("English, Latin-1")
        << int(LANG_ENGLISH) << QString::fromUtf8("\u00c4\u00f6") << "helvetica";
    QTest::newRow("English, Cyrillic") << int(LANG_ENGLISH) << cyrillic << "unifont";
    QTest::newRow("German, Latin") << int(LANG_GERMAN) << "Link"
                                   << "helvetica";
    QTest::newRow("Russian, Latin") << int(LANG_RUSSIAN) << "Link"
                                    << "unifont";
    QTest::newRow("Japanese, Latin") << int(LANG_JAPANESE) << "Link"
                                     << "unifont";
}

void ScreenPopupTextTest::font()
{
    QFETCH(int, language);
    QFETCH(QString, text);
    QFETCH(QString, family);
    PopupFixture f;
    model()->setLanguage(static_cast<LANG_ENUM>(language));
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, text);
    QCOMPARE(fontText(f.text()->font()), QString("%1 14 %2").arg(family).arg(int(QFont::NoAntialias)));
    model()->setLanguage(LANG_ENGLISH);
}

void ScreenPopupTextTest::changedOrNot()
{
    PopupFixture f;
    popup_event_t popup = popupOf(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, "one");
    QVERIFY(f.screen->updatePopupButtonsAndText(popup));
    QVERIFY(!f.screen->updatePopupButtonsAndText(popup));
    popup.closeHandling = POPUP_CLOSE_NOT_BY_USER;
    QVERIFY(!f.screen->updatePopupButtonsAndText(popup)); // the text alone counts
    popup.text = "two";
    QVERIFY(f.screen->updatePopupButtonsAndText(popup));
}

void ScreenPopupTextTest::wideTextIsWrapped()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER, 0, OLD_MS, "one line");
    const QRect oneLine = inkOf(f);
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER, 0, OLD_MS,
          "one line that goes on and on until it comes to the end of the panel");
    const QRect lines = inkOf(f);
    QVERIFY(lines.height() >= oneLine.height() + f.text()->fontMetrics().lineSpacing() - 4);
    QVERIFY(lines.right() < 256);
    QVERIFY(lines.width() > 190); // the whole width is used, not a half of it
}

// The sentences of the failure causes: no word is wider than the panel, and what is higher than the frame
// swings. The other events have keys for texts, whose words come with the translations.
void ScreenPopupTextTest::failureCausesAreShownInFull()
{
    PopupFixture f;
    int sentences = 0;
    for (const EventText& row : EVENT_TEXTS) {
        const QString text = row.source;
        if (!text.contains(' ')) {
            continue;
        }
        ++sentences;
        f.screen->updatePopupButtonsAndText(popupOf(row.id, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, text));
        const QFontMetrics metrics = f.text()->fontMetrics();
        for (const QString& word : text.split(QRegularExpression("\\s+"))) {
            QVERIFY2(qtcompat::textWidth(metrics, word) <= 246, qPrintable(word));
        }
        const int height = metrics.boundingRect(0, 0, 246, 2000, Qt::TextWordWrap, text).height();
        QCOMPARE(f.text()->height(), qMax(52, height));
        QCOMPARE(f.animation()->state() == QAbstractAnimation::Running, height > 52);
    }
    QVERIFY(sentences >= 100);
}

// --- Swing -------------------------------------------------------------------------------------------------

void ScreenPopupTextTest::heightAndDuration_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("duration");
    QTest::newRow("53: the least that swings") << 53 << 2000;
    QTest::newRow("64") << 64 << 2000;
    QTest::newRow("65") << 65 << 2125;
    QTest::newRow("68") << 68 << 2500;
    QTest::newRow("148") << 148 << 12500;
}

void ScreenPopupTextTest::heightAndDuration()
{
    QFETCH(int, height);
    PopupFixture f;
    const QString text = textOfHeight(f, height);
    QVERIFY(!text.isEmpty());
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, text);
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Running);
    QCOMPARE(f.animation()->direction(), QAbstractAnimation::Forward);
    QTEST(f.animation()->duration(), "duration");
    QCOMPARE(f.animation()->startValue().toPoint(), QPoint(0, 0));
    QCOMPARE(f.animation()->endValue().toPoint(), QPoint(0, 52 - height));
    QCOMPARE(f.text()->minimumHeight(), height);
    QCOMPARE(f.text()->maximumHeight(), height);
}

// Text of height 52 or less never scrolls.
void ScreenPopupTextTest::fiftyTwoStandsStill()
{
    PopupFixture f;
    const QString higher = textOfHeight(f, 53);
    QVERIFY(!higher.isEmpty());
    QString text = higher;
    text.replace(
        QRegularExpression("height=\"([0-9]+)\""),
        QString("height=\"%1\"").arg(higher.section("height=\"", 1).section("\"", 0, 0).toInt() - 1));
    QVERIFY(text != higher);
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, text);
    QCOMPARE(f.text()->geometry(), QRect(0, 0, 246, 52));
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
}

void ScreenPopupTextTest::textThatFitsStandsInTheMiddle_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("lines");
    QTest::newRow("one line") << "HHH" << 1;
    QTest::newRow("two lines") << "HHH\nHHH" << 2;
    QTest::newRow("three lines") << "HHH\nHHH\nHHH" << 3;
    QTest::newRow("rich text") << "<html>HHH<br>HHH" << 2;
}

void ScreenPopupTextTest::textThatFitsStandsInTheMiddle()
{
    QFETCH(QString, text);
    QFETCH(int, lines);
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_NOT_BY_USER, 0, OLD_MS, text);
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
    QVERIFY(f.text()->alignment() & Qt::AlignVCenter);
    QTest::qWait(1);
    const QFontMetrics metrics = f.text()->fontMetrics();
    const int top = 32 - lines * metrics.height() / 2;
    const QRect ink = inkOf(f);
    // Capitals reach from their height above the base line to the base line.
    QVERIFY(ink.top() >= top && ink.top() <= top + metrics.ascent() - 6);
    QCOMPARE(ink.bottom() - ink.top() + 1, inkOf(f, QRect(0, ink.top(), 256, metrics.height())).height() +
                                               (lines - 1) * metrics.lineSpacing());
    QVERIFY(ink.left() >= 10 && ink.left() <= 12);
}

void ScreenPopupTextTest::threeLinesFit()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, "First\nSecond\nThird");
    QCOMPARE(f.text()->height(), 52);
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
}

// The text swings up and down without pause.
void ScreenPopupTextTest::swingTurnsAtEachEnd()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, FIVE_LINES);
    const int lowest = 52 - f.text()->height();
    QVERIFY(lowest < 0);
    QAbstractAnimation::Direction direction = QAbstractAnimation::Forward;
    for (int turn = 0; turn < 4; ++turn) {
        QCOMPARE(f.animation()->direction(), direction);
        QCOMPARE(f.animation()->state(), QAbstractAnimation::Running);
        QCOMPARE(f.text()->pos().x(), 0);
        const bool down = direction == QAbstractAnimation::Forward;
        f.animation()->setCurrentTime(down ? f.animation()->duration() : 0); // the end of its way
        QVERIFY(qAbs(f.text()->y() - (down ? lowest : 0)) <= 1);
        direction = down ? QAbstractAnimation::Backward : QAbstractAnimation::Forward;
    }
}

void ScreenPopupTextTest::swingEndsWithThePopup()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, FIVE_LINES);
    f.screen->closePopup(A, true);
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
}

void ScreenPopupTextTest::swingStartsAnewWithEachLookAtTheList()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, FIVE_LINES);
    f.animation()->setCurrentTime(f.animation()->duration()); // on its way back
    QCOMPARE(f.animation()->direction(), QAbstractAnimation::Backward);
    f.press(Qt::Key_Up); // stopped by hand
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
    f.screen->showNextEvent();
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Running);
    QCOMPARE(f.animation()->direction(), QAbstractAnimation::Forward);
    QCOMPARE(f.text()->pos(), QPoint(0, 0));
}

void ScreenPopupTextTest::anotherTextStopsTheSwing()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, FIVE_LINES);
    f.animation()->setCurrentTime(f.animation()->duration() / 2);
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, "short");
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
    QCOMPARE(f.text()->geometry(), QRect(0, 0, 246, 52));
}

// --- By hand -----------------------------------------------------------------------------------------------

void ScreenPopupTextTest::firstPressOnlyStops_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("up") << int(Qt::Key_Up);
    QTest::newRow("down") << int(Qt::Key_Down);
}

void ScreenPopupTextTest::firstPressOnlyStops()
{
    QFETCH(int, key);
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, FIVE_LINES);
    f.animation()->pause(); // so that it doesn't move on while the test looks
    f.animation()->setCurrentTime(f.animation()->duration() / 2);
    const QPoint place = f.text()->pos();
    QVERIFY(place.y() < 0);
    f.press(static_cast<Qt::Key>(key));
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped);
    QCOMPARE(f.text()->pos(), place);
}

void ScreenPopupTextTest::scrollingByHand()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, FIVE_LINES);
    const int lowest = 52 - f.text()->height();
    f.press(Qt::Key_Down);
    f.text()->move(0, 0);
    int y = 0;
    while (y > lowest) {
        y = qMax(y - 13, lowest);
        f.press(Qt::Key_Down);
        QCOMPARE(f.text()->pos(), QPoint(0, y));
    }
    f.press(Qt::Key_Down); // no further than the last line
    QCOMPARE(f.text()->pos(), QPoint(0, lowest));
    while (y < 0) {
        y = qMin(y + 13, 0);
        f.press(Qt::Key_Up);
        QCOMPARE(f.text()->pos(), QPoint(0, y));
    }
    f.press(Qt::Key_Up);
    QCOMPARE(f.text()->pos(), QPoint(0, 0));
    QCOMPARE(f.animation()->state(), QAbstractAnimation::Stopped); // it doesn't swing again by itself
    QCOMPARE(f.list(), QString("A"));
}

void ScreenPopupTextTest::scrollingByKind_data()
{
    QTest::addColumn<int>("kind");
    for (int kind = POPUP_CLOSE_AUTO; kind <= POPUP_CLOSE_NOT_BY_USER; ++kind) {
        QTest::newRow(qPrintable(QString("kind %1").arg(kind))) << kind;
    }
}

// A popup that any key closes is closed; all others are scrolled.
void ScreenPopupTextTest::scrollingByKind()
{
    QFETCH(int, kind);
    for (Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
        PopupFixture f;
        f.add(A, EVENT_WARNING, static_cast<POPUP_CLOSE_HANDLING_ENUM>(kind),
              kind == POPUP_CLOSE_AUTO || kind == POPUP_CLOSE_AUTO_OR_OK ? 60000 : 0, OLD_MS, FIVE_LINES);
        f.press(key);
        if (kind == POPUP_CLOSE_ANY_KEY) {
            QVERIFY(f.screen->events().isEmpty());
            continue;
        }
        f.text()->move(0, -14);
        f.press(key);
        QCOMPARE(f.text()->pos(), QPoint(0, key == Qt::Key_Up ? -1 : -27));
        QCOMPARE(f.list(), QString("A"));
    }
}

void ScreenPopupTextTest::textThatFitsIsNotScrolled()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, FIVE_LINES);
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, "short");
    for (Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
        f.press(key);
        QCOMPARE(f.text()->pos(), QPoint(0, 0));
    }
}

// --- Language ----------------------------------------------------------------------------------------------

void ScreenPopupTextTest::retranslationWrapsTheButtonsAgain()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, OLD_MS, "as it came");
    Brackets translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    f.screen->retranslate();
    QCOMPARE(f.label("pOkLabel")->text(), QString("<font color=\"white\">[OK]</font>"));
    QCOMPARE(f.label("pCancelLabel")->text(), QString("<font color=\"white\">[Cancel]</font>"));
    QCOMPARE(f.text()->text(), QString("as it came")); // the popup's text is not translated here
    QCoreApplication::removeTranslator(&translator);
    QCoreApplication::sendPostedEvents();
}

void ScreenPopupTextTest::languageChangeReachesTheButtons()
{
    PopupFixture f;
    f.add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, -60000);
    Brackets translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.label("pOkLabel")->text(), QString("<font color=\"black\">[OK]</font>")); // still in its grace
    QCoreApplication::removeTranslator(&translator);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(f.label("pOkLabel")->text(), QString("<font color=\"black\">OK</font>"));
}

void ScreenPopupTextTest::retranslationOfAnEmptyList()
{
    PopupFixture f;
    Brackets translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    Messages messages;
    f.screen->retranslate();
    QCOMPARE(f.label("pOkLabel")->text(), QString("[OK]"));
    QCOMPARE(f.label("pCancelLabel")->text(), QString("[Cancel]"));
    QCOMPARE(messages.count("ScreenPopup::showNextEvent(): eventList is empty."), 1);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
    QCoreApplication::removeTranslator(&translator);
    QCoreApplication::sendPostedEvents();
}

void ScreenPopupTextTest::withoutMemoryTheProcessEnds()
{
    PopupFixture f;
    Window* const window = &f.window;
    int deaths = 0;
    for (;; ++deaths) {
        const Death death = deathOf([window, deaths] {
            grantedAllocations = deaths;
            ScreenPopup screen(window);
        });
        if (death.status == 111) {
            break; // as many as it needs
        }
        QVERIFY2(death.output.find("<1> gui: *** ASSERT in screenpopup at ") != std::string::npos,
                 death.output.c_str());
    }
    QCOMPARE(deaths, 2 + 1 + 3 + 1 + 3); // layouts, frame, labels, animation, timers
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenPopupTextTest>(argc, argv);
}
#include "screenpopup_text_test.moc"
