#pragma once

#include <QObject>

class QKeyEvent;
class ZNTServerConnectController;

/// Silences the own voice at the key that the player has chosen for it, in every window of the client. The
/// key is never taken: what has the focus gets it, and a screen reader knows of it, too.
class ZNTSilenceKeys final : public QObject
{
public:
    /// Made after the application object. `session` outlives this.
    explicit ZNTSilenceKeys(ZNTServerConnectController& session);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    [[nodiscard]] bool isChosen(const QKeyEvent& key) const;

    ZNTServerConnectController& session;
};
