// What differs between Qt 4.8, 5.15 and 6, under one name each. The only file of the front end that
// asks for a Qt version. All functions belong to the GUI thread but for sendMessage and
// threadIdNumber, which any thread may call.
#ifndef LUMENPANEL_COMMON_QTCOMPAT_H
#define LUMENPANEL_COMMON_QTCOMPAT_H

#include <QCoreApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QPixmap>
#include <QString>
#include <QThread>
#include <QTimer>
#include <QWidget>
#include <QtGlobal>

#if QT_VERSION >= QT_VERSION_CHECK(5, 0, 0)
#include <QMessageLogContext>
#endif

namespace qtcompat {

// Receives every diagnostic text of Qt and of the program, on the thread that it arose on.
typedef void (*MessageHandler)(QtMsgType type, const QString& text);

namespace detail {

inline MessageHandler& installedHandler()
{
    static MessageHandler handler = nullptr;
    return handler;
}

#if QT_VERSION >= QT_VERSION_CHECK(5, 0, 0)
inline void forwardMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    installedHandler()(type, text);
}
#else
inline void forwardMessage(QtMsgType type, const char* text)
{
    installedHandler()(type, QString::fromLocal8Bit(text));
}
#endif

} // namespace detail

// Installs the process's handler; null brings Qt's own back.
inline void installMessageHandler(MessageHandler handler)
{
    if (handler)
        detail::installedHandler() = handler;
#if QT_VERSION >= QT_VERSION_CHECK(5, 0, 0)
    qInstallMessageHandler(handler ? detail::forwardMessage : nullptr);
#else
    qInstallMsgHandler(handler ? detail::forwardMessage : nullptr);
#endif
}

// Hands a text to Qt's message path as it stands: no format, no quotes, and no filter rules of the
// machine, which could take out debug lines that somebody asked for on the command line.
inline void sendMessage(QtMsgType type, const QString& text)
{
#if QT_VERSION >= QT_VERSION_CHECK(5, 0, 0)
    qt_message_output(type, QMessageLogContext(nullptr, 0, nullptr, "default"), text);
#else
    qt_message_output(type, text.toLocal8Bit().constData());
#endif
}

// To be called after QApplication::setFont: up to Qt 5 the widgets have the new face by then, Qt 6 only posts
// the event that brings it to them.
inline void deliverFontChange()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QCoreApplication::sendPostedEvents(nullptr, QEvent::ApplicationFontChange);
#endif
}

// Width of a text in pixels, from its origin to where the next character would stand.
inline int textWidth(const QFontMetrics& metrics, const QString& text)
{
#if QT_VERSION >= QT_VERSION_CHECK(5, 11, 0)
    return metrics.horizontalAdvance(text);
#else
    return metrics.width(text);
#endif
}

// Picture of a widget with its children, its whole rectangle.
inline QPixmap grabWidget(QWidget* widget)
{
#if QT_VERSION >= QT_VERSION_CHECK(5, 0, 0)
    return widget->grab();
#else
    return QPixmap::grabWidget(widget);
#endif
}

// The current pixmap of a label; null if it has none. Label is QLabel; a template so that this header
// need not include it.
template <typename Label> QPixmap labelPixmap(const Label* label)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return label->pixmap();
#elif QT_VERSION >= QT_VERSION_CHECK(5, 15, 0)
    return label->pixmap(Qt::ReturnByValue);
#else
    return label->pixmap() ? *label->pixmap() : QPixmap();
#endif
}

// The text with &, <, > and the double quotation mark escaped for rich text.
inline QString escapedHtml(const QString& text)
{
#if QT_VERSION >= QT_VERSION_CHECK(5, 0, 0)
    return text.toHtmlEscaped();
#else
    return Qt::escape(text);
#endif
}

// From Qt 5 on a timer may come early by a twentieth of its interval, unless it is asked not to. For timers
// whose order to another clock matters.
inline void makePrecise(QTimer* timer)
{
#if QT_VERSION >= QT_VERSION_CHECK(5, 0, 0)
    timer->setTimerType(Qt::PreciseTimer);
#else
    Q_UNUSED(timer);
#endif
}

// The number of the current thread as the log shows it.
inline unsigned long threadIdNumber()
{
    return reinterpret_cast<unsigned long>(QThread::currentThreadId());
}

} // namespace qtcompat

#endif
