#pragma once

#include <QWidget>
#include <array>
#include <cstddef>

class QPushButton;

/// The ten ways to go, in the order in which they are laid out and in which Tab visits them.
enum class ZNTDirection { NorthWest, North, NorthEast, West, East, SouthWest, South, SouthEast, Up, Down };
inline constexpr std::size_t numberOfDirections = 10;

/// What the window calls a direction.
struct ZNTDirectionNames {
    QString name;       ///< "Northwest"
    QString shortName;  ///< "NW"
    QString objectName; ///< "northWestButton"
    Qt::Key keypadKey;
};
const ZNTDirectionNames& namesOf(ZNTDirection direction);

/// Eight buttons around a rose, as on a map, with up and down below them.
class ZNTCompass final : public QWidget
{
public:
    explicit ZNTCompass(QWidget* parent = nullptr);
    [[nodiscard]] QPushButton* button(ZNTDirection direction) const;

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void fitButtonsToFont();

    std::array<QPushButton*, numberOfDirections> buttons{};
    QWidget* centre = nullptr;
};
