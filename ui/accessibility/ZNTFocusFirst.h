#pragma once

#include <QAccessible>
#include <QObject>

/// While it lives, the caret of a field is not announced to screen readers.
///
/// If a caret moves in a field that does not have the focus yet, Orca 43 takes that field for one that it has
/// said already. Qt moves the caret before it announces the focus, so Orca would never say the field.
class ZNTQuietCaret final
{
public:
    ZNTQuietCaret();
    ~ZNTQuietCaret();
    ZNTQuietCaret(const ZNTQuietCaret&) = delete;
    ZNTQuietCaret& operator=(const ZNTQuietCaret&) = delete;

private:
    QAccessible::UpdateHandler before; ///< that of ZNTFocusFirst may be at work
};

/// Announces the focus before the caret, in every field of the application.
class ZNTFocusFirst final : public QObject
{
public:
    explicit ZNTFocusFirst(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
