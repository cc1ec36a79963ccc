#pragma once

#include <QFrame>
#include <vector>

class QCheckBox;
class QLabel;
class QPushButton;

/// What a newcomer can do, on a card in the empty output: three buttons and two marks.
///
/// Return presses a button, too, because a newcomer will try it. Each part's object name is its member's
/// name.
class ZNTFirstStart final : public QFrame
{
public:
    ZNTFirstStart();

    /// The words above the buttons.
    void setWords(const QString& words);

    QLabel* firstStartWords;
    QPushButton* firstStartDemo;
    QPushButton* firstStartGames;
    QPushButton* firstStartHelp;
    QCheckBox* firstStartRemember;
    QCheckBox* listeningBox;

    /// The buttons and the marks, in the order of Tab.
    [[nodiscard]] std::vector<QWidget*> parts() const;
};
