// Writes a translation file in Qt's compiled form with a few messages, without the tools of Qt.
//
// Layout of the file: 16 bytes of magic, then sections of one byte tag, four bytes length, data; numbers
// are big-endian. Section 0x42 holds pairs of hash and offset, sorted by hash; 0x69 the messages, each a
// row of tagged fields: 3 the translation in UTF-16, 6 the source text, 7 the context, 1 the end. The
// hash is the one of ELF over source text and comment.
#ifndef TESTS_SUPPORT_QMFILE_H
#define TESTS_SUPPORT_QMFILE_H

#include <QByteArray>
#include <QDataStream>
#include <QFile>
#include <QList>
#include <QPair>
#include <QString>

#include <algorithm>

struct QmMessage {
    QByteArray context;
    QByteArray source;
    QString translation;
};

inline quint32 qmHash(const QByteArray& text)
{
    quint32 hash = 0;
    for (const char character : text) {
        hash = (hash << 4) + static_cast<uchar>(character);
        const quint32 top = hash & 0xf0000000;
        hash ^= top >> 24;
        hash &= ~top;
    }
    return hash ? hash : 1;
}

// False if the file cannot be written.
inline bool writeQmFile(const QString& fileName, const QList<QmMessage>& messages)
{
    QByteArray body;
    QList<QPair<quint32, quint32>> places;
    {
        QDataStream stream(&body, QIODevice::WriteOnly);
        for (const QmMessage& message : messages) {
            places.append(qMakePair(qmHash(message.source), quint32(body.size())));
            stream << quint8(3) << quint32(message.translation.size() * 2);
            for (const QChar character : message.translation) {
                stream << quint16(character.unicode());
            }
            stream << quint8(6) << quint32(message.source.size());
            stream.writeRawData(message.source.constData(), int(message.source.size()));
            stream << quint8(7) << quint32(message.context.size());
            stream.writeRawData(message.context.constData(), int(message.context.size()));
            stream << quint8(1);
        }
    }
    std::sort(places.begin(), places.end());
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    const uchar magic[] = {0x3c, 0xb8, 0x64, 0x18, 0xca, 0xef, 0x9c, 0x95,
                           0xcd, 0x21, 0x1c, 0xbf, 0x60, 0xa1, 0xbd, 0xdd};
    file.write(reinterpret_cast<const char*>(magic), sizeof(magic));
    QDataStream stream(&file);
    stream << quint8(0x42) << quint32(places.size() * 8);
    for (const auto& place : places) {
        stream << place.first << place.second;
    }
    stream << quint8(0x69) << quint32(body.size());
    stream.writeRawData(body.constData(), int(body.size()));
    return stream.status() == QDataStream::Ok;
}

#endif
