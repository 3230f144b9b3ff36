// Proof by pixels that a text was drawn with glyphs of its own: each is looked for in a picture of the
// screen, and none may be empty or what a face draws for a character that it lacks.
#ifndef TESTS_SCREENS_GLYPHS_H
#define TESTS_SCREENS_GLYPHS_H

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QStringList>
#include <QVector>

namespace glyphs {

// Lit or not; texts are white on black, on the grey of the selected row, or on the lighter band.
inline bool isLit(QRgb pixel)
{
    return qGray(pixel) > 140;
}

// The lit part of a picture, cut to what is lit. Null if nothing is.
inline QImage cut(const QImage& picture)
{
    QRect lit;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (isLit(picture.pixel(x, y)))
                lit |= QRect(x, y, 1, 1);
    return lit.isEmpty() ? QImage() : picture.copy(lit);
}

inline QImage glyphOf(const QFont& font, const QString& character)
{
    QImage picture(48, 48, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(8, 32, character);
    painter.end();
    return cut(picture);
}

inline bool areEqual(const QImage& glyph, const QImage& picture, int left, int top)
{
    for (int y = 0; y < glyph.height(); ++y)
        for (int x = 0; x < glyph.width(); ++x)
            if (isLit(glyph.pixel(x, y)) != isLit(picture.pixel(left + x, top + y)))
                return false;
    return true;
}

// Where the glyph begins in the picture, not left of a column; -1 if it isn't there.
inline int columnOf(const QImage& glyph, const QImage& picture, int from)
{
    for (int x = from; x + glyph.width() <= picture.width(); ++x)
        for (int y = 0; y + glyph.height() <= picture.height(); ++y)
            if (areEqual(glyph, picture, x, y))
                return x;
    return -1;
}

// The characters of a text one by one, without blanks.
inline QStringList charactersOf(const QString& text)
{
    QStringList characters;
    for (char32_t code : text.toUcs4())
        if (!QChar::isSpace(code))
            characters.append(QString::fromUcs4(&code, 1));
    return characters;
}

// What is wrong with a text in a picture of the place where it stands: one line, from left to right. Empty if
// each of its characters is there.
inline QString faults(const QString& text, const QFont& font, const QImage& picture)
{
    const QImage missing = glyphOf(font, QString::fromUtf8("\360\240\200\200")); // no face has it
    QStringList result;
    int column = 0;
    for (const QString& character : charactersOf(text)) {
        const QImage glyph = glyphOf(font, character);
        if (glyph.isNull()) {
            result.append(character + " is nothing");
            continue;
        }
        if (glyph == missing)
            result.append(character + " is missing in " + font.family());
        const int found = columnOf(glyph, picture, column);
        if (found < 0)
            result.append(QString("%1 is not in the picture right of %2").arg(character).arg(column));
        else
            column = found + 1;
    }
    return result.join(", ");
}

} // namespace glyphs

#endif
