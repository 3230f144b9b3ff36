// Deaths of the test's own process: a case that must end it runs in a second process of the same program.
//
// Unlike a fork, the second process starts from the beginning, so a case may use threads, a QApplication
// and the bus. What it logs comes back as text: syslog as "<PRIORITY> IDENT: TEXT", Qt's messages as they
// are.
//
//     static void recursive() { ... }
//     static const DeathCase CASES[] = {{"recursive", recursive}};
//     ...
//     const ProcessDeath death = deathOfCase("recursive");
//     QVERIFY(death.byPanic("ERROR !!! Mutex lock failed. Exiting lumenpanel."));
//     ...
//     DEATH_TEST_MAIN(LockTest, CASES)
#ifndef LUMENPANEL_TESTS_SUPPORT_DEATHS_H
#define LUMENPANEL_TESTS_SUPPORT_DEATHS_H

#include "sim/syslogtap/syslogtap.h"

#include "support/patience.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <QtTest>

#include <cstring>

struct DeathCase {
    const char* name;
    void (*run)();
};

struct ProcessDeath {
    bool crashed = false; // ended by a signal, as abort() does
    int status = -1;      // exit status otherwise; SURVIVED if the case came back
    qint64 milliseconds = 0;
    QString output; // standard error

    static const int SURVIVED = 111;

    // Ended by abort() after a line of priority 1 with this text.
    bool byPanic(const QString& text) const
    {
        for (const QString& line : output.split('\n'))
            if (crashed && line.startsWith("<1> ") && line.endsWith(": " + text))
                return true;
        return false;
    }
    bool said(const QString& text) const { return output.contains(text); }
};

inline ProcessDeath deathOfCase(const char* name, int timeoutMs = PATIENCE_MS)
{
    ProcessDeath death;
    QElapsedTimer clock;
    clock.start();
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), QStringList() << "--death" << name);
    if (!process.waitForFinished(timeoutMs)) {
        // A start that failed half-way may have left a number that is no process.
        if (process.processId() > 0) {
            process.kill();
            process.waitForFinished();
        }
        death.output = "still running after the time allowed";
        return death;
    }
    death.milliseconds = clock.elapsed();
    death.crashed = process.exitStatus() == QProcess::CrashExit;
    death.status = process.exitCode();
    death.output = QString::fromUtf8(process.readAllStandardError());
    return death;
}

// Runs the case that the command line asks for; -1 if it asks for none.
template <size_t N> int runDeathCase(int argc, char** argv, const DeathCase (&cases)[N])
{
    if (argc != 3 || std::strcmp(argv[1], "--death") != 0)
        return -1;
    for (const DeathCase& deathCase : cases) {
        if (std::strcmp(deathCase.name, argv[2]) == 0) {
            syslogtap_echo(1);
            deathCase.run();
            return ProcessDeath::SURVIVED;
        }
    }
    return 112;
}

#define DEATH_TEST_MAIN(TestObject, cases)                                                                   \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        QApplication application(argc, argv);                                                                \
        const int status = runDeathCase(argc, argv, cases);                                                  \
        if (status != -1)                                                                                    \
            return status;                                                                                   \
        TestObject test;                                                                                     \
        return QTest::qExec(&test, argc, argv);                                                              \
    }

#endif
