#pragma once

#include "ZNTAddMacroViewController.h"
#include "ZNTAnnouncement.h"
#include "ZNTControlHelp.h"
#include "ZNTEditMacroViewController.h"
#include "ZNTMacroKeyRow.h"
#include "ZNTQtElements.h"
#include "ZNTSheetDialog.h"
#include "ZNTWindowServices.h"
#include "ui_ZNTAddMacroView.h"
#include "ui_ZNTEditMacroView.h"

/// A sheet for a macro: its layout, its widgets as screen elements, and the controller that fills and reads
/// them. Escape and its cancel button ask the controller to close it.
template <typename Layout, typename Controller>
class ZNTMacroSheet
{
public:
    /// A child of `window`; all else outlives the sheet. `done` is announced when the macro is stored.
    ZNTMacroSheet(QWidget& window, const ZNTWindowServices& services, ZNTMacroGroupDropDownController& groups,
                  ZNTMudMacroTableViewController& macros, ZNTAnnouncement done)
        : dialog(new ZNTSheetDialog(&window)),
          elements(*dialog, layout),
          keyRow(*new ZNTMacroKeyRow(*layout.contentLayout, *layout.commandText)),
          controller(services.platform, services.database, groups, macros,
                     {.macroGroupNameLabel = elements.macroGroupNameLabel,
                      .commandText = elements.commandText,
                      .macroNameTF = elements.macroNameTF,
                      .theSheet = elements.theSheet})
    {
        QObject::connect(layout.doneButton, &QPushButton::clicked, dialog, [this, done] {
            const QString name = layout.macroNameTF->text(); // which is cleared
            controller.doneEditing();
            if (whenDone)
                whenDone();
            if (!dialog->isVisible())
                znt::announce(done, {name});
        });
        QObject::connect(layout.cancelButton, &QPushButton::clicked, dialog,
                         [this] { controller.cancelEditing(); });
        dialog->whenCancelled = [this] { controller.cancelEditing(); };
        znt::explainControls(*dialog);
    }

    /// Called when the macro is stored and its list shows it.
    std::function<void()> whenDone;

    /// The key that the player gives to the macro; the sheet does not store it.
    [[nodiscard]] ZNTMacroKeyRow& key() { return keyRow; }

    void showWindow()
    {
        controller.showWindow();
        // When the sheet opens, a screen reader leaves out a label of one word.
        layout.macroNameTF->setAccessibleDescription(QStringLiteral("in the group ") +
                                                     layout.macroGroupNameLabel->text());
        layout.macroNameTF->setFocus();
        layout.macroNameTF->selectAll();
    }

private:
    struct Elements {
        Elements(QDialog& dialog, Layout& layout)
            : theSheet((layout.setupUi(&dialog), &dialog)),
              macroGroupNameLabel(layout.macroGroupNameLabel),
              commandText(layout.commandText),
              macroNameTF(layout.macroNameTF)
        {
        }
        ZNTQtSheet theSheet;
        ZNTQtLabel macroGroupNameLabel;
        ZNTQtTextArea commandText;
        ZNTQtTextField macroNameTF;
    };

    ZNTSheetDialog* dialog;
    Layout layout;
    Elements elements;
    ZNTMacroKeyRow& keyRow; ///< its dialog owns it
    Controller controller;
};

class ZNTAddMacroSheet final : public ZNTMacroSheet<Ui::ZNTAddMacroView, ZNTAddMacroViewController>
{
public:
    ZNTAddMacroSheet(QWidget& window, const ZNTWindowServices& services,
                     ZNTMacroGroupDropDownController& groups, ZNTMudMacroTableViewController& macros)
        : ZNTMacroSheet(window, services, groups, macros, ZNTAnnouncement::MacroAdded)
    {
    }
};

class ZNTEditMacroSheet final : public ZNTMacroSheet<Ui::ZNTEditMacroView, ZNTEditMacroViewController>
{
public:
    ZNTEditMacroSheet(QWidget& window, const ZNTWindowServices& services,
                      ZNTMacroGroupDropDownController& groups, ZNTMudMacroTableViewController& macros)
        : ZNTMacroSheet(window, services, groups, macros, ZNTAnnouncement::MacroSaved)
    {
    }
};
