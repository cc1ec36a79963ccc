#pragma once

#include "ZNTSessionChange.h"
#include "ZNTSessionNotice.h"
#include "ZNTStatusWords.h"

class QLabel;
class ZNTMudAppController;

/// Keeps the status line in step with the session: it looks again only at the kind of thing that has changed.
class ZNTStatusLine
{
public:
    /// The caller owns both, and they outlive this.
    ZNTStatusLine(QLabel& label, ZNTMudAppController& controller);

    void sessionChanged(ZNTSessionChange what);
    /// Stands behind the other words until the next attempt to connect; a hint until the disconnect.
    void showNotice(const ZNTSessionNotice& notice);

    /// Takes the notice away if it is the one that stands there.
    void endNotice(const ZNTSessionNotice& notice);
    /// Whether the row of the connection shows since when there is one.
    void setTimeSeen(bool isSeen);

    [[nodiscard]] const ZNTStatusFacts& facts() const { return facts_; }
    /// All of it, for players who listen: they do not see the row.
    [[nodiscard]] QString words() const;

private:
    void takeState();
    void takeRecording();
    void takeSpeech();
    void show();

    QLabel& label;
    ZNTMudAppController& controller;
    ZNTStatusFacts facts_;
    bool isNoticeAHint = false;
};
