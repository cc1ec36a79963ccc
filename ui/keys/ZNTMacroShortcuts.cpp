#include "ZNTMacroShortcuts.h"

#include "ZNTKeyOwners.h"
#include "ZNTQtText.h"

#include <QAction>
#include <QWidget>
#include <utility>

ZNTMacroShortcuts::ZNTMacroShortcuts(QWidget& window, const ZNTFilePlaces& places, ZNTPlatformLog& log,
                                     Macros macros)
    : window(window),
      keys(places, log),
      macros(std::move(macros))
{
    makeActions();
}

ZNTMacroShortcuts::~ZNTMacroShortcuts() { qDeleteAll(actions); }

void ZNTMacroShortcuts::makeActions()
{
    qDeleteAll(std::exchange(actions, {}));
    clash_.clear();
    for (const ZNTMacroKey& each : keys.all()) {
        const auto key =
            QKeySequence::fromString(QString::fromStdString(each.key), QKeySequence::PortableText);
        if (key.count() != 1 || znt::isKeyForTyping(key[0])) // somebody has edited the file
            continue;
        if (!isFree(each, key))
            continue;
        auto* action = new QAction(&window);
        action->setObjectName(QStringLiteral("macroKey%1").arg(each.macro));
        action->setShortcut(key);
        QObject::connect(action, &QAction::triggered, action,
                         [this, macro = each.macro] { macros.run(macro); });
        window.addAction(action);
        actions.insert(each.macro, action);
    }
}

/// Two owners of a key would keep each other from acting.
bool ZNTMacroShortcuts::isFree(const ZNTMacroKey& given, const QKeySequence& key)
{
    const QString owner = znt::ownerOfKey(window, key[0]);
    if (owner.isEmpty())
        return true;
    if (const auto name = macros.name(given.macro))
        clash_ = znt::textOfQt(QStringLiteral("%1 belongs to %2, so the macro %3 needs another key.")
                                   .arg(key.toString(QKeySequence::NativeText), owner, *name));
    return false;
}

QKeySequence ZNTMacroShortcuts::keyOf(std::int64_t macro) const
{
    const QAction* action = actions.value(macro);
    return action ? action->shortcut() : QKeySequence();
}

QString ZNTMacroShortcuts::refusal(QKeyCombination key, std::int64_t macro) const
{
    const QString why = whyTaken(key, macro);
    if (why.isEmpty())
        return {};
    const QKeySequence free = freeKey(macro);
    return free.isEmpty() ? why
                          : why + QLatin1Char(' ') + free.toString(QKeySequence::NativeText) +
                                QStringLiteral(" is free.");
}

/// Most function keys have a meaning, so a player would try many before one is taken.
QKeySequence ZNTMacroShortcuts::freeKey(std::int64_t macro) const
{
    for (const auto modifiers : {Qt::NoModifier, Qt::ControlModifier, Qt::AltModifier})
        for (int number = Qt::Key_F1; number <= Qt::Key_F12; ++number) {
            const QKeyCombination key(modifiers, static_cast<Qt::Key>(number));
            if (keyOf(macro) != QKeySequence(key) && whyTaken(key, macro).isEmpty())
                return key;
        }
    return {};
}

QString ZNTMacroShortcuts::whyTaken(QKeyCombination key, std::int64_t macro) const
{
    for (auto each = actions.constBegin(); each != actions.constEnd(); ++each) {
        if (each.key() == macro || each.value()->shortcut() != QKeySequence(key))
            continue;
        if (const auto name = macros.name(each.key())) // the key of a macro that is gone is free
            return each.value()->shortcut().toString(QKeySequence::NativeText) +
                   QStringLiteral(" belongs to the macro ") + *name + QLatin1Char('.');
    }
    return znt::refusalOfKey(window, key); // which finds no words for the actions of macros
}

ZNTResult<void> ZNTMacroShortcuts::give(std::int64_t macro, const QKeySequence& key)
{
    if (key == keyOf(macro))
        return {};
    auto given = keys.give(macro, key.toString(QKeySequence::PortableText).toStdString());
    if (given)
        makeActions();
    return given;
}
