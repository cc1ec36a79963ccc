#include "ZNTMainMenu.h"

#include "ZNTQtText.h"
#include "ZNTWindowFit.h"

#include <QAction>
#include <QActionGroup>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace
{

using Kind = ZNTClientAction::Kind;

QList<QKeySequence> keysNamed(const QString& names)
{
    QList<QKeySequence> keys;
    for (const QString& name : names.split(QStringLiteral(" or "), Qt::SkipEmptyParts))
        keys << QKeySequence::fromString(name, QKeySequence::PortableText);
    return keys;
}

/// "&Game list..." as a sentence. Actions of the terminal, too, have a better one in their row.
QString sentenceOf(QString title)
{
    title.remove(QLatin1Char('&'));
    while (title.endsWith(QLatin1Char('.')))
        title.chop(1);
    return title + QLatin1Char('.');
}

} // namespace

ZNTMainMenu::ZNTMainMenu(QMainWindow& window)
{
    for (std::size_t index = 0; index < znt::clientActions.size(); ++index)
        if (const auto& row = znt::clientActions[index]; !row.menu.empty())
            add(menuAt(window, znt::latinText(row.menu)), index);
    for (QMenu* menu : window.menuBar()->findChildren<QMenu*>())
        QObject::connect(menu, &QMenu::aboutToShow, menu, [menu] { znt::shrinkFontToScreen(*menu); });
}

/// The menu of that path. It is made where a row names it first, so the rows' order is the menus' order.
QMenu& ZNTMainMenu::menuAt(QMainWindow& window, const QString& path)
{
    QMenu*& menu = byPath[path];
    if (menu)
        return *menu;
    const auto slash = path.lastIndexOf(QLatin1Char('/'));
    if (slash < 0) {
        menu = window.menuBar()->addMenu(path);
        menu->setAccessibleName(QString(path).remove(QLatin1Char('&')));
        menus_ << menu;
        return *menu;
    }
    QMenu* made = menuAt(window, path.left(slash)).addMenu(path.mid(slash + 1));
    made->setAccessibleName(made->title().remove(QLatin1Char('&')));
    return *(byPath[path] = made); // the table may have grown meanwhile
}

void ZNTMainMenu::add(QMenu& menu, std::size_t index)
{
    const ZNTClientAction& row = znt::clientActions[index];
    if (row.startsGroup)
        menu.addSeparator();
    if (row.kind == Kind::Directions) {
        addDirections(menu, row);
        return;
    }
    if (row.kind == Kind::Lines) {
        addLines(menu, row);
        return;
    }
    if (row.kind == Kind::Macros) {
        addMacros(menu, row);
        return;
    }
    QAction* action =
        add(menu, znt::latinText(row.name), znt::latinText(row.title), znt::latinText(row.keys), row.enabled);
    action->setCheckable(row.kind != Kind::Command);
    if (row.kind == Kind::SwitchedOn)
        action->setChecked(true);
    if (row.kind == Kind::Choice)
        makeChoice(menu, *action);
    if (!row.help.empty())
        action->setWhatsThis(znt::qtText(row.help));
    actions[index] = action;
}

QAction* ZNTMainMenu::add(QMenu& menu, const QString& name, const QString& title, const QString& keys,
                          ZNTClientAction::Enabled enabled)
{
    QAction* action = menu.addAction(title);
    action->setObjectName(name);
    action->setWhatsThis(sentenceOf(title));
    action->setShortcuts(keysNamed(keys));
    action->setMenuRole(QAction::NoRole);
    byState[enabled] << action;
    return action;
}

void ZNTMainMenu::addDirections(QMenu& menu, const ZNTClientAction& row)
{
    for (std::size_t index = 0; index < ZNTDirections.size(); ++index) {
        const ZNTDirectionRow& way = ZNTDirections[index];
        directions_[index] =
            add(menu, znt::latinText(row.name) + znt::latinText(way.name), znt::latinText(way.menuTitle),
                znt::latinText(way.keypadKey) + QStringLiteral(" or ") + znt::latinText(way.otherKey),
                row.enabled);
    }
}

/// The last line has a title of its own.
void ZNTMainMenu::addLines(QMenu& menu, const ZNTClientAction& row)
{
    for (int number = 1; number <= znt::numberedLines; ++number)
        lines_[static_cast<std::size_t>(number - 1)] =
            add(menu, znt::latinText(row.name) + QString::number(number),
                number == 1 ? QStringLiteral("The last line (&1)") : znt::latinText(row.title).arg(number),
                znt::latinText(row.keys).arg(number), row.enabled);
}

void ZNTMainMenu::addMacros(QMenu& menu, const ZNTClientAction& row)
{
    for (int number = 1; number <= znt::numberedMacros; ++number)
        macros_[static_cast<std::size_t>(number - 1)] =
            add(menu, znt::latinText(row.name) + QString::number(number),
                znt::latinText(row.title).arg(number), znt::latinText(row.keys).arg(number), row.enabled);
}

void ZNTMainMenu::makeChoice(QMenu& menu, QAction& action)
{
    auto* choices = menu.findChild<QActionGroup*>(QString(), Qt::FindDirectChildrenOnly);
    const bool isFirst = choices == nullptr;
    if (isFirst)
        choices = new QActionGroup(&menu);
    choices->addAction(&action);
    if (isFirst)
        action.setChecked(true);
}

void ZNTMainMenu::enable(ZNTClientAction::Enabled state, bool isEnabled)
{
    for (QAction* action : byState.value(state))
        action->setEnabled(isEnabled);
}
