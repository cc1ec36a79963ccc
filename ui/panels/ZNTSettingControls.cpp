#include "ZNTSettingControls.h"

#include "ZNTAnnouncement.h"
#include "ZNTCheckBox.h"
#include "ZNTPlatform.h"
#include "ZNTPreferencesHost.h"
#include "ZNTSettingsKeeper.h"
#include "ZNTText.h"
#include "ZNTTextListEditor.h"
#include "ZNTWindowServices.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTimer>
#include <map>
#include <string>

namespace
{

QString textOf(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// One row with what its control shows and changes: the value in force, or that for all games.
struct Setting {
    const ZNTSettingRow& row;
    ZNTPreferencesHost& host;

    [[nodiscard]] bool isForAllGames() const { return !row.captionForAllGames.empty(); }
    [[nodiscard]] ZNTSettings values() const
    {
        return isForAllGames() ? host.settings().settingsForAllGames() : host.settings().settings();
    }
    void choose(const std::string& text) const
    {
        if (isForAllGames())
            host.chooseSettingForAllGames(row.name, text);
        else
            host.chooseSetting(row.name, text);
    }
    /// The name of the control: the sentence, unless the row has other words.
    [[nodiscard]] QString caption() const
    {
        if (isForAllGames())
            return textOf(row.captionForAllGames);
        auto caption = textOf(row.sentence);
        if (caption.endsWith(u'.'))
            caption.chop(1);
        return caption;
    }
    /// What the name does not say.
    [[nodiscard]] QString description() const
    {
        if (std::holds_alternative<ZNTTextList ZNTSettings::*>(row.field))
            return QStringLiteral("One a line; a pattern means what it means in a trigger.");
        return isForAllGames() ? textOf(row.sentence) : textOf(znt::followsInWords(row));
    }
};

struct MadeControl {
    QWidget* widget;
    std::function<void()> show; ///< what is in force now
};

MadeControl boxFor(const Setting& setting, bool ZNTSettings::*field, QBoxLayout& layout)
{
    auto* box = new ZNTCheckBox(layout.parentWidget());
    box->setObjectName(textOf(setting.row.name));
    box->setText(setting.caption());
    layout.insertWidget(layout.count() - 1, box);
    QObject::connect(box, &QCheckBox::toggled, box,
                     [setting](bool on) { setting.choose(on ? "on" : "off"); });
    return {box, [setting, box, field] {
                const QSignalBlocker blocker(box);
                box->setChecked(setting.values().*field);
            }};
}

/// Puts a control that shows no words of its own below the setting's, which may take several lines.
void addWithCaption(const Setting& setting, QWidget& control, QBoxLayout& layout)
{
    auto* line = new QHBoxLayout;
    auto* caption = new QLabel(setting.caption(), layout.parentWidget());
    caption->setWordWrap(true);
    control.setObjectName(textOf(setting.row.name));
    control.setAccessibleName(setting.caption());
    caption->setBuddy(&control);
    line->addWidget(&control);
    line->addStretch();
    layout.insertWidget(layout.count() - 1, caption);
    layout.insertLayout(layout.count() - 1, line);
}

MadeControl numberFieldFor(const Setting& setting, int ZNTSettings::*field, QBoxLayout& layout)
{
    auto* spin = new QSpinBox(layout.parentWidget());
    spin->setRange(setting.row.least, setting.row.most);
    addWithCaption(setting, *spin, layout);
    QObject::connect(spin, &QSpinBox::valueChanged, spin,
                     [setting](int value) { setting.choose(std::to_string(value)); });
    return {spin, [setting, spin, field] {
                const QSignalBlocker blocker(spin);
                spin->setValue(setting.values().*field);
            }};
}

/// A text that cannot be kept stays in the editor, and an alert says what is wrong with it. The alert waits
/// for the next turn: the editor may be left because its window closes.
void chooseList(const Setting& setting, ZNTTextListEditor& editor)
{
    const auto text = znt::joinedTexts(editor.texts());
    ZNTSettings tried;
    const auto changed = znt::changeSetting(tried, setting.row.name, text);
    editor.document()->setModified(!changed);
    if (changed)
        setting.choose(text);
    else
        QTimer::singleShot(0, &editor,
                           [&alert = setting.host.services().platform.alert,
                            sentence = znt::textFromUtf8(changed.error().description)] {
                               alert.showMessage(u"The list cannot be kept.", sentence);
                           });
}

MadeControl listEditorFor(const Setting& setting, ZNTTextList ZNTSettings::*field, QBoxLayout& layout,
                          QObject& life)
{
    auto* caption = new QLabel(setting.caption(), layout.parentWidget());
    auto* editor = new ZNTTextListEditor(layout.parentWidget());
    editor->setObjectName(textOf(setting.row.name));
    editor->setAccessibleName(setting.caption());
    caption->setBuddy(editor);
    caption->setWordWrap(true);
    layout.insertWidget(layout.count() - 1, caption);
    layout.insertWidget(layout.count() - 1, editor);
    editor->whenEdited = [setting, editor, alive = QPointer<QObject>(&life)] {
        if (alive)
            chooseList(setting, *editor);
    };
    return {editor, [setting, editor, field] { editor->show(setting.values().*field); }};
}

MadeControl choiceFor(const Setting& setting, QBoxLayout& layout)
{
    auto* box = new QComboBox(layout.parentWidget());
    for (const auto& choice : znt::choicesOf(setting.row))
        box->addItem(textOf(choice.words), textOf(choice.name));
    addWithCaption(setting, *box, layout);
    // Orca asks for the choice in the list that opens, which Qt makes later. It says a description.
    const auto describe = [box] { box->setAccessibleDescription(box->currentText()); };
    QObject::connect(box, &QComboBox::currentIndexChanged, box, [setting, box, describe] {
        describe();
        znt::announce(ZNTAnnouncement::Mark, {box->currentText()}); // a reader says no new choice either
        setting.choose(box->currentData().toString().toStdString());
    });
    return {box, [setting, box, describe] {
                const QSignalBlocker blocker(box);
                box->setCurrentIndex(box->findData(textOf(znt::settingText(setting.values(), setting.row))));
                describe();
            }};
}

/// An encoding is picked among its buttons.
MadeControl controlFor(const Setting& setting, QBoxLayout& layout, QObject& life)
{
    if (const auto* isOn = std::get_if<bool ZNTSettings::*>(&setting.row.field))
        return boxFor(setting, *isOn, layout);
    if (const auto* number = std::get_if<int ZNTSettings::*>(&setting.row.field))
        return numberFieldFor(setting, *number, layout);
    if (const auto* list = std::get_if<ZNTTextList ZNTSettings::*>(&setting.row.field))
        return listEditorFor(setting, *list, layout, life);
    if (!znt::choicesOf(setting.row).empty())
        return choiceFor(setting, layout);
    return {nullptr, {}};
}

} // namespace

void ZNTSettingControls::make(ZNTPreferencesHost& host, const TabOf& tabOf)
{
    std::map<ZNTSettingTab, QWidget*> lastMade;
    for (const auto& row : ZNTSettingsTable) {
        if (row.hasOwnControl)
            continue;
        const auto tab = tabOf(row.tab);
        const Setting setting{row, host};
        const auto made = controlFor(setting, *tab.layout, life);
        if (!made.widget)
            continue;
        made.widget->setToolTip(setting.description());
        made.widget->setAccessibleDescription(setting.description());
        auto*& last = lastMade.try_emplace(row.tab, tab.lastControl).first->second;
        QWidget::setTabOrder(last, made.widget);
        last = made.widget;
        showers.push_back(made.show);
    }
    show();
}

void ZNTSettingControls::show()
{
    for (const auto& showControl : showers)
        showControl();
}
