#pragma once

#include <QScrollArea>
#include <initializer_list>
#include <vector>

class QComboBox;
class QPushButton;
class QVBoxLayout;
class ZNTCompass;
class ZNTHintedTable;

/// Directions, macro groups and macros at the side of the main window. Each widget's object name is its
/// member's name.
///
/// Scrolls up and down, so that it does not make the window higher. It is never too narrow for its content.
class ZNTSidePanel final : public QScrollArea
{
public:
    ZNTSidePanel();

    ZNTCompass* compass;
    QComboBox* macroComboBoxGroup;
    QPushButton* createNewMacroGroup;
    QPushButton* deleteMacroGroup;
    ZNTHintedTable* macroTable;
    QPushButton* runMacro;
    QPushButton* addMacro;
    QPushButton* editMacro;
    QPushButton* removeMacro;

    /// What the Tab key visits, in its order.
    [[nodiscard]] std::vector<QWidget*> tabOrder() const;

    [[nodiscard]] int leastWidth() const;
    [[nodiscard]] int comfortableWidth() const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    /// If it shows its whole content, the window scrolls instead.
    void showWhole(bool whole);

private:
    void addDirections(QVBoxLayout& column);
    void addGroups(QVBoxLayout& column);
    void addMacros(QVBoxLayout& column);
    static void addPairs(QVBoxLayout& column, std::initializer_list<QPushButton*> buttons);
    [[nodiscard]] int barWidth() const;

    bool isWhole = false;
};
