// The main window: its screens, the rules of screen changes, and the language. How the model drives the
// screens stands in window_flow.cpp, what becomes a popup in window_events.cpp. GUI thread only.
#include "app/window.h"

#include "app/guiapp.h"
#include "common/checked.h"
#include "common/log.h"
#include "model/event_ids.h"
#include "model/statusupdater.h"
#include "runtime/vx_log.h"
#include "screens/screenaction.h"
#include "screens/screenantenna.h"
#include "screens/screenbattery.h"
#include "screens/screenenterpin.h"
#include "screens/screenmenu.h"
#include "screens/screenpointing.h"
#include "screens/screenpopup.h"
#include "screens/screenstatus.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QPixmap>
#include <QSplashScreen>
#include <QTranslator>

#include <syslog.h>

namespace {

const char SOURCE[] = "window";

// Translation files by language; any other language has the English one.
const struct {
    LANG_ENUM language;
    const char* fileName;
} translationFiles[] = {
    {LANG_FRENCH, "i18n_fr"},  {LANG_GERMAN, "i18n_de"},  {LANG_RUSSIAN, "i18n_ru"},
    {LANG_SPANISH, "i18n_es"}, {LANG_CHINESE, "i18n_zh"}, {LANG_JAPANESE, "i18n_ja"},
};
const char DEFAULT_TRANSLATION_FILE[] = "i18n_en";

// The order in which the screens go, the popup screen in the middle.
const Screen::SCREEN_ID_ENUM destructionOrder[] = {
    Screen::SCREEN_STATUS, Screen::SCREEN_BATTERY, Screen::SCREEN_ANTENNA,  Screen::SCREEN_ACTION,
    Screen::SCREEN_POPUP,  Screen::SCREEN_MENU,    Screen::SCREEN_POINTING, Screen::SCREEN_ENTER_PIN,
};

// Screens that never stand in the history, and what the log says when one of them is left.
const struct {
    Screen::SCREEN_ID_ENUM id;
    const char* reason;
} neverInHistory[] = {
    {Screen::SCREEN_POPUP, "Window::showScreen(): Never add SCREEN_POPUP to history, as SCREEN_POPUP shall "
                           "always be on top of history screens."},
    {Screen::SCREEN_STATUS, "Window::showScreen(): Never add SCREEN_STATUS to history, as SCREEN_STATUS is "
                            "default screen when history is empty and when pointing mode is OFF."},
    {Screen::SCREEN_POINTING, "Window::showScreen(): Never add SCREEN_POINTING to history. SCREEN_POINTING "
                              "is automatically shown when "
                              "SCREEN_POPUP is closed when pointing mode is ON."},
};

// Null for a screen that may stand in the history.
const char* whyNeverInHistory(Screen::SCREEN_ID_ENUM screenId)
{
    for (const auto& screen : neverInHistory) {
        if (screen.id == screenId)
            return screen.reason;
    }
    return nullptr;
}

const char* boolText(bool value)
{
    return value ? "true" : "false";
}

} // namespace

// One screen of the panel. create makes it and keeps it in its member; forget clears that member. prepare
// runs each time before the screen is shown and may refuse it; null if there is nothing to prepare.
struct Window::ScreenRow {
    Screen::SCREEN_ID_ENUM id;
    const char* name;
    Screen* (*create)(Window*);
    void (*forget)(Window*);
    bool (Window::*prepare)();
};

template <typename ScreenClass, ScreenClass* Window::*Member> struct Window::ScreenMember {
    static Screen* create(Window* window)
    {
        return window->*Member = checkedNew<ScreenClass>(SOURCE, __LINE__, window);
    }
    static void forget(Window* window) { window->*Member = nullptr; }
};

#define SCREEN_CLASS(ScreenClass)                                                                            \
    ScreenMember<ScreenClass, &Window::p##ScreenClass>::create,                                              \
        ScreenMember<ScreenClass, &Window::p##ScreenClass>::forget

// In the order of their creation.
const Window::ScreenRow Window::screenRows[NUMBER_OF_SCREENS] = {
    {Screen::SCREEN_POPUP, "SCREEN_POPUP", SCREEN_CLASS(ScreenPopup), nullptr},
    {Screen::SCREEN_STATUS, "SCREEN_STATUS", SCREEN_CLASS(ScreenStatus), &Window::prepareStatusScreen},
    {Screen::SCREEN_BATTERY, "SCREEN_BATTERY", SCREEN_CLASS(ScreenBattery), nullptr},
    {Screen::SCREEN_ANTENNA, "SCREEN_ANTENNA", SCREEN_CLASS(ScreenAntenna), nullptr},
    {Screen::SCREEN_ACTION, "SCREEN_ACTION", SCREEN_CLASS(ScreenAction), &Window::prepareActionScreen},
    {Screen::SCREEN_MENU, "SCREEN_MENU", SCREEN_CLASS(ScreenMenu), nullptr},
    {Screen::SCREEN_POINTING, "SCREEN_POINTING", SCREEN_CLASS(ScreenPointing), nullptr},
    {Screen::SCREEN_ENTER_PIN, "SCREEN_ENTER_PIN", SCREEN_CLASS(ScreenEnterPin),
     &Window::prepareEnterPinScreen},
};

// Row of an id, -1 if it is none of the table's.
int Window::rowOfScreen(Screen::SCREEN_ID_ENUM screenId)
{
    for (int row = 0; row < NUMBER_OF_SCREENS; ++row) {
        if (screenRows[row].id == screenId)
            return row;
    }
    return -1;
}

// The order is that of the start: the model's signals are connected when the screens exist, and what the
// model already holds is taken over afterwards, so that nothing falls between.
Window::Window(QWidget* parent)
    : QWidget(parent, Qt::WindowFlags()), pStatusUpdater(nullptr), pCurrentScreen(nullptr),
      pScreenPopup(nullptr), pScreenStatus(nullptr), pScreenBattery(nullptr), pScreenAntenna(nullptr),
      pScreenAction(nullptr), pScreenMenu(nullptr), pScreenPointing(nullptr), pScreenEnterPin(nullptr),
      pGridLayout(nullptr), pTranslator(nullptr)
{
    logDebug() << "Window::Window(): Start of constructor.";
    for (Screen*& screen : m_screens)
        screen = nullptr;
    pStatusUpdater = StatusUpdater::getStatusUpdater();
    GuiApp::setMainWindowPointer(this);
    tellVisibility();
    connect(pStatusUpdater, SIGNAL(guiAllowedToBeShown()), this, SLOT(show()));
    qRegisterMetaType<STATE_EVENT>("STATE_EVENT");
    connect(pStatusUpdater, SIGNAL(showPopup(fmmi_evt_t)), this, SLOT(handleShowPopUpEvent(fmmi_evt_t)));
    connect(pStatusUpdater, SIGNAL(signalRemovePopup(uint)), this, SLOT(handleRemovePopup(uint)));
    // A text only: nothing is detected, and nothing depends on it.
    logDebug() << "Platform detected to be q520 (or at least it includes a Radio Module).";
    setUpGeometry();
    createScreens();
    showScreen(pCurrentScreen->getId(), false);
    connectModel();
    alignWithModel();
    logDebug() << "Window::Window(): End of constructor.";
}

Window::~Window()
{
    vx_slog(LOG_DEBUG, "Window::~Window(): Destructor");
    GuiApp::setMainWindowPointer(nullptr); // nobody may find a window that is going
    pCurrentScreen = nullptr;              // one of those below
    for (Screen::SCREEN_ID_ENUM screenId : destructionOrder) {
        const int row = rowOfScreen(screenId);
        Screen* const screen = m_screens[row];
        m_screens[row] = nullptr;
        screenRows[row].forget(this);
        delete screen;
    }
    delete pGridLayout;
    pGridLayout = nullptr;
    delete pTranslator;
    pTranslator = nullptr;
    pStatusUpdater->setMainWindowState(MAIN_WINDOW_NONE);
}

void Window::setUpGeometry()
{
    setGeometry(0, 0, Screen::PANEL_WIDTH, Screen::PANEL_HEIGHT);
    setFixedSize(Screen::PANEL_WIDTH, Screen::PANEL_HEIGHT);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
    const Qt::WindowFlags unwanted =
        Qt::WindowTitleHint | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint;
    setWindowFlags((windowFlags() & ~unwanted) | Qt::FramelessWindowHint);
    pGridLayout = checkedNew<QGridLayout>(SOURCE, __LINE__, this);
    pGridLayout->setAlignment(Qt::AlignCenter);
    pGridLayout->setContentsMargins(0, 0, 0, 0);
}

void Window::createScreens()
{
    QList<Screen*> screens;
    for (int row = 0; row < NUMBER_OF_SCREENS; ++row) {
        m_screens[row] = screenRows[row].create(this);
        screens.append(m_screens[row]);
        // The later screens find a current screen and a popup screen that works.
        if (screenRows[row].id == Screen::SCREEN_STATUS) {
            if (!pCurrentScreen)
                pCurrentScreen = pScreenStatus;
            pScreenPopup->init();
        }
    }
    for (Screen* screen : screens)
        pGridLayout->QLayout::addWidget(screen);
    for (Screen* screen : screens)
        screen->setVisible(false);
}

void Window::connectModel()
{
    static const struct {
        const char* signal;
        const char* slot;
    } connections[] = {
        {SIGNAL(stateEventReceived(STATE_EVENT)), SLOT(handleStateEvent(STATE_EVENT))},
        {SIGNAL(signalPinAccepted()), SLOT(handleSignalPinAccepted())},
        {SIGNAL(bganConnectionErrorChanged(int)), SLOT(handleBganConnectionErrorChanged(int))},
        {SIGNAL(signalWanActiveChanged()), SLOT(handleModemChanged())},
        {SIGNAL(signalModemPresentChanged()), SLOT(handleModemChanged())},
        {SIGNAL(signalModemActivatedChanged()), SLOT(handleModemChanged())},
        {SIGNAL(signalWanUserSelectionChanged()), SLOT(handleModemChanged())},
        {SIGNAL(signalModemOrBganAtStartupChanged()), SLOT(handleModemChanged())},
        {SIGNAL(signalExtendedSystemStatusChanged()), SLOT(handleSignalExtendedSystemStatusChanged())},
        {SIGNAL(signalTakeScreenshot()), SLOT(handleSignalTakeScreenshot())},
        {SIGNAL(requestLoadLanguage(LANG_ENUM)), SLOT(handleRequestLoadLanguage(LANG_ENUM))},
    };
    logDebug() << "Window::Window(): About to connect stateEventReceived with handleStateEvent";
    for (const auto& connection : connections)
        connect(pStatusUpdater, connection.signal, this, connection.slot, Qt::UniqueConnection);
    connect(pStatusUpdater, SIGNAL(signalSwUploadActiveChanged(int)), this,
            SLOT(handleSignalSwUploadActiveChanged(int)));
}

// Takes over what the model held before it was connected.
void Window::alignWithModel()
{
    handleRequestLoadLanguage(pStatusUpdater->getLanguage());
    handleSignalExtendedSystemStatusChanged();
    handleSignalSwUploadActiveChanged(pStatusUpdater->getSwUploadActive());
    if (pStatusUpdater->getPointingMode() == POINTING_STATUS_POINTING) {
        logDebug() << "Window::Window(): getPointingMode()==POINTING_STATUS_POINTING";
        handleStateEvent(STATE_EVENT_POINTING);
    } else {
        logDebug() << "Window::Window(): getPointingMode() != POINTING_STATUS_POINTING";
        handleStateEvent(STATE_EVENT_SIM_STATUS_CHANGED);
    }
    connect(pStatusUpdater, SIGNAL(cipheringChanged(int)), this, SLOT(handleCipheringChanged(int)),
            Qt::UniqueConnection);
    const int ciphering = pStatusUpdater->getCiphering();
    if (ciphering != 3 && ciphering != -2) // neither on nor not yet read
        handleCipheringChanged(ciphering);
    pScreenStatus->updateStatusText();
    pStatusUpdater->showAllSystemEvents();
    handleModemChanged();
    logDebug() << "Window::Window(): Now test if main window is allowed to be shown.";
    handleSignalExtendedSystemStatusChanged();
}

void Window::show()
{
    if (isVisible()) {
        logDebug() << "Window::show(): ERROR!!! Window is already visible. This function is not supposed to "
                      "be run twice!";
        setVisible(true);
        return;
    }
    logDebug() << "Window::show(): About to show black splash screen and then show the main window";
    // The backlight comes on last, so that nothing but the finished picture on black is ever seen.
    QPixmap black(Screen::PANEL_WIDTH, Screen::PANEL_HEIGHT);
    black.fill(Qt::black);
    QSplashScreen splash(black);
    splash.setVisible(true);
    QCoreApplication::processEvents();
    setVisible(true);
    splash.finish(this);
    pStatusUpdater->setBrightnessAllowed(true);
    pStatusUpdater->setBrightnessInDriver();
}

void Window::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    tellVisibility();
}

void Window::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    tellVisibility();
}

// The model asks for the window's state on the bus thread, where no widget may be asked.
void Window::tellVisibility()
{
    pStatusUpdater->setMainWindowState(isVisible() ? MAIN_WINDOW_VISIBLE : MAIN_WINDOW_HIDDEN);
}

void Window::showScreen(Screen::SCREEN_ID_ENUM screenId, bool addToHistory)
{
    logDebug() << "Window::ShowScreen(screenId=" << screenId << " (" << getScreenNameById(screenId)
               << "), addToHistory=" << boolText(addToHistory)
               << ", pCurrentScreen->getId()=" << (pCurrentScreen ? idAndName(getCurrentScreenId()) : "NULL");
    debugHistory(QString::fromLatin1("Window::showScreen(): Start"));
    if (pCurrentScreen && pCurrentScreen->getId() == screenId) {
        logDebug() << "ShowScreen screenId=" << idAndName(screenId)
                   << " is already shown. But now shows it again to be safe.";
        pCurrentScreen->setVisible(true);
        pCurrentScreen->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (addToHistory && pCurrentScreen)
        updateHistory(screenId);
    if (isAllowedToShow(screenId))
        showAllowedScreen(screenId);
    debugHistory(QString::fromLatin1("Window::showScreen(): End"));
}

// The test for a duplicate looks at the screen that comes, while the one that goes is appended.
void Window::updateHistory(Screen::SCREEN_ID_ENUM screenId)
{
    if (history.contains(screenId)) {
        logDebug() << "Window::showScreen(): WARNING: screen to show (screenId=" << screenId
                   << ") is already in history, and will therefore not be added again!!!";
        return;
    }
    const char* const reason = whyNeverInHistory(pCurrentScreen->getId());
    if (reason)
        logDebug() << reason;
    else
        history.append(pCurrentScreen->getId());
}

// While popups stand, the screen waits in the history. Pointing alone may push popups aside, if they only
// inform.
bool Window::isAllowedToShow(Screen::SCREEN_ID_ENUM screenId)
{
    if (!pCurrentScreen || pCurrentScreen != pScreenPopup || pScreenPopup->getNumberOfPopupsToShow() < 1)
        return true;
    if (!history.contains(screenId)) {
        if (whyNeverInHistory(screenId))
            logDebug() << "Window::ShowScreen(screenId, addToHistory): Do not append screenId=" << screenId
                       << " to history, as " << getScreenNameById(screenId)
                       << " shall never be added to history.";
        else
            history.append(screenId);
    }
    return screenId == Screen::SCREEN_POINTING && pScreenPopup->getNumberOfPopupWarningsErrorsFatals() == 0;
}

void Window::showAllowedScreen(Screen::SCREEN_ID_ENUM screenId)
{
    const int row = rowOfScreen(screenId);
    if (row < 0) {
        logWarning() << "ERROR: screenId=" << screenId << " not defined!!!!";
        return;
    }
    if (!m_screens[row] || !screenRows[row].prepare || (this->*screenRows[row].prepare)())
        showScreen(m_screens[row]);
}

bool Window::prepareStatusScreen()
{
    pScreenStatus->updateStatusText();
    return true;
}

bool Window::prepareActionScreen()
{
    if (pStatusUpdater->getNumberOfDefinedBundles() < 1) {
        addPopup(EV_AP_GUI_NO_BUNDLES_DEFINED, EVENT_INFO, POPUP_CLOSE_OK);
        return false;
    }
    if (pStatusUpdater->predefinedBundleActive()) {
        pScreenAction->collapseAllBundles();
        pScreenAction->setFocusOnFirstActiveBundle();
    }
    return true;
}

bool Window::prepareEnterPinScreen()
{
    pScreenEnterPin->resetScreen();
    return true;
}

// The new screen comes before the old one goes, and the focus brings it the keys.
void Window::showScreen(Screen* pScreen)
{
    Screen* const oldScreen = pCurrentScreen;
    pCurrentScreen = pScreen;
    if (!pCurrentScreen) {
        logDebug() << "Window::ShowScreen(Screen *pScreen): ERROR!! pScreen (=pCurrentScreen) is not allowed "
                      "to be NULL!!!";
        return;
    }
    if (oldScreen != pCurrentScreen) {
        pCurrentScreen->setVisible(true);
        if (oldScreen)
            oldScreen->setVisible(false);
    }
    pCurrentScreen->setFocus(Qt::OtherFocusReason);
}

void Window::showPreviousScreen()
{
    panelAssert(pCurrentScreen, SOURCE, __LINE__);
    // Going on to the next index after a removal skips the entry that has moved down: of two equal
    // neighbours one stays. That is as it must be.
    for (int i = 0; i < history.size(); ++i) {
        if (history.at(i) == pCurrentScreen->getId()) {
            logDebug() << "Window::showPreviousScreen(): removing current screen "
                       << getScreenNameById(pCurrentScreen->getId()) << " from history.";
            history.removeAt(i);
        }
    }
    if (pScreenPopup->screenSaverInPopupList()) {
        logDebug() << "Window::showPreviousScreen(): do nothing, as screenSaver is active";
    } else if (pStatusUpdater->getPointingMode() == POINTING_STATUS_POINTING) {
        showScreen(Screen::SCREEN_POINTING, false);
    } else if (pScreenPopup->getNumberOfPopupsToShow() > 0) {
        pScreenPopup->showNextEvent();
    } else if (history.isEmpty()) {
        logDebug() << "Window::showPreviousScreen(): History empty. Now showing default page SCREEN_STATUS.";
        showScreen(Screen::SCREEN_STATUS, false);
    } else {
        showScreen(history.takeLast(), false);
    }
}

void Window::hideAndRemoveScreenFromHistory(Screen::SCREEN_ID_ENUM screenId)
{
    debugHistory(QString::fromLatin1("Window::hideAndRemoveScreenFromHistory(): Start"));
    const int index = history.indexOf(screenId);
    if (index >= 0) {
        Screen* const pTmpScreen = getScreenById(screenId);
        if (pTmpScreen)
            pTmpScreen->setVisible(false);
        else
            logDebug() << "Window::hideAndRemoveScreenFromHistory(screenId=" << screenId
                       << "): Warning: pTmpScreen == NULL";
        history.removeAt(index);
    }
    panelAssert(pCurrentScreen, SOURCE, __LINE__);
    if (pCurrentScreen->getId() == screenId) {
        logDebug() << "Window::hideAndRemoveScreenFromHistory(): pCurrentScreen was the screen to remove. "
                      "Therefore show previous screen.";
        showPreviousScreen();
    }
    debugHistory(QString::fromLatin1("Window::hideAndRemoveScreenFromHistory(): End"));
}

Screen* Window::getScreenById(Screen::SCREEN_ID_ENUM screenId)
{
    const int row = rowOfScreen(screenId);
    if (row >= 0)
        return m_screens[row];
    logDebug() << "Window::getScreenById(): ERROR! Unknown screenId=" << screenId;
    return nullptr;
}

QString Window::getScreenNameById(Screen::SCREEN_ID_ENUM screenId) const
{
    const int row = rowOfScreen(screenId);
    return QString::fromLatin1(row >= 0 ? screenRows[row].name : "SCREEN_UNDEFINED");
}

QString Window::idAndName(Screen::SCREEN_ID_ENUM screenId) const
{
    return QString::number(screenId) + QString::fromLatin1(" (") + getScreenNameById(screenId) +
           QChar::fromLatin1(')');
}

Screen::SCREEN_ID_ENUM Window::getCurrentScreenId() const
{
    return pCurrentScreen->getId();
}

bool Window::isSetToVisibleScreen(Screen* screen) const
{
    return screen == pCurrentScreen;
}

void Window::debugHistory(const QString& title) const
{
    if (!debugLogWanted())
        return;
    if (history.isEmpty()) {
        logDebug() << title << ": The history is empty";
        return;
    }
    logDebug() << title << ": The history looks like this:";
    for (int i = 0; i < history.size(); ++i)
        logDebug() << "history[" << i << "]=" << idAndName(history.at(i));
}

void Window::setStatusText(const QString& text)
{
    if (!pScreenStatus) {
        logDebug() << "Window::setStatusText(): pScreenStatus=NULL is not ready yet.";
        return;
    }
    pScreenStatus->setStatusText(text);
}

void Window::restartScreenSaverTimer()
{
    pScreenPopup->restartScreenSaverTimer();
}

void Window::handleRequestLoadLanguage(LANG_ENUM newLanguage)
{
    logDebug() << "Window::handleRequestLoadLanguage(): Start of function.";
    loadLanguage(newLanguage);
}

void Window::loadLanguage(LANG_ENUM lang)
{
    if (!pTranslator)
        pTranslator = checkedNew<QTranslator>(SOURCE, __LINE__);
    else
        QCoreApplication::removeTranslator(pTranslator);
    GuiApp* const application = static_cast<GuiApp*>(QCoreApplication::instance());
    application->useFont(lang); // the font changes before the texts
    const char* fileName = DEFAULT_TRANSLATION_FILE;
    for (const auto& file : translationFiles) {
        if (file.language == lang)
            fileName = file.fileName;
    }
    if (!pTranslator->load(QString::fromLatin1(fileName), GuiApp::getResourcePath())) {
        logDebug() << "Window::loadLanguage(): ERROR!!! Can not load translation file " << fileName
                   << " for path=" << GuiApp::getResourcePath() << " !!!";
        return;
    }
    QCoreApplication::installTranslator(pTranslator);
    logDebug() << "Window::loadLanguage(): translation file " << fileName << " installed.";
    pStatusUpdater->updateTranslatedEventTexts();
    pStatusUpdater->updateTranslatedStatusTexts();
}
