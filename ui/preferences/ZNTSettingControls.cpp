#include "ZNTSettingControls.h"

#include "ZNTAnnouncement.h"
#include "ZNTCheckBox.h"
#include "ZNTChoiceAccessible.h"
#include "ZNTExplanation.h"
#include "ZNTPlatform.h"
#include "ZNTPreferencesForm.h"
#include "ZNTPreferencesHost.h"
#include "ZNTSettingsKeeper.h"
#include "ZNTText.h"
#include "ZNTTextListEditor.h"
#include "ZNTWindowServices.h"

#include <QAccessible>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTimer>
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
    /// The words of the control, with "&" before the letter that picks it.
    [[nodiscard]] QString words() const
    {
        if (isForAllGames())
            return textOf(row.captionForAllGames);
        if (!row.words.empty())
            return textOf(row.words);
        auto sentence = textOf(row.sentence);
        if (sentence.endsWith(u'.'))
            sentence.chop(1);
        return sentence;
    }
    [[nodiscard]] QString name() const { return words().remove(u'&'); }
    /// What the words do not say.
    [[nodiscard]] QString explanation() const
    {
        QStringList parts;
        if (isForAllGames() || !row.words.empty())
            parts << textOf(row.sentence);
        if (std::holds_alternative<ZNTTextList ZNTSettings::*>(row.field))
            parts << QStringLiteral("One a line; a pattern means what it means in a trigger.");
        if (isForAllGames())
            parts << QStringLiteral(
                "A choice for one game, under Settings in the game list, goes before it.");
        else if (!row.follows.empty())
            parts << textOf(znt::followsInWords(row));
        return parts.join(u' ');
    }
};

struct MadeControl {
    QWidget* widget;
    std::function<void()> show; ///< what is in force now
};

ZNTExplanation* explanationFor(const Setting& setting)
{
    auto* explanation = new ZNTExplanation;
    explanation->setText(setting.explanation());
    explanation->setExplains(textOf(setting.row.name));
    return explanation;
}

MadeControl boxFor(const Setting& setting, bool ZNTSettings::*field, QFormLayout& form)
{
    auto* box = new ZNTCheckBox;
    box->setText(setting.words());
    form.addRow(box);
    if (!setting.explanation().isEmpty())
        form.addRow(explanationFor(setting));
    QObject::connect(box, &QCheckBox::toggled, box,
                     [setting](bool on) { setting.choose(on ? "on" : "off"); });
    return {box, [setting, box, field] {
                const QSignalBlocker blocker(box);
                box->setChecked(setting.values().*field);
            }};
}

/// In the label column, if the words are short; a sentence takes a row of its own.
QLabel* captionFor(const Setting& setting, QWidget& control)
{
    auto* caption = new QLabel(setting.words());
    caption->setBuddy(&control);
    control.setAccessibleName(setting.name());
    return caption;
}

void addWithCaption(const Setting& setting, QWidget& control, QFormLayout& form)
{
    auto* caption = captionFor(setting, control);
    auto* line = new QHBoxLayout; // in which the control keeps its width
    line->addWidget(&control, 0, Qt::AlignLeft);
    if (setting.row.words.empty()) {
        caption->setWordWrap(true);
        form.addRow(caption);
        form.addRow(line);
    } else {
        form.addRow(caption, line);
    }
    // A row of its own, since a caption stands at the middle of the whole field.
    if (setting.explanation().isEmpty())
        return;
    if (setting.row.words.empty())
        form.addRow(explanationFor(setting));
    else
        znt::addBelowField(form, *explanationFor(setting));
}

MadeControl numberFieldFor(const Setting& setting, int ZNTSettings::*field, QFormLayout& form)
{
    auto* spin = new QSpinBox;
    spin->setRange(setting.row.least, setting.row.most);
    addWithCaption(setting, *spin, form);
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

MadeControl listEditorFor(const Setting& setting, ZNTTextList ZNTSettings::*field, QFormLayout& form,
                          QObject& life)
{
    auto* editor = new ZNTTextListEditor;
    auto* caption = captionFor(setting, *editor);
    caption->setWordWrap(true);
    form.addRow(caption);
    form.addRow(editor);
    form.addRow(explanationFor(setting));
    editor->whenEdited = [setting, editor, alive = QPointer<QObject>(&life)] {
        if (alive)
            chooseList(setting, *editor);
    };
    return {editor, [setting, editor, field] { editor->show(setting.values().*field); }};
}

MadeControl choiceFor(const Setting& setting, QFormLayout& form)
{
    QAccessible::installFactory(&ZNTChoiceAccessible::make); // again changes nothing
    auto* box = new QComboBox;
    for (const auto& choice : znt::choicesOf(setting.row))
        box->addItem(textOf(choice.words), textOf(choice.name));
    addWithCaption(setting, *box, form);
    QObject::connect(box, &QComboBox::currentIndexChanged, box,
                     [setting, box] { setting.choose(box->currentData().toString().toStdString()); });
    // Orca 43 says nothing when the arrows choose in a box that is closed.
    QObject::connect(box, &QComboBox::textActivated, box,
                     [](const QString& words) { znt::announce(ZNTAnnouncement::Answer, {words}); });
    return {box, [setting, box] {
                const QSignalBlocker blocker(box);
                box->setCurrentIndex(box->findData(textOf(znt::settingText(setting.values(), setting.row))));
            }};
}

/// An encoding is picked among its buttons.
MadeControl controlFor(const Setting& setting, QFormLayout& form, QObject& life)
{
    if (const auto* isOn = std::get_if<bool ZNTSettings::*>(&setting.row.field))
        return boxFor(setting, *isOn, form);
    if (const auto* number = std::get_if<int ZNTSettings::*>(&setting.row.field))
        return numberFieldFor(setting, *number, form);
    if (const auto* list = std::get_if<ZNTTextList ZNTSettings::*>(&setting.row.field))
        return listEditorFor(setting, *list, form, life);
    if (!znt::choicesOf(setting.row).empty())
        return choiceFor(setting, form);
    return {nullptr, {}};
}

} // namespace

void ZNTSettingControls::make(ZNTPreferencesHost& host, const PageOf& pageOf)
{
    for (const auto& row : ZNTSettingsTable) {
        if (row.hasOwnControl)
            continue;
        auto& form = znt::formOfGroup(pageOf(row.tab), textOf(row.group));
        const auto made = controlFor({row, host}, form, life);
        if (!made.widget)
            continue;
        made.widget->setObjectName(textOf(row.name));
        showers.push_back(made.show);
    }
    show();
}

void ZNTSettingControls::show()
{
    for (const auto& showControl : showers)
        showControl();
}
