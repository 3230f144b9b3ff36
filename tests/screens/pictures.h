// Pictures of any size for tests of the icons, in a directory of the test's own that takes the place of
// the resource path.
#ifndef TESTS_SCREENS_PICTURES_H
#define TESTS_SCREENS_PICTURES_H

#include "common/paths.h"
#include "common/qtcompat.h"

#include <QByteArray>
#include <QColor>
#include <QDir>
#include <QFont>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QTemporaryDir>

// While it lives the icons are looked for here, and here only.
class Pictures {
public:
    Pictures() : m_path(m_directory.path().toLocal8Bit())
    {
        paths::overrideForTest(m_path.constData(), nullptr, nullptr);
    }
    ~Pictures() { paths::overrideForTest(nullptr, nullptr, nullptr); }
    Pictures(const Pictures&) = delete;
    Pictures& operator=(const Pictures&) = delete;

    // Writes NAME.png, all of one colour.
    void add(const QString& name, int width, int height, QColor colour = Qt::white) const
    {
        QImage image(width, height, QImage::Format_ARGB32);
        image.fill(colour);
        image.save(path(name));
    }
    QString path(const QString& name) const { return m_directory.path() + "/" + name + ".png"; }

private:
    QTemporaryDir m_directory;
    QByteArray m_path;
};

// What a label shows; a null image without a picture.
inline QImage pictureOf(const QLabel& label)
{
    return qtcompat::labelPixmap(&label).toImage().convertToFormat(QImage::Format_ARGB32);
}
// A font as it was asked for; the comparison of fonts looks at more than that.
inline QString fontText(const QFont& font)
{
    return QString("%1 %2 %3").arg(font.family()).arg(font.pixelSize()).arg(font.styleStrategy());
}
inline QColor colourOf(const QLabel& label)
{
    const QImage picture = pictureOf(label);
    return picture.isNull() ? QColor() : picture.pixelColor(0, 0);
}

#endif
