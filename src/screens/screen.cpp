// The base of the pages; see the header.
#include "screens/screen.h"

#include "app/window.h"
#include "common/checked.h"
#include "common/log.h"
#include "common/paths.h"
#include "common/qtcompat.h"
#include "model/statusupdater.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QPalette>
#include <QPixmap>
#include <QVBoxLayout>

namespace {

const char SOURCE[] = "screen";
const int SCREENSHOT_QUALITY = 1;

const struct {
    Screen::SCREEN_ID_ENUM id;
    const char* name;
} screenNames[] = {
    {Screen::SCREEN_UNDEFINED, "SCREEN_UNDEFINED"}, {Screen::SCREEN_ENTER_PIN, "SCREEN_ENTER_PIN"},
    {Screen::SCREEN_POINTING, "SCREEN_POINTING"},   {Screen::SCREEN_STATUS, "SCREEN_STATUS"},
    {Screen::SCREEN_BATTERY, "SCREEN_BATTERY"},     {Screen::SCREEN_ANTENNA, "SCREEN_ANTENNA"},
    {Screen::SCREEN_ACTION, "SCREEN_ACTION"},       {Screen::SCREEN_POPUP, "SCREEN_POPUP"},
    {Screen::SCREEN_MENU, "SCREEN_MENU"},
};

// The keypad reports a long press of OK as Space.
const struct {
    int key;
    void (Screen::*handle)();
} keyActions[] = {
    {Qt::Key_Left, &Screen::keyLeftClicked},  {Qt::Key_Right, &Screen::keyRightClicked},
    {Qt::Key_Up, &Screen::keyUpClicked},      {Qt::Key_Down, &Screen::keyDownClicked},
    {Qt::Key_Return, &Screen::keyOkClicked},  {Qt::Key_Space, &Screen::keyLongOkPressed},
    {Qt::Key_F12, &Screen::createScreenshot},
};

} // namespace

Screen::Screen(Window* pWindow, SCREEN_ID_ENUM screenId, QWidget* parent)
    : QWidget(parent), m_pMainWindow(pWindow), pStatusUpdater(nullptr), m_screenId(screenId),
      upScreen(SCREEN_UNDEFINED), downScreen(SCREEN_UNDEFINED), leftScreen(SCREEN_UNDEFINED),
      rightScreen(SCREEN_UNDEFINED), okScreen(SCREEN_UNDEFINED), longOkScreen(SCREEN_UNDEFINED),
      pPixmapLayout(nullptr), pPixmapLabel(nullptr)
{
    logDebug() << "Screen::Screen(): Start of constructor. screenId=" << m_screenId << " (" << getScreenName()
               << ")";
    pStatusUpdater = StatusUpdater::getStatusUpdater();
    setGeometry(0, 0, PANEL_WIDTH, PANEL_HEIGHT);
    setFixedWidth(PANEL_WIDTH);
    setFixedHeight(PANEL_HEIGHT);
    QPalette blackPalette = palette();
    blackPalette.setColor(QPalette::Window, Qt::black);
    blackPalette.setColor(QPalette::WindowText, Qt::white);
    setPalette(blackPalette);
    setAutoFillBackground(true);
}

Screen::~Screen()
{
    delete pPixmapLayout;
    pPixmapLayout = nullptr;
    delete pPixmapLabel;
    pPixmapLabel = nullptr;
}

void Screen::setUpScreen(SCREEN_ID_ENUM screenId)
{
    upScreen = screenId;
}

void Screen::setDownScreen(SCREEN_ID_ENUM screenId)
{
    downScreen = screenId;
}

void Screen::setLeftScreen(SCREEN_ID_ENUM screenId)
{
    leftScreen = screenId;
}

void Screen::setRightScreen(SCREEN_ID_ENUM screenId)
{
    rightScreen = screenId;
}

void Screen::setOkScreen(SCREEN_ID_ENUM screenId)
{
    okScreen = screenId;
}

void Screen::setLongOkScreen(SCREEN_ID_ENUM screenId)
{
    longOkScreen = screenId;
}

Screen::SCREEN_ID_ENUM Screen::getId() const
{
    return m_screenId;
}

QString Screen::getScreenName() const
{
    for (const auto& row : screenNames) {
        if (row.id == m_screenId)
            return QString::fromLatin1(row.name);
    }
    return QString::fromLatin1("UNDEFINED");
}

// An ignored event goes on to the parent widget.
void Screen::keyPressEvent(QKeyEvent* event)
{
    logDebug() << "Current screen=" << getScreenName() << "(this=" << static_cast<const void*>(this)
               << ") now received the keypress";
    if (pStatusUpdater->getIgnoreGlobalKeyPress()) {
        event->ignore();
        return;
    }
    event->accept();
    for (const auto& action : keyActions) {
        if (action.key == event->key()) {
            (this->*action.handle)();
            return;
        }
    }
    logDebug() << "Screen::keyPressEvent: Ingoring keyPress.";
    event->ignore();
}

void Screen::keyLeftClicked()
{
    showNeighbour(leftScreen, "LEFT");
}

void Screen::keyRightClicked()
{
    showNeighbour(rightScreen, "RIGHT");
}

void Screen::keyUpClicked()
{
    showNeighbour(upScreen, "UP");
}

void Screen::keyDownClicked()
{
    showNeighbour(downScreen, "DOWN");
}

void Screen::keyOkClicked()
{
    showNeighbour(okScreen, "OK");
}

void Screen::keyLongOkPressed()
{
    showNeighbour(longOkScreen, "LONG OK");
}

void Screen::showNeighbour(SCREEN_ID_ENUM neighbour, const char* keyName)
{
    if (neighbour == SCREEN_UNDEFINED)
        logDebug() << "Button " << keyName << " not defined on this screen.";
    else
        m_pMainWindow->showScreen(neighbour, false);
}

void Screen::retranslate() {}

void Screen::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        logDebug() << "Screen::changeEvent(): LanguageChange. Shall run retranslate.";
        retranslate();
    } else if (event->type() == QEvent::FontChange) {
        logDebug() << "Screen::changeEvent(QEvent *pEvent): QEvent::FontChange. Nothing to do here.";
    }
    QWidget::changeEvent(event);
}

void Screen::setPixmap(const QString& fileName)
{
    if (!pPixmapLayout)
        pPixmapLayout = checkedNew<QVBoxLayout>(SOURCE, __LINE__, this);
    pPixmapLayout->setContentsMargins(0, 0, 0, 0);
    pPixmapLayout->setSpacing(0);
    if (!pPixmapLabel) {
        pPixmapLabel = checkedNew<QLabel>(SOURCE, __LINE__, this);
        pPixmapLabel->setObjectName(QString::fromLatin1("pPixmapLabel"));
    }
    pPixmapLabel->setPixmap(QPixmap(fileName));
    pPixmapLayout->addWidget(pPixmapLabel, 0);
}

void Screen::createScreenshot()
{
    logDebug() << "Is about to create screenshot";
    const QString path = paths::screenshotDirectory();
    const QImage image = qtcompat::grabWidget(this).toImage();
    QDir directory;
    logDebug() << "Default path=" << directory.path();
    directory.setPath(path);
    if (!directory.exists()) {
        logDebug() << "Screen::createScreenshot(): ERROR !!! Path=" << path << " does not exist!";
        return;
    }
    const QString time = QDateTime::currentDateTime().toString(QString::fromLatin1("_yyyyMMdd_hhmmss"));
    const QString fileName = path + QString::fromLatin1("/screen") + time + QString::fromLatin1(".bmp");
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        logDebug() << "Screen::createScreenshot: Open for write only failed.";
        return;
    }
    image.save(&file, nullptr, SCREENSHOT_QUALITY); // the format follows from the file's suffix
    file.close();
    logDebug() << "File " << fileName << " saved.";
}
