#pragma once

#include <QDialog>
#include <QFont>

class QListView;
class QSortFilterProxyModel;
class QSpinBox;
class ZNTOutputView;

/// Picks one of the fonts of fixed width and its size, with a sample of the game's text in the game's
/// colours.
class ZNTFontDialog final : public QDialog
{
public:
    /// Begins with the font of `output`, whose looks the sample has. `window` gets the focus back.
    ZNTFontDialog(QWidget& window, const ZNTOutputView& output);

    [[nodiscard]] QFont chosenFont() const;

private:
    void makeList();
    void makeSize();
    void makeSample();
    void arrange();
    [[nodiscard]] QSize comfortableSize() const;
    void showSample();
    [[nodiscard]] QString fontsInWords() const;

    const ZNTOutputView& output;
    QString family; ///< chosen last; stays while the filter leaves none
    QListView* list = nullptr;
    QSortFilterProxyModel* families = nullptr;
    QWidget* filter = nullptr;
    QSpinBox* size = nullptr;
    ZNTOutputView* sample = nullptr;
};
