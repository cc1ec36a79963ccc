#pragma once

#include "ZNTQtElements.h"
#include "ZNTSheetDialog.h"
#include "ui_ZNTGameSettingsView.h"

#include <string>
#include <vector>

class QComboBox;
class ZNTMudListHost;
struct ZNTMudList;
struct ZNTSettingRow;

/// The settings of one game. Each may be left as usual: as Zantor knows the game, or else as chosen for all
/// games. A choice acts at once.
class ZNTGameSettingsSheet
{
public:
    /// A child of `window`. `host` outlives the sheet.
    ZNTGameSettingsSheet(QWidget& window, ZNTMudListHost& host);

    void showFor(const ZNTMudList& game);

private:
    void makeFields();
    void fill(QComboBox& box, const ZNTSettingRow& row) const;

    ZNTMudListHost& host;
    ZNTSheetDialog* dialog;
    Ui::ZNTGameSettingsView layout;
    ZNTQtSheet theSheet;
    std::string game; ///< its key
    struct Field {
        QComboBox* box;
        const ZNTSettingRow* row;
    };
    std::vector<Field> fields;
};
