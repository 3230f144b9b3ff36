// Enlarges a picture by a whole factor, pixel by pixel, so that a picture of the panel can be looked at.
#include <QImage>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    const int factor = argc == 4 ? std::atoi(argv[1]) : 0;
    if (factor < 1) {
        std::fprintf(stderr, "Usage: enlarge FACTOR FROM TO\n");
        return 2;
    }
    const QImage picture(QString::fromLocal8Bit(argv[2]));
    if (picture.isNull()) {
        std::fprintf(stderr, "enlarge: cannot read %s\n", argv[2]);
        return 1;
    }
    const QImage large =
        picture.scaled(picture.size() * factor, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    if (!large.save(QString::fromLocal8Bit(argv[3]))) {
        std::fprintf(stderr, "enlarge: cannot write %s\n", argv[3]);
        return 1;
    }
    return 0;
}
