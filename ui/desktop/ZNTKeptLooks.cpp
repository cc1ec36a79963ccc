#include "ZNTKeptLooks.h"

#include "ZNTMainMenu.h"
#include "ZNTMainWindow.h"
#include "ZNTOutputView.h"
#include "ZNTQtText.h"
#include "ZNTServerConnectController.h"
#include "ZNTSettingsKeeper.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <optional>
#include <span>
#include <utility>

namespace
{

constexpr std::chrono::seconds betweenWrites{1};

/// Before the object name of a window, the name of its place.
constexpr std::string_view placePrefix = "place of ";

/// An action of the menus that makes a value. A switch has one row, for "on"; it is "off" otherwise.
struct ChoiceOfMenu {
    std::string_view value;
    ZNTActionName action;
};

constexpr std::array colourChoices{ChoiceOfMenu{"system", "systemColours"},
                                   ChoiceOfMenu{"light", "lightColours"}, ChoiceOfMenu{"dark", "darkColours"},
                                   ChoiceOfMenu{"high-contrast", "highContrastColours"}};
constexpr std::array readableColours{ChoiceOfMenu{"on", "readableColours"}};
constexpr std::array fieldsWhilePlaying{ChoiceOfMenu{"on", "showFieldsWhilePlaying"}};
constexpr std::array connectionRow{ChoiceOfMenu{"on", "showConnectionRow"}};
constexpr std::array sidePanel{ChoiceOfMenu{"on", "showSidePanel"}};
constexpr std::array keypadWalks{ChoiceOfMenu{"on", "keypadWalks"}};

using Parts = ZNTKeptLooks::Parts;

/// Either it is chosen in the menus, or it is read from the window. `use` answers whether the text is good.
struct LookRow {
    std::string_view name;
    std::span<const ChoiceOfMenu> choices = {};
    std::string (*read)(const Parts& parts) = nullptr;
    bool (*use)(const Parts& parts, const std::string& text) = nullptr;
};

std::string textOf(double number) { return QString::number(number, 'g', 6).toStdString(); }

std::optional<double> numberIn(std::string_view text, double least, double most)
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isGood = error == std::errc() && end == text.data() + text.size();
    return isGood && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

std::optional<double> pointsIn(std::string_view text)
{
    return numberIn(text, ZNTOutputView::smallestPointSize, ZNTOutputView::largestPointSize);
}

/// "12 Menlo".
std::string fontOf(const Parts& parts)
{
    const QFont font = parts.window.textFromServer->textFont();
    const QString family = font.families().isEmpty() ? font.family() : font.families().constFirst();
    return textOf(font.pointSizeF()) + ' ' + family.toStdString();
}

/// As the font panel does: for the measure of the grid, and for text that comes.
bool useFont(const Parts& parts, const std::string& text)
{
    const auto blank = std::min(text.find(' '), text.size());
    const auto points = pointsIn(std::string_view(text).substr(0, blank));
    const auto family = QString::fromStdString(text.substr(blank)).trimmed();
    if (!points || family.isEmpty())
        return false;
    QFont font = parts.window.textFromServer->textFont();
    font.setFamilies({family});
    font.setPointSizeF(*points);
    parts.window.textFromServer->setTextFont(font);
    parts.session.changeFont({znt::textOfQt(family), *points});
    return true;
}

std::string textSizeOf(const Parts& parts) { return textOf(parts.window.textFromServer->pointSize()); }

bool useTextSize(const Parts& parts, const std::string& text)
{
    const auto points = pointsIn(text);
    if (points)
        parts.window.textFromServer->setPointSize(*points);
    return points.has_value();
}

std::string controlsSizeOf(const Parts&) { return textOf(QApplication::font().pointSizeF()); }

bool useControlsSize(const Parts&, const std::string& text)
{
    const auto points = pointsIn(text);
    if (!points)
        return false;
    QFont font = QApplication::font();
    font.setPointSizeF(*points);
    QApplication::setFont(font);
    return true;
}

constexpr int widestPanel = 10'000;

std::string panelWidthOf(const Parts& parts) { return std::to_string(parts.window.chosenPanelWidth()); }

bool usePanelWidth(const Parts& parts, const std::string& text)
{
    const auto width = numberIn(text, 0, widestPanel);
    if (width && *width > 0)
        parts.window.choosePanelWidth(static_cast<int>(*width));
    return width.has_value();
}

/// One that exists.
std::string macroGroupOf(const Parts& parts)
{
    const QComboBox& box = *parts.window.macroComboBoxGroup;
    const int row = box.findText(box.currentText(), Qt::MatchExactly | Qt::MatchCaseSensitive);
    return row < 0 ? std::string() : box.itemText(row).toStdString();
}

/// The group may have been deleted meanwhile, for instance in the terminal client.
bool useMacroGroup(const Parts& parts, const std::string& text)
{
    QComboBox& box = *parts.window.macroComboBoxGroup;
    const int row = box.findText(QString::fromStdString(text), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (row >= 0)
        box.setCurrentIndex(row);
    return true;
}

/// All that is kept, besides the places of windows, in the order in which it is restored.
constexpr std::array lookRows{
    LookRow{.name = "colours", .choices = colourChoices},
    LookRow{.name = "readable-colours", .choices = readableColours},
    LookRow{.name = "font", .read = fontOf, .use = useFont},
    LookRow{.name = "text-size", .read = textSizeOf, .use = useTextSize},
    LookRow{.name = "controls-size", .read = controlsSizeOf, .use = useControlsSize},
    LookRow{.name = "fields-while-playing", .choices = fieldsWhilePlaying}, // which brings the row, too
    LookRow{.name = "connection-row", .choices = connectionRow},
    LookRow{.name = "side-panel", .choices = sidePanel},
    LookRow{.name = "side-panel-width", .read = panelWidthOf, .use = usePanelWidth},
    LookRow{.name = "keypad-walks", .choices = keypadWalks},
    LookRow{.name = "macro-group", .read = macroGroupOf, .use = useMacroGroup},
};

std::string chosenIn(const ZNTMainMenu& menu, const LookRow& row)
{
    for (const auto& choice : row.choices)
        if (menu[choice.action]->isChecked())
            return std::string(choice.value);
    return "off";
}

/// Triggers the action as the player does, so that all that is joined to it follows.
bool choose(const ZNTMainMenu& menu, const LookRow& row, std::string_view text)
{
    const bool isSwitchOff = row.choices.size() == 1 && text == "off";
    const auto found = std::ranges::find(row.choices, text, &ChoiceOfMenu::value);
    if (!isSwitchOff && found == row.choices.end())
        return false;
    QAction* action = menu[isSwitchOff ? row.choices.front().action : found->action];
    if (action->isChecked() == isSwitchOff)
        action->trigger();
    return true;
}

void logDamage(ZNTPlatformLog& log, std::string_view name, const std::string& text)
{
    constexpr std::size_t longest = 80;
    log.log("The remembered \"" + std::string(name) + "\" is damaged and was not used: \"" +
            text.substr(0, longest) + "\".");
}

} // namespace

ZNTKeptLooks::ZNTKeptLooks(const Parts& parts)
    : parts(parts),
      places(parts.window, [this] { return this->parts.keeper.isRemembering(); })
{
    saveTimer.setSingleShot(true);
    saveTimer.setInterval(betweenWrites);
    connect(&saveTimer, &QTimer::timeout, this, [this] { save(); });
}

ZNTKeptLooks::~ZNTKeptLooks()
{
    parts.keeper.whenRemembering = nullptr;
    save();
}

void ZNTKeptLooks::restore()
{
    for (const auto& row : lookRows)
        usual[std::string(row.name)] = row.read ? row.read(parts) : chosenIn(parts.menu, row);
    chosen = usual;
    stored = usual;
    watchChoices();
    const auto& kept = parts.keeper.looks();
    usePlaces(kept); // first, since a panel takes its width from the window's
    for (const auto& row : lookRows) {
        const auto found = kept.find(row.name);
        if (found == kept.end())
            continue;
        const auto& text = found->second;
        if (!(row.read ? row.use(parts, text) : choose(parts.menu, row, text)))
            logDamage(parts.log, row.name, text);
    }
    for (const auto& [name, text] : kept)
        stored.insert_or_assign(name, text);
    saveTimer.stop(); // nothing was changed by the player
    parts.keeper.whenRemembering = [this] {
        stored = usual; // the file has just begun
        save();
    };
}

void ZNTKeptLooks::usePlaces(const ZNTSettingValues& kept)
{
    ZNTWindowPlaces::Places found;
    for (const auto& [name, text] : kept) {
        if (!name.starts_with(placePrefix))
            continue;
        if (const auto place = znt::placeIn(text))
            found.emplace(name.substr(placePrefix.size()), *place);
        else
            logDamage(parts.log, name, text);
    }
    places.usePlaces(found);
}

/// The program switches some of these by itself, for instance in a narrow window. Only what the player does
/// triggers an action.
void ZNTKeptLooks::watchChoices()
{
    for (const auto& row : lookRows)
        for (const auto& choice : row.choices)
            connect(parts.menu[choice.action], &QAction::triggered, this, [this, &row] {
                chosen.insert_or_assign(std::string(row.name), chosenIn(parts.menu, row));
                noteChange();
            });
    connect(parts.window.textFromServer, &ZNTOutputView::shownFontChanged, this, [this] { noteChange(); });
    connect(parts.window.macroComboBoxGroup, &QComboBox::editTextChanged, this, [this] { noteChange(); });
    parts.window.whenPanelWidthChosen = [this] { noteChange(); };
    places.whenChanged = [this] { noteChange(); };
}

void ZNTKeptLooks::noteChange()
{
    if (!saveTimer.isActive() && parts.keeper.isRemembering())
        saveTimer.start();
}

ZNTSettingValues ZNTKeptLooks::now() const
{
    ZNTSettingValues values = chosen;
    for (const auto& row : lookRows)
        if (row.read)
            values.insert_or_assign(std::string(row.name), row.read(parts));
    for (const auto& [name, place] : places.places())
        values.insert_or_assign(std::string(placePrefix) + name, znt::textOfPlace(place));
    return values;
}

void ZNTKeptLooks::save()
{
    saveTimer.stop();
    if (!parts.keeper.isRemembering())
        return;
    auto values = now();
    for (const auto& [name, text] : stored) // a place that was forgotten is removed
        if (name.starts_with(placePrefix) && znt::placeIn(text))
            values.try_emplace(name);
    std::erase_if(values, [this](const auto& value) {
        const auto known = stored.find(value.first);
        return known != stored.end() && known->second == value.second;
    });
    parts.keeper.keepLooks(values);
    for (auto& [name, text] : values)
        stored.insert_or_assign(name, std::move(text));
}
