#include "ZNTGameSettingsSheet.h"

#include "ZNTControlHelp.h"
#include "ZNTKnownGames.h"
#include "ZNTMudList.h"
#include "ZNTMudListHost.h"
#include "ZNTQtText.h"
#include "ZNTSettingsKeeper.h"
#include "ZNTText.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

namespace
{

/// The settings of the sheet, in its order, with the words beside their fields.
constexpr std::pair<std::string_view, const char*> fieldsOfSheet[]{{"encoding", "&Encoding"},
                                                                   {znt::standardTelnet, "&Standard telnet"},
                                                                   {"compression", "C&ompression"},
                                                                   {"sounds", "So&unds"}};

/// Every text that the setting may have, with its words.
std::vector<std::pair<QString, QString>> choicesOf(const ZNTSettingRow& row)
{
    if (std::holds_alternative<bool ZNTSettings::*>(row.field))
        return {{QStringLiteral("on"), QStringLiteral("On")}, {QStringLiteral("off"), QStringLiteral("Off")}};
    std::vector<std::pair<QString, QString>> choices;
    for (const auto& encoding : ZNTStringEncodings) {
        const QString name = znt::latinText(encoding.name);
        choices.emplace_back(name, encoding.title.empty() ? name.toUpper() : znt::qtText(encoding.title));
    }
    return choices;
}

} // namespace

ZNTGameSettingsSheet::ZNTGameSettingsSheet(QWidget& window, ZNTMudListHost& host)
    : host(host),
      dialog(new ZNTSheetDialog(&window)),
      theSheet((layout.setupUi(dialog), dialog))
{
    makeFields();
    dialog->whenCancelled = [this] { theSheet.close(); };
    QObject::connect(layout.closeSettingsButton, &QPushButton::clicked, dialog, [this] { theSheet.close(); });
    znt::explainControls(*dialog);
}

void ZNTGameSettingsSheet::makeFields()
{
    for (const auto& [name, words] : fieldsOfSheet) {
        const ZNTSettingRow* row = znt::settingNamed(name);
        auto* box = new QComboBox(layout.content);
        box->setObjectName(znt::latinText(name));
        box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        box->setToolTip(znt::latinText(row->sentence));
        box->setAccessibleDescription(znt::latinText(row->sentence));
        layout.fields->addRow(QString::fromLatin1(words), box);
        if (!fields.empty())
            QWidget::setTabOrder(fields.back().box, box);
        fields.push_back({box, row});
        QObject::connect(box, &QComboBox::currentIndexChanged, dialog, [this, box, row] {
            host.chooseSettingForGame(game, row->name, box->currentData().toString().toStdString());
        });
    }
    QWidget::setTabOrder(fields.back().box, layout.closeSettingsButton);
}

void ZNTGameSettingsSheet::fill(QComboBox& box, const ZNTSettingRow& row) const
{
    const auto choices = choicesOf(row);
    const QString usual =
        QString::fromStdString(znt::settingText(host.settings().usualSettingsOf(game), row));
    const auto words = std::ranges::find(choices, usual, &std::pair<QString, QString>::first);
    const QSignalBlocker blocker(box);
    box.clear();
    box.addItem(QStringLiteral("Usual: %1").arg(words == choices.end() ? usual : words->second), QString());
    for (const auto& [text, wordsOfChoice] : choices)
        box.addItem(wordsOfChoice, text);
    const auto chosen = QString::fromStdString(host.settings().chosenForGame(game, row.name));
    box.setCurrentIndex(std::max(0, box.findData(chosen)));
}

void ZNTGameSettingsSheet::showFor(const ZNTMudList& shownGame)
{
    game = znt::gameKey(znt::utf8FromText(shownGame.telnetURL), std::to_string(shownGame.port));
    const QString name = znt::qtText(shownGame.name);
    dialog->setWindowTitle(QStringLiteral("Settings of %1").arg(name));
    layout.intro->setText(
        QStringLiteral("These count for %1 only. \"Usual\" is what comes with Zantor for this game, or "
                       "else what you chose for all games.")
            .arg(name));
    layout.howLong->setText(
        host.settings().isRemembering()
            ? QStringLiteral("Takes effect at once, and is remembered.")
            : QStringLiteral("Takes effect at once, and holds until Zantor ends. To keep it longer, set "
                             "\"Remember my settings\" in the preferences."));
    for (const Field& field : fields)
        fill(*field.box, *field.row);
    theSheet.show();
    fields.front().box->setFocus();
}
