// The signal icon: one of five pictures, antenna_0.png to antenna_4.png, by the number of bars. Unlike
// with the other icons a missing picture ends the process. GUI thread only.
#ifndef LUMENPANEL_WIDGETS_TSIGNALLABEL_H
#define LUMENPANEL_WIDGETS_TSIGNALLABEL_H

#include "widgets/tlabel.h"

class TSignalLabel : public TLabel {
    Q_OBJECT

public:
    explicit TSignalLabel(QWidget* parent);

    // 0 to 4. Any other value is logged and keeps the number; the picture is loaded all the same.
    void setNumberOfIconBars(int numBars);
    void updateIcon() override;

private:
    int numberOfIconBars;
};

#endif
