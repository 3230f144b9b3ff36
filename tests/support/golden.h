// Golden pictures: what a screen looks like in a state, kept as a file and compared pixel for pixel.
//
// A group of pictures is a table with a name, a line for the reader and a function that takes the picture.
// The picture GROUP-NAME is kept as GROUP-NAME.png, one pixel a pixel, and enlarged for the page that shows
// all of them. The table writes its section of that page; a picture or section that doesn't follow from the
// table is a failure, as is a file without a row. tools/accept-pictures writes all three anew.
//
// The pictures are those of Qt 5. Where another version draws something else, a second picture is kept in a
// directory of that version, and only there; the page does not show it.
#ifndef TESTS_SUPPORT_GOLDEN_H
#define TESTS_SUPPORT_GOLDEN_H

#include <QImage>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace golden {

struct Picture {
    QString name;        // lower case letters, digits and hyphens
    QString description; // one line of Markdown
    std::function<QImage()> take;
};

// Where the files are. The tests of all groups share these; accepted by name, "all" for everything.
struct Places {
    QString pictures;     // directory of the golden pictures
    QString enlarged;     // directory of those that the page shows
    QString page;         // the Markdown file
    QString ofVersion;    // directory of the pictures that this version of Qt draws otherwise; empty for Qt 5
    QString failures;     // directory of the pictures that tell a failure
    QString tests;        // directory of golden_GROUP_test.cpp
    QStringList accepted; // full names of the pictures to accept
};
// Of this build; what is accepted comes from the environment variable LUMENPANEL_ACCEPT.
Places placesOfBuild();

// Each returns what is wrong, empty if nothing is. What is to be accepted is written instead.
QString checkPicture(const Places& places, const QString& group, const Picture& picture);
// Files of this group without a row, and files of groups without a test.
QString checkFiles(const Places& places, const QString& group, const std::vector<Picture>& pictures);
// The group's section of the page: between its two marks, an image and a line for each picture.
QString checkPage(const Places& places, const QString& group, const std::vector<Picture>& pictures);

// Actual, expected and difference, enlarged and one below the other. Pixels that differ are red in the
// last; a size that differs leaves it black.
QImage comparison(const QImage& actual, const QImage& expected);

// A test of one group, run on its own; the derived class gives the table.
class GroupTest : public QObject {
    Q_OBJECT

public:
    GroupTest(const char* group, std::vector<Picture> pictures);

private slots:
    void picture_data();
    void picture();
    void everyFileHasARow();
    void pageFollowsTheTable();

private:
    const QString m_group;
    const std::vector<Picture> m_pictures;
};

} // namespace golden

#endif
