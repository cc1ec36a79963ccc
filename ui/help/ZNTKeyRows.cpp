#include "ZNTKeyRows.h"

#include "ZNTMainMenu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <array>

namespace
{

struct Naming {
    const char* sign;
    const char* name;
};

/// Qt's names of keys that are no words.
constexpr std::array keyNames{Naming{"Num+", "keypad "}, Naming{"PgUp", "Page Up"},
                              Naming{"PgDown", "Page Down"}};

/// Voices leave these out.
constexpr std::array signNames{Naming{",", "comma"}, Naming{".", "period"}, Naming{"+", "plus"},
                               Naming{"-", "minus"}, Naming{"=", "equals"}};

/// Keys that are in no menu.
struct OtherKey {
    const char* what;
    const char* keys;
    const char* place;
};

constexpr std::array otherKeys{
    OtherKey{"Send the line", "Return", "Command line"},
    OtherKey{"Bring back the last command", "Up", "Command line"},
    OtherKey{"Page through the output", "Page Up or Page Down", "Command line"},
    OtherKey{"Move the caret", "Arrows, Home or End", "Output"},
    OtherKey{"Select", "Shift+Arrows", "Output"},
    OtherKey{"Go on typing in the command line", "Any letter", "Output"},
    OtherKey{"Go to a row", "Its first letters", "Lists"},
    OtherKey{"Edit a cell", "F2", "Lists"},
    OtherKey{"Set a mark", "Space", "Lists"},
    OtherKey{"Leave the list", "Tab", "Lists"},
    OtherKey{"Run the selected macro", "Return", "Macro list"},
    OtherKey{"Run one of the first nine macros of the group", "Alt+1 to Alt+9", "Everywhere"},
    OtherKey{"Press a button", "Space or Return", "Buttons"},
    OtherKey{"Explain what has the focus", "Shift+F1", "Everywhere"},
    OtherKey{"Leave", "Escape", "Dialogs"},
};

const QString orBetween = QStringLiteral(" or ");

QString shownName(const QKeySequence& key)
{
    QString name = key.toString(QKeySequence::NativeText);
    for (const auto& [sign, word] : keyNames)
        name.replace(QLatin1String(sign), QLatin1String(word));
    return name;
}

QString spokenName(QString key)
{
    for (const auto& [sign, word] : signNames)
        if (key == QLatin1String(sign) || key.endsWith(QLatin1Char('+') + QLatin1String(sign)) ||
            key.endsWith(QLatin1String("keypad ") + QLatin1String(sign))) {
            key.chop(1);
            return key + QLatin1String(word);
        }
    return key;
}

QString withoutMnemonic(QString title)
{
    if (title.endsWith(QLatin1String("...")))
        title.chop(3);
    return title.remove(QLatin1Char('&'));
}

ZNTKeyRow newKeyRow(const QString& what, const QStringList& keys, const QString& place)
{
    QStringList spoken;
    for (const QString& key : keys)
        spoken << spokenName(key);
    return {what, keys.join(orBetween), spoken.join(orBetween), place};
}

void addRows(const QMenu& menu, const QString& place, QList<ZNTKeyRow>& rows)
{
    for (const QAction* action : menu.actions()) {
        if (action->menu()) {
            addRows(*action->menu(), place + QStringLiteral(", ") + withoutMnemonic(action->text()), rows);
            continue;
        }
        QStringList keys;
        for (const QKeySequence& key : action->shortcuts())
            keys << shownName(key);
        if (!keys.isEmpty())
            rows << newKeyRow(withoutMnemonic(action->text()), keys, place);
    }
}

/// "Ctrl + K" is as good as "ctrl+k".
QString plain(const QString& words)
{
    static const QRegularExpression spaceAroundPlus(QStringLiteral("\\s*\\+\\s*(?=\\S)"));
    return words.simplified().toLower().replace(spaceAroundPlus, QStringLiteral("+"));
}

bool isKey(const QString& words)
{
    static const QRegularExpression key(QStringLiteral("^(f\\d+|(ctrl|shift|alt)\\+.+)$"));
    return key.match(words).hasMatch();
}

bool hasKey(const ZNTKeyRow& row, const QString& key)
{
    return row.keys.toLower().split(orBetween).contains(key) ||
           row.spoken.toLower().split(orBetween).contains(key);
}

} // namespace

QList<ZNTKeyRow> znt::keyRows(const ZNTMainMenu& menu)
{
    QList<ZNTKeyRow> rows;
    for (const QMenu* each : menu.menus())
        addRows(*each, withoutMnemonic(each->title()) + QStringLiteral(" menu"), rows);
    for (const auto& [what, keys, place] : otherKeys)
        rows << newKeyRow(QString::fromLatin1(what), QString::fromLatin1(keys).split(orBetween),
                          QString::fromLatin1(place));
    return rows;
}

bool znt::isWanted(const ZNTKeyRow& row, const QString& words)
{
    const QString wanted = plain(words);
    if (isKey(wanted))
        return hasKey(row, wanted);
    const QString all = (row.what + QLatin1Char(' ') + row.keys + QLatin1Char(' ') + row.spoken +
                         QLatin1Char(' ') + row.place)
                            .toLower();
    return std::ranges::all_of(wanted.split(QLatin1Char(' '), Qt::SkipEmptyParts),
                               [&](const QString& word) { return all.contains(word); });
}
