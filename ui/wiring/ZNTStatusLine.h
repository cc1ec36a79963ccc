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

    [[nodiscard]] const ZNTStatusFacts& facts() const { return facts_; }
    [[nodiscard]] QString words() const { return znt::statusInWords(facts_); }

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
