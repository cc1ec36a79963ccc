#include "ZNTConnectionRow.h"
#include "ZNTHintedTable.h"
#include "ZNTSidePanel.h"
#include "ZNTWindowFixture.h"

#include <QLayout>

namespace
{

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

TEST_F(ZNTWindowPanel, RunAndRemoveNeedASelectedMacroAndANewOneIsSelected)
{
    const auto& remove = find<QPushButton>("removeMacro");
    const auto& run = find<QPushButton>("runMacro");
    makeMacroGroup("Fights");
    EXPECT_FALSE(remove.isEnabled() || action("removeMacro").isEnabled());
    EXPECT_TRUE(find<QPushButton>("editMacro").isEnabled());
    for (const char* name : {"kick", "bash"}) {
        action("addMacro").trigger();
        QDialog& sheet = waitForDialog("ZNTAddMacroView");
        fill(find<QLineEdit>(sheet, "macroNameTF"), name);
        find<QPushButton>(sheet, "doneButton").click();
        EXPECT_TRUE(until([&] { return !sheet.isVisible(); }));
        EXPECT_EQ(window.macroTable->currentIndex().data().toString(), QString::fromLatin1(name));
        EXPECT_TRUE(remove.isEnabled());
    }
    EXPECT_FALSE(run.isEnabled()) << "there is no game";
    playDemo();
    EXPECT_TRUE(run.isEnabled() && action("invokeMacro").isEnabled());
    window.macroTable->clearSelection();
    EXPECT_FALSE(run.isEnabled() || remove.isEnabled());
    EXPECT_TRUE(run.toolTip().endsWith(u"(Ctrl+M)"_s));
    EXPECT_EQ(run.accessibleDescription(), u"Ctrl+M"_s) << "a reader says the name before it";
}

} // namespace
