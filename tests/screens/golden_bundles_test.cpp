// Golden pictures of the list of bundles: closed, open, and in each state of a session.
#include "screens/goldenscene.h"

using namespace golden;
using windowfixture::Bundle;
using windowfixture::defineBundles;
using windowfixture::endSession;
using windowfixture::setSession;

namespace {

const Qt::Key D = Qt::Key_Down;
const Qt::Key L = Qt::Key_Left;
const Qt::Key OK = Qt::Key_Return;

const std::vector<Bundle> FOUR = {{0, "Standard data", 3},
                                  {1, "Streaming 128", 1, 1, 128, 128},
                                  {2, "Streaming 64"},
                                  {3, "Voice", 1, 1, 32, 32}};
const std::vector<Bundle> SCRIPTS = {{0, "Standard data", 3},
                                     {1, "Потоковая передача", 1, 1, 128, 128},
                                     {2, "流媒体 64"},
                                     {3, "Größere Übertragung", 1, 1, 32, 32}};
const std::vector<Bundle> LONG = {
    {0, "A name that is much longer than its column", 3}, {1, "Streaming", 1}, {2, "Voice", 1, 1, 32, 32}};

// A session of one of the bundles; none with a negative number.
struct Running {
    int number = -1;
    BUNDLE_STATUS status = BUNDLE_STATUS_RUNNING;
    int seconds = 4521;
    bool aca = false;
};

QImage list(const std::vector<Bundle>& bundles, const QList<Qt::Key>& keys,
            const Running& running = Running())
{
    if (!setRadio(Radio())) {
        return QImage();
    }
    endSession();
    defineBundles(bundles);
    QImage picture;
    {
        Scene scene;
        model()->setACA(running.aca);
        if (running.number >= 0) {
            setSession(running.number, running.status, running.seconds);
            model()->handleUpdateTimeout(); // the next second's tick writes the time
        }
        scene.show(Screen::SCREEN_ACTION);
        scene.keys(keys);
        picture = scene.picture();
    }
    endSession();
    defineBundles({});
    return picture;
}

std::vector<Picture> all()
{
    return {
        {"closed", "The list as it opens.", [] { return list(FOUR, {}); }},
        {"selected", "A bundle selected.",
         [] {
             return list(FOUR, {D, D});
         }},
        {"start", "A bundle opened: OK starts it.",
         [] {
             return list(FOUR, {D, D, OK});
         }},
        {"connecting", "It is being started. The list opens on the active one.",
         [] {
             return list(FOUR, {}, {1, BUNDLE_STATUS_INITIALIZING, 1});
         }},
        {"stop", "It runs, with its time: OK stops it.", [] { return list(FOUR, {}, {1}); }},
        {"running", "The same, closed.", [] { return list(FOUR, {L}, {1}); }},
        {"grey-start", "The start of another one is grey meanwhile, and out of reach.",
         [] {
             return list(FOUR, {D, OK}, {1});
         }},
        {"grey-stop", "A stop that the terminal refuses is grey as well.",
         [] {
             return list(FOUR, {}, {0, BUNDLE_STATUS_RUNNING, 36000, true});
         }},
        {"scripts", "Names in other scripts while the panel speaks English.",
         [] { return list(SCRIPTS, {D}); }},
        {"long-name", "A name that is too long for its column ends in dots.",
         [] { return list(LONG, {L}, {0}); }},
        {"one", "A single bundle.",
         [] {
             return list({{0, "Standard data", 3}}, {D, OK});
         }},
    };
}

class BundlePictures : public GroupTest {
public:
    BundlePictures() : GroupTest("bundles", all()) {}
};

} // namespace

int main(int argc, char** argv)
{
    return run<BundlePictures>(argc, argv);
}
