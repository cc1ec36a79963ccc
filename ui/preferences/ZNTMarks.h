#pragma once

#include <QCheckBox>
#include <QSignalBlocker>

namespace znt
{

/// A mark that is neither set nor cleared counts as cleared.
inline bool isMarked(const QCheckBox& box) { return box.checkState() == Qt::Checked; }

/// Calls `task` with that each time the mark changes.
template <typename Task>
void whenMarked(QCheckBox& box, Task task)
{
    QObject::connect(&box, &QCheckBox::stateChanged, &box, [&box, task] { task(isMarked(box)); });
}

/// Shows what is in force, which is no choice of the player.
inline void showMark(QCheckBox& box, bool isOn)
{
    const QSignalBlocker blocker(box);
    box.setChecked(isOn);
}

} // namespace znt
