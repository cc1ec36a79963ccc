#include "ZNTQtElements.h"

#include "ZNTQtText.h"
#include "ZNTWindowFit.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTabWidget>

ZNTQtTextField::ZNTQtTextField(QLineEdit* field) : field(field) {}

std::u16string ZNTQtTextField::text() const
{
    return field ? znt::textOfQt(field->text()) : std::u16string();
}

void ZNTQtTextField::setText(std::u16string_view text)
{
    if (!field)
        return;
    const auto caret = field->cursorPosition();
    const QString before = field->text();
    field->setText(znt::qtText(text));
    // A reader says a recalled line when the caret moves. If the line is as long as the one before, the caret
    // stays; so it goes away and comes back.
    if (QAccessible::isActive() && field->hasFocus() && field->text() != before &&
        field->cursorPosition() == caret) {
        field->setCursorPosition(0);
        field->setCursorPosition(caret);
    }
}

void ZNTQtTextField::setEnabled(bool enabled)
{
    if (field)
        field->setEnabled(enabled);
}

void ZNTQtTextField::takeFocus()
{
    if (field)
        field->setFocus(Qt::OtherFocusReason);
}

void ZNTQtTextField::placeCaretAtEnd()
{
    if (!field)
        return;
    field->setFocus(Qt::OtherFocusReason);
    field->deselect();
    field->end(false);
}

ZNTQtTextArea::ZNTQtTextArea(QPlainTextEdit* area) : area(area) {}

std::u16string ZNTQtTextArea::text() const
{
    return area ? znt::textOfQt(area->toPlainText()) : std::u16string();
}

void ZNTQtTextArea::setText(std::u16string_view text)
{
    if (area)
        area->setPlainText(znt::qtText(text));
}

ZNTQtLabel::ZNTQtLabel(QLabel* label) : label(label) { label->setTextFormat(Qt::PlainText); }

void ZNTQtLabel::setText(std::u16string_view text)
{
    if (label)
        label->setText(znt::qtText(text));
}

ZNTQtButton::ZNTQtButton(QAbstractButton* button, QChar mnemonic) : button(button), mnemonic(mnemonic) {}

void ZNTQtButton::setTitle(std::u16string_view title)
{
    if (!button)
        return;
    const QString plain = znt::qtText(title);
    QString marked = plain;
    marked.replace(QLatin1Char('&'), QLatin1String("&&"));
    const qsizetype at = mnemonic.isNull() ? -1 : marked.indexOf(mnemonic, 0, Qt::CaseInsensitive);
    if (at >= 0)
        marked.insert(at, QLatin1Char('&'));
    button->setText(marked);
    button->setAccessibleName(plain);
}

void ZNTQtButton::setEnabled(bool enabled)
{
    if (button)
        button->setEnabled(enabled);
}

ZNTQtSpinner::ZNTQtSpinner(QProgressBar* bar) : bar(bar)
{
    bar->setTextVisible(false);
    apply();
}

void ZNTQtSpinner::setHidden(bool hidden)
{
    isHidden = hidden;
    apply();
}

void ZNTQtSpinner::startAnimation()
{
    isAnimating = true;
    apply();
}

void ZNTQtSpinner::stopAnimation()
{
    isAnimating = false;
    apply();
}

void ZNTQtSpinner::apply()
{
    if (!bar)
        return;
    // A bar that does not move would look stuck.
    bar->setRange(0, isAnimating ? 0 : 1);
    bar->setVisible(!isHidden && isAnimating);
}

ZNTQtTabView::ZNTQtTabView(QTabWidget* tabs) : tabs(tabs) {}

void ZNTQtTabView::selectTab(int index)
{
    if (tabs)
        tabs->setCurrentIndex(index);
}

ZNTQtSheet::ZNTQtSheet(QDialog* dialog) : dialog(dialog)
{
    znt::letButtonsWrap(*dialog);
    QObject::connect(dialog, &QDialog::finished, dialog, [this] {
        if (QWidget* window = this->dialog->parentWidget())
            window->activateWindow();
        if (opener)
            opener->setFocus(Qt::OtherFocusReason);
        opener.clear();
    });
}

void ZNTQtSheet::show()
{
    if (!dialog)
        return;
    if (!dialog->isVisible()) {
        opener = QApplication::focusWidget();
        QWidget* window = QApplication::activeWindow();
        if (window && window != dialog && window != dialog->parentWidget())
            dialog->setParent(window, dialog->windowFlags());
        znt::fitToScreen(*dialog);
        dialog->open();
    }
    dialog->raise();
    dialog->activateWindow();
}

void ZNTQtSheet::close()
{
    if (dialog && dialog->isVisible())
        dialog->done(QDialog::Accepted);
}
