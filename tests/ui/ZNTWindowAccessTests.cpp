#include "ZNTWindowFixture.h"

using ZNTWindowAccess = ZNTWindowFixture;

TEST_F(ZNTWindowAccess, WhatOnlyTheEyeWouldSeeIsAnnounced)
{
    QDialog& preferences = openPreferences();
    find<QPushButton>(preferences, "saveTriggerButton").click();
    expectAnnounced("No trigger is selected");
    find<QPushButton>(preferences, "addTriggerButton").click();
    auto& table = find<QTableView>(preferences, "triggerTableView");
    table.setFocus();
    table.setCurrentIndex(table.model()->index(0, 0));
    const auto& activity = find<QLabel>(preferences, "inactiveHint");
    EXPECT_TRUE(activity.text().startsWith(u"Not active yet"_s));
    press(table, Qt::Key_Space);
    expectAnnounced("Active: yes");
    EXPECT_EQ(activity.text(), QString());
    find<QPushButton>(preferences, "saveTriggerButton").click();
    expectAnnounced("Trigger saved, Reload triggers puts it in force");
    find<QPushButton>(preferences, "reloadTriggersButton").click();
    expectAnnounced("1 trigger in use");
    EXPECT_EQ(find<QLabel>(preferences, "triggersInUse").text(), u"1 trigger in use"_s);
    find<QTabWidget>(preferences, "tabView").setCurrentIndex(1);
    expectAnnounced("Macros tab");
    auto& tabs = find<QTabBar>(preferences, "qt_tabwidget_tabbar");
    tabs.setFocus();
    press(tabs, Qt::Key_Right);
    expectAnnounced("Encoding and text tab");
    preferences.close();

    find<QPushButton>(open("showZNTMudListController", "ZNTMudListView"), "connectButton").click();
    expectAnnounced("Aardwolf picked, F5 connects");
    makeMacroGroup("Walks");
    expectAnnounced("Macro Group Created!. New Macro Grop Added.");
    addMacro("wave");
    expectAnnounced("Macro wave added");

    playDemo();
    EXPECT_EQ(announced.words.mid(0, 2),
              (QStringList{u"Connecting to Lantern Cove"_s, u"Connected to Lantern Cove"_s}));
    press(window, Qt::Key_F, Qt::ControlModifier);
    type(find<QLineEdit>("findText"), "lantern sq");
    expectAnnounced("1 of 1, Lantern Square");
    type(find<QLineEdit>("findText"), "uid");
    expectAnnounced("No match");
}

TEST_F(ZNTWindowAccess, ThePreferencesSayEachExplanationWithItsControl)
{
    QDialog& preferences = openPreferences();
    for (const auto& [control, words] : {std::pair{"catch-up", "Skips the oldest lines"},
                                         {"_mspCheckBox", "The game's sounds are not played. Plays"},
                                         {"quiet-lines", "Patterns of lines"},
                                         {"triggerTextView", "The pattern with ~"}})
        EXPECT_TRUE(find<QWidget>(preferences, control)
                        .accessibleDescription()
                        .startsWith(QString::fromLatin1(words)))
            << control;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&find<QWidget>(preferences, "encoding"))->role(),
              QAccessible::Form)
        << "Orca would say the name of a panel twice";
    auto& choice = find<QComboBox>(preferences, "silence-key");
    const auto* text = QAccessible::queryAccessibleInterface(&choice)->textInterface();
    ASSERT_NE(text, nullptr) << "its value is not read";
    EXPECT_EQ(text->text(0, text->characterCount()), u"No key"_s);
}

TEST_F(ZNTWindowAccess, AnArrowThatChangesNothingSaysWhatStandsInTheLine)
{
    playDemo();
    send("look");
    announced.words.clear();
    press(commandLine(), Qt::Key_Up);
    EXPECT_EQ(announced.words, QStringList()) << "a reader says what changed";
    press(commandLine(), Qt::Key_Down);
    press(commandLine(), Qt::Key_Up);
    EXPECT_EQ(commandLineText(), u"look"_s);
    find<QLineEdit>("textToServer").clear();
    press(commandLine(), Qt::Key_Down);
    find<QLineEdit>("textToServer").setEchoMode(QLineEdit::Password);
    type(commandLine(), "secret");
    press(commandLine(), Qt::Key_Down);
    EXPECT_EQ(announced.words, (QStringList{u"look"_s, u"look"_s, u"Empty"_s}));
}

TEST_F(ZNTWindowAccess, TheAddressSaysHowToChooseAGameUntilOneIsChosen)
{
    QLineEdit& address = *window.ipAddress;
    EXPECT_TRUE(address.accessibleDescription().startsWith(u"Ctrl+G "_s));
    type(address, "mud.example");
    EXPECT_FALSE(address.accessibleDescription().isEmpty());
    find<QPushButton>(open("showZNTMudListController", "ZNTMudListView"), "connectButton").click();
    EXPECT_EQ(address.accessibleDescription(), QString());
    address.clear();
    EXPECT_FALSE(address.accessibleDescription().isEmpty());
}

TEST_F(ZNTWindowAccess, AGamesQuestionIsSaidBeforeThatTypingIsHidden)
{
    for (const auto* name : {"standard-telnet", "listening", "speech"})
        parts->controller.chooseSetting(name, "on");
    playDemo();
    send("name Zora");
    const auto placeOf = [this](std::string_view words) {
        return std::ranges::find_if(speech.said, [&](const auto& text) { return text.starts_with(words); }) -
               speech.said.begin();
    };
    const auto isSaid = [&](std::string_view words) {
        return until([&] { return placeOf(words) < std::ssize(speech.said); });
    };
    ASSERT_TRUE(isSaid("What you type is hidden"));
    EXPECT_LT(placeOf("Choose a password"), placeOf("What you type is hidden"));
    send("lantern");
    ASSERT_TRUE(isSaid("What you type is shown again"));
    EXPECT_LT(placeOf("You are called Zora"), placeOf("What you type is shown again"));
}

TEST_F(ZNTWindowAccess, TheOwnVoiceSaysAnnouncementsOnlyWhenItIsAskedTo)
{
    const auto says = [this](const char* game) {
        speech.said.clear();
        znt::announce(ZNTAnnouncement::Connected, {QString::fromLatin1(game)});
        QTest::qWait(300);
        return speech.said.empty() ? std::string() : speech.said.back();
    };
    action("speechOnOff").trigger();
    QTest::qWait(300); // "Speech on"
    EXPECT_EQ(says("A"), "") << "not asked for";
    parts->controller.chooseSetting("speak-announcements", "on");
    EXPECT_EQ(says("B"), "Connected to B");
    EXPECT_EQ(says("%1"), "Connected to %1");
    action("speechOnOff").trigger();
    EXPECT_EQ(says("C"), "") << "speech is off";
}

TEST_F(ZNTWindowAccess, EveryControlExplainsItself)
{
    makeMacroGroup("Walks");
    openPreferences();
    for (const ZNTActionName opener : std::initializer_list<ZNTActionName>{
             "showZNTMudListController", "showChannelHistory", "addMacro", "keptRecordings", "doneRecording",
             "keyboardMap", "showOldLogs"})
        action(opener).trigger();
    for (QWidget* control : QApplication::allWidgets()) {
        if (control->focusPolicy() == Qt::NoFocus || control->isWindow() ||
            control->objectName().startsWith(u"qt_"))
            continue;
        bool isExplained = false;
        for (const QWidget* each = control; each; each = each->parentWidget())
            isExplained = isExplained || !each->whatsThis().isEmpty();
        EXPECT_TRUE(isExplained) << control->metaObject()->className() << ' '
                                 << control->objectName().toStdString() << " in "
                                 << control->window()->objectName().toStdString();
        // Qt takes the name of a box from a caption with the same parent only.
        const bool isBox = qobject_cast<QComboBox*>(control) != nullptr;
        EXPECT_TRUE(!isBox ||
                    !QAccessible::queryAccessibleInterface(control)->relations(QAccessible::Label).isEmpty())
            << control->objectName().toStdString();
    }
    for (const QAction* each : window.findChildren<QAction*>())
        EXPECT_FALSE(each->menu() == nullptr && !each->isSeparator() && each->whatsThis().isEmpty())
            << each->text().toStdString();
}

TEST_F(ZNTWindowAccess, TheMenuBarOpensByItsKeyAndItsItemsSayTheirs)
{
    press(window, Qt::Key_F10);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    const auto* item = QAccessible::queryAccessibleInterface(menu->activeAction());
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->text(QAccessible::Name), u"Connect"_s);
    EXPECT_EQ(item->text(QAccessible::Description), u"F5"_s);
    menu->close();
}
