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

/// Pressing the button triggers the action, whose "What's this?" text it has, too. Its enabled state is not
/// joined: if a button needs a connection, the session sets that.
inline void joinButton(QAbstractButton* button, QAction* action)
{
    QObject::connect(button, &QAbstractButton::clicked, action, &QAction::trigger);
    button->setWhatsThis(action->whatsThis());
}

} // namespace znt
