#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <string_view>

class QWidget;

/// What ZNTAttention asks of the desktop.
class ZNTTaskbar
{
public:
    virtual ~ZNTTaskbar() = default;
    /// Whether the player is in a window of the program.
    [[nodiscard]] virtual bool hasActiveWindow() const = 0;
    /// Marks the entry of `window` until the player comes.
    virtual void mark(QWidget& window) = 0;
};

/// The desktop that Qt knows.
class ZNTDesktopTaskbar final : public ZNTTaskbar
{
public:
    [[nodiscard]] bool hasActiveWindow() const override;
    void mark(QWidget& window) override;
};

/// While the player is in another program's window: marks the taskbar's entry once when game text comes, and
/// counts the lines in the title, "(12) Lantern Cove - Zantor". Both end when the player comes back.
class ZNTAttention final : public QObject
{
public:
    /// The caller owns `window` and `taskbar`; both outlive this.
    ZNTAttention(QWidget& window, ZNTTaskbar& taskbar, std::function<bool()> isWanted);

    /// Game text, as it stands in the output now.
    void textCame(std::u16string_view text);
    /// A window of the program is active again.
    void playerCame();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showCount();
    void setTitle(const QString& title);

    QWidget& window;
    ZNTTaskbar& taskbar;
    std::function<bool()> isWanted;
    QTimer titleTimer;
    QString settledTitle; ///< as the others set it
    qint64 lines = 0;
    bool isMarked = false;
    bool isSettingTitle = false;
};
