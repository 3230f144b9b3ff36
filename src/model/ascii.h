// Texts for the wire and for fixed fields, which are ASCII. Any thread.
#ifndef LUMENPANEL_MODEL_ASCII_H
#define LUMENPANEL_MODEL_ASCII_H

#include <QByteArray>
#include <QString>

// The text as ASCII; what ASCII lacks becomes a question mark. Cannot fail.
inline QByteArray asciiOf(const QString& text)
{
    QByteArray ascii(text.size(), '?');
    char* const bytes = ascii.data();
    for (int i = 0; i < text.size(); ++i)
        if (text.at(i).unicode() < 0x80)
            bytes[i] = static_cast<char>(text.at(i).unicode());
    return ascii;
}

#endif
