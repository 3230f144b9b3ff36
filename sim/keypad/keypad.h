// The keypad's driver on a desk, inside the display: takes the names of keys from a Unix socket, one a line,
// and delivers each as press and release to the window that has the focus, or to the visible one if none has;
// a splash screen counts as none. What it answers, a line for each line, in their order:
//   done NAME     the display has handled the key
//   hidden NAME   there is no window that could take it
//   unknown       the line is not the name of a key
// A line that is too long counts as one that is unknown. When the other side goes away, the display runs on
// without a keypad.
//
// GUI thread only. Nothing blocks.
#ifndef SIM_KEYPAD_KEYPAD_H
#define SIM_KEYPAD_KEYPAD_H

#include <QByteArray>
#include <QObject>
#include <QtGui/QGenericPlugin>

class QSocketNotifier;

class Keypad : public QObject {
    Q_OBJECT

public:
    // Connects to the socket of that path.
    explicit Keypad(const QString& socketPath);
    ~Keypad() override;

private slots:
    void takeKeys();

private:
    void disconnectPath();
    void handleLines();
    void answer(const QByteArray& line);

    int m_socket;
    QSocketNotifier* m_notifier;
    QByteArray m_received; // what is not handled yet
    bool m_tooLong;        // the line that comes is unknown whatever follows
    bool m_handling;       // a key may run an event loop of its own
};

class KeypadPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "keypad.json")

public:
    QObject* create(const QString& name, const QString& socketPath) override;
};

#endif
