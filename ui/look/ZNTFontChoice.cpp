#include "ZNTFontChoice.h"

#include "ZNTOutputView.h"
#include "ZNTQtText.h"
#include "ZNTServerConnectController.h"
#include "ZNTWindowFit.h"

#include <QApplication>
#include <QDialog>
#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScrollArea>
#include <algorithm>

namespace
{

constexpr double smallestControls = 8;
constexpr double largestControls = 48;
constexpr double controlsStep = 2;

/// Qt's own panel leaves its lists, and the fields that go with them, without names.
void nameFieldsByTheirLabels(QWidget& panel)
{
    for (const QLabel* label : panel.findChildren<QLabel*>())
        if (label->buddy())
            label->buddy()->setAccessibleName(label->text().remove(QLatin1Char('&')));
    for (QLineEdit* field : panel.findChildren<QLineEdit*>())
        if (field->focusProxy())
            field->setAccessibleName(field->focusProxy()->accessibleName());
    for (auto* list : panel.findChildren<QListView*>(Qt::FindDirectChildrenOnly))
        if (list->accessibleName().isEmpty())
            list->setAccessibleName(QStringLiteral("Size")); // the label goes with the field
}

} // namespace

void znt::chooseFont(QWidget& window, ZNTOutputView& output, ZNTServerConnectController& session)
{
    auto* panel = new QFontDialog(&window);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setObjectName(QStringLiteral("fontPanel"));
    panel->setOption(QFontDialog::MonospacedFonts);
    panel->setOption(QFontDialog::DontUseNativeDialog);
    // The panel lists what the options ask for only with the font that it is given after them, and marks the
    // one that is really seen only by its own name.
    QFont shown = output.textFont();
    const QFontInfo found(shown);
    shown.setFamilies({found.family()});
    shown.setStyleName(found.styleName());
    panel->setCurrentFont(shown);
    shrinkFontToScreen(*panel);
    nameFieldsByTheirLabels(*panel);
    QObject::connect(panel, &QDialog::finished, &window, &QWidget::activateWindow);
    QObject::connect(panel, &QFontDialog::fontSelected, panel, [&output, &session](const QFont& font) {
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
