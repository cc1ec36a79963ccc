#include "ZNTTextListEditor.h"

#include <QStringList>

namespace
{

constexpr int linesShown = 3, columnsShown = 64, leastColumns = 24;

} // namespace

ZNTTextListEditor::ZNTTextListEditor(QWidget* parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

std::vector<std::string> ZNTTextListEditor::texts() const
{
    std::vector<std::string> texts;
    for (const QString& line : toPlainText().split(u'\n'))
        texts.push_back(line.toStdString());
    return texts;
}

void ZNTTextListEditor::show(const std::vector<std::string>& texts)
{
    if (document()->isModified())
        return;
    QStringList lines;
    for (const auto& text : texts)
        lines << QString::fromStdString(text);
    if (const QString joined = lines.join(u'\n'); joined != toPlainText())
        setPlainText(joined);
}

QSize ZNTTextListEditor::sizeOf(int columns) const
{
    const int margins = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
    return {fontMetrics().averageCharWidth() * columns + margins,
            fontMetrics().lineSpacing() * linesShown + margins};
}

QSize ZNTTextListEditor::sizeHint() const { return sizeOf(columnsShown); }

QSize ZNTTextListEditor::minimumSizeHint() const { return sizeOf(leastColumns); }

void ZNTTextListEditor::focusOutEvent(QFocusEvent* event)
{
    QPlainTextEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) // its own menu
        takeChange();
}

void ZNTTextListEditor::hideEvent(QHideEvent* event)
{
    QPlainTextEdit::hideEvent(event);
    takeChange();
}

void ZNTTextListEditor::takeChange()
{
    if (!document()->isModified())
        return;
    document()->setModified(false);
    whenEdited();
}
