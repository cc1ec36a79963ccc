#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QPushButton>
#include <functional>
#include <utility>

// How actions are joined to what they do.
namespace znt
{

inline void whenTriggered(QAction* action, std::function<void()> task)
{
    QObject::connect(action, &QAction::triggered, action, [task = std::move(task)] { task(); });
}

inline void whenToggled(QAction* action, std::function<void(bool)> task)
{
    QObject::connect(action, &QAction::toggled, action, [task = std::move(task)](bool on) { task(on); });
}

/// Shows the action's key in the tool tip, after the tip's own words or else the action's. A screen reader
/// says the key alone, because the button's name has the words.
inline void tellKey(QAbstractButton& button, const QAction& action)
{
    const auto key = action.shortcut().isEmpty() ? button.shortcut() : action.shortcut();
    if (key.isEmpty() || !button.accessibleDescription().isEmpty())
        return;
    QString words = button.toolTip().isEmpty() ? action.text().remove(QLatin1Char('&')) : button.toolTip();
    while (words.endsWith(QLatin1Char('.')))
        words.chop(1);
    const QString name = key.toString(QKeySequence::NativeText);
    button.setToolTip(words + QStringLiteral(" (") + name + QLatin1Char(')'));
    button.setAccessibleDescription(name);
}

/// Pressing the button triggers the action, whose "What's this?" text it has, too. Its enabled state is not
/// joined: if a button needs a connection, the session sets that.
inline void joinButton(QAbstractButton* button, QAction* action)
{
    QObject::connect(button, &QAbstractButton::clicked, action, &QAction::trigger);
    button->setWhatsThis(action->whatsThis());
    if (qobject_cast<QPushButton*>(button)) // a box has its key in its words
        tellKey(*button, *action);
}

} // namespace znt
