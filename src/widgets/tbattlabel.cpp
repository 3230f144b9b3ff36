// The battery icon; see the header.
#include "widgets/tbattlabel.h"

#include "app/guiapp.h"
#include "common/checked.h"
#include "common/constants.h"
#include "common/log.h"

#include <QEvent>
#include <QProgressBar>

namespace {

const char SOURCE[] = "tbattlabel";
const int CAPACITY_MAX = 100;     // percent
const int CAPACITY_NOT_FULL = 96; // all above counts as full
const int CAPACITY_AT_START = 50;
const int BAR_WIDTH = 27;
const int BAR_HEIGHT = 25;
const int TEXT_FONT_SIZE = 14;
// The margins put the bar inside the outline of the picture.
const char BAR_STYLE[] =
    "QProgressBar {border: 0px solid #424242;background-color: rgba(0,0,0,0);margin-left: 6px;"
    "margin-right: 0px;margin-top: 17px;margin-bottom: 0px;}"
    "QProgressBar::chunk {background-color: #999999;margin: 0px;border: 0px solid black;}";

} // namespace

TBattLabel::TBattLabel(QWidget* parent)
    : TLabel(ICON_BATTERY, QString::fromLatin1("battery"), INTERFACE_STATE_ON, parent), pProgressBar(nullptr),
      chargeFont(QString::fromLatin1("DejaVu Sans Mono"))
{
    chargeFont.setPixelSize(TEXT_FONT_SIZE);
    chargeFont.setStyleStrategy(QFont::PreferAntialias);
    pProgressBar = checkedNew<QProgressBar>(SOURCE, __LINE__, this);
    pProgressBar->setObjectName(QString::fromLatin1("pProgressBar"));
    pProgressBar->setRange(0, CAPACITY_MAX);
    pProgressBar->setValue(CAPACITY_AT_START);
    pProgressBar->setTextVisible(false);
    pProgressBar->setFixedWidth(BAR_WIDTH);
    pProgressBar->setFixedHeight(BAR_HEIGHT);
    pProgressBar->setStyleSheet(QString::fromLatin1(BAR_STYLE));
}

void TBattLabel::setCapacity(int value)
{
    if (value < 0 || value > CAPACITY_MAX) {
        logDebug() << "TBattLabel::setCapacity: ERROR!!!! value=" << value << " is out of range (0-100)";
        return;
    }
    pProgressBar->setValue(value > CAPACITY_NOT_FULL ? CAPACITY_MAX : value);
    update();
}

void TBattLabel::setState(INTERFACE_STATE_ENUM state)
{
    pProgressBar->setVisible(state == INTERFACE_STATE_ON);
    TLabel::setState(state);
    pDarkLayer->setVisible(false);
}

void TBattLabel::setTopLayerText(const QString& text)
{
    TLabel::setTopLayerText(text);
    pTopLayerLabel->setFont(text.contains(chargeChar) ? chargeFont
                                                      : *GuiApp::getFont(TEXT_FONT_SIZE, LANG_UNDEFINED));
}

void TBattLabel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        setTopLayerText(pTopLayerLabel->text());
    TLabel::changeEvent(event);
}
