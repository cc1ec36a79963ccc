#pragma once

#include <QObject>
#include <QString>

/// Announces each "What's this?" text when it is shown. Qt shows it in a window that readers do not read.
class ZNTWhatsThisAnnouncer final : public QObject
{
public:
    /// Made after the application object.
    ZNTWhatsThisAnnouncer();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString words; ///< of what was asked about last
};
