#include "ZNTMacroWiring.h"

#include "ZNTActionWiring.h"
#include "ZNTHintedTable.h"
#include "ZNTMainMenu.h"
#include "ZNTMainWindow.h"
#include "ZNTMudAppController.h"
#include "ZNTPlainKeys.h"
#include "ZNTQtText.h"

#include <QAction>
#include <QComboBox>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMenu>
#include <algorithm>
#include <utility>

using namespace znt;

namespace
{
/// Gives the window the keys of its actions that a field would take for moving its caret. Ctrl+E is an End
/// key on X11.
class ActionsFirst final : public QObject
{
public:
    ActionsFirst(QWidget& field, QList<const QAction*> actions) : QObject(&field), actions(std::move(actions))
    {
        field.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::ShortcutOverride)
            return QObject::eventFilter(watched, event);
        const QKeySequence key(static_cast<QKeyEvent*>(event)->keyCombination());
        const bool isOurs = std::ranges::any_of(
            actions, [&key](const QAction* action) { return action->shortcuts().contains(key); });
        if (isOurs)
            event->ignore(); // the shortcuts are asked then
        return isOurs;
    }

private:
    QList<const QAction*> actions;
};

constexpr qsizetype longestTitle = 40; ///< of a macro in the menu, in characters
} // namespace

ZNTMacroWiring::ZNTMacroWiring(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTMudAppController& controller)
    : window(window),
      menu(menu),
      controller(controller)
{
    wireGroups();
    wireList();
    wireNumbers();
    followSelection();
    showButtons();
}

void ZNTMacroWiring::wireGroups()
{
    auto& groups = controller.macroGroupDropDownController();
    joinButton(window.createNewMacroGroup, menu["createNewMacroGroup"]);
    joinButton(window.deleteMacroGroup, menu["deleteMacroGroup"]);
    whenTriggered(menu["createNewMacroGroup"], [&groups] { groups.createNewMacroGroup(); });
    whenTriggered(menu["deleteMacroGroup"], [&groups] { groups.deleteMacroGroup(); });
    new ZNTPlainKeys(*window.macroComboBoxGroup, {Qt::Key_Return, Qt::Key_Enter},
                     [&groups] { return groups.createNamedMacroGroup(); });
    new ActionsFirst(*window.macroComboBoxGroup, {menu["invokeMacro"], menu["addMacro"], menu["editMacro"]});
}

void ZNTMacroWiring::wireList()
{
    auto& macros = controller.mudMacroTableViewController();
    auto& session = controller.serverConnectController();
    joinButton(window.runMacro, menu["invokeMacro"]);
    joinButton(window.addMacro, menu["addMacro"]);
    joinButton(window.editMacro, menu["editMacro"]);
    joinButton(window.removeMacro, menu["removeMacro"]);
    whenTriggered(menu["invokeMacro"], [&session] { session.invokeMacro(); });
    whenTriggered(menu["addMacro"], [this] { controller.showZNTAddMacroViewController(); });
    whenTriggered(menu["editMacro"], [this] { controller.showZNTEditMacroViewController(); });
    whenTriggered(menu["removeMacro"], [&macros] { macros.removeItem(); });
    whenTriggered(menu["listMacros"],
                  [&session] { session.sendMessageToServer(u"~list-macro", /*ignoreSpecials=*/false); });
    // A double click or Return; some styles would take a single click for it.
    QObject::connect(window.macroTable, &QTableView::doubleClicked, menu["invokeMacro"],
                     [&session] { session.invokeMacro(); });
    new ZNTPlainKeys(*window.macroTable, {Qt::Key_Return, Qt::Key_Enter}, [&session] {
        session.invokeMacro();
        return true;
    });
}

void ZNTMacroWiring::wireNumbers()
{
    auto& macros = controller.mudMacroTableViewController();
    auto& session = controller.serverConnectController();
    for (std::size_t row = 0; row < menu.macros().size(); ++row)
        whenTriggered(menu.macros()[row], [&macros, &session, row] {
            const auto text = macros.textOfMacroAtIndex(static_cast<long>(row));
            if (text && session.isConnected())
                session.sendMessageToServer(*text, /*ignoreSpecials=*/false);
        });
    // Every change of the list reloads the model, which says so if there is a row, or if one has gone.
    const auto name = [this] { nameNumbers(); };
    QObject::connect(window.macroTable->model(), &QAbstractItemModel::dataChanged, &listener, name);
    QObject::connect(window.macroTable->model(), &QAbstractItemModel::rowsRemoved, &listener, name);
    nameNumbers();
}

/// The menu shows the macros by name.
void ZNTMacroWiring::nameNumbers()
{
    const auto& macros = controller.mudMacroTableViewController();
    const bool isConnected = controller.serverConnectController().isConnected();
    for (std::size_t row = 0; row < menu.macros().size(); ++row) {
        const auto macro = macros.getMacroAtIndex(static_cast<long>(row));
        const QString name = macro ? qtText(macro->name).simplified().left(longestTitle) : QString();
        const QString number = QString::number(row + 1);
        menu.macros()[row]->setText(name.isEmpty()
                                        ? QStringLiteral("Macro &%1 of the group").arg(number)
                                        : QLatin1Char('&') + number + QLatin1Char(' ') +
                                              QString(name).replace(QLatin1Char('&'), QStringLiteral("&&")));
        menu.macros()[row]->setIconText(
            QStringLiteral("Macro %1 of the group").arg(number)); // whose key it is
        menu.macros()[row]->setEnabled(macro && isConnected);
    }
    // Right would open a submenu with nothing to choose in it, where players want the next menu.
    const bool canRunOne = std::ranges::any_of(menu.macros(), &QAction::isEnabled);
    if (auto* submenu = qobject_cast<QMenu*>(menu.macros().front()->parent()))
        submenu->menuAction()->setEnabled(canRunOne);
}

void ZNTMacroWiring::followSelection()
{
    const auto show = [this] { showButtons(); };
    QObject::connect(window.macroTable->selectionModel(), &QItemSelectionModel::selectionChanged, &listener,
                     show);
    QObject::connect(window.macroTable->model(), &QAbstractItemModel::rowsRemoved, &listener, show);
}

void ZNTMacroWiring::showButtons()
{
    const bool isSelected = controller.mudMacroTableViewController().getCurrentSelectedMacroIndex() >= 0;
    const bool canRun = isSelected && controller.serverConnectController().isConnected();
    // A button that can do nothing any more would pass the focus on to whatever follows. In the list the
    // player can select the next macro.
    if (!isSelected && (window.removeMacro->hasFocus() || window.runMacro->hasFocus()))
        window.macroTable->setFocus(Qt::OtherFocusReason);
    menu["invokeMacro"]->setEnabled(canRun);
    menu["removeMacro"]->setEnabled(isSelected);
    window.runMacro->setEnabled(canRun);
    window.removeMacro->setEnabled(isSelected);
    nameNumbers();
}
