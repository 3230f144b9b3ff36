// A page with a text and two key captions; see the header.
#include "screens/screenmessage.h"

#include "common/checked.h"
#include "screens/layouts.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

const char SOURCE[] = "screenmessage";
const int SIDE_MARGIN = 10;
const int TEXT_WIDTH = 246;

} // namespace

ScreenMessage::ScreenMessage(Window* pWindow, Screen::SCREEN_ID_ENUM screenId, QWidget* parent)
    : Screen(pWindow, screenId, parent), pMessageLabel(nullptr), pLeftLabel(nullptr), pRightLabel(nullptr)
{
    QVBoxLayout* const rows = checkedNew<QVBoxLayout>(SOURCE, __LINE__, this);
    removeSpace(rows);
    rows->setContentsMargins(SIDE_MARGIN, 0, 0, 0);
    pMessageLabel = newLabel(SOURCE, __LINE__, "pMessageLabel", Qt::AlignLeft, this);
    pMessageLabel->setFixedWidth(TEXT_WIDTH);
    pMessageLabel->setWordWrap(true);
    rows->addStretch();
    rows->addWidget(pMessageLabel);
    rows->addStretch();
    rows->addLayout(createButtonRow());
    ScreenMessage::retranslate(); // in case no translation is ever loaded
}

QHBoxLayout* ScreenMessage::createButtonRow()
{
    QHBoxLayout* const row = checkedNew<QHBoxLayout>(SOURCE, __LINE__);
    removeSpace(row);
    row->setContentsMargins(0, 0, SIDE_MARGIN, 0);
    pLeftLabel = newLabel(SOURCE, __LINE__, "pLeftLabel", Qt::AlignLeft | Qt::AlignVCenter, this);
    pRightLabel = newLabel(SOURCE, __LINE__, "pRightLabel", Qt::AlignLeft | Qt::AlignVCenter, this);
    row->addWidget(pLeftLabel);
    row->addStretch();
    row->addWidget(pRightLabel);
    return row;
}

void ScreenMessage::retranslate()
{
    pRightLabel->setText(QCoreApplication::translate("Shared_translations", "OK"));
    pLeftLabel->setText(QCoreApplication::translate("Shared_translations", "Cancel"));
}
