#pragma once

#include "ZNTAnnouncement.h"

#include <QtWidgets>

/// What the application is asked to announce.
class ZNTAnnounced final : public QObject
{
public:
    ZNTAnnounced() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == ZNTAnnouncementEvent::kind())
            words << static_cast<ZNTAnnouncementEvent*>(event)->words;
        return false;
    }
    QStringList words;
};
