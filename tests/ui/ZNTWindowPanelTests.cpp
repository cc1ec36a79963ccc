#include "ZNTConnectionRow.h"
#include "ZNTSidePanel.h"
#include "ZNTWindowFixture.h"

class ZNTWindowPanel : public ZNTWindowFixture
{
protected:
    /// Resizes the window to the width that the output needs for so many columns beside the panel.
    void fitColumns(int columns)
    {
        const int around = window.width() - window.textFromServer->width() - window.sidePanel->width();
        const int text = window.textFromServer->sizeForGrid(columns, 20).width();
        window.resize(text + window.sidePanel->leastWidth() + (around > 0 && around < 60 ? around : 30),
                      window.height());
        QTest::qWait(50);
    }
    [[nodiscard]] bool isShown() const { return window.isSidePanelShown() && window.sidePanel->isVisible(); }
};

TEST_F(ZNTWindowPanel, FoldsAwayWithoutRoomUnlessThePlayerWantsIt)
{
    const bool fitsOnScreen = isShown();
    if (fitsOnScreen) {
        window.macroTable->setFocus();
        fitColumns(70);
        EXPECT_FALSE(isShown());
        EXPECT_FALSE(window.sidePanel->isAncestorOf(QApplication::focusWidget()));
        EXPECT_TRUE(QApplication::focusWidget() != nullptr && QApplication::focusWidget()->isVisible());
        EXPECT_FALSE(action("showSidePanel").isChecked());
        fitColumns(82);
        EXPECT_TRUE(isShown() && action("showSidePanel").isChecked());
    }
    fitColumns(60);
    for (int part = 0; part < 6; ++part) {
        press(window, Qt::Key_F6);
        EXPECT_FALSE(window.sidePanel->isAncestorOf(QApplication::focusWidget()));
    }
    press(window, Qt::Key_I, Qt::AltModifier);
    EXPECT_TRUE(isShown() && window.macroTable->hasFocus()) << "the letters of its fields bring it back";
    press(window, Qt::Key_F9);
    EXPECT_FALSE(isShown());
    press(window, Qt::Key_F9);
    EXPECT_TRUE(isShown()) << "the player wants it";
    fitColumns(50);
    EXPECT_TRUE(isShown());
    press(window, Qt::Key_F9);
    EXPECT_FALSE(isShown());
    if (fitsOnScreen) {
        fitColumns(82);
        EXPECT_TRUE(isShown()) << "it is back to what it does by itself";
        press(window, Qt::Key_F9);
        fitColumns(84);
        EXPECT_FALSE(isShown()) << "the player wants it gone";
    }
}

TEST_F(ZNTWindowPanel, TheNameBecomesNarrowerBeforeTheButtonGoesToANewRow)
{
    ZNTConnectionRow row;
    row.show();
    const int oneRow = row.heightForWidth(2000);
    int width = 2000;
    while (width > 100 && row.heightForWidth(width - 1) == oneRow)
        --width;
    row.resize(width, oneRow);
    QTest::qWait(10);
    EXPECT_LT(width, row.layout()->sizeHint().width());
    EXPECT_LT(row.mudName->width(), row.mudName->fontMetrics().averageCharWidth() * 14);
    EXPECT_EQ(row.mudName->mapTo(&row, QPoint()).y(), row.port->mapTo(&row, QPoint()).y());
}

TEST_F(ZNTWindowPanel, MacrosRunOnceSelectedAndByTheirPlaceAndByAKeyOfTheirOwn)
{
    const QAction& submenu = *qobject_cast<QMenu*>(parts->menu.macros().front()->parent())->menuAction();
    const auto& remove = *window.removeMacro;
    const auto& run = *window.runMacro;
    EXPECT_FALSE(submenu.isEnabled()) << "nothing can be chosen there";
    makeMacroGroup("Fights");
    EXPECT_FALSE(remove.isEnabled() || action("removeMacro").isEnabled());
    EXPECT_TRUE(find<QPushButton>("editMacro").isEnabled());
    addMacro("kick", "say kicked", Qt::CTRL | Qt::Key_B);
    EXPECT_TRUE(remove.isEnabled()) << "a new one is selected";
    addMacro("bash", "say bashed", Qt::CTRL | Qt::Key_G); // which opens the list of games
    EXPECT_EQ(window.macroTable->currentIndex().data(), u"bash"_s);
    EXPECT_FALSE(run.isEnabled()) << "there is no game";
    playDemo();
    EXPECT_TRUE(run.isEnabled() && action("invokeMacro").isEnabled());
    window.macroTable->clearSelection();
    EXPECT_FALSE(run.isEnabled() || remove.isEnabled());
    EXPECT_TRUE(run.toolTip().endsWith(u"(Ctrl+M)"_s));
    EXPECT_EQ(run.accessibleDescription(), u"Ctrl+M"_s) << "a reader says the name before it";
    const QAbstractItemModel& rows = *window.macroTable->model();
    EXPECT_EQ(rows.index(0, 0).data(), u"kick"_s) << "keys are no part of the name";
    EXPECT_EQ(rows.index(0, 0).data(Qt::AccessibleDescriptionRole), u"Alt+1, Ctrl+B"_s);
    EXPECT_EQ(rows.index(1, 0).data(Qt::AccessibleDescriptionRole), u"Alt+2"_s);

    EXPECT_TRUE(submenu.isEnabled());
    press(commandLine(), Qt::Key_2, Qt::AltModifier);
    EXPECT_TRUE(outputHas("You say: bashed"));
    EXPECT_EQ(commandLineText(), QString());
    find<QComboBox>("macroComboBoxGroup").setEditText(u"another"_s);
    press(commandLine(), Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(outputHas("You say: kicked")) << "whatever group is shown";
}

TEST_F(ZNTWindowPanel, InTheBoxOfTheGroupReturnMakesOneAndTheKeysOfMacrosAct)
{
    playDemo();
    auto& box = *window.macroComboBoxGroup;
    box.setFocus();
    press(box, Qt::Key_Return); // without a name
    type(box, "Fights");
    press(box, Qt::Key_Return);
    EXPECT_EQ(answerAlert(), u"Macro Group Created!."_s);
    press(box, Qt::Key_Return); // it is there already
    EXPECT_EQ(dialog("alert"), nullptr);
    addMacro("kick", "say kicked", Qt::ALT | Qt::Key_K);
    box.setFocus();
    press(box, Qt::Key_K, Qt::AltModifier);
    EXPECT_TRUE(outputHas("You say: kicked"));
    press(box, Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(find<QLineEdit>(waitForDialog("ZNTEditMacroView"), "macroNameTF").text(), u"kick"_s);
}

TEST_F(ZNTWindowPanel, AKeyThatTheWindowHasIsNoMacrosKeyAfterAStartEither)
{
    makeMacroGroup("Fights");
    addMacro("kick", "", Qt::Key_F4);
    QAction later(u"Something new"_s, &window); // of a later version
    later.setShortcut(Qt::Key_F4);
    startAgain();
    EXPECT_TRUE(status().endsWith(u"F4 belongs to Something new, so the macro kick needs another key."_s))
        << status().toStdString();
    bool hasActed = false;
    window.addAction(&later);
    QObject::connect(&later, &QAction::triggered, &later, [&] { hasActed = true; });
    press(window, Qt::Key_F4);
    EXPECT_TRUE(hasActed);
}

TEST_F(ZNTWindowPanel, TheFieldOfAKeyRefusesKeysWithAMeaningAndCanBeLeft)
{
    makeMacroGroup("Fights");
    QDialog& sheet = open("addMacro", "ZNTAddMacroView");
    auto& field = find<QLineEdit>(sheet, "macroKeyField");
    const auto& answer = find<QLabel>(sheet, "macroKeyAnswer");
    for (const auto& [key, refused] : std::initializer_list<std::pair<QKeyCombination, const char*>>{
             {Qt::CTRL | Qt::Key_G, "Ctrl+G belongs to Game list. F4 is free."},
             {Qt::ALT | Qt::Key_G, "Alt+G belongs to the menu Game. F4 is free."},
             {Qt::ALT | Qt::Key_U, "Alt+U belongs to Macro group. F4 is free."},
             {Qt::ALT | Qt::Key_W, "Alt+W belongs to New group. F4 is free."},
             {Qt::ALT | Qt::Key_3, "Alt+3 belongs to Macro 3 of the group. F4 is free."},
             {Qt::CTRL | Qt::SHIFT | Qt::Key_Plus, "Ctrl+Shift++ belongs to Larger text. F4 is free."},
             {Qt::CTRL | Qt::Key_V, "Ctrl+V is for editing and moving. F4 is free."},
             {Qt::Key_A, "A is for typing. Take it with Ctrl or Alt, or take a function key. F4 is free."},
             {Qt::Key_F6, "F6 belongs to Next part of the window. F4 is free."},
             {Qt::ALT | Qt::Key_X, ""}, // a letter of the sheet, not of the window
             {Qt::CTRL | Qt::Key_B, ""}}) {
        SCOPED_TRACE(refused);
        field.setFocus();
        press(field, key.key(), key.keyboardModifiers());
        EXPECT_EQ(answer.text(), QString::fromLatin1(refused));
        EXPECT_TRUE(sheet.isVisible());
    }
    EXPECT_EQ(field.text(), u"Ctrl+B"_s);
    press(field, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"clearMacroKeyButton"_s);
    pressHere(Qt::Key_Space);
    EXPECT_EQ(field.text(), QString());
    press(field, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"commandText"_s);
    field.setFocus();
    press(field, Qt::Key_Escape);
    EXPECT_TRUE(until([&] { return !sheet.isVisible(); }));
}
