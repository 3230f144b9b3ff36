// The frame of the status model: the one object, its timers, the identity of the bus thread, and the
// small helpers of all its sources. Threads are told in the header.
#include "model/statusupdater.h"

#include "common/checked.h"
#include "common/log.h"
#include "common/qtcompat.h"
#include "model/duration.h"
#include "runtime/vx_posix_reset.h"

#include <QApplication>
#include <QThread>
#include <QTimer>

#include <time.h>

namespace {

const char SOURCE[] = "statusupdater";
const int UPDATE_CONNECTION_MS = 1000;

} // namespace

StatusUpdater* StatusUpdater::pStatusUpdater = nullptr;

StatusUpdater* StatusUpdater::getStatusUpdater()
{
    if (!pStatusUpdater)
        pStatusUpdater = checkedNew<StatusUpdater>(SOURCE, __LINE__);
    return pStatusUpdater;
}

void StatusUpdater::destroyForTest()
{
    delete pStatusUpdater;
    pStatusUpdater = nullptr;
}

StatusUpdater::StatusUpdater() : QObject(nullptr), hidePointNowText(false), externalSupplyPresent(false)
{
    logDebug() << "StatusUpdater::StatusUpdater(): Start of constructor.";
    StatusLock lock(statusMutex, __func__);
    for (std::atomic<int>& state : interfaceStates)
        state = INTERFACE_STATE_UNKNOWN;
    battExt.isInternal = false;
    statusLabelFont = QApplication::font();
    qRegisterMetaType<fmmi_evt_t>("fmmi_evt_t");
    qRegisterMetaType<INTERFACE_STATE_ENUM>("INTERFACE_STATE_ENUM");
    qRegisterMetaType<INTERFACE_NAME_ENUM>("INTERFACE_NAME_ENUM");
    qRegisterMetaType<LANG_ENUM>("LANG_ENUM");
    qRegisterMetaType<BUNDLE_STATUS>("BUNDLE_STATUS");
    createTimers();
    lock.unlock();
    updateTranslatedEventTexts();
    logDebug() << "StatusUpdater::StatusUpdater(): End of constructor.";
}

StatusUpdater::~StatusUpdater()
{
    delete pUpdateConnectionTimer;
    delete pPinTimer;
    delete pHidePointNowTextTimer;
    delete pIgnoreGlobalKeyPressTimer;
}

void StatusUpdater::createTimers()
{
    pUpdateConnectionTimer = checkedNew<QTimer>(SOURCE, __LINE__);
    connect(pUpdateConnectionTimer, SIGNAL(timeout()), this, SLOT(handleUpdateTimeout()));
    // The bus thread can't touch the timer itself; these two bring its wish to the timer's thread.
    connect(this, SIGNAL(startUpdateConnectionTimerSignal()), this, SLOT(handleStartUpdateConnectionTimer()));
    connect(this, SIGNAL(stopUpdateConnectionTimerSignal()), this, SLOT(handleStopUpdateConnectionTimer()));

    pPinTimer = checkedNew<QTimer>(SOURCE, __LINE__);
    // The popup of the wait must stay for as long as the check takes. An earlier answer would leave it in the
    // queue behind the answer, to come up once more.
    qtcompat::makePrecise(pPinTimer);
    connect(pPinTimer, SIGNAL(timeout()), this, SLOT(handlePinTimeout()), Qt::UniqueConnection);
    pHidePointNowTextTimer = checkedNew<QTimer>(SOURCE, __LINE__);
    connect(pHidePointNowTextTimer, SIGNAL(timeout()), this, SLOT(stopHidePointNowText()),
            Qt::UniqueConnection);
    pIgnoreGlobalKeyPressTimer = checkedNew<QTimer>(SOURCE, __LINE__);
    connect(pIgnoreGlobalKeyPressTimer, SIGNAL(timeout()), this, SLOT(stopIgnoreGlobalKeyPress()),
            Qt::UniqueConnection);
}

void StatusUpdater::logEmission(const char* function, const char* name)
{
    logDebug() << "StatusUpdater::" << function << "(): About to emit signal " << name << "()";
}

void StatusUpdater::setThreadIdCBus(void* id)
{
    store(threadIdCBus, id, __func__);
}

void* StatusUpdater::getThreadIdCBus() const
{
    return read(threadIdCBus, __func__);
}

void StatusUpdater::setHasConnectedToCBus(bool value)
{
    store(hasConnectedToCBus, value, __func__);
}

bool StatusUpdater::getHasConnectedToCBus() const
{
    return read(hasConnectedToCBus, __func__);
}

bool StatusUpdater::validateThisIsCBusThread(const QString& debugStr) const
{
    const void* const busThread = getThreadIdCBus();
    const void* const thisThread = QThread::currentThreadId();
    if (busThread == thisThread)
        return true;
    logDebug() << "StatusUpdater::validateThisIsCBusThread(): ERROR!!! Not legal to run in this thread. "
                  "currentThreadId="
               << thisThread << ", threadIdCBus=" << busThread << ", debugStr=" << debugStr
               << ". Now exiting lumenpanel!";
    vx_panic("ERROR!!! StatusUpdater::validateThisIsCBusThread() failed. Exiting lumenpanel.");
}

void StatusUpdater::sleepMs(int ms) const
{
    timespec duration;
    duration.tv_sec = ms / 1000;
    duration.tv_nsec = (ms % 1000) * 1000000L;
    logDebug() << "StatusUpdater::sleepMs(): ms=" << ms << ", tv_sec=" << static_cast<long>(duration.tv_sec)
               << ", tv_nsec=" << static_cast<long>(duration.tv_nsec);
    nanosleep(&duration, nullptr);
}

void StatusUpdater::takeScreenshot()
{
    announce(__func__, "signalTakeScreenshot", &StatusUpdater::signalTakeScreenshot);
}

void StatusUpdater::setStatusLabelFont(const QFont& font)
{
    if (font == statusLabelFont)
        return;
    statusLabelFont = font;
    lineWidths = LineWidths();
}

void StatusUpdater::setMainWindowState(MAIN_WINDOW_STATE state)
{
    store(mainWindowState, state, __func__);
}

MAIN_WINDOW_STATE StatusUpdater::getMainWindowState() const
{
    return read(mainWindowState, __func__);
}

QString StatusUpdater::debugTimeStr(const QDateTime& timeStamp) const
{
    return hoursMinutesSeconds(timeStamp.secsTo(QDateTime::currentDateTime()));
}

bool StatusUpdater::unicodeNeeded(const QString& text) const
{
    return QString::fromLatin1(text.toLatin1().constData()) != text;
}

void StatusUpdater::handleStartUpdateConnectionTimer()
{
    if (pUpdateConnectionTimer->isActive())
        return;
    pUpdateConnectionTimer->start(UPDATE_CONNECTION_MS);
}

void StatusUpdater::handleStopUpdateConnectionTimer()
{
    pUpdateConnectionTimer->stop();
}

void StatusUpdater::handleUpdateTimeout()
{
    emit updateElapsedTimeAndBackgroundDataSignal();
}
