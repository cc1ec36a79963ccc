#include "ZNTTypingHelp.h"

#include "ZNTAnnouncement.h"
#include "ZNTCommandLine.h"
#include "ZNTOutputView.h"
#include "ZNTQtText.h"
#include "ZNTSentLines.h"
#include "ZNTSentLinesPicker.h"

#include <utility>

namespace
{

constexpr std::size_t mostLinesToPick = 5000; // more than anybody reads, and listed at once

} // namespace

ZNTTypingHelp::ZNTTypingHelp(QWidget& window, ZNTCommandLine& line, const ZNTOutputView& output,
                             std::function<std::vector<std::u16string>()> names)
    : window(window),
      line(line),
      output(output),
      names(std::move(names))
{
}

bool ZNTTypingHelp::isTypingHidden() const
{
    if (line.echoMode() == QLineEdit::Normal)
        return false;
    znt::announce(ZNTAnnouncement::Answer, {QStringLiteral("Typing is hidden")});
    return true;
}

void ZNTTypingHelp::showSentLines()
{
    if (picker || !line.isEnabled() || isTypingHidden())
        return;
    QStringList lines;
    for (const auto& sent : znt::newestSentLines(output.store(), mostLinesToPick))
        lines << znt::qtText(sent);
    picker = new ZNTSentLinesPicker(window, std::move(lines), [this](const QString& picked) {
        if (line.echoMode() != QLineEdit::Normal) // the game has asked for a password meanwhile
            return;
        line.setFocus(Qt::OtherFocusReason);
        line.selectAll(); // so that Undo brings back what was typed
        line.insert(picked);
    });
    picker->open();
    picker->activateWindow();
}

void ZNTTypingHelp::completeWord()
{
    if (!line.isEnabled() || isTypingHidden())
        return;
    line.setFocus(Qt::ShortcutFocusReason);
    line.deselect(); // what the focus may have selected
    const auto typed = znt::textOfQt(line.text());
    const auto caret = static_cast<std::size_t>(line.cursorPosition());
    const auto completed = completion.next({typed, caret}, [this](std::u16string_view beginning) {
        return znt::wordsThatBegin(beginning, output.store(), names());
    });
    if (!completed) {
        znt::announce(ZNTAnnouncement::Answer, {QStringLiteral("No word fits")});
        return;
    }
    line.setSelection(0, static_cast<int>(caret));
    line.insert(znt::qtText(completed->line.text.substr(0, completed->line.caret)));
    znt::announce(ZNTAnnouncement::Completed, {znt::qtText(completed->word)});
}
