// What the panel does without one of the files that belong to it, or with a broken one: each picture of an
// icon, each signal picture, the scale, each language; and without any font. Some are logged and done
// without, some end the process.
#include "screens/statusfixture.h"

#include "screens/screenpointing.h"
#include "support/death.h"
#include "support/messages.h"
#include "support/patience.h"

#include <QDir>
#include <QProcess>

using namespace windowfixture;

namespace {

// --- Files -------------------------------------------------------------------------------------------------

// What is wrong with a file.
enum Fault { MISSING, EMPTY, FOREIGN, CUT, DIRECTORY };
const struct {
    Fault fault;
    const char* name;
} faults[] = {{MISSING, "missing"},
              {EMPTY, "empty"},
              {FOREIGN, "of another kind"},
              {CUT, "cut off"},
              {DIRECTORY, "a directory"}};

// While it lives the panel's files are these: a copy of the real ones.
class Files {
public:
    Files() : m_path(m_directory.path().toLocal8Bit())
    {
        const QDir real(paths::resourcePath());
        for (const QString& name : real.entryList(QDir::Files))
            QFile::copy(real.filePath(name), path(name));
        paths::overrideForTest(m_path.constData(), nullptr, nullptr);
    }
    ~Files() { paths::overrideForTest(nullptr, nullptr, nullptr); }
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

    QString path(const QString& name) const { return m_directory.filePath(name); }
    QString directory() const { return m_directory.path(); }
    bool spoil(const QString& name, Fault fault) const
    {
        QFile file(path(name));
        if (!file.exists())
            return false;
        if (fault == CUT)
            return file.resize(20); // no more than its head
        if (!file.remove())
            return false;
        if (fault == MISSING)
            return true;
        if (fault == DIRECTORY)
            return QDir(directory()).mkdir(name);
        return file.open(QIODevice::WriteOnly) && (fault == EMPTY || file.write("Tide tables\n") > 0);
    }

private:
    QTemporaryDir m_directory;
    QByteArray m_path;
};

// The icons of the status screen that are done without when their picture can't be had.
const struct {
    const char* label;
    const char* picture;
    INTERFACE_STATE_ENUM state; // that shows it
} icons[] = {
    {"pBattLabel", "battery_enabled", INTERFACE_STATE_ON},
    {"pBattLabel", "battery_disabled", INTERFACE_STATE_OFF},
    {"pWifiLabel", "wifi_enabled", INTERFACE_STATE_ON},
    {"pWifiLabel", "wifi_disabled", INTERFACE_STATE_OFF},
    {"pIsdnLabel", "isdn_enabled", INTERFACE_STATE_ON},
    {"pIsdnLabel", "isdn_disabled", INTERFACE_STATE_OFF},
    {"pLanLabel", "lan_enabled", INTERFACE_STATE_ON},
    {"pLanLabel", "lan_disabled", INTERFACE_STATE_OFF},
    {"pPhoneLabel", "phone_enabled", INTERFACE_STATE_ON},
    {"pPhoneLabel", "phone_disabled", INTERFACE_STATE_OFF},
    {"pUsbLabel", "usb_enabled", INTERFACE_STATE_ON},
    {"pUsbLabel", "usb_disabled", INTERFACE_STATE_OFF},
    {"pWarningLabel", "warning_enabled", INTERFACE_STATE_ON},
    {"pWarningLabel", "warning_disabled", INTERFACE_STATE_OFF},
    {"pConnectLabel", "connect_enabled", INTERFACE_STATE_ON},
    {"pConnectLabel", "connect_disabled", INTERFACE_STATE_OFF},
    {"pMenuLabel", "menu_enabled", INTERFACE_STATE_ON},
    {"pMenuLabel", "menu_disabled", INTERFACE_STATE_OFF},
};

const struct {
    LANG_ENUM language;
    const char* file;
    const char* family;
} translations[] = {
    {LANG_ENGLISH, "i18n_en", "helvetica"}, {LANG_FRENCH, "i18n_fr", "helvetica"},
    {LANG_GERMAN, "i18n_de", "helvetica"},  {LANG_RUSSIAN, "i18n_ru", "unifont"},
    {LANG_SPANISH, "i18n_es", "helvetica"}, {LANG_CHINESE, "i18n_zh", "unifont"},
    {LANG_JAPANESE, "i18n_ja", "unifont"},
};

// A function of the test's own that ends, with what it wrote, Qt's messages and the log.
template <typename Function> Death deathWithMessages(Function function)
{
    return deathOf([function] {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
            fprintf(stderr, "%s\n", qPrintable(text));
        });
        function();
    });
}

bool holds(const Death& death, const QString& text)
{
    return QString::fromStdString(death.output).contains(text);
}

// --- A panel of its own ------------------------------------------------------------------------------------

const char ALIVE[] = "the panel has been everywhere";

// This program in the part of the panel: it goes through all screens in all languages.
int runPanel(char* name)
{
    terminalPointer() = nullptr;
    syslogtap_start();
    syslogtap_echo(1);
    const QByteArray resources = qgetenv("TEST_RESOURCES");
    const QByteArray other = qgetenv("TEST_DIRECTORY");
    const QByteArray contrast = other + "/contrast";
    QFile(QString::fromLocal8Bit(contrast)).open(QIODevice::WriteOnly);
    paths::overrideForTest(resources.isEmpty() ? nullptr : resources.constData(), other.constData(),
                           contrast.constData());
    char debugArgument[] = "logQtDebug";
    char* arguments[] = {name, debugArgument, nullptr};
    int count = 2;
    GuiApp::createInstance(count, arguments);
    if (!QTest::qWaitFor([] { return logHolds("About to run fdloop_loop"); }, PATIENCE_MS))
        return 2;
    Window window;
    window.setVisible(true);
    for (const auto& translation : translations) {
        model()->setLanguage(translation.language);
        QCoreApplication::processEvents();
        for (int id = 0; id <= Screen::SCREEN_MENU; ++id) {
            if (Screen* const screen = window.getScreenById(static_cast<Screen::SCREEN_ID_ENUM>(id)))
                screen->grab();
        }
    }
    fprintf(stderr, "%s\n", ALIVE);
    return 0;
}

struct End {
    int status; // of the process; -1 if a signal ended it
    QString output;
};

End endOfPanel(const QStringList& environment)
{
    QTemporaryDir directory;
    QProcess process;
    process.setEnvironment(QProcess::systemEnvironment() + environment +
                           QStringList("TEST_DIRECTORY=" + directory.path()));
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(), {"role=panel"});
    if (!process.waitForFinished(PATIENCE_MS))
        qFatal("the panel did not end");
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAll())};
}

} // namespace

class MissingFilesTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetStatus(); }
    void cleanup()
    {
        model()->setLanguage(LANG_ENGLISH);
        QCoreApplication::sendPostedEvents();
    }

    void everyPictureIsInATable();
    void iconIsDoneWithout_data();
    void iconIsDoneWithout();
    void blinkIsDoneWithout_data() { addFaults(); }
    void blinkIsDoneWithout();
    void signalPictureEndsTheProcess_data();
    void signalPictureEndsTheProcess();
    void scaleEndsTheProcess_data() { addFaults(); }
    void scaleEndsTheProcess();

    void languageIsDoneWithout_data();
    void languageIsDoneWithout();
    void wordsOfTheModelStayWithoutTheLanguage();

    void panelEndsAtItsStart_data();
    void panelEndsAtItsStart();
    void panelGoesOnWithoutIconsAndLanguages();
    void panelGoesOnWithoutFonts_data();
    void panelGoesOnWithoutFonts();

private:
    static void addFaults()
    {
        QTest::addColumn<int>("fault");
        for (const auto& row : faults)
            QTest::newRow(row.name) << int(row.fault);
    }
};

// --- Pictures ----------------------------------------------------------------------------------------------

// So that no picture is added without a word on what happens when it isn't there.
void MissingFilesTest::everyPictureIsInATable()
{
    QStringList known = {"grid_12_fields.png", "warning_no_sign_enabled.png", "warning_no_sign_disabled.png"};
    for (const auto& icon : icons)
        known.append(QString(icon.picture) + ".png");
    for (int bars = 0; bars <= 4; ++bars)
        known.append(QString("antenna_%1.png").arg(bars));
    known.sort();
    QCOMPARE(QDir(paths::resourcePath()).entryList({"*.png"}, QDir::Files, QDir::Name), known);
}

void MissingFilesTest::iconIsDoneWithout_data()
{
    QTest::addColumn<int>("icon");
    QTest::addColumn<int>("fault");
    int number = 0;
    for (const auto& icon : icons) {
        for (const auto& row : faults)
            QTest::addRow("%s is %s", icon.picture, row.name) << number << int(row.fault);
        ++number;
    }
}

// The other state still has its picture, and so have the other icons.
void MissingFilesTest::iconIsDoneWithout()
{
    QFETCH(int, icon);
    QFETCH(int, fault);
    const auto& row = icons[icon];
    const QString file = QString(row.picture) + ".png";
    Files files;
    QVERIFY(files.spoil(file, static_cast<Fault>(fault)));
    StatusFixture f;
    f.window.show();
    TLabel* const label = f.icon(row.label);
    const bool on = row.state == INTERFACE_STATE_ON;
    label->setState(on ? INTERFACE_STATE_OFF : INTERFACE_STATE_ON);
    QVERIFY(!qtcompat::labelPixmap(label).isNull());
    Messages messages;
    label->setState(row.state);
    QCOMPARE(messages.count("TLabel::updateIcon(): Pixmap not found for filename=" + files.path(file) +
                            ". Now removing pixmap from icon."),
             1);
    QVERIFY(qtcompat::labelPixmap(label).isNull());
    for (const auto& other : icons) {
        if (f.icon(other.label) != label)
            QVERIFY2(!qtcompat::labelPixmap(f.icon(other.label)).isNull(), other.label);
    }
    QVERIFY(!f.window.grab().isNull()); // and it can be drawn
    label->setState(on ? INTERFACE_STATE_OFF : INTERFACE_STATE_ON);
    QVERIFY(!qtcompat::labelPixmap(label).isNull());
}

// The sign then blinks between itself and nothing.
void MissingFilesTest::blinkIsDoneWithout()
{
    QFETCH(int, fault);
    Files files;
    for (const char* file : {"warning_no_sign_enabled.png", "warning_no_sign_disabled.png"})
        QVERIFY(files.spoil(file, static_cast<Fault>(fault)));
    StatusFixture f;
    f.window.show();
    TLabel* const sign = f.icon("pWarningLabel");
    for (INTERFACE_STATE_ENUM state : {INTERFACE_STATE_ON, INTERFACE_STATE_OFF}) {
        sign->setState(state);
        sign->setBlinking(true);
        bool drawn = false;
        bool empty = false;
        Messages messages;
        for (int phase = 0; phase < 2; ++phase) {
            sign->handleBlinkTimeout();
            (qtcompat::labelPixmap(sign).isNull() ? empty : drawn) = true;
        }
        QVERIFY(drawn && empty);
        const QString file =
            QString("warning_no_sign_%1.png").arg(state == INTERFACE_STATE_ON ? "enabled" : "disabled");
        QCOMPARE(messages.count("TLabel::updateIcon(): Pixmap not found for filename=" + files.path(file) +
                                ". Now removing pixmap from icon."),
                 1);
        sign->setBlinking(false);
        QVERIFY(!qtcompat::labelPixmap(sign).isNull());
    }
}

void MissingFilesTest::signalPictureEndsTheProcess_data()
{
    QTest::addColumn<int>("bars");
    QTest::addColumn<int>("fault");
    for (int bars = 0; bars <= 4; ++bars) {
        for (const auto& row : faults)
            QTest::addRow("%d bars, %s", bars, row.name) << bars << int(row.fault);
    }
}

void MissingFilesTest::signalPictureEndsTheProcess()
{
    QFETCH(int, bars);
    QFETCH(int, fault);
    Files files;
    const QString file = QString("antenna_%1.png").arg(bars);
    QVERIFY(files.spoil(file, static_cast<Fault>(fault)));
    TSignalLabel label(nullptr);
    for (int others = 0; others <= 4; ++others) {
        if (others != bars)
            label.setNumberOfIconBars(others); // they are there
    }
    const Death death = deathWithMessages([&label, bars] { label.setNumberOfIconBars(bars); });
    QVERIFY(death.signal != 0 || death.status == 1);
    QVERIFY2(holds(death, "TSignalLabel::updateIcon(): ERROR !!!!!!!!!!!!!: Pixmap not found for filename=" +
                              files.path(file) + ". Now exiting lumenpanel!"),
             death.output.c_str());
    QVERIFY2(holds(death, "<1> gui: TSignalLabel::updateIcon(): ERROR !!! : Pixmap not found. Exiting "
                          "lumenpanel."),
             death.output.c_str());
}

void MissingFilesTest::scaleEndsTheProcess()
{
    QFETCH(int, fault);
    Files files;
    StatusFixture f;
    QVERIFY(files.spoil("grid_12_fields.png", static_cast<Fault>(fault)));
    Window* const window = &f.window;
    const Death death = deathWithMessages([window] { ScreenPointing screen(window); });
    QVERIFY(death.signal != 0 || death.status == 1);
    QVERIFY2(holds(death, "ScreenPointing::ScreenPointing(): ERROR !!!!!!!! Pixmap not found for filename=" +
                              files.path("grid_12_fields.png") + ". Now exiting lumenpanel!"),
             death.output.c_str());
    QVERIFY2(holds(death, "<1> gui: ERROR!!! Missing file used by lumenpanel. Exiting lumenpanel."),
             death.output.c_str());
}

// --- Languages ---------------------------------------------------------------------------------------------

void MissingFilesTest::languageIsDoneWithout_data()
{
    QTest::addColumn<int>("translation");
    QTest::addColumn<int>("fault");
    int number = 0;
    for (const auto& translation : translations) {
        for (const auto& row : faults)
            QTest::addRow("%s is %s", translation.file, row.name) << number << int(row.fault);
        ++number;
    }
}

// The font is the language's, the words are those of the source, and the next language is as ever.
void MissingFilesTest::languageIsDoneWithout()
{
    QFETCH(int, translation);
    QFETCH(int, fault);
    const auto& row = translations[translation];
    const LANG_ENUM other = row.language == LANG_SPANISH ? LANG_GERMAN : LANG_SPANISH;
    Files files;
    QVERIFY(files.spoil(QString(row.file) + ".qm", static_cast<Fault>(fault)));
    StatusFixture f;
    const auto use = [&f](LANG_ENUM language) {
        f.window.handleRequestLoadLanguage(language);
        QCoreApplication::sendPostedEvents();
    };
    QLabel* const caption =
        f.window.getScreenById(Screen::SCREEN_POINTING)->findChild<QLabel*>("pCancelLabel");
    use(other);
    const QString words = caption->text();
    QVERIFY(words != "Cancel");
    Messages messages;
    use(row.language);
    const int refused = messages.count(
        QString("Window::loadLanguage(): ERROR!!! Can not load translation file %1 for path=%2 !!!")
            .arg(row.file, files.directory()));
    const int taken =
        messages.count(QString("Window::loadLanguage(): translation file %1 installed.").arg(row.file));
    QCOMPARE(refused + taken, 1);
    if (fault != CUT)
        QCOMPARE(refused, 1); // Qt takes a file that begins as it should for one without words
    QCOMPARE(QApplication::font().family(), QString(row.family));
    QCOMPARE(caption->text(), QString("Cancel"));
    use(other);
    QCOMPARE(caption->text(), words);
}

// What the model has looked up stays: it is only told of a language that has been loaded.
void MissingFilesTest::wordsOfTheModelStayWithoutTheLanguage()
{
    Files files;
    QVERIFY(files.spoil("i18n_fr.qm", MISSING));
    StatusFixture f;
    f.window.handleRequestLoadLanguage(LANG_GERMAN);
    const QString status = model()->getStatusText(STATUS_TEXT_READY);
    const QString alert = model()->getEventText(EV_ALARM_SIM_MODULE);
    QVERIFY(status != "Ready" && alert != "EV_ALARM_SIM_MODULE");
    f.window.handleRequestLoadLanguage(LANG_FRENCH);
    QCOMPARE(model()->getStatusText(STATUS_TEXT_READY), status);
    QCOMPARE(model()->getEventText(EV_ALARM_SIM_MODULE), alert);
    f.window.handleRequestLoadLanguage(LANG_ENGLISH);
    QVERIFY(model()->getStatusText(STATUS_TEXT_READY) != status);
}

// --- The whole panel ---------------------------------------------------------------------------------------

void MissingFilesTest::panelEndsAtItsStart_data()
{
    const char signalPicture[] =
        "<1> gui: TSignalLabel::updateIcon(): ERROR !!! : Pixmap not found. Exiting lumenpanel.";
    const char scale[] = "<1> gui: ERROR!!! Missing file used by lumenpanel. Exiting lumenpanel.";
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("panic");
    QTest::newRow("no picture for no bars") << "antenna_0.png" << signalPicture;
    QTest::newRow("no scale") << "grid_12_fields.png" << scale;
    QTest::newRow("nothing at all") << "" << signalPicture; // the first that is missed
}

void MissingFilesTest::panelEndsAtItsStart()
{
    QFETCH(QString, file);
    QFETCH(QString, panic);
    Files files;
    if (!file.isEmpty())
        QVERIFY(files.spoil(file, MISSING));
    const QString directory = file.isEmpty() ? files.path("nowhere") : files.directory();
    const End end = endOfPanel({"TEST_RESOURCES=" + directory});
    QVERIFY2(end.status != 0 && end.status != 2, qPrintable(end.output.right(2000)));
    QVERIFY2(end.output.contains(panic), qPrintable(end.output.right(2000)));
    QVERIFY(!end.output.contains(ALIVE));
}

// All of the icons and all of the languages are gone, and it still shows what it can.
void MissingFilesTest::panelGoesOnWithoutIconsAndLanguages()
{
    Files files;
    for (const auto& icon : icons)
        QVERIFY(files.spoil(QString(icon.picture) + ".png", MISSING));
    for (const auto& translation : translations)
        QVERIFY(files.spoil(QString(translation.file) + ".qm", MISSING));
    const End end = endOfPanel({"TEST_RESOURCES=" + files.directory()});
    QVERIFY2(end.status == 0, qPrintable(end.output.right(2000)));
    QVERIFY(end.output.contains(ALIVE));
    QVERIFY(end.output.contains("Pixmap not found for filename=" + files.path("menu_enabled.png")));
    for (const auto& translation : translations) {
        QVERIFY2(end.output.contains(QString("Can not load translation file %1 for").arg(translation.file)),
                 translation.file);
    }
}

void MissingFilesTest::panelGoesOnWithoutFonts_data()
{
    QTest::addColumn<QStringList>("directories");
    QTest::newRow("none") << QStringList();
    QTest::newRow("no wide face") << QStringList({"/usr/share/fonts/X11/75dpi"});
    QTest::newRow("no Latin face") << QStringList({"/usr/share/fonts/X11/misc"});
    QTest::newRow("no face with the charging sign")
        << QStringList({"/usr/share/fonts/X11/75dpi", "/usr/share/fonts/X11/misc"});
}

// A family that isn't installed falls back to whatever there is, or to nothing; it is no reason to end.
void MissingFilesTest::panelGoesOnWithoutFonts()
{
    QFETCH(QStringList, directories);
    QTemporaryDir directory;
    QVERIFY(QDir(directory.path()).mkdir("empty"));
    QFile file(directory.filePath("fonts.conf"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QByteArray text = "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n<fontconfig>\n";
    for (const QString& path : directories + QStringList(directory.filePath("empty")))
        text += "<dir>" + path.toUtf8() + "</dir>\n";
    text += "<cachedir>" + directory.filePath("cache").toUtf8() + "</cachedir>\n</fontconfig>\n";
    file.write(text);
    file.close();
    const End end = endOfPanel({"FONTCONFIG_FILE=" + file.fileName()});
    QVERIFY2(end.status == 0, qPrintable(end.output.right(2000)));
    QVERIFY2(end.output.contains(ALIVE), qPrintable(end.output.right(2000)));
    QVERIFY(end.output.contains("GuiApp::useFont(): About to set font to pFontLangUnicode_h11"));
    QVERIFY(!end.output.contains("<1> gui:")); // no panic
}

int main(int argc, char** argv)
{
    if (argc > 1 && !strcmp(argv[1], "role=panel")) {
        const int status = runPanel(argv[0]);
        fflush(nullptr);
        _exit(status); // the bus thread never ends
    }
    return windowfixture::run<MissingFilesTest>(argc, argv);
}

#include "missing_files_test.moc"
