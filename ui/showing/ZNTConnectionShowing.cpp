#include "ZNTConnectionShowing.h"

#include "ZNTActionWiring.h"
#include "ZNTAnnouncement.h"
#include "ZNTCommandLine.h"
#include "ZNTMainMenu.h"
#include "ZNTMainWindow.h"
#include "ZNTNewsAgain.h"
#include "ZNTStatusButtons.h"

#include <QApplication>
#include <utility>

using namespace znt;
using Connection = ZNTStatusFacts::Connection;

namespace
{

/// "Elmvale, mud.example.org:4000, since 14:27"
QString lineOf(const ZNTConnectionShowing::Game& game, const ZNTStatusFacts& facts)
{
    const bool isNumeric6 = game.host.contains(QLatin1Char(':'));
    const QString host = isNumeric6 ? QLatin1Char('[') + game.host + QLatin1Char(']') : game.host;
    QStringList parts;
    if (facts.game != game.host)
        parts << facts.game;
    parts << host + QLatin1Char(':') + game.port << QStringLiteral("since ") + connectedTime(facts);
    return parts.join(QLatin1String(", "));
}

} // namespace

ZNTConnectionShowing::ZNTConnectionShowing(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTNewsAgain& newsAgain)
    : window(window),
      menu(menu),
      newsAgain(newsAgain)
{
    wireFields();
    for (auto& [button, action] : {std::pair{window.statusButtons->stopConnecting, menu["stopConnecting"]},
                                   {window.statusButtons->connectAgain, menu["connectAgain"]}}) {
        const QString key = action->shortcut().toString();
        button->setToolTip(action->text().remove(QLatin1Char('&')) + QStringLiteral(" (%1)").arg(key));
        button->setAccessibleDescription(key);
        joinButton(button, action);
    }
}

void ZNTConnectionShowing::wireFields()
{
    whenToggled(menu["showFieldsWhilePlaying"], [this](bool shown) {
        if (shown)
            menu["showConnectionRow"]->setChecked(true); // the whole row may be hidden
        showRow();
        if (window.isVisible()) // else it is the choice of an earlier run
            announce(ZNTAnnouncement::Answer, {shown ? QStringLiteral("Connection fields shown")
                                                     : QStringLiteral("Connection fields folded")});
    });
}

void ZNTConnectionShowing::show(const ZNTStatusFacts& now, const Game& ofGame)
{
    const Connection before = std::exchange(facts, now).connection;
    game = ofGame;
    showRow();
    showButtons();
    if (before != Connection::None && now.connection == Connection::None)
        announceEnd();
    else if (now.connection != Connection::None)
        newsAgain.drop(endInWords);
}

void ZNTConnectionShowing::showRow()
{
    ZNTConnectionRow& row = *window.connectionRow;
    if (facts.connection != Connection::Connected || menu["showFieldsWhilePlaying"]->isChecked()) {
        row.unfold();
        return;
    }
    const QWidget* focused = QApplication::focusWidget();
    if (focused && focused != row.connectionButton && row.isAncestorOf(focused))
        window.textToServer->setFocus(Qt::OtherFocusReason);
    row.fold(lineOf(game, facts));
}

void ZNTConnectionShowing::showButtons()
{
    using Shown = ZNTStatusButtons::Shown;
    const bool isIdleAgain = facts.connection == Connection::None && !game.host.isEmpty();
    window.statusButtons->showOnly(facts.connection == Connection::Connecting ? Shown::Stop
                                   : isIdleAgain                              ? Shown::ConnectAgain
                                                                              : Shown::None);
}

/// The player's own end needs no words. Of all that is said about another end, this is worth saying again: it
/// has the key, too.
void ZNTConnectionShowing::announceEnd()
{
    if (facts.ending.isEmpty())
        return;
    const QStringList parts{notConnectedInWords(facts), menu["connectAgain"]->shortcut().toString()};
    announce(ZNTAnnouncement::ConnectionEnded, parts);
    endInWords = announcementInWords(ZNTAnnouncement::ConnectionEnded, parts);
    newsAgain.watchInstead(endInWords);
}
