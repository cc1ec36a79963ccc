#pragma once

#include "ZNTClientActions.h"
#include "ZNTDirections.h"

#include <QHash>
#include <QList>
#include <array>

class QAction;
class QMainWindow;
class QMenu;

/// The menus of the main window, made from the table of the client's actions. A direction's action is named
/// "goNorth", a line's "line1". Its "What's this?" text is the row's help, else its title. What an action
/// does is wired elsewhere.
class ZNTMainMenu
{
public:
    explicit ZNTMainMenu(QMainWindow& window);

    /// The action of a row. Null for the rows of directions, lines and macros, which make several, and for
    /// those of the terminal alone.
    [[nodiscard]] QAction* operator[](ZNTActionName name) const { return actions[name.index()]; }
    [[nodiscard]] const std::array<QAction*, ZNTDirections.size()>& directions() const { return directions_; }
    /// Says the last line, the one before it, and so on.
    [[nodiscard]] const std::array<QAction*, znt::numberedLines>& lines() const { return lines_; }

    /// Runs the first macro of the list, the second one, and so on.
    [[nodiscard]] const std::array<QAction*, znt::numberedMacros>& macros() const { return macros_; }

    /// For each action that is enabled in that state of the session alone.
    void enable(ZNTClientAction::Enabled state, bool isEnabled);

    /// The menus of the menu bar, in order.
    [[nodiscard]] const QList<QMenu*>& menus() const { return menus_; }

private:
    QMenu& menuAt(QMainWindow& window, const QString& path);
    void add(QMenu& menu, std::size_t index);
    QAction* add(QMenu& menu, const QString& name, const QString& title, const QString& keys,
                 ZNTClientAction::Enabled enabled);
    void addDirections(QMenu& menu, const ZNTClientAction& row);
    void addLines(QMenu& menu, const ZNTClientAction& row);
    void addMacros(QMenu& menu, const ZNTClientAction& row);
    static void makeChoice(QMenu& menu, QAction& action);

    std::array<QAction*, znt::clientActions.size()> actions{};
    std::array<QAction*, ZNTDirections.size()> directions_{};
    std::array<QAction*, znt::numberedLines> lines_{};
    std::array<QAction*, znt::numberedMacros> macros_{};
    QHash<ZNTClientAction::Enabled, QList<QAction*>> byState;
    QHash<QString, QMenu*> byPath;
    QList<QMenu*> menus_;
};
