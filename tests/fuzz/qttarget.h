// What the fuzz targets of the model and the screens share: an application without a display, a model that
// takes the target's thread for the bus thread, and a log that says nothing.
#ifndef TESTS_FUZZ_QTTARGET_H
#define TESTS_FUZZ_QTTARGET_H

#include "fuzz/fuzz.h"

#include "common/log.h"
#include "model/statusupdater.h"
#include "support/modelaccess.h"

#include <QApplication>
#include <QThread>

namespace fuzz {

// Debug lines are put together, so that their making is tested too, and dropped.
inline void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

// What must be set before the first object of Qt.
inline void prepareQt()
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("FONTCONFIG_FILE", PROJECT_SOURCE_DIR "/res/fonts/fonts.conf", 0);
    silence();
    qInstallMessageHandler(dropMessage);
    setDebugLogWanted(true);
}

inline void startQt()
{
    prepareQt();
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    new QApplication(count, arguments);
}

inline StatusUpdater& freshModel()
{
    StatusUpdater::destroyForTest();
    StatusUpdater* const model = StatusUpdater::getStatusUpdater();
    model->setThreadIdCBus(QThread::currentThreadId());
    model->setHasConnectedToCBus(true);
    return *model;
}

} // namespace fuzz

#endif
