// Keeps every text that reaches Qt's message path, for as long as the object lives; nothing is passed on.
// Of several objects the youngest has the messages; they go in reverse order of their coming. Messages may
// come from any thread.
#ifndef TESTS_SUPPORT_MESSAGES_H
#define TESTS_SUPPORT_MESSAGES_H

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include <mutex>

class Messages {
public:
    Messages() : m_older(current())
    {
        std::lock_guard<std::mutex> lock(mutex());
        current() = this;
        m_before = qInstallMessageHandler(keep);
    }
    // Another thread may be on its way into keep(), with a handler that is not installed any more.
    ~Messages()
    {
        std::lock_guard<std::mutex> lock(mutex());
        qInstallMessageHandler(m_before);
        current() = m_older;
    }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    void clear()
    {
        std::lock_guard<std::mutex> lock(mutex());
        m_all.clear();
    }
    QList<QPair<QtMsgType, QString>> all() const
    {
        std::lock_guard<std::mutex> lock(mutex());
        return m_all;
    }
    QStringList texts() const
    {
        QStringList result;
        for (const auto& message : all()) {
            result.append(message.second);
        }
        return result;
    }
    // How many messages are exactly this text, or of this type as well.
    int count(const QString& text) const { return int(texts().count(text)); }
    int count(QtMsgType type, const QString& text) const { return int(all().count(qMakePair(type, text))); }
    // How many messages begin with this text.
    int countOfPrefix(const QString& prefix) const { return int(withPrefix(prefix).size()); }
    QStringList withPrefix(const QString& prefix) const
    {
        QStringList result;
        for (const QString& text : texts()) {
            if (text.startsWith(prefix)) {
                result.append(text);
            }
        }
        return result;
    }

private:
    static Messages*& current()
    {
        static Messages* object = nullptr;
        return object;
    }
    // One for all objects, as it outlives each of them. Not Qt's: the thread sanitizer doesn't see into Qt.
    static std::mutex& mutex()
    {
        static std::mutex one;
        return one;
    }
    static void keep(QtMsgType type, const QMessageLogContext&, const QString& text)
    {
        std::lock_guard<std::mutex> lock(mutex());
        Messages* const object = current();
        if (object)
            object->m_all.append(qMakePair(type, text));
    }

    Messages* const m_older;
    QtMessageHandler m_before = nullptr;
    QList<QPair<QtMsgType, QString>> m_all;
};

#endif
