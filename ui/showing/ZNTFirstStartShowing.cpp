#include "ZNTFirstStartShowing.h"

#include "ZNTActionWiring.h"
#include "ZNTFirstStart.h"
#include "ZNTMainMenu.h"
#include "ZNTMainWindow.h"
#include "ZNTOutputView.h"
#include "ZNTSettingsKeeper.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <utility>

using namespace znt;

ZNTFirstStartShowing::ZNTFirstStartShowing(ZNTMainWindow& window, ZNTMainMenu& menu,
                                           const ZNTSettingsKeeper& settings, bool isFirstStart,
                                           std::function<void(bool)> remember)
    : window(window),
      settings(settings),
      isFirstStart(isFirstStart)
{
    ZNTFirstStart& card = *window.firstStart;
    for (const auto& [button, action] : {std::pair{card.firstStartDemo, menu["playDemo"]},
                                         {card.firstStartGames, menu["showZNTMudListController"]},
                                         {card.firstStartHelp, menu["firstSteps"]}}) {
        const QString key = action->shortcut().toString();
        button->setToolTip(key);
        button->setAccessibleDescription(key);
        joinButton(button, action);
    }
    QObject::connect(card.firstStartRemember, &QCheckBox::toggled, &connections,
                     [remember = std::move(remember)](bool on) { remember(on); });
    QObject::connect(window.textFromServer, &ZNTOutputView::emptinessChanged, &connections,
                     [this] { showCard(); });
}

void ZNTFirstStartShowing::begin()
{
    isOffered = isFirstStart || window.ipAddress->text().isEmpty();
    showSettings();
    showCard();
}

void ZNTFirstStartShowing::setWords(const QString& words) { window.firstStart->setWords(words); }

void ZNTFirstStartShowing::notePlayed()
{
    isOffered = false;
    showCard();
}

void ZNTFirstStartShowing::showSettings()
{
    const QSignalBlocker blocker(window.firstStart->firstStartRemember);
    window.firstStart->firstStartRemember->setChecked(settings.isRemembering());
}

/// The focus goes where it was at the start if the card goes with it.
void ZNTFirstStartShowing::showCard()
{
    const bool isShown = isOffered && window.textFromServer->isEmpty();
    const QWidget* focused = QApplication::focusWidget();
    if (!isShown && focused && window.firstStart->isAncestorOf(focused))
        window.ipAddress->setFocus(Qt::OtherFocusReason);
    window.textFromServer->coverEmptyHint(isShown);
    window.firstStart->setVisible(isShown);
}
