// The icon; see the header.
#include "widgets/tlabel.h"

#include "app/guiapp.h"
#include "common/checked.h"
#include "common/constants.h"
#include "common/log.h"
#include "common/qtcompat.h"

#include <QEvent>
#include <QFontMetrics>
#include <QFrame>
#include <QHBoxLayout>
#include <QPainter>
#include <QPixmap>
#include <QTimer>

namespace {

const char SOURCE[] = "tlabel";
const int BLINK_MS = 500;
const int FADE_STEP_MS = 100;
const int FADE_LEVEL_MAX = 10;
const int FADE_ALPHA_MIN = 50;
const int FADE_ALPHA_STEP = 20;
const int TEXT_FONT_SIZE = 14;
const int HEIGHT_WITHOUT_PICTURE = 24; // pixels
const int NOT_SCALED = 0;

enum DarkLayer { DARK_LAYER_AS_IT_IS, DARK_LAYER_HIDDEN, DARK_LAYER_DIM, DARK_LAYER_FADING };

const struct StateRow {
    INTERFACE_STATE_ENUM state;
    const char* name;
    const char* suffix; // of the picture's file
    DarkLayer darkLayer;
} stateRows[] = {
    {INTERFACE_STATE_UNKNOWN, "INTERFACE_STATE_UNKNOWN", "", DARK_LAYER_AS_IT_IS},
    {INTERFACE_STATE_OFF, "INTERFACE_STATE_OFF", "_disabled", DARK_LAYER_DIM},
    {INTERFACE_STATE_ACTIVATING, "INTERFACE_STATE_ACTIVATING", "_enabled", DARK_LAYER_FADING},
    {INTERFACE_STATE_ON, "INTERFACE_STATE_ON", "_enabled", DARK_LAYER_HIDDEN},
    {INTERFACE_STATE_DEACTIVATING, "INTERFACE_STATE_DEACTIVATING", "_disabled", DARK_LAYER_FADING},
};
const StateRow undefinedState = {INTERFACE_STATE_UNKNOWN, "ERROR!!! undefined m_state str", "",
                                 DARK_LAYER_AS_IT_IS};

const StateRow& rowOfState(INTERFACE_STATE_ENUM state)
{
    for (const StateRow& row : stateRows) {
        if (row.state == state)
            return row;
    }
    return undefinedState;
}

// Heights of the pictures in pixels. Icons without a row are drawn as they are in the file.
const struct {
    TLabel::ICON_ID_ENUM iconId;
    int height;
} pictureHeights[] =
    {
        {TLabel::ICON_BATTERY, 28}, {TLabel::ICON_WIFI, 24},  {TLabel::ICON_ISDN, 24},
        {TLabel::ICON_LAN, 24},     {TLabel::ICON_PHONE, 24}, {TLabel::ICON_USB, 24},
        {TLabel::ICON_ANTENNA, 28}, // unused: the signal icon draws itself
        {TLabel::ICON_CONNECT, 36}, {TLabel::ICON_MENU, 36},
};

int heightOfIcon(TLabel::ICON_ID_ENUM iconId)
{
    for (const auto& row : pictureHeights) {
        if (row.iconId == iconId)
            return row.height;
    }
    return NOT_SCALED;
}

// Where the text stands among the stretches of its row. Any other alignment has the label alone.
const struct AlignmentRow {
    int alignment;
    bool stretchBefore;
    bool stretchBehind;
    Qt::AlignmentFlag textAlignment;
} alignmentRows[] = {
    {Qt::AlignHCenter, true, true, Qt::AlignCenter},
    {Qt::AlignRight, true, false, Qt::AlignHCenter},
    {Qt::AlignLeft, false, true, Qt::AlignHCenter},
};
const AlignmentRow otherAlignment = {0, false, false, Qt::AlignHCenter};

const AlignmentRow& rowOfAlignment(int alignment)
{
    for (const AlignmentRow& row : alignmentRows) {
        if (row.alignment == alignment)
            return row;
    }
    return otherAlignment;
}

} // namespace

TLabel::TLabel(ICON_ID_ENUM iconId, const QString& iconName, INTERFACE_STATE_ENUM state, QWidget* parent)
    : QLabel(parent), pTopLayerLabel(nullptr), pDarkLayer(nullptr), m_state(state), m_iconId(iconId),
      m_iconName(iconName), pLayout(nullptr), pBlinkTimer(nullptr), pActivatingTimer(nullptr),
      blinkPhase(false), fadeLevel(0), fadeUp(true)
{
    setAlignment(Qt::AlignTop);
    pLayout = checkedNew<QHBoxLayout>(SOURCE, __LINE__, this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pTopLayerLabel = checkedNew<QLabel>(SOURCE, __LINE__, this);
    pTopLayerLabel->setObjectName(QString::fromLatin1("pTopLayerLabel"));
    pTopLayerLabel->setAlignment(Qt::AlignHCenter);
    pTopLayerLabel->setFont(*GuiApp::getFont(TEXT_FONT_SIZE, LANG_UNDEFINED));
    pLayout->addWidget(pTopLayerLabel);
    pTopLayerLabel->setVisible(false); // until it has a text: an empty one would be painted, too
    pDarkLayer = checkedNew<QFrame>(SOURCE, __LINE__, this);
    pDarkLayer->setObjectName(QString::fromLatin1("pDarkLayer"));
    pDarkLayer->setStyleSheet(::frameStyle); // updateIcon() gives it another one before it is first shown
    pDarkLayer->setVisible(false);
}

QString TLabel::picturePath(const QString& name, const QString& suffix)
{
    return GuiApp::getResourcePath() + QString::fromLatin1("/") + name + suffix + QString::fromLatin1(".png");
}

void TLabel::updateIcon()
{
    const bool otherPicture = pBlinkTimer && pBlinkTimer->isActive() && blinkPhase;
    const QString& name = otherPicture ? m_blinkIconName : m_iconName;
    if (name.isEmpty())
        return;
    const QString fileName = picturePath(name, QString::fromLatin1(rowOfState(m_state).suffix));
    updateDarkLayer();
    const QPixmap pixmap(fileName);
    const int height = heightOfIcon(m_iconId);
    if (pixmap.isNull()) {
        logDebug() << "TLabel::updateIcon(): Pixmap not found for filename=" << fileName
                   << ". Now removing pixmap from icon.";
        setPixmap(QPixmap());
    } else {
        setPixmap(height == NOT_SCALED ? pixmap : pixmap.scaledToHeight(height));
    }
}

void TLabel::updateDarkLayer()
{
    const DarkLayer darkLayer = rowOfState(m_state).darkLayer;
    pDarkLayer->setGeometry(0, 0, width(), height());
    if (darkLayer == DARK_LAYER_AS_IT_IS)
        return;
    if (darkLayer != DARK_LAYER_HIDDEN)
        setDarkLayerStyle(darkLayer == DARK_LAYER_DIM ? dimStyle : fadeStyle());
    pDarkLayer->setVisible(darkLayer != DARK_LAYER_HIDDEN);
}

// A style sheet is parsed and applied anew even if it is the same, and that costs more than all the rest
// of the icon.
void TLabel::setDarkLayerStyle(const QString& style)
{
    if (pDarkLayer->styleSheet() != style)
        pDarkLayer->setStyleSheet(style);
}

QString TLabel::fadeStyle() const
{
    return QString::fromLatin1("background: rgba(0,0,0,%1)")
        .arg(fadeLevel * FADE_ALPHA_STEP + FADE_ALPHA_MIN);
}

bool TLabel::isChangingState() const
{
    return m_state == INTERFACE_STATE_ACTIVATING || m_state == INTERFACE_STATE_DEACTIVATING;
}

void TLabel::setState(INTERFACE_STATE_ENUM state)
{
    const bool changed = state != m_state;
    m_state = state;
    logDebug() << "TLabel::setState(INTERFACE_STATE_ENUM state): state=" << getStateStr();
    switch (state) {
    case INTERFACE_STATE_OFF:
    case INTERFACE_STATE_ON:
        stopActivatingTimer(rowOfState(state).name);
        break;
    case INTERFACE_STATE_ACTIVATING:
    case INTERFACE_STATE_DEACTIVATING:
        startActivatingTimer();
        break;
    case INTERFACE_STATE_UNKNOWN:
        logDebug() << "ScreenStatus::setState(): ERROR!!! INTERFACE_STATE_UNKNOWN!";
        break;
    default: // kept all the same
        logDebug() << "ScreenStatus::setState(): ERROR!!! state=" << state << " is unsupported!!!!";
    }
    if (changed)
        updateIcon();
}

INTERFACE_STATE_ENUM TLabel::getState()
{
    return m_state;
}

QString TLabel::getStateStr() const
{
    return QString::fromLatin1(rowOfState(m_state).name);
}

void TLabel::startActivatingTimer()
{
    if (!pActivatingTimer) {
        pActivatingTimer = checkedNew<QTimer>(SOURCE, __LINE__, this);
        pActivatingTimer->setObjectName(QString::fromLatin1("pActivatingTimer"));
        connect(pActivatingTimer, SIGNAL(timeout()), this, SLOT(handleActivatingTimeout()),
                Qt::UniqueConnection);
    }
    if (!pActivatingTimer->isActive())
        pActivatingTimer->start(FADE_STEP_MS);
}

void TLabel::stopActivatingTimer(const char* state)
{
    if (!pActivatingTimer)
        return;
    logDebug() << "TLabel::setState(): state=" << state << ": Stopping timer";
    pActivatingTimer->stop();
}

// The level bounces between both ends.
void TLabel::stepFade()
{
    const int next = fadeUp ? fadeLevel + 1 : fadeLevel - 1;
    if (next > FADE_LEVEL_MAX) {
        fadeLevel = FADE_LEVEL_MAX - 1;
        fadeUp = false;
    } else if (next < 0) {
        fadeLevel = 1;
        fadeUp = true;
    } else {
        fadeLevel = next;
    }
}

void TLabel::handleActivatingTimeout()
{
    stepFade();
    if (!pActivatingTimer)
        logDebug() << "TLabel::handleActivatingTimeout(): ERROR!!! pActivatingTimer has not been created for "
                      "TLabel.text="
                   << text();
    else if (isChangingState())
        pActivatingTimer->start(FADE_STEP_MS);
    else
        pActivatingTimer->stop();
    updateIcon();
}

void TLabel::setBlinkIconNames(const QString& iconName, const QString& blinkIconName)
{
    m_iconName = iconName;
    m_blinkIconName = blinkIconName;
    if (pBlinkTimer)
        return;
    pBlinkTimer = checkedNew<QTimer>(SOURCE, __LINE__, this);
    pBlinkTimer->setObjectName(QString::fromLatin1("pBlinkTimer"));
    connect(pBlinkTimer, SIGNAL(timeout()), this, SLOT(handleBlinkTimeout()));
}

void TLabel::setBlinking(bool blinking)
{
    if (!pBlinkTimer) {
        logDebug() << "TLabel::setBlinking(): Warning!!!! setBlinkIconNames() must be run first!";
        return;
    }
    if (blinking) {
        pBlinkTimer->start(BLINK_MS);
    } else {
        pBlinkTimer->stop();
        updateIcon();
    }
}

void TLabel::handleBlinkTimeout()
{
    blinkPhase = !blinkPhase;
    updateIcon();
    pBlinkTimer->start(BLINK_MS);
}

// A hidden label runs no timers. Whatever stopped them, showing the label starts one of them again: also
// a blink that setBlinking(false) stopped.
void TLabel::hideEvent(QHideEvent* event)
{
    if (pBlinkTimer)
        pBlinkTimer->stop();
    if (pActivatingTimer)
        pActivatingTimer->stop();
    QLabel::hideEvent(event);
}

void TLabel::showEvent(QShowEvent* event)
{
    if (pBlinkTimer && !pBlinkTimer->isActive())
        pBlinkTimer->start(BLINK_MS);
    else if (pActivatingTimer && !pActivatingTimer->isActive())
        pActivatingTimer->start(FADE_STEP_MS);
    // The layout has given the label its size since the picture was loaded.
    pDarkLayer->setGeometry(0, 0, width(), height());
    QLabel::showEvent(event);
}

void TLabel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange) {
        pTopLayerLabel->setFont(*GuiApp::getFont(TEXT_FONT_SIZE, LANG_UNDEFINED));
        setTopLayerText(pTopLayerLabel->text());
    }
    QLabel::changeEvent(event);
}

// A picture alone needs none of what QLabel asks of the style for it, which costs more than the picture.
void TLabel::paintEvent(QPaintEvent* event)
{
    const QPixmap picture = qtcompat::labelPixmap(this);
    if (picture.isNull()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, picture);
}

int TLabel::getPixmapWidth() const
{
    return qtcompat::labelPixmap(this).width();
}

int TLabel::pictureHeight() const
{
    const QPixmap picture = qtcompat::labelPixmap(this);
    if (!picture.isNull())
        return picture.height();
    logDebug() << "TLabel::setTopLayerText(): ERROR !!!! Pixmap not set for TLabel with m_iconId=" << m_iconId
               << ", m_iconName=" << m_iconName;
    return HEIGHT_WITHOUT_PICTURE;
}

void TLabel::setTopLayerText(const QString& text)
{
    if (text != pTopLayerLabel->text())
        logDebug() << "TLabel::setTopLayerText(): topLayerText=" << text << " for m_iconName=" << m_iconName;
    pTopLayerLabel->setText(text);
    if (text.isEmpty()) {
        pTopLayerLabel->setVisible(false);
        return;
    }
    const int bottom = pictureHeight() - QFontMetrics(pTopLayerLabel->font()).height();
    if (bottom < 0)
        logDebug() << "TLabel::setTopLayerText(): ERROR! Illegal bottom margin.";
    else
        pLayout->setContentsMargins(0, 0, 0, bottom);
    pTopLayerLabel->setVisible(true);
}

void TLabel::setTopLayerStylesheet(const QString& style)
{
    pTopLayerLabel->setStyleSheet(style);
}

void TLabel::setTopLayerTextAlignment(QFlags<Qt::AlignmentFlag> alignment)
{
    pLayout->removeWidget(pTopLayerLabel);
    while (QLayoutItem* const item = pLayout->takeAt(0))
        delete item;
    const AlignmentRow& row = rowOfAlignment(static_cast<int>(alignment));
    if (row.stretchBefore)
        pLayout->addStretch();
    pLayout->addWidget(pTopLayerLabel);
    if (row.stretchBehind)
        pLayout->addStretch();
    pTopLayerLabel->setAlignment(row.textAlignment);
}
