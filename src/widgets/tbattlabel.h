// The battery icon: a bar inside the battery's outline for the charge, and above it the time left or the
// charging mark. Never dimmed by the dark layer. GUI thread only.
#ifndef LUMENPANEL_WIDGETS_TBATTLABEL_H
#define LUMENPANEL_WIDGETS_TBATTLABEL_H

#include "widgets/tlabel.h"

#include <QFont>

class QProgressBar;

class TBattLabel : public TLabel {
    Q_OBJECT

public:
    explicit TBattLabel(QWidget* parent);

    // 0 to 100 percent; above 96 counts as full. Any other value is logged and changes nothing.
    void setCapacity(int value);
    // The bar shows only in INTERFACE_STATE_ON.
    void setState(INTERFACE_STATE_ENUM state) override;
    // A text with the charging mark gets the font that has it.
    void setTopLayerText(const QString& text) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    QProgressBar* pProgressBar; // owned
    QFont chargeFont;
};

#endif
