#pragma once

#include "ZNTAnnouncement.h"

#include <QLabel>

namespace znt
{

/// Shows what a button has done in the line above the buttons, and announces it. Without words the line goes,
/// so that no empty strip stands there.
inline void showAnswer(QLabel& line, const QString& words)
{
    line.setText(words);
    line.setVisible(!words.isEmpty());
    if (!words.isEmpty())
        announce(ZNTAnnouncement::Answer, {words});
}

} // namespace znt
