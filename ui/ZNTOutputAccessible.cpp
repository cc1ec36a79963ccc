#include "ZNTOutputView.h"

#include <QAccessible>

void ZNTOutputView::announceAppended() { announcedEnd = store_.end(); }
void ZNTOutputView::announceCaret(bool, bool) {}
void ZNTOutputView::announceRemoved(Position, Position) {}
