#include "ZNTAskBar.h"

#include "ZNTCaptionedField.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

namespace
{

constexpr int usualColumns = 20;

} // namespace

ZNTAskBar::ZNTAskBar(const QString& caption) : field(new QLineEdit(this))
{
    auto* row = new QVBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    setFocusProxy(field);
    row->addWidget(new ZNTCaptionedField(caption, field, usualColumns));
}

void ZNTAskBar::open()
{
    if (!isVisible())
        opener = QApplication::focusWidget();
    show();
    field->setFocus(Qt::ShortcutFocusReason);
    field->selectAll();
}

void ZNTAskBar::close()
{
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    hide();
    if (hadFocus && opener && opener->isVisible() && opener->isEnabled())
        opener->setFocus(Qt::OtherFocusReason);
    opener.clear();
}

void ZNTAskBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (whenAnswered)
            whenAnswered(field->text(), event->modifiers().testFlag(Qt::ShiftModifier));
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}
