#include "ZNTStatusButtons.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <algorithm>

ZNTStatusButtons::ZNTStatusButtons()
    : stopConnecting(new QPushButton(QStringLiteral("Stop"))),
      connectAgain(new QPushButton(QStringLiteral("Connect again")))
{
    setObjectName(QStringLiteral("statusButtons"));
    stopConnecting->setObjectName(QStringLiteral("stopConnecting"));
    stopConnecting->setAccessibleName(QStringLiteral("Stop connecting"));
    connectAgain->setObjectName(QStringLiteral("connectAgain"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (QPushButton* button : {stopConnecting, connectAgain}) {
        row->addWidget(button);
        button->hide();
    }
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ZNTStatusButtons::showOnly(Shown which)
{
    QPushButton* wanted = which == Shown::Stop           ? stopConnecting
                          : which == Shown::ConnectAgain ? connectAgain
                                                         : nullptr;
    const bool hadFocus = stopConnecting->hasFocus() || connectAgain->hasFocus();
    if (wanted) {
        wanted->show();
        if (hadFocus)
            wanted->setFocus(Qt::OtherFocusReason);
    }
    for (QPushButton* button : {stopConnecting, connectAgain})
        if (button != wanted)
            button->hide();
    updateGeometry();
}

QSize ZNTStatusButtons::sizeHint() const
{
    QSize size(0, std::max(stopConnecting->sizeHint().height(), connectAgain->sizeHint().height()));
    for (const QPushButton* button : {stopConnecting, connectAgain})
        if (!button->isHidden())
            size.setWidth(button->sizeHint().width());
    return size;
}
