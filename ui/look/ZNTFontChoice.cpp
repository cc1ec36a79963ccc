#include "ZNTFontChoice.h"

#include "ZNTFontDialog.h"
#include "ZNTOutputView.h"
#include "ZNTQtText.h"
#include "ZNTServerConnectController.h"
#include "ZNTWindowFit.h"

#include <QApplication>
#include <QDialog>
#include <QScrollArea>
#include <algorithm>

namespace
{

constexpr double smallestControls = 8;
constexpr double largestControls = 48;
constexpr double controlsStep = 2;

} // namespace

void znt::chooseFont(QWidget& window, ZNTOutputView& output, ZNTServerConnectController& session)
{
    auto* panel = new ZNTFontDialog(window, output);
    QObject::connect(panel, &QDialog::accepted, panel, [panel, &output, &session] {
        const QFont font = panel->chosenFont();
        output.setTextFont(font);
        session.changeFont({textOfQt(font.family()), font.pointSizeF()});
    });
    panel->open();
}

void znt::zoomControls(int steps)
{
    QFont font = QApplication::font();
    font.setPointSizeF(
        std::clamp(font.pointSizeF() + steps * controlsStep, smallestControls, largestControls));
    QApplication::setFont(font);
    for (QWidget* open : QApplication::topLevelWidgets())
        if (open->isVisible() && qobject_cast<QDialog*>(open) && open->findChild<QScrollArea*>())
            fitToScreen(*open);
}
