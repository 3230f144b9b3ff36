// Fuzz target: a text on the popup screen, as names of bundles and networks and the alert log's words bring
// it there. The input is the text; it is laid out, painted, and moved by keys.
//
// A text must not read files, must not take long, and must stay within what a label can be.
// No legal end.
#include "fuzz/windowtarget.h"

#include <QImage>

using namespace windowfixture;

namespace {

PopupFixture* fixture;

void show(const QString& text)
{
    fixture->add(A, EVENT_WARNING, POPUP_CLOSE_OK, 0, 5000, text);
    QImage image(256, 64, QImage::Format_RGB32);
    fixture->screen->render(&image);
    for (int i = 0; i < 3; ++i)
        fixture->screen->keyDownClicked();
    fixture->screen->keyUpClicked();
    fixture->screen->changeTextLabelAnimationDirection();
    const int height = fixture->text()->height();
    fuzz::check(height > 0 && height <= QWIDGETSIZE_MAX, "a label of no height");
    if (!text.contains("<html>"))
        fuzz::check(fixture->text()->text() == text, "a plain text is not shown as it is");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fixture = fuzz::startWindow();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::resetPopups(*fixture);
    const std::string bytes = fuzz::Input(data, size).rest();
    const QString text = QString::fromStdString(bytes); // empty for no bytes, not null
    fuzz::survives([&] { show(text); }, {});
    return 0;
}
